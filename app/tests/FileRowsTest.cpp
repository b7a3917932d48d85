// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/files/FileRows.h"

#include <gtest/gtest.h>

#include <optional>

#include "support/testing/ManualExecutor.h"

namespace app::testing {
namespace {

using Rows = std::vector<int>;

/// A table whose row 7 holds "7.mp3".
class FileRowsTest : public ::testing::Test {
 protected:
  void Fill(int rows) {
    for (int row = 1; row <= rows; ++row) Add(std::to_string(row) + ".mp3");
  }
  void Add(const std::string& file) { table_.AddRow(std::vector<std::string_view>{"", "", "", file}); }
  void AskForOne(const std::string& file) {
    answer_.reset();
    rows_.One(file, [this](int row) { answer_ = Rows{row}; });
  }
  void AskForAll(const std::string& file) {
    answer_.reset();
    rows_.All(file, [this](const Rows& rows) { answer_ = rows; });
  }
  void Work() {
    while (workers_.RunOne()) {
      for (const auto& job : box_->Take()) job();
    }
  }

  catalogue::track_table table_{catalogue::TrackColumns()};
  support::testing::ManualExecutor workers_;
  std::shared_ptr<Mailbox> box_ = std::make_shared<Mailbox>();
  FileRows rows_{table_, catalogue::track::kFilename, workers_, std::make_shared<WorkGate>(), box_};
  std::optional<Rows> answer_;
};

TEST_F(FileRowsTest, ASmallTableIsLookedThroughAtOnce) {
  Fill(1000);
  Add("7.mp3");
  AskForOne("7.mp3");
  EXPECT_EQ(answer_, Rows{7});
  AskForAll("7.mp3");
  EXPECT_EQ(answer_, (Rows{7, 1001}));
  AskForOne("none.mp3");
  EXPECT_EQ(answer_, Rows{0});
}

TEST_F(FileRowsTest, ALongTableIsLookedThroughByAWorkerUnlessTheFileIsNearTheLastOne) {
  Fill(30'000);
  Add("7.mp3");
  AskForOne("25000.mp3");
  EXPECT_FALSE(answer_);
  Work();
  EXPECT_EQ(answer_, Rows{25'000});
  for (const int near : {25'001, 25'900, 25'880}) {
    AskForOne(std::to_string(near) + ".mp3");
    EXPECT_EQ(answer_, Rows{near});
  }
  AskForAll("7.mp3");
  EXPECT_FALSE(answer_);
  Work();
  EXPECT_EQ(answer_, (Rows{7, 30'001}));
}

TEST_F(FileRowsTest, ARowThatMovesMeanwhileIsFoundWhereItIs) {
  Fill(30'000);
  AskForOne("25000.mp3");
  table_.RemoveRow(1);
  Work();
  EXPECT_EQ(answer_, Rows{24'999});
  AskForOne("100.mp3");
  table_.RemoveRow(99);
  Work();
  EXPECT_EQ(answer_, Rows{0}) << "and one that is taken out is not";
}

}  // namespace
}  // namespace app::testing
