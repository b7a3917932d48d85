// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <string_view>

#include "platform/files/DiskCalls.h"
#include "support/ports/FileSaver.h"

namespace platform::files {

/// Why a file could not be written, as errno tells it.
[[nodiscard]] support::Error SaveError(const std::filesystem::path& path, int reason);

/// Saves to the disk through a new file in the same folder.
///
/// A name that is a link stays one: the file that it points to is replaced. The rights of the old file are
/// kept; a write-protected file is refused. What a crash left beside the file is removed by the next save of
/// the same file; other processes that save it at the same moment are not disturbed (a half-written file is
/// locked while its writer lives). Threads: any.
class DiskFileSaver final : public support::FileSaver {
 public:
  /// The calls outlive the saver.
  explicit DiskFileSaver(DiskCalls& calls = SystemDisk()) : calls_(calls) {}

  support::Result<void> Save(const std::filesystem::path& path, std::string_view content) override;
  support::Result<void> SaveSwiftly(const std::filesystem::path& path, std::string_view content) override;
  support::Result<void> SavePieces(const std::filesystem::path& path, const Pieces& next) override;

 private:
  enum class Flush { ToDisk, Later };
  support::Result<void> Put(const std::filesystem::path& path, const Pieces& next, Flush flush);

  DiskCalls& calls_;
};

}  // namespace platform::files
