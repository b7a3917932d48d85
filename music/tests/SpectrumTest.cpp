// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "music/Spectrum.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace music {
namespace {

/// Of a sine that lies `bin` bins up.
Spectrum OfTone(double bin, double amplitude) {
  std::array<float, kSpectrumFrames> samples;
  for (std::size_t i = 0; i < samples.size(); ++i) {
    const double turn = bin * double(i) / double(kSpectrumFrames);
    samples[i] = static_cast<float>(amplitude * std::sin(2 * std::numbers::pi * turn));
  }
  return SpectrumOf(samples);
}

TEST(SpectrumTest, AToneReadsAsItsAmplitudeInItsBinAndAsNothingFarFromIt) {
  for (const int bin : {2, 6, 40, 126}) {
    const Spectrum spectrum = OfTone(bin, 0.5);
    for (int i = 0; i < int(kSpectrumBins); ++i) {
      const float expected = i == bin ? 0.5F : std::abs(i - bin) == 1 ? 0.25F : 0;
      EXPECT_NEAR(spectrum[static_cast<std::size_t>(i)], expected, 1e-4) << "tone " << bin << ", bin " << i;
    }
  }
}

TEST(SpectrumTest, AToneBetweenTwoBinsPeaksInTheNearerOne) {
  const Spectrum spectrum = OfTone(5.8, 1);
  EXPECT_EQ(std::max_element(spectrum.begin(), spectrum.end()) - spectrum.begin(), 6);
}

TEST(SpectrumTest, SilenceReadsAsNothing) {
  EXPECT_EQ(OfTone(6, 0), Spectrum{});
}

}  // namespace
}  // namespace music
