// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace catalogue {

/// What a row is searched in; a bit each, so that a word may be wanted in several of them.
enum SearchField : std::uint8_t {
  kInArtist = 1,
  kInTitle = 2,
  kInAlbum = 4,
  kInGenre = 8,
  kInYear = 16,
  kInFile = 32,
  kInAnyField = 63
};

/// A word that a row must hold, or must not.
struct SearchTerm {
  std::vector<std::string> words;  ///< folded; more than one are neighbours in one field
  std::uint8_t fields = kInAnyField;
  bool excluded = false;
  bool whole_at_start = false;  ///< the first word begins where a word of the row does
  bool whole_at_end = false;
  bool operator==(const SearchTerm&) const = default;
};

/// Ends belong to it; what is 0 at both is no number and lies in none.
struct NumberRange {
  double least = 0;
  double most = 1e9;
  bool excluded = false;
  bool operator==(const NumberRange&) const = default;
};

/// What was typed into a search field.
///
/// Words between blanks, all of them wanted in any order, anywhere in a word of the row; "in quotes" words as
/// they stand beside each other; artist: title: album: genre: year: file: before one wants it there;
/// bpm:120-128 and year:1990-1999 want numbers; - before any of them wants rows without it.
struct SearchQuery {
  std::vector<SearchTerm> terms;
  std::vector<NumberRange> tempos;
  std::vector<NumberRange> years;
  [[nodiscard]] bool Empty() const { return terms.empty() && tempos.empty() && years.empty(); }
  bool operator==(const SearchQuery&) const = default;
};

[[nodiscard]] SearchQuery ParseQuery(std::string_view text);

}  // namespace catalogue
