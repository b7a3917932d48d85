// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "app/tests/Evening.h"

namespace app {
namespace {

using Names = std::vector<std::string>;

class AddFilesTest : public testing::Evening {
 protected:
  AddFilesTest() {
    for (const char* file : {"a.mp3", "b.mp3", "c.flac"}) tags_.AddFile(file);
    StartUp();
  }
  void Add(Names files) {
    station_->AddFiles(std::move(files), [this](int rows, Names refused) {
      rows_ = rows;
      refused_ = std::move(refused);
      ++reports_;
    });
  }
  void Work() {
    while (workers_.RunOne()) station_->PumpWindow();
  }
  [[nodiscard]] Names Files() {
    Names files;
    for (int row = 1; row <= station_->Catalogue().Rows(); ++row) {
      files.emplace_back(station_->Catalogue().Cell(row, catalogue::track::kFilename));
    }
    return files;
  }
  [[nodiscard]] std::optional<std::string> SavedIndex() const { return files_.Content(folder_ / "tlv.ndx"); }

  int rows_ = -1;
  int reports_ = 0;
  Names refused_;
};

TEST_F(AddFilesTest, RowsAreAppendedInTheOrderGivenAndTheIndexIsSaved) {
  Add({"c.flac", "a.mp3"});
  Work();
  EXPECT_EQ(Files(), (Names{"c.flac", "a.mp3"}));
  EXPECT_EQ(rows_, 2);
  EXPECT_EQ(SavedIndex(), "\tc\t00:00\tc.flac\t\t\t\t\t\t\t\t\t\r\n\ta\t00:00\ta.mp3\t\t\t\t\t\t\t\t\t\r\n");
}

TEST_F(AddFilesTest, AFileThatCannotBeAnalysedIsRefusedWithASentence) {
  Add({"none.mp3"});
  Work();
  EXPECT_EQ(rows_, 0);
  EXPECT_EQ(SavedIndex(), std::nullopt) << "nothing was added";
  Add({"a.mp3", "none.mp3", "b.mp3"});
  Work();
  EXPECT_EQ(Files(), (Names{"a.mp3", "b.mp3"}));
  EXPECT_EQ(refused_, Names{"There is no file \"none.mp3\"."});
}

TEST_F(AddFilesTest, AFileThatIsThereGetsNoSecondRow) {
  Add({"a.mp3"});
  Work();
  Add({"a.mp3", "b.mp3", "b.mp3"});
  Work();
  EXPECT_EQ(Files(), (Names{"a.mp3", "b.mp3"}));
  EXPECT_EQ(rows_, 1);
  EXPECT_TRUE(refused_.empty());
}

TEST_F(AddFilesTest, BatchesFollowEachOther) {
  Add({"a.mp3"});
  Add({"a.mp3", "b.mp3"});
  EXPECT_EQ(station_->Adding().total, 3);
  Work();
  EXPECT_EQ(Files(), (Names{"a.mp3", "b.mp3"}));
  EXPECT_EQ(reports_, 2);
  EXPECT_EQ(station_->Adding().total, 0);
}

TEST_F(AddFilesTest, EachFileIsAJobSoThatOtherWorkGetsItsTurn) {
  Add({"a.mp3", "b.mp3", "c.flac"});
  bool ran = false;
  workers_.Post([&ran] { ran = true; });
  workers_.RunOne();
  workers_.RunOne();
  EXPECT_TRUE(ran);
  EXPECT_LT(station_->Adding().done, 3);
}

TEST_F(AddFilesTest, AnIndexThatCannotBeWrittenIsTold) {
  files_.SetFull(true);
  Add({"a.mp3"});
  Work();
  Settle();
  EXPECT_NE(station_->View().notice.find("cannot be written"), std::string::npos);
  EXPECT_EQ(Files(), Names{"a.mp3"});
}

TEST_F(AddFilesTest, ShutDownSavesWhatNoWorkerHasSavedYet) {
  Add({"a.mp3"});
  while (reports_ == 0 && workers_.RunOne()) station_->PumpWindow();
  ASSERT_FALSE(SavedIndex());
  station_->ShutDown();
  EXPECT_TRUE(SavedIndex());
  const int saves = files_.Saves();
  workers_.RunAll();
  EXPECT_EQ(files_.Saves(), saves);
}

TEST_F(AddFilesTest, AWorkerThatComesAfterTheEndTouchesNothing) {
  Add({"a.mp3", "b.mp3"});
  workers_.RunOne();
  const int reads = tags_.Reads();
  station_.reset();
  workers_.RunAll();
  EXPECT_EQ(tags_.Reads(), reads);
  EXPECT_EQ(reports_, 0);
}

}  // namespace
}  // namespace app
