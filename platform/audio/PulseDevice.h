// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <pulse/pulseaudio.h>

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>

#include "engine/ports/OutputDevice.h"
#include "platform/audio/PulseConnection.h"
#include "platform/audio/PulseSinks.h"
#include "support/HistoryRing.h"
#include "support/Mutex.h"
#include "support/Result.h"

namespace platform::audio {

/// One playing stream on one sink.
///
/// It is lost when its sink or the server goes, when its sink is suspended for kSuspended, and when nothing
/// was asked of it for kStall (a server that hangs). When the server moves it to another sink, what counts is
/// why: its own sink went (lost, without a sound on the other one), the default became another one (moved
/// back: what was chosen here is no default), or the user moved it by hand (it stays there). A request that
/// stays is not moved at all, so that the head-phones' sound never comes out of the main speakers, not even
/// for a moment. Threads: as the port says; the members that change run on the loop.
class PulseDevice final : public engine::OutputDevice {
 public:
  static constexpr std::chrono::seconds kStall{2};
  static constexpr std::chrono::milliseconds kSuspended{
      400};  ///< cards are, for a moment, when they are set up

  struct Place {
    PulseSink sink;
    std::string default_id;  ///< the sink that is the default now
  };

  /// Requires: the connection's lock; waits in it.
  static support::Result<std::unique_ptr<engine::OutputDevice>> Open(
      std::shared_ptr<PulseConnection> connection, const Place& place, const engine::OutputRequest& request,
      engine::RenderSource& source);
  /// Requires: not the connection's lock.
  ~PulseDevice() override;

  [[nodiscard]] const engine::OutputDeviceInfo& Info() const noexcept override { return info_; }
  [[nodiscard]] engine::PlayedMark Played() const noexcept override;
  [[nodiscard]] bool Lost() const noexcept override { return lost_.load(std::memory_order_acquire); }
  [[nodiscard]] std::string MovedTo() const override DJ_EXCLUDES(moved_mutex_);
  /// Done when the server asks for sound the next time.
  void SetBuffer(int buffer_ms, int period_ms) noexcept override;
  [[nodiscard]] std::uint64_t Gaps() const noexcept override { return gaps_.load(std::memory_order_relaxed); }

 private:
  PulseDevice(std::shared_ptr<PulseConnection> connection, const Place& place,
              const engine::OutputRequest& request, engine::RenderSource& source);

  bool Connect(const pa_channel_map& map, const engine::OutputRequest& request);
  void SetCallbacks();
  [[nodiscard]] pa_buffer_attr BufferOf(int buffer_ms, int period_ms) const;
  void FitBuffer();
  void Moved();
  void OwnSinkIsThere(bool there);
  void DefaultIs(const std::string& id);
  void Stay(const std::string& id) DJ_EXCLUDES(moved_mutex_);
  void Ask(pa_operation* question);
  void DropQuestion();
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
  pa_operation* question_ = nullptr;  ///< on why it was moved; nothing is written meanwhile
  std::string default_id_;            ///< as it was when it was opened, or last known
  support::TimePoint suspended_since_{};
  std::int64_t rendered_ = 0;
  std::int64_t heard_ = 0;
  support::TimePoint last_asked_{};
  support::HistoryRing<engine::PlayedMark, 8> played_;
  std::atomic<bool> lost_{false};
  std::atomic<std::uint32_t> wanted_buffer_{0};  ///< of both times, see SetBuffer; 0: as it was opened
  std::uint32_t buffer_ = 0;                     ///< that was asked for last
  std::atomic<std::uint64_t> gaps_{0};
  mutable support::Mutex moved_mutex_;
  std::string moved_to_ DJ_GUARDED_BY(moved_mutex_);
};

}  // namespace platform::audio
