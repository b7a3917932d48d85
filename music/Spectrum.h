// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <span>

namespace music {

inline constexpr std::size_t kSpectrumFrames = 256;
inline constexpr std::size_t kSpectrumBins = kSpectrumFrames / 2;

/// Magnitudes of the transform of 256 samples; bin i stands for i / 256 of the sample rate. A sine in the
/// middle of a bin reads there as its amplitude.
using Spectrum = std::array<float, kSpectrumBins>;

/// Of samples under a Hann window. Takes no memory.
[[nodiscard]] Spectrum SpectrumOf(std::span<const float, kSpectrumFrames> samples);

}  // namespace music
