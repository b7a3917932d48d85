// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/usb/K8061Boards.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "platform/usb/testing/EmulatedK8061.h"

namespace platform::usb {
namespace {

using testing::EmulatedBus;
using testing::EmulatedK8061;
using Fault = EmulatedK8061::Fault;
using Lamps = EmulatedK8061::Lamps;

const Lamps kDark{0, {}};

/// The real adapter at an emulated bus with the board of outputs 1 to 8, and one more.
class K8061BoardsTest : public ::testing::Test {
 protected:
  std::int32_t Open() {
    std::optional<std::int32_t> answer;
    boards_->OpenDevice([&](std::int32_t result) { answer = result; });
    while (!answer) (void)boards_->Trouble();
    return *answer;
  }
  void Plug(int boards) {
    first_.Plug();
    if (boards > 1) second_.Plug();
  }
  [[nodiscard]] bool Says(const std::string& text) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    while (boards_->Trouble().text != text && std::chrono::steady_clock::now() < deadline)
      std::this_thread::yield();
    return boards_->Trouble().text == text;
  }
  void Quit() { boards_.reset(); }

  EmulatedBus bus_;
  EmulatedK8061 first_{bus_, 2, 0};
  EmulatedK8061 second_{bus_, 3, 1};
  std::unique_ptr<boards::BoardSender> boards_ = std::make_unique<K8061Boards>();
};

TEST_F(K8061BoardsTest, AnEveningWithOneAndWithTwoBoardsEndsDark) {
  for (const int count : {1, 2}) {
    Plug(count);
    ASSERT_EQ(Open(), 0);
    EXPECT_TRUE(first_.Shows(kDark));
    for (int board = 0; board < 2; ++board) {
      boards_->OutputAllDigital(board, 0x85);
      boards_->SetDigitalChannel(board, 2);
      boards_->ClearDigitalChannel(board, 8);
      for (int channel = 1; channel <= 8; ++channel)
        boards_->OutputAnalogChannel(board, channel, channel * 40 - 20 + board);
    }
    EXPECT_TRUE(first_.Shows({7, {20, 60, 100, 140, 180, 220, 255, 255}})) << count;
    EXPECT_TRUE(count == 1 || second_.Shows({7, {21, 61, 101, 141, 181, 221, 255, 255}}));
    for (int board = 0; board < count; ++board) {
      boards_->ClearAllDigital(board);
      boards_->ClearAllAnalog(board);
    }
    boards_->CloseDevices();
    EXPECT_TRUE(first_.Shows(kDark));
    EXPECT_TRUE(count == 1 || second_.Shows(kDark));
    Quit();
    boards_ = std::make_unique<K8061Boards>();
    first_.Unplug();
  }
}

TEST_F(K8061BoardsTest, LampsGoDarkWhenTheProgramEndsWithoutAWord) {
  Plug(2);
  Open();
  boards_->OutputAllDigital(0, 255);
  boards_->OutputAnalogChannel(1, 8, 255);
  ASSERT_TRUE(first_.Shows({255, {}}));
  Quit();
  EXPECT_TRUE(first_.Shows(kDark));
  EXPECT_TRUE(second_.Shows(kDark));
}

TEST_F(K8061BoardsTest, ARefreshTakesTwoExchangesABoardAndNoneWhenNothingChanged) {
  boards::Pace pace;
  pace.gathering = std::chrono::milliseconds(20);  // however slow this computer is
  boards_ = std::make_unique<boards::BoardSender>(std::make_unique<K8061Line>(), pace);
  Plug(2);
  Open();
  ASSERT_TRUE(second_.Shows(kDark));
  (void)first_.TakeCounts(), (void)second_.TakeCounts();
  constexpr int kRefreshes = 20;
  for (int i = 1; i <= kRefreshes; ++i) {
    const auto value = static_cast<std::uint8_t>(i);
    for (int pass = 0; pass < 2; ++pass) {  // the second changes nothing
      for (int board = 0; board < 2; ++board) {
        boards_->OutputAllDigital(board, value);
        for (int channel = 1; channel <= 8; ++channel) boards_->OutputAnalogChannel(board, channel, i);
      }
    }
    Lamps lamps{value, {}};
    lamps.dimmed.fill(value);
    ASSERT_TRUE(first_.Shows(lamps));
    ASSERT_TRUE(second_.Shows(lamps));
  }
  for (EmulatedK8061* board : {&first_, &second_}) {
    const auto counts = board->TakeCounts();
    EXPECT_EQ(counts.switched, kRefreshes);
    EXPECT_EQ(counts.dimmed, kRefreshes);
  }
}

TEST_F(K8061BoardsTest, WrongAndMissingAnswersAreOvercomeAndTheNextAnswerBelongsToItsCommand) {
  Plug(1);
  Open();
  std::uint8_t pattern = 1;
  const auto tell = [&](int kinds) {
    ++pattern;
    boards_->OutputAllDigital(0, pattern);
    if (kinds > 1) boards_->OutputAnalogChannel(0, 1, pattern);
    return first_.WaitUntil([&](const Lamps& lamps, const auto&) {
      return lamps.switched == pattern && (kinds == 1 || lamps.dimmed[0] == pattern);
    });
  };
  for (const Fault fault : {Fault::Late, Fault::Previous, Fault::Short, Fault::Silent}) {
    for (int kinds = 1; kinds <= 2; ++kinds) {
      first_.FailAnswer(fault, kinds);
      EXPECT_TRUE(tell(kinds)) << static_cast<int>(fault) << " " << kinds;
      int overlapped = 1;
      for (int i = 0; i < 20 && overlapped > 0; ++i) {
        (void)first_.TakeCounts();
        EXPECT_TRUE(tell(kinds));
        overlapped = first_.TakeCounts().overlapped;
      }
      EXPECT_EQ(overlapped, 0) << static_cast<int>(fault) << " " << kinds;
    }
  }
  EXPECT_EQ(boards_->Trouble().text, "");
}

TEST_F(K8061BoardsTest, AnErrorOfOneTransferIsOvercome) {
  Plug(1);
  Open();
  ASSERT_TRUE(first_.Shows(kDark));
  first_.FailOnce();
  boards_->OutputAllDigital(0, 6);
  EXPECT_TRUE(first_.Shows({6, {}}));
}

TEST_F(K8061BoardsTest, AnAddressIsBelievedWhenTheWholeAnswerIsThere) {
  second_.Plug();
  second_.LeaveAnswer({12, 0});  // to a program before us
  second_.FailAnswer(Fault::Short);
  EXPECT_EQ(Open(), 1);
}

TEST_F(K8061BoardsTest, ABoardThatIsPulledInMidExchangeIsToldEverythingWhenItIsBack) {
  Plug(2);
  Open();
  boards_->OutputAnalogChannel(0, 3, 33);
  ASSERT_TRUE(first_.Shows({0, {0, 0, 33}}));
  first_.PullAfter(1);
  boards_->OutputAllDigital(0, 9);
  boards_->OutputAllDigital(1, 9);
  EXPECT_TRUE(second_.Shows({9, {}}));
  first_.Unplug();
  EXPECT_TRUE(Says("The K8061 with address 0 is not plugged in."));
  first_.Plug();
  EXPECT_TRUE(first_.Shows({9, {0, 0, 33}}));
  EXPECT_TRUE(Says(""));
}

TEST_F(K8061BoardsTest, ABoardThatIsPulledAndPluggedInWhileNothingHappensIsFound) {
  Plug(1);
  Open();
  boards_->OutputAllDigital(0, 5);
  ASSERT_TRUE(first_.Shows({5, {}}));
  first_.Unplug();
  EXPECT_TRUE(Says("No K8061 is plugged in."));
  first_.Plug();
  EXPECT_TRUE(first_.Shows({5, {}}));
}

TEST_F(K8061BoardsTest, ABoardWithoutItsSupplyIsToldOfAndLitWhenItGetsIt) {
  first_.SwitchSupply(false);
  Plug(1);
  EXPECT_EQ(Open(), 0);
  boards_->OutputAllDigital(0, 5);
  EXPECT_TRUE(Says("The K8061 with address 0 is there, but its 12 V supply is off."));
  ASSERT_TRUE(first_.WaitUntil([](const Lamps&, const auto& counts) { return counts.switched == 2; }));
  first_.SwitchSupply(true);
  EXPECT_TRUE(first_.Shows({5, {}}));
  EXPECT_TRUE(Says(""));
}

TEST_F(K8061BoardsTest, JumpersSayWhichBoardItIs) {
  struct Case {
    int first, second, product;
    std::int32_t answer;
    const char* trouble;
  };
  const Case cases[] = {
      {1, 0, 0x8061, 0, ""},
      {1, 0, 0x8062, 0, ""},
      {1, 7, 0x8061, 1,
       "A K8061 is set to address 7; its jumpers have to say 0 (outputs 1 to 8) or 1 (outputs 9 to 16)."},
      {0, 0, 0x8061, 0,
       "Two K8061 boards are set to address 0; only one of them is used until the other's jumpers change."},
      {200, 200, 0x8061, -2,
       "A K8061 is set to address 200; its jumpers have to say 0 (outputs 1 to 8) or 1 (outputs 9 to 16)."},
  };
  for (const Case& one : cases) {
    first_.SetAddress(one.first);
    second_.SetAddress(one.second);
    first_.Plug(one.product);
    second_.Plug(one.product);
    EXPECT_EQ(Open(), one.answer) << one.trouble;
    EXPECT_EQ(boards_->Trouble().text, one.trouble);
    boards_->OutputAllDigital(1, 0x11);
    EXPECT_TRUE(one.first != 1 || first_.Shows({0x11, {}}));
    boards_->ClearAllDigital(1);
    boards_->CloseDevices();
    first_.Unplug();
    second_.Unplug();
  }
}

TEST_F(K8061BoardsTest, WhereTheAddressIsNotToldTheNumberOfTheProductSaysIt) {
  second_.Plug(0x8062);
  second_.SetAddress(-1);
  EXPECT_EQ(Open(), 1);
}

TEST_F(K8061BoardsTest, ADriverOfTheSystemsIsPutAsideAndComesBack) {
  first_.BindDriver();
  first_.Plug();
  Open();
  boards_->OutputAllDigital(0, 1);
  EXPECT_TRUE(first_.Shows({1, {}}));
  Quit();
  EXPECT_EQ(first_.DriversDetached(), 1);
  EXPECT_EQ(first_.DriversAttached(), 1);
}

TEST_F(K8061BoardsTest, CallsDoNotWaitForABoardThatIsSlow) {
  first_.SetPace(std::chrono::milliseconds(30));
  first_.Plug();
  boards_->OpenDevice([](std::int32_t) {});
  for (int i = 0; i < 1000; ++i) boards_->OutputAllDigital(0, static_cast<std::uint8_t>(i));
  EXPECT_TRUE(first_.Shows({static_cast<std::uint8_t>(999), {}}));
  EXPECT_LT(first_.TakeCounts().switched, 50);
}

}  // namespace
}  // namespace platform::usb
