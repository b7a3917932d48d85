// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/SearchQuery.h"

#include <algorithm>

#include "catalogue/FoldText.h"
#include "support/Text.h"

namespace catalogue {
namespace {

constexpr std::size_t kMostTerms = 32;

struct Prefix {
  std::string_view name;
  std::uint8_t field;  ///< 0 for the tempo
};
constexpr Prefix kPrefixes[] = {{"ARTIST:", kInArtist}, {"TITLE:", kInTitle}, {"ALBUM:", kInAlbum},
                                {"GENRE:", kInGenre},   {"YEAR:", kInYear},   {"FILE:", kInFile},
                                {"ORIGIN:", kInAlbum},  {"BPM:", 0}};

bool IsBlank(char letter) {
  return letter == ' ' || letter == '\t';
}

/// One thing that was typed, with what stood before it.
struct Piece {
  bool excluded = false;
  const Prefix* prefix = nullptr;
  bool quoted = false;
  bool closed = false;  ///< the quotation ended
  std::string_view text;
};

Piece TakePiece(std::string_view& text) {
  Piece piece;
  if (text.size() > 1 && text.front() == '-' && !IsBlank(text[1])) {
    piece.excluded = true;
    text.remove_prefix(1);
  }
  for (const Prefix& prefix : kPrefixes) {
    if (!support::EqualsIgnoringCase(text.substr(0, prefix.name.size()), prefix.name)) continue;
    piece.prefix = &prefix;
    text.remove_prefix(prefix.name.size());
    break;
  }
  if (!text.empty() && text.front() == '"') {
    const std::size_t end = text.find('"', 1);
    piece.quoted = true;
    piece.closed = end != std::string_view::npos;
    piece.text = text.substr(1, piece.closed ? end - 1 : end);
    text.remove_prefix(piece.closed ? end + 1 : text.size());
  } else {
    const auto end = std::find_if(text.begin(), text.end(), IsBlank);
    piece.text = text.substr(0, static_cast<std::size_t>(end - text.begin()));
    text.remove_prefix(piece.text.size());
  }
  return piece;
}

/// "120" is all that rounds to it, "120.5" itself.
std::optional<NumberRange> OneEnd(std::string_view text) {
  const auto number = support::ParseReal(text);
  if (!number || !(*number >= 0 && *number < 1e6)) return std::nullopt;
  const double reach = text.find('.') == std::string_view::npos ? 0.5 : 0.05;
  return NumberRange{*number - reach, *number + reach - 1e-6, false};
}

/// "120-128", "120-", "-128" or "120"; nothing for anything else.
std::optional<NumberRange> RangeIn(std::string_view text) {
  const std::size_t dash = text.find('-');
  if (dash == std::string_view::npos) return OneEnd(text);
  NumberRange range;
  const std::string_view first = text.substr(0, dash), last = text.substr(dash + 1);
  if (first.empty() && last.empty()) return std::nullopt;
  if (!first.empty()) {
    const auto end = OneEnd(first);
    if (!end) return std::nullopt;
    range.least = end->least;
  }
  if (!last.empty()) {
    const auto end = OneEnd(last);
    if (!end) return std::nullopt;
    range.most = end->most;
  }
  return range;
}

void AddRange(std::vector<NumberRange>& ranges, const Piece& piece) {
  std::optional<NumberRange> range = RangeIn(piece.text);
  if (!range) return;
  range->excluded = piece.excluded;
  // "120-12" on the way to "120-128" would find nothing for two keystrokes.
  if (range->most < range->least && piece.text.back() != '-') range->most = NumberRange{}.most;
  ranges.push_back(*range);
}

void AddTerm(SearchQuery& query, const Piece& piece) {
  SearchTerm term;
  const std::string folded = Folded(piece.text);
  if (folded.empty()) return;
  for (const std::string_view word : support::Split(folded, ' ')) term.words.emplace_back(word);
  if (piece.prefix != nullptr) term.fields = piece.prefix->field;
  term.excluded = piece.excluded;
  term.whole_at_start = piece.quoted;
  term.whole_at_end = piece.closed;
  query.terms.push_back(std::move(term));
}

}  // namespace

SearchQuery ParseQuery(std::string_view text) {
  SearchQuery query;
  while (!text.empty() && query.terms.size() < kMostTerms) {
    if (IsBlank(text.front())) {
      text.remove_prefix(1);
      continue;
    }
    const Piece piece = TakePiece(text);
    const std::uint8_t field = piece.prefix != nullptr ? piece.prefix->field : std::uint8_t{kInAnyField};
    if (field == 0) {
      AddRange(query.tempos, piece);
    } else if (field == kInYear && RangeIn(piece.text)) {
      AddRange(query.years, piece);
    } else {
      AddTerm(query, piece);
    }
  }
  return query;
}

}  // namespace catalogue
