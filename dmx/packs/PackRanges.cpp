// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "dmx/packs/PackRanges.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <initializer_list>
#include <string_view>
#include <utility>

#include "dmx/PictureColours.h"
#include "support/Text.h"

namespace dmx {
namespace {

/// Ink that no preset's picture has: this file's "none".
constexpr std::uint32_t kNoColour = 0xffffffff;

bool SaysAny(const std::string& upper, std::initializer_list<std::string_view> words) {
  return std::any_of(words.begin(), words.end(),
                     [&](std::string_view word) { return upper.find(word) != std::string::npos; });
}

PresetEffect ShutterEffectNamed(const std::string& upper) {
  if (SaysAny(upper, {"NO STROB", "STROBE OFF", "NO FLASH"})) return PresetEffect::Open;
  if (SaysAny(upper, {"PULS", "RAMP"})) return PresetEffect::Pulse;
  if (SaysAny(upper, {"STROB", "FLASH", "RANDOM"})) return PresetEffect::Strobe;
  if (SaysAny(upper, {"CLOS", "BLACKOUT", "BLACK OUT"})) return PresetEffect::Closed;
  return SaysAny(upper, {"OPEN"}) ? PresetEffect::Open : PresetEffect::None;
}

std::uint32_t Parsed(const std::string& colour) {
  if (colour.size() != 7 || colour.front() != '#') return kNoColour;
  std::uint32_t value = 0;
  const char* end = colour.data() + colour.size();
  const auto [read, error] = std::from_chars(colour.data() + 1, end, value, 16);
  return error == std::errc() && read == end ? value : kNoColour;
}

int Apart(std::uint32_t a, std::uint32_t b) {
  int sum = 0;
  for (const int shift : {16, 8, 0}) {
    const int by = static_cast<int>((a >> shift) & 0xff) - static_cast<int>((b >> shift) & 0xff);
    sum += by * by;
  }
  return sum;
}

int PictureOf(const PackRange& range, PackRole role) {
  if (role == PackRole::Gobo) return GoboPictureNamed(range.name);
  return role == PackRole::Colours ? NearestColourPicture(range.colour) : 0;
}

/// The levels that a range has, in order; first above last: none of them exists.
std::pair<int, int> LevelsOf(const PackRange& range) {
  const auto [low, high] = std::minmax(range.first, range.last);
  return {std::max(low, 0), std::min(high, kHighestLevel)};
}

presets Closing(int first, int last, const std::string& name) {
  presets preset;
  preset.name = name;
  preset.StartLevel = first;
  preset.EndLevel = last;
  preset.third.assign(1, '0');
  return preset;
}

}  // namespace

PresetEffect EffectOf(const PackRange& range, PackRole role) {
  if (range.effect != PresetEffect::None) return range.effect;
  const std::string upper = support::ToUpper(range.name);
  if (role == PackRole::Shutter) return ShutterEffectNamed(upper);
  if (role != PackRole::Colours && role != PackRole::Gobo && role != PackRole::GoboTurn)
    return PresetEffect::None;
  if (role == PackRole::Colours && SaysAny(upper, {"RAINBOW"})) return PresetEffect::Rainbow;
  if (SaysAny(upper, {"SHAK"})) return PresetEffect::Shake;
  const bool stands = SaysAny(upper, {"STOP", "NO ROT", "INDEX"});
  if (!stands && SaysAny(upper, {"ROTAT", "SPIN", "SCROLL"})) return PresetEffect::Rotation;
  return PresetEffect::None;
}

int NearestColourPicture(const std::string& colour) {
  const std::uint32_t wanted = Parsed(colour);
  if (wanted == kNoColour) return 0;
  const auto nearest =
      std::min_element(kPictureColours.begin(), kPictureColours.end(),
                       [wanted](auto a, auto b) { return Apart(a, wanted) < Apart(b, wanted); });
  return static_cast<int>(nearest - kPictureColours.begin());
}

int GoboPictureNamed(const std::string& name) {
  // By index of the picture; the open one is what no word speaks of.
  constexpr auto kWords = std::to_array<std::pair<std::string_view, int>>({{"DOT", 1},
                                                                           {"STAR", 2},
                                                                           {"SPIRAL", 3},
                                                                           {"CONE", 4},
                                                                           {"BAR", 5},
                                                                           {"LINE", 5},
                                                                           {"LEA", 6},
                                                                           {"RING", 7},
                                                                           {"CIRCLE", 7},
                                                                           {"CROSS", 8},
                                                                           {"GRID", 9},
                                                                           {"FLOWER", 10},
                                                                           {"LIGHTNING", 11}});
  const std::string upper = support::ToUpper(name);
  const auto found = std::find_if(kWords.begin(), kWords.end(), [&](const auto& word) {
    return upper.find(word.first) != std::string::npos;
  });
  return found == kWords.end() ? 0 : found->second;
}

PackPresets PresetsFrom(const PackChannel& channel, const std::string& gap) {
  std::vector<const PackRange*> ordered;
  for (const PackRange& range : channel.ranges) ordered.push_back(&range);
  std::stable_sort(ordered.begin(), ordered.end(),
                   [](const auto* a, const auto* b) { return LevelsOf(*a).first < LevelsOf(*b).first; });
  PackPresets made;
  int next = 0;
  for (const PackRange* range : ordered) {
    auto [first, last] = LevelsOf(*range);
    const bool whole = first == range->first && last == range->last && first >= next;
    if (!whole) made.cut.push_back(range->name);
    first = std::max(first, next);
    if (first > last) continue;
    if (first > next) {
      made.gaps = true;
      made.list.Add(Closing(next, first - 1, gap));
    }
    presets preset = Closing(first, last, range->name);
    preset.Effect = EffectOf(*range, channel.role);
    preset.picture = PictureOf(*range, channel.role);
    made.list.Add(std::move(preset));
    next = last + 1;
  }
  if (made.list.count() > 0 && next <= kHighestLevel) {
    made.gaps = true;
    made.list.Add(Closing(next, kHighestLevel, gap));
  }
  return made;
}

}  // namespace dmx
