// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/ProgrammeTap.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

#include "engine/Programme.h"
#include "engine/testing/SoundStage.h"

namespace engine::testing {
namespace {

constexpr std::int64_t kRing = ProgrammeTap::kFrames;

/// A tap whose every frame holds its own number, left and right in full.
class ProgrammeReading : public ::testing::Test {
 protected:
  static float Number(std::int64_t frame) { return static_cast<float>(frame & 0xFFFFFF); }
  void Write(std::int64_t frames) {
    std::vector<float> stereo;
    for (std::int64_t i = 0; i < frames; ++i) stereo.insert(stereo.end(), 2, Number(written_ + i));
    tap_->Write(written_, stereo);
    written_ += frames;
  }
  static void ExpectWhole(const ProgrammeReader::Taken& taken, const std::vector<float>& stereo) {
    for (std::size_t i = 0; i < taken.frames; ++i) {
      ASSERT_EQ(stereo[2 * i], Number(taken.first + static_cast<std::int64_t>(i)));
      ASSERT_EQ(stereo[2 * i + 1], stereo[2 * i]);
    }
  }

  std::shared_ptr<ProgrammeTap> tap_ = std::make_shared<ProgrammeTap>();
  std::int64_t written_ = 0;
};

TEST_F(ProgrammeReading, GivesEachReaderEveryFrameOnceFromItsOwnPlace) {
  Write(500);
  ProgrammeReader first(tap_, kRate);
  Write(1000);
  ProgrammeReader second(tap_, kRate);
  Write(300);
  std::vector<float> stereo(2 * 400);
  for (const std::int64_t begin : {500, 900, 1300}) {
    const auto taken = first.Read(stereo);
    EXPECT_EQ(taken.first, begin);
    EXPECT_EQ(taken.lost, 0);
    ExpectWhole(taken, stereo);
  }
  const auto taken = second.Read(stereo, 1700);
  EXPECT_EQ(taken.first, 1500);
  EXPECT_EQ(taken.frames, 200U) << "not beyond the end that was asked for";
}

TEST_F(ProgrammeReading, TellsASlowReaderHowMuchItLost) {
  ProgrammeReader reader(tap_, kRate);
  std::vector<float> stereo(2 * 100);
  Write(100);
  reader.Read(stereo);
  for (std::int64_t i = 0; i < kRing / 1024 + 2; ++i) Write(1024);
  const auto taken = reader.Read(stereo);
  EXPECT_EQ(taken.lost, 2 * 1024);
  EXPECT_EQ(taken.first, 100 + 2 * 1024);
  ExpectWhole(taken, stereo);
}

TEST_F(ProgrammeReading, CostsNothingAndLosesNothingWhileNobodyReads) {
  EXPECT_FALSE(tap_->IsRead());
  {
    ProgrammeReader reader(tap_, kRate);
    EXPECT_TRUE(tap_->IsRead());
  }
  EXPECT_FALSE(tap_->IsRead());
  written_ += 5 * kRing;  // the core went on unheard
  ProgrammeReader reader(tap_, kRate);
  Write(10);
  std::vector<float> stereo(2 * 100);
  const auto taken = reader.Read(stereo);
  EXPECT_EQ(taken.lost, 0);
  EXPECT_EQ(taken.first, 5 * kRing);
  EXPECT_EQ(taken.frames, 10U);
}

TEST_F(ProgrammeReading, NeverGivesATornFrameToAReaderThatIsOverrun) {
  ProgrammeReader reader(tap_, kRate);
  std::atomic<bool> end{false};
  const std::jthread writer([&] {
    for (int i = 0; i < 4000; ++i) Write(1024);
    end = true;
  });
  std::vector<float> stereo(2 * 40'000);
  std::int64_t seen = -1;  // or told to be lost; what came before the first look is not
  while (!end || reader.Written() > seen) {
    const auto taken = reader.Read(stereo);
    if (seen >= 0) seen += taken.lost;
    if (taken.frames == 0) continue;
    if (seen < 0) seen = taken.first;
    ASSERT_EQ(taken.first, seen);
    ExpectWhole(taken, stereo);
    seen += static_cast<std::int64_t>(taken.frames);
    if (HasFatalFailure()) break;
  }
}

/// The whole engine with a deck whose left side tells the frame.
class HallProgramme : public ::testing::Test {
 protected:
  HallProgramme() {
    stage.files.Add("ramp.mp3", RampFile(60 * kRate));
    stage.engine->BASS_ChannelPlay(stage.Load("ramp.mp3"), false);
    reader = EngineProgramme(stage.engine->Devices()).Open(1, 0);
  }
  void Take() {
    std::vector<float> stereo(2 * 4096);
    for (auto taken = reader->Read(stereo); taken.frames > 0; taken = reader->Read(stereo)) {
      EXPECT_EQ(taken.lost, 0);
      heard.insert(heard.end(), stereo.begin(), stereo.begin() + static_cast<long>(2 * taken.frames));
    }
  }
  SoundStage stage;
  std::unique_ptr<ProgrammeReader> reader;
  std::vector<float> heard;
};

TEST_F(HallProgramme, IsToTheSampleWhatTheHallWasGiven) {
  stage.Advance(1s);
  Take();
  EXPECT_EQ(heard, stage.Given("main"));
  EXPECT_GT(heard.size(), 80'000U);
}

TEST_F(HallProgramme, GoesOnWithoutAFrameMissingThroughEveryOutputThatDies) {
  for (const char* output : {"main", "phones", "other"}) {
    stage.Advance(1s);
    stage.outputs.Remove(output);
  }
  stage.Advance(2s);  // no output at all: the silent one keeps time
  Take();
  EXPECT_NEAR(static_cast<double>(heard.size()) / 2 / kRate, 5, 0.1);
  std::size_t jumps = 0;
  for (std::size_t i = 2 * 5000; i < heard.size(); i += 2) {
    const float step = (heard[i] - heard[i - 2]) * 32768;
    const bool jump = step != 1 && step != -24'999;
    if (jump && jumps < 3) ADD_FAILURE() << "at " << i / 2 << ": " << step;
    jumps += jump;
  }
  EXPECT_EQ(jumps, 0U);
}

TEST_F(HallProgramme, OfAMonoOutputIsOnBothSides) {
  SoundStage mono({{"mono", "Mono", {Speaker::Mono}, true}});
  mono.files.Add("ramp.mp3", RampFile(kRate));
  mono.engine->BASS_ChannelPlay(mono.Load("ramp.mp3"), false);
  const auto taken_from = EngineProgramme(mono.engine->Devices()).Open(1, 0);
  mono.Advance(200ms);
  std::vector<float> stereo(2 * 4096);
  const auto taken = taken_from->Read(stereo);
  for (std::size_t i = 0; i < taken.frames; ++i) ASSERT_EQ(stereo[2 * i], stereo[2 * i + 1]);
  EXPECT_GT(taken.frames, 4000U);
}

}  // namespace
}  // namespace engine::testing
