// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/ports/FreeSpace.h"

namespace platform::files {

/// As the system tells it. Threads: any; blocks on the disk.
class DiskSpace final : public engine::FreeSpace {
 public:
  [[nodiscard]] std::optional<std::int64_t> Of(const std::string& path) override;
  [[nodiscard]] std::optional<std::int64_t> LargestFile(const std::string& path) override;
};

}  // namespace platform::files
