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

void Look(const fs::directory_entry& entry, const FolderReader::Wanted& wanted, FolderContent& content) {
  std::error_code error;
  const std::string name = entry.path().filename().string();
  if (entry.is_directory(error)) return content.folders.push_back(name);
  if (!wanted(name)) return;
  const std::uintmax_t size = entry.file_size(error);
  const auto modified = error ? fs::file_time_type{} : entry.last_write_time(error);
  // One that leads nowhere is listed too, so that it can be told.
  if (error) return content.files.push_back({name, {}, true});
  content.files.push_back({name,
                           {static_cast<std::int64_t>(size), modified.time_since_epoch().count()},
                           modified > fs::file_time_type::clock::now() - kFresh});
}

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
    Look(*entry, wanted, content);
  }
  if (error) {
    return support::Failed(support::ErrorCode::Unreadable, support::Sentence::FolderUnreadable, {folder});
  }
  return content;
}

}  // namespace catalogue
