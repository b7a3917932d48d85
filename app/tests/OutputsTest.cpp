// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "app/WorkstationView.h"
#include "app/settings/OutputSettings.h"
#include "app/tests/Evening.h"

namespace app {
namespace {

using std::chrono::seconds;
using testing::State;

class OutputsTest : public testing::Evening {
 protected:
  void Choose(int output, OutputView place) {
    station_->Outputs().Set(output, place);
    Settle();
    workers_.RunAll();
    Settle();
  }
  [[nodiscard]] std::vector<std::string> Warnings() {
    std::vector<std::string> texts;
    for (const Notice& notice : station_->View().notices) {
      if (notice.kind == Notice::Kind::Warning) texts.push_back(notice.text);
    }
    return texts;
  }
  /// Devices of the streams that exist, lowest handle first.
  [[nodiscard]] std::vector<int> Devices() const {
    std::vector<int> devices;
    for (decks::StreamHandle stream = 1; stream < 1000; ++stream) {
      if (const auto device = engine_.DeviceOf(stream)) devices.push_back(*device);
    }
    return devices;
  }
};

TEST_F(OutputsTest, APlayingDeckMovesToAnotherDeviceWhereItIsHeard) {
  StartUp();
  Load(1, "a.mp3");
  station_->Decks()[1].SetTempo(10);
  station_->Decks()[1].Adjust(&DeckStation::SetVolume, 60);
  Play(1);
  Advance(seconds(10));
  Choose(1, {2, 0});
  EXPECT_EQ(Devices(), std::vector{2});
  Advance(seconds(10));
  EXPECT_EQ(Deck(1).state, State::Playing);
  EXPECT_EQ(Deck(1).position, seconds(22));
  EXPECT_EQ(Deck(1).volume, 60);
}

TEST_F(OutputsTest, APausedDeckMovesAndStaysPaused) {
  StartUp();
  Load(1, "a.mp3");
  Play(1);
  Advance(seconds(5));
  station_->Decks()[1].Do(&DeckStation::Pause);
  Choose(1, {2, 3});
  Advance(seconds(5));
  EXPECT_EQ(Deck(1).state, State::Paused);
  EXPECT_EQ(Deck(1).position, seconds(5));
  EXPECT_EQ(Devices(), std::vector{2});
}

TEST_F(OutputsTest, ADeviceThatDoesNotOpenLeavesTheDeckWhereItPlays) {
  StartUp();
  Load(1, "a.mp3");
  Play(1);
  engine_.BreakDevice(2);
  Choose(1, {2, 0});
  Advance(seconds(1));
  EXPECT_EQ(Devices(), std::vector{1});
  EXPECT_EQ(Deck(1).position, seconds(1));
  EXPECT_EQ(station_->View().notice, say_(support::Sentence::OutputCannotOpen, {"Phones"}));
  EXPECT_EQ(station_->View().outputs[0].device, 1);
}

TEST_F(OutputsTest, AFileThatIsGoneMeanwhilePlaysOnWhereItIs) {
  StartUp();
  Load(1, "a.mp3");
  Play(1);
  engine_.RemoveFile("a.mp3");
  Choose(1, {2, 0});
  Advance(seconds(1));
  EXPECT_EQ(Devices(), std::vector{1});
  EXPECT_EQ(Deck(1).position, seconds(1));
  EXPECT_EQ(Deck(1).message, "There is no file \"a.mp3\".");
}

TEST_F(OutputsTest, DecksGoOnWhileAWorkerOpensADevice) {
  StartUp();
  Load(1, "a.mp3");
  Play(1);
  station_->Outputs().Set(1, {2, 0});
  Settle();
  Advance(seconds(3));
  EXPECT_EQ(Deck(1).position, seconds(3));
  EXPECT_EQ(Devices(), std::vector{1});
  workers_.RunAll();
  Settle();
  EXPECT_EQ(Devices(), std::vector{2});
}

TEST_F(OutputsTest, TwoOutputsThatWaitForOneDeviceBothGetIt) {
  StartUp();
  station_->Outputs().Set(1, {2, 1});
  station_->Outputs().Set(3, {2, 2});
  Settle();
  EXPECT_EQ(workers_.Waiting(), 1U);
  workers_.RunAll();
  Settle();
  EXPECT_EQ(station_->View().outputs[0], (OutputView{2, 1}));
  EXPECT_EQ(station_->View().outputs[2], (OutputView{2, 2}));
}

TEST_F(OutputsTest, HeadPhonesAreChangedWithoutTouchingTheMainStream) {
  StartUp();
  Load(1, "a.mp3");
  Play(1);
  Advance(seconds(4));
  const auto before = engine_.Log();
  engine_.ClearLog();
  Choose(3, {2, 0});
  for (const std::string& call : engine_.Log())
    EXPECT_EQ(call.find("BASS_ChannelPlay 2 "), std::string::npos);
  EXPECT_EQ(Devices(), (std::vector{1, 2}));
  Choose(3, {0, 0});
  EXPECT_EQ(Devices(), std::vector{1});
  EXPECT_EQ(Deck(1).state, State::Playing);
}

TEST_F(OutputsTest, WhatIsListenedToStaysLoudOnItsNewPair) {
  Store("Devices", "Device3", "2");
  StartUp();
  Load(1, "a.mp3");
  Play(1);
  station_->Decks()[1].Adjust(&DeckStation::SetPreVolume, 75);
  Choose(3, {2, 2});
  EXPECT_EQ(Deck(1).pre_volume, 75);
}

TEST_F(OutputsTest, TheSecondDeckGoesWithTheFirstUntilItHasAnOutputOfItsOwn) {
  StartUp();
  Choose(1, {2, 0});
  EXPECT_EQ(station_->View().outputs[1].device, 2);
  Choose(2, {2, 3});
  Choose(1, {1, 0});
  EXPECT_EQ(station_->View().outputs[1], (OutputView{2, 3}));
}

TEST_F(OutputsTest, ADeviceIsForHeadPhonesWhereNoDeckPlaysOnIt) {
  Store("Devices", "Device3", "2");
  StartUp();
  EXPECT_EQ(engine_.RoleOf(1), decks::DeviceRole::Main);
  EXPECT_EQ(engine_.RoleOf(2), decks::DeviceRole::Headphones);
  Choose(2, {2, 1});
  EXPECT_EQ(engine_.RoleOf(2), decks::DeviceRole::Main);
}

TEST_F(OutputsTest, WhatHappensToADeviceIsTold) {
  StartUp();
  engine_.PostDeviceEvent({decks::DeviceEvent::Kind::Lost, 1, "Main is gone."});
  Settle();
  EXPECT_EQ(station_->View().notice, "Main is gone.");
}

TEST_F(OutputsTest, WhatIsToldOfADeviceStandsAsLongAsItIsTrue) {
  Store("Devices", "Device3", "2");
  StartUp();
  engine_.PostDeviceEvent({decks::DeviceEvent::Kind::Lost, 1, "Main is gone."});
  engine_.PostDeviceEvent({decks::DeviceEvent::Kind::Muted, 2, "Phones are gone."});
  engine_.PostDeviceEvent({decks::DeviceEvent::Kind::Replaced, 1, "The other one plays."});
  Settle();
  EXPECT_EQ(Warnings(), (std::vector<std::string>{"Phones are gone.", "Main is gone. The other one plays."}));
  engine_.PostDeviceEvent({decks::DeviceEvent::Kind::Returned, 2, "Phones are back."});
  Settle();
  EXPECT_EQ(Warnings(), std::vector<std::string>{"Main is gone. The other one plays."});
  EXPECT_EQ(station_->View().notice, "Phones are back.");
  engine_.PostDeviceEvent({decks::DeviceEvent::Kind::CanReturn, 1, "Main is back."});
  Settle();
  EXPECT_EQ(Warnings(), std::vector<std::string>{});
  engine_.PostDeviceEvent({decks::DeviceEvent::Kind::CannotReturn, 1, ""});
  Settle();
  EXPECT_EQ(station_->View().notice, "");
}

TEST_F(OutputsTest, NobodyIsWarnedOfADeviceThatNothingPlaysOnAnyMore) {
  StartUp();
  engine_.PostDeviceEvent({decks::DeviceEvent::Kind::Lost, 1, "Main is gone."});
  engine_.BreakDevice(2);
  Choose(1, {2, 0});
  EXPECT_EQ(Warnings().size(), 2U) << "and the other one does not open";
  Choose(1, {0, 0});
  EXPECT_EQ(Warnings(), std::vector<std::string>{});
}

TEST_F(OutputsTest, TheSecondDeckGoesWithTheFirstAgain) {
  StartUp();
  Load(2, "a.mp3");
  Play(2);
  Choose(2, {2, 3});
  station_->Outputs().Share();
  Settle();
  EXPECT_EQ(station_->View().outputs[1], (OutputView{1, 0}));
  EXPECT_EQ(Stored("Preferences", "Outputs"), "1");
  EXPECT_EQ(Stored("Devices", "DeviceName2"), "Phones") << "for when it has its own again";
  EXPECT_EQ(Deck(2).state, State::Playing);
  Choose(1, {2, 1});
  EXPECT_EQ(station_->View().outputs[1], (OutputView{2, 1}));
}

TEST(HeadPhonesTest, AreHeardByAllWhereTheyShareADecksLoudspeakers) {
  struct Case {
    OutputView deck1, deck2, phones;
    int heard_with;
  };
  for (const Case& c :
       {Case{{1, 0}, {1, 0}, {0, 0}, 0}, Case{{1, 0}, {1, 0}, {2, 0}, 0}, Case{{1, 1}, {1, 1}, {1, 2}, 0},
        Case{{1, 1}, {1, 2}, {1, 2}, 2}, Case{{1, 0}, {1, 0}, {1, 2}, 1}, Case{{1, 1}, {2, 1}, {1, 0}, 1},
        Case{{0, 0}, {0, 0}, {0, 0}, 0}}) {
    EXPECT_EQ(DeckOnHeadphones({c.deck1, c.deck2, c.phones}), c.heard_with)
        << c.phones.device << ' ' << c.phones.speaker;
  }
}

TEST_F(OutputsTest, ADeviceThatCameBackIsReturnedToOnRequest) {
  StartUp();
  engine_.PostDeviceEvent({decks::DeviceEvent::Kind::CanReturn, 1, "Main is back."});
  Settle();
  EXPECT_TRUE(station_->View().can_return[0]);
  EXPECT_FALSE(station_->View().can_return[2]);
  station_->Outputs().Return(9);
  station_->Outputs().Return(1);
  Settle();
  EXPECT_EQ(engine_.Returned(), std::vector{1});
  engine_.PostDeviceEvent({decks::DeviceEvent::Kind::Returned, 1, "Playing is back."});
  Settle();
  EXPECT_FALSE(station_->View().can_return[0]);
}

TEST_F(OutputsTest, WhatTheUserMovesInTheSystemsMixerPlaysThereForTheRunAndIsShownThere) {
  Store("Devices", "Device1", "1");
  StartUp();
  Load(1, "a.mp3");
  engine_.PostDeviceEvent({decks::DeviceEvent::Kind::Lost, 1, "Main is gone."});
  engine_.PostDeviceEvent({decks::DeviceEvent::Kind::Replaced, 1, "The other one plays."});
  decks::DeviceEvent moved{decks::DeviceEvent::Kind::Moved, 1, "Moved."};
  moved.moved_to = 2;
  engine_.PostDeviceEvent(moved);
  Settle();
  workers_.RunAll();
  Settle();
  EXPECT_EQ(station_->View().outputs[0].device, 2);
  EXPECT_EQ(station_->View().outputs[1].device, 2) << "it shares the device";
  EXPECT_EQ(station_->View().notice, "Moved.");
  EXPECT_EQ(Warnings(), std::vector<std::string>{}) << "of the device that was left";
  EXPECT_EQ(Devices().back(), 2);
  EXPECT_EQ(Stored("Devices", "Device1"), "1");
}

TEST_F(OutputsTest, TheFourthDeckPlaysInTheHeadPhones) {
  Store("Devices", "Device3", "2");
  StartUp();
  Load(4, "a.mp3");
  EXPECT_EQ(Devices(), std::vector{2});
}

TEST_F(OutputsTest, AChoiceIsStoredWithTheNameOfItsDevice) {
  StartUp();
  Choose(2, {2, 3});
  EXPECT_EQ(Stored("Devices", "Device2"), "2");
  EXPECT_EQ(Stored("Devices", "DeviceName2"), "Phones");
  EXPECT_EQ(Stored("Speakers", "Speaker2"), "3");
  EXPECT_EQ(Stored("Speakerchoice", "Speaker2"), "True");
  EXPECT_EQ(Stored("Preferences", "Outputs"), "2");
  Choose(2, {2, 0});
  EXPECT_EQ(Stored("Speakerchoice", "Speaker2"), "False");
  EXPECT_EQ(Stored("Speakers", "Speaker2"), "3");
}

struct StoredOutput {
  const char* what;
  int output;
  const char *device, *name, *pair, *choice;
  OutputView place;
  std::uint32_t flags;
  const char* notice;
};

class StoredOutputTest : public ::testing::TestWithParam<StoredOutput> {};

TEST_P(StoredOutputTest, IsReadAtTheStart) {
  const StoredOutput& stored = GetParam();
  support::testing::MemorySettings store;
  support::Settings settings(store, support::ProgramFolder("x"));
  const std::string number = std::to_string(stored.output);
  settings.SetText("Preferences", "Outputs", "2");
  settings.SetText("Devices", "Device" + number, stored.device);
  settings.SetText("Devices", "DeviceName" + number, stored.name);
  settings.SetText("Speakers", "Speaker" + number, stored.pair);
  settings.SetText("Speakerchoice", "Speaker" + number, stored.choice);
  const OutputsAtStart outputs = ReadOutputs(settings, std::vector<std::string>{"Main", "Phones"}, {});
  const OutputWish& wish = outputs.wishes[static_cast<std::size_t>(stored.output - 1)];
  EXPECT_EQ(wish.place, stored.place);
  EXPECT_EQ(wish.flags, stored.flags);
  EXPECT_EQ(support::English()(outputs.notice), stored.notice);
}

constexpr const char* kGone = "The sound output \"Mixer\" is not connected.";
INSTANTIATE_TEST_SUITE_P(
    Outputs, StoredOutputTest,
    ::testing::Values(StoredOutput{"NumberAlone", 1, "2", "", "1", "False", {2, 0}, 0, ""},
                      StoredOutput{"NameWins", 1, "1", "Phones", "1", "False", {2, 0}, 0, ""},
                      StoredOutput{"PairChosen", 2, "2", "Phones", "3", "True", {2, 3}, 2048, ""},
                      StoredOutput{"PairOutOfRange", 2, "2", "Phones", "9", "True", {2, 9}, 0, ""},
                      StoredOutput{"DeckDeviceGone", 2, "2", "Mixer", "3", "True", {1, 0}, 0, kGone},
                      StoredOutput{"PhonesGone", 3, "2", "Mixer", "2", "True", {0, 0}, 0, kGone},
                      StoredOutput{"NoPhones", 3, "0", "Mixer", "1", "False", {0, 0}, 0, ""},
                      StoredOutput{"Garbage", 3, "-7x", "", "", "perhaps", {0, 0}, 0, ""}),
    [](const auto& test) { return test.param.what; });

TEST(OutputSettingsTest, WithOneOutputBothDecksShareIt) {
  support::testing::MemorySettings store;
  support::Settings settings(store, support::ProgramFolder("x"));
  settings.SetText("Devices", "Device1", "2");
  settings.SetText("Devices", "Device2", "1");
  const OutputsAtStart outputs = ReadOutputs(settings, std::vector<std::string>{"Main", "Phones"}, {});
  EXPECT_EQ(outputs.wishes[1].place, (OutputView{2, 0}));
}

}  // namespace
}  // namespace app
