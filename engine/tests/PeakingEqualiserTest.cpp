// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/PeakingEqualiser.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>

#include "engine/testing/SoundStage.h"

namespace engine::testing {
namespace {

constexpr std::array kCentres{80.0F,   170.0F,  310.0F,   600.0F,   1000.0F,
                              3000.0F, 6000.0F, 12000.0F, 14000.0F, 16000.0F};

decks::PeakingBand Band(int band, float gain, int rate = kRate) {
  return {band, rate, 2.5F, 0, kCentres[static_cast<std::size_t>(band)], gain};
}

/// A file that plays on an output of the virtual evening, with ten bands at 0 dB.
class PeakingEqualiserTest : public ::testing::Test {
 protected:
  void Play(double hertz, double level = 0.1, int seconds = 8) {
    stage_.outputs.SetBlocks({882, 137, 500, 1});
    const std::string name = std::to_string(hertz) + ".mp3";
    stage_.files.Add(name, ToneFile(seconds * kRate, hertz, level));
    stream_ = stage_.Load(name);
    for (int band = 0; band < 10; ++band) stage_.engine->BASS_FX_DSP_Set(stream_, 5, 0);
    for (int band = 0; band < 10; ++band) Set(Band(band, 0));
    stage_.engine->BASS_ChannelPlay(stream_, false);
    stage_.Advance(500ms);
  }
  bool Set(const decks::PeakingBand& band) {
    return stage_.engine->BASS_FX_DSP_SetParameters(stream_, 5, band);
  }
  /// Root mean square of the newest 400 ms of the left channel.
  double Loudness() {
    stage_.Advance(600ms);
    const auto heard = stage_.Channel("main", 0);
    double sum = 0;
    for (std::size_t i = heard.size() - 17'640; i < heard.size(); ++i) {
      sum += static_cast<double>(heard[i]) * static_cast<double>(heard[i]);
    }
    return std::sqrt(sum / 17'640);
  }

  SoundStage stage_;
  decks::StreamHandle stream_ = 0;
};

TEST_F(PeakingEqualiserTest, ASingleSliderGivesItsGainAtItsCentre) {
  for (int band = 0; band < 10; ++band) {
    SCOPED_TRACE(band);
    Play(static_cast<double>(kCentres[static_cast<std::size_t>(band)]));
    const double flat = Loudness();
    for (const float gain : {12.0F, -12.0F, 0.0F}) {
      ASSERT_TRUE(Set(Band(band, gain)));
      EXPECT_NEAR(20 * std::log10(Loudness() / flat), static_cast<double>(gain), 0.05);
    }
    stage_.engine->BASS_StreamFree(stream_);
    stage_.Advance(100ms);
  }
}

TEST_F(PeakingEqualiserTest, TenBandsAtZeroPassEverySampleBitForBit) {
  stage_.files.Add("ramp.mp3", RampFile(2 * kRate));
  const auto plain = stage_.Load("ramp.mp3", 1);
  const auto flat = stage_.Load("ramp.mp3", 2);
  stage_.engine->BASS_ChannelPlay(plain, false);
  stream_ = flat;
  for (int band = 0; band < 10; ++band) stage_.engine->BASS_FX_DSP_Set(flat, 5, 0);
  for (int band = 0; band < 10; ++band) Set(Band(band, 0));
  stage_.engine->BASS_ChannelPlay(flat, false);
  stage_.Advance(1s);
  auto without = stage_.Channel("main", 0), with = stage_.Channel("phones", 0);
  without.erase(without.begin(), without.begin() + static_cast<std::ptrdiff_t>(FirstSound(without)));
  with.erase(with.begin(), with.begin() + static_cast<std::ptrdiff_t>(FirstSound(with)));
  ASSERT_GT(with.size(), 30'000U);
  without.resize(30'000);
  with.resize(30'000);
  EXPECT_EQ(with, without);
}

TEST_F(PeakingEqualiserTest, ABandBackAtZeroIsBitExactAgain) {
  PeakingEqualiser equaliser(kRate);
  equaliser.AddBand();
  std::vector<float> sound(2 * 100);
  float phase = 0;
  const auto next = [&] {
    for (float& sample : sound) sample = 0.3F * std::sin(phase += 0.01F);
    const auto before = sound;
    equaliser.Process(sound);
    return before == sound;
  };
  EXPECT_TRUE(next());
  equaliser.Set(Band(0, 12));
  EXPECT_FALSE(next());
  equaliser.Set(Band(0, 0));
  for (int i = 0; i < 40; ++i) next();
  EXPECT_TRUE(next());
}

TEST_F(PeakingEqualiserTest, AChangeActsWithinTheNextBlocks) {
  Play(1000);
  const double flat = Loudness();
  Set(Band(4, 12));
  stage_.Advance(60ms);  // a block and the glide
  const auto heard = stage_.Channel("main", 0);
  const float peak = *std::max_element(heard.end() - 100, heard.end());
  EXPECT_NEAR(20 * std::log10(static_cast<double>(peak) / (flat * std::numbers::sqrt2)), 12, 0.5);
}

TEST_F(PeakingEqualiserTest, ASliderDrawnAcrossItsRangeIsSmooth) {
  Play(80, 0.1);
  for (int gain = -12; gain <= 12; ++gain) {
    Set(Band(0, static_cast<float>(gain)));
    stage_.Advance(20ms);
  }
  EXPECT_LT(Roughness(stage_.Channel("main", 0)), 2 * ToneRoughness(80, 0.4));
}

/// Without the glide the largest step is ten times that.
TEST_F(PeakingEqualiserTest, TenSlidersThrownToAndFroMakeNoStep) {
  Play(40, 0.1);
  for (int move = 0; move < 100; ++move) {
    for (int band = 0; band < 10; ++band) Set(Band(band, move % 2 == 0 ? 3.0F : -12.0F));
    stage_.Advance(std::chrono::milliseconds(1 + move % 9));
  }
  stage_.engine->BASS_FX_DSP_Remove(stream_, 5);
  stage_.Advance(100ms);
  const auto heard = stage_.Channel("main", 0);
  EXPECT_LT(Roughness(heard), 0.006F);
}

TEST_F(PeakingEqualiserTest, StartsPausesAndSeeksStaySmoothWithBandsUp) {
  Play(100, 0.1);
  for (int band = 0; band < 10; ++band) Set(Band(band, 6));
  stage_.Advance(200ms);
  for (int i = 0; i < 4; ++i) {
    stage_.engine->BASS_ChannelPause(stream_);
    stage_.Advance(53ms);
    stage_.engine->BASS_ChannelPlay(stream_, false);
    stage_.Advance(87ms);
    stage_.engine->BASS_ChannelSetPosition(stream_, {i * 100'000});
    stage_.Advance(100ms);
  }
  EXPECT_LT(Roughness(stage_.Channel("main", 0)), 0.004F);
}

TEST_F(PeakingEqualiserTest, OnlyTypeFiveTakesTheBandsOff) {
  Play(1000);
  const double flat = Loudness();
  Set(Band(4, 12));
  for (const int type : {3, 2, 1, 0, 7, 4}) stage_.engine->BASS_FX_DSP_Remove(stream_, type);
  EXPECT_GT(Loudness(), 3 * flat);
  stage_.engine->BASS_FX_DSP_Remove(stream_, 5);
  EXPECT_NEAR(Loudness(), flat, flat * 1e-3);
  EXPECT_FALSE(Set(Band(4, 12)));
}

TEST_F(PeakingEqualiserTest, AttributesAreThoseOfTheStream) {
  stage_.files.Add("low.mp3", ToneFile(kRate, 100, 0.1, 22050));
  const auto stream = stage_.Load("low.mp3");
  int frequency = 0, volume = 0, pan = 9;
  ASSERT_TRUE(stage_.engine->BASS_ChannelGetAttributes(stream, frequency, volume, pan));
  EXPECT_EQ(std::tuple(frequency, volume, pan), std::tuple(22050, 100, 0));
  stage_.engine->BASS_ChannelSetAttributes(stream, 24000, 40, -50);
  stage_.engine->BASS_ChannelGetAttributes(stream, frequency, volume, pan);
  EXPECT_EQ(std::tuple(frequency, volume, pan), std::tuple(24000, 40, -50));
  EXPECT_FALSE(stage_.engine->BASS_ChannelGetAttributes(0, frequency, volume, pan));
}

TEST_F(PeakingEqualiserTest, AStreamHasTheBandsThatWereMade) {
  stage_.files.Add("a.mp3", ToneFile(kRate, 100));
  stream_ = stage_.Load("a.mp3");
  EXPECT_FALSE(Set(Band(0, 1)));
  EXPECT_FALSE(stage_.engine->BASS_FX_DSP_Set(stream_, 4, 0));
  for (int band = 0; band < 10; ++band) EXPECT_TRUE(stage_.engine->BASS_FX_DSP_Set(stream_, 5, 0));
  EXPECT_FALSE(stage_.engine->BASS_FX_DSP_Set(stream_, 5, 0));
  EXPECT_FALSE(stage_.engine->BASS_FX_DSP_Set(0, 5, 0));
  EXPECT_TRUE(Set(Band(9, -3)));
  decks::PeakingBand read{.band = 9};
  EXPECT_TRUE(stage_.engine->BASS_FX_DSP_GetParameters(stream_, 5, read));
  EXPECT_EQ(std::tuple(read.frequency, read.centre, read.gain), std::tuple(kRate, 16000.0F, -3.0F));
  for (const int none : {-1, 10}) {
    read.band = none;
    EXPECT_FALSE(stage_.engine->BASS_FX_DSP_GetParameters(stream_, 5, read));
    EXPECT_FALSE(stage_.engine->BASS_FX_DSP_SetParameters(stream_, 5, read));
  }
}

TEST(PeakingFilter, IsFlatForEveryBandThatCannotBe) {
  EXPECT_FALSE(PeakingFilter(Band(8, 6), 44100).IsFlat());
  EXPECT_TRUE(PeakingFilter(Band(8, 6), 22050).IsFlat()) << "above half the output's rate";
  EXPECT_TRUE(PeakingFilter(Band(8, 6, 22050), 44100).IsFlat()) << "above half the file's rate";
  EXPECT_TRUE(PeakingFilter({0, kRate, 0, 0, 80, 6}, 44100).IsFlat());
  EXPECT_TRUE(PeakingFilter({0, kRate, 2.5F, 0, 0, 6}, 44100).IsFlat());
  EXPECT_TRUE(PeakingFilter({0, kRate, 2.5F, 0, -80, 6}, 44100).IsFlat());
  EXPECT_FALSE(PeakingFilter({0, kRate, 0, 1, 80, 6}, 44100).IsFlat());
}

TEST(PeakingFilter, NumbersThatAreNoneChangeNothing) {
  PeakingEqualiser equaliser(kRate);
  equaliser.AddBand();
  for (const float wrong :
       {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity()}) {
    EXPECT_FALSE(equaliser.Set({0, kRate, 2.5F, 0, 80, wrong}));
    EXPECT_FALSE(equaliser.Set({0, kRate, wrong, 0, 80, 6}));
    EXPECT_FALSE(equaliser.Set({0, kRate, 2.5F, wrong, 80, 6}));
    EXPECT_FALSE(equaliser.Set({0, kRate, 2.5F, 0, wrong, 6}));
  }
}

TEST(PeakingFilter, BadSoundDoesNotStayInTheMemory) {
  PeakingEqualiser equaliser(kRate);
  equaliser.AddBand();
  equaliser.Set(Band(0, 12));
  std::vector<float> bad(200, std::numeric_limits<float>::quiet_NaN()), good(200, 0.1F);
  equaliser.Process(bad);
  equaliser.Process(good);
  for (const float sample : good) ASSERT_TRUE(std::isfinite(sample));
}

}  // namespace
}  // namespace engine::testing
