// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace catalogue {

/// One column of a table: the key is its name in files and in the program.
struct Column {
  std::string_view key;
  int width;     ///< in the playlist grids, in pixels at 96 dpi; 0 where it is hidden
  bool visible;  ///< in the playlist grids
};

/// Columns of the track record, 1-based, in the order of the files.
namespace track {
inline constexpr int kArtist = 1, kTitle = 2, kTime = 3, kFilename = 4, kBpm = 5, kGenre = 6, kAlbum = 7,
                     kYear = 8, kBitrate = 9, kFreq = 10, kGain = 11, kStartMixPoint = 12, kEndMixPoint = 13;
}
/// Columns of the karaoke record, 1-based.
namespace karaoke {
inline constexpr int kArtist = 1, kTitle = 2, kOrigin = 3, kGenre = 4, kTime = 5, kFilename = 6;
}

[[nodiscard]] std::span<const Column> TrackColumns();
[[nodiscard]] std::span<const Column> KaraokeColumns();

/// A grid of text cells with 1-based rows and columns: the catalogue, the karaoke catalogue and each
/// playlist.
///
/// Rows move between tables cell by cell; hidden columns travel with them. Made for a million rows.
/// Threads: one at a time; a snapshot for other threads is a copy.
class track_table {
 public:
  explicit track_table(std::span<const Column> columns);

  [[nodiscard]] std::span<const Column> Columns() const { return columns_; }
  [[nodiscard]] int Rows() const;
  /// Empty for a row or column that is not there. Valid until the table changes.
  [[nodiscard]] std::string_view Cell(int row, int column) const;
  /// Does nothing for a row or column that is not there.
  void SetCell(int row, int column, std::string_view text);
  /// Appends an empty row and returns its number.
  int AddRow();
  /// Appends a row with these cells; missing ones are empty, surplus ones dropped.
  int AddRow(std::span<const std::string_view> cells);
  /// Copies a row's cells in column order to a new row of this table.
  int AppendFrom(const track_table& other, int row);
  void RemoveRow(int row);
  void Clear();

 private:
  std::span<const Column> columns_;
  std::vector<std::vector<std::string>> rows_;
};

}  // namespace catalogue
