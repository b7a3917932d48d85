// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <memory>

#include "catalogue/ports/SideStore.h"
#include "support/Mutex.h"

struct sqlite3;
struct sqlite3_stmt;

namespace platform::sidestore {

/// The side store in one SQLite file.
///
/// The file is opened at the first call. One that is damaged is set aside under another name and a new one is
/// begun; one that cannot be written is read, and one that cannot be opened is empty. A kill loses what was
/// written last, never what was there before. Threads: any, one lock around everything.
class SqliteSideStore final : public catalogue::SideStore {
 public:
  explicit SqliteSideStore(std::filesystem::path file);
  ~SqliteSideStore() override;

  [[nodiscard]] std::optional<catalogue::FileStamp> StampOf(const std::string& path) override;
  [[nodiscard]] std::optional<std::string> Read(const std::string& path, const catalogue::FileStamp& stamp,
                                                catalogue::SidePart part) override DJ_EXCLUDES(mutex_);
  [[nodiscard]] std::optional<std::string> ContentOf(const std::string& path) override;
  [[nodiscard]] bool KeepsSounds() override DJ_EXCLUDES(mutex_);
  [[nodiscard]] std::optional<std::string> KeptContentOf(const std::string& path) override
      DJ_EXCLUDES(mutex_);
  support::Result<void> Write(const std::string& path, const catalogue::FileStamp& stamp,
                              catalogue::SidePart part, std::string_view bytes) override DJ_EXCLUDES(mutex_);
  support::Result<void> WriteAll(std::span<const catalogue::SideEntry> entries) override DJ_EXCLUDES(mutex_);

 private:
  struct Closer {
    void operator()(sqlite3* file) const;
    void operator()(sqlite3_stmt* statement) const;
  };
  using Database = std::unique_ptr<sqlite3, Closer>;
  using Statement = std::unique_ptr<sqlite3_stmt, Closer>;

  void OpenOnce() DJ_REQUIRES(mutex_);
  [[nodiscard]] int Open() DJ_REQUIRES(mutex_);
  void SetAside() DJ_REQUIRES(mutex_);
  /// The statement, prepared once and ready to be run; null when it cannot be.
  [[nodiscard]] sqlite3_stmt* Prepare(Statement& kept, const char* text) DJ_REQUIRES(mutex_);
  /// Whether something is kept of a path that begins with the text.
  [[nodiscard]] bool Keeps(const std::string& beginning) DJ_EXCLUDES(mutex_);
  [[nodiscard]] int Replace(const catalogue::SideEntry& entry) DJ_REQUIRES(mutex_);
  [[nodiscard]] int ReplaceAll(std::span<const catalogue::SideEntry> entries) DJ_REQUIRES(mutex_);

  const std::filesystem::path file_;
  support::Mutex mutex_;
  bool tried_ DJ_GUARDED_BY(mutex_) = false;
  Database database_ DJ_GUARDED_BY(mutex_);
  // Of this database; gone before it is.
  Statement read_ DJ_GUARDED_BY(mutex_);
  Statement drop_ DJ_GUARDED_BY(mutex_);
  Statement put_ DJ_GUARDED_BY(mutex_);
  Statement keeps_ DJ_GUARDED_BY(mutex_);
};

}  // namespace platform::sidestore
