// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>
#include <memory>
#include <vector>

#include "decks/ports/AudioEngine.h"
#include "engine/DeviceSlot.h"
#include "engine/HeardPlace.h"
#include "engine/Stream.h"
#include "engine/StreamSound.h"
#include "support/Executor.h"

namespace engine {

/// A stream on a device, and what it follows.
struct Playing {
  std::shared_ptr<Stream> stream;                // with the feeder's pass
  std::shared_ptr<DeviceSlot> slot;              // with the table
  decks::StreamHandle decoder = 0;               ///< freed with it, or 0
  std::unique_ptr<StreamSound> sound = nullptr;  ///< from the first effect on; outlives the voice
  decks::StreamHandle leader = 0;                ///< that it follows, or 0
  int line = 0;  ///< the deck that it is heard of, below 0 in the head-phones, or 0
};

/// What of it is heard now.
[[nodiscard]] HeardPlace PlaceOf(const Playing& playing);

/// The bands and effects of a stream, made when they are first asked for.
[[nodiscard]] StreamSound& SoundOf(Playing& playing);
/// As SoundOf; takes memory for the effects only once one of them is to be heard.
void SetEffects(Playing& playing, const decks::EffectSettings& settings);
[[nodiscard]] decks::EffectSettings EffectsOf(const Playing& playing);

/// The streams that play or may, by their handles. Those that follow another one sound as it does.
/// Threads: the owner's.
class Players {
 public:
  using Map = std::map<decks::StreamHandle, Playing>;

  [[nodiscard]] Map& All() { return all_; }
  /// Null when there is none; stays valid until it is taken out.
  [[nodiscard]] Playing* Find(decks::StreamHandle handle);
  /// Null when it follows none.
  [[nodiscard]] const Stream* LeaderOf(const Playing& playing);
  /// From now on it sounds as the leader does; a leader that is none ends it. The handle of the leader, or 0.
  decks::StreamHandle Follow(Playing& follower, decks::StreamHandle leader);
  /// The deck that it is heard of; what rings after another one of it takes the volume set so far.
  void SetLine(Playing& playing, int line);
  /// The leader's gain or effects have changed.
  void TellFollowers(decks::StreamHandle leader);

  // Freed ones, until they are faded or have rung out.
  /// Another one of the line that still rings is silenced: a deck keeps one tail, the newest that was heard.
  void Leave(Map::iterator freed);
  /// Volume of the line's newest one, that what rings after it follows.
  void TellLeaving(const Playing& heir, float volume);
  /// All of the deck, in the hall and in the head-phones.
  void Silence(int deck);
  /// Those that are silent go. workers: the last one to hold a long file or an echo's lines gives back a lot
  /// of memory.
  void Sweep(support::Executor& workers);

  void Clear();

 private:
  void SoundAs(Playing& follower, const Playing& leader);

  Map all_;
  std::vector<Playing> leaving_;
};

}  // namespace engine
