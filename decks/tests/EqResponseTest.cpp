// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "decks/EqResponse.h"

#include <gtest/gtest.h>

namespace decks {
namespace {

Equaliser::Gains OneBand(std::size_t band, float gain) {
  Equaliser::Gains gains{};
  gains[band] = gain;
  return gains;
}

TEST(EqResponseTest, AFlatEqualiserDoesNothingAnywhere) {
  const EqResponse flat({}, 44100);
  for (const double frequency : {20.0, 80.0, 1000.0, 16000.0, 22000.0}) EXPECT_EQ(flat.At(frequency), 0);
}

TEST(EqResponseTest, OneBandHasItsGainAtItsCentreAndFadesAway) {
  for (std::size_t band = 0; band < kEqCentres.size(); ++band) {
    for (const float gain : {-12.0F, 12.0F}) {
      const EqResponse response(OneBand(band, gain), 44100);
      EXPECT_NEAR(response.At(kEqCentres[band]), gain, 0.01) << band;
      EXPECT_LT(std::abs(response.At(kEqCentres[band] / 16.0)), 3) << band;
    }
  }
}

TEST(EqResponseTest, NeighboursAddUp) {
  Equaliser::Gains gains{};
  gains[7] = gains[8] = 6;
  const EqResponse both(gains, 44100);
  const double sum = EqResponse(OneBand(7, 6), 44100).At(13000) + EqResponse(OneBand(8, 6), 44100).At(13000);
  EXPECT_NEAR(both.At(13000), sum, 1e-9);
  EXPECT_GT(both.At(13000), 10);
}

TEST(EqResponseTest, ABandAboveTheFilesHalfRateIsNone) {
  EXPECT_EQ(EqResponse(OneBand(9, 12), 22050).At(8000), 0);
}

}  // namespace
}  // namespace decks
