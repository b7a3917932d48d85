// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>

namespace bench {

/// Writes an index of tracks such as a DJ has them, every cell filled, about 240 bytes a row.
void WriteRows(const std::filesystem::path& index, int rows);

/// What ShowActs prints of each act, in this order: CPU and wall milliseconds of the window's thread in the
/// longest turn that it took, p99 of several.
inline constexpr const char* kActs[] = {
    "rows of 2,000 files are looked up",
    "the rows of one file",
    "1,000 rows here and there are taken out",
    "a scan's result is swapped in",
    "1,000 files are added",
    "1,000 files are dropped on a playlist",
    "100 files are analysed and their rows filled",
    "1,000 files are deleted with their rows",
    "a search's result is shown",
    "the grid is sorted",
    "all are chosen and given to the analysis",
};

/// In a process of its own. folder: a program folder with an index of a million rows.
int ShowActs(const char* folder);

}  // namespace bench
