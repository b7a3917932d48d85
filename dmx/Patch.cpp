// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "dmx/Patch.h"

#include <algorithm>

#include "dmx/ShowRecords.h"

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
  fixture.cut_short = reading.ended_early;
  fixture.Filename = library.FilenameOf(fixture.Filename);
  for (const std::string& note : reading.notes) report.notes.push_back("\"" + Named(fixture) + "\": " + note);
  if (reading.ended_early)
    report.notes.push_back(library.Say()(Sentence::FixtureEndsEarly, {Named(fixture)}));
}

/// Where the stored spans tell whose records are whose, a file that has grown or shrunk moves nobody's
/// levels; what of its own has no place is told.
void NoteDifferences(const Show& show, const FixtureLibrary& library, PatchReport& report) {
  if (!SpansTell(OrderOf(show, report.patch))) return;
  for (const DMXfilename& fixture : show.fixtures) {
    if (!DiffersFromItsFile(fixture)) continue;
    const int now = fixture.Channels.count();
    const auto sentence = now > fixture.NumberOf ? Sentence::FixtureHasGrown : Sentence::FixtureHasShrunk;
    report.notes.push_back(
        library.Say()(sentence, {Named(fixture), std::to_string(fixture.NumberOf), std::to_string(now)}));
  }
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

PatchReport PatchShow(Show& show, const FixtureLibrary& library) {
  PatchReport report;
  const support::Sentences& say = library.Say();
  DMXname& fixtures = show.fixtures;
  for (int position = 1; position <= fixtures.count();) {
    DMXfilename& fixture = *fixtures.Item(position);
    auto reading = library.Open(fixture.Filename);
    // One that ends before its channels tells no more of them than none.
    const bool cut_off =
        reading && reading.Value().ended_early && reading.Value().fixture.channels.count() == 0;
    if (!reading || cut_off) {
      const std::string why =
          cut_off ? say(Sentence::FixtureEndsEarly, {Named(fixture)}) : say(reading.Failure());
      report.notes.push_back(say(Sentence::FixtureLeftDark, {Named(fixture), why}));
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
      report.notes.push_back(say(Sentence::FixtureSetAside, {Named(fixture)}));
      show.aside.push_back({std::move(fixture), position - 1});
      fixtures.Remove(position);
    }
  }
  for (const int position : report.missing) {
    const DMXfilename& fixture = *fixtures.Item(position);
    report.patch.Hold(position, fixture.StartChannel, fixture.NumberOf);
  }
  NoteDifferences(show, library, report);
  return report;
}

}  // namespace dmx
