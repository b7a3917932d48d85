// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/files/IndexKeeper.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "catalogue/IndexFile.h"
#include "support/Sentences.h"
#include "support/testing/ManualExecutor.h"

namespace app {
namespace {

namespace fs = std::filesystem;

/// Saves to the disk without more ado.
class PlainSaver final : public support::FileSaver {
 public:
  support::Result<void> Save(const fs::path& path, std::string_view content) override {
    std::ofstream file(full ? path / "no such folder" : path, std::ios::binary);
    file << content;
    if (file.good()) return {};
    return support::Failed(support::ErrorCode::Unreadable, support::Sentence::NoWriteRight, {path.string()});
  }
  bool full = false;
};

class IndexKeeperTest : public ::testing::Test {
 protected:
  IndexKeeperTest() {
    fs::remove_all(folder_);
    fs::create_directories(folder_);
  }
  ~IndexKeeperTest() override { fs::remove_all(folder_); }
  void Write(const std::string& name, std::string_view text) { std::ofstream(folder_ / name) << text; }
  [[nodiscard]] std::string Read(const std::string& name) const {
    std::ifstream file(folder_ / name, std::ios::binary);
    if (!file) return "none";
    return {std::istreambuf_iterator<char>(file), {}};
  }
  static std::string Line(const std::string& path) { return "\t\t\t" + path + "\t\t\t\t\t\t\t\t\t\r\n"; }
  static catalogue::track_table TableOf(const std::string& path) {
    catalogue::track_table table(catalogue::TrackColumns());
    table.AddRow(std::vector<std::string_view>{"", "", "", path});
    return table;
  }

  const fs::path folder_ = fs::path(::testing::TempDir()) / "index-keeper";
  PlainSaver saver_;
  support::testing::ManualExecutor workers_;
  std::vector<std::string> complaints_;
  IndexKeeper keeper_{saver_, workers_, std::make_shared<WorkGate>(), folder_ / "tlv.ndx",
                      [this](const support::Error& failure) { complaints_.push_back(failure.text); }};
};

TEST_F(IndexKeeperTest, WhatWasNotReadIsSetAsideByTheFirstSaveAlone) {
  Write("tlv.ndx", "damaged");
  Write("tlv.ndx.damaged-1", "an older one");
  keeper_.SetAsideFirst(kDamaged);
  EXPECT_EQ(Read("tlv.ndx"), "damaged") << "nothing is done before there is something to save";
  for (const char* path : {"/a", "/b"}) keeper_.Save(TableOf(path)), workers_.RunAll();
  EXPECT_EQ(Read("tlv.ndx.damaged-1"), "an older one");
  EXPECT_EQ(Read("tlv.ndx.damaged-2"), "damaged");
  EXPECT_EQ(Read("tlv.ndx.damaged-3"), "none");
  EXPECT_EQ(Read("tlv.ndx"), Line("/b"));
}

TEST_F(IndexKeeperTest, AFolderInItsPlaceIsSetAsideWithAllThatItHolds) {
  fs::create_directories(folder_ / "tlv.ndx");
  Write("tlv.ndx/letter", "x");
  catalogue::track_table table(catalogue::TrackColumns());
  const auto read = catalogue::LoadIndex(folder_ / "tlv.ndx", table);
  ASSERT_FALSE(read);
  EXPECT_EQ(read.Failure().code, support::ErrorCode::Unreadable);
  keeper_.SetAsideFirst(kUnreadable);
  keeper_.Save(TableOf("/a"));
  workers_.RunAll();
  EXPECT_EQ(Read("tlv.ndx.unreadable-1/letter"), "x");
  EXPECT_EQ(Read("tlv.ndx"), Line("/a"));
}

TEST_F(IndexKeeperTest, ATableMadeAnewKeepsTheLastIndexesUnderNumbers) {
  for (const char* path : {"/1", "/2", "/2", "/3", "/4", "/5"})
    keeper_.Replace(TableOf(path)), workers_.RunAll();
  EXPECT_EQ(Read("tlv.ndx"), Line("/5"));
  EXPECT_EQ(Read("tlv.ndx.before-1"), "none") << "three are enough";
  EXPECT_EQ(Read("tlv.ndx.before-2"), Line("/2"));
  EXPECT_EQ(Read("tlv.ndx.before-4"), Line("/4"));
  EXPECT_EQ(Read("tlv.ndx.before-5"), "none") << "saying the same again makes no copy";
  keeper_.Save(TableOf("/6"));
  workers_.RunAll();
  EXPECT_EQ(Read("tlv.ndx.before-5"), "none");
}

TEST_F(IndexKeeperTest, WhatAFullDiskDidNotTakeIsSavedOnceItDoes) {
  keeper_.Save(TableOf("/1"));
  workers_.RunAll();
  saver_.full = true;
  keeper_.Replace(TableOf("/2"));
  workers_.RunAll();
  for (int tries = 0; tries < 3; ++tries) keeper_.Flush();
  EXPECT_EQ(Read("tlv.ndx"), Line("/1"));
  EXPECT_EQ(complaints_.size(), 1U);
  saver_.full = false;
  keeper_.Flush();
  EXPECT_EQ(Read("tlv.ndx"), Line("/2"));
  EXPECT_EQ(Read("tlv.ndx.before-1"), Line("/1"));
  EXPECT_EQ(Read("tlv.ndx.before-2"), "none") << "one copy, however often it was tried";
}

TEST_F(IndexKeeperTest, FilesBelowTheIndexFollowItsFolder) {
  const std::string own = (folder_ / "MyMusic" / "a\tb.mp3").string();
  catalogue::track_table table = TableOf(own);
  table.AppendFrom(TableOf((folder_ / "x.mp3").string()), 1);
  table.AppendFrom(TableOf(folder_.string() + "-other/x.mp3"), 1);
  table.SetCell(2, catalogue::track::kTitle, (folder_ / "x.mp3").string());
  keeper_.Save(table);
  workers_.RunAll();
  const fs::path moved = folder_.string() + "-moved";
  fs::remove_all(moved);
  fs::rename(folder_, moved);
  catalogue::track_table read(catalogue::TrackColumns());
  ASSERT_TRUE(catalogue::LoadIndex(moved / "tlv.ndx", read));
  fs::remove_all(moved);
  EXPECT_EQ(read.Cell(1, catalogue::track::kFilename), (moved / "MyMusic" / "a\tb.mp3").string());
  EXPECT_EQ(read.Cell(2, catalogue::track::kFilename), (moved / "x.mp3").string());
  EXPECT_EQ(read.Cell(2, catalogue::track::kTitle), (folder_ / "x.mp3").string()) << "a title is no path";
  EXPECT_EQ(read.Cell(3, catalogue::track::kFilename), folder_.string() + "-other/x.mp3");
}

}  // namespace
}  // namespace app
