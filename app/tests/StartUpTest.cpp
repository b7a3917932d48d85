// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <fstream>

#include "app/WorkstationView.h"
#include "app/tests/Evening.h"

namespace app {
namespace {

using testing::State;
using Lines = std::vector<std::string>;

class StartUpTest : public testing::Evening {
 protected:
  ~StartUpTest() override { std::filesystem::remove_all(folder_); }
  void WriteIndex(std::string_view text) {
    std::filesystem::create_directories(folder_);
    std::ofstream(folder_ / "TLV.NDX", std::ios::binary) << text;
  }
};

TEST_F(StartUpTest, DevicesAreListedThenOpenedThenTheBuffersAreSet) {
  Store("Preferences", "Outputs", "2");
  Store("Devices", "Device2", "2");
  StartUp();
  EXPECT_EQ(engine_.Log(),
            (Lines{"BASS_GetDeviceDescription 1", "BASS_GetDeviceDescription 2",
                   "BASS_GetDeviceDescription 3", "BASS_Free", "BASS_Init 1 44100 0", "BASS_Init 2 44100 0",
                   "BASS_Init 0 44100 0", "BASS_SetConfig 1 20", "BASS_SetConfig 0 60"}));
  EXPECT_EQ(station_->Outputs().DeviceNames(), (Lines{"Main", "Phones"}));
}

TEST_F(StartUpTest, ReadingSettingsWritesNone) {
  StartUp();
  EXPECT_EQ(settings_.Size(), 0U);
}

TEST_F(StartUpTest, ADeviceThatDoesNotOpenIsToldAndTheRestGoesOn) {
  engine_.BreakDevice(1);
  StartUp();
  EXPECT_EQ(station_->View().notice, say_(support::Sentence::OutputCannotOpen, {"Main"}));
  EXPECT_EQ(station_->View().outputs[0].device, 0);
  Load(1, "a.mp3");
  Play(1);
  Advance(std::chrono::seconds(1));
  EXPECT_EQ(Deck(1).position, std::chrono::seconds(1));
}

TEST_F(StartUpTest, TheSecondDeckPlaysOnTheFirstOnesOutputWhereItsOwnDoesNotOpen) {
  Store("Preferences", "Outputs", "2");
  Store("Devices", "Device2", "2");
  engine_.BreakDevice(2);
  StartUp();
  EXPECT_EQ(station_->View().outputs[1].device, 1);
}

TEST_F(StartUpTest, HeadPhonesThatDoNotOpenAreNeverReplaced) {
  Store("Devices", "Device3", "2");
  engine_.BreakDevice(2);
  StartUp();
  EXPECT_EQ(station_->View().outputs[2].device, 0);
}

TEST_F(StartUpTest, AMachineWithoutSoundRunsWithoutSound) {
  decks::testing::RecordingEngine silent(clock_);
  silent.AcceptAnyFile();
  Workstation station({silent, silent, tags_, settings_, files_, workers_, clock_},
                      support::ProgramFolder(folder_), Workstation::Conducting::ByHand);
  station.StartUp();
  station.Tick();
  EXPECT_EQ(station.View().notice, support::Sentences()(support::Sentence::NoOutputs));
  EXPECT_EQ(station.View().notices.size(), 1U) << "told once";
  EXPECT_EQ(station.View().outputs[0].device, 0);
}

TEST_F(StartUpTest, TheLanguageChoosesTheBaseOfTheTexts) {
  const std::pair<const char*, int> bases[] = {{"0", 0},  {"1", 1000},       {"2", 4000}, {"3", 0},
                                               {"-1", 0}, {"4294967298", 0}, {"x", 0}};
  for (const auto& [language, base] : bases) {
    Store("Language", "Current", language);
    StartUp();
    EXPECT_EQ(station_->Language().StringBase(), base) << language;
  }
}

TEST_F(StartUpTest, TheIndexFillsTheCatalogueInAnyLetterCaseOfItsNameAndMissingFilesAreCounted) {
  WriteIndex("A\tT\t03:45\t/a.mp3\t\t\t\t\t\t\t\t1.5\t\r\n");
  StartUp();
  ASSERT_EQ(Music().Rows(), 1);
  EXPECT_EQ(Music().Cell(1, catalogue::track::kStartMixPoint), "1.5");
  station_->PumpWindow();
  station_->Tick();
  EXPECT_TRUE(station_->View().notice.starts_with(
      "1 file of the catalogue is not there: \"/a.mp3\". Connect its disk"));
}

TEST_F(StartUpTest, WhatTheSettingsStoreHasToSayIsToldOnceInTheLanguageChosen) {
  Store("Language", "Current", "1");
  settings_.Tell(
      support::Failed(support::ErrorCode::Unavailable, support::Sentence::DiskFull, {"settings.ini"}));
  StartUp();
  for (const char* told : {"Er is geen ruimte meer op de schijf voor settings.ini.", "gone"}) {
    station_->PumpWindow();
    Settle();
    EXPECT_EQ(station_->View().notice, told);
    settings_.Tell({support::ErrorCode::Unavailable, "gone"});
  }
}

TEST_F(StartUpTest, ShutDownFreesTheStreamsThenTheEngineThenWritesTheSettings) {
  StartUp();
  Load(1, "a.mp3");
  Play(1);
  engine_.ClearLog();
  station_->ShutDown();
  const Lines log = engine_.Log();
  EXPECT_EQ(log.front().substr(0, 16), "BASS_ChannelStop");
  EXPECT_EQ(log.back(), "BASS_Free");
  EXPECT_EQ(settings_.Flushes(), 1);
  station_.reset();
  EXPECT_EQ(engine_.Log().size(), log.size());
}

TEST_F(StartUpTest, AWorkerThatIsLateOpensNoDeviceAfterShutDown) {
  StartUp();
  station_->Outputs().Set(1, {2, 0});
  Settle();
  station_->ShutDown();
  workers_.RunAll();
  EXPECT_EQ(engine_.Log().back(), "BASS_Free");
}

TEST_F(StartUpTest, AWorkstationThatWasNeverStartedTouchesNothing) {
  {
    Workstation station({engine_, engine_, tags_, settings_, files_, workers_, clock_},
                        support::ProgramFolder(folder_), Workstation::Conducting::ByHand);
  }
  EXPECT_EQ(engine_.Calls() + settings_.Flushes(), 0);
}

}  // namespace
}  // namespace app
