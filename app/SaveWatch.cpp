// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/SaveWatch.h"

#include <algorithm>
#include <utility>

namespace app {

void SaveWatch::Keep(const std::filesystem::path& folder) {
  support::MutexLock lock(mutex_);
  folders_.push_back(folder.lexically_normal());
}

support::Result<void> SaveWatch::Save(const std::filesystem::path& path, std::string_view content) {
  return Note(path, saver_.Save(path, content));
}

support::Result<void> SaveWatch::SaveSwiftly(const std::filesystem::path& path, std::string_view content) {
  return Note(path, saver_.SaveSwiftly(path, content));
}

support::Result<void> SaveWatch::SavePieces(const std::filesystem::path& path, const Pieces& next) {
  return Note(path, saver_.SavePieces(path, next));
}

SaveWatch::Unsaved SaveWatch::Now() const {
  support::MutexLock lock(mutex_);
  if (unsaved_.empty()) return {};
  return {unsaved_.size(), unsaved_.begin()->second};
}

support::Result<void> SaveWatch::Note(const std::filesystem::path& path, support::Result<void> saved) {
  support::MutexLock lock(mutex_);
  const std::filesystem::path file = path.lexically_normal();
  if (saved) {
    unsaved_.erase(file);
  } else if (file.extension() != ".tmp" &&
             std::find(folders_.begin(), folders_.end(), file.parent_path()) != folders_.end()) {
    unsaved_.insert_or_assign(file, saved.Failure());
  }
  return saved;
}

}  // namespace app
