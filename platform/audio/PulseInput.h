// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <pulse/pulseaudio.h>

#include <atomic>
#include <cstdint>
#include <memory>
#include <vector>

#include "engine/ports/InputDevice.h"
#include "platform/audio/PulseConnection.h"
#include "platform/audio/PulseSources.h"
#include "support/Clock.h"

namespace platform::audio {

/// One recording stream on one source, at the source's own rate and with its own channels.
///
/// It is lost when its source or the server goes, and when nothing came for kStall (a source that is
/// suspended, a server that hangs). It is never moved to another source. Threads: as the port says; what
/// changes runs on the loop.
class PulseInput final : public engine::InputDevice {
 public:
  static constexpr std::chrono::seconds kStall{2};

  /// Requires: the connection's lock; waits in it.
  static support::Result<std::unique_ptr<engine::InputDevice>> Open(
      std::shared_ptr<PulseConnection> connection, const PulseSource& source,
      const engine::InputRequest& request, engine::CaptureSink& sink);
  /// Requires: not the connection's lock.
  ~PulseInput() override;

  [[nodiscard]] const engine::InputDeviceInfo& Info() const noexcept override { return info_; }
  [[nodiscard]] support::Duration Behind() const noexcept override {
    return std::chrono::microseconds(behind_.load(std::memory_order_relaxed));
  }
  [[nodiscard]] bool Lost() const noexcept override { return lost_.load(std::memory_order_acquire); }

 private:
  PulseInput(std::shared_ptr<PulseConnection> connection, const PulseSource& source,
             engine::CaptureSink& sink);

  bool Connect(const pa_channel_map& map, int block_ms);
  void SetCallbacks();
  void WatchForStall();
  void LookForStall(pa_time_event* watch);
  void Read();
  /// A hole in the recording, as long as that.
  void Silence(std::size_t samples);
  void MarkBehind();
  void Lose();
  void EndRecording();

  std::shared_ptr<PulseConnection> connection_;
  const engine::InputDeviceInfo info_;
  engine::CaptureSink& sink_;
  const std::vector<float> silence_;
  pa_stream* stream_ = nullptr;
  pa_time_event* watch_ = nullptr;
  support::TimePoint last_came_{};
  std::atomic<std::int64_t> behind_{0};
  std::atomic<bool> lost_{false};
};

}  // namespace platform::audio
