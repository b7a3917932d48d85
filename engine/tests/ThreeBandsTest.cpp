// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/ThreeBands.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>

#include "engine/testing/SoundStage.h"

namespace engine::testing {
namespace {

using Gains = ThreeBands::Gains;

constexpr Gains kFlat{};
constexpr Gains kNothing{0, 0, 0};

/// A tone through the three bands, in dB of what went in, once it is settled.
double ResponseAt(ThreeBands& bands, double hertz, int rate) {
  std::vector<float> stereo(static_cast<std::size_t>(2 * rate));
  for (std::size_t i = 0; i < stereo.size(); ++i) {
    const double phase = 2 * std::numbers::pi * hertz * static_cast<double>(i / 2) / rate;
    stereo[i] = static_cast<float>(0.5 * std::sin(phase));
  }
  bands.Process(stereo);
  double sum = 0;
  for (std::size_t i = stereo.size() / 2; i < stereo.size(); ++i) {
    sum += static_cast<double>(stereo[i]) * static_cast<double>(stereo[i]);
  }
  return 10 * std::log10(sum / (static_cast<double>(stereo.size()) / 2) / 0.125 + 1e-12);
}

double Response(const Gains& gains, double hertz, int rate = 44100) {
  ThreeBands bands(rate);
  bands.Set(gains);
  return ResponseAt(bands, hertz, rate);
}

TEST(ThreeBandsTest, AKilledBandIsGoneAndTheOthersStayAsTheyWere) {
  struct Case {
    Gains gains;
    std::vector<double> gone, kept;
  };
  for (const Case& one : {Case{{0, 1, 1}, {30, 60, 125}, {500, 1000, 5000, 15'000}},
                          Case{{1, 0, 1}, {500, 800, 1250}, {40, 100, 6000, 12'000}},
                          Case{{1, 1, 0}, {5000, 8000, 16'000}, {60, 250, 1000}}}) {
    for (const double hertz : one.gone) EXPECT_LT(Response(one.gains, hertz), -45) << hertz;
    for (const double hertz : one.kept) EXPECT_NEAR(Response(one.gains, hertz), 0, 0.1) << hertz;
  }
  for (const double hertz : {60, 250, 1000, 2500, 9000}) EXPECT_LT(Response(kNothing, hertz), -110) << hertz;
}

TEST(ThreeBandsTest, AGainIsExactInTheMiddleOfItsBandAtEveryRate) {
  for (const int rate : {44'100, 48'000, 96'000}) {
    SCOPED_TRACE(rate);
    for (const float gain : {4.0F, 0.25F}) {
      const double wanted = 20 * std::log10(static_cast<double>(gain));
      EXPECT_NEAR(Response({gain, 1, 1}, 60, rate), wanted, 0.1);
      EXPECT_NEAR(Response({1, gain, 1}, 790, rate), wanted, 0.1);
      EXPECT_NEAR(Response({1, 1, gain}, 10'000, rate), wanted, 0.1);
    }
  }
}

TEST(ThreeBandsTest, BackInTheMiddleItIsFlatAtTheEdgesToo) {
  ThreeBands bands(44'100);
  bands.Set({0, 2, 1});
  std::vector<float> some(20'000);
  bands.Process(some);
  bands.Set(kFlat);
  for (const double hertz : {30, 125, 177, 250, 354, 790, 1768, 2500, 3536, 10'000, 19'000}) {
    EXPECT_NEAR(ResponseAt(bands, hertz, 44'100), 0, 0.02) << hertz;
  }
}

TEST(ThreeBandsTest, UntouchedAndAfterTheNextStartItPassesBitForBit) {
  std::vector<float> sound(4000);
  for (std::size_t i = 0; i < sound.size(); ++i) sound[i] = static_cast<float>(i % 97) / 97 - 0.5F;
  ThreeBands bands(44'100);
  auto out = sound;
  bands.Process(out);
  EXPECT_EQ(out, sound);
  bands.Set({0, 1, 1});
  bands.Process(out);
  EXPECT_NE(out, sound);
  bands.Set(kFlat);
  bands.Reset();
  out = sound;
  bands.Process(out);
  EXPECT_EQ(out, sound);
}

/// A tone on the main output of an evening, its copy in the head-phones.
class ToneOfAStream : public ::testing::Test {
 protected:
  void Play(double hertz) {
    stage.outputs.SetBlocks({882, 137, 500, 1});
    name = std::to_string(hertz) + ".mp3";
    stage.files.Add(name, ToneFile(20 * kRate, hertz, kLevel));
    main = stage.Load(name, 1);
    cue = stage.Load(name, 2);
    stage.engine->Follow(cue, main);
    stage.engine->BASS_ChannelPlay(main, false);
    stage.engine->BASS_ChannelPlay(cue, false);
    stage.Advance(500ms);
  }
  void Set(const decks::Tone& tone) {
    stage.engine->Desk().SetTone(main, tone);
    stage.Advance(300ms);
  }
  /// The largest of the newest 100 ms.
  float Peak(const char* output) {
    const auto heard = stage.Channel(output, 0);
    return *std::max_element(heard.end() - 4410, heard.end());
  }
  static constexpr double kLevel = 0.2;
  SoundStage stage;
  std::string name;
  decks::StreamHandle main = 0, cue = 0;
};

TEST_F(ToneOfAStream, NothingClicksWhenItIsMovedBackAndForth) {
  for (const double hertz : {60.0, 250.0, 1000.0}) {
    SCOPED_TRACE(hertz);
    Play(hertz);
    const auto before = stage.Channel("main", 0).size();
    for (const float db : {-200.0F, 0.0F, 12.0F, -6.0F, -60.0F, 0.0F}) {
      Set({{db}, {0}, {0}});
      Set({{db}, {db}, {0}});
      Set({{0}, {db}, {db}});
    }
    auto heard = stage.Channel("main", 0);
    heard.erase(heard.begin(), heard.begin() + static_cast<std::ptrdiff_t>(before));
    // Four times as loud at most, and a glide of 10 ms bends 0.8 a mere 0.8 / 441 / frame.
    EXPECT_LT(Roughness(heard), 4 * ToneRoughness(hertz, kLevel) + 0.002F);
    stage.engine->BASS_StreamFree(main);
    stage.engine->BASS_StreamFree(cue);
    stage.Advance(100ms);
  }
}

TEST_F(ToneOfAStream, HeadphonesThatFollowSoundAsTheHallDoes) {
  Play(60);
  Set({decks::kKilled, {0}, {0}});
  EXPECT_LT(Peak("main"), 0.002F);
  EXPECT_LT(Peak("phones"), 0.002F);
  Set({{6}, {0}, {0}});
  EXPECT_NEAR(Peak("phones"), kLevel * 1.995, 0.005);
  const auto other = stage.Load(name, 2);
  stage.engine->BASS_StreamFree(cue);
  stage.engine->Follow(other, main);
  stage.engine->BASS_ChannelPlay(other, false);
  stage.Advance(500ms);
  EXPECT_NEAR(Peak("phones"), kLevel * 1.995, 0.005) << "one that comes later";
}

TEST_F(ToneOfAStream, HeadphonesThatFollowHearTheTenBandsToo) {
  Play(1000);
  for (int band = 0; band < 10; ++band) stage.engine->BASS_FX_DSP_Set(main, decks::kPeakingEffect, 0);
  stage.engine->BASS_FX_DSP_SetParameters(main, decks::kPeakingEffect, {4, kRate, 2.5F, 0, 1000, 6});
  stage.Advance(300ms);
  EXPECT_NEAR(Peak("main"), kLevel * 1.995, 0.005);
  EXPECT_NEAR(Peak("phones"), kLevel * 1.995, 0.005);
  stage.engine->BASS_FX_DSP_Remove(main, decks::kPeakingEffect);
  stage.Advance(300ms);
  EXPECT_NEAR(Peak("phones"), kLevel, 0.002);
}

TEST_F(ToneOfAStream, WhatIsNoNumberOrNoStreamChangesNothing) {
  Play(1000);
  const float none = std::numeric_limits<float>::quiet_NaN();
  Set({{none}, {none}, {none}});
  EXPECT_NEAR(Peak("main"), kLevel, 0.002);
  Set({{0}, {90}, {0}});
  EXPECT_NEAR(Peak("main"), kLevel * 3.98, 0.01) << "twelve at most";
  stage.engine->Desk().SetTone(777, {});
  stage.engine->Desk().SetTone(0, {});
}

}  // namespace
}  // namespace engine::testing
