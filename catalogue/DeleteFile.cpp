// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/DeleteFile.h"

#include <filesystem>
#include <system_error>

namespace catalogue {

Deletion DeleteFile(const std::string& path) {
  std::error_code error;
  if (path.empty() || std::filesystem::is_directory(path, error)) return Deletion::Failed;
  const bool removed = std::filesystem::remove(path, error);
  if (error) return Deletion::Failed;
  return removed ? Deletion::Done : Deletion::WasNotThere;
}

}  // namespace catalogue
