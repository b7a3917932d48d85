// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <umockdev.h>

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "support/Mutex.h"

namespace platform::usb::testing {

/// A USB bus of the test's own. The test program runs with umockdev preloaded, as ctest starts it.
class EmulatedBus {
 public:
  EmulatedBus();
  ~EmulatedBus();
  EmulatedBus(const EmulatedBus&) = delete;
  EmulatedBus& operator=(const EmulatedBus&) = delete;

  [[nodiscard]] UMockdevTestbed* Bed() const { return bed_; }

 private:
  UMockdevTestbed* bed_;
};

/// A device that can be plugged in at the emulated bus and pulled out.
///
/// It answers what libusb asks the system for; the library and the adapter above it are the real ones.
/// Threads: any; the bus has one of its own.
class EmulatedDevice {
 public:
  EmulatedDevice(EmulatedBus& bus, int number);
  virtual ~EmulatedDevice();
  EmulatedDevice(const EmulatedDevice&) = delete;
  EmulatedDevice& operator=(const EmulatedDevice&) = delete;

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

  [[nodiscard]] int DriversDetached();
  [[nodiscard]] int DriversAttached();

 protected:
  struct Kind {
    int product;
    bool hid;  ///< an input device, else one of its maker's own kind
    int packet_size;
  };
  void PlugIn(Kind kind);
  /// Comes true within five seconds. condition() is called with the device at rest.
  [[nodiscard]] bool Comes(const std::function<bool()>& condition);

  virtual void Reset() DJ_REQUIRES(mutex_) = 0;
  virtual void Take(std::span<const std::uint8_t> packet) DJ_REQUIRES(mutex_) = 0;
  /// What is to be read now.
  virtual std::optional<std::vector<std::uint8_t>> Give() DJ_REQUIRES(mutex_) { return std::nullopt; }

  support::Mutex mutex_;

 private:
  struct Pending {
    UMockdevIoctlData* request = nullptr;
    std::uint8_t* buffer = nullptr;
    std::chrono::steady_clock::time_point ready;
    bool discarded = false;
  };

  [[nodiscard]] std::string Description(Kind kind) const;
  static gboolean OnCall(UMockdevIoctlBase* base, UMockdevIoctlClient* client, void* self);
  gboolean Answer(UMockdevIoctlClient* client);
  void Submit(UMockdevIoctlClient* client) DJ_REQUIRES(mutex_);
  void TakePacket(Pending& pending) DJ_REQUIRES(mutex_);
  bool Discard(UMockdevIoctlClient* client) DJ_REQUIRES(mutex_);
  /// Errno; 0 when a request was handed back.
  int Reap(UMockdevIoctlClient* client) DJ_REQUIRES(mutex_);
  bool Complete(Pending& pending) DJ_REQUIRES(mutex_);
  int DriverCall(UMockdevIoctlClient* client) DJ_REQUIRES(mutex_);

  UMockdevTestbed* bed_;
  const int number_;
  const std::string node_;
  const std::string path_;
  std::condition_variable changed_;
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
