// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/files/ScanRows.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "catalogue/AnalysisParts.h"
#include "catalogue/testing/MemorySideStore.h"

namespace app {
namespace {

namespace fs = std::filesystem;
namespace track = catalogue::track;
using catalogue::PointBy;

struct Row {
  const char* path;
  const char* title;
  const char* end_mix_point = "";
  const char* time = "03:00";
};

/// A folder "music" that is scanned and a folder "stick" beside it; files are there when they were made.
class ScanRowsTest : public ::testing::Test {
 protected:
  ScanRowsTest() {
    fs::remove_all(root_);
    fs::create_directories(root_ / "music");
    fs::create_directories(root_ / "stick");
  }
  ~ScanRowsTest() override { fs::remove_all(root_); }
  [[nodiscard]] std::string Path(const std::string& name) const { return (root_ / name).string(); }
  void Make(const std::string& name) {
    fs::create_directories((root_ / name).parent_path());
    std::ofstream(root_ / name) << "x";
  }
  catalogue::track_table Table(const std::vector<Row>& rows) {
    catalogue::track_table table(catalogue::TrackColumns());
    for (const Row& row : rows) {
      const std::string path = Path(row.path);
      table.AddRow(std::vector<std::string_view>{"A", row.title, row.time, path, "", "", "", "", "", "", "",
                                                 "", row.end_mix_point});
    }
    return table;
  }
  ScanRows Join(const std::vector<Row>& before, const std::vector<Row>& after, std::vector<bool> fresh = {}) {
    for (const Row& row : after) Make(row.path);
    ScanFound found{{}, Table(after)};
    found.fresh = std::move(fresh);
    return JoinRows(Table(before), found, {{Path("music"), true}}, &store_);
  }
  std::string EndOf(const ScanRows& joined, int row = 1) {
    return std::string(joined.rows.Cell(row, track::kEndMixPoint));
  }
  /// What is kept of a file, as if it had been on a deck.
  void Keep(const char* name, const char* sound, std::optional<double> end_by_hand = {}) {
    store_.SetContent(Path(name), sound);
    const auto key = catalogue::KeyOf(store_, Path(name));
    music::TrackAnalysis analysis;
    analysis.wave = std::make_shared<const music::Wave>();
    analysis.grid = std::make_shared<const music::BeatGrid>();
    analysis.mix_points = {{{0}, {0}, {0}, 0, 150}, 3};
    ASSERT_TRUE(catalogue::WriteAnalysis(store_, key->path, key->stamp, analysis));
    if (!end_by_hand) return;
    catalogue::FileMarks marks;
    marks.end = PointBy::Hand;
    marks.end_at = std::chrono::microseconds(static_cast<std::int64_t>(*end_by_hand * 1e6));
    ASSERT_TRUE(store_.Write(key->path, key->stamp, catalogue::SidePart::Marks, catalogue::PackMarks(marks)));
  }

  const fs::path root_ = fs::path(::testing::TempDir()) / "scan-rows";
  catalogue::testing::MemorySideStore store_;
};

const struct {
  const char* what;
  std::vector<Row> before, after;
  const char* still_there;
  const char* moved_to;
  int gone, kept;
} kMoves[] = {
    {"nothing happened", {{"music/x.mp3", "T"}}, {{"music/x.mp3", "T"}}, "", "", 0, 0},
    {"a folder moved", {{"music/a/x.mp3", "T"}}, {{"music/b/c/x.mp3", "T"}}, "", "music/b/c/x.mp3", 0, 0},
    {"another tag", {{"music/a/x.mp3", "T"}}, {{"music/b/x.mp3", "U"}}, "", "", 1, 0},
    {"another name", {{"music/a/x.mp3", "T"}}, {{"music/b/y.mp3", "T"}}, "", "", 1, 0},
    {"two copies to choose from",
     {{"music/a/x.mp3", "T"}},
     {{"music/b/x.mp3", "T"}, {"music/c/x.mp3", "T"}},
     "",
     "",
     1,
     0},
    {"two that are alike went",
     {{"music/a/x.mp3", "T"}, {"music/b/x.mp3", "T"}},
     {{"music/c/x.mp3", "T"}},
     "",
     "",
     2,
     0},
    {"a copy of a file outside the masks",
     {{"music/x.wav", "T"}},
     {{"music/b/x.wav", "T"}},
     "music/x.wav",
     "",
     0,
     1},
    {"a copy of a file in another folder",
     {{"stick/x.mp3", "T"}},
     {{"music/x.mp3", "T"}},
     "stick/x.mp3",
     "",
     0,
     1},
    {"from another folder",
     {{"stick/x.mp3", "T"}},
     {{"music/x.mp3", "T"}},
     "stick/y.mp3",
     "music/x.mp3",
     0,
     0},
    {"a copy on a stick that is not there", {{"stick/x.mp3", "T"}}, {{"music/x.mp3", "T"}}, "", "", 0, 1},
    {"a folder that begins alike", {{"music2/x.mp3", "T"}}, {}, "", "", 0, 1},
};

TEST_F(ScanRowsTest, AFileIsMovedWhereItIsFoundOnceElsewhereAndIsReallyGoneFromWhereItWas) {
  for (const auto& one : kMoves) {
    for (const char* folder : {"music", "stick"}) {
      fs::remove_all(root_ / folder);
      fs::create_directories(root_ / folder);
    }
    if (*one.still_there != '\0') Make(one.still_there);
    const ScanRows joined = Join(one.before, one.after);
    EXPECT_EQ(joined.moved.empty() ? "" : fs::path(joined.moved[0].to).lexically_relative(root_).string(),
              one.moved_to)
        << one.what;
    EXPECT_EQ(joined.gone.Rows(), one.gone) << one.what;
    EXPECT_EQ(joined.kept, one.kept) << one.what;
    EXPECT_EQ(joined.rows.Rows(), static_cast<int>(one.after.size()) + one.kept) << one.what;
  }
}

TEST_F(ScanRowsTest, WhatIsKnownForMixingStaysAndATagGoesBeforeWhatWasFound) {
  EXPECT_EQ(EndOf(Join({{"music/x.mp3", "T", "170.000"}}, {{"music/x.mp3", "T"}})), "170.000");
  EXPECT_EQ(EndOf(Join({{"music/x.mp3", "T", "170.000"}}, {{"music/x.mp3", "T", "2.000"}})), "2.000");
  EXPECT_EQ(EndOf(Join({{"music/a/x.mp3", "T", "170.000"}}, {{"music/b/x.mp3", "T"}})), "170.000")
      << "it was moved";
  EXPECT_EQ(EndOf(Join({{"music/x.mp3", "T", "170.000"}}, {{"music/x.mp3", "U"}}, {true})), "170.000")
      << "another program wrote its tag";
  EXPECT_EQ(EndOf(Join({{"music/x.mp3", "T", "170.000"}}, {{"music/x.mp3", "T", "", "04:00"}}, {true})), "")
      << "another recording took its place";
}

TEST_F(ScanRowsTest, WhatIsKeptOfItsSoundComesBackWithAFileThatHasNoRow) {
  Keep("stick/old.mp3", "sound");
  store_.SetContent(Path("music/x.mp3"), "sound");
  EXPECT_EQ(EndOf(Join({}, {{"music/x.mp3", "T"}})), "150.000");
  EXPECT_EQ(EndOf(Join({}, {{"music/y.mp3", "T"}})), "") << "another sound";
}

TEST_F(ScanRowsTest, APointThatAHandSetGoesBeforeTheTag) {
  Keep("music/x.mp3", "sound", 170);
  EXPECT_EQ(EndOf(Join({{"music/x.mp3", "T", "170.000"}}, {{"music/x.mp3", "T", "2.000"}})), "170.000");
  EXPECT_EQ(EndOf(Join({}, {{"music/x.mp3", "T", "2.000"}})), "170.000");
  Keep("music/y.mp3", "another sound");
  EXPECT_EQ(EndOf(Join({}, {{"music/y.mp3", "T", "2.000"}})), "2.000") << "that one was found";
}

TEST_F(ScanRowsTest, AMoveIsKnownByItsSoundWhateverNameAndTagBecame) {
  Make("music/a/x.mp3");
  Keep("music/a/x.mp3", "sound", 170);
  fs::remove(root_ / "music/a/x.mp3");
  store_.SetContent(Path("music/b/new name.mp3"), "sound");
  const ScanRows joined =
      Join({{"music/a/x.mp3", "T", "170.000"}}, {{"music/b/new name.mp3", "Another title"}});
  ASSERT_EQ(joined.moved.size(), 1U);
  EXPECT_EQ(joined.moved[0].to, Path("music/b/new name.mp3"));
  EXPECT_EQ(EndOf(joined), "170.000");
  EXPECT_EQ(joined.gone.Rows(), 0);
}

}  // namespace
}  // namespace app
