// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "dmx/LightLayers.h"

#include <utility>

namespace dmx {
namespace {

bool IsInUniverse(int channel) {
  return channel >= 1 && channel <= kUniverseChannels;
}

}  // namespace

void LightLayers::FromBeneath::SetData(int channel, DmxLevel /*level*/) {
  layers_.At(channel).effect_came_last = false;
  layers_.Move(channel);
}

void LightLayers::SetDimmers(const ChannelSet& dimmers) {
  if (dimmers == dimmers_) return;
  dimmers_ = dimmers;
  for (int channel = 1; channel <= kUniverseChannels; ++channel) Move(channel);
}

void LightLayers::Set(std::optional<DmxLevel> Asked::*who, int channel, std::optional<DmxLevel> level) {
  if (!IsInUniverse(channel) || At(channel).*who == level) return;
  At(channel).*who = level;
  Move(channel);
}

void LightLayers::LetAllGo() {
  for (int channel = 1; channel <= kUniverseChannels; ++channel) LetGo(channel);
}

void LightLayers::SetEffect(int channel, std::optional<DmxLevel> level) {
  if (!IsInUniverse(channel)) return;
  if (!At(channel).effect) At(channel).effect_came_last = true;
  Set(&Asked::effect, channel, level);
}

void LightLayers::RenewEffects() {
  for (int channel = 1; channel <= kUniverseChannels; ++channel) {
    if (!At(channel).effect || std::exchange(At(channel).effect_came_last, true)) continue;
    Move(channel);
  }
}

void LightLayers::SetFreeze(Freeze freeze) {
  if ((freeze == Freeze::On) == IsFrozen()) return;
  if (freeze == Freeze::On) {
    std::array<DmxLevel, kUniverseChannels> levels{};
    for (int channel = 1; channel <= kUniverseChannels; ++channel)
      levels[static_cast<std::size_t>(channel - 1)] = BelowHold(channel);
    frozen_ = levels;
    return;
  }
  frozen_.reset();
  for (int channel = 1; channel <= kUniverseChannels; ++channel) Move(channel);
}

bool LightLayers::EffectLeads(int channel) const {
  const Asked& asked = At(channel);
  if (!asked.effect) return false;
  if (dimmers_[static_cast<std::size_t>(channel - 1)]) return *asked.effect >= beneath_.Level(channel);
  return asked.effect_came_last;
}

LightOwner LightLayers::OwnerOf(int channel) const {
  if (At(channel).hold) return LightOwner::Hold;
  if (At(channel).hand) return LightOwner::Hand;
  return EffectLeads(channel) ? LightOwner::Effect : LightOwner::Beneath;
}

DmxLevel LightLayers::Merged(int channel) const {
  const Asked& asked = At(channel);
  if (asked.hold) return *asked.hold;
  if (frozen_) return (*frozen_)[static_cast<std::size_t>(channel - 1)];
  return BelowHold(channel);
}

DmxLevel LightLayers::BelowHold(int channel) const {
  const Asked& asked = At(channel);
  if (asked.hand) return *asked.hand;
  return EffectLeads(channel) ? *asked.effect : beneath_.Level(channel);
}

}  // namespace dmx
