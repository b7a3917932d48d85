// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/files/DiskCalls.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

namespace platform::files {

int DiskCalls::Create(const std::filesystem::path& path, mode_t mode) {
  return open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
}

int DiskCalls::Replace(const std::filesystem::path& path, mode_t mode) {
  return open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, mode);
}

ssize_t DiskCalls::WriteAt(int file, const char* data, std::size_t size, off_t place) {
  return pwrite(file, data, size, place);
}

ssize_t DiskCalls::Write(int file, const char* data, std::size_t size) {
  return write(file, data, size);
}

int DiskCalls::CopyRights(int file, const struct stat& from) {
  struct stat own {};
  if (fstat(file, &own) != 0) return -1;
  // Only the system's administrator may give a file away; for everybody else this fails and does not matter.
  const bool foreign = own.st_uid != from.st_uid || own.st_gid != from.st_gid;
  if (foreign && fchown(file, from.st_uid, from.st_gid) != 0 && errno != EPERM) return -1;
  return fchmod(file, from.st_mode & 07777);
}

int DiskCalls::Sync(int file) {
  return fsync(file);
}

int DiskCalls::SyncData(int file) {
  return fdatasync(file);
}

void DiskCalls::StartSync([[maybe_unused]] int file, [[maybe_unused]] off_t from,
                          [[maybe_unused]] off_t size) {
#ifdef SYNC_FILE_RANGE_WRITE
  static_cast<void>(sync_file_range(file, from, size, SYNC_FILE_RANGE_WRITE));
#endif
}

int DiskCalls::Rename(const std::filesystem::path& from, const std::filesystem::path& to) {
  return std::rename(from.c_str(), to.c_str());
}

int DiskCalls::Remove(const std::filesystem::path& path) {
  return unlink(path.c_str());
}

int DiskCalls::SyncFolder(const std::filesystem::path& folder) {
  const int file = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (file < 0) return -1;
  // Some file systems cannot flush a folder; there is nothing more that we could do on them.
  const int result = fsync(file) == 0 || errno == EINVAL ? 0 : -1;
  close(file);
  return result;
}

DiskCalls& SystemDisk() {
  static DiskCalls calls;
  return calls;
}

}  // namespace platform::files
