// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "dmx/DataFile.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <fstream>
#include <system_error>

#include "support/Sentences.h"

namespace dmx {

support::Result<std::string> WholeDataFile(const std::filesystem::path& path, std::uintmax_t longest) {
  constexpr std::size_t kPiece = 1 << 20;
  using support::Sentence;
  const std::string name = path.string();
  std::error_code failed;
  const auto type = std::filesystem::status(path, failed).type();
  if (type == std::filesystem::file_type::not_found)
    return support::Failed(support::ErrorCode::NotFound, Sentence::LightFileMissing, {name});
  const support::Error unreadable =
      support::Failed(support::ErrorCode::Unreadable, Sentence::LightFileUnreadable, {name});
  if (type != std::filesystem::file_type::regular) return unreadable;
  std::ifstream file(path, std::ios::binary);
  if (!file) return unreadable;
  std::string text;
  const std::uintmax_t size = std::filesystem::file_size(path, failed);
  if (!failed && size <= longest) text.reserve(static_cast<std::size_t>(size));
  while (file) {
    const std::size_t before = text.size();
    if (before > longest) {
      return support::Failed(support::ErrorCode::Unreadable, Sentence::LightFileTooLong, {name});
    }
    text.resize(before + kPiece);
    file.read(text.data() + before, static_cast<std::streamsize>(kPiece));
    text.resize(before + static_cast<std::size_t>(file.gcount()));
  }
  if (file.bad()) return unreadable;
  return text;
}

void AppendLine(std::string& text, std::string_view line) {
  const std::size_t start = text.size();
  text += line;
  std::replace_if(
      text.begin() + static_cast<std::ptrdiff_t>(start), text.end(),
      [](char c) { return c == '\r' || c == '\n'; }, ' ');
  text += "\r\n";
}

void AppendLine(std::string& text, int number) {
  std::array<char, 16> buffer;
  const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size() - 2, number);
  end[0] = '\r';
  end[1] = '\n';
  text.append(buffer.data(), static_cast<std::size_t>(end - buffer.data()) + 2);
}

}  // namespace dmx
