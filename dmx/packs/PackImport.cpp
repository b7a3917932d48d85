// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "dmx/packs/PackImport.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <initializer_list>
#include <utility>

#include "dmx/packs/PackRanges.h"
#include "support/Text.h"

namespace dmx {
namespace {

using support::Sentence;

constexpr double kWidestAngle = 1e6;  ///< what is further is no angle
constexpr std::size_t kLongestFileName = 150;

bool Says(const std::string& text, std::string_view upper_word) {
  return support::ToUpper(text).find(upper_word) != std::string::npos;
}

/// Turns that its ranges choose from are what the channel is for.
bool MostlyTurns(const PackChannel& channel) {
  const auto turns = std::count_if(channel.ranges.begin(), channel.ranges.end(), [&](const PackRange& range) {
    return EffectOf(range, channel.role) == PresetEffect::Rotation;
  });
  return 2 * static_cast<std::size_t>(turns) > channel.ranges.size();
}

/// One line, short enough for a name, cut between characters.
std::string OneLine(std::string text, std::size_t longest = PackFixture::kLongestName) {
  std::replace_if(
      text.begin(), text.end(), [](unsigned char c) { return c < 0x20; }, ' ');
  if (text.size() > longest) {
    while (longest > 0 && (static_cast<unsigned char>(text[longest]) & 0xC0) == 0x80) --longest;
    text.resize(longest);
  }
  return std::string(support::Trim(text));
}

class Importer {
 public:
  Importer(const PackFixture& from, const PackMode& mode, const support::Sentences& say)
      : from_(from), mode_(mode), say_(say) {}

  ImportedFixture Make() {
    Fixture& fixture = made_.fixture;
    fixture.name = ImportedName(from_, mode_);
    fixture.type = from_.type;
    fixture.pan_angle = Angle(mode_.pan, Sentence::ThePanAngle);
    fixture.tilt_angle = Angle(mode_.tilt, Sentence::TheTiltAngle);
    fixture.beam_angle = Angle(mode_.beam, Sentence::TheBeamAngle);
    dims_ = std::any_of(mode_.slots.begin(), mode_.slots.end(), [this](const PackSlot& slot) {
      const PackChannel* channel = ChannelOf(slot);
      return channel != nullptr && !IsFine(slot) && channel->role == PackRole::Dimmer;
    });
    for (const PackSlot& slot : mode_.slots) Add(slot);
    if (mode_.further > 0) {
      Lose(Sentence::PackModeTooWide, {std::to_string(mode_.slots.size() + mode_.further)});
    }
    if (mode_.heads > 1) Lose(Sentence::PackHeadsTogether, {std::to_string(mode_.heads)});
    if (!ShowsLight()) Note(Sentence::PackShowsNoLight, {});
    return std::move(made_);
  }

 private:
  void Note(Sentence sentence, std::initializer_list<std::string_view> parts) {
    made_.notes.push_back(say_(sentence, parts));
  }
  void Lose(Sentence sentence, std::initializer_list<std::string_view> parts) {
    Note(sentence, parts);
    made_.lossless = false;
  }

  [[nodiscard]] const PackChannel* ChannelOf(const PackSlot& slot) const {
    const auto index = static_cast<std::size_t>(slot.channel);
    return slot.channel >= 0 && index < from_.channels.size() ? &from_.channels[index] : nullptr;
  }
  [[nodiscard]] bool IsFine(const PackSlot& slot) const { return slot.finer > 0 || ChannelOf(slot)->fine; }

  int Angle(double degrees, Sentence which) {
    if (!(degrees > 0 && degrees < kWidestAngle)) return 0;
    const int whole = static_cast<int>(std::lround(degrees));
    if (whole <= kHighestAngle) return whole;
    Note(Sentence::PackAngleCut, {say_(which), std::to_string(whole)});
    return kHighestAngle;
  }

  [[nodiscard]] ChannelFunction FunctionOf(const PackChannel& channel) const {
    switch (channel.role) {
      case PackRole::Pan:
      case PackRole::Tilt:
        if (MostlyTurns(channel)) return ChannelFunction::Free;  // endless, and no place to point to
        return channel.role == PackRole::Pan ? ChannelFunction::Pan : ChannelFunction::Tilt;
      case PackRole::Dimmer:
        return ChannelFunction::Dimmer;
      case PackRole::Emitter:
        // Master and blackout reach dimmers; where there is one it stands before all colours.
        if (!dims_) return ChannelFunction::Dimmer;
        return IsHouseColour(channel.colour) ? ChannelFunction::Color : ChannelFunction::Free;
      case PackRole::Filter:
        return ChannelFunction::Color;
      case PackRole::Shutter:
        return ChannelFunction::Shutter;
      case PackRole::Colours:
        return MostlyTurns(channel) ? ChannelFunction::ColorRotation : ChannelFunction::Color;
      case PackRole::Gobo:
        return MostlyTurns(channel) ? ChannelFunction::GoboRotation : ChannelFunction::Gobo;
      case PackRole::GoboTurn:
        return ChannelFunction::GoboRotation;
      case PackRole::MoveSpeed:
        return ChannelFunction::PanTiltSpeed;
      case PackRole::Other:
        break;
    }
    return ChannelFunction::Free;
  }
  /// Those that the console mixes with.
  static bool IsHouseColour(const std::string& colour) {
    constexpr std::array<std::string_view, 6> kColours{"Red", "Green", "Blue", "White", "Amber", "UV"};
    return std::find(kColours.begin(), kColours.end(), colour) != kColours.end();
  }

  [[nodiscard]] std::string LabelOf(const PackSlot& slot, const PackChannel& channel) const {
    std::string label = slot.name.empty() ? channel.name : slot.name;
    const bool fine = IsFine(slot);
    const bool coloured = channel.role == PackRole::Emitter || channel.role == PackRole::Filter;
    // Colours are found by how their labels begin, fine bytes by the words in theirs.
    if (coloured && !support::ToUpper(label).starts_with(support::ToUpper(channel.colour)))
      label = std::string(channel.colour).append(" (").append(label).append(")");
    if (channel.role == PackRole::Pan && !Says(label, "PAN")) label.insert(0, "Pan ");
    if (channel.role == PackRole::Tilt && !Says(label, "TILT")) label.insert(0, "Tilt ");
    if (fine && !Says(label, "FINE")) label += " fine";
    if (slot.finer > 1) label.append(" ").append(std::to_string(slot.finer));
    return OneLine(std::move(label));
  }

  void Add(const PackSlot& slot) {
    FixtureChannel& made = made_.fixture.channels.Add();
    const std::string number = std::to_string(made_.fixture.channels.count());
    const PackChannel* channel = ChannelOf(slot);
    if (channel == nullptr) {
      made.label = OneLine(slot.name.empty() ? say_(Sentence::PackNotUsed) : slot.name);
      if (slot.channel == PackSlot::kUnknown) Lose(Sentence::PackChannelUnknown, {number, made.label});
      return;
    }
    made.label = LabelOf(slot, *channel);
    if (!IsFine(slot)) made.function = FunctionOf(*channel);
    if (slot.finer == 0) AddPresets(*channel, number, made);
    const bool switches = std::any_of(channel->ranges.begin(), channel->ranges.end(),
                                      [](const PackRange& range) { return range.switches; });
    if (slot.switched || (switches && slot.finer == 0))
      Lose(Sentence::PackMeaningSwitches, {number, made.label});
  }

  void AddPresets(const PackChannel& channel, const std::string& number, FixtureChannel& made) {
    PackPresets presets = PresetsFrom(channel, say_(Sentence::PackNotUsed));
    for (dmx::presets& preset : presets.list) {
      preset.name = OneLine(std::move(preset.name));
      preset.Owner = made_.fixture.channels.count();
    }
    made.presets = std::move(presets.list);
    if (!presets.cut.empty()) {
      const std::string cut = std::to_string(presets.cut.size());
      Lose(Sentence::PackRangesCut, {number, cut, OneLine(presets.cut.front())});
    }
    if (presets.gaps) Note(Sentence::PackGapsClosed, {number});
    const bool two = std::any_of(channel.ranges.begin(), channel.ranges.end(),
                                 [](const PackRange& range) { return range.two_colours; });
    if (two) Lose(Sentence::PackTwoColours, {number});
  }

  [[nodiscard]] bool ShowsLight() const {
    const auto& all = made_.fixture.channels;
    return std::any_of(all.begin(), all.end(), [](const FixtureChannel& channel) {
      return channel.function == ChannelFunction::Dimmer || channel.function == ChannelFunction::Shutter;
    });
  }

  const PackFixture& from_;
  const PackMode& mode_;
  const support::Sentences& say_;
  bool dims_ = false;
  ImportedFixture made_;
};

}  // namespace

support::Result<ImportedFixture> ImportMode(const PackFixture& fixture, std::size_t mode,
                                            const support::Sentences& say) {
  const PackMode& chosen = fixture.modes[mode];
  if (chosen.slots.empty())
    return support::Failed(support::ErrorCode::Empty, Sentence::PackModeEmpty, {chosen.name});
  return Importer(fixture, chosen, say).Make();
}

support::Result<std::size_t> FindMode(const PackFixture& fixture, std::string_view name) {
  const auto& modes = fixture.modes;
  const auto found = std::find_if(modes.begin(), modes.end(),
                                  [name](const PackMode& mode) { return name.empty() || mode.name == name; });
  if (found != modes.end()) return static_cast<std::size_t>(found - modes.begin());
  if (modes.empty())
    return support::Failed(support::ErrorCode::Empty, Sentence::PackWithoutMode, {fixture.model});
  return support::Failed(support::ErrorCode::NotFound, Sentence::PackModeUnknown,
                         {fixture.model, std::string(name)});
}

std::string ImportedName(const PackFixture& fixture, const PackMode& mode) {
  std::string name = fixture.maker;
  if (!name.empty() && !fixture.model.empty()) name += ' ';
  name += fixture.model;
  if (!mode.name.empty()) name.append(name.empty() ? "(" : " (").append(mode.name).append(")");
  if (name.empty()) name = "?";
  return OneLine(std::move(name), 2 * PackFixture::kLongestName);
}

std::string ImportedFileName(const std::string& name) {
  std::string file = OneLine(name, kLongestFileName);
  std::replace_if(
      file.begin(), file.end(),
      [](char c) { return std::string_view("/\\:*?\"<>|").find(c) != std::string_view::npos; }, '-');
  while (file.ends_with('.') || file.ends_with(' ')) file.pop_back();
  if (file.starts_with('.')) file.front() = '-';
  if (file.empty()) file = "-";
  return file.append(".dmx");
}

}  // namespace dmx
