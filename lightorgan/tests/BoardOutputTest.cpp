// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "lightorgan/BoardOutput.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "lightorgan/testing/RecordingBoards.h"
#include "support/testing/MemorySettings.h"

namespace lightorgan {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// Boards that answer when the test says so.
class LateBoards final : public IoBoards {
 public:
  std::vector<std::string> calls;
  void Answer(std::int32_t result) { std::exchange(done_, nullptr)(result); }

  void OpenDevice(std::function<void(std::int32_t)> done) override {
    calls.emplace_back("OpenDevice");
    done_ = std::move(done);
  }
  void CloseDevices() override { calls.emplace_back("CloseDevices"); }
  void SetDigitalChannel(int, int) override {}
  void ClearDigitalChannel(int, int) override {}
  void OutputAllDigital(int, std::uint8_t) override {}
  void OutputAnalogChannel(int, int, std::int32_t) override {}
  void ClearAllDigital(int) override {}
  void ClearAllAnalog(int) override {}

 private:
  std::function<void(std::int32_t)> done_;
};

class BoardOutputTest : public ::testing::Test {
 protected:
  void SwitchOn() {
    output_->SwitchOn([this] { boards_.calls.push_back("message, " + Stored()); });
  }
  std::string Stored() { return settings_.Get(support::kApplication, "Setup", "UseK8000", "none"); }

  LateBoards boards_;
  support::testing::MemorySettings settings_;
  support::Settings door_{settings_, support::ProgramFolder("/dj")};
  std::optional<BoardOutput> output_{std::in_place, boards_, door_};
};

TEST_F(BoardOutputTest, WhereNoBoardOpensTheUserIsToldAndTheyAreClosedThoughTheSwitchStaysOn) {
  SwitchOn();
  EXPECT_TRUE(output_->InUse());
  boards_.Answer(kNoBoard);
  EXPECT_THAT(boards_.calls, ElementsAre("OpenDevice", "message, True", "CloseDevices"));
  EXPECT_TRUE(output_->InUse());
}

TEST_F(BoardOutputTest, AnyOtherAnswerIsABoard) {
  for (const std::int32_t answer : {-1, 0, 1}) {
    SwitchOn();
    boards_.Answer(answer);
  }
  EXPECT_THAT(boards_.calls, ::testing::Each("OpenDevice"));
}

TEST_F(BoardOutputTest, AnAnswerThatComesTooLateIsDropped) {
  SwitchOn();
  output_->SwitchOff();
  boards_.calls.clear();
  boards_.Answer(kNoBoard);
  SwitchOn();
  output_.reset();
  boards_.Answer(kNoBoard);
  EXPECT_THAT(boards_.calls, ElementsAre("OpenDevice"));
  EXPECT_EQ(Stored(), "True");
}

TEST_F(BoardOutputTest, TheEndClearsWhatIsInUseAndNothingElse) {
  output_->ShutDown(IoBoardSize::Two);
  EXPECT_THAT(boards_.calls, IsEmpty());
  testing::RecordingBoards boards;
  BoardOutput output(boards, door_);
  output.SwitchOn([] {});
  output.ShutDown(IoBoardSize::One);
  output.ShutDown(IoBoardSize::One);
  EXPECT_THAT(boards.calls,
              ElementsAre("OpenDevice", "ClearAllDigital 0", "ClearAllAnalog 0", "CloseDevices"));
}

}  // namespace
}  // namespace lightorgan
