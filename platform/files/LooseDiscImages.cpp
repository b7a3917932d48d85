// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/files/LooseDiscImages.h"

#include <filesystem>
#include <string_view>
#include <system_error>

#include "platform/files/PlainFile.h"
#include "support/Sentences.h"
#include "support/Text.h"

namespace platform::files {
namespace {

bool IsPlainFile(const std::string& path) {
  std::error_code failed;
  return std::filesystem::is_regular_file(path, failed);
}

/// The name without its extension, and the folder before it with its separator.
struct SongName {
  std::string folder;
  std::string stem;
};

SongName TakeApart(const std::string& song) {
  const std::size_t name = song.find_last_of('/') + 1;  // 0 where there is none
  const std::size_t dot = song.find_last_of('.');
  const std::size_t end = dot == std::string::npos || dot <= name ? song.size() : dot;
  return {song.substr(0, name), song.substr(name, end - name)};
}

/// Empty when there is none.
std::string ImageBeside(const SongName& song) {
  for (const char* usual : {".cdg", ".CDG"}) {
    std::string path = song.folder + song.stem + usual;
    if (IsPlainFile(path)) return path;
  }
  std::string first;
  std::error_code failed;
  std::filesystem::directory_iterator entry(song.folder.empty() ? "." : song.folder, failed);
  for (; !failed && entry != std::filesystem::directory_iterator(); entry.increment(failed)) {
    const std::string name = entry->path().filename().string();
    if (!support::EqualsIgnoringCase(name, song.stem + ".cdg")) continue;
    if ((first.empty() || name < first) && IsPlainFile(song.folder + name)) first = name;
  }
  return first.empty() ? first : song.folder + first;
}

}  // namespace

support::Result<std::vector<std::uint8_t>> LooseDiscImages::Of(const std::string& song) {
  using support::ErrorCode;
  using support::Failed;
  const std::string path = ImageBeside(TakeApart(song));
  if (path.empty()) {
    return Failed(ErrorCode::NotFound, support::Sentence::DiscImageMissing, {LastPart(song)});
  }
  const auto opened = OpenPlainFile(path);
  if (!opened) return opened.Failure();
  if (opened.Value().size > static_cast<std::int64_t>(karaoke::kLongestDiscImage)) {
    return Failed(ErrorCode::Unsupported, support::Sentence::DiscImageTooLong, {LastPart(path)});
  }
  std::vector<std::uint8_t> bytes(static_cast<std::size_t>(opened.Value().size));
  bytes.resize(std::fread(bytes.data(), 1, bytes.size(), opened.Value().file.get()));
  if (bytes.empty() || std::ferror(opened.Value().file.get()) != 0) {
    return Failed(ErrorCode::Unreadable, support::Sentence::FileUnreadable, {LastPart(path)});
  }
  return bytes;
}

}  // namespace platform::files
