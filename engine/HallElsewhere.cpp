// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/HallElsewhere.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace engine {

HallElsewhere::HallElsewhere(int sample_rate) : halls_{Hall(sample_rate), Hall(sample_rate)} {}

void HallElsewhere::Use(const Sounds& sounds) {
  std::array<const PassingSound*, kHalls> wish{};
  for (std::size_t i = 0; i < kHalls; ++i) {
    wish[i] = sounds[i].get();
    const bool held = std::find(held_.begin(), held_.end(), sounds[i]) != held_.end();
    if (wish[i] != nullptr && !held) held_.push_back(sounds[i]);
  }
  wishes_.Write(wish);
}

void HallElsewhere::Place(std::size_t hall, double behind) noexcept {
  halls_[hall].behind.store(behind, std::memory_order_relaxed);
}

void HallElsewhere::Begin(support::TimePoint now, int frames) noexcept {
  const auto& wish = wishes_.Read();
  for (std::size_t i = 0; i < kHalls; ++i) {
    Hall& hall = halls_[i];
    if (std::exchange(hall.sound, wish[i]) != wish[i]) hall.reader.Rest();
    const bool again = i > 0 && wish[i] == wish[0];  // one hall of both decks is read once
    hall.sounds = hall.sound != nullptr && !again &&
                  hall.reader.Begin(*hall.sound, now, frames, hall.behind.load(std::memory_order_relaxed));
  }
}

bool HallElsewhere::Add(std::size_t hall, std::span<float> stereo) noexcept {
  Hall& from = halls_[hall];
  if (!from.sounds) return false;
  std::array<float, 256> some;
  for (std::size_t at = 0; at < stereo.size(); at += some.size()) {
    const std::span<float> part(some.data(), std::min(some.size(), stereo.size() - at));
    from.reader.Read(*from.sound, part);
    std::transform(part.begin(), part.end(), stereo.begin() + static_cast<std::ptrdiff_t>(at),
                   stereo.begin() + static_cast<std::ptrdiff_t>(at), std::plus<>());
  }
  return true;
}

void HallElsewhere::Rest() noexcept {
  for (Hall& hall : halls_) {
    hall.sounds = false;
    hall.reader.Rest();
  }
}

}  // namespace engine
