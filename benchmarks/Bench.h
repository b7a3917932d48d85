// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "benchmarks/Report.h"

namespace bench {

/// Each measures one part of the program; a test media folder is made on the way.
/// Requires of MeasureIndex and MeasureLights: no other thread yet, as they measure memory in processes of
/// their own.
[[nodiscard]] std::vector<Figure> MeasureIndex();
[[nodiscard]] std::vector<Figure> MeasureSearch();
[[nodiscard]] std::vector<Figure> MeasurePlaylists();
[[nodiscard]] std::vector<Figure> MeasureLights();
[[nodiscard]] std::vector<Figure> MeasureScan();
[[nodiscard]] std::vector<Figure> MeasureTags();
/// Ten minutes of clicks are analysed and played for it.
[[nodiscard]] std::vector<Figure> MeasureOrgan();
[[nodiscard]] std::vector<Figure> MeasureEngine();
[[nodiscard]] std::vector<Figure> MeasureLimiter();
/// Part of it on a real sound server of its own.
[[nodiscard]] std::vector<Figure> MeasureMicrophone();
/// Half an hour of sound is rendered for it.
[[nodiscard]] std::vector<Figure> MeasureFollowing();
[[nodiscard]] std::vector<Figure> MeasureKaraoke();
/// Pictures of the singers' screen; makes a Qt application of its own meanwhile.
[[nodiscard]] std::vector<Figure> MeasureLyrics();
[[nodiscard]] std::vector<Figure> MeasureAnalysis();
[[nodiscard]] std::vector<Figure> MeasureTempo();

/// Key lock and equaliser; half an hour of sound is rendered for it.
[[nodiscard]] std::vector<Figure> MeasureKeyLock();
/// From a command to the ear, on a real sound server of its own.
[[nodiscard]] std::vector<Figure> MeasureEar();
/// Gaps in what two decks play for minutes while other programs take all that the processors have.
[[nodiscard]] std::vector<Figure> MeasureLoad();
/// The part of MeasureLoad that runs in a process of its own.
int RunLoadChild(int argc, char* argv[]);
[[nodiscard]] std::vector<Figure> MeasureWindow();
/// A start with a million rows, and what the window's thread pays for acts among them.
[[nodiscard]] std::vector<Figure> MeasureRows();

/// The part of MeasureWindow and MeasureRows that runs in a process of its own; main calls it for the
/// arguments that they give.
int RunWindowChild(int argc, char* argv[]);

}  // namespace bench
