// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "music/Loudness.h"

#include <gtest/gtest.h>

namespace music {
namespace {

TEST(LevelFor, StaysWithinItsRangeAndBelowFullScale) {
  const struct {
    const char* what;
    float loudness, peak, range, gain;
  } kTracks[] = {
      {"loud", -9, 0.5F, 12, -9},           {"no further than the range", -9, 0.5F, 6, -6},
      {"at the reference", -18, -3, 12, 0}, {"soft, with room above", -24, -10, 12, 6},
      {"soft, with peaks", -24, -2, 12, 2}, {"soft, with peaks above full scale", -24, 1, 12, 0},
  };
  for (const auto& track : kTracks) {
    EXPECT_EQ(LevelFor({true, {track.loudness}, {track.peak}}, {track.range}).value, track.gain)
        << track.what;
  }
}

}  // namespace
}  // namespace music
