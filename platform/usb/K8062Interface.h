// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <condition_variable>
#include <memory>
#include <span>
#include <thread>

#include "dmx/ports/DmxInterface.h"
#include "platform/usb/K8062Box.h"
#include "support/Clock.h"
#include "support/Mutex.h"
#include "support/Result.h"

namespace platform::usb {

/// The K8062 at a USB port of this computer, without the maker's library.
///
/// One thread of its own sends frame after frame, as the box shows a frame only when the next one begins. It
/// looks for the box while there is none, so plugging it in, pulling it out and plugging it in again need
/// nobody. When sending ends, a dark frame goes out, and one packet more that makes the box show it.
/// Threads: see dmx::DmxInterface.
class K8062Interface final : public dmx::DmxInterface {
 public:
  K8062Interface() = default;
  /// Waits until the dark frame is out, if there is a box.
  ~K8062Interface() override;
  K8062Interface(const K8062Interface&) = delete;
  K8062Interface& operator=(const K8062Interface&) = delete;

  void StartDevice() override DJ_EXCLUDES(mutex_);
  void SetChannelCount(int count) override DJ_EXCLUDES(mutex_);
  void SetData(int channel, dmx::DmxLevel level) override DJ_EXCLUDES(mutex_);
  void StopDevice() override DJ_EXCLUDES(mutex_);
  [[nodiscard]] dmx::DmxInterfaceStatus Status() const override DJ_EXCLUDES(mutex_);
  /// Stops, and returns when the dark frame is out; after the patience at the latest. Threads: any.
  void Darken(support::Duration patience) DJ_EXCLUDES(mutex_);

 private:
  using Levels = std::array<dmx::DmxLevel, dmx::kUniverseChannels>;
  struct Frame {
    Levels levels{};
    int count = 0;
  };

  void Work() DJ_EXCLUDES(mutex_);
  /// Waits while nobody wants to send. False: the thread is to end.
  bool WaitForWork() DJ_EXCLUDES(mutex_);
  /// Until the time is over or somebody stops the sending.
  void Rest(support::Duration time) DJ_EXCLUDES(mutex_);
  void Serve(const UsbContext& usb) DJ_EXCLUDES(mutex_);
  [[nodiscard]] std::unique_ptr<K8062Box> Search(const UsbContext& usb) DJ_EXCLUDES(mutex_);
  [[nodiscard]] bool Sending() const DJ_EXCLUDES(mutex_);
  [[nodiscard]] Frame NextFrame(bool whole, K8062Size size) const DJ_EXCLUDES(mutex_);
  /// False when the box is gone.
  bool SendFrame(K8062Box& box, const Frame& frame) DJ_EXCLUDES(mutex_);
  void SendDarkness(K8062Box& box);
  void NoteFrame(std::size_t packets, support::TimePoint began) DJ_EXCLUDES(mutex_);
  void Say(dmx::DmxInterfaceStatus::State state, const support::Error& trouble) DJ_EXCLUDES(mutex_);

  support::SteadyClock clock_;
  mutable support::Mutex mutex_;
  std::condition_variable wake_;
  Levels levels_ DJ_GUARDED_BY(mutex_){};
  int count_ DJ_GUARDED_BY(mutex_) = dmx::kUniverseChannels;
  int highest_lit_ DJ_GUARDED_BY(mutex_) = 0;  ///< ever; channels above it need not be sent again
  bool wanted_ DJ_GUARDED_BY(mutex_) = false;
  bool serving_ DJ_GUARDED_BY(mutex_) = false;  ///< until the dark frame is out
  bool ending_ DJ_GUARDED_BY(mutex_) = false;
  dmx::DmxInterfaceStatus status_ DJ_GUARDED_BY(mutex_);
  support::TimePoint last_frame_ DJ_GUARDED_BY(mutex_);
  std::thread sender_;
};

}  // namespace platform::usb
