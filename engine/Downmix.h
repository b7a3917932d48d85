// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>

namespace engine {

/// Interleaved 16-bit frames of 1 to 8 channels as left and right; 1 is full scale.
///
/// One channel goes to both sides. Of more than two, centre, rear and side go in 3 dB lower and the sum is
/// scaled so that it cannot pass full scale; the low-frequency channel is left out.
/// Requires: left and right have the same size, interleaved that many frames.
void Downmix(std::span<const std::int16_t> interleaved, int channels, std::span<float> left,
             std::span<float> right) noexcept;

}  // namespace engine
