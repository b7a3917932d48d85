// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "karaoke/LyricText.h"

#include <cstdint>

#include "support/Text.h"

namespace karaoke {

bool BeginsLine(std::string_view piece) {
  return !piece.empty() && (piece.front() == '/' || piece.front() == '\\');
}

bool IsBlank(std::string_view text) {
  return support::Trim(text).empty();
}

LyricText AssembleLyrics(std::string_view track) {
  constexpr std::string_view kTextEvent = "\xFF\x01";
  LyricText lyrics;
  lyrics.lines.emplace_back();
  std::size_t at = track.find(kTextEvent);
  while (at != std::string_view::npos && at + 2 < track.size() && lyrics.pieces.size() < kMostPieces) {
    const std::size_t length = static_cast<std::uint8_t>(track[at + 2]);
    const std::string_view piece = track.substr(at + 3, length);
    std::string_view words = piece;
    if (BeginsLine(piece)) {
      words.remove_prefix(1);
      if (!lyrics.text.empty()) lyrics.text += "\r\n";
      lyrics.lines.emplace_back();
    } else if (!piece.empty() && piece.front() == '@') {
      words = " ";
    }
    lyrics.text += words;
    lyrics.lines.back() += words;
    lyrics.pieces.push_back({at, static_cast<int>(lyrics.lines.size()) - 1});
    at = track.find(kTextEvent, at + 3 + piece.size());
  }
  return lyrics;
}

}  // namespace karaoke
