// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "decks/ports/LoudnessMeter.h"

namespace platform::analysis {

/// Loudness by libebur128; the true peak, for which it is slow, by our own.
class EburLoudnessMeters final : public decks::LoudnessMeters {
 public:
  [[nodiscard]] std::unique_ptr<decks::LoudnessMeter> Make(int sample_rate, int channels) override;
};

}  // namespace platform::analysis
