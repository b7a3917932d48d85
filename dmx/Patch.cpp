// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "dmx/Patch.h"

#include <algorithm>
#include <numeric>

namespace dmx {
namespace {

using support::Sentence;

bool Runs(int start, int count) {
  return start >= 1 && count <= kUniverseChannels && start - 1 <= kUniverseChannels - count;
}

std::string Named(const DMXfilename& fixture) {
  return std::string(NameWithoutFolder(fixture.Filename));
}

void TakeFixture(DMXfilename& fixture, FixtureReading reading, const FixtureLibrary& library,
                 PatchReport& report) {
  fixture.Channels = std::move(reading.fixture.channels);
  fixture.Filename = library.FilenameOf(fixture.Filename);
  fixture.NumberOf = static_cast<std::int16_t>(fixture.Channels.count());
  for (const std::string& note : reading.notes) report.notes.push_back("\"" + Named(fixture) + "\": " + note);
  if (reading.ended_early)
    report.notes.push_back(library.Say()(Sentence::FixtureEndsEarly, {Named(fixture)}));
}

}  // namespace

int Patch::SuggestStart(int count) const {
  int free_before = 0;
  for (int channel = 1; channel <= kUniverseChannels; ++channel) {
    free_before = At(channel).fixture == 0 ? free_before + 1 : 0;
    if (free_before >= std::max(count, 1)) return channel - free_before + 1;
  }
  return 0;
}

support::Result<void> Patch::Check(int start, int count) const {
  if (!Runs(start, count)) {
    return support::Error{support::ErrorCode::Unsupported, "You are over the available 512 channels!"};
  }
  for (int channel = start; channel < start + count; ++channel) {
    if (At(channel).fixture == 0) continue;
    return support::Error{
        support::ErrorCode::Unsupported,
        "Channel " + std::to_string(channel) + " is already taken. Please choose another Start Channel"};
  }
  return {};
}

support::Result<void> Patch::Add(int fixture, int start, const ChannelSlider& channels) {
  const auto fits = Check(start, channels.count());
  if (!fits) return fits;
  auto place = channels_.begin() + (start - 1);
  int number = 0;
  for (const FixtureChannel& channel : channels) *place++ = {fixture, ++number, channel.function};
  return {};
}

void Patch::Hold(int fixture, int start, int count) {
  const int end = std::min(kUniverseChannels, start + count - 1);
  for (int channel = std::max(start, 1); channel <= end; ++channel) {
    PatchedChannel& place = channels_[static_cast<std::size_t>(channel - 1)];
    if (place.fixture == 0) place = {fixture, channel - start + 1, ChannelFunction::Free};
  }
}

std::vector<int> Patch::Channels() const {
  std::vector<int> taken;
  for (int channel = 1; channel <= kUniverseChannels; ++channel) {
    if (At(channel).fixture != 0) taken.push_back(channel);
  }
  return taken;
}

support::Result<FixtureReading> FixtureLibrary::Open(std::string_view filename) const {
  const std::string_view name = filename.substr(filename.find_last_of("\\/") + 1);  // npos + 1 is 0
  return OpenFixture(folder_.Native("\\DMXlibrary\\" + std::string(name)), say_);
}

std::string FixtureLibrary::FilenameOf(std::string_view filename) const {
  return folder_.TextOf("\\DMXlibrary\\" + std::string(NameWithoutFolder(filename)));
}

PatchReport PatchShow(DMXname& fixtures, const FixtureLibrary& library) {
  PatchReport report;
  for (int position = 1; position <= fixtures.count();) {
    DMXfilename& fixture = *fixtures.Item(position);
    auto reading = library.Open(fixture.Filename);
    if (!reading) {
      const support::Sentences& say = library.Say();
      report.notes.push_back(say(Sentence::FixtureLeftDark, {Named(fixture), say(reading.Failure())}));
      report.missing.push_back(position);
      ++position;
      continue;
    }
    TakeFixture(fixture, std::move(reading).Value(), library, report);
    const auto patched = report.patch.Add(position, fixture.StartChannel, fixture.Channels);
    if (patched) {
      ++position;
    } else {
      report.refused.push_back(patched.Failure().text);
      fixtures.Remove(position);
    }
  }
  for (const int position : report.missing) {
    const DMXfilename& fixture = *fixtures.Item(position);
    report.patch.Hold(position, fixture.StartChannel, fixture.NumberOf);
  }
  return report;
}

std::vector<int> RecordChannels(const Patch& patch, const Scenes& scenes) {
  int records = 0;
  for (const Scene& scene : scenes) {
    for (const SceneStep& step : scene.Steps) records = std::max(records, step.SceneChannel.count());
  }
  std::vector<int> channels = patch.Channels();
  if (records <= static_cast<int>(channels.size())) return channels;
  channels.resize(static_cast<std::size_t>(std::min(records, kUniverseChannels)));
  std::iota(channels.begin(), channels.end(), 1);
  return channels;
}

void MoveRecords(Scenes& scenes, std::span<const int> from, std::span<const int> to) {
  std::array<int, kUniverseChannels + 1> position{};  // of a channel's record so far; 0: it has none
  for (std::size_t i = 0; i < from.size(); ++i)
    position[static_cast<std::size_t>(from[i])] = static_cast<int>(i) + 1;
  for (Scene& scene : scenes) {
    for (SceneStep& step : scene.Steps) {
      SceneChannel moved;
      moved.Reserve(to.size());
      for (const int channel : to) {
        const Sliders* record = step.SceneChannel.Item(position[static_cast<std::size_t>(channel)]);
        moved.Add(record != nullptr ? *record : Sliders{});
      }
      step.SceneChannel = std::move(moved);
    }
  }
}

}  // namespace dmx
