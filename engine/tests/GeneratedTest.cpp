// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <array>
#include <cmath>

#include "engine/testing/SoundStage.h"

namespace engine::testing {
namespace {

/// A ramp: each frame is its own number.
class RampGenerator final : public support::SoundGenerator {
 public:
  class Ramp final : public support::GeneratorVoice {
   public:
    void Begin(std::int64_t frame) override { place_ = static_cast<double>(frame); }
    void SetSpeed(double speed) override { speed_ = speed; }
    void Make(std::span<float> left, std::span<float> right) override {
      for (std::size_t i = 0; i < left.size(); ++i, place_ += speed_) {
        left[i] = right[i] = static_cast<float>(place_ / (64 * kRate));
      }
    }

   private:
    double place_ = 0;
    double speed_ = 1;
  };
  explicit RampGenerator(int rate = kRate) : rate_(rate) {}
  [[nodiscard]] int SampleRate() const noexcept override { return rate_; }
  [[nodiscard]] std::int64_t Length() const noexcept override { return 5 * kRate; }
  [[nodiscard]] support::GeneratorVoice& Voice(std::size_t number) noexcept override {
    return ramps_[number];
  }

 private:
  const int rate_;
  std::array<Ramp, kVoices> ramps_;
};

class GeneratedTest : public ::testing::Test {
 protected:
  GeneratedTest() {
    stage_.engine->BASS_Init(1, kRate, 0);
    stream_ = stage_.engine->CreateGenerated(std::make_shared<RampGenerator>(), 1, 0);
    stage_.engine->BASS_ChannelPlay(stream_, false);
  }
  /// The place in seconds that the newest sample given comes from.
  [[nodiscard]] double Given() { return 64.0 * static_cast<double>(stage_.Last("main", 0)); }
  [[nodiscard]] double Heard() {
    return static_cast<double>(stage_.engine->Heard(stream_).frame.value) / kRate;
  }

  SoundStage stage_;
  decks::StreamHandle stream_ = 0;
};

TEST_F(GeneratedTest, ItPlaysAtItsPlaceAndIsHeardThere) {
  stage_.Advance(1s);
  EXPECT_NEAR(Given(), Heard() + 0.06, 0.02);
  EXPECT_TRUE(stage_.engine->BASS_ChannelSetPosition(stream_, {4 * 3 * kRate}));
  stage_.Advance(500ms);
  EXPECT_NEAR(Heard(), 3.44, 0.05);
  EXPECT_NEAR(Given(), Heard() + 0.06, 0.02);
  EXPECT_LT(Roughness(stage_.Channel("main", 0)), 0.001F);
}

TEST_F(GeneratedTest, TempoIsTheGeneratorsOwn) {
  stage_.engine->BASS_FX_TempoSet(stream_, 50, -1, decks::kTempoUnchanged);
  stage_.Advance(500ms);
  const double before = Given();
  stage_.Advance(1s);
  EXPECT_NEAR(Given() - before, 1.5, 0.01);
  EXPECT_NEAR(stage_.engine->Heard(stream_).ratio, 1.5, 1e-9);
}

TEST_F(GeneratedTest, ItEndsAndStartsAgain) {
  stage_.Advance(6s);
  EXPECT_TRUE(stage_.engine->Heard(stream_).ended);
  EXPECT_FALSE(stage_.engine->BASS_ChannelIsActive(stream_));
  stage_.engine->BASS_ChannelPlay(stream_, false);
  stage_.Advance(500ms);
  EXPECT_NEAR(Heard(), 0.44, 0.05);
}

TEST_F(GeneratedTest, ItNeedsAnOpenDeviceOfItsRate) {
  EXPECT_EQ(stage_.engine->CreateGenerated(std::make_shared<RampGenerator>(48000), 1, 0), 0U);
  EXPECT_EQ(stage_.engine->CreateGenerated(std::make_shared<RampGenerator>(), 77, 0), 0U);
  EXPECT_EQ(stage_.engine->LastError().text, "The sound output is not open.");
}

TEST_F(GeneratedTest, AFreedOneGoesOnceItHasFaded) {
  const auto generator = std::make_shared<RampGenerator>();
  const auto stream = stage_.engine->CreateGenerated(generator, 1, 0);
  stage_.engine->BASS_ChannelPlay(stream, false);
  stage_.Advance(200ms);
  stage_.engine->BASS_StreamFree(stream);
  stage_.Advance(200ms);
  static_cast<void>(stage_.engine->TakeDeviceEvents());
  stage_.Advance(20ms);
  EXPECT_EQ(generator.use_count(), 1);
}

/// A synthesiser that has gone mad: every third sample is no number.
class MadGenerator final : public support::SoundGenerator, public support::GeneratorVoice {
 public:
  [[nodiscard]] int SampleRate() const noexcept override { return kRate; }
  [[nodiscard]] std::int64_t Length() const noexcept override { return kRate; }
  [[nodiscard]] support::GeneratorVoice& Voice(std::size_t) noexcept override { return *this; }
  void Begin(std::int64_t) override {}
  void SetSpeed(double) override {}
  void Make(std::span<float> left, std::span<float> right) override {
    for (std::size_t i = 0; i < left.size(); ++i) {
      left[i] = i % 3 == 0 ? std::nanf("") : 0.25F;
      right[i] = i % 3 == 1 ? INFINITY : 0.25F;
    }
  }
};

TEST(MadGeneratorTest, WhatIsNoNumberIsSilencedAndTheRestIsHeard) {
  SoundStage stage;
  stage.engine->BASS_Init(1, kRate, 0);
  stage.engine->BASS_ChannelPlay(stage.engine->CreateGenerated(std::make_shared<MadGenerator>(), 1, 0),
                                 false);
  stage.Advance(500ms);
  int heard = 0;
  for (const std::size_t channel : {std::size_t{0}, std::size_t{1}}) {
    for (const float sample : stage.Channel("main", channel)) {
      ASSERT_TRUE(std::isfinite(sample));
      heard += sample > 0.1F ? 1 : 0;
    }
  }
  EXPECT_GT(heard, kRate / 2);
}

}  // namespace
}  // namespace engine::testing
