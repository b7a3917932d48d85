// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/SearchIndex.h"

#include <algorithm>
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
  const std::array<Bits, 2>& matched = matched_;
  for (const int part : {0, 1}) MatchPart(query, part, matched_[static_cast<std::size_t>(part)]);
  std::vector<int> rows;
  rows.reserve(static_cast<std::size_t>(std::count(matched[0].begin(), matched[0].end(), 1)) +
               matched[1].size());
  if (order == nullptr) {
    for (const Placed& placed : placed_) {
      const std::uint8_t* bits =
          matched[static_cast<std::size_t>(placed.place.part)].data() + placed.place.row;
      for (int i = 0; i < placed.stretch.rows; ++i) {
        if (bits[i] != 0) rows.push_back(placed.stretch.first_row + i);
      }
    }
    return rows;
  }
  Bits wanted(static_cast<std::size_t>(table_.Rows()) + 1);
  for (const Placed& placed : placed_) {
    const std::uint8_t* bits = matched[static_cast<std::size_t>(placed.place.part)].data() + placed.place.row;
    std::copy_n(bits, placed.stretch.rows, wanted.begin() + placed.stretch.first_row);
  }
  for (const int row : *order) {
    if (static_cast<std::size_t>(row) < wanted.size() && wanted[static_cast<std::size_t>(row)] != 0)
      rows.push_back(row);
  }
  return rows;
}

void SearchIndex::MatchPart(const SearchQuery& query, int part, Bits& matched) const {
  const WordIndex& index = parts_[static_cast<std::size_t>(part)];
  matched.assign(index.Rows(), 1);
  Bits& fields = fields_;
  for (const SearchTerm& term : query.terms) {
    fields.assign(index.Rows(), 0);
    index.Match(term, fields);
    if (term.words.size() > 1) KeepNeighbours(term, part, fields);
    for (std::size_t row = 0; row < matched.size(); ++row) {
      matched[row] &= static_cast<std::uint8_t>((fields[row] != 0) != term.excluded);
    }
  }
  if (query.tempos.empty() && query.years.empty()) return;
  for (std::size_t row = 0; row < matched.size(); ++row) {
    if (matched[row] == 0) continue;
    const bool lies =
        InRanges(query.tempos, [&](const NumberRange& range) { return index.TempoIn(row, range); }) &&
        InRanges(query.years, [&](const NumberRange& range) { return index.YearIn(row, range); });
    matched[row] = lies ? 1 : 0;
  }
}

void SearchIndex::KeepNeighbours(const SearchTerm& term, int part, Bits& fields) const {
  std::string text;
  for (const Placed& placed : placed_) {
    if (placed.place.part != part) continue;
    for (int i = 0; i < placed.stretch.rows; ++i) {
      std::uint8_t& held = fields[placed.place.row + static_cast<std::size_t>(i)];
      if (held != 0 && !Holds(placed.stretch.first_row + i, held, term, text)) held = 0;
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
  return parts_[0].Bytes() + parts_[1].Bytes() + matched_[0].capacity() + matched_[1].capacity() +
         fields_.capacity() + placed_.capacity() * sizeof(Placed) +
         large_.size() * (sizeof(std::pair<const void*, std::size_t>) + 2 * sizeof(void*));
}

}  // namespace catalogue
