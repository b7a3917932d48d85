// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string_view>

namespace lightorgan {

inline constexpr int kMostOutputs = 16;
inline constexpr int kBoardChannels = 8;
inline constexpr int kMostBoards = 2;

/// The setting "IoBoardSize": "16" is one board with eight switched and eight analogue outputs, "32" is two.
enum class IoBoardSize { One, Two };

/// Any text but "32" is one board.
[[nodiscard]] constexpr IoBoardSize IoBoardSizeOf(std::string_view text) {
  return text == "32" ? IoBoardSize::Two : IoBoardSize::One;
}
[[nodiscard]] constexpr int BoardsOf(IoBoardSize size) {
  return size == IoBoardSize::Two ? 2 : 1;
}
/// Of each kind; they are numbered from 1.
[[nodiscard]] constexpr int OutputsOf(IoBoardSize size) {
  return BoardsOf(size) * kBoardChannels;
}

/// Where an output is found.
struct OutputAddress {
  int board;    ///< 0 or 1
  int channel;  ///< 1 to 8
};
/// Requires: 1 to kMostOutputs.
[[nodiscard]] constexpr OutputAddress AddressOf(int output) {
  return {(output - 1) / kBoardChannels, (output - 1) % kBoardChannels + 1};
}

}  // namespace lightorgan
