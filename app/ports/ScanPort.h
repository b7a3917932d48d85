// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "catalogue/FolderScan.h"
#include "catalogue/NameRule.h"
#include "catalogue/track_table.h"

namespace app {

struct ScanWish {
  catalogue::ScanMode mode = catalogue::ScanMode::Music;
  std::string folder;
  catalogue::NameRule names = {};
};

struct ScanProgress {
  int done = 0;
  int total = 0;           ///< 0 while the folders are listed
  std::int64_t bytes = 0;  ///< of the files looked at so far
  std::chrono::milliseconds running{0};
  /// Files a second; 0 until that can be told.
  [[nodiscard]] double Rate() const {
    return done > 0 && running.count() > 0 ? done * 1000.0 / static_cast<double>(running.count()) : 0;
  }
  /// As long as the files that are left take at this rate.
  [[nodiscard]] std::chrono::seconds Remaining() const {
    return std::chrono::seconds(Rate() > 0 ? static_cast<std::int64_t>((total - done) / Rate()) : 0);
  }
};

/// What a scan hands over at its end.
struct ScanFound {
  enum class End {
    Complete,
    Cancelled,
    FolderMissing,
    FolderLost,  ///< it went away in the middle, as a stick does that is pulled
  };
  End end = End::Complete;
  catalogue::track_table rows;   ///< the mode's record, pass by pass, deeper folders first
  std::vector<bool> fresh = {};  ///< of each row: its file is new or was written since; may be short
  int left_out = 0;              ///< files that could not be analysed
  std::int64_t bytes = 0;
  std::vector<std::string> unreadable = {};  ///< folders that could not be listed
  std::string where = {};                    ///< the folder that is missing or lost
};

/// A scan under way. Threads: any.
class RunningScan {
 public:
  virtual ~RunningScan() = default;
  /// Its end still comes, soon.
  virtual void Cancel() = 0;
  [[nodiscard]] virtual ScanProgress Progress() const = 0;
};

/// Makes rows of the files below a folder, as long as that takes, on threads of its own choice.
class ScanPort {
 public:
  /// Called once, on any thread; not at all where the program ends first.
  using Done = std::function<void(ScanFound)>;

  virtual ~ScanPort() = default;
  /// Waits for nothing. What is returned may be let go of at any time.
  virtual std::shared_ptr<RunningScan> Start(const ScanWish& wish, Done done) = 0;
};

}  // namespace app
