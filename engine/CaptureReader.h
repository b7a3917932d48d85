// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "engine/BandLimitedTap.h"
#include "engine/CaptureRing.h"
#include "engine/DelayControl.h"
#include "support/Clock.h"

namespace engine {

/// Reads the microphone at the rate of an output, as short a time behind it as the two devices allow.
///
/// The delay that it keeps is the longest wait between two blocks of the microphone, one block of the output
/// and 1.5 ms for what comes late. A recording that breaks off dies away within 2 ms and comes in again over
/// 5 ms; then the delay has grown by what was missing. More than 30 ms off, it jumps.
/// Threads: the callback; memory is taken at construction only.
class CaptureReader {
 public:
  explicit CaptureReader(int sample_rate);

  /// Once a callback, before Read. frames: that are read until the next one. False when nothing comes.
  bool Begin(const CaptureRing& ring, support::TimePoint now, int frames) noexcept;
  void Read(const CaptureRing& ring, std::span<float> mono) noexcept;
  /// The next Begin starts anew.
  void Rest() noexcept { opening_ = 0; }

  /// From Capture to the frame that is read next, in seconds; 0 while nothing comes.
  [[nodiscard]] double Delay() const noexcept { return reading_ ? control_.Delay() : 0; }
  /// Times that the sound broke off.
  [[nodiscard]] std::uint64_t Gaps() const noexcept { return gaps_; }

 private:
  static constexpr int kMostRead = 128;
  static constexpr int kMostSource = 25 * kMostRead + 2 * BandLimitedTap::kMostReach + 2;

  void Open(const CaptureMark& mark) noexcept;
  void JumpTo(double delay, double elapsed) noexcept;
  void ReadSome(const CaptureRing& ring, std::span<float> mono) noexcept;
  [[nodiscard]] int Ready(std::size_t wanted) const noexcept;
  void BreakOff() noexcept;

  const int sample_rate_;
  const float fade_step_;
  const float tail_step_;
  BandLimitedTap tap_;
  DelayControl control_;
  LongestWait wait_{std::chrono::seconds(60)};   ///< for a block of the microphone
  LongestWait blocks_{std::chrono::seconds(5)};  ///< of the output, which may be told to take smaller ones
  CaptureMark mark_;
  std::uint32_t opening_ = 0;  ///< that is read; 0 is none
  bool reading_ = false;
  std::int64_t broke_at_ = -1;  ///< frames in the ring when the sound broke off
  double place_ = 0;            ///< in the ring, of the frame that is read next
  double pace_ = 1;             ///< ring frames a frame read
  double burst_ = 0;            ///< seconds that were asked for at one moment
  support::TimePoint last_{};
  float fade_ = 0;
  float newest_ = 0;  ///< that was given
  float tail_ = 0;    ///< what dies away after a break
  std::uint64_t gaps_ = 0;
  std::array<float, kMostSource> source_{};
};

}  // namespace engine
