// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

#include "decks/ports/BeatTracker.h"
#include "decks/ports/LoudnessMeter.h"

namespace decks::testing {

/// A sine of so many seconds on all channels.
inline std::vector<std::int16_t> Tone(double seconds, int rate, int channels, double level) {
  std::vector<std::int16_t> samples;
  for (int i = 0; i < static_cast<int>(seconds * rate); ++i) {
    const double value = level * std::sin(2 * std::numbers::pi * 1000 * i / rate);
    samples.insert(samples.end(), static_cast<std::size_t>(channels),
                   static_cast<std::int16_t>(32767 * value));
  }
  return samples;
}

/// What every loudness meter promises. T is the factory.
template <typename T>
class EveryLoudnessMeter : public ::testing::Test {
 protected:
  music::Loudness Measure(const std::vector<std::int16_t>& samples, int rate, int channels,
                          std::size_t frames_a_piece = 10'000) {
    const auto meter = meters_.Make(rate, channels);
    if (meter == nullptr) return {};
    std::span<const std::int16_t> left(samples);
    while (!left.empty()) {
      const std::size_t size = std::min(left.size(), frames_a_piece * static_cast<std::size_t>(channels));
      meter->Add(left.first(size));
      left = left.subspan(size);
    }
    return meter->Finish();
  }
  T meters_;
};
TYPED_TEST_SUITE_P(EveryLoudnessMeter);

TYPED_TEST_P(EveryLoudnessMeter, MeasuresDifferencesInDecibels) {
  for (const int rate : {8000, 44100, 96000, 192000}) {
    for (const int channels : {1, 2}) {
      const auto loud = this->Measure(Tone(4, rate, channels, 0.8), rate, channels);
      const auto soft = this->Measure(Tone(4, rate, channels, 0.2), rate, channels);
      ASSERT_TRUE(loud.valid && soft.valid);
      EXPECT_NEAR(loud.integrated.value - soft.integrated.value, 12.04, 0.1);
      EXPECT_NEAR(loud.true_peak.value, -1.94, 0.1);
    }
  }
}

TYPED_TEST_P(EveryLoudnessMeter, TheSizeOfThePiecesDoesNotMatter) {
  const auto samples = Tone(2, 44100, 2, 0.5);
  EXPECT_EQ(this->Measure(samples, 44100, 2, 1), this->Measure(samples, 44100, 2, 100'000));
}

TYPED_TEST_P(EveryLoudnessMeter, HasNothingToSayOfSilence) {
  EXPECT_FALSE(this->Measure(std::vector<std::int16_t>(88'200), 44100, 2).valid);
  EXPECT_FALSE(this->Measure({}, 44100, 2).valid);
  EXPECT_TRUE(this->Measure(Tone(2, 48000, 6, 0.5), 48000, 6).valid);
  EXPECT_EQ(this->meters_.Make(0, 2), nullptr);
}

REGISTER_TYPED_TEST_SUITE_P(EveryLoudnessMeter, MeasuresDifferencesInDecibels,
                            TheSizeOfThePiecesDoesNotMatter, HasNothingToSayOfSilence);

/// What every beat tracker promises. T is the factory.
template <typename T>
class EveryBeatTracker : public ::testing::Test {
 protected:
  /// Short bursts, the first one after half a beat.
  static std::vector<float> Clicks(double rate, double bpm, double seconds) {
    std::vector<float> samples(static_cast<std::size_t>(rate * seconds));
    for (std::size_t i = 0; i < samples.size(); ++i) {
      const double in_beat = std::fmod(static_cast<double>(i) / rate + 30 / bpm, 60 / bpm);
      if (in_beat > 0.02) continue;
      samples[i] = static_cast<float>(0.7 * std::sin(2 * std::numbers::pi * 900 * in_beat + 1));
    }
    return samples;
  }
  TrackedBeats Track(const std::vector<float>& samples, double rate, std::size_t piece = 4096) {
    const auto tracker = trackers_.Make(rate);
    if (tracker == nullptr) return {};
    for (std::size_t from = 0; from < samples.size(); from += piece) {
      tracker->Add(std::span(samples).subspan(from, std::min(piece, samples.size() - from)));
    }
    return tracker->Finish();
  }
  T trackers_;
};
TYPED_TEST_SUITE_P(EveryBeatTracker);

TYPED_TEST_P(EveryBeatTracker, HearsClicksWhereTheyAre) {
  for (const double rate : {8000.0, 22050.0, 24000.0, 37800.0}) {
    const TrackedBeats heard = this->Track(this->Clicks(rate, 120, 40), rate);
    ASSERT_GT(heard.beats.size(), 60U) << rate;
    for (const music::Seconds beat : heard.beats) {
      if (beat < music::Seconds(5) || beat > music::Seconds(35)) continue;
      EXPECT_NEAR(std::remainder(beat.count() - 0.25, 0.5), 0, 0.018) << rate << " " << beat.count();
    }
  }
}

TYPED_TEST_P(EveryBeatTracker, ItsOnsetsRiseWithTheClicks) {
  const TrackedBeats heard = this->Track(this->Clicks(22050, 120, 20), 22050);
  double at_clicks = 0;
  double between = 0;
  for (std::size_t i = 100; i + 100 < heard.onsets.size(); ++i) {
    const double at = (heard.onset_start + static_cast<double>(i) * heard.onset_step).count();
    const bool click = std::abs(std::remainder(at - 0.25, 0.5)) < 0.02;
    (click ? at_clicks : between) += static_cast<double>(heard.onsets[i]);
  }
  EXPECT_GT(at_clicks, 2 * between);
}

TYPED_TEST_P(EveryBeatTracker, AnyLengthAndAnyPieceIsFine) {
  const std::vector<float> clicks = this->Clicks(22050, 120, 12);
  EXPECT_EQ(this->Track(clicks, 22050, 7).beats, this->Track(clicks, 22050, 100'000).beats);
  for (std::size_t length = 0; length < clicks.size(); length += 1531) {
    this->Track({clicks.begin(), clicks.begin() + static_cast<std::ptrdiff_t>(length)}, 22050);
  }
  EXPECT_TRUE(this->Track({}, 22050).beats.empty());
  this->Track(std::vector<float>(400'000), 22050);
  EXPECT_EQ(this->trackers_.Make(100), nullptr);
  EXPECT_EQ(this->trackers_.Make(192'000), nullptr);
}

REGISTER_TYPED_TEST_SUITE_P(EveryBeatTracker, HearsClicksWhereTheyAre, ItsOnsetsRiseWithTheClicks,
                            AnyLengthAndAnyPieceIsFine);

}  // namespace decks::testing
