// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "lightorgan/testing/RecordingBoards.h"

#include "lightorgan/testing/IoBoardsContract.h"

namespace lightorgan::testing {
namespace {

struct Recorded {
  IoBoards& Boards() { return boards; }
  void Unplug() { boards.open_result = kNoBoard; }
  Lamps Shown(int board, const Lamps&) {
    Lamps lamps;
    for (std::size_t channel = 0; channel < lamps.dimmed.size(); ++channel) {
      const std::size_t output = static_cast<std::size_t>(board) * lamps.dimmed.size() + channel;
      lamps.switched = static_cast<std::uint8_t>(lamps.switched | (boards.lit[output] ? 1 << channel : 0));
      lamps.dimmed[channel] = boards.values[output];
    }
    return lamps;
  }
  RecordingBoards boards;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Recorded, EveryIoBoards, Recorded);

}  // namespace
}  // namespace lightorgan::testing
