// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <string_view>

#include "support/ports/FileSaver.h"

namespace platform::windows {

/// Saves to the disk through a new file in the same folder, which takes the old one's place when it is
/// flushed.
///
/// A write-protected file is refused. Somebody who holds the old file open for a moment (a virus scanner) is
/// waited for. What a crash left beside the file is removed by the next save of the same file. Threads: any.
class WindowsFileSaver final : public support::FileSaver {
 public:
  support::Result<void> Save(const std::filesystem::path& path, std::string_view content) override;
  support::Result<void> SaveSwiftly(const std::filesystem::path& path, std::string_view content) override;
};

}  // namespace platform::windows
