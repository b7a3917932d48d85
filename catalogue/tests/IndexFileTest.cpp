// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/IndexFile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "support/testing/MemoryFiles.h"

namespace catalogue {
namespace {

IndexReport Parse(std::string_view text, track_table& table, std::size_t piece = 1 << 20) {
  IndexParser parser(table);
  for (; !text.empty(); text.remove_prefix(std::min(piece, text.size()))) parser.Feed(text.substr(0, piece));
  return parser.Finish();
}

track_table Songs() {
  track_table table(KaraokeColumns());
  table.AddRow(std::vector<std::string_view>{"Artist", "Tab\there", "", "back\\slash", "03:45", "/a b.kar"});
  table.AddRow();
  table.AddRow(
      std::vector<std::string_view>{"two\r\nlines", "\\t", "\\", "\xFF\xC3", "", "/caf\xC3\xA9.mid"});
  return table;
}

/// A folder that is gone with the test.
class Folder {
 public:
  Folder() : path_(std::filesystem::path(::testing::TempDir()) / "IndexFileTest") {
    std::filesystem::create_directories(path_);
  }
  ~Folder() { std::filesystem::remove_all(path_); }
  [[nodiscard]] std::filesystem::path Write(std::string_view text) const {
    std::ofstream(path_ / "tlv.ndx", std::ios::binary) << text;
    return path_ / "tlv.ndx";
  }
  [[nodiscard]] const std::filesystem::path& Path() const { return path_; }

 private:
  std::filesystem::path path_;
};

TEST(IndexFileTest, ARowIsALineWithTabsBetweenItsCells) {
  track_table table(KaraokeColumns());
  EXPECT_EQ(IndexText(table), "");
  EXPECT_EQ(Parse("", table).rows, 0);
  table.AddRow(std::vector<std::string_view>{"A", "T\t1", "", "G", "03:45", "C:\\s.kar"});
  EXPECT_EQ(IndexText(table), "A\tT\\t1\t\tG\t03:45\tC:\\\\s.kar\r\n");
}

TEST(IndexFileTest, EveryCellComesBackHoweverTheFileIsCut) {
  const std::string text = IndexText(Songs());
  for (std::size_t piece = 1; piece <= text.size(); ++piece) {
    track_table table(KaraokeColumns());
    const IndexReport report = Parse(text, table, piece);
    EXPECT_EQ(report.rows, 3);
    EXPECT_EQ(report.Skipped(), 0);
    ASSERT_EQ(IndexText(table), text) << "pieces of " << piece;
    ASSERT_EQ(table.Cell(3, karaoke::kArtist), "two\r\nlines");
  }
}

TEST(IndexFileTest, TheLongestRowThatATableHoldsComesBack) {
  track_table table(TrackColumns());
  const std::string cell(70000, '\t');
  table.AddRow(std::vector<std::string_view>(13, cell));
  track_table loaded(TrackColumns());
  EXPECT_EQ(Parse(IndexText(table), loaded).rows, 1);
  EXPECT_EQ(loaded.Cell(1, 13), table.Cell(1, 13));
}

struct Damage {
  const char* what;
  std::string text;
  int rows, short_rows, long_rows, broken_rows;
};

class DamagedIndexTest : public ::testing::TestWithParam<Damage> {};

TEST_P(DamagedIndexTest, KeepsWholeRowsAndCountsTheOthers) {
  const Damage& damage = GetParam();
  for (const std::size_t piece : {std::size_t{1}, std::size_t{7}, std::size_t{1} << 20}) {
    track_table table(KaraokeColumns());
    const IndexReport report = Parse(damage.text, table, piece);
    EXPECT_EQ(report.rows, damage.rows);
    EXPECT_EQ(report.short_rows, damage.short_rows);
    EXPECT_EQ(report.long_rows, damage.long_rows);
    EXPECT_EQ(report.broken_rows, damage.broken_rows);
    EXPECT_EQ(table.Rows(), damage.rows);
  }
}

const std::string kWhole = "a\tb\tc\td\te\tf";
INSTANTIATE_TEST_SUITE_P(
    Damages, DamagedIndexTest,
    ::testing::Values(Damage{"ShortRow", "a\tb\r\n" + kWhole + "\r\n", 1, 1, 0, 0},
                      Damage{"LongRow", kWhole + "\tg\tx\r\n" + kWhole + "\r\n", 1, 0, 1, 0},
                      Damage{"UnknownEscape", kWhole + "\\x\r\n" + kWhole, 1, 0, 0, 1},
                      Damage{"EscapeAtTheEnd", kWhole + "\\\r\n", 0, 0, 0, 1},
                      Damage{"EmptyLine", "\r\n" + kWhole + "\r\n", 1, 1, 0, 0},
                      Damage{"CutOff", kWhole + "\r\n" + "a\tb\tc", 1, 1, 0, 0},
                      Damage{"NoLastLineEnd", kWhole, 1, 0, 0, 0},
                      Damage{"OtherLineEnds", kWhole + "\n" + kWhole + "\r" + kWhole + "\r\n", 3, 0, 0, 0},
                      Damage{"EndlessLine", std::string(3 << 20, 'x') + "\r\n" + kWhole, 1, 0, 0, 1}),
    [](const auto& test) { return test.param.what; });

TEST(IndexFileTest, LoadingReplacesWhatTheTableHeld) {
  const Folder folder;
  track_table table = Songs();
  const auto report = LoadIndex(folder.Write(kWhole + "\r\n"), table);
  ASSERT_TRUE(report.Ok());
  EXPECT_EQ(IndexText(table), kWhole + "\r\n");
}

TEST(IndexFileTest, ALargeFileKeepsEveryRowInItsPlaceAndCountsTheDamage) {
  const Folder folder;
  track_table table(KaraokeColumns());
  for (int row = 0; row < 60'000; ++row) {
    const std::string number = std::to_string(row);
    table.AddRow(
        std::vector<std::string_view>{number, "a title", "", "a\\genre", "03:45", "/music/" + number});
  }
  const std::string text = IndexText(table);
  for (const std::string& end : {std::string(), std::string("cut off")}) {
    track_table loaded(KaraokeColumns());
    const auto report = LoadIndex(folder.Write("damage\r\n" + text + end), loaded);
    ASSERT_TRUE(report.Ok());
    EXPECT_EQ(report.Value().Skipped(), end.empty() ? 1 : 2);
    ASSERT_EQ(loaded.Rows(), 60'000);
    EXPECT_TRUE(IndexText(loaded) == text);
    EXPECT_EQ(loaded.Cell(60'000, karaoke::kArtist), "59999");
  }
}

TEST(IndexFileTest, CellsOfEveryLengthComeBack) {
  track_table table(KaraokeColumns());
  for (std::size_t length = 0; length < 300; ++length) {
    const std::string cell(length, 'x');
    table.AddRow(std::vector<std::string_view>{cell, "", cell, length % 2 == 0 ? "" : "\x01", "", cell});
    table.AddRow(std::vector<std::string_view>{"", cell});
  }
  track_table loaded(KaraokeColumns());
  EXPECT_EQ(Parse(IndexText(table), loaded).rows, 600);
  EXPECT_EQ(IndexText(loaded), IndexText(table));
  for (int row = 1; row <= 600; ++row) {
    for (int column = 1; column <= 6; ++column) ASSERT_EQ(loaded.Cell(row, column), table.Cell(row, column));
  }
}

TEST(IndexFileTest, AMissingFileAndAFolderInItsPlaceLeaveTheTableEmpty) {
  const Folder folder;
  for (const auto& [path, code] : {std::pair{folder.Path() / "none.ndx", support::ErrorCode::NotFound},
                                   std::pair{folder.Path(), support::ErrorCode::Unreadable}}) {
    track_table table = Songs();
    const auto report = LoadIndex(path, table);
    ASSERT_FALSE(report.Ok());
    EXPECT_EQ(report.Failure().code, code);
    EXPECT_EQ(table.Rows(), 0);
  }
}

TEST(IndexFileTest, SavingPutsTheWholeTableInOnePiece) {
  support::testing::MemoryFiles files;
  ASSERT_TRUE(SaveIndex(files, "x/tlv.ndx", Songs()).Ok());
  EXPECT_EQ(files.Content("x/tlv.ndx"), IndexText(Songs()));
  files.SetFull(true);
  EXPECT_FALSE(SaveIndex(files, "x/tlv.ndx", Songs()).Ok());
}

}  // namespace
}  // namespace catalogue
