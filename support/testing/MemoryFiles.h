// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>
#include <optional>
#include <string>
#include <utility>

#include "support/Mutex.h"
#include "support/ports/FileSaver.h"

namespace support::testing {

/// Keeps what was saved in memory.
/// Threads: any.
class MemoryFiles final : public FileSaver {
 public:
  Result<void> Save(const std::filesystem::path& path, std::string_view content) override {
    MutexLock lock(mutex_);
    ++saves_;
    if (full_ || std::exchange(fail_next_, false))
      return Error{ErrorCode::Unreadable, "\"" + path.string() + "\" cannot be written."};
    files_[path.string()] = content;
    return {};
  }

  /// From now on every Save fails, or works again.
  void SetFull(bool full) {
    MutexLock lock(mutex_);
    full_ = full;
  }
  /// The next Save fails.
  void FailNext() {
    MutexLock lock(mutex_);
    fail_next_ = true;
  }
  /// Nothing when there is no such file.
  [[nodiscard]] std::optional<std::string> Content(const std::filesystem::path& path) const {
    MutexLock lock(mutex_);
    const auto found = files_.find(path.string());
    return found == files_.end() ? std::nullopt : std::optional<std::string>(found->second);
  }
  [[nodiscard]] int Saves() const {
    MutexLock lock(mutex_);
    return saves_;
  }

 private:
  mutable Mutex mutex_;
  std::map<std::string, std::string> files_ DJ_GUARDED_BY(mutex_);
  bool full_ DJ_GUARDED_BY(mutex_) = false;
  bool fail_next_ DJ_GUARDED_BY(mutex_) = false;
  int saves_ DJ_GUARDED_BY(mutex_) = 0;
};

}  // namespace support::testing
