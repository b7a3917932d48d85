// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <span>

#include "platform/files/PlainFile.h"

namespace platform::files {

/// A file that lies in memory alone, under no name, and is gone when it is closed. It is filled once and then
/// read as any other file. Threads: one.
class MemoryFile {
 public:
  /// False when there is no memory left.
  [[nodiscard]] bool Append(std::span<const char> bytes);
  /// The file, at its start; nothing when there was no memory for all of it.
  [[nodiscard]] std::optional<PlainFile> Take();

  MemoryFile();

 private:
  PlainFile file_;
  bool whole_ = true;
};

}  // namespace platform::files
