// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <future>

#include "engine/Recorder.h"
#include "engine/testing/SoundStage.h"
#include "platform/codec/FfmpegDecoder.h"
#include "platform/codec/FfmpegEncoderFactory.h"
#include "platform/files/testing/FaultyDisk.h"
#include "platform/files/testing/TestFolder.h"

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using namespace std::chrono_literals;
using engine::testing::FakeFile;
using engine::testing::kRate;
using engine::testing::RampFile;

class ShownSpace final : public engine::FreeSpace {
 public:
  std::optional<std::int64_t> Of(const std::string&) override {
    if (holds.valid()) holds.wait();
    return free;
  }
  std::optional<std::int64_t> LargestFile(const std::string&) override { return largest; }
  std::optional<std::int64_t> largest;
  std::shared_future<void> holds;
  std::optional<std::int64_t> free = 100'000'000'000;
};

/// The engine on a virtual clock with a recorder behind the hall's limiter, files on the real disk.
class RecordedHall : public ::testing::Test {
 protected:
  RecordedHall() {
    stage.files.Add("ramp.mp3", RampFile(60 * kRate));
    FakeFile loud = RampFile(60 * kRate);
    loud.sample = [](std::int64_t frame, int) {
      return static_cast<std::int16_t>(32767 * std::sin(0.03 * static_cast<double>(frame)));
    };
    stage.files.Add("loud.mp3", loud);
  }
  /// On the second output.
  void Play2(const std::string& file) { stage.engine->BASS_ChannelPlay(stage.Load(file, 2), false); }
  void Play(const std::string& file = "ramp.mp3") { stage.engine->BASS_ChannelPlay(stage.Load(file), false); }
  [[nodiscard]] std::string Path(std::string_view name) const { return (folder / name).string(); }
  std::uint64_t Start(std::string_view name, int bits = 24) {
    const auto number = recorder.Start({.file = {Path(name)}, .bits = bits});
    recorder.Pump();
    return number;
  }
  void Advance(support::Duration time) {
    for (; time > 0s; time -= 50ms) {
      stage.Advance(50ms);
      recorder.Pump();
    }
  }
  void Stop() {
    recorder.Stop();
    recorder.Pump();
  }
  /// Left side, in steps of 16 bits.
  [[nodiscard]] std::vector<int> Left(std::string_view name) const {
    auto opened = platform::codec::FfmpegDecoder::Open(Path(name));
    if (!opened) return {};
    std::vector<std::int16_t> piece(1 << 16);
    std::vector<int> left;
    for (auto read = opened.Value()->Read(piece); read && read.Value() > 0;
         read = opened.Value()->Read(piece)) {
      for (std::int64_t i = 0; i < read.Value(); ++i) left.push_back(piece[static_cast<std::size_t>(2 * i)]);
    }
    return left;
  }
  /// How often the ramp does not go on by one.
  static int Breaks(const std::vector<int>& ramp) {
    int breaks = 0;
    for (std::size_t i = 1; i < ramp.size(); ++i) {
      breaks += ramp[i] != ramp[i - 1] + 1 && !(ramp[i] == 0 && ramp[i - 1] == 24'999);
    }
    return breaks;
  }

  platform::files::testing::TestFolder folder;
  engine::testing::SoundStage stage;
  ShownSpace space;
  platform::files::testing::FaultyDisk disk{1 << 20};
  platform::codec::FfmpegEncoderFactory encoders{disk};
  engine::EngineProgramme programme{stage.engine->Devices()};
  engine::Recorder recorder{{programme, encoders, space, stage.time}, engine::Recorder::Running::ByHand};
};

TEST_F(RecordedHall, IsToTheSampleWhatTheHallHeard) {
  Play();
  stage.Advance(1s);
  const std::size_t before = stage.Given("main").size() / 2;
  Start("hall.wav");
  Advance(3s);
  Stop();
  const auto recorded = Left("hall.wav");
  const auto hall = stage.Channel("main", 0);
  ASSERT_EQ(recorded.size(), hall.size() - before);
  for (std::size_t i = 0; i < recorded.size(); ++i) {
    // What is above the lower ceiling is turned down; the ramp ends at 24,999 of 32,768.
    ASSERT_EQ(recorded[i], std::lround(hall[before + i] * 32768)) << i;
  }
}

TEST_F(RecordedHall, IsCutWhereItWasSaidAndLosesNothingThere) {
  Play();
  stage.Advance(1s);
  Start("1.flac");
  Advance(2s);
  recorder.Cut(recorder.Progress().heard, {Path("2.wav")});
  const auto at = recorder.Progress().heard;
  Advance(1s);
  recorder.Cut(0s, {Path("3.flac")});  // too late for that: at once
  Advance(1s);
  Stop();
  auto all = Left("1.flac");
  EXPECT_NEAR(static_cast<double>(all.size()), static_cast<double>(at.count()) * kRate / 1e6, 1);
  for (const char* next : {"2.wav", "3.flac"}) {
    const auto part = Left(next);
    EXPECT_GT(part.size(), kRate * 7U / 10);
    all.insert(all.end(), part.begin(), part.end());
  }
  EXPECT_EQ(Breaks(all), 0);
  EXPECT_EQ(recorder.Progress().length.count() / 1000, static_cast<long>(all.size()) * 1000 / kRate);
}

TEST_F(RecordedHall, GoesOnThroughTheDeathOfEveryOutput) {
  Play();
  stage.Advance(1s);
  Start("through.wav");
  for (const char* output : {"main", "phones", "other"}) {
    stage.outputs.Remove(output);
    Advance(1s);
  }
  Stop();
  EXPECT_NEAR(static_cast<double>(Left("through.wav").size()) / kRate, 3, 0.15);
  EXPECT_EQ(Breaks(Left("through.wav")), 0);
}

TEST_F(RecordedHall, FollowsTheDeckToAnotherOutput) {
  Play();
  stage.Load("loud.mp3", 2);
  stage.Advance(1s);
  Start("two.wav");
  Advance(1s);
  recorder.Follow(2, 0);
  Advance(1s);
  Stop();
  const auto recorded = Left("two.wav");
  EXPECT_NEAR(static_cast<double>(recorded.size()) / kRate, 2, 0.05);
  EXPECT_EQ(recorded.back(), 0) << "nothing plays there";
  EXPECT_NE(recorded[kRate / 2], 0);
}

TEST_F(RecordedHall, WaitsForAnOutputThatIsNotOpenYetAndKnowsItsPlaceMeanwhile) {
  Play();
  stage.Advance(1s);
  Start("late.wav");
  Advance(1s);
  recorder.Follow(2, 0);
  Advance(1s);
  Play2("loud.mp3");
  stage.Advance(0s);
  recorder.Pump();
  EXPECT_NEAR(std::chrono::duration<double>(recorder.Progress().heard).count(), 2, 0.3)
      << "nothing was taken from there yet";
  Advance(1s);
  Stop();
  const auto recorded = Left("late.wav");
  EXPECT_NEAR(static_cast<double>(recorded.size()) / kRate, 3, 0.1);
  EXPECT_GT(*std::max_element(recorded.end() - kRate / 2, recorded.end()), 28'000);
}

TEST_F(RecordedHall, EndsInItsOwnThreadWithinTheTimeThatIsLeft) {
  engine::Recorder own({programme, encoders, space, stage.time}, engine::Recorder::Running::OwnThread);
  Play();
  stage.Advance(1s);
  own.Start({.file = {Path("own.wav")}, .bits = 16});
  EXPECT_TRUE(own.End(10s));
  EXPECT_FALSE(own.Progress().recording);
  EXPECT_EQ(own.Progress().number, 1U);
  std::promise<void> pulled;
  space.holds = pulled.get_future().share();
  own.Start({.file = {Path("held.wav")}, .bits = 16});
  EXPECT_FALSE(own.End(10ms)) << "a dead disk ends nobody's patience";
  pulled.set_value();
  EXPECT_TRUE(own.End(10s));
}

TEST_F(RecordedHall, GoesOnInANextFileWhereTheDiskTakesNoneSoLarge) {
  Play();
  stage.Advance(1s);
  space.largest = (4 << 20) + 400'000;
  Start("fat.wav", 16);
  Advance(5s);
  EXPECT_EQ(recorder.Progress().path, Path("fat (3).wav"));
  const auto begins = recorder.Progress().file_begins;
  Stop();
  std::size_t frames = 0;
  for (const char* name : {"fat.wav", "fat (2).wav"}) frames += Left(name).size();
  EXPECT_NEAR(static_cast<double>(begins.count()), static_cast<double>(frames) / kRate * 1e6, 1);
  frames += Left("fat (3).wav").size();
  EXPECT_EQ(recorder.Progress().length.count() / 1000, static_cast<long>(frames) * 1000 / kRate);
  EXPECT_EQ(folder.Names().size(), 3U);
}

TEST_F(RecordedHall, GoesOnInItsFileWhereTheNextOneIsRefused) {
  Play();
  stage.Advance(1s);
  std::ofstream(folder / "taken.flac") << "mine";
  Start("whole.flac");
  Advance(1s);
  recorder.Cut(0s, {Path("taken.flac")});
  Advance(1s);
  recorder.Cut(0s, {Path("next.flac")});
  Advance(1s);
  Stop();
  EXPECT_FALSE(recorder.Progress().failure);
  EXPECT_EQ(std::filesystem::file_size(folder / "taken.flac"), 4U);
  auto all = Left("whole.flac");
  EXPECT_GT(all.size(), kRate * 17U / 10);
  for (const int sample : Left("next.flac")) all.push_back(sample);
  EXPECT_EQ(Breaks(all), 0);
}

TEST_F(RecordedHall, IsOnTheDiskWithinASecondAndWholeWhenItEnds) {
  Play();
  Start("synced.wav");
  const auto syncs = [this] { return std::count(disk.Log().begin(), disk.Log().end(), "SyncData"); };
  Advance(3s);
  EXPECT_GE(syncs(), 4);
  Stop();
  EXPECT_EQ(disk.Log().back(), "SyncData") << "whoever pulls the stick now loses nothing";
}

TEST_F(RecordedHall, IsNotBegunWhereThereIsNoRoom) {
  Play();
  space.free = engine::Recorder::kKeptFree - 1;
  Start("full.wav");
  ASSERT_TRUE(recorder.Progress().failure);
  EXPECT_THAT(recorder.Progress().failure->text, HasSubstr("too little room"));
  EXPECT_THAT(folder.Names(), ElementsAre());
}

TEST_F(RecordedHall, StaysOneDecibelBelowFullScale) {
  Play("loud.mp3");
  stage.Advance(1s);
  Start("loud.flac");
  Advance(2s);
  EXPECT_NEAR(recorder.Progress().left_peak, 0.891, 0.005);
  Stop();
  int peak = 0;
  for (const int sample : Left("loud.flac")) peak = std::max(peak, std::abs(sample));
  EXPECT_NEAR(20 * std::log10(peak / 32768.0), -1, 0.05);
}

TEST_F(RecordedHall, KeepsItsTimeWhereTheDiskWasTooSlow) {
  Play();
  stage.Advance(1s);
  Start("slow.wav");
  Advance(1s);
  stage.Advance(20s);  // the recorder stands still
  Advance(1s);
  Stop();
  EXPECT_NEAR(static_cast<double>(Left("slow.wav").size()) / kRate, 22, 0.05);
  const double kept = static_cast<double>(engine::ProgrammeTap::kFrames) / kRate;
  EXPECT_NEAR(std::chrono::duration<double>(recorder.Progress().lost).count(), 20 - kept, 0.5);
}

TEST_F(RecordedHall, EndsWholeBeforeTheDiskIsFullAndTellsHowLongThatIs) {
  Play();
  Start("room.wav", 16);
  Advance(12s);
  // 16 bits, two sides: 176,400 bytes a second.
  space.free = engine::Recorder::kKeptFree + 176'400LL * 600;
  Advance(2s);
  ASSERT_TRUE(recorder.Progress().room);
  EXPECT_NEAR(static_cast<double>(recorder.Progress().room->count()), 600, 15);
  space.free = engine::Recorder::kKeptFree - 1;
  Advance(2s);
  const auto progress = recorder.Progress();
  EXPECT_FALSE(progress.recording);
  ASSERT_TRUE(progress.failure);
  EXPECT_THAT(progress.failure->text, HasSubstr("before its disk is full"));
  EXPECT_GT(Left("room.wav").size(), 13U * kRate);
}

TEST_F(RecordedHall, EndsWithASentenceWhenTheStickIsPulledAndRecordsAgainLater) {
  Play();
  Start("stick.flac");
  Advance(2s);
  disk.FailFrom(1, EIO);
  Advance(1s);
  ASSERT_TRUE(recorder.Progress().failure);
  EXPECT_THAT(recorder.Progress().failure->text, HasSubstr("stick.flac could not be saved"));
  EXPECT_GT(Left("stick.flac").size(), kRate * 1U);
  disk.FailFrom(1 << 30, EIO);
  const auto second = Start("again.flac");
  Advance(1s);
  EXPECT_EQ(recorder.Progress().number, second);
  EXPECT_FALSE(recorder.Progress().failure);
  Stop();
  EXPECT_EQ(static_cast<int>(Left("again.flac").size()), kRate);
}

TEST_F(RecordedHall, IsRefusedWhereNothingIsOpen) {
  Start("nothing.wav");
  EXPECT_FALSE(recorder.Progress().recording);
  ASSERT_TRUE(recorder.Progress().failure);
  EXPECT_THAT(folder.Names(), ElementsAre());
}

}  // namespace
