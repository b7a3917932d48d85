// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "dmx/FixtureFile.h"

#include <limits>
#include <utility>

#include "dmx/DataFile.h"
#include "dmx/FixtureProblems.h"
#include "dmx/LineReader.h"
#include "dmx/ports/DmxInterface.h"

namespace dmx {
namespace {

using support::Sentence;

constexpr std::uintmax_t kLongestFixtureFile = 32 << 20;
constexpr int kHighestIndex = std::numeric_limits<std::int16_t>::max();

presets ReadPreset(LineReader& lines, int owner) {
  presets preset;
  preset.Owner = owner;
  preset.Effect = static_cast<PresetEffect>(lines.Lenient(Sentence::TheEffect, 0, kHighestIndex).value_or(0));
  preset.picture = lines.Lenient(Sentence::ThePicture, 0, kHighestIndex).value_or(0);
  lines.Text(preset.name);
  preset.StartLevel = lines.Lenient(Sentence::TheStartLevel, 0, kHighestLevel).value_or(0);
  preset.EndLevel = lines.Lenient(Sentence::TheEndLevel, 0, kHighestLevel).value_or(0);
  lines.Text(preset.third);
  lines.Line();  // the extra value
  return preset;
}

void ReadChannel(LineReader& lines, int number, FixtureChannel& channel) {
  lines.Line();  // its marker
  const int function = lines.Strict(Sentence::TheFunction, 0, kChannelFunctions - 1).value_or(0);
  channel.function = static_cast<ChannelFunction>(function);
  lines.Text(channel.label);
  const int count = lines.Count(Sentence::ThePresetCount).value_or(0);
  for (int p = 1; p <= count; ++p) {
    if (!lines.Line()) return;  // its marker
    const bool begun = !lines.AtEnd();
    presets preset = ReadPreset(lines, number);
    if (begun) channel.presets.Add(std::move(preset));
  }
}

void AppendPreset(std::string& text, int channel, int number, const presets& preset) {
  AppendLine(text, "Channel" + std::to_string(channel) + "/Preset" + std::to_string(number));
  AppendLine(text, static_cast<int>(preset.Effect));
  AppendLine(text, preset.picture);
  AppendLine(text, preset.name);
  AppendLine(text, preset.StartLevel);
  AppendLine(text, preset.EndLevel);
  AppendLine(text, preset.third);
  AppendLine(text, preset.extra);
}

void AppendChannel(std::string& text, int number, const FixtureChannel& channel) {
  AppendLine(text, "Channel" + std::to_string(number));
  AppendLine(text, static_cast<int>(channel.function));
  AppendLine(text, channel.label);
  AppendLine(text, channel.presets.count());
  int p = 0;
  for (const presets& preset : channel.presets) AppendPreset(text, number, ++p, preset);
}

}  // namespace

support::Result<FixtureReading> ReadFixture(std::string_view text, const support::Sentences& say) {
  if (text.empty()) return support::Failed(support::ErrorCode::Empty, Sentence::FixtureFileEmpty);
  LineReader lines(text, say);
  FixtureReading reading;
  Fixture& fixture = reading.fixture;
  lines.Text(fixture.name);
  fixture.type = static_cast<FixtureType>(lines.Lenient(Sentence::TheType, 0, kHighestIndex).value_or(0));
  fixture.tilt_angle = lines.Lenient(Sentence::TheTiltAngle, 0, kHighestAngle).value_or(0);
  fixture.pan_angle = lines.Lenient(Sentence::ThePanAngle, 0, kHighestAngle).value_or(0);
  fixture.beam_angle = lines.Lenient(Sentence::TheBeamAngle, 0, kHighestAngle).value_or(0);
  const int count = lines.Strict(Sentence::TheChannelCount, 0, kUniverseChannels).value_or(0);
  for (int c = 1; c <= count; ++c) ReadChannel(lines, c, fixture.channels.Add());
  if (!lines.Failure().empty()) return support::Error{support::ErrorCode::Malformed, lines.Failure()};
  reading.ended_early = lines.EndedEarly();
  reading.notes = lines.notes.Sentences();
  return reading;
}

std::string FixtureText(const Fixture& fixture) {
  std::string text;
  AppendLine(text, fixture.name);
  AppendLine(text, static_cast<int>(fixture.type));
  AppendLine(text, fixture.tilt_angle);
  AppendLine(text, fixture.pan_angle);
  AppendLine(text, fixture.beam_angle);
  AppendLine(text, fixture.channels.count());
  int c = 0;
  for (const FixtureChannel& channel : fixture.channels) AppendChannel(text, ++c, channel);
  return text;
}

support::Result<FixtureReading> OpenFixture(const std::filesystem::path& path,
                                            const support::Sentences& say) {
  const auto text = WholeDataFile(path, kLongestFixtureFile);
  if (!text) return text.Failure();
  return ReadFixture(text.Value(), say);
}

support::Result<void> SaveFixture(support::FileSaver& files, const std::filesystem::path& path,
                                  const Fixture& fixture) {
  if (fixture.name.empty()) return support::Error{support::ErrorCode::Empty, kFixtureNeedsName};
  return files.Save(path, FixtureText(fixture));
}

}  // namespace dmx
