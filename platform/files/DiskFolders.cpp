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

bool IsFolder(DIR* folder, const dirent& entry) {
  if (entry.d_type != DT_LNK && entry.d_type != DT_UNKNOWN) return entry.d_type == DT_DIR;
  struct stat status {};
  return fstatat(dirfd(folder), entry.d_name, &status, 0) == 0 && S_ISDIR(status.st_mode);
}

void Take(DIR* folder, const dirent& entry, const catalogue::FolderReader::Wanted& wanted,
          FolderContent& content) {
  const std::string_view name = entry.d_name;
  if (name == "." || name == "..") return;
  if (IsFolder(folder, entry)) {
    content.folders.emplace_back(name);
  } else if (wanted(name)) {
    content.files.push_back({std::string(name), {}});
  }
}

}  // namespace

support::Result<FolderContent> DiskFolders::List(const std::string& folder, const Wanted& wanted) {
  const OpenFolder opened(opendir(folder.c_str()));
  if (opened == nullptr) return Refused(folder, errno);
  struct stat status {};
  if (fstat(dirfd(opened.get()), &status) != 0) return Refused(folder, errno);
  FolderContent content;
  content.identity = std::to_string(status.st_dev) + ":" + std::to_string(status.st_ino);
  for (;;) {
    errno = 0;
    const dirent* const entry = readdir(opened.get());
    if (entry == nullptr) break;
    Take(opened.get(), *entry, wanted, content);
  }
  if (errno != 0) return Refused(folder, errno);
  return content;
}

void DiskFolders::Look(const std::string& folder, std::vector<catalogue::ListedFile>& files) {
  const int opened = open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC);
  if (opened < 0) return;
  timespec now{};
  clock_gettime(CLOCK_REALTIME, &now);
  for (catalogue::ListedFile& file : files) {
    struct stat status {};
    if (fstatat(opened, file.name.c_str(), &status, 0) != 0) continue;
    file.stamp = {static_cast<std::int64_t>(status.st_size), FileTime(status.st_mtim)};
    file.fresh = file.stamp.modified > FileTime(now) - kFresh;
  }
  close(opened);
}

}  // namespace platform::files
