// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include "decks/ports/SoundDesk.h"

namespace decks::testing {

/// What every desk promises. T has Desk(), an output 1 with four pairs and an output 2, both open, and
/// GoOn(), after which what was told is in force.
template <typename T>
class EveryDesk : public ::testing::Test {
 protected:
  bool Reaches(SpeakerPair first, SpeakerPair second, SpeakerPair headphones) {
    given_.Desk().Direct({{first, second}, headphones, {}});
    given_.GoOn();
    return given_.Desk().HallReachesHeadphones();
  }
  T given_;
};

TYPED_TEST_SUITE_P(EveryDesk);

TYPED_TEST_P(EveryDesk, TheHallReachesHeadphonesThatHaveAPairOrADeviceOfTheirOwn) {
  EXPECT_FALSE(this->given_.Desk().HallReachesHeadphones()) << "nobody said where they are";
  const SpeakerPair front{1, kSpeakerFront}, rear{1, kSpeakerRear}, side{1, kSpeakerRear2};
  EXPECT_TRUE(this->Reaches(front, front, rear));
  EXPECT_TRUE(this->Reaches(front, side, rear));
  EXPECT_FALSE(this->Reaches(front, rear, rear)) << "deck 2 plays where they are";
  EXPECT_TRUE(this->Reaches(front, {2, 0}, rear)) << "deck 2 plays elsewhere";
  EXPECT_FALSE(this->Reaches({1, 0}, {1, 0}, rear)) << "the hall is every pair";
  EXPECT_FALSE(this->Reaches(front, front, {1, 0}));
  EXPECT_TRUE(this->Reaches(front, side, {2, 0})) << "another device";
  EXPECT_TRUE(this->Reaches({1, 0}, {1, 0}, {2, 0}));
  EXPECT_FALSE(this->Reaches(front, {2, 0}, {2, 0})) << "deck 2 plays where they are";
  EXPECT_FALSE(this->Reaches(front, {0, 0}, {2, 0})) << "deck 2 plays nowhere";
  EXPECT_FALSE(this->Reaches(front, front, {0, 0})) << "there are none";
}

TYPED_TEST_P(EveryDesk, ReadsSilenceWhereNothingPlays) {
  this->given_.Desk().Direct({{SpeakerPair{2, 0}, {2, 0}}, {}, {}});
  this->given_.Desk().SetTone(777, {kKilled, {}, {}});
  this->given_.GoOn();
  const MasterReading reading = this->given_.Desk().Master();
  EXPECT_EQ(reading.reduction.value, 0);
  EXPECT_EQ(reading.true_peak, MasterReading::kSilence);
  EXPECT_EQ(reading.momentary, MasterReading::kSilence);
  EXPECT_EQ(reading.short_term, MasterReading::kSilence);
}

REGISTER_TYPED_TEST_SUITE_P(EveryDesk, TheHallReachesHeadphonesThatHaveAPairOrADeviceOfTheirOwn,
                            ReadsSilenceWhereNothingPlays);

}  // namespace decks::testing
