// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <map>
#include <string_view>
#include <vector>

#include "support/Mutex.h"
#include "support/ports/FileSaver.h"

namespace app {

/// Saves through another saver, and knows what the program keeps for itself and could not save.
///
/// A file counts until it is saved again. Files elsewhere, which the user named, do not: their failure is
/// told where they were named. Threads: any. The saver outlives it.
class SaveWatch final : public support::FileSaver {
 public:
  explicit SaveWatch(support::FileSaver& saver) : saver_(saver) {}

  /// Files straight in this folder count from now on, but for *.tmp, which nobody keeps.
  void Keep(const std::filesystem::path& folder) DJ_EXCLUDES(mutex_);
  support::Result<void> Save(const std::filesystem::path& path, std::string_view content) override;
  support::Result<void> SaveSwiftly(const std::filesystem::path& path, std::string_view content) override;
  support::Result<void> SavePieces(const std::filesystem::path& path, const Pieces& next) override;

  /// Of a file that is saved in another way: what came of it, which is given back.
  support::Result<void> Note(const std::filesystem::path& path, support::Result<void> saved)
      DJ_EXCLUDES(mutex_);

  struct Unsaved {
    std::size_t files = 0;
    support::Error why{};  ///< of the first by name
    bool operator==(const Unsaved& other) const { return files == other.files && why.text == other.why.text; }
  };
  [[nodiscard]] Unsaved Now() const DJ_EXCLUDES(mutex_);

 private:
  support::FileSaver& saver_;
  mutable support::Mutex mutex_;
  std::vector<std::filesystem::path> folders_ DJ_GUARDED_BY(mutex_);
  std::map<std::filesystem::path, support::Error> unsaved_ DJ_GUARDED_BY(mutex_);
};

}  // namespace app
