// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "dmx/OutputStage.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

#include "support/Text.h"

namespace dmx {
namespace {

using Role = OutputRule::Role;

/// A colour of its own that is mixed with others, and not a wheel of colours.
bool MixesColour(const FixtureChannel& channel) {
  if (channel.function != ChannelFunction::Color) return false;
  const std::string label = support::ToUpper(channel.label);
  constexpr std::array<std::string_view, 6> kColours{"RED", "GREEN", "BLUE", "WHITE", "AMBER", "UV"};
  return std::any_of(kColours.begin(), kColours.end(),
                     [&](std::string_view colour) { return label.starts_with(colour); });
}

const presets* FirstWith(const FixtureChannel& channel, PresetEffect effect) {
  for (const presets& preset : channel.presets) {
    if (preset.Effect == effect) return &preset;
  }
  return nullptr;
}

DmxLevel LevelOf(int level) {
  return static_cast<DmxLevel>(std::clamp(level, 0, kHighestLevel));
}

/// Open light takes the place of flashes; where the fixture names none, the slow end of the range does.
void AddFlashes(const FixtureChannel& channel, OutputRule& rule) {
  const presets* open = FirstWith(channel, PresetEffect::Open);
  for (const presets& preset : channel.presets) {
    if (preset.Effect != PresetEffect::Strobe) continue;
    const int instead = open != nullptr ? open->StartLevel : preset.StartLevel;
    rule.flashes.push_back({LevelOf(preset.StartLevel), LevelOf(preset.EndLevel), LevelOf(instead)});
  }
}

OutputRule ShutterRule(const FixtureChannel& channel, bool carries_master) {
  OutputRule rule;
  rule.role = Role::Shutter;
  if (carries_master) rule.role = channel.presets.count() == 0 ? Role::Light : Role::LoneShutter;
  if (const presets* closed = FirstWith(channel, PresetEffect::Closed))
    rule.closed = LevelOf(closed->StartLevel);
  AddFlashes(channel, rule);
  return rule;
}

}  // namespace

OutputRules RulesFor(const DMXname& fixtures) {
  OutputRules rules;
  for (const DMXfilename& fixture : fixtures) {
    const auto any = [&](auto wanted) {
      return std::any_of(fixture.Channels.begin(), fixture.Channels.end(), wanted);
    };
    const bool dims = any([](const auto& c) { return c.function == ChannelFunction::Dimmer; });
    const bool mixes = any(MixesColour);
    int channel = fixture.StartChannel;
    for (const FixtureChannel& described : fixture.Channels) {
      const int place = channel++ - 1;
      if (place < 0 || place >= kUniverseChannels) continue;
      OutputRule& rule = rules[static_cast<std::size_t>(place)];
      rule = {};
      const bool light = described.function == ChannelFunction::Dimmer || (!dims && MixesColour(described));
      rule.role = light ? Role::Light : Role::Other;
      if (described.function == ChannelFunction::Shutter) rule = ShutterRule(described, !dims && !mixes);
    }
  }
  return rules;
}

OutputStage::OutputStage(DmxInterface& wire) : wire_(wire) {}

void OutputStage::StartDevice() {
  started_ = true;
  wire_.StartDevice();
}

void OutputStage::SetChannelCount(int count) {
  wire_.SetChannelCount(count);
}

void OutputStage::SetData(int channel, DmxLevel level) {
  if (!started_ || channel < 1 || channel > kUniverseChannels) return;
  const auto place = static_cast<std::size_t>(channel - 1);
  sent_to_us_[place] = level;
  on_wire_[place] = Shaped(place);
  wire_.SetData(channel, on_wire_[place]);
}

void OutputStage::StopDevice() {
  started_ = false;
  sent_to_us_ = {};
  on_wire_ = {};
  wire_.StopDevice();
}

void OutputStage::SetGrandMaster(int master) {
  master_ = std::clamp(master, 0, kFullMaster);
  Refresh();
}

void OutputStage::SetBlackout(Blackout blackout) {
  blackout_ = blackout;
  Refresh();
}

void OutputStage::SetHeldDark(Blackout held) {
  held_dark_ = held;
  Refresh();
}

void OutputStage::SetFlashGuard(FlashGuard guard) {
  guard_ = guard;
  Refresh();
}

void OutputStage::SetRules(OutputRules rules) {
  rules_ = std::move(rules);
  Refresh();
}

DmxLevel OutputStage::Guarded(const OutputRule& rule, DmxLevel level) const {
  if (guard_ == FlashGuard::Lifted) return level;
  for (const OutputRule::Flash& flash : rule.flashes) {
    if (level >= flash.first && level <= flash.last) return flash.instead;
  }
  return level;
}

DmxLevel OutputStage::Shaped(std::size_t place) const {
  const OutputRule& rule = rules_[place];
  const DmxLevel level = Guarded(rule, sent_to_us_[place]);
  if (rule.role == Role::Other) return level;
  if (blackout_ == Blackout::On || held_dark_ == Blackout::On) return rule.closed;
  if (rule.role == Role::Shutter) return level;
  if (rule.role == Role::LoneShutter) return master_ == 0 ? rule.closed : level;
  return static_cast<DmxLevel>((level * master_ + kFullMaster / 2) / kFullMaster);
}

void OutputStage::Refresh() {
  if (!started_) return;
  for (std::size_t place = 0; place < on_wire_.size(); ++place) {
    const DmxLevel level = Shaped(place);
    if (level == on_wire_[place]) continue;
    on_wire_[place] = level;
    wire_.SetData(static_cast<int>(place) + 1, level);
  }
}

}  // namespace dmx
