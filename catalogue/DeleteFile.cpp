// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/DeleteFile.h"

#include <filesystem>
#include <system_error>

namespace catalogue {

bool DeleteFile(const std::string& path) {
  std::error_code error;
  if (path.empty() || std::filesystem::is_directory(path, error)) return false;
  std::filesystem::remove(path, error);
  return !error;
}

std::string Mp3BesideOf(const std::string& path) {
  return std::filesystem::path(path).replace_extension(".mp3").string();
}

}  // namespace catalogue
