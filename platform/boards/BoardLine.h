// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <bitset>
#include <cstddef>
#include <cstdint>

#include "support/Result.h"

namespace platform::boards {

inline constexpr std::size_t kBoards = 2;
inline constexpr std::size_t kChannels = 8;

using BoardSet = std::bitset<kBoards>;
using DimmedValues = std::array<std::uint8_t, kChannels>;

/// The way to the boards that are plugged in, as a BoardSender goes it. It may block for as long as a board
/// may take. Threads: the sender's; made and destroyed on any.
class BoardLine {
 public:
  enum class Occasion {
    Asked,      ///< somebody opens the boards
    InPassing,  ///< a quarter of a second has gone by
  };

  virtual ~BoardLine() = default;

  /// Takes hold of boards that came and lets go of those that went. Gives the boards whose lamps may stand
  /// otherwise than they were told.
  [[nodiscard]] virtual BoardSet Look(Occasion occasion) = 0;
  /// The boards that can be told something now.
  [[nodiscard]] virtual BoardSet Held() const = 0;
  /// All switched outputs of a board that is held; bit (channel - 1) is the channel. False: it has been let
  /// go, as it does not answer.
  [[nodiscard]] virtual bool Switch(std::size_t board, std::uint8_t channels) = 0;
  /// The same for its analogue outputs. before: what they show; null: not known.
  [[nodiscard]] virtual bool Dim(std::size_t board, const DimmedValues& values,
                                 const DimmedValues* before) = 0;
  /// Lets go of all boards.
  virtual void Release() = 0;
  /// What the user has to know; no text: nothing.
  [[nodiscard]] virtual support::Error Trouble() const = 0;
};

}  // namespace platform::boards
