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
  if (!one.on) return 0;
  if (one.own_track != follower.Tempo().Track()) {
    one = {};  // the new file begins without a bend
    return 0;
  }
  const decks::BeatSide led = leader.Tempo().Side();
  const decks::BeatSide own = follower.Tempo().Side();
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
