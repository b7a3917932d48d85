// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <umockdev.h>

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <optional>
#include <string>

#include "platform/usb/testing/K8062Decoder.h"
#include "support/Mutex.h"

namespace platform::usb::testing {

/// A USB bus of the test's own, where a K8062 can be plugged in and pulled out.
///
/// It answers what libusb asks the system for; the library and the adapter above it are the real ones. The
/// test program runs with umockdev preloaded, as ctest starts it. Threads: any; the bus has one of its own.
class EmulatedBus {
 public:
  /// What is at the plug.
  enum class Board {
    K8062,  ///< HID, takes eight bytes
    K8061,  ///< bears the same number when it is set to the second address; takes 64
  };

  EmulatedBus();
  ~EmulatedBus();
  EmulatedBus(const EmulatedBus&) = delete;
  EmulatedBus& operator=(const EmulatedBus&) = delete;

  void Plug(Board board = Board::K8062);
  /// From now on every transfer fails, as without the device.
  void Unplug();
  /// The same, by itself, as soon as this many more packets have come.
  void PullAfter(int packets);
  /// A driver of the system's sits on the box that is plugged in next.
  void BindDriver();
  /// How long the bus takes for a packet; nothing at first.
  void SetPace(std::chrono::milliseconds pace);
  /// The next transfer fails at its end, and the device stays.
  void FailOnce();

  /// What the box says, at any moment; false when it does not say so within five seconds.
  bool WaitUntil(const std::function<bool(const K8062Decoder&)>& condition);
  [[nodiscard]] K8062Decoder Box();
  [[nodiscard]] int DriversDetached();
  [[nodiscard]] int DriversAttached();

 private:
  struct Pending {
    UMockdevIoctlData* request = nullptr;
    std::chrono::steady_clock::time_point ready;
    bool discarded = false;
  };

  static gboolean OnCall(UMockdevIoctlBase* base, UMockdevIoctlClient* client, void* self);
  gboolean Answer(UMockdevIoctlClient* client);
  void Submit(UMockdevIoctlClient* client) DJ_REQUIRES(mutex_);
  bool Discard(UMockdevIoctlClient* client) DJ_REQUIRES(mutex_);
  /// Errno; 0 when a request was handed back.
  int Reap(UMockdevIoctlClient* client) DJ_REQUIRES(mutex_);
  int DriverCall(UMockdevIoctlClient* client) DJ_REQUIRES(mutex_);

  UMockdevTestbed* bed_;
  support::Mutex mutex_;
  std::condition_variable changed_;
  K8062Decoder box_ DJ_GUARDED_BY(mutex_);
  std::deque<Pending> pending_ DJ_GUARDED_BY(mutex_);
  bool gone_ DJ_GUARDED_BY(mutex_) = true;
  bool fail_once_ DJ_GUARDED_BY(mutex_) = false;
  bool driver_bound_ DJ_GUARDED_BY(mutex_) = false;
  std::chrono::milliseconds pace_ DJ_GUARDED_BY(mutex_){0};
  std::chrono::steady_clock::time_point next_slot_ DJ_GUARDED_BY(mutex_);
  std::optional<int> pull_after_ DJ_GUARDED_BY(mutex_);
  int detached_ DJ_GUARDED_BY(mutex_) = 0;
  int attached_ DJ_GUARDED_BY(mutex_) = 0;
  UMockdevIoctlBase* calls_ = nullptr;
};

}  // namespace platform::usb::testing
