// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "catalogue/track_table.h"

namespace bench {

/// A track as a program without a table of its own would hold it.
using TrackStruct = std::array<std::string, 13>;

/// The reference: the same rows in a database file, written whole in one transaction with prepared statements
/// and flushed to the disk as SQLite does by default.
void SaveWithSqlite(const std::filesystem::path& path, const catalogue::track_table& table);
[[nodiscard]] std::vector<TrackStruct> LoadWithSqlite(const std::filesystem::path& path);

/// The reference for searching and sorting: the rows in a database in memory.
class SqliteSearch {
 public:
  explicit SqliteSearch(const catalogue::track_table& table);
  ~SqliteSearch();
  SqliteSearch(const SqliteSearch&) = delete;
  SqliteSearch& operator=(const SqliteSearch&) = delete;
  /// How many rows hold each of the words, in any of the columns that are searched.
  [[nodiscard]] std::size_t Like(const std::string& words) const;
  /// Column from 1.
  void OrderBy(int column, bool as_number) const;

 private:
  struct Parts;
  [[nodiscard]] std::size_t Run(const std::string& statement) const;
  std::unique_ptr<Parts> parts_;
};

}  // namespace bench
