// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>

#include "support/Units.h"

namespace music {

/// How loud a track is, by EBU R128.
struct Loudness {
  bool valid = false;            ///< false for silence and for what is too short to be measured
  support::Decibels integrated;  ///< LUFS
  support::Decibels true_peak;   ///< dBTP; above 0 when it clips between the samples
  bool operator==(const Loudness&) const = default;
};

/// The loudness that tracks are brought to.
inline constexpr support::Decibels kReferenceLoudness{-18};

/// What brings a track to the reference. Requires: valid.
[[nodiscard]] constexpr support::Decibels GainFor(const Loudness& loudness) {
  return {kReferenceLoudness.value - loudness.integrated.value};
}

/// The same within a range, and no louder than that the true peak reaches full scale. Requires: valid.
[[nodiscard]] constexpr support::Decibels LevelFor(const Loudness& loudness, support::Decibels range) {
  const float gain = std::clamp(GainFor(loudness).value, -range.value, range.value);
  const float room = std::max(0.0F, -loudness.true_peak.value);
  return {std::min(gain, room)};
}

}  // namespace music
