// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/CaptureReader.h"

#include <algorithm>
#include <cmath>

namespace engine {
namespace {

constexpr double kLate = 1.5e-3;  // seconds by which a callback may come late
constexpr double kMostDelay = 0.1;
constexpr double kFurthest = 0.03;  // beyond it is jumped, not bent
constexpr double kGone = 0.25;      // seconds without a block: the microphone is not there
constexpr int kFade = 200;          // of a second
constexpr double kTail = 2000;      // a second: the rate at which a broken sound dies away

double Seconds(support::Duration time) {
  return std::chrono::duration<double>(time).count();
}

}  // namespace

CaptureReader::CaptureReader(int sample_rate)
    : sample_rate_(sample_rate),
      fade_step_(static_cast<float>(kFade) / static_cast<float>(sample_rate)),
      tail_step_(static_cast<float>(std::exp(-kTail / sample_rate))) {}

void CaptureReader::Open(const CaptureMark& mark) noexcept {
  opening_ = mark.opening;
  BreakOff();
  control_.Forget();
  wait_.Forget();
  blocks_.Forget();
  broke_at_ = -1;
}

void CaptureReader::BreakOff() noexcept {
  tail_ += newest_;
  newest_ = 0;
  reading_ = false;
}

bool CaptureReader::Begin(const CaptureRing& ring, support::TimePoint now, int frames) noexcept {
  if (const auto mark = ring.Newest()) mark_ = *mark;
  const double elapsed = Seconds(now - mark_.at);
  if (mark_.opening != 0 && mark_.opening != opening_) Open(mark_);
  if (mark_.opening == 0 || elapsed > kGone || mark_.frames == broke_at_) {
    if (reading_) BreakOff();
    return std::abs(tail_) > 1e-6F;
  }
  // Several callbacks at one moment are one block.
  const double block = static_cast<double>(frames) / sample_rate_;
  burst_ = Seconds(now - last_) < block / 4 ? burst_ + block : block;
  blocks_.Saw(burst_, now);
  wait_.Saw(std::max(elapsed, static_cast<double>(mark_.longest) / mark_.sample_rate), now);
  const double nominal = static_cast<double>(mark_.sample_rate) / sample_rate_;
  tap_.SetPace(nominal);
  const double target =
      std::min(kMostDelay, wait_.Seconds() + blocks_.Seconds() +
                               static_cast<double>(tap_.Reach()) / mark_.sample_rate + kLate);
  const double delay = (static_cast<double>(mark_.frames) - place_) / mark_.sample_rate + elapsed;
  if (!reading_ || std::abs(delay - target) > kFurthest) {
    if (reading_) BreakOff();
    JumpTo(target, elapsed);
  } else {
    control_.Next(delay, target, std::clamp(Seconds(now - last_), 0.0, 0.1));
  }
  last_ = now;
  pace_ = nominal * control_.Pace();
  return true;
}

void CaptureReader::JumpTo(double delay, double elapsed) noexcept {
  place_ = static_cast<double>(mark_.frames) + (elapsed - delay) * mark_.sample_rate;
  reading_ = true;
  fade_ = 0;
  control_.Jumped(delay);
}

void CaptureReader::Read(const CaptureRing& ring, std::span<float> mono) noexcept {
  for (std::size_t at = 0; at < mono.size(); at += kMostRead) {
    ReadSome(ring, mono.subspan(at, std::min<std::size_t>(kMostRead, mono.size() - at)));
  }
}

int CaptureReader::Ready(std::size_t wanted) const noexcept {
  if (!reading_) return 0;
  const double last = static_cast<double>(mark_.frames - tap_.Reach()) - 1;
  const double room = std::floor((last - place_) / pace_) + 1;
  return static_cast<int>(std::clamp(room, 0.0, static_cast<double>(wanted)));
}

void CaptureReader::ReadSome(const CaptureRing& ring, std::span<float> mono) noexcept {
  const int ready = Ready(mono.size());
  const int reach = tap_.Reach();
  const auto first = static_cast<std::int64_t>(std::floor(place_)) - reach + 1;
  if (ready > 0) {
    const auto needed =
        static_cast<std::size_t>(std::ceil(ready * pace_)) + 2 * static_cast<std::size_t>(reach) + 1;
    ring.Read(first, {source_.data(), std::min(needed, source_.size())});
  }
  for (std::size_t i = 0; i < mono.size(); ++i) {
    float value = 0;
    if (static_cast<int>(i) < ready) {
      const auto whole = static_cast<std::int64_t>(std::floor(place_));
      const auto at = static_cast<std::size_t>(whole - reach + 1 - first);
      value = fade_ * tap_.At({source_.data() + at, 2 * static_cast<std::size_t>(reach)},
                              place_ - static_cast<double>(whole));
      fade_ = std::min(1.0F, fade_ + fade_step_);
      place_ += pace_;
      newest_ = value;
    } else if (reading_) {
      ++gaps_;
      broke_at_ = mark_.frames;  // until more comes
      BreakOff();
    }
    mono[i] = value + tail_;
    tail_ *= tail_step_;
  }
}

}  // namespace engine
