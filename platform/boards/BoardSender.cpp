// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/boards/BoardSender.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace platform::boards {

BoardSender::BoardSender(std::unique_ptr<BoardLine> line, Pace pace)
    : work_(std::make_shared<BoardWork>(std::move(line), pace)) {}

BoardSender::~BoardSender() {
  if (!sender_.joinable()) return;
  if (work_->End()) {
    sender_.join();
  } else {
    sender_.detach();
  }
}

void BoardSender::Darken() {
  if (sender_.joinable()) static_cast<void>(work_->End());
}

void BoardSender::OpenDevice(std::function<void(std::int32_t)> done) {
  try {
    if (!sender_.joinable()) sender_ = std::thread([work = work_] { work->Run(); });
  } catch (const std::system_error&) {
    return done(lightorgan::kNoBoard);
  }
  owed_.push_back(std::move(done));
  work_->Open();
}

void BoardSender::CloseDevices() {
  // Who closes what could not be opened has nothing to close: a board that is plugged in later is to be
  // found.
  if (!telling_of_none_) work_->Close();
}

void BoardSender::SetDigitalChannel(int board, int channel) {
  if (channel < 1 || channel > static_cast<int>(kChannels)) return;
  work_->Note(board, [channel](auto& wish) {
    wish.switched = static_cast<std::uint8_t>(wish.switched | (1 << (channel - 1)));
  });
}

void BoardSender::ClearDigitalChannel(int board, int channel) {
  if (channel < 1 || channel > static_cast<int>(kChannels)) return;
  work_->Note(board, [channel](auto& wish) {
    wish.switched = static_cast<std::uint8_t>(wish.switched & ~(1 << (channel - 1)));
  });
}

void BoardSender::OutputAllDigital(int board, std::uint8_t channels) {
  work_->Note(board, [channels](auto& wish) { wish.switched = channels; });
}

void BoardSender::OutputAnalogChannel(int board, int channel, std::int32_t value) {
  if (channel < 1 || channel > static_cast<int>(kChannels)) return;
  work_->Note(board, [channel, value](auto& wish) {
    wish.dimmed[static_cast<std::size_t>(channel - 1)] = static_cast<std::uint8_t>(std::clamp(value, 0, 255));
  });
}

void BoardSender::ClearAllDigital(int board) {
  work_->Note(board, [](auto& wish) { wish.switched = 0; });
}

void BoardSender::ClearAllAnalog(int board) {
  work_->Note(board, [](auto& wish) { wish.dimmed = {}; });
}

support::Error BoardSender::Trouble() {
  while (!owed_.empty()) {
    const auto answer = work_->Answer();
    if (!answer) break;
    const auto done = std::move(owed_.front());
    owed_.pop_front();
    telling_of_none_ = *answer == lightorgan::kNoBoard;
    done(*answer);
    telling_of_none_ = false;
  }
  return work_->Trouble();
}

}  // namespace platform::boards
