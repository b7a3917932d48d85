// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/PlainFolders.h"

#include <chrono>
#include <filesystem>
#include <system_error>

#include "support/Sentences.h"

namespace catalogue {
namespace {

namespace fs = std::filesystem;

/// As coarse as file systems on sticks count.
constexpr std::chrono::seconds kFresh{2};

}  // namespace

support::Result<FolderContent> PlainFolders::List(const std::string& folder, const Wanted& wanted) {
  std::error_code error;
  FolderContent content;
  content.identity = fs::canonical(folder, error).string();
  if (error || !fs::is_directory(folder, error)) {
    return support::Failed(support::ErrorCode::NotFound, support::Sentence::FolderMissing, {folder});
  }
  fs::directory_iterator entry(folder, error);
  for (const fs::directory_iterator end; !error && entry != end; entry.increment(error)) {
    const std::string name = entry->path().filename().string();
    std::error_code ignored;
    if (entry->is_directory(ignored)) {
      content.folders.push_back(name);
    } else if (wanted(name)) {
      content.files.push_back({name, {}});
    }
  }
  if (error) {
    return support::Failed(support::ErrorCode::Unreadable, support::Sentence::FolderUnreadable, {folder});
  }
  return content;
}

void PlainFolders::Look(const std::string& folder, std::vector<ListedFile>& files) {
  const auto now = fs::file_time_type::clock::now();
  for (ListedFile& file : files) {
    const fs::path path = fs::path(folder) / file.name;
    std::error_code error;
    const std::uintmax_t size = fs::file_size(path, error);
    const auto modified = error ? fs::file_time_type{} : fs::last_write_time(path, error);
    if (error) continue;
    file.stamp = {static_cast<std::int64_t>(size), modified.time_since_epoch().count()};
    file.fresh = modified > now - kFresh;
  }
}

}  // namespace catalogue
