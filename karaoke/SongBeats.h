// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "karaoke/SongReader.h"
#include "music/BeatGrid.h"

namespace karaoke {

/// Where the beats of a song lie, by its tempo map and its time signatures; empty where ticks do not depend
/// on tempo.
///
/// A beat is a quarter note, and a dotted one in eighths that go by threes (3/8, 6/8, 9/8, 12/8). A time
/// signature begins with a beat.
[[nodiscard]] music::BeatGrid BeatsOf(const Song& song);

}  // namespace karaoke
