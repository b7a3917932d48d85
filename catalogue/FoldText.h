// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>

namespace catalogue {

/// Appends a text as it is searched and sorted: letters without case and accents, ligatures as two letters,
/// apostrophes left out, every run of other signs as one blank, none at its ends. Latin, Greek and Cyrillic
/// are folded, other letters stay as they are. A text that is no UTF-8 counts as Latin-1.
void AppendFolded(std::string& folded, std::string_view text);
[[nodiscard]] std::string Folded(std::string_view text);

}  // namespace catalogue
