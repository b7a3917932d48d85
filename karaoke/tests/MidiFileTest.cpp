// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "karaoke/MidiFile.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "karaoke/testing/MidiBytes.h"

namespace karaoke {
namespace {

using testing::FileBytes;
using testing::TrackBytes;
using testing::Word32;

/// A head, words and notes: three tracks that end as they should.
const TrackBytes kHead = testing::UsualHead().End();
const TrackBytes kWords = TrackBytes().Name("Words").Text(480, "la").End();
const TrackBytes kNotes = TrackBytes().Event(480, {0x90, 60, 1}).Event(99, {60, 0}).End();

std::size_t Size(const TrackBytes& track) {
  return track.Content().size();
}

/// A track's chunk whose header claims another length.
std::string Claiming(const TrackBytes& track, std::size_t length) {
  return "MTrk" + Word32(static_cast<std::uint32_t>(length)) + track.Content();
}

struct DamagedFile {
  const char* fault;
  std::string chunks;
};

class DamagedFileTest : public ::testing::TestWithParam<DamagedFile> {};

TEST_P(DamagedFileTest, LosesNoTrackAndNoEvent) {
  const std::string bytes = FileBytes({}) + GetParam().chunks;
  const auto file = ReadMidiFile(bytes);
  ASSERT_TRUE(file);
  std::vector<std::string> events;
  for (const std::string_view track : file->tracks) {
    TrackReader reader(track);
    std::string told;
    while (const auto event = reader.Next()) told += event->status == 0xFF ? "m" : "n";
    events.push_back(told);
  }
  EXPECT_EQ(events, (std::vector<std::string>{"mmm", "mmm", "nnm"}));
}

INSTANTIATE_TEST_SUITE_P(
    Faults, DamagedFileTest,
    ::testing::Values(
        DamagedFile{"none", kHead.Chunk() + kWords.Chunk() + kNotes.Chunk()},
        DamagedFile{"first length past the end", Claiming(kHead, 1 << 20) + kWords.Chunk() + kNotes.Chunk()},
        DamagedFile{"every length past the end",
                    Claiming(kHead, 1 << 30) + Claiming(kWords, 1 << 30) + Claiming(kNotes, 1 << 30)},
        DamagedFile{"first length swallows the second track whole",
                    Claiming(kHead, Size(kHead) + 8 + Size(kWords)) + kWords.Chunk() + kNotes.Chunk()},
        DamagedFile{"first length cuts the next header",
                    Claiming(kHead, Size(kHead) + 3) + kWords.Chunk() + kNotes.Chunk()},
        DamagedFile{"a length too short", kHead.Chunk() + Claiming(kWords, 5) + Claiming(kNotes, 1)},
        DamagedFile{"all lengths nothing", Claiming(kHead, 0) + Claiming(kWords, 0) + Claiming(kNotes, 0)},
        DamagedFile{"no end events and a length too long",
                    Claiming(testing::UsualHead().Text(0, "x"), 4000) + kWords.Chunk() + kNotes.Chunk()},
        DamagedFile{"an unknown chunk past the end",
                    kHead.Chunk() + "Junk" + Word32(1 << 20) + kWords.Chunk() + kNotes.Chunk()},
        DamagedFile{"something between two tracks", kHead.Chunk() + "x" + kWords.Chunk() + kNotes.Chunk()}),
    [](const auto& given) {
      std::string name = given.param.fault;
      std::replace(name.begin(), name.end(), ' ', '_');
      return name;
    });

TEST(MidiFileTest, ATextThatSpellsAHeaderIsAText) {
  const TrackBytes words =
      TrackBytes().Text(0, "MTrk").Text(480, "MTrk" + Word32(6) + "\x90").Text(480, "la").End();
  const std::string bytes = FileBytes({words, kNotes});  // the tracks look into it
  const auto file = ReadMidiFile(bytes);
  ASSERT_EQ(file->tracks.size(), 2U);
  EXPECT_EQ(file->tracks[0], words.Content());
}

TEST(MidiFileTest, AHeaderThatClaimsTooMuchSwallowsNothing) {
  std::string bytes = FileBytes({kHead, kWords});
  bytes[5] = 1;
  EXPECT_EQ(ReadMidiFile(bytes)->tracks.size(), 2U);
}

TEST(MidiFileTest, AMillionEmptyTracksAreReadAtOnce) {
  std::string bytes = FileBytes({});
  for (int i = 0; i < 1'000'000; ++i) bytes += "MTrk" + std::string(4, '\0');
  EXPECT_EQ(ReadMidiFile(bytes)->tracks.size(), 1'000'000U);
}

}  // namespace
}  // namespace karaoke
