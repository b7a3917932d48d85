// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <string_view>

namespace ui {

/// The title for the eye; the file's name where there is none.
[[nodiscard]] QString TitleText(std::string_view title, std::string_view filename);

}  // namespace ui
