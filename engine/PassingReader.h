// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "engine/BandLimitedTap.h"
#include "engine/DelayControl.h"
#include "engine/PassingSound.h"
#include "support/Clock.h"

namespace engine {

/// Reads the sound of another device at the rate of an output: the microphone, as short a time behind it as
/// the two devices allow, or the hall in head-phones on another card, in step with it.
///
/// The delay that it keeps is at least the longest wait between two blocks of the source, one block of the
/// output and 1.5 ms for what comes late. A sound that breaks off dies away within 2 ms and comes in again
/// over 5 ms; the delay has grown then, where the wait up to the break was the longest yet. More than 30 ms
/// off, it jumps.
/// Threads: the callback; memory is taken at construction only.
class PassingReader {
 public:
  static constexpr int kMostChannels = 2;

  /// most: seconds that it may be behind.
  explicit PassingReader(int sample_rate, int channels = 1, double most = 0.1);

  /// Once a callback, before Read. frames: that are read until the next one. behind: seconds from the moment
  /// at which a frame of the source was asked for, where they are more than the least. False when nothing
  /// comes.
  bool Begin(const PassingSound& sound, support::TimePoint now, int frames, double behind = 0) noexcept;
  void Read(const PassingSound& sound, std::span<float> interleaved) noexcept;
  /// The next Begin starts anew.
  void Rest() noexcept {
    opening_ = 0;
    mark_ = {};
  }

  /// From the source's callback to the frame that is read next, in seconds; 0 while nothing comes.
  [[nodiscard]] double Delay() const noexcept { return reading_ ? control_.Delay() : 0; }
  /// Times that the sound broke off.
  [[nodiscard]] std::uint64_t Gaps() const noexcept { return gaps_; }

 private:
  static constexpr int kMostRead = 128;
  static constexpr int kMostSource = 25 * kMostRead + 2 * BandLimitedTap::kMostReach + 2;

  void Open(const PassingMark& mark) noexcept;
  void JumpTo(double delay, double elapsed) noexcept;
  void ReadSome(const PassingSound& sound, std::span<float> interleaved) noexcept;
  [[nodiscard]] int Ready(std::size_t wanted) const noexcept;
  void BreakOff() noexcept;

  using Frame = std::array<float, kMostChannels>;

  const int sample_rate_;
  const std::size_t channels_;
  const double most_;
  const float fade_step_;
  const float tail_step_;
  BandLimitedTap tap_;
  DelayControl control_;
  LongestWait wait_{std::chrono::seconds(60)};   ///< for a block of the source
  LongestWait blocks_{std::chrono::seconds(5)};  ///< of the output, which may be told to take smaller ones
  PassingMark mark_;
  std::uint32_t opening_ = 0;  ///< that is read; 0 is none
  bool reading_ = false;
  std::int64_t broke_at_ = -1;  ///< the end of what was written when the sound broke off
  double place_ = 0;            ///< among the source's frames, of the one that is read next
  double pace_ = 1;             ///< the source's frames a frame read
  double burst_ = 0;            ///< seconds that were asked for at one moment
  support::TimePoint last_{};
  float fade_ = 0;
  Frame newest_{};  ///< that was given
  Frame tail_{};    ///< what dies away after a break
  std::uint64_t gaps_ = 0;
  std::array<float, kMostChannels * kMostSource> source_{};
};

}  // namespace engine
