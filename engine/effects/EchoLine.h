// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <span>

#include "engine/effects/DelayLine.h"
#include "engine/effects/Fade.h"

namespace engine {

/// What both echoes are made of: a line that repeats what goes into it, again and again.
///
/// Law: switched off it takes in nothing new and rings out. Another time is faded to over 50 ms, from one
/// place in the line to another, so that nothing changes its pitch. No repeat is louder than one and a half
/// times full scale. Threads: the callback.
class EchoLine {
 public:
  struct Wanted {
    bool on = false;
    float dry = 1;
    float sent = 0;      ///< into the line
    float feedback = 0;  ///< of a repeat to the next
    float seconds = 0.375F;
    bool operator==(const Wanted&) const = default;
  };

  explicit EchoLine(int sample_rate);

  void Set(const Wanted& wanted) noexcept;
  void Arrive() noexcept;
  /// Off, and nothing rings.
  [[nodiscard]] bool Idle() const noexcept {
    return !wanted_.on && open_.Nothing() && dry_.RestsAt(1) && !Rings();
  }
  [[nodiscard]] bool Rings() const noexcept { return !line_.QuietFor(longest_); }
  void Process(std::span<float> stereo) noexcept;
  void Clear() noexcept { line_.Clear(); }

 private:
  [[nodiscard]] BothSides Read() noexcept;

  const int sample_rate_;
  const int fade_frames_;
  const int longest_;
  Wanted wanted_;
  DelayLine line_;
  OnOff open_;
  Smoothed dry_, sent_, feedback_;
  int place_;  ///< frames back
  int next_place_;
  int fade_left_ = 0;
};

}  // namespace engine
