// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cmath>
#include <cstdint>

namespace engine {

/// Two devices' frames that are heard at the same moment.
struct FramePair {
  std::int64_t own = 0;
  std::int64_t leaders = 0;
  double leaders_a_frame = 1;  ///< by the nominal rates; over the half second that matters it is exact enough

  [[nodiscard]] double OfLeader(std::int64_t own_frame) const {
    return static_cast<double>(leaders) + static_cast<double>(own_frame - own) * leaders_a_frame;
  }
  [[nodiscard]] std::int64_t OwnOf(double leaders_frame) const {
    return own + std::llround((leaders_frame - static_cast<double>(leaders)) / leaders_a_frame);
  }
};

/// Turns how far a stream is behind the one it follows into a bend of its pace that nobody hears.
///
/// The distance is that of the next frame to be made, so that there is no dead time between bend and effect.
/// It is smoothed, because devices tell their clocks unevenly: over a third of a second while it catches up,
/// over a second afterwards. What stays, two crystals that differ, is learnt. Threads: one.
class Following {
 public:
  /// Beyond this a bend would take too long: it has to jump.
  static constexpr double kFurthest = 0.03;  // s

  /// behind: seconds of the file, below 0 is ahead. after: seconds since the last call.
  /// Returns the factor on the pace.
  double Next(double behind, double after);
  /// It was put where it belongs, or follows nothing for a while; what was learnt of the clocks stays.
  void Rest();
  [[nodiscard]] double Bend() const noexcept { return bend_; }

 private:
  double quick_ = 0;  ///< smoothed, s
  double still_ = 0;  ///< more so
  double learnt_ = 0;
  double bend_ = 1;
};

}  // namespace engine
