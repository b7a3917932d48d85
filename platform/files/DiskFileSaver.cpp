// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/files/DiskFileSaver.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <memory>
#include <string>
#include <system_error>
#include <utility>

#include "support/Sentences.h"

namespace platform::files {
namespace {

namespace fs = std::filesystem;
using support::Error;
using support::ErrorCode;
using support::Failed;
using support::Result;
using support::Sentence;

constexpr std::string_view kDraftMark = ".saving-";
constexpr int kMaxLinks = 40;  // as many as Linux follows itself
constexpr int kMaxNames = 100;
constexpr off_t kSyncEvery = 8 << 20;  // bytes, so that the disk works while we write on

/// Where the content goes: the end of a chain of links, there or not.
fs::path LinkTarget(fs::path path) {
  std::error_code error;
  for (int i = 0; i < kMaxLinks && fs::is_symlink(fs::symlink_status(path, error)); ++i) {
    const fs::path to = fs::read_symlink(path, error);
    if (error) break;
    path = to.is_absolute() ? to : path.parent_path() / to;
  }
  return path;
}

fs::path FolderOf(const fs::path& target) {
  return target.has_parent_path() ? target.parent_path() : fs::path(".");
}

std::string DraftPrefix(const fs::path& target) {
  // A name may be 255 bytes long; the mark and the numbers need some of them.
  return "." + target.filename().string().substr(0, 200) + std::string(kDraftMark);
}

fs::path DraftName(const fs::path& target) {
  static std::atomic<unsigned> saves{0};
  return FolderOf(target) /
         (DraftPrefix(target) + std::to_string(getpid()) + "-" + std::to_string(saves.fetch_add(1)));
}

/// The new file while it is being written: locked against the clean-up of other processes, and removed
/// unless it was swapped in.
class Draft {
 public:
  Draft(DiskCalls& calls, fs::path path, int file) : calls_(calls), path_(std::move(path)), file_(file) {}
  ~Draft() {
    const int reason = errno;
    if (!swapped_in_) calls_.Remove(path_);
    close(file_);
    errno = reason;
  }
  Draft(const Draft&) = delete;
  Draft& operator=(const Draft&) = delete;

  /// False when a clean-up was faster than our lock.
  bool Claim() {
    struct stat own {};
    return flock(file_, LOCK_EX) == 0 && fstat(file_, &own) == 0 && own.st_nlink > 0;
  }
  bool WriteAll(std::string_view content) {
    while (!content.empty()) {
      const ssize_t written = calls_.Write(file_, content.data(), content.size());
      if (written < 0 && errno == EINTR) continue;
      if (written < 0) return false;
      content.remove_prefix(static_cast<std::size_t>(written));
      written_ += written;
    }
    if (written_ - begun_ >= kSyncEvery) {
      calls_.StartSync(file_, begun_, written_ - begun_);
      begun_ = written_;
    }
    return true;
  }
  bool TakeRightsOf(const struct stat& old) { return calls_.CopyRights(file_, old) == 0; }
  bool Sync() { return calls_.Sync(file_) == 0; }
  bool SwapIn(const fs::path& target) {
    swapped_in_ = calls_.Rename(path_, target) == 0;
    return swapped_in_;
  }

 private:
  DiskCalls& calls_;
  fs::path path_;
  int file_;
  off_t written_ = 0;
  off_t begun_ = 0;  ///< of them the disk has begun with
  bool swapped_in_ = false;
};

/// Null with errno set when the folder takes no new file.
std::unique_ptr<Draft> NewDraft(DiskCalls& calls, const fs::path& target, bool replaces) {
  for (int i = 0; i < kMaxNames; ++i) {
    const fs::path path = DraftName(target);
    // A file that is replaced may be private: nobody else reads the new one before it has the same rights.
    const int file = calls.Create(path, replaces ? 0600 : 0666);
    if (file < 0 && errno == EEXIST) continue;
    if (file < 0) return nullptr;
    auto draft = std::make_unique<Draft>(calls, path, file);
    if (draft->Claim()) return draft;
  }
  errno = EEXIST;
  return nullptr;
}

void RemoveIfAbandoned(DiskCalls& calls, const fs::path& path) {
  const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW);
  if (file < 0) return;
  if (flock(file, LOCK_EX | LOCK_NB) == 0) calls.Remove(path);
  close(file);
}

void RemoveLitter(DiskCalls& calls, const fs::path& target) {
  const std::string prefix = DraftPrefix(target);
  std::error_code error;
  fs::directory_iterator entry(FolderOf(target), error);
  for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
    if (entry->path().filename().string().starts_with(prefix)) RemoveIfAbandoned(calls, entry->path());
  }
}

}  // namespace

Error SaveError(const fs::path& path, int reason) {
  const std::string name = path.string();
  switch (reason) {
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
      return Failed(ErrorCode::Unavailable, Sentence::DiskFull, {name});
    case EACCES:
    case EPERM:
    case EROFS:
      return Failed(ErrorCode::Unreadable, Sentence::NoWriteRight, {name});
    case ENOENT:
    case ENOTDIR:
      return Failed(ErrorCode::NotFound, Sentence::FolderOfFileMissing, {name});
    case EISDIR:
    case EINVAL:
      return Failed(ErrorCode::Unsupported, Sentence::NotReplaceable, {name});
    default:
      return Failed(ErrorCode::Unavailable, Sentence::NotSaved,
                    {name, std::generic_category().message(reason)});
  }
}

Result<void> DiskFileSaver::Save(const fs::path& path, std::string_view content) {
  return SavePieces(path, [&content] { return std::exchange(content, {}); });
}

Result<void> DiskFileSaver::SaveSwiftly(const fs::path& path, std::string_view content) {
  return Put(
      path, [&content] { return std::exchange(content, {}); }, Flush::Later);
}

Result<void> DiskFileSaver::SavePieces(const fs::path& path, const Pieces& next) {
  return Put(path, next, Flush::ToDisk);
}

Result<void> DiskFileSaver::Put(const fs::path& path, const Pieces& next, Flush flush) {
  const fs::path target = LinkTarget(path);
  struct stat old {};
  const bool replaces = stat(target.c_str(), &old) == 0;
  if (replaces && S_ISDIR(old.st_mode)) return SaveError(path, EISDIR);
  if (replaces && !S_ISREG(old.st_mode)) return SaveError(path, EINVAL);
  if (replaces && access(target.c_str(), W_OK) != 0) return SaveError(path, errno);
  RemoveLitter(calls_, target);
  const std::unique_ptr<Draft> draft = NewDraft(calls_, target, replaces);
  if (!draft) return SaveError(path, errno);
  for (std::string_view piece = next(); !piece.empty(); piece = next()) {
    if (!draft->WriteAll(piece)) return SaveError(path, errno);
  }
  if (replaces && !draft->TakeRightsOf(old)) return SaveError(path, errno);
  if (flush == Flush::ToDisk && !draft->Sync()) return SaveError(path, errno);
  if (!draft->SwapIn(target)) return SaveError(path, errno);
  // The new file is in its place whole; a folder that cannot be flushed makes it late, not wrong.
  if (flush == Flush::ToDisk) calls_.SyncFolder(FolderOf(target));
  return {};
}

}  // namespace platform::files
