// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "decks/GainAnalysis.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "decks/testing/FakeCommandRunner.h"

namespace decks {
namespace {

using ::testing::ElementsAre;

const std::string kHeader = "File\tMP3 gain\tdB gain\tMax Amplitude\tMax global_gain\tMin global_gain\n";
const std::string kTrack = "song.mp3\t-4\t-5.250000\t31000.5\t178\t99\n";
const std::string kAlbum = "\"Album\"\t-4\t-5.250000\t31000.5\t178\t99\n";

class GainAnalysisTest : public ::testing::Test {
 protected:
  support::Result<void> Analyse(const std::string& printed) {
    commands_.Add("mp3gain", printed);
    return analysis_.Analyse("song.mp3", info_);
  }

  testing::FakeCommandRunner commands_;
  std::filesystem::path folder_ = std::filesystem::path(::testing::TempDir()) / "gain-analysis";
  GainAnalysis analysis_{commands_, support::ProgramFolder(folder_)};
  clsMp3Info info_;
};

TEST_F(GainAnalysisTest, TokensEightToElevenOfTheOutputFillTheRecord) {
  ASSERT_TRUE(Analyse(kHeader + kTrack + kAlbum));
  EXPECT_DOUBLE_EQ(info_.RawRadiodBGain, -5.25);
  EXPECT_DOUBLE_EQ(info_.RadiodBGain, -5.25);
  EXPECT_DOUBLE_EQ(info_.CurrMaxAmp, 31000.5);
  EXPECT_EQ(info_.CurrMaxGain, 178);
  EXPECT_EQ(info_.CurrMinGain, 99);
  EXPECT_EQ(info_.RadioMp3Gain, -3);
  EXPECT_EQ(info_.MaxNoclipMp3Gain, 0);
}

TEST_F(GainAnalysisTest, TheCommandHasFourArguments) {
  static_cast<void>(Analyse(""));
  ASSERT_EQ(commands_.Ran().size(), 1U);
  EXPECT_EQ(commands_.Ran()[0].program, "mp3gain");
  EXPECT_THAT(commands_.Ran()[0].arguments, ElementsAre("/o", "/s", "s", "song.mp3"));
}

TEST_F(GainAnalysisTest, TheProgramFoldersOwnIsTakenFirst) {
  std::filesystem::create_directories(folder_);
  std::ofstream(folder_ / "mp3gain") << "a program";
  static_cast<void>(Analyse(""));
  EXPECT_EQ(commands_.Ran()[0].program, (folder_ / "mp3gain").string());
  std::filesystem::remove_all(folder_);
}

TEST_F(GainAnalysisTest, WhatIsNotUsableLeavesTheResetValues) {
  const std::string nothing = kHeader + "song.mp3\t-4\t";
  for (const std::string& printed :
       {std::string(), std::string("no such file\n"), kHeader, kTrack, nothing + "loud\t1\t2\t3\n",
        nothing + "1\tx\t2\t3\n", nothing + "1\t1\t2.5\t3\n", nothing + "1\t1\t2\t\n",
        nothing + "nan\t1\t2\t3\n", nothing + "inf\t1\t2\t3\n", nothing + "1\t-1\t2\t3\n",
        nothing + "1\t1\t99999999999\t3\n"}) {
    info_.CurrMaxGain = 7;
    EXPECT_FALSE(Analyse(printed)) << printed;
    EXPECT_EQ(info_.RadiodBGain, clsMp3Info::kNotAnalysed);
    EXPECT_EQ(info_.CurrMaxGain, 0);
  }
}

TEST_F(GainAnalysisTest, AMissingProgramIsASentence) {
  const auto failed = analysis_.Analyse("song.mp3", info_);
  EXPECT_EQ(failed.Failure().code, support::ErrorCode::NotFound);
  EXPECT_FALSE(info_.Analysed());
}

TEST_F(GainAnalysisTest, AQueryAnalysesOnce) {
  commands_.Add("mp3gain", kHeader + kTrack);
  EXPECT_EQ(analysis_.Query("song.mp3", info_), "89.0");
  EXPECT_EQ(analysis_.Query("song.mp3", info_), "89.0");
  EXPECT_EQ(commands_.Ran().size(), 1U);
}

TEST_F(GainAnalysisTest, AnAlteredFileShowsWhatItWasGiven) {
  ASSERT_TRUE(Analyse(kHeader + kTrack));
  info_.AlterDb(-3.26);
  EXPECT_DOUBLE_EQ(info_.RadiodBGain, -1.99);
  EXPECT_DOUBLE_EQ(info_.RawRadiodBGain, -5.25);
  EXPECT_EQ(GainText(info_), "85.7");
  info_.ResetVals();
  EXPECT_EQ(info_.ModifydBGain, 0);
  EXPECT_EQ(GainText(info_), "89.0");
}

TEST_F(GainAnalysisTest, AFileThatWasNotAnalysedIsNotAltered) {
  info_.AlterDb(3);
  EXPECT_FALSE(info_.Analysed());
}

}  // namespace
}  // namespace decks
