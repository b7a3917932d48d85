// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace karaoke {

/// The words of a lyrics track as they stand, without times.
struct LyricText {
  /// One text event, found by its first two bytes.
  struct Piece {
    std::size_t at = 0;  ///< of its FF in the track's bytes
    int line = 0;
  };
  std::string text;                ///< lines separated by CR LF
  std::vector<std::string> lines;  ///< at least one; grows with every line mark, the first one included
  std::vector<Piece> pieces;
};

/// More text events than this no song has; what comes behind them is left out.
inline constexpr std::size_t kMostPieces = 1'000'000;

/// Puts the text events of a lyrics track together: every pair FF 01 is one, wherever it stands.
[[nodiscard]] LyricText AssembleLyrics(std::string_view track);

/// "/" or "\" at the front begins a new line.
[[nodiscard]] bool BeginsLine(std::string_view piece);
[[nodiscard]] bool IsBlank(std::string_view text);

}  // namespace karaoke
