// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>

#include "decks/Equaliser.h"
#include "music/PeakingFilter.h"

namespace decks {

/// What the ten bands together do to a tone: the filters that the sound runs through, asked for their gain.
class EqResponse {
 public:
  EqResponse(const Equaliser::Gains& gains, int sample_rate);

  /// In dB; frequency in Hz.
  [[nodiscard]] double At(double frequency) const;

 private:
  int sample_rate_;
  std::array<music::Biquad, kEqBands> filters_;
};

}  // namespace decks
