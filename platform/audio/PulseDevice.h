// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <pulse/pulseaudio.h>

#include <atomic>
#include <cstdint>
#include <memory>

#include "engine/ports/OutputDevice.h"
#include "platform/audio/PulseConnection.h"
#include "platform/audio/PulseSinks.h"
#include "support/HistoryRing.h"
#include "support/Result.h"

namespace platform::audio {

/// One playing stream on one sink.
///
/// It is lost when its sink or the server goes, when the server moves it to another sink (the head-phones'
/// sound never comes out of the main speakers) and when nothing was asked of it for kStall (a suspended sink,
/// a server that hangs). Threads: as the port says; the members that change run on the loop.
class PulseDevice final : public engine::OutputDevice {
 public:
  static constexpr std::chrono::seconds kStall{2};

  /// Requires: the connection's lock; waits in it.
  static support::Result<std::unique_ptr<engine::OutputDevice>> Open(
      std::shared_ptr<PulseConnection> connection, const PulseSink& sink,
      const engine::OutputRequest& request, engine::RenderSource& source);
  /// Requires: not the connection's lock.
  ~PulseDevice() override;

  [[nodiscard]] const engine::OutputDeviceInfo& Info() const noexcept override { return info_; }
  [[nodiscard]] engine::PlayedMark Played() const noexcept override;
  [[nodiscard]] bool Lost() const noexcept override { return lost_.load(std::memory_order_acquire); }

 private:
  PulseDevice(std::shared_ptr<PulseConnection> connection, const PulseSink& sink,
              const engine::OutputRequest& request, engine::RenderSource& source);

  bool Connect(const pa_channel_map& map, const engine::OutputRequest& request);
  void SetCallbacks();
  void WatchForStall();
  void LookForStall(pa_time_event* watch);
  void StateChanged();
  void Write(std::size_t bytes);
  bool WriteChunk(std::size_t& bytes);
  void MarkPlayed();
  void Lose();
  void EndPulling();

  std::shared_ptr<PulseConnection> connection_;
  engine::OutputDeviceInfo info_;
  engine::RenderSource& source_;
  std::int64_t rate_;
  std::size_t frame_bytes_;
  pa_stream* stream_ = nullptr;
  pa_time_event* watch_ = nullptr;
  std::int64_t rendered_ = 0;
  std::int64_t heard_ = 0;
  support::TimePoint last_asked_{};
  support::HistoryRing<engine::PlayedMark, 8> played_;
  std::atomic<bool> lost_{false};
};

}  // namespace platform::audio
