// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace catalogue {

class RowBlock;

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
/// Rows move between tables cell by cell; hidden columns travel with them. Made for a million rows: they lie
/// in blocks as the lines of their index, and a copy of the table shares the blocks until one side changes
/// them, so that a worker is given a snapshot without a wait. Each block knows the names of its rows' files
/// by a number, so that the rows of a file are found without a look at their text, in every copy and whatever
/// was changed before. Threads: one at a time; different copies are independent.
class track_table {
 public:
  /// A longer text is cut to this many bytes.
  static constexpr std::size_t kLongestCell = 65535;
  static constexpr std::size_t kMostColumns = 16;

  explicit track_table(std::span<const Column> columns);
  ~track_table();
  track_table(const track_table& other);
  track_table& operator=(const track_table& other);
  track_table(track_table&& other) noexcept;
  track_table& operator=(track_table&& other) noexcept;

  [[nodiscard]] std::span<const Column> Columns() const { return columns_; }
  [[nodiscard]] int Rows() const;
  /// Empty for a row or column that is not there. Valid until the table changes.
  [[nodiscard]] std::string_view Cell(int row, int column) const;
  /// Fills in the row's cells from the first column on; empty ones for a row that is not there.
  void Cells(int row, std::span<std::string_view> cells) const;
  /// Shows one column's cell of each row, quicker than asking for them; stops when visit gives false.
  void VisitColumn(int column, const std::function<bool(int row, std::string_view cell)>& visit) const;
  /// The first row whose cell in this column is the text, 0 when there is none. Looks at every row, but for
  /// the column of the files' names.
  [[nodiscard]] int FindRow(int column, std::string_view text) const;
  /// The column of the files' names; 0 where there is none.
  [[nodiscard]] int FileColumn() const { return file_column_; }
  /// The rows of a file. In microseconds, also among a million.
  [[nodiscard]] std::vector<int> RowsOf(std::string_view file) const;
  /// The first row of each file, 0 where it has none. Takes hardly longer for thousands than for one.
  [[nodiscard]] std::vector<int> FirstRowsOf(std::span<const std::string> files) const;
  /// Does nothing for a row or column that is not there.
  void SetCell(int row, int column, std::string_view text);
  /// Appends an empty row and returns its number.
  int AddRow();
  /// Appends a row with these cells; missing ones are empty, surplus ones dropped. The cells may be views
  /// into this table.
  int AddRow(std::span<const std::string_view> cells);
  /// Appends a row for each plain line that the text begins with, a tab between cells and CR LF behind them,
  /// and gives the bytes taken. Stops before a line with a cell too many or too few, a control character or a
  /// backslash in one, or without its end.
  std::size_t AddLines(std::string_view text);
  struct Lines {
    std::string_view text;
    int rows = 0;
  };
  /// The rows from this one on that lie together as such lines; none where this one is not plain. Valid until
  /// the table changes.
  [[nodiscard]] Lines LinesFrom(int row) const;
  /// Copies a row's cells in column order to a new row of this table.
  int AppendFrom(const track_table& other, int row);
  /// Copies a row of another table to a new one before this row; one past the last: at the end.
  void InsertFrom(int before, const track_table& other, int row);
  /// Puts another table's row in the place of this one.
  void ReplaceRow(int row, const track_table& other, int other_row);
  /// Moves all rows of another table of the same columns before this row of our own. For many rows: they stay
  /// in their blocks.
  void InsertAll(int before, track_table&& other);
  /// Moves all rows of another table of the same columns behind our own.
  void AppendAll(track_table&& other);
  /// Copies rows that follow each other in a table of the same columns; most of them stay shared with it.
  void AppendRows(const track_table& other, int first, int count);
  void RemoveRow(int row);
  /// Requires: ascending, each once. Copies no text.
  void RemoveRows(std::span<const int> rows);
  void Clear();
  /// The rows that may differ since one table was copied from the other: all that lie in blocks which only
  /// this one has.
  [[nodiscard]] std::vector<int> RowsNotSharedWith(const track_table& other) const;
  /// Rows that lie together. Two copies of a table have the same stretch where neither changed it.
  struct Stretch {
    const void* identity;  ///< told apart for as long as a copy holds it
    int first_row;
    int rows;
  };
  [[nodiscard]] std::vector<Stretch> Stretches() const;
  /// Nothing was changed in either since one was copied from the other. Quick.
  [[nodiscard]] bool IsCopyOf(const track_table& other) const;

 private:
  struct Place {
    std::size_t slot;
    std::size_t row;  ///< within the block, from 0
  };
  /// A block and the number of rows before it. A shared block is copied before it is changed.
  struct Slot {
    std::shared_ptr<RowBlock> block;
    int rows_before = 0;
    mutable bool shared = false;
  };

  [[nodiscard]] bool Has(int row, int column) const;
  /// Empty for a row that is not there.
  [[nodiscard]] std::string_view Row(int row) const;
  [[nodiscard]] Place Find(int row) const;
  /// Requires: the row is there.
  void PutRow(int row, std::span<const std::string_view> cells);
  /// Stops when visit gives false.
  template <typename Visit>
  void VisitRowsOf(std::string_view file, const Visit& visit) const;
  /// The number of a row's file.
  [[nodiscard]] std::uint32_t NameOf(std::string_view row) const;
  RowBlock& Writable(std::size_t slot);
  /// Makes two blocks of one. Requires: neither is empty.
  void Cut(std::size_t slot, std::size_t rows_in_first);
  /// The last block, or a new one where it does not hold so many more rows.
  RowBlock& BlockFor(std::size_t rows, std::size_t bytes);
  /// Leaves no block where no row is left.
  void TakeFrom(std::size_t slot, int before, std::span<const int> rows);

  std::span<const Column> columns_;
  int file_column_;  ///< 0: none
  std::vector<Slot> slots_;
};

}  // namespace catalogue
