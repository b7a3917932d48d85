// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>

#include "app/tests/Evening.h"
#include "decks/testing/FakeMicrophone.h"
#include "support/Sentences.h"

namespace app {
namespace {

using support::Sentence;

class MicrophoneTest : public testing::Evening {
 protected:
  MicrophoneTest() { microphone_ = &fake; }
  MicrophoneStation& Station() { return station_->Microphone(); }
  const MicrophoneView& View() {
    Settle();
    return Station().View();
  }
  int TimesTold(const std::string& sentence) {
    const auto& notices = station_->View().notices;
    return static_cast<int>(std::count_if(notices.begin(), notices.end(),
                                          [&](const Notice& notice) { return notice.text == sentence; }));
  }

  decks::testing::FakeMicrophone fake;
};

TEST_F(MicrophoneTest, IsOffAtTheStartAndKeepsWhatWasChosen) {
  StartUp();
  Station().Choose("lap");
  Station().SetChannel(2);
  decks::VoiceSettings voice = fake.wish.voice;
  voice.gain = 9;
  voice.gate = decks::GateMode::Fixed;
  voice.treble = -3;
  voice.compress = false;
  Station().SetVoice(voice);
  Station().SetDuck({true, 20, std::chrono::milliseconds(30), std::chrono::milliseconds(700),
                     std::chrono::milliseconds(1500)});
  Station().Switch(true);
  EXPECT_TRUE(View().wish.on);
  station_.reset();
  EXPECT_FALSE(fake.wish.on) << "nothing is recorded once the program has ended";
  StartUp();
  EXPECT_FALSE(View().wish.on);
  EXPECT_FALSE(fake.wish.on || fake.wish.talk_over || fake.wish.check);
  EXPECT_EQ(fake.wish.device, "lap");
  EXPECT_EQ(View().device_name, "Built-in microphone");
  EXPECT_EQ(fake.wish.channel, 2);
  EXPECT_EQ(fake.wish.voice.gain, 9);
  EXPECT_EQ(fake.wish.voice.gate, decks::GateMode::Fixed);
  EXPECT_EQ(fake.wish.voice.treble, -3);
  EXPECT_FALSE(fake.wish.voice.compress);
  EXPECT_EQ(fake.wish.duck.depth, 20);
  EXPECT_EQ(fake.wish.duck.release, std::chrono::milliseconds(1500));
}

TEST_F(MicrophoneTest, StoredNumbersThatFitNowhereAreBroughtIntoTheirRanges) {
  Store("Microphone", "Gain", "9000");
  Store("Microphone", "Channel", "-3");
  Store("Microphone", "Ratio", "none");
  Store("Microphone", "Gate", "7");
  StartUp();
  EXPECT_EQ(View().wish.voice.gain, 40);
  EXPECT_EQ(fake.wish.channel, 0);
  EXPECT_EQ(fake.wish.voice.ratio, 4);
  EXPECT_EQ(fake.wish.voice.gate, decks::GateMode::Automatic);
}

TEST_F(MicrophoneTest, SpeaksWhereTheDecksPlay) {
  StartUp();
  EXPECT_EQ(View().wish.hall, (std::vector<decks::HallPlace>{{1, 0}}));
  station_->Outputs().Set(2, {2, 3});
  Settle();
  workers_.RunAll();
  EXPECT_EQ(View().wish.hall.size(), 2U);
  EXPECT_EQ(fake.wish.hall.back(), (decks::HallPlace{2, 3}));
}

TEST_F(MicrophoneTest, TheKeyAndTheCheckLastAsLongAsTheyAreHeld) {
  StartUp();
  Station().TalkOver(true);
  EXPECT_TRUE(View().wish.talk_over && fake.wish.talk_over);
  Station().TalkOver(false);
  Station().Check(true);
  EXPECT_TRUE(View().wish.check && !fake.wish.talk_over);
  Station().Check(false);
  EXPECT_FALSE(View().wish.check);
  Station().LookForInputs();
  Settle();
  EXPECT_EQ(fake.looks, 1);
  const int before = fake.watches;
  station_->Tick();
  EXPECT_EQ(fake.watches, before + 1);
}

TEST_F(MicrophoneTest, SaysOnceThatItIsGoneAndOnceThatItIsBack) {
  StartUp();
  Station().Switch(true);
  Settle();
  fake.state.trouble = {Sentence::InputGone, {"Desk microphone"}};
  for (int i = 0; i < 5; ++i) Settle();
  const std::string gone = say_(Sentence::InputGone, {"Desk microphone"});
  EXPECT_EQ(TimesTold(gone), 1);
  EXPECT_EQ(View().trouble, gone);
  fake.state.trouble = {};
  EXPECT_EQ(View().trouble, "");
  Settle();
  EXPECT_EQ(TimesTold(say_(Sentence::InputBack, {"Desk microphone"})), 1);
  EXPECT_EQ(station_->View().notice, say_(Sentence::InputBack, {"Desk microphone"}));
}

TEST_F(MicrophoneTest, NamesOneThatIsNotThereAsItWasChosen) {
  StartUp();
  Station().Choose("lap");
  fake.state.trouble = {Sentence::InputMissing, {"lap"}};
  EXPECT_EQ(View().trouble, say_(Sentence::InputMissing, {"Built-in microphone"}));
}

TEST_F(MicrophoneTest, WithoutOneEveryCommandIsHarmless) {
  microphone_ = nullptr;
  StartUp();
  Station().Switch(true);
  Station().TalkOver(true);
  Station().LookForInputs();
  EXPECT_FALSE(View().there);
  EXPECT_TRUE(View().now.inputs->empty());
}

}  // namespace
}  // namespace app
