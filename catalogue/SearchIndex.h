// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "catalogue/SearchQuery.h"
#include "catalogue/WordIndex.h"
#include "catalogue/track_table.h"

namespace catalogue {

/// Where a table's rows are searched, by column; 0 where it has none. The file is its name without folders.
struct SearchColumns {
  std::array<int, 6> fields;  ///< in the order of SearchField's bits
  int tempo = 0;
};
inline constexpr SearchColumns kTrackSearch{
    {track::kArtist, track::kTitle, track::kAlbum, track::kGenre, track::kYear, track::kFilename},
    track::kBpm};
inline constexpr SearchColumns kKaraokeSearch{
    {karaoke::kArtist, karaoke::kTitle, karaoke::kOrigin, karaoke::kGenre, 0, karaoke::kFilename}, 0};

/// Finds the rows of a table that hold what was typed.
///
/// It follows a table by its copies: only stretches that were changed are read again, into a small second
/// index beside the large one, until that has grown too large itself. Threads: one at a time.
class SearchIndex {
 public:
  explicit SearchIndex(const SearchColumns& columns);

  /// Reads what is new in the table; seconds for a million rows that it has never seen. False when it was
  /// told to stop: then it still is the index of the table before.
  bool Follow(const track_table& table, const std::atomic<bool>& stop);
  [[nodiscard]] const track_table& Table() const { return table_; }
  /// Rows (from 1) in the table's order, or in the one given: all rows of the table, each once.
  [[nodiscard]] std::vector<int> Find(const SearchQuery& query,
                                      const std::vector<int>* order = nullptr) const;
  /// Memory taken, without the table.
  [[nodiscard]] std::size_t Bytes() const;

 private:
  using Stretch = track_table::Stretch;
  /// Where the rows of a stretch lie in a part.
  struct Place {
    int part = 0;
    std::size_t row = 0;
  };
  struct Placed {
    Stretch stretch;
    Place place;
  };

  /// How many of a part's rows, and which.
  [[nodiscard]] std::size_t MatchPart(const SearchQuery& query, int part, RowBits& matched) const;
  [[nodiscard]] bool Read(const track_table& table, const std::vector<Stretch>& stretches,
                          const std::atomic<bool>& stop, WordIndex& read) const;
  void PlaceAll(const std::vector<Stretch>& stretches, const std::vector<Stretch>& fresh, int part);
  void MatchTerm(const SearchTerm& term, int part, RowBits& matched) const;
  /// The rows that hold the words of a term beside each other.
  void MatchNeighbours(const SearchTerm& term, int part, RowBits& matched) const;
  [[nodiscard]] bool Holds(int row, std::uint8_t fields, const SearchTerm& term, std::string& text) const;

  const SearchColumns columns_;
  track_table table_{TrackColumns()};
  std::array<WordIndex, 2> parts_;          ///< the large one, and what changed since
  std::vector<Placed> placed_;              ///< in the order of the table
  mutable std::array<RowBits, 2> matched_;  ///< kept, because fresh memory costs more than looking
  mutable RowBits of_term_;
  std::unordered_map<const void*, std::size_t> large_;  ///< where a stretch lies in the large part
};

}  // namespace catalogue
