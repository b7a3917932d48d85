// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <string_view>

#include "catalogue/MixingTags.h"
#include "support/Mutex.h"

namespace catalogue {

/// Reads blocks of mixing tags by way of a scratch file, one at a time.
///
/// A block that cannot be written or read again has no values. Threads: any; blocks on the disk.
class TagScratch {
 public:
  explicit TagScratch(std::filesystem::path file) : file_(std::move(file)) {}

  /// A text that holds none of the keys is no block and leaves the file alone.
  [[nodiscard]] MixingTags Read(std::string_view block) DJ_EXCLUDES(mutex_);

 private:
  [[nodiscard]] bool Write(std::string_view block) DJ_REQUIRES(mutex_);
  [[nodiscard]] std::optional<std::string> Find(std::string_view key) DJ_REQUIRES(mutex_);

  const std::filesystem::path file_;
  support::Mutex mutex_;
};

/// The scratch file's name below the program folder.
inline constexpr std::string_view kTagScratch = "\\Tagging.tlv";

}  // namespace catalogue
