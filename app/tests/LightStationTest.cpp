// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "app/WorkstationView.h"
#include "app/lights/StagedShow.h"
#include "app/tests/Evening.h"
#include "dmx/testing/RecordingDmxInterface.h"
#include "dmx/testing/ShowMaker.h"

namespace app {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using Lines = std::vector<std::string>;
using Playing = dmx::ShowPlayer::State;

/// An evening with a box on the wire, and show files to open.
class LightStationTest : public testing::Evening {
 protected:
  LightStationTest() {
    folder_ = fs::path(::testing::TempDir()) / "lights";
    fs::remove_all(folder_);
    fs::create_directories(folder_ / "DMXlibrary");
    dmx_ = &wire_;
  }
  ~LightStationTest() override {
    station_.reset();
    fs::remove_all(folder_);
  }

  void StartWithOutput() {
    Store("Setup", "UseK8062", "True");
    StartUp();
    wire_.TakeCalls();
  }
  /// A show of one scene on the first channels: up over two seconds, held for one.
  fs::path ShowFile(const std::string& name, const std::vector<int>& levels, const std::string& head = "0") {
    std::ofstream file(folder_ / (name + ".SHW"), std::ios::binary);
    file << head << "\r\n1\r\n1\r\nFirst\r\n1\r\n1\r\n" << levels.size() << "\r\n00:02.0\r\n00:01.0\r\n";
    for (const int level : levels) file << level << "\r\nFalse\r\n0\r\n0\r\n\r\n";
    return folder_ / (name + ".SHW");
  }
  /// What was told of it; a failure's sentence where it could not be opened.
  ShowReport Open(const fs::path& path) {
    ShowReport told;
    Lights().OpenShow(path, [&](const auto& report) {
      if (report)
        told = report.Value();
      else
        told.name = report.Failure().text;
    });
    workers_.RunAll();
    station_->PumpWindow();
    Settle();
    return told;
  }
  LightStation& Lights() { return station_->Lights(); }
  const LightView& View() { return Lights().View(); }
  void PlayTo(std::chrono::milliseconds time) {
    Lights().PlayShow();
    Settle();
    for (auto passed = 0ms; passed < time; passed += 10ms) Advance(10ms);
  }

  dmx::testing::RecordingDmxInterface wire_;
};

TEST_F(LightStationTest, TheStoredSwitchOpensTheInterfaceAtStartUp) {
  StartUp();
  EXPECT_EQ(wire_.TakeCalls(), Lines{});
  station_.reset();
  wire_.TakeCalls();
  Store("Setup", "UseK8062", "True");
  StartUp();
  EXPECT_EQ(wire_.TakeCalls(), (Lines{"StartDevice", "SetChannelCount 512"}));
  EXPECT_TRUE(View().output_on);
}

TEST_F(LightStationTest, TheSwitchIsStoredAndFadersThatStandAreSentAgain) {
  StartUp();
  Lights().MoveFader(512, 255);
  Lights().TurnOutput(LightStation::Output::On);
  Settle();
  EXPECT_EQ(Stored("Setup", "UseK8062"), "True");
  EXPECT_EQ(wire_.TakeCalls(), (Lines{"StartDevice", "SetChannelCount 512", "SetData 512 255"}));
  Lights().TurnOutput(LightStation::Output::Off);
  Settle();
  EXPECT_EQ(Stored("Setup", "UseK8062"), "False");
  EXPECT_EQ(wire_.TakeCalls(), (Lines{"StopDevice"}));
  EXPECT_EQ(View().levels[511], 255) << "the fader stays where it is";
}

TEST_F(LightStationTest, EachEditorAsksWhatItNeedsOfTheInterface) {
  StartUp();
  Lights().FixtureEditorLoaded();
  Lights().ShowEditorLoaded();
  Settle();
  EXPECT_EQ(wire_.TakeCalls(), (Lines{"SetChannelCount 512", "StartDevice", "SetChannelCount 512"}));
}

TEST_F(LightStationTest, MasterAndBlackoutLieBehindTheFaders) {
  StartWithOutput();
  Lights().MoveFaders({{1, 200}, {2, 100}});
  Lights().SetGrandMaster(128);
  Settle();
  EXPECT_EQ(wire_.Level(1), 100);
  Lights().SetBlackout(dmx::OutputStage::Blackout::On);
  Settle();
  EXPECT_EQ(wire_.Level(2), 0);
  EXPECT_EQ(View().levels[1], 100);
  EXPECT_EQ(View().on_the_wire[1], 0);
}

TEST_F(LightStationTest, AShowFadesHoldsAndEnds) {
  StartWithOutput();
  EXPECT_EQ(Open(ShowFile("Dance", {200, 100})).name, "Dance");
  EXPECT_EQ(View().show.show->plan->Length(), 3s);
  PlayTo(1000ms);
  EXPECT_NEAR(wire_.Level(1), 100, 3);
  PlayTo(2500ms);
  EXPECT_EQ(wire_.Level(2), 100);
  EXPECT_FALSE(View().show.place.fading);
  for (int i = 0; i < 60; ++i) Advance(10ms);
  EXPECT_EQ(View().show.state, Playing::Stopped);
  EXPECT_EQ(wire_.Level(1), 200) << "the lamps stay as the show left them";
}

TEST_F(LightStationTest, AFixtureThatHasGrownOrIsRefusedMovesNoLevelOfTheOthers) {
  StartWithOutput();
  const std::string channel = "Channel\r\n3\r\n\r\n0\r\n";
  std::ofstream(folder_ / "DMXlibrary" / "grown.dmx")
      << "Grown\r\n3\r\n0\r\n0\r\n0\r\n3\r\n" + channel + channel + channel;
  std::ofstream(folder_ / "DMXlibrary" / "par.dmx") << "Par\r\n3\r\n0\r\n0\r\n0\r\n1\r\n" + channel;
  const ShowReport told = Open(
      ShowFile("Dance", {10, 20, 90}, "3\r\ngrown.dmx\r\n1\r\n1\r\npar.dmx\r\n2\r\n1\r\npar.dmx\r\n9\r\n1"));
  EXPECT_EQ(told.refused, Lines{"Channel 2 is already taken. Please choose another Start Channel"});
  EXPECT_EQ(told.notes.size(), 2U);
  PlayTo(2500ms);
  EXPECT_EQ(wire_.Level(1), 10);
  EXPECT_EQ(wire_.Level(2), 0);
  EXPECT_EQ(wire_.Level(9), 90);
  station_.reset();
  StartUp();
  station_->PumpWindow();
  Settle();
  EXPECT_NE(station_->View().notice.find(told.refused.front()), std::string::npos) << "at the start too";
}

TEST_F(LightStationTest, TheShowThatWasOpenLastIsOpenAgainAfterAStart) {
  StartUp();
  Open(ShowFile("Dance", {200}));
  station_.reset();
  StartUp();
  station_->PumpWindow();
  Settle();
  ASSERT_NE(View().show.show, nullptr);
  EXPECT_EQ(View().show.show->name, "Dance");
  EXPECT_EQ(View().show.state, Playing::Stopped);
  fs::remove(folder_ / "Dance.SHW");
  station_.reset();
  StartUp();
  station_->PumpWindow();
  Settle();
  EXPECT_EQ(View().show.show, nullptr);
}

TEST_F(LightStationTest, AShowOpenedWhileAnotherPlaysWaitsForPlayOrItsEnd) {
  StartWithOutput();
  Open(ShowFile("One", {200}));
  PlayTo(500ms);
  Open(ShowFile("Two", {0, 90}));
  EXPECT_EQ(View().show.show->name, "One");
  EXPECT_EQ(View().show.next->name, "Two");
  EXPECT_EQ(View().show.state, Playing::Playing);
  PlayTo(2500ms);
  EXPECT_EQ(View().show.show->name, "Two");
  EXPECT_EQ(View().show.next, nullptr);
  EXPECT_EQ(wire_.Level(2), 90);
  Open(ShowFile("Three", {1}));
  for (int i = 0; i < 60; ++i) Advance(10ms);
  EXPECT_EQ(View().show.show->name, "Three");
}

TEST_F(LightStationTest, TheConductorNeverFreesAShow) {
  StartWithOutput();
  Open(ShowFile("One", {200}));
  const std::weak_ptr<const StagedShow> old = View().show.show;
  const std::weak_ptr<const dmx::ShowPlan> plan = View().show.show->plan;
  PlayTo(100ms);
  Lights().TakePlan(View().show.show->plan, dmx::DMXname(), "Copy");
  Lights().PlayShow();
  Lights().TakeShow(std::make_shared<StagedShow>());
  Lights().StopShow();
  Settle();
  EXPECT_FALSE(old.expired()) << "the window has not looked yet";
  for (int look = 0; look < 3; ++look) {
    View();
    Settle();
  }
  View();
  EXPECT_TRUE(old.expired());
  EXPECT_TRUE(plan.expired());
}

TEST_F(LightStationTest, AHandOnAFaderWinsUntilTheShowMovesThatChannel) {
  StartWithOutput();
  Open(ShowFile("Dance", {200, 100}));
  PlayTo(2200ms);
  Lights().MoveFader(1, 7);
  Settle();
  for (int i = 0; i < 50; ++i) Advance(10ms);
  EXPECT_EQ(wire_.Level(1), 7);
}

TEST_F(LightStationTest, AShowTellsWhichFixturesAreMissingAndThatItEndsEarly) {
  StartWithOutput();
  const ShowReport missing = Open(ShowFile("Lost", {10}, "1\r\nGone.dmx\r\n5\r\n3"));
  EXPECT_EQ(missing.missing, Lines{"Gone.dmx"});
  EXPECT_EQ(View().patch->At(7).fixture_name, "Gone");
  EXPECT_EQ(View().patch->At(8).fixture, 0);
  std::ofstream(folder_ / "Short.SHW", std::ios::binary) << "0\r\n1\r\n1\r\nFirst\r\n";
  EXPECT_TRUE(Open(folder_ / "Short.SHW").ended_early);
  std::ofstream(folder_ / "Bad.SHW", std::ios::binary) << "many\r\n";
  EXPECT_NE(Open(folder_ / "Bad.SHW").name, "");
  EXPECT_EQ(View().show.show->name, "Short") << "an unreadable show leaves what was there";
}

TEST_F(LightStationTest, WhatIsToldOfAShowIsToldInTheLanguageChosen) {
  Store("Language", "Current", "1");
  StartUp();
  std::ofstream(folder_ / "Bad.SHW", std::ios::binary) << "veel\r\n";
  EXPECT_EQ(Open(folder_ / "Bad.SHW").name,
            "Regel 1: Het aantal armaturen moet een geheel getal zijn, maar \"veel\" is dat niet.");
  const ShowReport lost = Open(ShowFile("Lost", {300}, "1\r\nGone.dmx\r\n5\r\n3"));
  ASSERT_EQ(lost.notes.size(), 2U);
  EXPECT_EQ(lost.notes[0], "Een niveau van 300 is veranderd in 255.");
  EXPECT_TRUE(lost.notes[1].starts_with("Het bestand van \"Gone.dmx\"")) << lost.notes[1];
  EXPECT_TRUE(lost.notes[1].ends_with(" is er niet.")) << lost.notes[1];
}

TEST_F(LightStationTest, ShowsAreListedByName) {
  StartUp();
  fs::create_directories(folder_ / "DMXShows");
  for (const char* name : {"b.SHW", "a.shw", "C.Shw", "notes.txt"})
    std::ofstream(folder_ / "DMXShows" / name);
  Lines names;
  Lights().ListShows([&](const auto& shows) {
    for (const fs::path& show : shows) names.push_back(show.stem().string());
  });
  workers_.RunAll();
  station_->PumpWindow();
  EXPECT_EQ(names, (Lines{"a", "b", "C"}));
}

TEST_F(LightStationTest, ThePatchOfAShowInTheMakingWaitsWhileAnotherPlays) {
  StartWithOutput();
  Open(ShowFile("One", {200}));
  PlayTo(100ms);
  dmx::DMXname fixtures;
  for (const int start : {1, 4}) {
    dmx::DMXfilename& par = fixtures.Add();
    par.Filename = "C:\\DMXlibrary\\Par.dmx";
    par.StartChannel = static_cast<std::int16_t>(start);
    par.Channels.Add().function = dmx::ChannelFunction::Shutter;
    par.Channels.Add() = {dmx::ChannelFunction::Dimmer, "Master", {}};
  }
  Lights().TakePatch(fixtures);
  Settle();
  EXPECT_EQ(View().patch->At(5).fixture, 0);
  Lights().StopShow();
  Settle();
  EXPECT_EQ(View().patch->At(5), (ChannelLabel{2, 2, dmx::ChannelFunction::Dimmer, "Par 2", "Master"}));
}

TEST_F(LightStationTest, WithoutAnInterfaceTheFadersStillMove) {
  dmx_ = nullptr;
  StartUp();
  Lights().TurnOutput(LightStation::Output::On);
  Lights().MoveFader(3, 33);
  Settle();
  EXPECT_EQ(View().on_the_wire[2], 33);
}

}  // namespace
}  // namespace app
