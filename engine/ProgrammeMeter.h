// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <span>

#include "decks/ports/SoundDesk.h"
#include "engine/BothSides.h"
#include "engine/TruePeak.h"
#include "music/PeakingFilter.h"
#include "support/HistoryRing.h"

namespace engine {

/// A tenth of a second of a pair of speakers.
struct MeterLine {
  std::int64_t end = 0;  ///< engine frame behind it
  double power = 0;      ///< of both sides behind the weighting, a frame
  float peak = 0;
  float gain = 1;  ///< the limiter's lowest
};
/// How loud a pair of speakers is, by ITU-R BS.1770-4 and EBU Tech 3341, and how high it rises between its
/// samples: a line for each tenth of a second, read at the frame that is heard.
///
/// Threads: Add and Note in the callback, Switch by the owner, Read by any. Law: switched off it costs
/// nothing.
class ProgrammeMeter {
 public:
  explicit ProgrammeMeter(int sample_rate);

  void Switch(bool on) noexcept { on_.store(on, std::memory_order_relaxed); }

  /// frame: engine frame of the first one. Requires: two samples a frame, at most TruePeak::kMostFrames.
  void Add(std::span<const float> stereo, std::int64_t frame) noexcept;
  /// The limiter has turned down by this factor.
  void Note(float gain) noexcept;
  [[nodiscard]] decks::MasterReading Read(std::int64_t heard_frame) const noexcept;

 private:
  /// Transposed direct form II.
  struct Memory {
    BothSides z1{}, z2{};
    [[nodiscard]] BothSides Step(const music::Biquad& filter, BothSides in) noexcept;
  };
  using Weighting = std::array<music::Biquad, 2>;

  [[nodiscard]] static Weighting WeightingAt(int sample_rate);
  void Finish(std::int64_t end) noexcept;
  /// In LUFS, of the lines before that number.
  [[nodiscard]] support::Decibels LoudnessOf(std::uint64_t before, std::uint64_t lines) const noexcept;

  const int line_frames_;
  const Weighting weighting_;
  std::atomic<bool> on_{false};
  std::array<Memory, 2> memory_{};
  TruePeak peaks_;
  std::array<float, TruePeak::kMostFrames> heights_{};
  MeterLine line_;
  BothSides energy_{};
  int frames_ = 0;
  support::HistoryRing<MeterLine, 64> lines_;
};

}  // namespace engine
