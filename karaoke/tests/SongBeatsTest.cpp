// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "karaoke/SongBeats.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "karaoke/testing/MidiBytes.h"

namespace karaoke {
namespace {

using std::chrono::milliseconds;
using testing::FileBytes;
using testing::TrackBytes;

/// The beats in milliseconds of a song that lasts so many quarter notes behind its head.
std::vector<double> BeatsWith(const TrackBytes& head, std::uint32_t quarters, int division = 480) {
  TrackBytes track = head;
  const Song song = ReadSong(FileBytes({track.Text(480 * quarters, "la").End()}, division));
  std::vector<double> beats;
  const music::BeatGrid grid = BeatsOf(song);
  for (const music::Seconds beat : grid.Beats()) beats.push_back(beat.count() * 1000);
  return beats;
}

constexpr std::uint32_t kFast = 400'000, kSlow = 600'000;

TEST(SongBeatsTest, BeatsAreQuarterNotesOrWhatTheMetreCountsIn) {
  using Times = std::vector<double>;
  const struct {
    const char* what;
    TrackBytes head;
    Times beats;
  } songs[] = {
      {"four quarters", TrackBytes().Signature(4, 2), {0, 500, 1000, 1500, 2000}},
      {"without a signature", TrackBytes(), {0, 500, 1000, 1500, 2000}},
      {"halves", TrackBytes().Signature(2, 1), {0, 500, 1000, 1500, 2000}},
      {"six eighths", TrackBytes().Signature(6, 3), {0, 750, 1500}},
      {"seven eighths", TrackBytes().Signature(7, 3), {0, 500, 1000, 1500, 2000}},
      {"no eighths at all", TrackBytes().Signature(0, 3), {0, 500, 1000, 1500, 2000}},
      {"a unit beyond reason", TrackBytes().Signature(6, 255), {0, 500, 1000, 1500, 2000}},
      {"a signature behind an upbeat", TrackBytes().Text(240, "").Signature(6, 3), {0, 250, 1000, 1750}},
      {"another tempo on the way",
       TrackBytes().Signature(4, 2).Tempo(0, kFast).Tempo(960, kSlow),
       {0, 400, 800, 1400, 2000, 2600, 3200}},
      {"another tempo within a beat",
       TrackBytes().Signature(4, 2).Tempo(0, kFast).Tempo(720, kSlow),
       {0, 400, 900, 1500, 2100, 2700}},
  };
  for (const auto& song : songs) {
    EXPECT_THAT(BeatsWith(song.head, 4), ::testing::Pointwise(::testing::DoubleNear(0.01), song.beats))
        << song.what;
  }
}

TEST(SongBeatsTest, WhereTicksAreOfAClockNoBeatsAreKnown) {
  constexpr int kFramesAndTicks = 0xE728;
  EXPECT_THAT(BeatsWith(testing::UsualHead(), 4, kFramesAndTicks), ::testing::IsEmpty());
  EXPECT_TRUE(BeatsOf(Song{}).Empty());
}

TEST(SongBeatsTest, ALengthWithoutReasonFillsNoMemory) {
  EXPECT_LE(BeatsWith(TrackBytes().Tempo(0, 0xFF'FFFF), 559'000, 1).size(), 100'000U);
}

TEST(SongBeatsTest, TheNumberOfABeatFollowsTheTempoOfItsPlace) {
  TrackBytes track = TrackBytes().Signature(4, 2).Tempo(0, kFast).Tempo(960, kSlow).Text(960, "la").End();
  const music::BeatGrid beats = BeatsOf(ReadSong(FileBytes({track})));
  EXPECT_NEAR(beats.BeatAt(music::Seconds(0.6)), 1.5, 1e-6);
  EXPECT_NEAR(beats.BeatAt(music::Seconds(1.1)), 2.5, 1e-6);
  EXPECT_NEAR(beats.TempoAt(music::Seconds(1.1)).value, 100, 1e-6);
}

}  // namespace
}  // namespace karaoke
