// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace decks {

enum class CrossfaderCurve {
  Smooth,        ///< both decks full in the middle; each fades on the other one's half
  Cut,           ///< both decks full nearly everywhere; each is gone in the last twentieth
  ConstantPower  ///< quarter circle: the power of two unlike tracks stays the same, -3 dB each in the middle
};

/// What the crossfader leaves of each deck, 0 to 1.
struct CrossfaderGains {
  double first = 1;
  double second = 1;
};

/// position is -1 (deck 1 alone) to 1 (deck 2 alone); outside it the nearer end counts.
[[nodiscard]] CrossfaderGains GainsAt(CrossfaderCurve curve, double position);

}  // namespace decks
