// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>

namespace catalogue {

/// How letters are to be. Latin, Greek and Cyrillic have case here, accents included; other letters and bytes
/// that are no UTF-8 stay.
enum class LetterCase { Title, Sentence, Upper, Lower };
[[nodiscard]] std::string InCase(std::string_view text, LetterCase letters);

/// Every run of blanks and underscores as one blank, none at the ends.
[[nodiscard]] std::string WithCleanSpaces(std::string_view text);

/// Every place where the words stand, in the same letter case. An empty text is found nowhere.
[[nodiscard]] std::string Replaced(std::string_view text, std::string_view find, std::string_view by);

}  // namespace catalogue
