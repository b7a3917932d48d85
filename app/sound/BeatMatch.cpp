// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/sound/BeatMatch.h"

#include "app/work/Conductor.h"

namespace app {

bool BeatMatch::Start(DeckStation& follower, DeckStation& leader, SyncStart start, int most_percent) {
  Follower& one = Of(follower);
  decks::BeatSync sync;
  if (!sync.Begin(leader.Tempo().Side(), follower.Tempo().Side(), most_percent)) return false;
  Stop(leader);
  follower.Tempo().Keep();
  one = Follower{.on = true,
                 .sync = sync,
                 .own_track = follower.Tempo().Track(),
                 .led_track = leader.Tempo().Track(),
                 .most_percent = most_percent};
  if (start == SyncStart::Gently) return true;
  const auto late = sync.Error(leader.Tempo().Side(), follower.Tempo().Side());
  if (late) Jump(follower, *late);
  return true;
}

/// What stands ready was prepared at another tempo, and would begin at that one.
void BeatMatch::PrepareAnew(DeckStation& deck) {
  deck.Seek(std::chrono::duration_cast<std::chrono::microseconds>(deck.Tempo().Place()));
}

std::optional<music::Seconds> BeatMatch::StartForMix(DeckStation& follower, DeckStation& leader,
                                                     music::Seconds place, int most_percent) {
  Follower& one = Of(follower);
  DeckTempo& tempo = follower.Tempo();
  decks::BeatSide led = leader.Tempo().Side();
  led.heard = place;
  decks::BeatSync sync;
  if (!sync.Begin(led, tempo.Side(), most_percent)) return std::nullopt;
  const auto step = sync.Next(led, tempo.Side(), music::Seconds(0));
  if (!step) return std::nullopt;
  Stop(leader);
  tempo.Borrow();
  tempo.Follow(step->speed, 1);
  PrepareAnew(follower);
  one = Follower{.on = true,
                 .for_mix = true,
                 .sync = sync,
                 .own_track = tempo.Track(),
                 .led_track = leader.Tempo().Track(),
                 .most_percent = most_percent,
                 .from = tempo.Place()};
  decks::BeatSide own = tempo.Side();
  led.playing = own.playing = true;
  const auto late = sync.Error(led, own);
  return late ? place - *late * led.speed : place;
}

void BeatMatch::CancelMix(DeckStation& follower) {
  constexpr double kAtOnce = 1000;
  Follower& one = Of(follower);
  if (!one.on || !one.for_mix || one.mixed) return;
  one = {};
  follower.Tempo().GiveBack(kAtOnce);
  PrepareAnew(follower);
}

bool BeatMatch::MixIsOver(Follower& one, const DeckStation& follower, const DeckStation& leader) const {
  const bool both = follower.Tempo().Playing() && leader.Tempo().Playing();
  // Its start is heard later than it happens, and until then it seems to fall behind.
  one.mixed = one.mixed || (both && follower.Tempo().Place() > one.from);
  return one.led_track != leader.Tempo().Track() || (one.mixed && !both);
}

/// A quarter of a percent a beat, in steps that nobody hears.
void BeatMatch::GlideBack(DeckStation& deck) {
  constexpr int kStep = 10;
  constexpr double kPercentABeat = 0.25;
  int& ticks = steps_[static_cast<std::size_t>(deck.Player().Channel() - 1)];
  if (++ticks < kStep) return;
  ticks = 0;
  const double beats = deck.Tempo().Bpm() / 60 * music::Seconds(kStep * Conductor::kPeriod).count();
  deck.Tempo().GiveBack(kPercentABeat * (beats > 0 ? beats : 0.2));
}

void BeatMatch::Jump(DeckStation& deck, music::Seconds late) {
  constexpr music::Seconds kPreparing{0.015};  // the feeder's turn and half a block, on the average
  constexpr int kRest = 30;
  const DeckTempo& tempo = deck.Tempo();
  const music::Seconds place = tempo.Place() + (late + tempo.Lag() + kPreparing) * tempo.Speed();
  deck.Seek(std::chrono::duration_cast<std::chrono::microseconds>(place));
  Of(deck).resting = kRest;
}

void BeatMatch::Stop(DeckStation& follower) {
  Follower& one = Of(follower);
  if (one.on) follower.Tempo().Bend(1);
  one = {};
}

int BeatMatch::Tick(DeckStation& follower, DeckStation& leader) {
  Follower& one = Of(follower);
  if (!one.on) {
    GlideBack(follower);
    return 0;
  }
  if (one.own_track != follower.Tempo().Track()) {
    one = {};  // the new file begins without a bend
    return 0;
  }
  if (one.for_mix && MixIsOver(one, follower, leader)) {
    Stop(follower);
    return 0;
  }
  const decks::BeatSide led = leader.Tempo().Side();
  decks::BeatSide own = follower.Tempo().Side();
  own.playing = own.playing && (one.mixed || !one.for_mix);
  if (one.led_track != leader.Tempo().Track()) {
    one.led_track = leader.Tempo().Track();
    if (led.bpm > 0 && !one.sync.Begin(led, own, one.most_percent)) {
      const int most = one.most_percent;
      Stop(follower);
      return most;
    }
  }
  if (!(led.bpm > 0)) return 0;  // nothing to follow: on at the speed it has
  if (follower.Tempo().Nudging()) {
    one.sync.Rebase(led, own);
    return 0;
  }
  // The beat jumps at each turn of such a loop: what is heard holds its tempo until it is left.
  if (leader.Cues().BreaksTheBeat() || follower.Cues().BreaksTheBeat()) one.resting = 2;
  if (one.resting > 0) {
    if (--one.resting == 0) one.sync.Restart();
    return 0;
  }
  const auto step = one.sync.Next(led, own, music::Seconds(Conductor::kPeriod));
  if (!step) {
    const int most = one.most_percent;
    Stop(follower);
    return most;
  }
  one.error = step->error.count();
  follower.Tempo().Follow(step->speed, step->bend);
  return 0;
}

void BeatMatch::Show(int deck, DeckView& view) const {
  const Follower& one = followers_[static_cast<std::size_t>(deck - 1)];
  view.synced = one.on;
  view.sync_error = one.error;
}

}  // namespace app
