// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "catalogue/AnalysisParts.h"
#include "catalogue/MixingTags.h"
#include "catalogue/track_table.h"
#include "music/TrackAnalysis.h"

namespace app {

/// Fills in what an analysis found where the row of its file says nothing: gain, mix points and tempo. What a
/// tag or a hand put there stays; a point that an earlier scan found is replaced, and one that the marks say
/// a hand put somewhere stands there, whatever a tag says. True when a cell was filled in, nothing is for row
/// 0. Threads: the table's.
bool FillIn(catalogue::track_table& table, int row, const music::TrackAnalysis& analysis,
            const catalogue::FileMarks& marks = {});

/// What a row says for mixing; nothing for row 0.
[[nodiscard]] catalogue::MixingTags MixingTagsInRow(const catalogue::track_table& table, int row);

}  // namespace app
