// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "music/PeakingFilter.h"

namespace music {

// More filters by the formulas of Robert Bristow-Johnson's "Cookbook formulae for audio equalizer biquad
// filter coefficients". An edge that is no frequency of the sample rate's gives a flat one.

/// Second order, 3 dB down at its edge (Butterworth).
[[nodiscard]] Biquad HighPassFilter(double edge, int sample_rate);

/// Half the gain in dB at the edge, all of it below; the steepest slope that does not overshoot.
[[nodiscard]] Biquad LowShelfFilter(double edge, double gain, int sample_rate);

/// Half the gain in dB at the edge, all of it above.
[[nodiscard]] Biquad HighShelfFilter(double edge, double gain, int sample_rate);

}  // namespace music
