// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>

#include "support/Mutex.h"
#include "support/ports/FileSaver.h"

namespace support::testing {

/// Keeps files in memory, and fails when it is told to.
/// Threads: any.
class MemoryFileSaver final : public FileSaver {
 public:
  Result<void> Save(const std::filesystem::path& path, std::string_view content) override {
    MutexLock lock(mutex_);
    if (++saves_ >= first_failure_ && saves_ < first_failure_ + failures_) {
      return Error{ErrorCode::Unavailable, "There is no room left on the disk for " + path.string() + "."};
    }
    files_[path.string()] = std::string(content);
    return {};
  }

  /// The nth save from now fails, and so do the ones after it, as many as told in all.
  void FailOn(int nth, int failures = 1) {
    MutexLock lock(mutex_);
    first_failure_ = saves_ + nth;
    failures_ = failures;
  }
  /// How often somebody saved, failures counted.
  [[nodiscard]] int Saves() const {
    MutexLock lock(mutex_);
    return saves_;
  }
  [[nodiscard]] bool Has(const std::filesystem::path& path) const {
    MutexLock lock(mutex_);
    return files_.count(path.string()) != 0;
  }
  /// Empty when there is no such file.
  [[nodiscard]] std::string Content(const std::filesystem::path& path) const {
    MutexLock lock(mutex_);
    const auto file = files_.find(path.string());
    return file == files_.end() ? std::string() : file->second;
  }

 private:
  mutable Mutex mutex_;
  std::map<std::string, std::string> files_ DJ_GUARDED_BY(mutex_);
  int saves_ DJ_GUARDED_BY(mutex_) = 0;
  int first_failure_ DJ_GUARDED_BY(mutex_) = 0;
  int failures_ DJ_GUARDED_BY(mutex_) = 0;
};

}  // namespace support::testing
