// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "decks/ports/BeatTracker.h"

namespace platform::analysis {

/// Beats by the Queen Mary DSP library: how much the complex spectrum differs from what the frames before it
/// let expect, and the tempo tracker of Davies and others over that.
class QmBeatTrackers final : public decks::BeatTrackers {
 public:
  [[nodiscard]] std::unique_ptr<decks::BeatTracker> Make(double sample_rate) override;
};

}  // namespace platform::analysis
