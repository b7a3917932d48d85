// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/Players.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

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

void SetEffects(Playing& playing, const decks::EffectSettings& settings) {
  if (playing.sound == nullptr && settings == decks::EffectSettings{}) return;
  StreamSound& sound = SoundOf(playing);
  sound.effects = settings;
  sound.ten.Bypass(!settings.equaliser);
  if (sound.chain == nullptr) {
    if (!decks::AnyOn(settings)) return;
    // What sounds already is faded to it; what has not begun begins with it.
    const bool begun = playing.stream->TransportAsked() != 0;
    sound.chain = std::make_unique<EffectChain>(playing.slot->Core().SampleRate(),
                                                begun ? decks::EffectSettings{} : settings);
    playing.stream->SetRinging(sound.chain.get());
  }
  sound.chain->Set(settings);
}

decks::EffectSettings EffectsOf(const Playing& playing) {
  return playing.sound == nullptr ? decks::EffectSettings{} : playing.sound->effects;
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
  SetLine(follower, -leader.line);
  if (leader.sound == nullptr) return;
  SoundOf(follower).SoundAs(*leader.sound);
  SetEffects(follower, EffectsOf(leader));
}

void Players::SetLine(Playing& playing, int line) {
  if (std::exchange(playing.line, line) == line) return;
  const std::uint64_t asked = playing.stream->VolumeAsked();
  if (asked != 0) TellLeaving(playing, Stream::VolumeOf(asked));
}

void Players::Leave(Map::iterator freed) {
  Playing& left = freed->second;
  const bool leaves_a_tail = left.line != 0 && left.stream->heard.load(std::memory_order_acquire);
  for (Playing& before : leaving_) {
    if (!leaves_a_tail || before.line != left.line) continue;
    before.stream->SetVolume(0);
    before.line = 0;
  }
  leaving_.push_back(std::move(left));
  all_.erase(freed);
}

void Players::TellLeaving(const Playing& heir, float volume) {
  for (Playing& left : leaving_) {
    if (heir.line != 0 && left.line == heir.line) left.stream->SetVolume(volume);
  }
}

void Players::Silence(int deck) {
  for (Playing& left : leaving_) {
    if (std::abs(left.line) == deck) left.stream->SetVolume(0);
  }
}

void Players::Sweep(support::Executor& workers) {
  const auto gone = std::stable_partition(leaving_.begin(), leaving_.end(),
                                          [](const Playing& left) { return !left.stream->detached; });
  for (auto left = gone; left != leaving_.end(); ++left) {
    workers.Post(
        [stream = std::move(left->stream), sound = std::shared_ptr<StreamSound>(std::move(left->sound))] {
          static_cast<void>(stream);
          static_cast<void>(sound);
        });
  }
  leaving_.erase(gone, leaving_.end());
}

void Players::Clear() {
  all_.clear();
  leaving_.clear();
}

}  // namespace engine
