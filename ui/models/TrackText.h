// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <string_view>

namespace catalogue {
class track_table;
}

namespace ui {

/// The title for the eye; the file's name where there is none.
[[nodiscard]] QString TitleText(std::string_view title, std::string_view filename);

/// Whether a row of tracks knows what an analysis finds: its tempo, or its mix points where it found none.
[[nodiscard]] bool WasAnalysed(const catalogue::track_table& table, int row);

}  // namespace ui
