// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "dmx/LightGroups.h"

#include <algorithm>
#include <utility>

#include "support/PartLines.h"

namespace dmx {
namespace {

constexpr std::string_view kGroupsHead = "dj TOLVEN light groups 1";
constexpr std::string_view kGroupPart = "group";

bool Is(const LightGroup::Member& member, const DMXfilename& fixture) {
  return fixture.StartChannel == member.start && NameWithoutFolder(fixture.Filename) == member.file;
}

}  // namespace

LightGroup MakeGroup(std::string name, const DMXname& fixtures, std::span<const int> positions) {
  LightGroup group{std::move(name), {}};
  for (const int position : positions) {
    const DMXfilename* fixture = fixtures.Item(position);
    if (fixture == nullptr) continue;
    group.members.push_back({std::string(NameWithoutFolder(fixture->Filename)), fixture->StartChannel});
  }
  return group;
}

FoundGroup Find(const LightGroup& group, const DMXname& fixtures) {
  FoundGroup found;
  for (const LightGroup::Member& member : group.members) {
    const auto its = std::find_if(fixtures.begin(), fixtures.end(),
                                  [&](const DMXfilename& fixture) { return Is(member, fixture); });
    if (its == fixtures.end())
      ++found.missing;
    else
      found.positions.push_back(static_cast<int>(its - fixtures.begin()) + 1);
  }
  return found;
}

std::string LightGroupsText(const std::vector<LightGroup>& groups) {
  support::PartWriter lines;
  for (const LightGroup& group : groups) {
    lines.Part(kGroupPart);
    lines.Text("name", group.name);
    for (const LightGroup::Member& member : group.members) {
      lines.Text("file", member.file);
      lines.Number("start", member.start);
    }
  }
  return support::SealedText(kGroupsHead, lines.Take());
}

std::vector<LightGroup> ParseLightGroupLines(std::string_view lines) {
  std::vector<LightGroup> groups;
  bool in_group = false;
  std::string file;
  const auto begin = [&](std::string_view part) {
    in_group = part == kGroupPart && groups.size() < kMostGroups;
    if (in_group) groups.emplace_back();
    file.clear();
  };
  const auto take = [&](std::string_view, std::string_view key, const support::PartValue& value) {
    if (!in_group) return;
    LightGroup& group = groups.back();
    if (key == "name") group.name = value.Text();
    if (key == "file") file = value.Text();
    if (key != "start" || file.empty() || group.members.size() >= kUniverseChannels) return;
    LightGroup::Member member{std::exchange(file, {}), 1};
    value.Number(member.start, 1, kUniverseChannels);
    group.members.push_back(std::move(member));
  };
  support::ReadParts(lines, {begin, take});
  std::erase_if(groups, [](const LightGroup& group) { return group.name.empty() || group.members.empty(); });
  return groups;
}

std::optional<std::vector<LightGroup>> ParseLightGroups(std::string_view text) {
  if (text.size() > kMostGroupBytes) return std::nullopt;
  const auto lines = support::LinesOfSealed(kGroupsHead, text);
  if (!lines) return std::nullopt;
  return ParseLightGroupLines(*lines);
}

}  // namespace dmx
