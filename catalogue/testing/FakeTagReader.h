// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>
#include <string>

#include "catalogue/ports/TagReader.h"
#include "support/Mutex.h"

namespace catalogue::testing {

/// Knows the files it was told of, or every file.
/// Threads: any.
class FakeTagReader final : public TagReader {
 public:
  void AddFile(const std::string& path, const FileTags& tags = {}) {
    support::MutexLock lock(mutex_);
    files_[path] = tags;
  }
  /// From now on every unknown path is a file with these tags.
  void AcceptAnyFile(const FileTags& tags = {}) {
    support::MutexLock lock(mutex_);
    any_ = tags;
    accept_any_ = true;
  }
  support::Result<FileTags> Read(const std::string& path) override {
    support::MutexLock lock(mutex_);
    ++reads_;
    if (const auto found = files_.find(path); found != files_.end()) return found->second;
    if (accept_any_) return any_;
    return support::Error{support::ErrorCode::NotFound, "There is no file \"" + path + "\"."};
  }
  [[nodiscard]] int Reads() const {
    support::MutexLock lock(mutex_);
    return reads_;
  }

 private:
  mutable support::Mutex mutex_;
  std::map<std::string, FileTags> files_ DJ_GUARDED_BY(mutex_);
  FileTags any_ DJ_GUARDED_BY(mutex_);
  bool accept_any_ DJ_GUARDED_BY(mutex_) = false;
  int reads_ DJ_GUARDED_BY(mutex_) = 0;
};

}  // namespace catalogue::testing
