// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/files/Reindex.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "app/files/TreeScan.h"
#include "app/testing/FakeScan.h"
#include "catalogue/PlainFolders.h"
#include "catalogue/TableChanges.h"
#include "catalogue/testing/FakeTagReader.h"
#include "support/testing/ManualExecutor.h"

namespace app {
namespace {

namespace fs = std::filesystem;
namespace track = catalogue::track;
using catalogue::ScanMode;

std::string Titles(const catalogue::track_table& table) {
  std::string titles;
  for (int row = 1; row <= table.Rows(); ++row) {
    const std::string_view title = table.Cell(row, track::kTitle);
    titles += title.substr(title.find_last_of('/') + 1);
  }
  return titles;
}

/// A catalogue of files a and b, and a folder that holds b and c; a letter is a file and its title.
class ReindexTest : public ::testing::Test {
 protected:
  ReindexTest() {
    scanner_.AddFolder("music", {"music/b", "music/c"});
    for (const char* name : {"a", "b"}) Add(name);
    reindex_.OnLoss([this](const Reindex::Loss& loss, const auto& answer) {
      asked_ = std::to_string(loss.rows) + " " + std::to_string(loss.found) + " " +
               std::to_string(loss.gone) + " " + loss.first;
      answer_ = answer;
      if (answers_at_once_) answer(Reindex::Answer::TakeOut);
    });
  }
  void Add(const std::string& name, const std::string& folder = "music") {
    const std::string path = folder + "/" + name;
    table_.AddRow(std::vector<std::string_view>{"", name, "", path});
  }
  void Rename(int row, const char* title) { table_.SetCell(row, track::kTitle, title); }
  void Start(const std::vector<std::string>& folders = {"music"}) {
    reindex_.Start(folders, {}, [this](const Reindex::Outcome& outcome) {
      rows_ = outcome.rows;
      said_ = outcome.sentence;
    });
  }
  void Pump() {
    for (const Mailbox::Job& job : box_->Take()) job();
  }
  void Work() {
    while (workers_.RunOne()) Pump();
  }

  support::testing::ManualExecutor workers_;
  testing::FakeScan scanner_{workers_};
  std::shared_ptr<WorkGate> gate_ = std::make_shared<WorkGate>();
  std::shared_ptr<Mailbox> box_ = std::make_shared<Mailbox>();
  support::Sentences say_;
  catalogue::track_table table_{catalogue::TrackColumns()};
  Reindex reindex_{table_, ScanMode::Music, scanner_, workers_, gate_, box_, say_};
  int rows_ = -1;
  std::string said_;
  bool answers_at_once_ = true;
  std::string asked_;
  std::function<void(Reindex::Answer)> answer_;
};

TEST_F(ReindexTest, WhatBecomesOfTheTableMeanwhileStays) {
  const struct {
    const char* what;
    std::function<void()> change;
    const char* after;
  } cases[] = {
      {"nothing", [] {}, "bc"},
      {"a file of another folder is added", [this] { Add("x"); }, "bcx"},
      {"a file that the scan finds too is added", [this] { Add("c"); }, "bc"},
      {"a row is changed", [this] { Rename(2, "B"); }, "Bc"},
      {"a row that the scan does not find is changed", [this] { Rename(1, "A"); }, "bcA"},
      {"a row is removed", [this] { table_.RemoveRow(2); }, "c"},
      {"all at once", [this] { Add("x"), Rename(1, "A"), table_.RemoveRow(2); }, "cAx"},
  };
  const catalogue::track_table before = table_;
  for (const auto& one : cases) {
    table_ = before;
    Start();
    workers_.RunOne();
    one.change();
    Work();
    EXPECT_EQ(Titles(table_), one.after) << one.what;
    EXPECT_EQ(rows_, table_.Rows()) << one.what;
  }
}

TEST_F(ReindexTest, AFewChangesAreCaughtUpWithAtOnceAndManyByAWorker) {
  std::string many;
  for (char name = 'k'; name <= 'w'; ++name) many += name;
  for (const std::string& added : {std::string("x"), many}) {
    Start();
    for (int i = 0; i < 3; ++i) workers_.RunOne();  // both files and the end
    for (const char name : added) Add({name});
    Pump();
    EXPECT_EQ(reindex_.Running(), added.size() > catalogue::kFewChanges);
    Add("y");
    Work();
    EXPECT_EQ(Titles(table_), "bc" + added + "y");
    table_.Clear();
    for (const char* name : {"a", "b"}) Add(name);
  }
}

TEST_F(ReindexTest, ACancelledScanThatWasThroughChangesNothing) {
  Start();
  for (int i = 0; i < 3; ++i) workers_.RunOne();
  reindex_.Cancel();
  Work();
  Pump();
  EXPECT_EQ(Titles(table_), "ab");
  EXPECT_FALSE(reindex_.Running());
}

TEST_F(ReindexTest, NoRowGoesBeforeSomebodySaidSo) {
  answers_at_once_ = false;
  const catalogue::track_table before = table_;
  for (const auto& [answer, after] :
       {std::pair{Reindex::Answer::Keep, "bcax"}, {Reindex::Answer::TakeOut, "bcx"}}) {
    table_ = before;
    Start();
    Work();
    EXPECT_EQ(asked_, "2 2 1 music/a");
    EXPECT_EQ(Titles(table_), "ab");
    EXPECT_TRUE(reindex_.Running());
    Add("x");  // while somebody thinks it over
    answer_(answer);
    Work();
    EXPECT_EQ(Titles(table_), after);
    EXPECT_FALSE(reindex_.Running());
  }
}

TEST_F(ReindexTest, AScanThatIsCancelledWhileItAsksChangesNothing) {
  answers_at_once_ = false;
  Start();
  Work();
  reindex_.Cancel();
  answer_(Reindex::Answer::TakeOut);
  Work();
  EXPECT_EQ(Titles(table_), "ab");
  EXPECT_EQ(rows_, 0);
}

TEST_F(ReindexTest, FoldersComeOneBehindTheOtherAndOneThatIsNotThereKeepsItsRows) {
  scanner_.AddFolder("disk", {"disk/d"});
  scanner_.AddFolder("empty", {});
  Add("s", "stick");
  Add("e", "empty");
  Add("o", "other");
  Start({"disk", "stick", "music", "music/in it", "empty", "disk"});
  Work();
  EXPECT_EQ(Titles(table_), "dbcseo");
  EXPECT_EQ(asked_, "5 3 1 music/a");
  EXPECT_EQ(said_,
            "The folder \"stick\" is not there or holds nothing now; its 1 row stays. "
            "The folder \"empty\" is not there or holds nothing now; its 1 row stays. "
            "1 row was taken out, because its file is no longer there.");
}

TEST_F(ReindexTest, TheEmptyPlaceOfAStickTakesNothingOut) {
  scanner_.AddFolder("stick", {});
  Add("s", "stick");
  Start({"stick"});
  Work();
  EXPECT_EQ(Titles(table_), "abs");
  EXPECT_EQ(asked_, "");
}

/// Both scanners on a folder with the files 1.mp3 and 2.mp3.
class ScanContract : public ::testing::TestWithParam<const char*> {
 protected:
  ScanContract() {
    fs::remove_all(folder_);
    fs::create_directories(folder_);
    std::vector<std::string> files;
    for (const char* name : {"1.mp3", "2.mp3"}) {
      files.push_back((folder_ / name).string());
      std::ofstream(files.back()) << "four";
    }
    fake_.AddFolder(folder_.string(), files);
    tags_.AcceptAnyFile();
  }
  ~ScanContract() override { fs::remove_all(folder_); }
  std::shared_ptr<RunningScan> Start(const std::string& folder, ScanMode mode = ScanMode::Music) {
    ScanPort& port = std::string(GetParam()) == "Fake" ? static_cast<ScanPort&>(fake_) : tree_;
    return port.Start({mode, folder}, [this](ScanFound found) { found_.push_back(std::move(found)); });
  }

  fs::path folder_ = fs::path(::testing::TempDir()) / "scan-contract";
  support::testing::ManualExecutor workers_;
  catalogue::testing::FakeTagReader tags_;
  catalogue::TagScratch scratch_{folder_ / "Tagging.tlv"};
  testing::FakeScan fake_{workers_};
  catalogue::PlainFolders folders_;
  TreeScan tree_{
      {folders_, tags_, &scratch_}, workers_, std::make_shared<WorkGate>(), std::make_shared<IdleCores>(2)};
  std::vector<ScanFound> found_;
};
INSTANTIATE_TEST_SUITE_P(Both, ScanContract, ::testing::Values("Fake", "Tree"),
                         [](const auto& test) { return std::string(test.param); });

TEST_P(ScanContract, HandsOverTheRowsOfItsModeOnce) {
  for (const auto& [mode, column] : {std::pair{ScanMode::Music, track::kFilename},
                                     std::pair{ScanMode::Karaoke, catalogue::karaoke::kFilename}}) {
    found_.clear();
    const auto scan = Start(folder_.string(), mode);
    EXPECT_TRUE(found_.empty()) << "it waited";
    workers_.RunAll();
    ASSERT_EQ(found_.size(), 1U);
    EXPECT_EQ(found_[0].end, ScanFound::End::Complete);
    ASSERT_EQ(found_[0].rows.Rows(), 2);
    EXPECT_EQ(found_[0].rows.Cell(2, column), (folder_ / "2.mp3").string());
    EXPECT_EQ(scan->Progress().done, scan->Progress().total);
  }
}

TEST_P(ScanContract, EndsSoonWhenItIsCancelledAndSaysSo) {
  Start(folder_.string())->Cancel();
  workers_.RunAll();
  ASSERT_EQ(found_.size(), 1U);
  EXPECT_EQ(found_[0].end, ScanFound::End::Cancelled);
}

TEST_P(ScanContract, TellsAFolderThatIsNotThere) {
  Start((folder_ / "none").string());
  workers_.RunAll();
  ASSERT_EQ(found_.size(), 1U);
  EXPECT_EQ(found_[0].end, ScanFound::End::FolderMissing);
}

}  // namespace
}  // namespace app
