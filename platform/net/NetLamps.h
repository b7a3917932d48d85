// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <condition_variable>
#include <optional>
#include <thread>

#include "dmx/ports/NetOutput.h"
#include "platform/net/NetPackets.h"
#include "platform/net/UdpSender.h"
#include "support/Clock.h"
#include "support/Mutex.h"

namespace platform::net {

/// Lamps behind a network, by Art-Net 4 or sACN (ANSI E1.31).
///
/// One thread of its own sends what has changed, at most 44 frames a second, and says again what stands each
/// 0.8 s. A network that goes away is looked for until it is back. When sending ends, or goes elsewhere, dark
/// frames go out, and receivers of sACN are told that nothing more comes. Threads: see dmx::DmxInterface.
class NetLamps final : public dmx::NetOutput {
 public:
  struct PortNumbers {
    std::uint16_t art_net = kArtNetPort;
    std::uint16_t sacn = kSacnPort;
  };
  /// ports: others than the usual ones are for tests.
  explicit NetLamps(const PortNumbers& ports) : ports_(ports) {}
  NetLamps() : NetLamps(PortNumbers{}) {}
  /// Waits until the dark frames are out.
  ~NetLamps() override;
  NetLamps(const NetLamps&) = delete;
  NetLamps& operator=(const NetLamps&) = delete;

  void Choose(const dmx::NetWish& wish) override DJ_EXCLUDES(mutex_);
  void StartDevice() override DJ_EXCLUDES(mutex_);
  void SetChannelCount(int count) override DJ_EXCLUDES(mutex_);
  void SetData(int channel, dmx::DmxLevel level) override DJ_EXCLUDES(mutex_);
  void StopDevice() override DJ_EXCLUDES(mutex_);
  [[nodiscard]] dmx::DmxInterfaceStatus Status() const override DJ_EXCLUDES(mutex_);
  /// Stops, and returns when the dark frames are out; after the patience at the latest. Threads: any.
  void Darken(support::Duration patience) DJ_EXCLUDES(mutex_);

 private:
  using Protocol = dmx::NetWish::Protocol;

  void Work() DJ_EXCLUDES(mutex_);
  /// What is to be sent where; none: the thread is to end.
  std::optional<dmx::NetWish> WaitForWork() DJ_EXCLUDES(mutex_);
  void Serve(const dmx::NetWish& wish) DJ_EXCLUDES(mutex_);
  /// Returns when something has changed, the frame is to be repeated, or it is over: then false.
  bool WaitForFrame(const dmx::NetWish& wish, Levels& levels) DJ_EXCLUDES(mutex_);
  void SendDarkness(UdpSender& sender, const dmx::NetWish& wish);
  [[nodiscard]] support::Result<void> SendFrame(UdpSender& sender, const dmx::NetWish& wish,
                                                const Levels& levels, SacnEnd end = SacnEnd::GoesOn);
  void NoteFrame() DJ_EXCLUDES(mutex_);
  void Say(dmx::DmxInterfaceStatus::State state, const support::Error& trouble) DJ_EXCLUDES(mutex_);
  /// False: it is over before.
  bool Rest(const dmx::NetWish& wish, support::Duration time) DJ_EXCLUDES(mutex_);
  [[nodiscard]] bool Wants(const dmx::NetWish& wish) const DJ_REQUIRES(mutex_) {
    return wanted_ && wish_ == wish;
  }

  const PortNumbers ports_;
  support::SteadyClock clock_;
  mutable support::Mutex mutex_;
  std::condition_variable wake_;
  dmx::NetWish wish_ DJ_GUARDED_BY(mutex_);
  Levels levels_ DJ_GUARDED_BY(mutex_){};
  int count_ DJ_GUARDED_BY(mutex_) = dmx::kUniverseChannels;
  bool changed_ DJ_GUARDED_BY(mutex_) = false;
  bool wanted_ DJ_GUARDED_BY(mutex_) = false;
  bool serving_ DJ_GUARDED_BY(mutex_) = false;  ///< until the dark frames are out
  bool ending_ DJ_GUARDED_BY(mutex_) = false;
  dmx::DmxInterfaceStatus status_ DJ_GUARDED_BY(mutex_);
  support::TimePoint last_frame_ DJ_GUARDED_BY(mutex_);
  std::uint8_t sequence_ = 0;  ///< the sender's
  std::thread sender_;
};

}  // namespace platform::net
