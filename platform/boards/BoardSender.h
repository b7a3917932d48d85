// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <thread>

#include "lightorgan/ports/IoBoards.h"
#include "platform/boards/BoardLine.h"
#include "platform/boards/BoardWork.h"

namespace platform::boards {

/// IO boards whose calls only note what the lamps are to show; a thread of its own tells the boards.
///
/// Law: what came together goes out together. A board gets at most two messages a refresh, one for its
/// switched and one for its analogue outputs, and none when nothing changed. It looks for boards as long as
/// they are wanted, so plugging one in, pulling it out and plugging it in again need nobody; a board that
/// came is told everything. When it is destroyed with the boards open, their lamps go dark.
/// Threads: see lightorgan::IoBoards. Owns: the line and the thread; should a driver not come back from a
/// call, they are left behind after a while.
class BoardSender : public lightorgan::IoBoards {
 public:
  explicit BoardSender(std::unique_ptr<BoardLine> line, Pace pace = {});
  ~BoardSender() override;
  BoardSender(const BoardSender&) = delete;
  BoardSender& operator=(const BoardSender&) = delete;

  void OpenDevice(std::function<void(std::int32_t)> done) override;
  void CloseDevices() override;
  void SetDigitalChannel(int board, int channel) override;
  void ClearDigitalChannel(int board, int channel) override;
  void OutputAllDigital(int board, std::uint8_t channels) override;
  void OutputAnalogChannel(int board, int channel, std::int32_t value) override;
  void ClearAllDigital(int board) override;
  void ClearAllAnalog(int board) override;
  [[nodiscard]] support::Error Trouble() override;
  /// The boards that are open go dark and are let go; returns when they are, or when a driver does not come
  /// back. For a program that ends in haste: no call does anything after it. Threads: any.
  void Darken();

 private:
  std::shared_ptr<BoardWork> work_;  // shared with the thread, which may have to be left behind
  std::thread sender_;
  std::deque<std::function<void(std::int32_t)>> owed_;  ///< answers to OpenDevice
  bool telling_of_none_ = false;
};

}  // namespace platform::boards
