// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/SearchIndex.h"

#include <algorithm>
#include <bit>
#include <utility>

#include "catalogue/FoldText.h"
#include "support/Text.h"

namespace catalogue {
namespace {

/// Rows that the second part may have before everything is read anew: so many, or that share of all.
constexpr std::size_t kFewRows = 16'384, kShare = 8;
constexpr std::size_t kFileField = 5;

std::string_view NameOfFile(std::string_view path) {
  const std::size_t separator = path.find_last_of("/\\");
  return separator == std::string_view::npos ? path : path.substr(separator + 1);
}

std::size_t BitsFor(std::size_t rows) {
  return (rows + 63) / 64;
}

void Put(RowBits& rows, std::size_t row) {
  rows[row / 64] |= std::uint64_t{1} << row % 64;
}

bool Has(const RowBits& rows, std::size_t row) {
  return (rows[row / 64] >> row % 64 & 1) != 0;
}

/// Of the rows between two places those whose bits are set; note may clear them.
template <typename Note>
void ForEachRow(const RowBits& rows, std::size_t first, std::size_t end, const Note& note) {
  while (first < end) {
    const std::size_t here = std::min(64 - first % 64, end - first);
    std::uint64_t bits = rows[first / 64] >> first % 64;
    if (here < 64) bits &= (std::uint64_t{1} << here) - 1;
    for (; bits != 0; bits &= bits - 1) note(first + static_cast<std::size_t>(std::countr_zero(bits)));
    first += here;
  }
}

bool InRanges(const std::vector<NumberRange>& ranges, const auto& lies) {
  return std::all_of(ranges.begin(), ranges.end(),
                     [&](const NumberRange& range) { return lies(range) != range.excluded; });
}

/// Whether folded text holds the words beside each other.
bool HoldsTogether(std::string_view text, const SearchTerm& term, const std::string& words) {
  for (std::size_t at = text.find(words); at != std::string_view::npos; at = text.find(words, at + 1)) {
    const std::size_t end = at + words.size();
    const bool starts = !term.whole_at_start || at == 0 || text[at - 1] == ' ';
    if (starts && (!term.whole_at_end || end == text.size() || text[end] == ' ')) return true;
  }
  return false;
}

}  // namespace

SearchIndex::SearchIndex(const SearchColumns& columns) : columns_(columns) {}

bool SearchIndex::Follow(const track_table& table, const std::atomic<bool>& stop) {
  if (table.IsCopyOf(table_)) return true;
  const std::vector<Stretch> stretches = table.Stretches();
  std::vector<Stretch> fresh;
  std::size_t rows = 0;
  for (const Stretch& stretch : stretches) {
    if (large_.contains(stretch.identity)) continue;
    fresh.push_back(stretch);
    rows += static_cast<std::size_t>(stretch.rows);
  }
  const bool anew = rows > std::max(kFewRows, parts_[0].Rows() / kShare);
  WordIndex read;
  if (!Read(table, anew ? stretches : fresh, stop, read)) return false;
  if (anew) parts_[1] = WordIndex();
  parts_[anew ? 0 : 1] = std::move(read);
  table_ = table;
  PlaceAll(stretches, anew ? stretches : fresh, anew ? 0 : 1);
  return true;
}

bool SearchIndex::Read(const track_table& table, const std::vector<Stretch>& stretches,
                       const std::atomic<bool>& stop, WordIndex& read) const {
  WordIndex::Builder builder;
  std::array<std::string_view, track_table::kMostColumns> cells;
  const std::span<std::string_view> used(cells.data(), table.Columns().size());
  std::array<std::string, 6> folded;
  for (const Stretch& stretch : stretches) {
    if (stop.load(std::memory_order_relaxed)) return false;
    for (int i = 0; i < stretch.rows; ++i) {
      table.Cells(stretch.first_row + i, used);
      const auto cell = [&](int column) {
        return column == 0 ? std::string_view() : cells[static_cast<std::size_t>(column - 1)];
      };
      SearchedRow row;
      for (std::size_t field = 0; field < folded.size(); ++field) {
        const std::string_view text = cell(columns_.fields[field]);
        folded[field].clear();
        AppendFolded(folded[field], field == kFileField ? NameOfFile(text) : text);
        row.fields[field] = folded[field];
      }
      row.tempo = support::ParseReal(cell(columns_.tempo)).value_or(0);
      row.year = static_cast<int>(std::clamp<std::int64_t>(support::LeadingInteger(row.fields[4]), 0, 9999));
      builder.Add(row);
    }
  }
  read = builder.Finish();
  return true;
}

void SearchIndex::PlaceAll(const std::vector<Stretch>& stretches, const std::vector<Stretch>& fresh,
                           int part) {
  std::unordered_map<const void*, std::size_t> places;
  std::size_t row = 0;
  for (const Stretch& stretch : fresh) {
    places[stretch.identity] = row;
    row += static_cast<std::size_t>(stretch.rows);
  }
  // A stretch that the table let go of may come back under the same address with other rows.
  std::unordered_map<const void*, std::size_t> large;
  placed_.clear();
  for (const Stretch& stretch : stretches) {
    const auto found = places.find(stretch.identity);
    const bool is_fresh = found != places.end();
    const Place place{is_fresh ? part : 0, is_fresh ? found->second : large_.at(stretch.identity)};
    placed_.push_back({stretch, place});
    if (place.part == 0) large[stretch.identity] = place.row;
  }
  large_ = std::move(large);
}

std::vector<int> SearchIndex::Find(const SearchQuery& query, const std::vector<int>* order) const {
  std::vector<int> rows;
  rows.reserve(MatchPart(query, 0, matched_[0]) + MatchPart(query, 1, matched_[1]));
  RowBits wanted(order == nullptr ? 0 : BitsFor(static_cast<std::size_t>(table_.Rows()) + 1));
  for (const Placed& placed : placed_) {
    const RowBits& matched = matched_[static_cast<std::size_t>(placed.place.part)];
    const std::size_t first = placed.place.row, end = first + static_cast<std::size_t>(placed.stretch.rows);
    ForEachRow(matched, first, end, [&](std::size_t row) {
      const int found = placed.stretch.first_row + static_cast<int>(row - first);
      if (order == nullptr) {
        rows.push_back(found);
      } else {
        Put(wanted, static_cast<std::size_t>(found));
      }
    });
  }
  if (order == nullptr) return rows;
  for (const int row : *order) {
    if (row <= table_.Rows() && Has(wanted, static_cast<std::size_t>(row))) rows.push_back(row);
  }
  return rows;
}

std::size_t SearchIndex::MatchPart(const SearchQuery& query, int part, RowBits& matched) const {
  const WordIndex& index = parts_[static_cast<std::size_t>(part)];
  matched.assign(BitsFor(index.Rows()), ~std::uint64_t{0});
  if (index.Rows() % 64 != 0) matched.back() = (std::uint64_t{1} << index.Rows() % 64) - 1;
  for (const SearchTerm& term : query.terms) MatchTerm(term, part, matched);
  if (!query.tempos.empty() || !query.years.empty()) {
    ForEachRow(matched, 0, index.Rows(), [&](std::size_t row) {
      const bool lies =
          InRanges(query.tempos, [&](const NumberRange& range) { return index.TempoIn(row, range); }) &&
          InRanges(query.years, [&](const NumberRange& range) { return index.YearIn(row, range); });
      if (!lies) matched[row / 64] &= ~(std::uint64_t{1} << row % 64);
    });
  }
  std::size_t count = 0;
  for (const std::uint64_t bits : matched) count += static_cast<std::size_t>(std::popcount(bits));
  return count;
}

void SearchIndex::MatchTerm(const SearchTerm& term, int part, RowBits& matched) const {
  of_term_.assign(matched.size(), 0);
  if (term.words.size() > 1) {
    MatchNeighbours(term, part, of_term_);
  } else {
    parts_[static_cast<std::size_t>(part)].MatchOne(term, of_term_);
  }
  for (std::size_t i = 0; i < matched.size(); ++i) matched[i] &= term.excluded ? ~of_term_[i] : of_term_[i];
}

void SearchIndex::MatchNeighbours(const SearchTerm& term, int part, RowBits& matched) const {
  const WordIndex& index = parts_[static_cast<std::size_t>(part)];
  std::vector<std::uint8_t> fields(index.Rows());
  index.MatchAll(term, fields);
  std::string text;
  for (const Placed& placed : placed_) {
    if (placed.place.part != part) continue;
    for (int i = 0; i < placed.stretch.rows; ++i) {
      const std::size_t row = placed.place.row + static_cast<std::size_t>(i);
      const bool holds = fields[row] != 0 && Holds(placed.stretch.first_row + i, fields[row], term, text);
      if (holds) Put(matched, row);
    }
  }
}

bool SearchIndex::Holds(int row, std::uint8_t fields, const SearchTerm& term, std::string& text) const {
  std::string words;
  for (const std::string& word : term.words) words += (words.empty() ? "" : " ") + word;
  for (std::size_t field = 0; field < columns_.fields.size(); ++field) {
    if ((fields >> field & 1) == 0) continue;
    const std::string_view cell = table_.Cell(row, columns_.fields[field]);
    text.clear();
    AppendFolded(text, field == kFileField ? NameOfFile(cell) : cell);
    if (HoldsTogether(text, term, words)) return true;
  }
  return false;
}

std::size_t SearchIndex::Bytes() const {
  return parts_[0].Bytes() + parts_[1].Bytes() +
         (matched_[0].capacity() + matched_[1].capacity() + of_term_.capacity()) * sizeof(std::uint64_t) +
         placed_.capacity() * sizeof(Placed) +
         large_.size() * (sizeof(std::pair<const void*, std::size_t>) + 2 * sizeof(void*));
}

}  // namespace catalogue
