// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/MicrophoneLine.h"

#include <algorithm>
#include <utility>

namespace engine {

MicrophoneLine::MicrophoneLine(int sample_rate)
    : ramp_frames_(sample_rate / 200), reader_(sample_rate), chain_(sample_rate), ducker_(sample_rate) {}

void MicrophoneLine::Use(std::shared_ptr<const CaptureRing> ring) {
  if (held_ != nullptr) return;
  held_ = std::move(ring);
  ring_.store(held_.get(), std::memory_order_release);
}

void MicrophoneLine::TakeOrders() noexcept {
  now_ = orders_.Read();
  chain_.Set(now_.voice);
  chain_.KeepOpen(now_.talk_over);
  ducker_.Set(now_.duck);
  const bool moves = now_.pairs != pairs_;
  if (moves && audible_.RestsAt(0) && ducker_.Rests()) pairs_ = now_.pairs;
  const float wanted = now_.live && now_.pairs == pairs_ ? 1 : 0;
  if (audible_.Target() != wanted) audible_.Set(wanted, ramp_frames_);
  if (now_.pairs != pairs_) ducker_.Leave();
}

bool MicrophoneLine::Begin(support::TimePoint now, std::int64_t frame, int frames) noexcept {
  const CaptureRing* const ring = ring_.load(std::memory_order_acquire);
  if (ring == nullptr) return false;
  TakeOrders();
  const bool idle = !now_.live && !now_.listen && audible_.RestsAt(0) && ducker_.Rests();
  if (idle) {
    if (std::exchange(resting_, true)) return false;
    reader_.Rest();
    chain_.Reset();
    recorded_ = false;
    marks_.Write({frame, now, 0});
    Tell();
    return false;
  }
  resting_ = false;
  recorded_ = reader_.Begin(*ring, now, frames);
  marks_.Write({frame, now, reader_.Delay()});
  Tell();
  return true;
}

MicrophoneLine::Piece MicrophoneLine::Render(std::span<float> voice, std::span<float> music) noexcept {
  if (recorded_) {
    reader_.Read(*ring_.load(std::memory_order_relaxed), voice);
  } else {
    std::fill(voice.begin(), voice.end(), 0.0F);
  }
  chain_.Process(voice);
  Piece piece;
  piece.sounds = !audible_.RestsAt(0);
  if (piece.sounds && !audible_.RestsAt(1)) {
    for (float& sample : voice) sample *= audible_.Next();
  }
  ducker_.Speaking(now_.live && (now_.talk_over || chain_.Speaks()));
  piece.ducks = ducker_.Render(music);
  return piece;
}

void MicrophoneLine::Tell() noexcept {
  gate_open_.store(!resting_ && (now_.talk_over || chain_.Speaks()), std::memory_order_relaxed);
  input_.store(chain_.Input(), std::memory_order_relaxed);
  level_.store(chain_.Level(), std::memory_order_relaxed);
  reduction_.store(chain_.Reduction(), std::memory_order_relaxed);
  ducking_.store(ducker_.Depth(), std::memory_order_relaxed);
  gaps_.store(reader_.Gaps(), std::memory_order_relaxed);
}

LineReport MicrophoneLine::Report() const noexcept {
  return {gate_open_.load(std::memory_order_relaxed), input_.load(std::memory_order_relaxed),
          level_.load(std::memory_order_relaxed),     reduction_.load(std::memory_order_relaxed),
          ducking_.load(std::memory_order_relaxed),   gaps_.load(std::memory_order_relaxed)};
}

}  // namespace engine
