// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <memory>

#include "dmx/ShowPlan.h"
#include "dmx/dmx_output.h"
#include "support/Clock.h"

namespace dmx {

/// A timer that is looked at now and then.
struct ShowTimer {
  bool Enabled = false;
  support::Duration Interval{0};
  support::TimePoint due;

  void Start(support::TimePoint now, support::Duration interval) { *this = {true, interval, now + interval}; }
};

/// Plays a show on the faders of the universe.
///
/// Law: what the faders show follows from the time since the start alone, so a late tick makes no show
/// longer. A fader is moved only when the show's level changes; between, it belongs to whoever moves it.
/// Threads: one at a time; the conductor ticks it.
class ShowPlayer {
 public:
  enum class State { Stopped, Playing, Paused };
  enum class Repeat { Once, ForEver };

  explicit ShowPlayer(Universe& universe) : universe_(universe) {}

  /// From the start; the first fade comes from where the faders stand. The plan is shared with whoever made
  /// it, so that it can be dropped elsewhere than here.
  void Play(std::shared_ptr<const ShowPlan> plan, Repeat repeat, support::TimePoint now);
  void Pause(support::TimePoint now);
  void Resume(support::TimePoint now);
  /// The faders stay where they are.
  void Stop();
  /// Goes on from another moment of the show.
  void Seek(ShowTime position, support::TimePoint now);
  /// Whether it begins again at its end; for the one that plays.
  void SetRepeat(Repeat repeat) { repeat_ = repeat; }
  void Tick(support::TimePoint now);

  [[nodiscard]] State Now() const { return state_; }
  [[nodiscard]] ShowTime Position(support::TimePoint now) const;
  [[nodiscard]] ShowPlan::Place PlaceAt(support::TimePoint now) const;

  /// Looks at the show 44 times a second, as often as a universe can be sent.
  ShowTimer PlayTimer;
  /// Holds a step: no level moves before it is due.
  ShowTimer WaitTimer;

 private:
  void Sample(support::TimePoint now);
  void StartAgain(support::TimePoint now);

  Universe& universe_;
  std::shared_ptr<const ShowPlan> plan_;
  Repeat repeat_ = Repeat::Once;
  State state_ = State::Stopped;
  support::TimePoint started_;  ///< where the show's time is 0
  ShowTime paused_at_{0};
  std::array<DmxLevel, kUniverseChannels> before_{};  ///< what the faders showed at the start
  std::array<DmxLevel, kUniverseChannels> shown_{};   ///< what the show last asked for
};

}  // namespace dmx
