// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "lightorgan/BoardOutput.h"

#include <utility>

namespace lightorgan {

void BoardOutput::SwitchOn(std::function<void()> no_board) {
  settings_.SetFlag("Setup", "UseK8000", true);
  in_use_ = true;
  std::weak_ptr<int> alive = alive_;
  boards_.OpenDevice([this, alive, no_board = std::move(no_board)](std::int32_t result) {
    if (alive.expired() || !in_use_ || result != kNoBoard) return;
    no_board();
    boards_.CloseDevices();
  });
}

void BoardOutput::SwitchOff() {
  settings_.SetFlag("Setup", "UseK8000", false);
  in_use_ = false;
  boards_.CloseDevices();
}

void BoardOutput::ShutDown(IoBoardSize size) {
  if (!in_use_) return;
  for (int board = 0; board < BoardsOf(size); ++board) {
    boards_.ClearAllDigital(board);
    boards_.ClearAllAnalog(board);
  }
  boards_.CloseDevices();
  in_use_ = false;
}

void BoardOutput::Switch(int output, bool on) {
  if (!in_use_) return;
  const auto [board, channel] = AddressOf(output);
  if (on) {
    boards_.SetDigitalChannel(board, channel);
  } else {
    boards_.ClearDigitalChannel(board, channel);
  }
}

void BoardOutput::SwitchBoard(int board, std::uint8_t channels) {
  if (in_use_) boards_.OutputAllDigital(board, channels);
}

void BoardOutput::ClearBoard(int board) {
  if (in_use_) boards_.ClearAllDigital(board);
}

void BoardOutput::Dim(int output, std::int32_t value) {
  if (!in_use_) return;
  const auto [board, channel] = AddressOf(output);
  boards_.OutputAnalogChannel(board, channel, value);
}

}  // namespace lightorgan
