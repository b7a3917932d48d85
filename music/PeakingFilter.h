// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace music {

/// A second-order filter, normalised to a0 = 1.
struct Biquad {
  double b0 = 1, b1 = 0, b2 = 0, a1 = 0, a2 = 0;
  bool operator==(const Biquad&) const = default;
  /// Its output is its input, bit for bit, whatever the poles.
  [[nodiscard]] bool IsFlat() const noexcept { return b0 == 1 && b1 == a1 && b2 == a2; }
};

/// What a peaking filter is made of.
struct PeakingShape {
  double centre = 0;     ///< in Hz
  double bandwidth = 0;  ///< in octaves; where it is 0, Q counts
  double q = 0;
  double gain = 0;  ///< in dB; more than 40 counts as 40
};

/// A peaking filter by the formulas of Robert Bristow-Johnson's "Cookbook formulae for audio equalizer biquad
/// filter coefficients". The gain at the centre is exact; the bandwidth lies between the points of half the
/// gain in dB. Flat for 0 dB and for a shape with neither bandwidth nor Q.
[[nodiscard]] Biquad PeakingFilter(const PeakingShape& shape, int sample_rate);

/// What the filter does to a tone of this frequency, in dB.
[[nodiscard]] double ResponseOf(const Biquad& filter, double frequency, int sample_rate);

}  // namespace music
