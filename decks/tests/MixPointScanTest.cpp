// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "decks/MixPointScan.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "decks/clsBassPlayer.h"
#include "decks/testing/PlainMixPoints.h"
#include "decks/testing/RecordingEngine.h"
#include "support/testing/FakeClock.h"

namespace decks {
namespace {

using testing::PlainEnd;
using testing::PlainStart;
using Samples = std::vector<std::int16_t>;

class Watching final : public ScanProgress {
 public:
  void Busy(double fraction) override { shown.push_back(fraction); }
  bool Cancelled() override { return static_cast<int>(shown.size()) >= cancel_after; }
  std::vector<double> shown;
  int cancel_after = 1 << 30;
};

class MixPointScanTest : public ::testing::Test {
 protected:
  std::optional<music::MixPoints> Scan(const Samples& samples, int channels, int percent = 3,
                                       const std::string& name = "a.mp3") {
    const double frames = static_cast<double>(samples.size()) / channels;
    engine_.AddFile(name, {.seconds = frames / 44100, .channels = channels, .samples = samples});
    return MixPointScan(engine_, engine_).Run({name, 0, percent}, watching_);
  }
  int Blocks(std::uint32_t bytes) const {
    const auto log = engine_.Log();
    return static_cast<int>(std::count_if(log.begin(), log.end(), [&](const std::string& call) {
      return call.find("GetData") != std::string::npos && call.ends_with(" " + std::to_string(bytes));
    }));
  }

  support::testing::FakeClock clock_;
  testing::RecordingEngine engine_{clock_};
  Watching watching_;
};

/// Silence, then a loud part, then silence, in samples; "level" sounds everywhere in the loud part.
struct Signal {
  const char* name;
  int before;
  int loud;
  int after;
  int level = 5000;
  int channels = 2;
  int percent = 3;
  int noise = 0;  ///< of the silent parts
};

Samples Make(const Signal& signal) {
  Samples samples;
  const auto part = [&](int count, int level) {
    for (int i = 0; i < count; ++i) samples.push_back(static_cast<std::int16_t>(i % 2 == 0 ? level : -level));
  };
  part(signal.before, signal.noise);
  part(signal.loud, signal.level);
  part(signal.after, signal.noise);
  return samples;
}

class SignalTest : public MixPointScanTest, public ::testing::WithParamInterface<Signal> {};

TEST_P(SignalTest, EqualsThePlainReading) {
  const Samples samples = Make(GetParam());
  const auto found = Scan(samples, GetParam().channels, GetParam().percent);
  ASSERT_TRUE(found);
  EXPECT_EQ(found->start.value, PlainStart(samples, GetParam().percent));
  EXPECT_EQ(found->end.value, PlainEnd(samples, GetParam().percent));
  EXPECT_EQ(found->length.value, static_cast<std::int64_t>(samples.size() * 2));
}

INSTANTIATE_TEST_SUITE_P(
    Signals, SignalTest,
    ::testing::Values(Signal{"plain", 30'000, 200'000, 70'000},
                      Signal{"mono", 30'001, 200'001, 70'001, 5000, 1},
                      Signal{"sound from the first sample", 0, 200'000, 0},
                      Signal{"silent throughout", 130'000, 0, 0},
                      Signal{"silent, a whole number of blocks", 100'000, 0, 0},
                      Signal{"shorter than a block", 500, 2000, 300}, Signal{"two samples", 0, 2, 0},
                      Signal{"one frame of one channel", 0, 1, 0, 5000, 1}, Signal{"nothing", 0, 0, 0},
                      Signal{"sound at a block's first sample alone", 10'000, 1, 60'000, 5000, 1},
                      Signal{"sound at a block's second sample", 10'001, 1, 60'000, 5000, 1},
                      Signal{"sound at a block's last sample", 9'999, 1, 60'000, 5000, 1},
                      Signal{"last sound on the edge of an end block", 10, 100'000, 50'000},
                      Signal{"last sound one sample before that edge", 10, 99'990, 50'001, 5000, 1},
                      Signal{"at the threshold", 20'000, 100'000, 20'000, 240},
                      Signal{"above it", 20'000, 100'000, 20'000, 241},
                      Signal{"at the end's threshold", 20'000, 100'000, 20'000, 120},
                      Signal{"above the end's", 20'000, 100'000, 20'000, 121},
                      Signal{"noise that the walk back passes", 33'333, 90'000, 33'333, 5000, 1, 3, 61},
                      Signal{"noise that it stops at", 33'333, 90'000, 33'333, 5000, 1, 3, 60},
                      Signal{"every sound counts", 20'000, 50'000, 20'000, 1, 2, 0},
                      Signal{"only loud sound counts", 20'000, 50'000, 20'000, 8000, 2, 100},
                      Signal{"full scale below zero", 20'001, 50'000, 20'001, -32768, 1, 100}),
    [](const auto& signal) {
      std::string name = signal.param.name;
      std::replace_if(
          name.begin(), name.end(), [](char c) { return std::isalnum(c) == 0; }, '_');
      return name;
    });

TEST_F(MixPointScanTest, APlainSilenceIsMeasuredToTheSample) {
  const auto found = Scan(Make({"", 30'500, 200'000, 70'000}), 2);
  EXPECT_EQ(found->start.value, 2 * (30'500 - 1));
  EXPECT_EQ(found->end.value, 2 * (230'500 - 1));
  EXPECT_NEAR(found->start_seconds, 15'250 / 44100.0, 1e-4);
  EXPECT_NEAR(found->end_seconds, 115'250 / 44100.0, 1e-4);
}

TEST_F(MixPointScanTest, AFileThatIsSilentThroughoutStartsAtItsEndAndEndsAtZero) {
  const auto found = Scan(Make({"", 123'456, 0, 0}), 2);
  EXPECT_EQ(found->start.value, 2 * 123'456);
  EXPECT_EQ(found->end.value, 0);
}

TEST_F(MixPointScanTest, SoundNearTheEndCostsOneBlock) {
  Scan(Make({"", 10, 900'000, 10}), 2);
  EXPECT_EQ(Blocks(100'000), 1);
  EXPECT_EQ(Blocks(20'000), 1);
}

TEST_F(MixPointScanTest, EachStepBackSeeksAndDecodesItsBlockAgain) {
  Scan(Make({"", 10, 0, 119'990}), 2);
  EXPECT_THAT(engine_.Log(),
              ::testing::IsSupersetOf({"BASS_ChannelSetPosition 2 140000", "BASS_ChannelSetPosition 2 40000",
                                       "BASS_ChannelSetPosition 2 0"}));
  EXPECT_EQ(Blocks(100'000), 3);
}

TEST_F(MixPointScanTest, DecodersAreOpenedByTypeWithTheMainStreamsFlagsAndFreed) {
  MasterControls controls;
  clsBassPlayer deck(engine_, controls);
  engine_.AddFile("a.flac");
  deck.Filename("a.flac");
  deck.Speaker(2);
  MixPointScan(engine_, engine_).Run(deck.ScanRequest(), watching_);
  const auto log = engine_.Log();
  EXPECT_EQ(log.front(), "BASS_FLAC_StreamCreateFile 0 a.flac 0 0x0 0x2200000");
  EXPECT_EQ(std::count(log.begin(), log.end(), log.front()), 2);
  EXPECT_EQ(engine_.Streams(), 0);
}

TEST_F(MixPointScanTest, TheThresholdIsTheControlsElementOne) {
  MasterControls controls;
  const clsBassPlayer deck(engine_, controls);
  EXPECT_EQ(deck.ScanRequest().gain_percent, 3);
  controls.AutomationSlider[1] = 40;
  EXPECT_EQ(deck.ScanRequest().gain_percent, 40);
}

TEST_F(MixPointScanTest, TheIndicatorGrowsByATenthABlockAndStartsAgain) {
  Scan(Make({"", 120'000, 100'000, 0}), 2);
  ASSERT_EQ(watching_.shown.size(), 14U);
  EXPECT_DOUBLE_EQ(watching_.shown[0], 0.1);
  EXPECT_DOUBLE_EQ(watching_.shown[9], 1.0);
  EXPECT_DOUBLE_EQ(watching_.shown[10], 0);
  EXPECT_DOUBLE_EQ(watching_.shown[11], 0.1);
  EXPECT_DOUBLE_EQ(watching_.shown[13], 0.1) << "the end scan counts for itself";
}

TEST_F(MixPointScanTest, ACancelledScanEndsWithinABlockAndLeavesNoDecoder) {
  for (const int blocks : {0, 1, 2, 3}) {
    watching_ = {};
    watching_.cancel_after = blocks;
    EXPECT_FALSE(Scan(Make({"", 25'000, 0, 0}), 2));
    EXPECT_LE(static_cast<int>(watching_.shown.size()), blocks);
    EXPECT_EQ(engine_.Streams(), 0);
  }
}

TEST_F(MixPointScanTest, WhateverCallFailsTheScanEnds) {
  for (int call = 1; call < 40; ++call) {
    engine_.FailCall(call);
    Scan(Make({"", 30'000, 100'000, 130'000}), 2);
  }
  EXPECT_FALSE(MixPointScan(engine_, engine_).Run({"gone.mp3"}, watching_));
}

TEST_F(MixPointScanTest, OpenFileForgetsTheMixPointsOfTheFileBefore) {
  MasterControls controls;
  clsBassPlayer deck(engine_, controls);
  deck.StartMixPoint({4});
  deck.EndMixPoint({8});
  deck.OpenFile();
  EXPECT_EQ(deck.StartMixPoint().value, 0);
  EXPECT_EQ(deck.EndMixPoint().value, 0);
}

}  // namespace
}  // namespace decks
