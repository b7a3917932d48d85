// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <optional>

#include "lightorgan/ports/IoBoards.h"

namespace lightorgan::testing {

/// What the lamps of a board show.
struct Lamps {
  std::uint8_t switched = 0;
  std::array<int, 8> dimmed{};
  bool operator==(const Lamps&) const = default;
};

/// What all boards promise. T gives them by Boards(), with boards 0 and 1 plugged in or none after Unplug();
/// what board 0 or 1 comes to show by Shown(board, wanted), which waits for it as long as it may take.
template <typename T>
class EveryIoBoards : public ::testing::Test {
 protected:
  std::int32_t Open() {
    std::optional<std::int32_t> answer;
    int answers = 0;
    given_.Boards().OpenDevice([&](std::int32_t result) {
      answer = result;
      ++answers;
    });
    while (!answer) (void)given_.Boards().Trouble();
    for (int i = 0; i < 3; ++i) (void)given_.Boards().Trouble();
    EXPECT_EQ(answers, 1);
    return *answer;
  }
  void Expect(int board, const Lamps& wanted) { EXPECT_EQ(given_.Shown(board, wanted), wanted) << board; }
  T given_;
};
TYPED_TEST_SUITE_P(EveryIoBoards);

TYPED_TEST_P(EveryIoBoards, AnswerWithTheLowestBoardOrThatThereIsNone) {
  EXPECT_EQ(this->Open(), 0);
  this->given_.Boards().CloseDevices();
  this->given_.Unplug();
  EXPECT_EQ(this->Open(), kNoBoard);
}

TYPED_TEST_P(EveryIoBoards, SwitchAndDimTheLampsOfEachBoardByItself) {
  IoBoards& boards = this->given_.Boards();
  this->Open();
  boards.OutputAllDigital(0, 0x81);
  boards.SetDigitalChannel(0, 2);
  boards.ClearDigitalChannel(0, 8);
  boards.OutputAnalogChannel(1, 1, 7);
  boards.OutputAnalogChannel(1, 8, 200);
  this->Expect(0, {0x03, {}});
  this->Expect(1, {0, {7, 0, 0, 0, 0, 0, 0, 200}});
  boards.ClearAllDigital(0);
  boards.ClearAllAnalog(1);
  boards.SetDigitalChannel(1, 8);
  this->Expect(0, {});
  this->Expect(1, {0x80, {}});
}

TYPED_TEST_P(EveryIoBoards, TakeTheNearestValueOfOneThatIsBeyond) {
  this->Open();
  this->given_.Boards().OutputAnalogChannel(0, 1, 256);
  this->given_.Boards().OutputAnalogChannel(0, 2, 40'000);
  this->given_.Boards().OutputAnalogChannel(0, 3, -1);
  this->Expect(0, {0, {255, 255, 0, 0, 0, 0, 0, 0}});
}

TYPED_TEST_P(EveryIoBoards, DoNothingForABoardOrAChannelThatIsNone) {
  IoBoards& boards = this->given_.Boards();
  this->Open();
  boards.OutputAllDigital(0, 0x11);
  boards.OutputAnalogChannel(1, 4, 8);
  for (const int channel : {-1, 0, 9}) {
    for (const int board : {0, 1}) {
      boards.SetDigitalChannel(board, channel);
      boards.ClearDigitalChannel(board, channel);
      boards.OutputAnalogChannel(board, channel, 100);
    }
  }
  for (const int board : {-1, 2}) {
    boards.SetDigitalChannel(board, 1);
    boards.OutputAllDigital(board, 255);
    boards.OutputAnalogChannel(board, 1, 255);
    boards.ClearDigitalChannel(board, 5);
    boards.ClearAllDigital(board);
    boards.ClearAllAnalog(board);
  }
  // Once these are shown, whatever came of the others is too.
  boards.ClearDigitalChannel(0, 1);
  boards.OutputAnalogChannel(1, 4, 9);
  this->Expect(0, {0x10, {}});
  this->Expect(1, {0, {0, 0, 0, 9, 0, 0, 0, 0}});
}

REGISTER_TYPED_TEST_SUITE_P(EveryIoBoards, AnswerWithTheLowestBoardOrThatThereIsNone,
                            SwitchAndDimTheLampsOfEachBoardByItself, TakeTheNearestValueOfOneThatIsBeyond,
                            DoNothingForABoardOrAChannelThatIsNone);

}  // namespace lightorgan::testing
