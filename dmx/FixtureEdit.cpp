// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "dmx/FixtureEdit.h"

#include <algorithm>
#include <utility>

namespace dmx {
namespace {

int Fixture::*MemberOf(FixtureEdit::Angle which) {
  switch (which) {
    case FixtureEdit::Angle::Tilt:
      return &Fixture::tilt_angle;
    case FixtureEdit::Angle::Pan:
      return &Fixture::pan_angle;
    case FixtureEdit::Angle::Beam:
      break;
  }
  return &Fixture::beam_angle;
}

presets Bounded(presets preset, int channel) {
  preset.StartLevel = std::clamp(preset.StartLevel, 0, kHighestLevel);
  preset.EndLevel = std::clamp(preset.EndLevel, 0, kHighestLevel);
  preset.Owner = channel;
  return preset;
}

}  // namespace

std::size_t Weight(const Fixture& fixture) {
  std::size_t weight = sizeof fixture + fixture.name.size();
  for (const FixtureChannel& channel : fixture.channels) {
    weight += sizeof channel + channel.label.size();
    for (const presets& preset : channel.presets) weight += sizeof preset + preset.name.size();
  }
  return weight;
}

int FixtureEdit::AngleOf(Angle which) const {
  return Now().*MemberOf(which);
}

void FixtureEdit::SetName(std::string name) {
  Fixture next = Now();
  next.name = std::move(name);
  history_.Change(std::move(next), "name");
}

void FixtureEdit::SetType(FixtureType type) {
  Fixture next = Now();
  next.type = type;
  history_.Change(std::move(next));
}

void FixtureEdit::SetAngle(Angle which, int degrees) {
  Fixture next = Now();
  next.*MemberOf(which) = std::clamp(degrees, 0, kHighestAngle);
  history_.Change(std::move(next), "angle" + std::to_string(static_cast<int>(which)));
}

void FixtureEdit::SetChannels(int count) {
  constexpr std::string_view kThing = "channels";
  Fixture next = history_.Base(kThing);
  SetChannelCount(next, count);
  history_.Change(std::move(next), kThing);
}

void FixtureEdit::SetFunction(int channel, ChannelFunction function) {
  ChangeChannel(channel, {}, [&](FixtureChannel& changed) { changed.function = function; });
}

void FixtureEdit::SetLabel(int channel, std::string label) {
  ChangeChannel(channel, "label" + std::to_string(channel),
                [&](FixtureChannel& changed) { changed.label = std::move(label); });
}

void FixtureEdit::AddPreset(int channel, presets preset) {
  ChangeChannel(channel, {},
                [&](FixtureChannel& changed) { changed.presets.Add(Bounded(std::move(preset), channel)); });
}

void FixtureEdit::SetPreset(int channel, int position, presets preset) {
  ChangeChannel(channel, "preset" + std::to_string(channel) + "/" + std::to_string(position),
                [&](FixtureChannel& changed) {
                  presets* old = changed.presets.Item(position);
                  if (old != nullptr) *old = Bounded(std::move(preset), channel);
                });
}

void FixtureEdit::RemovePreset(int channel, int position) {
  ChangeChannel(channel, {}, [&](FixtureChannel& changed) { changed.presets.Remove(position); });
}

void FixtureEdit::MovePreset(int channel, int from, int to) {
  ChangeChannel(channel, {}, [&](FixtureChannel& changed) {
    const bool both = changed.presets.Item(from) != nullptr && changed.presets.Item(to) != nullptr;
    if (both) changed.presets.Move(from, to);
  });
}

void FixtureEdit::ChangeChannel(int channel, std::string_view thing,
                                const std::function<void(FixtureChannel&)>& change) {
  Fixture next = Now();
  FixtureChannel* changed = next.channels.Item(channel);
  if (changed == nullptr) return;
  change(*changed);
  history_.Change(std::move(next), thing);
}

}  // namespace dmx
