// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <span>

#include "tools/composer/studio/Sound.h"

namespace tools::composer {

/// The room's answer to a sound, without the sound itself.
[[nodiscard]] Stereo Reverb(const Stereo& sound, double seconds, double brightness_hz);
/// Echoes that go from side to side, without the sound itself.
[[nodiscard]] Stereo Echo(const Stereo& sound, double delay_seconds, double feedback);
/// Turns the sound down at each of the frames and lets it come back, as a compressor does under a bass drum.
void Duck(Stereo& sound, std::span<const std::size_t> at, double depth, double seconds);
void AddTo(Stereo& sum, const Stereo& sound, double gain);

/// Loudness in LUFS, gated, after ITU-R BS.1770.
[[nodiscard]] double Loudness(const Stereo& sound);
/// Brings the sound to a loudness with a ceiling for its peaks; looks ahead, so that nothing clips.
void Master(Stereo& sound, double lufs, double ceiling);

}  // namespace tools::composer
