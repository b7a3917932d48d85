// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "support/Clock.h"

namespace engine {

/// Steers the pace at which the sound of another device is read, a microphone's or a hall's, so that it is
/// read at a chosen delay behind that device whatever the two crystals do.
///
/// The delay is told by time stamps, not by how much lies in the ring: two nearly equal blocks beat, and what
/// lies there swings by a whole one. It is smoothed over a second, then proportional and integral control
/// takes over: 8 ppm a frame and 0.8 ppm a frame and second at 48 kHz, which settles within ten seconds; the
/// pitch wavers by less than 0.1 cent. Threads: one.
class DelayControl {
 public:
  /// The delay was brought to the target by a jump; what is known of the crystals stays.
  void Jumped(double target);
  /// Another device.
  void Forget() { *this = {}; }
  /// delay, target: in seconds. after: seconds since the last call.
  void Next(double delay, double target, double after);
  /// To be multiplied with the pace; more is faster.
  [[nodiscard]] double Pace() const { return 1 + bend_; }
  /// In seconds, as measured last and smoothed.
  [[nodiscard]] double Delay() const { return smooth_; }

 private:
  double smooth_ = -1;  ///< none yet
  double integral_ = 0;
  double bend_ = 0;
};

/// The longest of the times seen within one to two turns. Threads: one.
class LongestWait {
 public:
  explicit LongestWait(support::Duration turn) : length_(turn) {}
  void Forget() { now_ = before_ = 0; }
  void Saw(double seconds, support::TimePoint now);
  [[nodiscard]] double Seconds() const { return now_ > before_ ? now_ : before_; }

 private:
  support::Duration length_;
  double now_ = 0;
  double before_ = 0;
  support::TimePoint turn_{};
};

}  // namespace engine
