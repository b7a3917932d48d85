// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/boards/BoardSender.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <condition_variable>
#include <string>
#include <vector>

#include "support/Mutex.h"

namespace platform::boards {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Calls = std::vector<std::string>;

/// What is at the other end of the line, and what came over it.
class Bench {
 public:
  /// Boards 0 and 1, as in "01".
  void Plug(const std::string& boards) {
    support::MutexLock lock(mutex_);
    for (std::size_t board = 0; board < kBoards; ++board)
      plugged_[board] = boards.find(std::to_string(board)) != std::string::npos;
  }
  /// The nth message from now on is refused, and its board let go.
  void FailMessage(int n) {
    support::MutexLock lock(mutex_);
    fail_in_ = n;
  }
  void Hold() {
    support::MutexLock lock(mutex_);
    held_up_ = true;
  }
  void LetGo() {
    support::MutexLock lock(mutex_);
    held_up_ = false;
    changed_.notify_all();
  }
  /// Comes true within five seconds.
  template <typename Condition>
  [[nodiscard]] bool Comes(Condition condition) {
    const auto deadline = std::chrono::steady_clock::now() + 5s;
    support::MutexLock lock(mutex_);
    while (!condition(calls_)) {
      if (std::chrono::steady_clock::now() >= deadline) return false;
      lock.WaitUntil(changed_, deadline);
    }
    return true;
  }
  [[nodiscard]] bool ComesTo(const std::string& last) {
    return Comes([&](const Calls& calls) { return !calls.empty() && calls.back() == last; });
  }
  [[nodiscard]] Calls Take() {
    support::MutexLock lock(mutex_);
    return std::exchange(calls_, {});
  }

  BoardSet Look() {
    support::MutexLock lock(mutex_);
    const BoardSet fresh = plugged_ & ~held_;
    held_ = plugged_;
    return fresh;
  }
  BoardSet Held() {
    support::MutexLock lock(mutex_);
    return held_;
  }
  void Release() {
    support::MutexLock lock(mutex_);
    if (held_.any()) Note("release");
    held_.reset();
  }
  bool Message(std::size_t board, const std::string& text) {
    support::MutexLock lock(mutex_);
    Note(text);
    while (held_up_) lock.Wait(changed_);
    if (fail_in_ == 0 || --fail_in_ > 0) return true;
    held_.reset(board);
    return false;
  }

 private:
  void Note(const std::string& text) DJ_REQUIRES(mutex_) {
    calls_.push_back(text);
    changed_.notify_all();
  }

  support::Mutex mutex_;
  std::condition_variable changed_;
  BoardSet plugged_ DJ_GUARDED_BY(mutex_), held_ DJ_GUARDED_BY(mutex_);
  Calls calls_ DJ_GUARDED_BY(mutex_);
  int fail_in_ DJ_GUARDED_BY(mutex_) = 0;
  bool held_up_ DJ_GUARDED_BY(mutex_) = false;
};

class ScriptedLine final : public BoardLine {
 public:
  explicit ScriptedLine(std::shared_ptr<Bench> bench) : bench_(std::move(bench)) {}

  BoardSet Look(Occasion) override { return bench_->Look(); }
  BoardSet Held() const override { return bench_->Held(); }
  bool Switch(std::size_t board, std::uint8_t channels) override {
    return bench_->Message(board, "switch " + std::to_string(board) + " " + std::to_string(channels));
  }
  bool Dim(std::size_t board, const DimmedValues& values, const DimmedValues* before) override {
    std::string text = (before == nullptr ? "dim all " : "dim ") + std::to_string(board);
    for (const std::uint8_t value : values) text += " " + std::to_string(value);
    return bench_->Message(board, text);
  }
  void Release() override { bench_->Release(); }
  support::Error Trouble() const override { return {}; }

 private:
  std::shared_ptr<Bench> bench_;
};

class BoardSenderTest : public ::testing::Test {
 protected:
  /// Waits for the answer.
  std::int32_t Open() {
    std::optional<std::int32_t> answer;
    boards_->OpenDevice([&](std::int32_t result) { answer = result; });
    while (!answer) (void)boards_->Trouble();
    return *answer;
  }
  /// Board 0 has been told that all is dark.
  void OpenFirstBoard() {
    bench_->Plug("0");
    ASSERT_EQ(Open(), 0);
    ASSERT_THAT(bench_->Take(), ElementsAre("switch 0 0", "dim all 0 0 0 0 0 0 0 0 0"));
  }
  /// Makes calls while the sender is busy with a message, so that they reach it together.
  template <typename MakeCalls>
  void Together(MakeCalls make_calls) {
    bench_->Hold();
    boards_->OutputAllDigital(0, 0x80);
    EXPECT_TRUE(bench_->ComesTo("switch 0 128"));
    (void)bench_->Take();
    make_calls();
    bench_->LetGo();
  }
  void Quit() { boards_.reset(); }

  std::shared_ptr<Bench> bench_ = std::make_shared<Bench>();
  std::unique_ptr<BoardSender> boards_ =
      std::make_unique<BoardSender>(std::make_unique<ScriptedLine>(bench_), Pace{1ms, 0ms, 5s});
};

TEST_F(BoardSenderTest, TheAnswerToOpeningIsTheLowestBoardAndComesOnTheCallersThread) {
  for (const auto& [plugged, answer] : {std::pair("", -2), {"0", 0}, {"1", 1}, {"01", 0}}) {
    bench_->Plug(plugged);
    EXPECT_EQ(Open(), answer) << plugged;
    boards_->CloseDevices();
  }
}

TEST_F(BoardSenderTest, CallsOfOneRefreshGoOutAsOneMessageForEachKindOfOutput) {
  OpenFirstBoard();
  Together([&] {
    for (int channel = 1; channel <= 8; ++channel) {
      boards_->SetDigitalChannel(0, channel);
      boards_->OutputAnalogChannel(0, channel, channel * 50);
    }
    boards_->ClearDigitalChannel(0, 2);
  });
  EXPECT_TRUE(bench_->Comes([](const Calls& calls) { return calls.size() >= 2; }));
  Quit();
  EXPECT_THAT(bench_->Take(), ElementsAre("switch 0 253", "dim 0 50 100 150 200 250 255 255 255",
                                          "switch 0 0", "dim 0 0 0 0 0 0 0 0 0", "release"));
}

TEST_F(BoardSenderTest, TheFirstCallOfARefreshWaitsForTheOthers) {
  boards_ = std::make_unique<BoardSender>(std::make_unique<ScriptedLine>(bench_), Pace{1h, 1h, 5s});
  OpenFirstBoard();
  for (int i = 0; i < 1000; ++i) {
    boards_->OutputAllDigital(0, static_cast<std::uint8_t>(i));
    std::this_thread::yield();
  }
  boards_->CloseDevices();
  Quit();
  EXPECT_THAT(bench_->Take(), ElementsAre("switch 0 231", "release"));
}

TEST_F(BoardSenderTest, WhatIsToldAgainOrConcernsNoBoardIsNotSent) {
  OpenFirstBoard();
  boards_->ClearAllDigital(0);
  boards_->OutputAnalogChannel(0, 1, -7);
  for (const int channel : {-1, 0, 9}) {
    boards_->SetDigitalChannel(0, channel);
    boards_->OutputAnalogChannel(0, channel, 9);
  }
  for (const int board : {-1, 1, 2}) boards_->OutputAllDigital(board, 255);
  boards_->CloseDevices();
  Quit();
  EXPECT_THAT(bench_->Take(), ElementsAre("release"));
}

TEST_F(BoardSenderTest, ClosingSendsFirstWhatWasSaidBefore) {
  OpenFirstBoard();
  Together([&] {
    boards_->ClearAllDigital(0);
    boards_->OutputAnalogChannel(0, 8, 1);
    boards_->CloseDevices();
  });
  EXPECT_TRUE(bench_->ComesTo("release"));
  Quit();
  EXPECT_THAT(bench_->Take(), ElementsAre("switch 0 0", "dim 0 0 0 0 0 0 0 0 1", "release"));
}

TEST_F(BoardSenderTest, ABoardThatLostAMessageIsToldEverythingWhenItIsFoundAgain) {
  for (int n = 1; n <= 2; ++n) {
    bench_->Plug("01");
    Open();
    Together([&] {
      boards_->OutputAllDigital(0, 3);
      boards_->OutputAnalogChannel(0, 1, static_cast<int>(7));
      bench_->FailMessage(n + 1);
    });
    EXPECT_TRUE(bench_->ComesTo("dim all 0 7 0 0 0 0 0 0 0")) << n;
    EXPECT_THAT(bench_->Take(), ::testing::Contains("switch 0 3"));
    boards_->ClearAllAnalog(0);
    boards_->CloseDevices();
    EXPECT_TRUE(bench_->ComesTo("release"));
  }
}

TEST_F(BoardSenderTest, BoardsThatComeLaterAreFoundThoughTheOpeningFailed) {
  std::optional<std::int32_t> answer;
  boards_->OpenDevice([&](std::int32_t result) {
    answer = result;
    boards_->CloseDevices();
  });
  while (!answer) (void)boards_->Trouble();
  boards_->OutputAllDigital(1, 4);
  EXPECT_EQ(*answer, lightorgan::kNoBoard);
  bench_->Plug("1");
  EXPECT_TRUE(bench_->Comes(
      [](const Calls& calls) { return std::count(calls.begin(), calls.end(), "switch 1 4") == 1; }));
}

TEST_F(BoardSenderTest, SaysWhichBoardIsMissedWhileItIsUsed) {
  bench_->Plug("0");
  Open();
  EXPECT_EQ(boards_->Trouble().text, "");
  boards_->SetDigitalChannel(1, 1);
  while (boards_->Trouble().text.empty()) std::this_thread::yield();
  EXPECT_EQ(boards_->Trouble().text, "The K8061 with address 1 is not plugged in.");
}

TEST_F(BoardSenderTest, BoardsThatWereClosedAreLeftAsTheyAre) {
  OpenFirstBoard();
  boards_->OutputAllDigital(0, 1);
  boards_->CloseDevices();
  ASSERT_TRUE(bench_->ComesTo("release"));
  (void)bench_->Take();
  Quit();
  EXPECT_THAT(bench_->Take(), IsEmpty());
}

TEST_F(BoardSenderTest, ADriverThatDoesNotComeBackHoldsNobodyUp) {
  boards_ = std::make_unique<BoardSender>(std::make_unique<ScriptedLine>(bench_), Pace{1ms, 0ms, 20ms});
  OpenFirstBoard();
  bench_->Hold();
  boards_->OutputAllDigital(0, 1);
  ASSERT_TRUE(bench_->ComesTo("switch 0 1"));
  Quit();
  bench_->LetGo();
  EXPECT_TRUE(bench_->ComesTo("release"));
}

}  // namespace
}  // namespace platform::boards
