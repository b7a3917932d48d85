// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
// The effects of streams that play, stop, follow and are freed.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <utility>

#include "decks/testing/EffectsContract.h"
#include "engine/testing/SoundStage.h"
#include "support/testing/RealtimeGuard.h"

namespace decks::testing {
namespace {

struct RealEffects {
  RealEffects() { stage.files.Add("tone.mp3", engine::testing::ToneFile(44'100, 440)); }
  DeckEffects& Effects() { return stage.engine->Effects(); }
  StreamHandle Stream() {
    const StreamHandle stream = stage.Load("tone.mp3");
    stage.engine->BASS_ChannelPlay(stream, false);
    stage.Advance(std::chrono::milliseconds(100));
    return stream;
  }
  engine::testing::SoundStage stage;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Real, EveryDeckEffects, RealEffects);

}  // namespace
}  // namespace decks::testing

namespace engine::testing {
namespace {

using Settings = decks::EffectSettings;

Settings Echoing(float level = 0.5F, float seconds = 0.25F) {
  Settings settings;
  settings.echo = {.on = true, .level = level, .seconds = seconds};
  return settings;
}

/// A tone on a deck, in the hall and in head-phones of another output.
class DeckEffectsTest : public ::testing::Test {
 protected:
  DeckEffectsTest() {
    stage.outputs.SetBlocks({882, 137, 500, 1});
    stage.files.Add("tone.mp3", ToneFile(20 * kRate, 400, kLevel));
    stage.files.Add("silence.mp3", ToneFile(20 * kRate, 400, 0));
    stage.files.Add("short.mp3", ToneFile(kRate / 2 + 7, 400, kLevel));
    Play("tone.mp3");
  }
  void Play(const char* file) {
    main = stage.Load(file, 1);
    cue = stage.Load(file, 2);
    stage.engine->Follow(cue, main);
    stage.engine->BASS_ChannelPlay(main, false);
    stage.engine->BASS_ChannelPlay(cue, false);
    stage.Advance(500ms);
  }
  void Set(const Settings& settings) {
    stage.engine->Effects().SetEffects(1, main, settings);
    stage.Advance(600ms);
  }
  void Free() {
    for (const auto stream : {main, cue}) stage.engine->BASS_StreamFree(stream);
  }
  void Remove(int type) { stage.engine->BASS_FX_DSP_Remove(main, type); }
  /// The loudest of the newest stretch.
  float Peak(const char* output = "main", support::Duration newest = 100ms) {
    const auto heard = stage.Channel(output, 0);
    const auto frames = static_cast<std::ptrdiff_t>(std::chrono::duration<double>(newest).count() * kRate);
    return *std::max_element(heard.end() - frames, heard.end());
  }
  float RoughnessSince(std::size_t begin) {
    auto heard = stage.Channel("main", 0);
    heard.erase(heard.begin(), heard.begin() + static_cast<std::ptrdiff_t>(begin));
    return Roughness(heard);
  }
  static constexpr double kLevel = 0.2;
  SoundStage stage;
  decks::StreamHandle main = 0, cue = 0;
};

TEST_F(DeckEffectsTest, UntouchedTheyChangeNoBit) {
  SoundStage plain;
  plain.outputs.SetBlocks({882, 137, 500, 1});
  plain.files.Add("tone.mp3", ToneFile(20 * kRate, 400, kLevel));
  plain.engine->BASS_ChannelPlay(plain.Load("tone.mp3", 1), false);
  plain.Advance(2s);
  Settings idle;
  idle.echo = {.on = false, .level = 0.9F, .seconds = 1};
  Set(idle);
  stage.Advance(900ms);
  EXPECT_EQ(stage.Given("main"), plain.Given("main"));
}

TEST_F(DeckEffectsTest, HeadphonesThatFollowHearThem) {
  Settings closed;
  closed.filter.position = -1;
  Set(closed);
  EXPECT_LT(Peak("main"), 0.03F);
  EXPECT_LT(Peak("phones"), 0.03F);
  const auto other = stage.Load("tone.mp3", 2);
  stage.engine->BASS_StreamFree(cue);
  stage.engine->Follow(other, main);
  stage.engine->BASS_ChannelPlay(other, false);
  stage.Advance(500ms);
  EXPECT_LT(Peak("phones"), 0.03F) << "one that comes later";
}

TEST_F(DeckEffectsTest, AnEchoRingsOutAfterAPauseAStopAndTheEnd) {
  const char* how[] = {"pause", "free", "end"};
  for (int one = 0; one < 3; ++one) {
    SCOPED_TRACE(how[one]);
    if (one == 2) {
      main = stage.Load("short.mp3", 1);
      stage.engine->Effects().SetEffects(1, main, Echoing());
      stage.engine->BASS_ChannelPlay(main, false);
      stage.Advance(600ms);
    } else {
      Set(Echoing());
    }
    if (one == 0) stage.engine->BASS_ChannelPause(main);
    if (one == 1) Free();
    const auto begin = stage.Channel("main", 0).size();
    stage.Advance(400ms);
    EXPECT_GT(Peak(), 0.02F) << "the second repeat";
    EXPECT_LT(RoughnessSince(begin), 3 * ToneRoughness(400, kLevel));
    stage.Advance(10s);
    EXPECT_EQ(Peak(), 0) << "it ends";
    if (one == 0) Free();
    if (one == 0) Play("tone.mp3");
  }
}

TEST_F(DeckEffectsTest, ATailIsHeardUnderTheNextTrackAtTheFaderOfItsDeck) {
  Set(Echoing(0.9F));
  Free();
  Play("silence.mp3");
  stage.engine->Effects().SetEffects(1, main, Echoing(0.9F));
  EXPECT_GT(Peak(), 0.05F);
  stage.engine->BASS_ChannelSetAttributes(main, -1, 0, -101);
  stage.Advance(300ms);
  EXPECT_EQ(Peak(), 0) << "whose fader closes it";
}

TEST_F(DeckEffectsTest, ATailTakesTheVolumesOfTheNextTrackHoweverEarlyTheyWereSet) {
  Set(Echoing(0.9F));
  Free();
  main = stage.Load("silence.mp3", 1);
  cue = stage.Load("silence.mp3", 2);
  stage.engine->Follow(cue, main);
  for (const auto stream : {main, cue}) stage.engine->BASS_ChannelSetAttributes(stream, -1, 0, -101);
  Set(Echoing(0.9F));
  EXPECT_EQ(Peak("main"), 0) << "at the fader";
  EXPECT_EQ(Peak("phones"), 0) << "at the cue level";
}

TEST_F(DeckEffectsTest, ADeckThatIsEmptiedIsSilentInTheHallAndInTheHeadphones) {
  Set(Echoing(0.9F));
  Free();
  stage.engine->Effects().Silence(2);
  stage.Advance(200ms);
  EXPECT_GT(Peak("phones"), 0.05F) << "another deck's";
  stage.engine->Effects().Silence(1);
  stage.Advance(300ms);
  EXPECT_EQ(Peak("main"), 0);
  EXPECT_EQ(Peak("phones"), 0);
}

TEST_F(DeckEffectsTest, ATailIsLeftByTrackAfterTrackThatWasNeverHeard) {
  Set(Echoing(0.9F));
  Free();
  for (int load = 0; load < 3; ++load) {
    main = stage.Load("tone.mp3", 1);
    cue = stage.Load("tone.mp3", 2);
    stage.engine->Follow(cue, main);
    stage.engine->Effects().SetEffects(1, main, Echoing(0.9F));
    stage.Advance(100ms);
    Free();
  }
  stage.Advance(300ms);
  EXPECT_GT(Peak("main", 300ms), 0.05F);
  EXPECT_GT(Peak("phones", 300ms), 0.05F);
}

TEST_F(DeckEffectsTest, ADeckKeepsOneTailSoThatQuickLoadsNeverRunOutOfPlaces) {
  for (int load = 0; load < 40; ++load) {
    Set(Echoing(0.9F, 1));
    Free();
    main = stage.Load("tone.mp3", 1);
    cue = stage.Load("tone.mp3", 2);
    ASSERT_NE(main, 0U) << load;
    ASSERT_NE(cue, 0U) << load;
    stage.engine->Follow(cue, main);
    stage.engine->BASS_ChannelPlay(main, false);
    stage.Advance(100ms);
  }
}

TEST_F(DeckEffectsTest, AnEchoThatHardlyLosesAnythingEndsAllTheSame) {
  Set(Echoing(1, 4));
  stage.Advance(4s);
  Free();
  stage.Advance(18s);
  EXPECT_GT(Peak("main", 4s), 0.05F);
  Play("silence.mp3");
  stage.engine->Effects().SetEffects(1, main, Echoing(1, 4));
  for (int move = 0; move < 40; ++move) {  // a hand on the fader does not bring it back
    stage.engine->BASS_ChannelSetAttributes(main, -1, 60 + move, -101);
    stage.Advance(200ms);
  }
  EXPECT_EQ(Peak("main", 1s), 0);
}

TEST_F(DeckEffectsTest, ASeekTakesNothingFromWhatEchoes) {
  FakeFile half = ToneFile(20 * kRate, 400, kLevel);
  half.sample = [tone = half.sample](std::int64_t frame, int channel) {
    return frame < 10 * kRate ? tone(frame, channel) : std::int16_t{0};
  };
  stage.files.Add("half.mp3", half);
  Free();
  Play("half.mp3");
  Set(Echoing(0.9F));
  const auto begin = stage.Channel("main", 0).size();
  stage.engine->BASS_ChannelSetPosition(main, {12 * kRate * 4});
  stage.Advance(400ms);
  EXPECT_GT(Peak(), 0.1F) << "under silence";
  EXPECT_LT(RoughnessSince(begin), 10 * ToneRoughness(400, kLevel));
}

TEST_F(DeckEffectsTest, EveryNumberOfTheSevenClosesItsEffectAndLetsItRing) {
  Settings all = Echoing();
  all.low_pass = {.on = true, .hertz = 3000};
  all.flanger.on = all.echo3.on = all.reverb.on = all.rotate.on = all.swap = true;
  Set(all);
  const std::pair<int, std::function<void(Settings&)>> kNumbers[] = {
      {0, [](Settings& s) { s.swap = s.rotate.on = false; }},
      {1, [](Settings& s) { s.echo.on = false; }},
      {2, [](Settings& s) { s.flanger.on = false; }},
      {3, [](Settings& s) { s.low_pass.on = false; }},
      {4, [](Settings& s) { s.reverb.on = false; }},
      {5, [](Settings&) {}},  // the bands, which are none of these
      {7, [](Settings& s) { s.echo3.on = false; }}};
  for (const auto& [type, off] : kNumbers) {
    Set(all);
    Remove(type);
    Settings left = all;
    off(left);
    EXPECT_EQ(stage.engine->Effects().Effects(main), left) << type;
  }
  for (const auto& [type, off] : kNumbers) Remove(type);
  EXPECT_FALSE(decks::AnyOn(stage.engine->Effects().Effects(main)));
  stage.engine->BASS_ChannelPause(main);
  stage.Advance(300ms);
  EXPECT_GT(Peak(), 0.01F);
}

TEST_F(DeckEffectsTest, TheEqualiserSwitchTakesTheBandsOutAndBringsThemBack) {
  stage.engine->BASS_FX_DSP_Set(main, decks::kPeakingEffect, 0);
  stage.engine->BASS_FX_DSP_SetParameters(main, decks::kPeakingEffect, {0, kRate, 2.5F, 0, 400, 6});
  Set({});
  EXPECT_NEAR(Peak(), kLevel * 1.995, 0.005);
  Settings off;
  off.equaliser = false;
  Set(off);
  EXPECT_NEAR(Peak(), kLevel, 0.002);
  EXPECT_NEAR(Peak("phones"), kLevel, 0.002);
  Set({});
  EXPECT_NEAR(Peak(), kLevel * 1.995, 0.005);
}

TEST_F(DeckEffectsTest, GarbageIsHeardAsSoundAndTheCallbackTakesNoMemoryAndNoLock) {
  // The guard counts nothing under a sanitizer; the sound is looked at all the same.
  ASSERT_TRUE(support::testing::RealtimeGuardWorks() || !DJ_REALTIME_GUARD);
  constexpr float kNone = std::numeric_limits<float>::quiet_NaN();
  Settings garbage = Echoing(kNone, kNone);
  garbage.filter = {kNone, kNone};
  garbage.low_pass = {true, kNone, kNone};
  garbage.flanger = {true, kNone, kNone};
  garbage.echo3 = {true, kNone, kNone, kNone};
  garbage.reverb = {true, kNone, kNone};
  garbage.rotate = {true, kNone, kNone};
  garbage.swap = true;
  const long faults = support::testing::CountRealtimeFaults([&] {
    Set(garbage);
    Set({});
    Free();
    stage.Advance(1s);
  });
  EXPECT_EQ(faults, 0);
  EXPECT_EQ(stage.engine->Health().bad_samples, 0U);
  const auto heard = stage.Channel("main", 0);
  EXPECT_TRUE(std::all_of(heard.begin(), heard.end(), [](float s) { return std::abs(s) <= 1; }));
}

}  // namespace
}  // namespace engine::testing
