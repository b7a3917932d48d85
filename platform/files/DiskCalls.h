// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <sys/stat.h>
#include <sys/types.h>

#include <cstddef>
#include <filesystem>

namespace platform::files {

/// The system calls that change a disk, one member each, so that a test can let any of them fail.
///
/// Shapes and results are those of the calls: -1 and errno on failure. Threads: any.
class DiskCalls {
 public:
  virtual ~DiskCalls() = default;
  /// Opens a new file for writing; fails when the name is taken.
  virtual int Create(const std::filesystem::path& path, mode_t mode);
  /// Opens a file for writing and empties it; makes it where it is not there.
  virtual int Replace(const std::filesystem::path& path, mode_t mode);
  virtual ssize_t Write(int file, const char* data, std::size_t size);
  virtual ssize_t WriteAt(int file, const char* data, std::size_t size, off_t place);
  /// Takes over the rights and, where we may, the owner of the file that is replaced.
  virtual int CopyRights(int file, const struct stat& from);
  virtual int Sync(int file);
  /// The content, without what is not needed to read it.
  virtual int SyncData(int file);
  /// Lets the disk begin with a part of the file, and waits for nothing; Sync tells how it went.
  virtual void StartSync(int file, off_t from, off_t size);
  virtual int Rename(const std::filesystem::path& from, const std::filesystem::path& to);
  virtual int Remove(const std::filesystem::path& path);
  virtual int SyncFolder(const std::filesystem::path& folder);
};

/// The calls as the system has them.
DiskCalls& SystemDisk();

}  // namespace platform::files
