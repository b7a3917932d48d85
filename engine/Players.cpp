// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/Players.h"

namespace engine {

HeardPlace PlaceOf(const Playing& playing) {
  return ReadHeardPlace(*playing.stream, playing.slot->HeardFrame(), playing.slot->Core().SampleRate());
}

StreamSound& SoundOf(Playing& playing) {
  if (playing.sound == nullptr) {
    playing.sound = std::make_unique<StreamSound>(playing.slot->Core().SampleRate());
    playing.stream->SetEffect(playing.sound.get());
  }
  return *playing.sound;
}

Playing* Players::Find(decks::StreamHandle handle) {
  const auto found = all_.find(handle);
  return found == all_.end() ? nullptr : &found->second;
}

const Stream* Players::LeaderOf(const Playing& playing) {
  const Playing* leader = Find(playing.leader);
  return leader == nullptr ? nullptr : leader->stream.get();
}

decks::StreamHandle Players::Follow(Playing& follower, decks::StreamHandle leader) {
  const Playing* led = Find(leader);
  follower.leader = led == nullptr ? 0 : leader;
  if (led != nullptr) SoundAs(follower, *led);
  return follower.leader;
}

void Players::TellFollowers(decks::StreamHandle leader) {
  const Playing* led = Find(leader);
  if (led == nullptr) return;
  for (auto& [handle, playing] : all_) {
    if (playing.leader == leader) SoundAs(playing, *led);
  }
}

void Players::SoundAs(Playing& follower, const Playing& leader) {
  follower.stream->SetGain(leader.stream->Gain());
  if (leader.sound != nullptr) SoundOf(follower).SoundAs(*leader.sound);
}

}  // namespace engine
