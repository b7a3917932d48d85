// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/PhonesMix.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace engine {
namespace {

struct Shares {
  float cue = 1;
  float hall = 0;
};

/// Of equal power; at both ends exactly one and nothing.
Shares SharesOf(float programme) {
  const float part = std::clamp(programme, 0.0F, 1.0F);
  if (part == 0) return {1, 0};
  if (part == 1) return {0, 1};
  const float angle = part * std::numbers::pi_v<float> / 2;
  return {std::cos(angle), std::sin(angle)};
}

}  // namespace

PhonesMix::PhonesMix(int sample_rate) : glide_frames_(std::max(1, sample_rate / 100)) {
  for (Ear& ear : cue_) ear.own.Set(1, 0);
}

void PhonesMix::Set(const Wish& wish) noexcept {
  wishes_.Write(wish);
}

void PhonesMix::Aim(Ear& ear, float own, float other) noexcept {
  if (ear.own.Target() != own) ear.own.Set(own, glide_frames_);
  if (ear.other.Target() != other) ear.other.Set(other, glide_frames_);
}

bool PhonesMix::Rests() const noexcept {
  return std::all_of(cue_.begin(), cue_.end(),
                     [](const Ear& ear) { return ear.own.RestsAt(1) && ear.other.RestsAt(0); }) &&
         std::all_of(hall_.begin(), hall_.end(),
                     [](const Ear& ear) { return ear.own.RestsAt(0) && ear.other.RestsAt(0); });
}

bool PhonesMix::WantsHall(const decks::HeadphoneMix& mix) const noexcept {
  return mix.split || mix.programme > 0 || !std::all_of(hall_.begin(), hall_.end(), [](const Ear& ear) {
           return ear.own.RestsAt(0) && ear.other.RestsAt(0);
         });
}

void PhonesMix::Process(std::span<float> phones, std::span<const float> hall,
                        const decks::HeadphoneMix& mix) noexcept {
  const bool heard = !hall.empty();
  const float level = std::clamp(mix.level, 0.0F, 1.0F);
  if (heard && mix.split) {
    Aim(cue_[0], level / 2, level / 2);
    Aim(cue_[1], 0, 0);
    Aim(hall_[0], 0, 0);
    Aim(hall_[1], level / 2, level / 2);
  } else {
    const Shares shares = heard ? SharesOf(mix.programme) : Shares{};
    for (Ear& ear : cue_) Aim(ear, level * shares.cue, 0);
    for (Ear& ear : hall_) Aim(ear, level * shares.hall, 0);
  }
  if (Rests()) return;
  for (std::size_t i = 0; i + 1 < phones.size(); i += 2) {
    const std::array<float, 2> cue{phones[i], phones[i + 1]};
    const std::array<float, 2> all{heard ? hall[i] : 0, heard ? hall[i + 1] : 0};
    for (std::size_t side = 0; side < 2; ++side) {
      phones[i + side] = cue[side] * cue_[side].own.Next() + cue[1 - side] * cue_[side].other.Next() +
                         all[side] * hall_[side].own.Next() + all[1 - side] * hall_[side].other.Next();
    }
  }
}

}  // namespace engine
