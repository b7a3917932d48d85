// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <atomic>
#include <span>

#include "engine/BothSides.h"

namespace engine {

/// Bass, middle and high of a stream, each of which can be taken out wholly.
///
/// Two crossovers, at 250 and 2500 Hz, of 48 dB an octave (Linkwitz-Riley, of the eighth order), so that an
/// octave beyond an edge a killed band is 48 dB down; the three together are an all-pass: flat in level, only
/// turned in phase. S. P. Lipshitz, J. Vanderkooy, "A Family of Linear-Phase Crossover Networks of High Slope
/// Derived by Time Delay", 1983, explains the family; the filters are V. Zavalishin's ("The Art of VA Filter
/// Design", trapezoidal state variable).
///
/// Law: until a band is moved every sample passes bit for bit and nothing is computed; from then on until the
/// next Reset the crossovers stay in the way, because taking them out would be heard as a turn of phase.
/// Gains glide over 10 ms. Threads: Set by the owner, the rest in the callback.
class ThreeBands {
 public:
  /// Factors; 0 is nothing.
  struct Gains {
    float bass = 1;
    float mid = 1;
    float high = 1;
    bool operator==(const Gains&) const = default;
  };

  explicit ThreeBands(int sample_rate);

  void Set(const Gains& gains) noexcept;
  [[nodiscard]] Gains Wanted() const noexcept;

  void Process(std::span<float> stereo) noexcept;
  /// The sound before the next block has nothing to do with it.
  void Reset() noexcept;

 private:
  /// One state-variable filter's numbers.
  struct Shape {
    double k = 0, a1 = 0, a2 = 0, a3 = 0;
  };
  using Both = BothSides;
  struct Memory {
    Both s1{}, s2{};
  };
  struct Outputs {
    Both low, band, high;
  };
  /// An edge: its Butterworth filter of the fourth order, as two sections.
  using Edge = std::array<Shape, 2>;
  struct Split {
    std::array<Memory, 7> memory;  ///< the first is shared, three each for low and high
    void Run(const Edge& edge, const Both& in, Both& low, Both& high) noexcept;
  };
  struct Turn {
    std::array<Memory, 2> memory;
    [[nodiscard]] Both Run(const Edge& edge, Both in) noexcept;
  };

  [[nodiscard]] static Edge EdgeAt(double hertz, int sample_rate);
  [[nodiscard]] static Outputs Step(const Shape& shape, Memory& memory, const Both& in) noexcept;
  void Glide() noexcept;
  [[nodiscard]] Both Filter(const Both& in) noexcept;

  const int settle_frames_;  ///< 10 ms
  const Edge lower_, upper_;
  std::atomic<float> bass_{1}, mid_{1}, high_{1};

  // The callback's.
  bool asleep_ = true;
  int awake_for_ = 0;  ///< frames, up to twice settle_frames_: first it fills, then it fades in
  Gains target_, now_, step_;
  int glide_left_ = 0;
  Split lower_split_, upper_split_;
  Turn bass_turn_;
};

}  // namespace engine
