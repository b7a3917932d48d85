// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/Companion.h"

#include <filesystem>
#include <system_error>

#include "support/Text.h"

namespace catalogue {
namespace {

namespace fs = std::filesystem;

bool IsFile(const std::string& path) {
  std::error_code failed;
  return fs::is_regular_file(path, failed);
}

}  // namespace

std::string CompanionOf(const std::string& path, std::string_view extension) {
  const std::size_t separator = path.find_last_of("/\\");
  const std::size_t name = separator == std::string::npos ? 0 : separator + 1;
  const std::size_t dot = path.find_last_of('.');
  const std::size_t end = dot == std::string::npos || dot <= name ? path.size() : dot;
  const std::string stem = path.substr(0, end) + '.';
  // As they are nearly always written, so that a folder with thousands of pairs is not listed for each.
  for (std::string usual : {stem + std::string(extension), stem + support::ToUpper(extension)}) {
    if (IsFile(usual)) return usual;
  }
  const std::string folder = path.substr(0, name);
  const std::string wanted = stem.substr(name) + std::string(extension);
  std::string first;
  std::error_code failed;
  fs::directory_iterator entry(folder.empty() ? fs::path(".") : fs::path(folder), failed);
  for (; !failed && entry != fs::directory_iterator(); entry.increment(failed)) {
    std::string found = entry->path().filename().string();
    if (!support::EqualsIgnoringCase(found, wanted) || !IsFile(folder + found)) continue;
    const bool same_name = found.starts_with(stem.substr(name));
    const bool first_same = first.starts_with(stem.substr(name));
    if (first.empty() || same_name > first_same || (same_name == first_same && found < first)) first = found;
  }
  return first.empty() ? first : folder + first;
}

}  // namespace catalogue
