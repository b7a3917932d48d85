// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <array>
#include <bitset>
#include <string>
#include <utility>
#include <vector>

#include "lightorgan/Outputs.h"
#include "lightorgan/ports/IoBoards.h"

namespace lightorgan::testing {

/// Boards that write down every call, as "OutputAllDigital 0 5", and hold what they were told.
class RecordingBoards final : public IoBoards {
 public:
  std::int32_t open_result = 0;
  std::vector<std::string> calls;
  std::bitset<kMostOutputs> lit;
  std::array<std::int32_t, kMostOutputs> values{};

  std::vector<std::string> Take() { return std::exchange(calls, {}); }

  void OpenDevice(std::function<void(std::int32_t)> done) override {
    Note("OpenDevice");
    done(open_result);
  }
  void CloseDevices() override { Note("CloseDevices"); }
  void SetDigitalChannel(int board, int channel) override {
    Note("SetDigitalChannel", {board, channel});
    if (IsThere(board, channel)) lit.set(Index(board, channel));
  }
  void ClearDigitalChannel(int board, int channel) override {
    Note("ClearDigitalChannel", {board, channel});
    if (IsThere(board, channel)) lit.reset(Index(board, channel));
  }
  void OutputAllDigital(int board, std::uint8_t channels) override {
    Note("OutputAllDigital", {board, channels});
    if (!IsThere(board)) return;
    for (int c = 1; c <= kBoardChannels; ++c) lit.set(Index(board, c), ((channels >> (c - 1)) & 1) != 0);
  }
  void OutputAnalogChannel(int board, int channel, std::int32_t value) override {
    Note("OutputAnalogChannel", {board, channel, value});
    if (IsThere(board, channel)) values[Index(board, channel)] = std::clamp(value, 0, 255);
  }
  void ClearAllDigital(int board) override {
    Note("ClearAllDigital", {board});
    if (!IsThere(board)) return;
    for (int c = 1; c <= kBoardChannels; ++c) lit.reset(Index(board, c));
  }
  void ClearAllAnalog(int board) override {
    Note("ClearAllAnalog", {board});
    if (IsThere(board)) std::fill_n(values.begin() + board * kBoardChannels, kBoardChannels, 0);
  }

 private:
  static bool IsThere(int board, int channel = 1) {
    constexpr int kBoards = kMostOutputs / kBoardChannels;
    return board >= 0 && board < kBoards && channel >= 1 && channel <= kBoardChannels;
  }
  static std::size_t Index(int board, int channel) {
    return static_cast<std::size_t>(board * kBoardChannels + channel - 1);
  }
  void Note(std::string call, const std::vector<int>& arguments = {}) {
    for (const int argument : arguments) call += " " + std::to_string(argument);
    calls.push_back(std::move(call));
  }
};

}  // namespace lightorgan::testing
