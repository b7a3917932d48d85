// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "decks/ports/BeatTracker.h"
#include "music/BeatGrid.h"
#include "music/Wave.h"

namespace decks {

/// Makes the grid of a track from what its tracker heard.
///
/// A track of one tempo gets even beats, as exact as its length allows; one that breathes keeps the beats as
/// they were tracked. The level of the metre is checked against the bands of the wave: trackers take half of
/// a fast tempo, or two thirds of one that swings. Empty where there are no beats:
/// in tones, noise, speech and silence.
[[nodiscard]] music::BeatGrid FitGrid(const TrackedBeats& heard, const music::Wave& wave,
                                      music::Seconds length);

}  // namespace decks
