// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/files/MissingFiles.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "support/testing/FakeClock.h"
#include "support/testing/ManualExecutor.h"

namespace app::testing {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

/// A catalogue of 500 files and a playlist of one that is not in it; all of them are there.
class MissingFilesTest : public ::testing::Test {
 protected:
  MissingFilesTest() {
    fs::remove_all(folder_);
    fs::create_directories(folder_);
    for (int file = 1; file <= 500; ++file) Add(catalogue_, file);
    Add(playlist_, 501);
  }
  ~MissingFilesTest() override { fs::remove_all(folder_); }
  [[nodiscard]] std::string Path(int file) const { return (folder_ / std::to_string(file)).string(); }
  void Make(int file) { std::ofstream(Path(file)) << "x"; }
  void Lose(int file) { fs::remove(Path(file)); }
  void Add(catalogue::track_table& table, int file) {
    Make(file);
    table.AddRow(std::vector<std::string_view>{"", "", "", Path(file)});
  }
  void Work() {
    while (workers_.RunOne()) {
    }
    for (const auto& job : box_->Take()) job();
  }

  const fs::path folder_ = fs::path(::testing::TempDir()) / "missing-files";
  catalogue::track_table catalogue_{catalogue::TrackColumns()};
  catalogue::track_table playlist_{catalogue::TrackColumns()};
  support::testing::ManualExecutor workers_;
  support::testing::FakeClock clock_;
  std::shared_ptr<Mailbox> box_ = std::make_shared<Mailbox>();
  std::vector<std::string> told_;
  MissingFiles files_{{workers_, workers_, clock_},
                      std::make_shared<WorkGate>(),
                      box_,
                      {{catalogue_, catalogue::track::kFilename}, {playlist_, catalogue::track::kFilename}},
                      [this](MissingFiles::News news, std::size_t count, const std::string& first) {
                        const bool better = news == MissingFiles::News::Better;
                        told_.push_back((better ? "only " : "") + std::to_string(count) + " " + first);
                      }};
};

TEST_F(MissingFilesTest, EveryTableIsLookedAtAndTheFirstOneToldOf) {
  for (const int file : {3, 499, 501}) Lose(file);
  files_.Look();
  EXPECT_EQ(files_.Answers(), 0U);
  Work();
  EXPECT_EQ(files_.Answers(), 1U);
  for (const int file : {3, 499, 501}) EXPECT_TRUE(files_.Has(Path(file))) << file;
  EXPECT_FALSE(files_.Has(Path(4)));
  EXPECT_EQ(told_, std::vector<std::string>{"2 " + Path(3)});
}

TEST_F(MissingFilesTest, TheyAreLookedForAgainAfterAMinuteAndOnlyNewsIsTold) {
  Lose(3);
  files_.Look();
  Work();
  Make(3);
  clock_.Advance(59s);
  files_.LookAgain();
  Work();
  EXPECT_TRUE(files_.Has(Path(3)));
  clock_.Advance(1s);
  files_.LookAgain();
  Work();
  EXPECT_FALSE(files_.Has(Path(3))) << "it came back";
  EXPECT_EQ(told_, (std::vector<std::string>{"1 " + Path(3), "only 0 "}));
  for (const int file : {4, 5}) Lose(file);
  clock_.Advance(60s);
  files_.LookAgain();
  Work();
  EXPECT_EQ(told_.back(), "2 " + Path(4));
  clock_.Advance(60s);
  files_.LookAgain();
  Work();
  EXPECT_EQ(told_.size(), 3U);
  Make(4);
  clock_.Advance(60s);
  files_.LookAgain();
  Work();
  EXPECT_EQ(told_.back(), "only 1 " + Path(5));
}

TEST_F(MissingFilesTest, OneFileIsLookedAtAtOnce) {
  Lose(7);
  files_.LookAt(Path(7));
  files_.LookAt(Path(8));
  Work();
  EXPECT_TRUE(files_.Has(Path(7)));
  EXPECT_FALSE(files_.Has(Path(8)));
  EXPECT_EQ(files_.Answers(), 1U);
  Make(7);
  files_.LookAt(Path(7));
  Work();
  EXPECT_FALSE(files_.Has(Path(7)));
}

TEST_F(MissingFilesTest, RowsThatCameAreLookedAtAtOnceAlsoWhileAllAre) {
  for (const int file : {601, 602}) Add(playlist_, file), Lose(file);
  files_.LookAt(playlist_, catalogue::track::kFilename, 2);
  Work();
  EXPECT_TRUE(files_.Has(Path(601)) && files_.Has(Path(602)));
  files_.Look();
  workers_.RunOne();
  Add(playlist_, 603);
  Lose(603);
  files_.LookAt(playlist_, catalogue::track::kFilename, 4);
  Work();
  EXPECT_TRUE(files_.Has(Path(601)) && files_.Has(Path(603)));
}

TEST_F(MissingFilesTest, OnlyTheNewestLookCounts) {
  files_.Look();
  workers_.RunOne();
  Lose(1);
  files_.Look();
  Work();
  EXPECT_EQ(files_.Answers(), 1U);
  EXPECT_TRUE(files_.Has(Path(1)));
}

}  // namespace
}  // namespace app::testing
