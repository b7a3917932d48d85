// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <filesystem>
#include <fstream>
#include <iterator>
#include <ostream>
#include <system_error>

#include "tools/djinspect/verbs/Verbs.h"

namespace tools::djinspect {

std::optional<std::string> WholeFile(const std::string& path, std::ostream& err) {
  constexpr std::uintmax_t kLongest = 16 << 20;
  std::error_code failed;
  if (std::filesystem::is_regular_file(path, failed) &&
      std::filesystem::file_size(path, failed) <= kLongest && !failed) {
    std::ifstream file(path, std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(file), {}};
    if (file && !file.bad()) return text;
  }
  err << "\"" << path << "\" cannot be read.\n";
  return std::nullopt;
}

}  // namespace tools::djinspect
