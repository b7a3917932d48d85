// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>

#include "support/Result.h"

namespace lightorgan {

/// What OpenDevice gives when no board could be opened.
inline constexpr std::int32_t kNoBoard = -2;

/// One or two boards of eight switched and eight analogue outputs, in the words of their maker's library.
///
/// Boards are 0 and 1, channels 1 to 8. Calls return at once and their results are unknown; a call to a board
/// that is not there does nothing. Threads: the conductor.
class IoBoards {
 public:
  virtual ~IoBoards() = default;

  /// Opens every board. done is called once, on the caller's thread, in this call or in a later Trouble, with
  /// the lowest number opened or with kNoBoard.
  virtual void OpenDevice(std::function<void(std::int32_t result)> done) = 0;
  /// What was sent before goes out first.
  virtual void CloseDevices() = 0;
  virtual void SetDigitalChannel(int board, int channel) = 0;
  virtual void ClearDigitalChannel(int board, int channel) = 0;
  /// Bit (channel - 1) is the channel.
  virtual void OutputAllDigital(int board, std::uint8_t channels) = 0;
  /// 0 to 255; what is beyond is taken as the nearest.
  virtual void OutputAnalogChannel(int board, int channel, std::int32_t value) = 0;
  virtual void ClearAllDigital(int board) = 0;
  virtual void ClearAllAnalog(int board) = 0;

  /// What the user has to know of the boards now; no text: nothing. Called at every tick while boards are in
  /// use.
  [[nodiscard]] virtual support::Error Trouble() { return {}; }
};

}  // namespace lightorgan
