// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
// A deck's effects in the DJ's hand, in the store, and locked to the beat.

#include <cmath>
#include <limits>
#include <map>

#include "app/EffectStation.h"
#include "app/tests/Evening.h"
#include "support/SettingsVocabulary.h"

namespace app::testing {
namespace {

using namespace std::chrono_literals;
using decks::EffectKind;
using decks::EffectSettings;

class EffectsTest : public Evening {
 protected:
  EffectStation& Rack() { return station_->Effects(); }
  /// As the engine was told for the newest stream of a deck.
  [[nodiscard]] EffectSettings Heard(int deck = 1) {
    Settle();
    decks::StreamHandle newest = 0;
    for (const auto& [stream, of] : effects_.decks) newest = of == deck ? stream : newest;
    return effects_.Effects(newest);
  }
};

TEST_F(EffectsTest, WhatIsTurnedAndSwitchedIsHeardStoredAndHoldsForTheNextFile) {
  StartUp();
  Load(1, "a.mp3");
  Rack().Switch(1, EffectKind::Echo, true);
  Rack().Turn(1, EffectControl::EchoLevel, 60);
  Rack().Turn(1, EffectControl::EchoDelay, 100);
  Rack().Turn(1, EffectControl::Filter, 0);
  EXPECT_EQ(Heard().echo, (EffectSettings::Echo{true, 0.6F, 2}));
  EXPECT_EQ(Heard().filter.position, -1);
  EXPECT_EQ(Stored("Player1", "Echo"), "True");
  EXPECT_EQ(Stored("Player1", "EchoLevel"), "60");
  EXPECT_EQ(Stored("Player1", "Filter"), "0");
  EXPECT_TRUE(Deck(1).effects.on[PlaceOf(EffectKind::Echo)]);
  EXPECT_EQ(Deck(1).effects.sliders[PlaceOf(EffectControl::EchoLevel)], 60);
  const auto before = effects_.decks.size();
  Load(1, "b.mp3");
  EXPECT_GT(effects_.decks.size(), before) << "another stream";
  EXPECT_EQ(Heard().echo, (EffectSettings::Echo{true, 0.6F, 2}));
  Load(2, "b.mp3");
  EXPECT_FALSE(decks::AnyOn(Heard(2))) << "each deck has its own";
}

TEST_F(EffectsTest, ADeckThatIsEmptiedRingsNoLonger) {
  StartUp();
  Load(1, "a.mp3");
  Settle();
  EXPECT_TRUE(effects_.silenced.empty());
  engine_.RemoveFile("b.mp3");
  Load(1, "b.mp3");
  Settle();
  EXPECT_EQ(effects_.silenced, std::vector<int>{1});
}

TEST_F(EffectsTest, APadHoldsAnEffectOnWithoutStoringIt) {
  StartUp();
  Load(2, "a.mp3");
  Rack().Hold(2, EffectKind::Reverb, true);
  EXPECT_TRUE(Heard(2).reverb.on);
  EXPECT_TRUE(Deck(2).effects_held[PlaceOf(EffectKind::Reverb)]);
  EXPECT_FALSE(Deck(2).effects.on[PlaceOf(EffectKind::Reverb)]);
  EXPECT_EQ(Stored("Player2", "Reverb"), "(none)");
  Rack().Hold(2, EffectKind::Reverb, false);
  EXPECT_FALSE(Heard(2).reverb.on);
  Rack().Switch(2, EffectKind::Swap, true);
  Rack().Hold(2, EffectKind::Swap, true);
  Rack().Hold(2, EffectKind::Swap, false);
  EXPECT_TRUE(Heard(2).swap) << "what is on stays on";
}

TEST_F(EffectsTest, TheStoreComesBackAndGarbageInItClampsOrRests) {
  const std::map<std::string, std::string> stored = {
      {"Reverb", "True"},     {"ReverbLevel", "80"},  {"ReverbDelay", "NaN"},      {"EchoLevel", "-7"},
      {"EchoDelay", "1e400"}, {"LowPassCut", "loud"}, {"LowPassResonance", "250"}, {"FlangerSpeed", ""},
      {"Swap", "1"},          {"Rotate", "maybe"},    {"EchoBeats", "7"},          {"FlangerBeats", "inf"},
      {"Equalizer", "False"}, {"Echo3DryMix", "-inf"}};
  for (const auto& [key, value] : stored) Store("Player1", key, value);
  StartUp();
  Load(1, "a.mp3");
  const EffectChoices rest;
  const EffectChoices& chosen = Deck(1).effects;
  const auto slider = [&chosen](EffectControl control) { return chosen.sliders[PlaceOf(control)]; };
  const auto resting = [&rest](EffectControl control) { return rest.sliders[PlaceOf(control)]; };
  EXPECT_EQ(slider(EffectControl::ReverbLevel), 80);
  EXPECT_EQ(slider(EffectControl::ReverbDelay), resting(EffectControl::ReverbDelay));
  EXPECT_EQ(slider(EffectControl::EchoLevel), 0);
  EXPECT_EQ(slider(EffectControl::LowPassCut), resting(EffectControl::LowPassCut));
  EXPECT_EQ(slider(EffectControl::LowPassResonance), 100);
  EXPECT_EQ(slider(EffectControl::FlangerSpeed), resting(EffectControl::FlangerSpeed));
  EXPECT_EQ(chosen.quarters, rest.quarters);
  const EffectSettings heard = Heard();
  EXPECT_TRUE(heard.reverb.on);
  EXPECT_TRUE(heard.swap);
  EXPECT_FALSE(heard.rotate.on);
  EXPECT_FALSE(heard.equaliser);
  EXPECT_EQ(heard, decks::InRange(heard));
}

TEST_F(EffectsTest, TheVocabularyRestsWhereTheTableDoes) {
  support::Settings settings(settings_, support::ProgramFolder(folder_));
  const EffectChoices rest;
  for (const char* deck : {"Player1", "Player2"}) {
    for (const EffectKnob& knob : EffectKnobs()) {
      EXPECT_EQ(settings.Number(deck, knob.key), knob.rest) << knob.key;
    }
    for (std::size_t i = 0; i < rest.on.size(); ++i) {
      const EffectKeys keys = KeysOf(static_cast<EffectKind>(i));
      if (!keys.on.empty()) {
        EXPECT_EQ(settings.Flag(deck, keys.on), rest.on[i]) << keys.on;
      }
      if (!keys.beats.empty()) {
        EXPECT_EQ(settings.Number(deck, keys.beats), 0) << keys.beats;
      }
    }
  }
  // What it rests at is what the effect is by default, as near as a slider comes to it.
  const EffectSettings rests = SettingsOf(rest, 0), none;
  EXPECT_NEAR(rests.echo.seconds, none.echo.seconds, 0.01F);
  EXPECT_NEAR(rests.reverb.seconds, none.reverb.seconds, 0.05F);
  EXPECT_NEAR(rests.low_pass.q, none.low_pass.q, 0.01F);
  EXPECT_NEAR(rests.flanger.hertz, none.flanger.hertz, 0.01F);
  EXPECT_NEAR(rests.rotate.hertz, none.rotate.hertz, 0.01F);
  EXPECT_EQ(rests.low_pass.hertz, none.low_pass.hertz);
}

TEST_F(EffectsTest, ALockedEchoFollowsTheTempoThatIsHeard) {
  StartUp();
  Load(1, "a.mp3");  // of 120.5 beats a minute
  Play(1);
  Rack().LockToBeat(1, EffectKind::Echo, 2);
  Rack().LockToBeat(1, EffectKind::Flanger, 16);
  EXPECT_EQ(Stored("Player1", "EchoBeats"), "2");
  const double beat = 60 / 120.5;
  EXPECT_NEAR(Heard().echo.seconds, beat / 2, 1e-4);
  EXPECT_NEAR(Heard().flanger.hertz, 1 / (4 * beat), 1e-4);
  station_->Decks()[1].SetTempo(8);
  Settle();
  Advance(500ms);
  EXPECT_NEAR(Heard().echo.seconds, beat / 2 / 1.08, 1e-3);
  Rack().LockToBeat(1, EffectKind::Echo, 0);
  EXPECT_NEAR(Heard().echo.seconds, 0.367, 0.001) << "as its knob says again";
  Rack().LockToBeat(1, EffectKind::Echo, 5);
  EXPECT_NEAR(Heard().echo.seconds, 0.367, 0.001) << "no such length";
}

TEST(EffectTableTest, ALockedTimeIsHalvedWhereTheLineIsTooShortAndIsFreeWithoutATempo) {
  EffectChoices choices;
  choices.quarters[PlaceOf(EffectKind::Echo)] = 16;
  choices.quarters[PlaceOf(EffectKind::Rotate)] = 1;
  EXPECT_NEAR(SettingsOf(choices, 120).echo.seconds, 2, 1e-6);
  EXPECT_NEAR(SettingsOf(choices, 120).rotate.hertz, 8, 1e-6);
  EXPECT_NEAR(SettingsOf(choices, 40).echo.seconds, 3, 1e-6);
  for (const double none : {0.0, -3.0, std::numeric_limits<double>::quiet_NaN(), 0.001}) {
    EXPECT_NEAR(SettingsOf(choices, none).echo.seconds, 0.367, 0.001) << none;
  }
}

}  // namespace
}  // namespace app::testing
