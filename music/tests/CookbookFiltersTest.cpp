// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "music/CookbookFilters.h"

#include <gtest/gtest.h>

namespace music {
namespace {

TEST(CookbookFilters, AreWhatTheirNamesSayAtEveryRate) {
  for (const int rate : {8000, 44100, 192'000}) {
    const Biquad cut = HighPassFilter(100, rate);
    EXPECT_NEAR(ResponseOf(cut, 100, rate), -3.01, 0.05) << rate;
    EXPECT_NEAR(ResponseOf(cut, 25, rate), -24.1, 0.3) << rate;
    EXPECT_NEAR(ResponseOf(cut, 1000, rate), 0, 0.05) << rate;
    for (const double gain : {-9.0, 6.0}) {
      const Biquad low = LowShelfFilter(200, gain, rate), high = HighShelfFilter(2000, gain, rate);
      EXPECT_NEAR(ResponseOf(low, 10, rate), gain, 0.1) << rate;
      EXPECT_NEAR(ResponseOf(low, 200, rate), gain / 2, 0.1) << rate;
      EXPECT_NEAR(ResponseOf(low, 3000, rate), 0, 0.1) << rate;
      EXPECT_NEAR(ResponseOf(high, 100, rate), 0, 0.1) << rate;
      EXPECT_NEAR(ResponseOf(high, 2000, rate), gain / 2, 0.1) << rate;
      EXPECT_NEAR(ResponseOf(high, 3950, rate), gain, 0.8) << rate;
    }
  }
}

TEST(CookbookFilters, AreFlatWhereTheyCanDoNothing) {
  for (const double edge : {0.0, -1.0, 22'050.0, 1e9}) {
    EXPECT_TRUE(HighPassFilter(edge, 44100).IsFlat());
    EXPECT_TRUE(LowShelfFilter(edge, 6, 44100).IsFlat());
  }
  EXPECT_TRUE(HighShelfFilter(5000, 0, 44100).IsFlat());
}

}  // namespace
}  // namespace music
