// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/files/DiskFolders.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <ctime>
#include <memory>
#include <string_view>

#include "support/Sentences.h"

namespace platform::files {
namespace {

using catalogue::FolderContent;

/// As coarse as file systems on sticks count; in nanoseconds.
constexpr std::int64_t kFresh = 2'000'000'000;

struct FolderCloser {
  void operator()(DIR* folder) const { closedir(folder); }
};
using OpenFolder = std::unique_ptr<DIR, FolderCloser>;

/// As the standard library counts the time of a file.
std::int64_t FileTime(const timespec& time) {
  const std::chrono::sys_time<std::chrono::nanoseconds> since_epoch(std::chrono::seconds(time.tv_sec) +
                                                                    std::chrono::nanoseconds(time.tv_nsec));
  return std::chrono::file_clock::from_sys(since_epoch).time_since_epoch().count();
}

support::Error Refused(const std::string& folder, int reason) {
  using support::ErrorCode;
  using support::Sentence;
  switch (reason) {
    case ENOENT:
    case ENOTDIR:
      return support::Failed(ErrorCode::NotFound, Sentence::FolderMissing, {folder});
    case EACCES:
    case EPERM:
    case ELOOP:
    case ENAMETOOLONG:
      return support::Failed(ErrorCode::Unreadable, Sentence::FolderUnreadable, {folder});
    default:
      return support::Failed(ErrorCode::Unavailable, Sentence::FolderUnreadable, {folder});
  }
}

void Look(DIR* folder, const dirent& entry, std::int64_t now, const catalogue::FolderReader::Wanted& wanted,
          FolderContent& content) {
  const std::string_view name = entry.d_name;
  if (name == "." || name == "..") return;
  if (entry.d_type == DT_DIR) return content.folders.push_back(std::string(name));
  const bool is_file = entry.d_type == DT_REG;
  if (is_file && !wanted(name)) return;
  struct stat status {};
  if (fstatat(dirfd(folder), entry.d_name, &status, 0) != 0) {
    // One that leads nowhere is listed too, so that it can be told.
    if (wanted(name)) content.files.push_back({std::string(name), {}, true});
    return;
  }
  if (S_ISDIR(status.st_mode)) return content.folders.push_back(std::string(name));
  if (!is_file && !wanted(name)) return;
  const std::int64_t modified = FileTime(status.st_mtim);
  content.files.push_back(
      {std::string(name), {static_cast<std::int64_t>(status.st_size), modified}, modified > now - kFresh});
}

}  // namespace

support::Result<FolderContent> DiskFolders::List(const std::string& folder, const Wanted& wanted) {
  const OpenFolder opened(opendir(folder.c_str()));
  if (opened == nullptr) return Refused(folder, errno);
  struct stat status {};
  if (fstat(dirfd(opened.get()), &status) != 0) return Refused(folder, errno);
  FolderContent content;
  content.identity = std::to_string(status.st_dev) + ":" + std::to_string(status.st_ino);
  timespec now{};
  clock_gettime(CLOCK_REALTIME, &now);
  for (;;) {
    errno = 0;
    const dirent* const entry = readdir(opened.get());
    if (entry == nullptr) break;
    Look(opened.get(), *entry, FileTime(now), wanted, content);
  }
  if (errno != 0) return Refused(folder, errno);
  return content;
}

}  // namespace platform::files
