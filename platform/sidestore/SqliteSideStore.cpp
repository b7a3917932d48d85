// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/sidestore/SqliteSideStore.h"

#include <sqlite3.h>

#include <cstring>
#include <fstream>
#include <string>
#include <system_error>
#include <utility>

#include "platform/sidestore/SoundContent.h"

namespace platform::sidestore {
namespace {

constexpr int kPatience = 2000;  ///< ms, for another program that is writing

constexpr const char* kLayOut =
    "PRAGMA journal_mode = WAL; PRAGMA synchronous = NORMAL; PRAGMA cache_size = -16384;"
    "CREATE TABLE IF NOT EXISTS side (path BLOB NOT NULL, part INTEGER NOT NULL, size INTEGER NOT NULL,"
    " modified INTEGER NOT NULL, checksum INTEGER NOT NULL, bytes BLOB NOT NULL, PRIMARY KEY (path, part))";

bool IsDamage(int code) {
  const int kind = code & 0xFF;
  return kind == SQLITE_CORRUPT || kind == SQLITE_NOTADB;
}

/// Of the bytes together with what they belong to, because a damaged page may still be a page. As FNV-1a, but
/// eight bytes at a time and the upper half folded down, or it would be a tenth of a scan.
std::int64_t Checksum(std::string_view path, int part, std::string_view bytes) {
  std::uint64_t hash = 14695981039346656037ULL + static_cast<std::uint64_t>(part);
  const auto mix = [&hash](std::uint64_t word) {
    hash = (hash ^ word) * 1099511628211ULL;
    hash ^= hash >> 32;
  };
  for (std::string_view text : {path, bytes}) {
    mix(text.size());
    for (std::uint64_t word = 0; text.size() >= sizeof(word); text.remove_prefix(sizeof(word))) {
      std::memcpy(&word, text.data(), sizeof(word));
      mix(word);
    }
    for (const char byte : text) mix(static_cast<unsigned char>(byte));
  }
  return static_cast<std::int64_t>(hash);
}

void BindBytes(sqlite3_stmt* statement, int place, std::string_view bytes) {
  // An empty view may have no address, which would be a NULL.
  sqlite3_bind_blob64(statement, place, bytes.empty() ? "" : bytes.data(), bytes.size(), SQLITE_STATIC);
}

std::string_view ColumnBytes(sqlite3_stmt* statement, int column) {
  const auto* const data = static_cast<const char*>(sqlite3_column_blob(statement, column));
  const int size = sqlite3_column_bytes(statement, column);
  return data == nullptr ? std::string_view() : std::string_view(data, static_cast<std::size_t>(size));
}

}  // namespace

void SqliteSideStore::Closer::operator()(sqlite3* file) const {
  sqlite3_close_v2(file);
}

void SqliteSideStore::Closer::operator()(sqlite3_stmt* statement) const {
  sqlite3_finalize(statement);
}

SqliteSideStore::SqliteSideStore(std::filesystem::path file) : file_(std::move(file)) {}

SqliteSideStore::~SqliteSideStore() = default;

std::optional<catalogue::FileStamp> SqliteSideStore::StampOf(const std::string& path) {
  std::error_code error;
  const auto size = std::filesystem::file_size(path, error);
  if (error) return std::nullopt;
  const auto modified = std::filesystem::last_write_time(path, error);
  if (error) return std::nullopt;
  return catalogue::FileStamp{static_cast<std::int64_t>(size), modified.time_since_epoch().count()};
}

int SqliteSideStore::Open() {
  sqlite3* opened = nullptr;
  constexpr int kWays[] = {SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, SQLITE_OPEN_READONLY};
  int code = SQLITE_OK;
  for (const int way : kWays) {
    code = sqlite3_open_v2(file_.c_str(), &opened, way | SQLITE_OPEN_FULLMUTEX, nullptr);
    database_.reset(opened);
    if (code == SQLITE_OK) break;
  }
  if (code != SQLITE_OK) {
    database_.reset();
    return code;
  }
  sqlite3_busy_timeout(database_.get(), kPatience);
  code = sqlite3_exec(database_.get(), kLayOut, nullptr, nullptr, nullptr);
  return IsDamage(code) ? code : SQLITE_OK;  // one that cannot be written is still read
}

void SqliteSideStore::OpenOnce() {
  if (std::exchange(tried_, true)) return;
  if (IsDamage(Open())) SetAside();
}

void SqliteSideStore::SetAside() {
  for (Statement* kept : {&read_, &drop_, &put_, &keeps_}) kept->reset();
  database_.reset();
  std::error_code ignored;
  std::filesystem::path aside;
  constexpr int kMostTries = 100;
  for (int number = 1; number <= kMostTries; ++number) {
    aside = file_.native() + ".damaged-" + std::to_string(number);
    if (!std::filesystem::exists(aside, ignored)) break;
  }
  for (const char* const journal : {"-wal", "-shm"}) {
    std::filesystem::remove(file_.native() + journal, ignored);
  }
  std::filesystem::rename(file_, aside, ignored);
  if (ignored || IsDamage(Open())) database_.reset();
}

sqlite3_stmt* SqliteSideStore::Prepare(Statement& kept, const char* text) {
  if (kept != nullptr) {
    sqlite3_reset(kept.get());
    return kept.get();
  }
  sqlite3_stmt* statement = nullptr;
  const int code =
      sqlite3_prepare_v3(database_.get(), text, -1, SQLITE_PREPARE_PERSISTENT, &statement, nullptr);
  kept.reset(statement);
  if (IsDamage(code)) SetAside();
  return kept.get();
}

std::optional<std::string> SqliteSideStore::Read(const std::string& path, const catalogue::FileStamp& stamp,
                                                 catalogue::SidePart part) {
  support::MutexLock lock(mutex_);
  OpenOnce();
  if (database_ == nullptr) return std::nullopt;
  sqlite3_stmt* const statement = Prepare(
      read_, "SELECT bytes, checksum FROM side WHERE path = ? AND part = ? AND size = ? AND modified = ?");
  if (statement == nullptr) return std::nullopt;
  BindBytes(statement, 1, path);
  sqlite3_bind_int(statement, 2, static_cast<int>(part));
  sqlite3_bind_int64(statement, 3, stamp.size);
  sqlite3_bind_int64(statement, 4, stamp.modified);
  const int code = sqlite3_step(statement);
  std::optional<std::string> read;
  if (code == SQLITE_ROW) {
    const std::string_view bytes = ColumnBytes(statement, 0);
    const bool sound = sqlite3_column_int64(statement, 1) == Checksum(path, static_cast<int>(part), bytes);
    if (sound) read = bytes;
  }
  sqlite3_reset(statement);  // one that is left standing holds the database's pages
  if (IsDamage(code)) SetAside();
  return read;
}

std::optional<std::string> SqliteSideStore::ContentOf(const std::string& path) {
  std::error_code error;
  if (!std::filesystem::is_regular_file(path, error)) return std::nullopt;  // opening a pipe would wait
  const auto size = std::filesystem::file_size(path, error);
  std::ifstream file(path, std::ios::binary);
  if (error || !file) return std::nullopt;
  return ContentText(file, FindSound(file, size));
}

bool SqliteSideStore::KeepsSounds() {
  return Keeps(catalogue::PathOfContent(""));
}

std::optional<std::string> SqliteSideStore::KeptContentOf(const std::string& path) {
  std::error_code error;
  if (!std::filesystem::is_regular_file(path, error)) return std::nullopt;
  const auto size = std::filesystem::file_size(path, error);
  std::ifstream file(path, std::ios::binary);
  if (error || !file) return std::nullopt;
  const SoundSpan sound = FindSound(file, size);
  if (!Keeps(catalogue::PathOfContent(SizeText(sound)))) return std::nullopt;
  auto content = ContentText(file, sound);
  if (content && !Keeps(catalogue::PathOfContent(*content))) content.reset();
  return content;
}

bool SqliteSideStore::Keeps(const std::string& beginning) {
  support::MutexLock lock(mutex_);
  OpenOnce();
  if (database_ == nullptr) return false;
  sqlite3_stmt* const statement =
      Prepare(keeps_, "SELECT path FROM side WHERE path >= ? ORDER BY path LIMIT 1");
  if (statement == nullptr) return false;
  BindBytes(statement, 1, beginning);
  const int code = sqlite3_step(statement);
  const bool keeps = code == SQLITE_ROW && ColumnBytes(statement, 0).starts_with(beginning);
  sqlite3_reset(statement);
  if (IsDamage(code)) SetAside();
  return keeps;
}

int SqliteSideStore::Replace(const catalogue::SideEntry& entry) {
  sqlite3_stmt* const drop =
      Prepare(drop_, "DELETE FROM side WHERE path = ? AND (size <> ? OR modified <> ?)");
  if (drop == nullptr) return SQLITE_ERROR;
  BindBytes(drop, 1, entry.path);
  sqlite3_bind_int64(drop, 2, entry.stamp.size);
  sqlite3_bind_int64(drop, 3, entry.stamp.modified);
  const int dropped = sqlite3_step(drop);
  sqlite3_reset(drop);
  if (dropped != SQLITE_DONE) return dropped;
  sqlite3_stmt* const put = Prepare(
      put_, "INSERT OR REPLACE INTO side (path, part, size, modified, checksum, bytes) VALUES (?,?,?,?,?,?)");
  if (put == nullptr) return SQLITE_ERROR;
  BindBytes(put, 1, entry.path);
  sqlite3_bind_int(put, 2, static_cast<int>(entry.part));
  sqlite3_bind_int64(put, 3, entry.stamp.size);
  sqlite3_bind_int64(put, 4, entry.stamp.modified);
  sqlite3_bind_int64(put, 5, Checksum(entry.path, static_cast<int>(entry.part), entry.bytes));
  BindBytes(put, 6, entry.bytes);
  const int done = sqlite3_step(put);
  sqlite3_reset(put);
  return done;
}

int SqliteSideStore::ReplaceAll(std::span<const catalogue::SideEntry> entries) {
  for (const catalogue::SideEntry& entry : entries) {
    if (const int code = Replace(entry); code != SQLITE_DONE) return code;
  }
  return SQLITE_DONE;
}

support::Result<void> SqliteSideStore::Write(const std::string& path, const catalogue::FileStamp& stamp,
                                             catalogue::SidePart part, std::string_view bytes) {
  const catalogue::SideEntry entry{path, stamp, part, std::string(bytes)};
  return WriteAll({&entry, 1});
}

support::Result<void> SqliteSideStore::WriteAll(std::span<const catalogue::SideEntry> entries) {
  support::MutexLock lock(mutex_);
  OpenOnce();
  constexpr int kTries = 2;  // the second one goes to a new file, when the first met damage
  int code = SQLITE_CANTOPEN;
  for (int attempt = 0; attempt < kTries && database_ != nullptr; ++attempt) {
    sqlite3_exec(database_.get(), "BEGIN IMMEDIATE", nullptr, nullptr, nullptr);
    code = ReplaceAll(entries);
    if (code == SQLITE_DONE &&
        sqlite3_exec(database_.get(), "COMMIT", nullptr, nullptr, nullptr) == SQLITE_OK) {
      return {};
    }
    if (database_ != nullptr) sqlite3_exec(database_.get(), "ROLLBACK", nullptr, nullptr, nullptr);
    if (IsDamage(code)) SetAside();
  }
  const std::string why = database_ != nullptr ? sqlite3_errmsg(database_.get()) : "it cannot be opened";
  return support::Error{
      support::ErrorCode::Unreadable,
      "What was found out about files cannot be kept in \"" + file_.string() + "\": " + why + "."};
}

}  // namespace platform::sidestore
