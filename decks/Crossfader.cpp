// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "decks/Crossfader.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace decks {
namespace {

constexpr double kCutWidth = 0.1;  ///< of the travel of 2

/// The gain of the deck that is heard alone at -1.
double GainAwayFrom(CrossfaderCurve curve, double position) {
  switch (curve) {
    case CrossfaderCurve::Smooth:
      return std::min(1.0, 1.0 - position);
    case CrossfaderCurve::Cut:
      return std::min(1.0, (1.0 - position) / kCutWidth);
    case CrossfaderCurve::ConstantPower:
      return position >= 1.0 ? 0.0 : std::cos((position + 1.0) * std::numbers::pi / 4.0);
  }
  return 1.0;
}

}  // namespace

CrossfaderGains GainsAt(CrossfaderCurve curve, double position) {
  const double inside = std::clamp(position, -1.0, 1.0);
  return {GainAwayFrom(curve, inside), GainAwayFrom(curve, -inside)};
}

}  // namespace decks
