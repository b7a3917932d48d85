// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue/track_table.h"
#include "support/ProgramFolder.h"
#include "support/Result.h"
#include "support/Sentences.h"
#include "support/ports/FileSaver.h"

namespace catalogue {

/// What a load found: whole rows are in the table, the others are only counted.
struct IndexReport {
  int rows = 0;
  int short_rows = 0;   ///< fewer cells than the table has columns
  int long_rows = 0;    ///< more
  int broken_rows = 0;  ///< an escape that is none, or a line that no table can have written
  [[nodiscard]] int Skipped() const { return short_rows + long_rows + broken_rows; }
};

/// Reads an index piece by piece: one row a line, cells with a tab between them; "\t", "\r", "\n" and "\\"
/// stand for a tab, the line ends and the backslash. Any line end is understood.
class IndexParser {
 public:
  /// Rows are appended to the table, which outlives the parser.
  explicit IndexParser(track_table& table);
  void Feed(std::string_view piece);
  /// Takes a last line without an end. Nothing is fed after that.
  IndexReport Finish();

 private:
  /// Takes those that the piece begins with off it.
  void TakePlainLines(std::string_view& piece);
  void TakeLine(std::string_view line);
  void Count(std::size_t cells);
  [[nodiscard]] bool Unescape(std::string_view& cell, std::string& storage) const;

  track_table& table_;
  std::string unfinished_;
  bool skipping_ = false;  ///< to the end of a line that is too long
  bool after_return_ = false;
  std::vector<std::string_view> cells_;
  std::vector<std::string> unescaped_;
  IndexReport report_;
};

/// Replaces the table's rows by those of the file; a second thread reads half of a large one. A missing file
/// (ErrorCode::NotFound) leaves it empty, and so does an unreadable one. Paths that are kept from the file's
/// folder on become full ones.
support::Result<IndexReport> LoadIndex(const std::filesystem::path& path, track_table& table,
                                       const support::Sentences& say = {});

/// Writes a table as index text piece by piece.
class IndexPrinter {
 public:
  /// The table outlives the printer and does not change meanwhile. What lies below the folder is written as
  /// it is kept there; an empty one leaves every path as it stands.
  explicit IndexPrinter(const track_table& table, const std::filesystem::path& folder = {});
  /// Empty at the end. Valid until the next call.
  std::string_view Next();

 private:
  void AppendRow(int row);
  /// With their paths as they are kept.
  void AppendLines(std::string_view lines);

  const track_table& table_;
  const support::ProgramFolder folder_;
  const std::string below_;  ///< what the paths below the folder begin with; empty where all stay
  const int path_column_;
  int row_ = 1;
  std::string piece_;
  std::vector<std::string_view> cells_;
};

/// The whole table as index text, CR LF line ends.
[[nodiscard]] std::string IndexText(const track_table& table);

enum class Paths { AsTheyStand, FromTheFolder };
/// FromTheFolder: files below the index's own folder are kept so that both can be moved together.
support::Result<void> SaveIndex(support::FileSaver& files, const std::filesystem::path& path,
                                const track_table& table, Paths paths = Paths::AsTheyStand);

/// The index names below the program folder.
inline constexpr std::string_view kTrackIndex = "\\tlv.ndx";
inline constexpr std::string_view kKaraokeIndex = "\\tlvkaraoke.ndx";

}  // namespace catalogue
