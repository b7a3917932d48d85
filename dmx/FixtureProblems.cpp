// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "dmx/FixtureProblems.h"

#include <algorithm>

namespace dmx {
namespace {

bool Overlap(const presets& a, const presets& b) {
  const bool both_hold_levels = a.StartLevel <= a.EndLevel && b.StartLevel <= b.EndLevel;
  return both_hold_levels && a.StartLevel <= b.EndLevel && b.StartLevel <= a.EndLevel;
}

void AddChannelProblems(int number, const Collection<presets>& list, std::vector<std::string>& problems) {
  const std::string channel = "Channel " + std::to_string(number);
  for (int p = 1; p <= list.count(); ++p) {
    for (int q = 1; q <= list.count(); ++q) {
      if (p == q || !Overlap(*list.Item(p), *list.Item(q))) continue;
      problems.push_back(channel + ": The DMX level for Preset " + std::to_string(p) +
                         " is overlapping with Preset " + std::to_string(q) + "!");
    }
  }
  const presets* last = list.Item(list.count());
  if (last != nullptr && last->EndLevel < kHighestLevel)
    problems.push_back(channel + ": Your last Preset must end on 255!");
}

bool ShowsLight(const FixtureChannel& channel) {
  return channel.function == ChannelFunction::Dimmer || channel.function == ChannelFunction::Shutter;
}

}  // namespace

std::vector<std::string> FixtureProblems(const Fixture& fixture) {
  std::vector<std::string> problems;
  int number = 0;
  for (const FixtureChannel& channel : fixture.channels)
    AddChannelProblems(++number, channel.presets, problems);
  if (std::none_of(fixture.channels.begin(), fixture.channels.end(), ShowsLight)) {
    problems.push_back("This Fixture doesn't show any light! You must have a Shutter and/or a Dimmer.");
  }
  return problems;
}

std::string FixtureQuestion(const std::vector<std::string>& problems) {
  if (problems.empty()) return {};
  std::string question = "Following errors occurred:\r\n\r\n";
  for (const std::string& problem : problems) question += problem + "\r\n";
  return question +
         "In order to make a correct show you have to solve these problems.\r\n"
         "Do you want to make this changes?";
}

}  // namespace dmx
