// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/NumberedFiles.h"

#include <algorithm>
#include <string>
#include <system_error>
#include <vector>

#include "support/Sentences.h"
#include "support/Text.h"

namespace support {
namespace {

namespace fs = std::filesystem;

constexpr std::int64_t kHighest = 999'999;

fs::path Numbered(const fs::path& path, std::string_view mark, std::int64_t number) {
  fs::path name = path;
  name += "." + std::string(mark) + "-" + std::to_string(number);
  return name;
}

/// Ascending.
std::vector<std::int64_t> NumbersOf(const fs::path& path, std::string_view mark) {
  const std::string begin = path.filename().string() + "." + std::string(mark) + "-";
  std::vector<std::int64_t> numbers;
  std::error_code error;
  for (fs::directory_iterator file(path.parent_path(), error), end; !error && file != end;
       file.increment(error)) {
    const std::string name = file->path().filename().string();
    if (!name.starts_with(begin)) continue;
    const auto number = ParseInteger(std::string_view(name).substr(begin.size()));
    if (number && *number >= 1 && *number <= kHighest) numbers.push_back(*number);
  }
  std::sort(numbers.begin(), numbers.end());
  return numbers;
}

}  // namespace

Result<fs::path> SetAside(const fs::path& path, std::string_view mark) {
  std::error_code error;
  if (fs::symlink_status(path, error).type() == fs::file_type::not_found) return fs::path();
  for (std::int64_t number = 1; number <= kHighest; ++number) {
    const fs::path aside = Numbered(path, mark, number);
    if (fs::symlink_status(aside, error).type() != fs::file_type::not_found && !error) continue;
    fs::rename(path, aside, error);
    if (!error) return aside;
    break;
  }
  return Failed(ErrorCode::Unreadable, Sentence::NotSetAside, {path.string()});
}

Result<void> KeepCopy(const fs::path& path, std::string_view mark, int most) {
  std::error_code error;
  if (!fs::exists(path, error)) return {};
  std::vector<std::int64_t> numbers = NumbersOf(path, mark);
  numbers.push_back(numbers.empty() ? 1 : numbers.back() + 1);
  if (!fs::copy_file(path, Numbered(path, mark, numbers.back()), error) || error) {
    std::error_code ignored;  // half a copy is none
    fs::remove(Numbered(path, mark, numbers.back()), ignored);
    return Failed(ErrorCode::Unreadable, Sentence::NotSetAside, {path.string()});
  }
  for (std::size_t i = 0; i + static_cast<std::size_t>(most) < numbers.size(); ++i) {
    fs::remove(Numbered(path, mark, numbers[i]), error);
  }
  return {};
}

}  // namespace support
