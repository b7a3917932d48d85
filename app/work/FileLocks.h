// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <functional>
#include <string>

#include "support/Mutex.h"

namespace app {

/// Held by whoever writes what is kept of a file, so that it moves as a whole when the file's tag is written.
///
/// Law: a file on a dead disk keeps no other waiting (but for one in many that shares its lock).
/// Threads: workers alone, because they wait for disks.
class FileLocks {
 public:
  [[nodiscard]] support::Mutex& Of(const std::string& path) {
    return locks_[std::hash<std::string>{}(path) % locks_.size()];
  }

 private:
  std::array<support::Mutex, 256> locks_;
};

}  // namespace app
