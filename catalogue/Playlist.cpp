// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/Playlist.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <utility>

#include "support/Text.h"

namespace catalogue {
namespace {

constexpr std::size_t kPieceBytes = 65'536;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

}  // namespace

PlaylistFile PlaylistFileOf(std::string_view path) {
  if (support::UpperTail(path, 4) == "FLAC") return PlaylistFile::Track;
  const std::string last = support::UpperTail(path, 3);
  if (last == "MP3" || last == "OGG" || last == "WMA") return PlaylistFile::Track;
  if (last == "TPL") return PlaylistFile::Own;
  const bool list = last == "M3U" || support::UpperTail(path, 4) == "M3U8";
  return list ? PlaylistFile::List : PlaylistFile::Nothing;
}

void PathListParser::Feed(std::string_view piece) {
  while (!piece.empty()) {
    const std::size_t end = piece.find_first_of("\r\n");
    Grow(piece.substr(0, end));
    if (end == std::string_view::npos) return;
    EndLine();  // the second half of CR LF ends an empty line, which is no path
    piece.remove_prefix(end + 1);
  }
}

PathList PathListParser::Finish() {
  EndLine();
  return std::move(list_);
}

void PathListParser::Grow(std::string_view part) {
  if (too_long_) return;
  // Of a comment nothing but its sign is kept.
  if (!line_.empty() && line_.front() == '#') return;
  too_long_ = line_.size() + part.size() > kLongestPath && (line_.empty() ? part : line_).front() != '#';
  line_ += part.substr(0, too_long_ ? 0 : kLongestPath);
}

void PathListParser::EndLine() {
  if (too_long_) {
    ++list_.too_long;
  } else if (!line_.empty() && line_.front() != '#') {
    list_.paths.push_back(line_);
  }
  line_.clear();
  too_long_ = false;
}

support::Result<PathList> ReadPathList(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  PathListParser parser;
  std::array<char, kPieceBytes> piece;
  while (file.read(piece.data(), piece.size()), file.gcount() > 0) {
    parser.Feed({piece.data(), static_cast<std::size_t>(file.gcount())});
  }
  if (!file.eof() || file.bad()) {
    return support::Failed(support::ErrorCode::Unreadable, support::Sentence::PlaylistUnreadable,
                           {path.filename().string()});
  }
  return parser.Finish();
}

bool LooksLikePathList(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::array<char, 512> piece{};
  file.read(piece.data(), piece.size());
  std::string_view text(piece.data(), static_cast<std::size_t>(file.gcount()));
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  const std::string_view first = text.substr(0, text.find_first_of("\r\n"));
  return !first.empty() && first.find('\t') == std::string_view::npos &&
         (first.front() == '#' || first.find_first_of("/\\") != std::string_view::npos);
}

}  // namespace catalogue
