// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "benchmarks/SqliteTable.h"

#include <sqlite3.h>

#include <cstdlib>
#include <memory>
#include <span>
#include <sstream>
#include <string_view>

namespace bench {

/// Named in the open: a part of SqliteSearch is made of it.
struct SqliteCloser {
  void operator()(sqlite3* database) const { sqlite3_close(database); }
  void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};

namespace {

using Database = std::unique_ptr<sqlite3, SqliteCloser>;
using Statement = std::unique_ptr<sqlite3_stmt, SqliteCloser>;

void Require(bool holds) {
  if (!holds) std::abort();
}

Database Open(const std::filesystem::path& path) {
  sqlite3* database = nullptr;
  Require(sqlite3_open(path.c_str(), &database) == SQLITE_OK);
  return Database(database);
}

void Execute(const Database& database, const char* text) {
  Require(sqlite3_exec(database.get(), text, nullptr, nullptr, nullptr) == SQLITE_OK);
}

Statement Prepare(const Database& database, const char* text) {
  sqlite3_stmt* statement = nullptr;
  Require(sqlite3_prepare_v2(database.get(), text, -1, &statement, nullptr) == SQLITE_OK);
  return Statement(statement);
}

void Fill(const Database& database, const catalogue::track_table& table) {
  Execute(database,
          "CREATE TABLE tracks(a TEXT,b TEXT,c TEXT,d TEXT,e TEXT,f TEXT,g TEXT,h TEXT,i TEXT,"
          "j TEXT,k TEXT,l TEXT,m TEXT)");
  Execute(database, "BEGIN");
  const Statement insert = Prepare(database, "INSERT INTO tracks VALUES(?,?,?,?,?,?,?,?,?,?,?,?,?)");
  std::array<std::string_view, 13> cells;
  for (int row = 1; row <= table.Rows(); ++row) {
    table.Cells(row, cells);
    for (int i = 0; i < 13; ++i) {
      const std::string_view cell = cells[static_cast<std::size_t>(i)];
      sqlite3_bind_text(insert.get(), i + 1, cell.data(), static_cast<int>(cell.size()), SQLITE_STATIC);
    }
    Require(sqlite3_step(insert.get()) == SQLITE_DONE);
    sqlite3_reset(insert.get());
  }
  Execute(database, "COMMIT");
}

}  // namespace

void SaveWithSqlite(const std::filesystem::path& path, const catalogue::track_table& table) {
  std::filesystem::remove(path);
  Fill(Open(path), table);
}

struct SqliteSearch::Parts {
  Database database;
};

SqliteSearch::SqliteSearch(const catalogue::track_table& table)
    : parts_(std::make_unique<Parts>(Parts{Open(":memory:")})) {
  Fill(parts_->database, table);
}

SqliteSearch::~SqliteSearch() = default;

std::size_t SqliteSearch::Run(const std::string& text) const {
  const Statement statement = Prepare(parts_->database, text.c_str());
  std::vector<std::int64_t> rows;
  while (sqlite3_step(statement.get()) == SQLITE_ROW)
    rows.push_back(sqlite3_column_int64(statement.get(), 0));
  return rows.size();
}

std::size_t SqliteSearch::Like(const std::string& words) const {
  std::string wanted = "SELECT rowid FROM tracks WHERE 1";
  std::istringstream reader(words);
  for (std::string word; reader >> word;) {
    std::string any;
    for (const char column : {'a', 'b', 'd', 'f', 'g', 'h'}) {
      any += (any.empty() ? "" : " OR ") + std::string(1, column) + " LIKE '%" + word + "%'";
    }
    wanted += " AND (" + any + ")";
  }
  return Run(wanted);
}

void SqliteSearch::OrderBy(int column, bool as_number) const {
  const std::string name(1, static_cast<char>('a' + column - 1));
  const std::string key = as_number ? "CAST(" + name + " AS REAL)" : name + " COLLATE NOCASE";
  static_cast<void>(Run("SELECT rowid FROM tracks ORDER BY " + key));
}

std::vector<TrackStruct> LoadWithSqlite(const std::filesystem::path& path) {
  const Database database = Open(path);
  const Statement select = Prepare(database, "SELECT * FROM tracks ORDER BY rowid");
  std::vector<TrackStruct> tracks;
  while (sqlite3_step(select.get()) == SQLITE_ROW) {
    TrackStruct& track = tracks.emplace_back();
    for (int i = 0; i < 13; ++i) {
      const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(select.get(), i));
      track[static_cast<std::size_t>(i)].assign(
          text, static_cast<std::size_t>(sqlite3_column_bytes(select.get(), i)));
    }
  }
  return tracks;
}

}  // namespace bench
