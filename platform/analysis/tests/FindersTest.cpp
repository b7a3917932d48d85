// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "decks/testing/FinderContracts.h"
#include "platform/analysis/EburLoudnessMeters.h"
#include "platform/analysis/QmBeatTrackers.h"

namespace decks::testing {
namespace {

INSTANTIATE_TYPED_TEST_SUITE_P(Ebur, EveryLoudnessMeter, platform::analysis::EburLoudnessMeters);
INSTANTIATE_TYPED_TEST_SUITE_P(Qm, EveryBeatTracker, platform::analysis::QmBeatTrackers);

}  // namespace
}  // namespace decks::testing

namespace platform::analysis {
namespace {

using decks::testing::Tone;

music::Loudness Measure(const std::vector<std::int16_t>& samples, int rate, int channels) {
  const auto meter = EburLoudnessMeters().Make(rate, channels);
  meter->Add(samples);
  return meter->Finish();
}

TEST(EburLoudness, AToneAtMinus23OnBothChannelsIsMinus23AsTheStandardSays) {
  EXPECT_NEAR(Measure(Tone(20, 48000, 2, std::pow(10, -23 / 20.0)), 48000, 2).integrated.value, -23, 0.1);
}

TEST(EburLoudness, OneChannelIsAsLoudAsTheSameOnBothSpeakers) {
  EXPECT_NEAR(Measure(Tone(5, 44100, 1, 0.5), 44100, 1).integrated.value,
              Measure(Tone(5, 44100, 2, 0.5), 44100, 2).integrated.value, 0.01);
}

}  // namespace
}  // namespace platform::analysis
