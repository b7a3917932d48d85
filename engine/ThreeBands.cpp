// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/ThreeBands.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace engine {
namespace {

constexpr double kLowerEdge = 250;   // Hz
constexpr double kUpperEdge = 2500;  // Hz
constexpr ThreeBands::Gains kNeutral;

}  // namespace

ThreeBands::Edge ThreeBands::EdgeAt(double hertz, int sample_rate) {
  const double g = std::tan(std::numbers::pi * std::min(hertz / sample_rate, 0.45));
  Edge edge;
  for (std::size_t i = 0; i < edge.size(); ++i) {
    // Butterworth: the poles of the fourth order lie at these angles.
    const double k = 2 * std::cos(std::numbers::pi * (i == 0 ? 1 : 3) / 8);
    const double a1 = 1 / (1 + g * (g + k));
    edge[i] = {k, a1, g * a1, g * g * a1};
  }
  return edge;
}

ThreeBands::ThreeBands(int sample_rate)
    : settle_frames_(std::max(1, sample_rate / 100)),
      lower_(EdgeAt(kLowerEdge, sample_rate)),
      upper_(EdgeAt(kUpperEdge, sample_rate)) {}

void ThreeBands::Set(const Gains& gains) noexcept {
  bass_.store(gains.bass, std::memory_order_relaxed);
  mid_.store(gains.mid, std::memory_order_relaxed);
  high_.store(gains.high, std::memory_order_relaxed);
}

ThreeBands::Gains ThreeBands::Wanted() const noexcept {
  return {bass_.load(std::memory_order_relaxed), mid_.load(std::memory_order_relaxed),
          high_.load(std::memory_order_relaxed)};
}

inline ThreeBands::Outputs ThreeBands::Step(const Shape& shape, Memory& memory, const Both& in) noexcept {
  const Both v3 = in - memory.s2;
  const Both v1 = shape.a1 * memory.s1 + shape.a2 * v3;
  const Both v2 = memory.s2 + shape.a2 * memory.s1 + shape.a3 * v3;
  memory.s1 = 2.0 * v1 - memory.s1;
  memory.s2 = 2.0 * v2 - memory.s2;
  return {v2, v1, in - shape.k * v1 - v2};
}

inline void ThreeBands::Split::Run(const Edge& edge, const Both& in, Both& low, Both& high) noexcept {
  const Outputs first = Step(edge[0], memory[0], in);
  low = Step(edge[1], memory[1], first.low).low;
  low = Step(edge[0], memory[2], low).low;
  low = Step(edge[1], memory[3], low).low;
  high = Step(edge[1], memory[4], first.high).high;
  high = Step(edge[0], memory[5], high).high;
  high = Step(edge[1], memory[6], high).high;
}

inline ThreeBands::Both ThreeBands::Turn::Run(const Edge& edge, Both in) noexcept {
  for (std::size_t i = 0; i < edge.size(); ++i) in -= 2.0 * edge[i].k * Step(edge[i], memory[i], in).band;
  return in;
}

inline ThreeBands::Both ThreeBands::Filter(const Both& in) noexcept {
  Both bass, rest, mid, high;
  lower_split_.Run(lower_, in, bass, rest);
  upper_split_.Run(upper_, rest, mid, high);
  bass = bass_turn_.Run(upper_, bass);  // as the other two were turned at the upper edge
  return static_cast<double>(now_.bass) * bass + static_cast<double>(now_.mid) * mid +
         static_cast<double>(now_.high) * high;
}

void ThreeBands::Glide() noexcept {
  if (glide_left_ == 0) return;
  if (--glide_left_ == 0) {
    now_ = target_;
    return;
  }
  now_.bass += step_.bass;
  now_.mid += step_.mid;
  now_.high += step_.high;
}

void ThreeBands::Process(std::span<float> stereo) noexcept {
  const Gains wanted = Wanted();
  if (asleep_) {
    if (wanted == kNeutral) return;
    asleep_ = false;
    awake_for_ = 0;
  }
  if (wanted != target_) {
    const auto frames = static_cast<float>(settle_frames_);
    target_ = wanted;
    glide_left_ = settle_frames_;
    step_ = {(wanted.bass - now_.bass) / frames, (wanted.mid - now_.mid) / frames,
             (wanted.high - now_.high) / frames};
  }
  for (std::size_t i = 0; i + 1 < stereo.size(); i += 2) {
    const Both in = BothOf(stereo[i], stereo[i + 1]);
    Glide();
    Both out = Filter(in);
    if (awake_for_ < 2 * settle_frames_) {
      const double share = static_cast<double>(std::max(0, ++awake_for_ - settle_frames_)) / settle_frames_;
      out = in + share * (out - in);
    }
    stereo[i] = static_cast<float>(out[0]);
    stereo[i + 1] = static_cast<float>(out[1]);
  }
}

void ThreeBands::Reset() noexcept {
  lower_split_ = upper_split_ = {};
  bass_turn_ = {};
  now_ = target_ = Wanted();
  glide_left_ = 0;
  asleep_ = target_ == kNeutral;
  awake_for_ = 2 * settle_frames_;
}

}  // namespace engine
