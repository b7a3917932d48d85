// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <string>

namespace app {

/// The viewer of the manual.
/// Threads: the window's.
class Help {
 public:
  virtual ~Help() = default;
  /// Shows a topic of the help file and returns at once.
  virtual void Open(const std::filesystem::path& file, const std::string& topic) = 0;
};

}  // namespace app
