// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/PassingReader.h"

#include <algorithm>
#include <cmath>

namespace engine {
namespace {

constexpr double kLate = 1.5e-3;    // seconds by which a callback may come late
constexpr double kFurthest = 0.03;  // beyond it is jumped, not bent
constexpr double kGone =
    0.25;                   // seconds without a block: nobody gives any, if blocks are not as long themselves
constexpr int kFade = 200;  // of a second
constexpr double kTail = 2000;  // a second: the rate at which a broken sound dies away

double Seconds(support::Duration time) {
  return std::chrono::duration<double>(time).count();
}

}  // namespace

PassingReader::PassingReader(int sample_rate, int channels, double most)
    : sample_rate_(sample_rate),
      channels_(static_cast<std::size_t>(std::clamp(channels, 1, kMostChannels))),
      most_(most),
      fade_step_(static_cast<float>(kFade) / static_cast<float>(sample_rate)),
      tail_step_(static_cast<float>(std::exp(-kTail / sample_rate))) {}

void PassingReader::Open(const PassingMark& mark) noexcept {
  opening_ = mark.opening;
  BreakOff();
  control_.Forget();
  wait_.Forget();
  blocks_.Forget();
  broke_at_ = -1;
}

void PassingReader::BreakOff() noexcept {
  for (std::size_t i = 0; i < channels_; ++i) tail_[i] += newest_[i];
  newest_ = {};
  reading_ = false;
}

bool PassingReader::Begin(const PassingSound& sound, support::TimePoint now, int frames,
                          double behind) noexcept {
  if (const auto mark = sound.Newest()) mark_ = *mark;
  const double elapsed = Seconds(now - mark_.at);
  if (mark_.opening != 0 && mark_.opening != opening_) Open(mark_);
  if (mark_.opening == 0 || elapsed > std::max(kGone, 2 * wait_.Seconds()) || mark_.frames == broke_at_) {
    if (reading_) BreakOff();
    return std::any_of(tail_.begin(), tail_.end(), [](float tail) { return std::abs(tail) > 1e-6F; });
  }
  // Several callbacks at one moment are one block.
  const double block = static_cast<double>(frames) / sample_rate_;
  burst_ = Seconds(now - last_) < block / 4 ? burst_ + block : block;
  blocks_.Saw(burst_, now);
  wait_.Saw(std::max(elapsed, static_cast<double>(mark_.longest) / mark_.sample_rate), now);
  const double nominal = static_cast<double>(mark_.sample_rate) / sample_rate_;
  tap_.SetPace(nominal);
  const double least =
      wait_.Seconds() + blocks_.Seconds() + static_cast<double>(tap_.Reach()) / mark_.sample_rate + kLate;
  // It is told when a block was asked for, and what is written then ends behind that block.
  const double block_ahead = static_cast<double>(mark_.longest) / mark_.sample_rate;
  const double target = std::min(most_, std::max(least, behind + block_ahead));
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

void PassingReader::JumpTo(double delay, double elapsed) noexcept {
  place_ = static_cast<double>(mark_.frames) + (elapsed - delay) * mark_.sample_rate;
  reading_ = true;
  fade_ = 0;
  control_.Jumped(delay);
}

void PassingReader::Read(const PassingSound& sound, std::span<float> interleaved) noexcept {
  const std::size_t most = kMostRead * channels_;
  for (std::size_t at = 0; at < interleaved.size(); at += most) {
    ReadSome(sound, interleaved.subspan(at, std::min(most, interleaved.size() - at)));
  }
}

int PassingReader::Ready(std::size_t wanted) const noexcept {
  if (!reading_) return 0;
  const double last = static_cast<double>(mark_.frames - tap_.Reach()) - 1;
  const double room = std::floor((last - place_) / pace_) + 1;
  return static_cast<int>(std::clamp(room, 0.0, static_cast<double>(wanted)));
}

void PassingReader::ReadSome(const PassingSound& sound, std::span<float> interleaved) noexcept {
  const std::size_t frames = interleaved.size() / channels_;
  const auto ready = static_cast<std::size_t>(Ready(frames));
  const int reach = tap_.Reach();
  const auto first = static_cast<std::int64_t>(std::floor(place_)) - reach + 1;
  if (ready > 0) {
    const auto needed = static_cast<std::size_t>(std::ceil(static_cast<double>(ready) * pace_)) +
                        2 * static_cast<std::size_t>(reach) + 1;
    sound.Read(first, {source_.data(), channels_ * std::min<std::size_t>(needed, kMostSource)});
  }
  for (std::size_t i = 0; i < frames; ++i) {
    Frame value{};
    if (i < ready) {
      const auto whole = static_cast<std::int64_t>(std::floor(place_));
      const auto at = channels_ * static_cast<std::size_t>(whole - reach + 1 - first);
      for (std::size_t channel = 0; channel < channels_; ++channel) {
        value[channel] =
            fade_ * tap_.At(source_.data() + at + channel, static_cast<std::ptrdiff_t>(channels_),
                            place_ - static_cast<double>(whole));
      }
      fade_ = std::min(1.0F, fade_ + fade_step_);
      place_ += pace_;
      newest_ = value;
    } else if (reading_) {
      ++gaps_;
      broke_at_ = mark_.frames;  // until more comes
      BreakOff();
    }
    for (std::size_t channel = 0; channel < channels_; ++channel) {
      interleaved[i * channels_ + channel] = value[channel] + tail_[channel];
      tail_[channel] *= tail_step_;
    }
  }
}

}  // namespace engine
