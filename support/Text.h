// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// Text is bytes in the system's 8-bit code page (UTF-8 here); only ui/ decodes it for display. Letter case is
// folded for ASCII letters alone, so that folding never changes a byte of a longer character.

namespace support {

[[nodiscard]] std::string ToUpper(std::string_view text);
[[nodiscard]] bool EqualsIgnoringCase(std::string_view a, std::string_view b);
/// The last count bytes in upper case; the whole text when it is shorter.
[[nodiscard]] std::string UpperTail(std::string_view text, std::size_t count);
[[nodiscard]] std::string_view Trim(std::string_view text);
/// "a;b;" gives "a", "b", "": as many parts as separators, plus one.
[[nodiscard]] std::vector<std::string_view> Split(std::string_view text, char separator);

/// The whole text as a decimal number, nothing else before or behind it. Independent of the locale.
[[nodiscard]] std::optional<std::int64_t> ParseInteger(std::string_view text);
[[nodiscard]] std::optional<double> ParseReal(std::string_view text);
/// The number at the start of the text, blanks before it skipped; 0 when there is none. For settings, whose
/// text was perhaps written by hand.
[[nodiscard]] std::int64_t LeadingInteger(std::string_view text);

/// Fixed decimals with a "." whatever the locale: FormatReal(1.5, 3) is "1.500".
[[nodiscard]] std::string FormatReal(double value, int decimals);
/// Playing time as in the track tables: two digits each, "03:45"; minutes may pass 99.
[[nodiscard]] std::string FormatMinutes(std::int64_t seconds);

/// Lines of a text with any of CR LF, LF and CR as line end. A last line without an end counts; an empty rest
/// does not.
[[nodiscard]] std::vector<std::string_view> SplitLines(std::string_view text);

}  // namespace support
