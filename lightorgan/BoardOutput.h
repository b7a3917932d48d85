// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include "lightorgan/Outputs.h"
#include "lightorgan/ports/IoBoards.h"
#include "support/Settings.h"

namespace lightorgan {

/// The boards behind the switch "Setup"/"UseK8000": output numbers become boards and channels, and while the
/// switch is off no call is made at all.
///
/// Results are ignored, but for that of opening. Threads: the conductor.
class BoardOutput {
 public:
  BoardOutput(IoBoards& boards, support::Settings& settings) : boards_(boards), settings_(settings) {}

  /// no_board: called when none could be opened; the switch stays on, and calls go on being made.
  void SwitchOn(std::function<void()> no_board);
  void SwitchOff();
  [[nodiscard]] bool InUse() const { return in_use_; }
  /// Leaves the lamps dark; nothing while the switch is off.
  void ShutDown(IoBoardSize size);

  void Switch(int output, bool on);
  /// All eight outputs of a board at once.
  void SwitchBoard(int board, std::uint8_t channels);
  void ClearBoard(int board);
  void Dim(int output, std::int32_t value);
  /// Also brings the answer that a board still owes. No text: nothing.
  [[nodiscard]] support::Error Trouble() { return in_use_ ? boards_.Trouble() : support::Error{}; }

 private:
  IoBoards& boards_;
  support::Settings& settings_;
  bool in_use_ = false;
  std::shared_ptr<int> alive_ = std::make_shared<int>();  // shared with the answer that a board still owes
};

}  // namespace lightorgan
