// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "lightorgan/LightOrgan.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "lightorgan/testing/FakeMusic.h"
#include "lightorgan/testing/RecordingBoards.h"
#include "support/testing/FakeClock.h"
#include "support/testing/MemorySettings.h"

namespace lightorgan {
namespace {

using std::chrono::milliseconds;
using ::testing::AnyOf;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StartsWith;
using testing::Tone;
using Calls = std::vector<std::string>;

class LightOrganTest : public ::testing::Test {
 protected:
  LightOrganTest() {
    banks_.files["\\BankIO16.txt"] = "[1]\n1:0:1\n0:1\n[2]\n1:1\n0:1\n";
    banks_.files["\\BankIO32.txt"] = "[1]\n0:0:0:0:0:0:0:0:1\n1\n[2]\n";
    banks_.files["\\BankDAC16.txt"] = "[1]\n255:128\n0:7\n[2]\n";
    banks_.files["\\BankDAC32.txt"] = banks_.files["\\BankDAC16.txt"];
  }

  void Set(std::string_view section, std::string_view key, std::string_view value) {
    settings_.Set(support::kApplication, section, key, value);
  }
  std::string Get(std::string_view section, std::string_view key) {
    return settings_.Get(support::kApplication, section, key, "none");
  }
  void Start(bool boards = true, std::string_view size = "16") {
    Set("Setup", "UseK8000", boards ? "True" : "False");
    Set("Setup", "IoBoardSize", size);
    organ_.Start([this] { ++no_board_; });
    organ_.LiftGuard(true);
    boards_.calls.clear();
  }
  void Play(milliseconds time) {
    for (milliseconds at{0}; at < time; at += milliseconds(10)) {
      clock_.Advance(milliseconds(10));
      organ_.Tick();
    }
  }
  void PlayIoBank(int bank, int speed = kFastest) {
    organ_.cmdK8000(3);
    organ_.ScrollerPatternIO(bank);
    organ_.ScrollerIO(speed);
    boards_.calls.clear();
  }
  std::size_t Lit() { return boards_.lit.count(); }

  testing::RecordingBoards boards_;
  testing::FakeMusic music_;
  testing::FakeBanks banks_;
  support::testing::MemorySettings settings_;
  support::Settings door_{settings_, support::ProgramFolder("/dj")};
  support::testing::FakeClock clock_;
  int no_board_ = 0;
  LightOrgan organ_{{boards_, music_, music_, banks_, door_, clock_}};
};

TEST_F(LightOrganTest, ABankPlaysByteByByteWithoutTheRowOfTheCount) {
  Start();
  PlayIoBank(1);
  Play(milliseconds(80));
  EXPECT_EQ(boards_.Take(), (Calls{"OutputAllDigital 0 5", "OutputAllDigital 0 2", "OutputAllDigital 0 5",
                                   "OutputAllDigital 0 2"}));
  PlayIoBank(2);
  Play(milliseconds(60));
  EXPECT_THAT(boards_.Take(),
              ElementsAre("OutputAllDigital 0 3", "OutputAllDigital 0 3", "OutputAllDigital 0 3"));
}

TEST_F(LightOrganTest, OutputNineIsTheFirstOfTheSecondBoard) {
  Start(true, "32");
  PlayIoBank(1);
  Play(milliseconds(40));
  EXPECT_EQ(boards_.Take(), (Calls{"OutputAllDigital 0 0", "OutputAllDigital 1 1", "OutputAllDigital 0 1",
                                   "OutputAllDigital 1 0"}));
  organ_.cmdK8000(4);
  boards_.calls.clear();
  organ_.btnOn(9);
  organ_.DacScroller(16, 300);
  EXPECT_EQ(boards_.Take(), (Calls{"SetDigitalChannel 1 1", "OutputAnalogChannel 1 8 255"}));
}

TEST_F(LightOrganTest, OneBoardNeverHearsOfOutputsBeyondEight) {
  Start();
  for (int mode = 0; mode < kModeButtons; ++mode) {
    organ_.cmdK8000(mode);
    organ_.btnOn(9);
    organ_.DacScroller(12, 99);
    music_.mixed = music_.left = music_.right = Tone(120);
    Play(milliseconds(100));
  }
  for (const std::string& call : boards_.Take()) {
    const std::string told = call.substr(call.find(' ')) + " ";  // the board, then what it is told
    EXPECT_TRUE(told.starts_with(" 0 ")) << call;
  }
}

TEST_F(LightOrganTest, AnEmptyBankShowsNothing) {
  Start();
  PlayIoBank(1);
  Play(milliseconds(20));
  ASSERT_GT(Lit(), 0U);
  organ_.ScrollerPatternIO(77);
  Play(milliseconds(20));
  EXPECT_EQ(Lit(), 0U);
  EXPECT_THAT(organ_.View().leds, Each(false));
  organ_.cmdK8000(7);
  organ_.ScrollerDAC(kFastest);
  Play(milliseconds(20));
  ASSERT_EQ(boards_.values[0], 255);
  organ_.ScrollerPatternDAC(77);
  Play(milliseconds(20));
  EXPECT_THAT(boards_.values, Each(0));
}

TEST_F(LightOrganTest, ABankThatIsTriedPlaysUntilTheFileIsReadAgainAndStoresNothing) {
  Start();
  PlayIoBank(1);
  organ_.TryBank(Side::Io, std::make_shared<const StepTable>(
                               LoadBank("[1]\n0:0:0:1\n[2]\n", Side::Io, 1, IoBoardSize::One)));
  Play(milliseconds(40));
  EXPECT_THAT(boards_.Take(), ElementsAre("OutputAllDigital 0 8", "OutputAllDigital 0 8"));
  EXPECT_EQ(Get("Banks", "CurrentBank"), "1");
  organ_.ReloadBanks();
  Play(milliseconds(20));
  EXPECT_THAT(boards_.Take(), ElementsAre("OutputAllDigital 0 5"));
}

TEST_F(LightOrganTest, TheDacSidePlaysTheRowOfZerosToo) {
  Start();
  organ_.cmdK8000(7);
  organ_.ScrollerDAC(kFastest);
  std::vector<int> first;
  for (int step = 0; step < 4; ++step) {
    Play(milliseconds(20));
    first.push_back(boards_.values[1]);
  }
  EXPECT_THAT(first, ElementsAre(128, 7, 0, 128));
}

TEST_F(LightOrganTest, EveryModeKeepsItsOwnSpeedAndWord) {
  Start();
  const struct {
    int button;
    const char* word;
    const char* section;
  } kModes[] = {{0, "Mono", "Mono"}, {1, "Stereo", "Stereo"}, {2, "LO", "IOLO"}, {3, "PP", "Banks"}};
  for (const auto& mode : kModes) {
    organ_.cmdK8000(mode.button);
    EXPECT_EQ(Get("Effects", "IO"), mode.word);
    organ_.ScrollerIO(10 + mode.button);
    EXPECT_EQ(Get(mode.section, "Timer"), std::to_string(10 + mode.button));
  }
  EXPECT_EQ(Get("Mono", "Timer"), "10");
  organ_.cmdK8000(1);
  EXPECT_EQ(organ_.View().io.speed, 11);
  organ_.cmdK8000(5);
  organ_.ScrollerIO(77);
  EXPECT_EQ(Get("Banks", "Timer"), "13");
}

TEST_F(LightOrganTest, SlidersAreStoredWhereTheirModeKeepsThem) {
  Start();
  organ_.IOScroller(3, 40);
  EXPECT_EQ(Get("IOLO", "3"), "40");
  organ_.cmdK8000(6);
  organ_.DacScroller(2, 99);
  EXPECT_EQ(Get("DACLO", "2"), "99");
  EXPECT_EQ(Get("CONSTANTDAC", "2"), "none");
  organ_.cmdK8000(8);
  organ_.DacScroller(2, 50);
  EXPECT_EQ(Get("CONSTANTDAC", "2"), "50");
  EXPECT_EQ(Get("DACLO", "2"), "99");
  organ_.btnOn(4);
  EXPECT_EQ(Get("CONSTANTIO", "4"), "1");
  organ_.ScrollerPatternDAC(6);
  EXPECT_EQ(Get("BanksDAC", "CurrentBank") + Get("BanksDAC", "CurrentProgram"), "66");
}

TEST_F(LightOrganTest, TheStartPressesTheStoredButtons) {
  Set("Effects", "IO", "Beat");
  Set("Effects", "DAC", "PP");
  Start();
  EXPECT_EQ(organ_.View().io_mode, IoMode::Beat);
  EXPECT_EQ(organ_.View().dac_mode, DacMode::Pp);
  Set("Effects", "IO", "nonsense");
  organ_.Start(nullptr);
  EXPECT_EQ(organ_.View().io_mode, IoMode::Constant);
}

TEST_F(LightOrganTest, WithTheSwitchOffNoCallIsMadeAtAll) {
  Start(false);
  music_.mixed = Tone(1);
  for (int mode = 0; mode < kModeButtons; ++mode) {
    organ_.cmdK8000(mode);
    Play(milliseconds(200));
  }
  organ_.btnOn(1);
  organ_.ShutDown();
  EXPECT_THAT(boards_.calls, IsEmpty());
}

TEST_F(LightOrganTest, BoardsThatAreSwitchedOnShowWhatTheScreenShows) {
  Start(true, "32");
  for (const int output : {1, 3, 9}) organ_.btnOn(output);
  organ_.SwitchBoards(false);
  organ_.btnOn(3);
  organ_.DacScroller(16, 200);
  organ_.SwitchBoards(true);
  EXPECT_EQ(boards_.lit.to_ulong(), 0x101U);
  EXPECT_EQ(boards_.values[15], 200);
}

TEST_F(LightOrganTest, TheEndIsDarkBoardByBoard) {
  Start(true, "32");
  organ_.ShutDown();
  EXPECT_EQ(boards_.Take(), (Calls{"ClearAllDigital 0", "ClearAllAnalog 0", "ClearAllDigital 1",
                                   "ClearAllAnalog 1", "CloseDevices"}));
  Play(milliseconds(500));
  EXPECT_THAT(boards_.calls, IsEmpty());
}

TEST_F(LightOrganTest, NoBoardIsToldAndTheLightsGoOn) {
  boards_.open_result = kNoBoard;
  Start();
  EXPECT_EQ(no_board_, 1);
  EXPECT_EQ(Get("Setup", "UseK8000"), "True");
  PlayIoBank(1);
  Play(milliseconds(20));
  EXPECT_TRUE(organ_.View().leds[0]);
  organ_.SwitchBoards(false);
  EXPECT_EQ(Get("Setup", "UseK8000"), "False");
  EXPECT_EQ(boards_.calls.back(), "CloseDevices");
}

TEST_F(LightOrganTest, ABandLightsItsOutputAgainstItsOwnSlider) {
  Start();
  organ_.cmdK8000(2);
  organ_.IOScroller(1, 100);
  organ_.IOScroller(2, 50);
  music_.mixed = Tone(1);
  (*music_.mixed)[2] = 0.5F;
  Play(milliseconds(300));
  EXPECT_EQ(boards_.lit.to_ulong(), 2U);
  EXPECT_THAT(boards_.Take(),
              Each(AnyOf(StartsWith("SetDigitalChannel"), StartsWith("ClearDigitalChannel"))));
  music_.mixed.reset();
  Play(milliseconds(500));
  EXPECT_EQ(Lit(), 0U);
}

TEST_F(LightOrganTest, InStereoOddOutputsFollowTheLeftChannel) {
  Start();
  organ_.cmdK8000(1);
  music_.left = music_.right = Bins();
  music_.left->fill(0.2F);
  Play(milliseconds(300));
  EXPECT_EQ(boards_.lit.to_ulong(), 0b0101'0101U);
}

TEST_F(LightOrganTest, AnalogueOutputsFollowTheirBandsUpToTheirSliders) {
  Start();
  organ_.cmdK8000(6);
  organ_.DacScroller(1, 200);
  music_.mixed = Tone(1);
  Play(milliseconds(500));
  EXPECT_NEAR(boards_.values[0], 200, 2);
  EXPECT_EQ(boards_.values[5], 0);
}

TEST_F(LightOrganTest, EachBeatFlashesOnceAndASeekDoesNot) {
  Start();
  organ_.cmdK8000(5);
  music_.beat = HeardBeat{1, 7};
  Play(milliseconds(50));
  EXPECT_EQ(boards_.Take(), (Calls{"OutputAllDigital 0 0"}));
  music_.beat->number = 8;
  Play(milliseconds(50));
  EXPECT_EQ(Lit(), 8U);
  Play(milliseconds(100));
  EXPECT_EQ(boards_.Take(), (Calls{"OutputAllDigital 0 255", "OutputAllDigital 0 0"}));
  music_.beat->number = 40;
  Play(milliseconds(50));
  music_.beat = HeardBeat{2, 41};
  Play(milliseconds(50));
  EXPECT_THAT(boards_.Take(), IsEmpty());
  music_.playing = false;
  music_.beat->number = 42;
  Play(milliseconds(50));
  EXPECT_THAT(boards_.Take(), IsEmpty());
}

TEST_F(LightOrganTest, TwoBoardsFlashChannelByChannel) {
  Start(true, "32");
  organ_.cmdK8000(5);
  EXPECT_EQ(boards_.Take().size(), 16U);
  music_.beat = HeardBeat{1, 1};
  Play(milliseconds(10));
  music_.beat->number = 2;
  Play(milliseconds(10));
  EXPECT_EQ(Lit(), 16U);
  EXPECT_EQ(boards_.calls.back(), "SetDigitalChannel 1 8");
}

TEST_F(LightOrganTest, OnsetsFlashWhereThereIsNoGrid) {
  Start();
  organ_.cmdK8000(5);
  music_.mixed = Bins();
  Play(milliseconds(600));
  boards_.calls.clear();
  music_.mixed->fill(0.1F);
  Play(milliseconds(10));
  EXPECT_EQ(Lit(), 8U);
}

TEST_F(LightOrganTest, WhatIsRememberedComesBack) {
  Start();
  organ_.cmdK8000(4);
  organ_.btnOn(2);
  organ_.cmdK8000(8);
  organ_.DacScroller(5, 123);
  const std::string text = SnapshotText(organ_.Remember(), IoBoardSize::One);
  EXPECT_THAT(text, StartsWith("CONSTANTIO\r\n0\r\n0\r\n1\r\n0\r\n"));
  organ_.btnOn(2);
  organ_.DacScroller(5, 0);
  organ_.cmdK8000(3);
  organ_.Recall(*ParseSnapshot(text));
  EXPECT_EQ(organ_.View().io_mode, IoMode::Constant);
  EXPECT_EQ(boards_.lit.to_ulong(), 2U);
  EXPECT_EQ(boards_.values[4], 123);
}

TEST_F(LightOrganTest, AMemoryTouchesOnlyWhatItHolds) {
  Start();
  organ_.cmdK8000(2);
  organ_.cmdK8000(6);
  organ_.IOScroller(8, 80);
  organ_.DacScroller(8, 81);
  const std::string one_board = SnapshotText(organ_.Remember(), IoBoardSize::One);
  organ_.SetIoBoardSize(IoBoardSize::Two);
  organ_.IOScroller(8, 8);
  organ_.DacScroller(8, 8);
  organ_.IOScroller(12, 40);
  organ_.DacScroller(12, 41);
  organ_.Recall(*ParseSnapshot(one_board));
  EXPECT_EQ(organ_.View().io.sliders[7], 80);
  EXPECT_EQ(organ_.View().dac.sliders[7], 81);
  EXPECT_EQ(organ_.View().io.sliders[11], 40);
  EXPECT_EQ(organ_.View().dac.sliders[11], 41);
  organ_.ScrollerIO(33);
  organ_.Recall(*ParseSnapshot("USESPECTRUMIO\r\n"));
  EXPECT_EQ(organ_.View().io.speed, 33);
  EXPECT_EQ(organ_.View().io.sliders[11], 40);
  EXPECT_EQ(organ_.View().dac_mode, DacMode::Lo);
}

TEST(Snapshot, ReadsWhatItWritesAndWhateverElse) {
  Snapshot snapshot{IoMode::Pp, 30, {}, DacMode::Lo, 70, {}};
  snapshot.io_levels[15] = 5;
  snapshot.dac_levels[0] = 255;
  EXPECT_EQ(ParseSnapshot(SnapshotText(snapshot, IoBoardSize::Two)), snapshot);
  EXPECT_EQ(ParseSnapshot("BEAT\nfast")->io, IoMode::Beat);
  EXPECT_EQ(ParseSnapshot(""), std::nullopt);
}

}  // namespace
}  // namespace lightorgan
