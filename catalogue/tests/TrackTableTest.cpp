// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "catalogue/track_table.h"

namespace catalogue {
namespace {

using Row = std::vector<std::string>;

int Add(track_table& table, const Row& cells) {
  return table.AddRow(std::vector<std::string_view>(cells.begin(), cells.end()));
}

Row CellsOf(const track_table& table, int row) {
  Row cells;
  for (int column = 1; column <= static_cast<int>(table.Columns().size()); ++column) {
    cells.emplace_back(table.Cell(row, column));
  }
  return cells;
}

track_table Numbered(int rows) {
  track_table table(TrackColumns());
  for (int row = 1; row <= rows; ++row) Add(table, {"Artist", std::to_string(row)});
  return table;
}

TEST(TrackTableTest, TheTrackRecordHasThirteenColumnsOfWhichFourAreShown) {
  std::string shown;
  for (const Column& column : TrackColumns()) {
    if (column.visible) shown += std::string(column.key) + std::to_string(column.width) + " ";
  }
  EXPECT_EQ(TrackColumns().size(), 13U);
  EXPECT_EQ(shown, "Artist120 Title120 Time50 BPM50 ");
  EXPECT_EQ(TrackColumns()[track::kEndMixPoint - 1].key, "EndMixPoint");
  EXPECT_EQ(KaraokeColumns()[karaoke::kFilename - 1].key, "Filename");
}

TEST(TrackTableTest, MissingCellsAreEmptyAndSurplusOnesAreDropped) {
  track_table table(KaraokeColumns());
  Add(table, {"only"});
  Add(table, {"1", "2", "3", "4", "5", "6", "7"});
  EXPECT_EQ(CellsOf(table, 1), (Row{"only", "", "", "", "", ""}));
  EXPECT_EQ(CellsOf(table, 2), (Row{"1", "2", "3", "4", "5", "6"}));
}

TEST(TrackTableTest, ACellThatIsNotThereReadsEmptyAndTakesNothing) {
  track_table table = Numbered(1);
  for (const auto& [row, column] : {std::pair{0, 1}, {2, 1}, {-1, 1}, {1, 0}, {1, 14}}) {
    table.SetCell(row, column, "x");
    EXPECT_EQ(table.Cell(row, column), "") << row << "," << column;
  }
  EXPECT_EQ(CellsOf(table, 1)[1], "1");
}

TEST(TrackTableTest, CellsOfAnyLengthComeBackCutToTheLongestOne) {
  track_table table(TrackColumns());
  for (const std::size_t length : {0U, 1U, 127U, 128U, 16383U, 16384U, 65535U, 70000U}) {
    const int row = table.AddRow();
    table.SetCell(row, track::kTitle, std::string(length, 'x'));
    table.SetCell(row, track::kGenre, "after");
    EXPECT_EQ(table.Cell(row, track::kTitle).size(), std::min(length, track_table::kLongestCell));
    EXPECT_EQ(table.Cell(row, track::kGenre), "after");
  }
}

TEST(TrackTableTest, ARowIsCopiedWithinItsOwnTable) {
  track_table table = Numbered(300);
  for (int i = 0; i < 300; ++i) table.AppendFrom(table, 7);
  EXPECT_EQ(table.Cell(600, track::kTitle), "7");
}

TEST(TrackTableTest, ACopyDoesNotSeeLaterChangesOfEitherSide) {
  track_table table = Numbered(600);
  track_table copy = table;
  table.SetCell(1, track::kTitle, "changed");
  copy.SetCell(2, track::kTitle, "other");
  table.RemoveRow(600);
  Add(copy, {"new"});
  EXPECT_EQ(copy.Cell(1, track::kTitle), "1");
  EXPECT_EQ(table.Cell(2, track::kTitle), "2");
  EXPECT_EQ(copy.Cell(600, track::kTitle), "600");
  EXPECT_EQ(table.Rows() * 1000 + copy.Rows(), 599 * 1000 + 601);
}

/// What a track_table is meant to be, without blocks.
class PlainTable {
 public:
  void Apply(track_table& table, std::mt19937& random) {
    const int row = static_cast<int>(random() % (rows_.size() + 2));
    const int column = 1 + static_cast<int>(random() % 6);
    const std::string text(random() % 200, static_cast<char>('a' + random() % 26));
    switch (random() % 8) {
      case 0:
        table.RemoveRow(row);
        if (Has(row)) rows_.erase(rows_.begin() + row - 1);
        return;
      case 1:
      case 2:
        table.SetCell(row, column, text);
        if (Has(row)) rows_[static_cast<std::size_t>(row - 1)][static_cast<std::size_t>(column - 1)] = text;
        return;
      default:
        Add(table, {text, "b"});
        rows_.push_back({text, "b", "", "", "", ""});
    }
  }
  void ExpectSame(const track_table& table) const {
    ASSERT_EQ(table.Rows(), static_cast<int>(rows_.size()));
    for (int row = 1; row <= table.Rows(); ++row) {
      ASSERT_EQ(CellsOf(table, row), rows_[static_cast<std::size_t>(row - 1)]) << "row " << row;
    }
  }

 private:
  [[nodiscard]] bool Has(int row) const { return row >= 1 && row <= static_cast<int>(rows_.size()); }
  std::vector<Row> rows_;
};

TEST(TrackTableTest, ManyChangesLeaveWhatAPlainTableWouldHold) {
  std::mt19937 random(7);
  track_table table(KaraokeColumns());
  PlainTable plain;
  track_table snapshot = table;
  PlainTable plain_snapshot;
  for (int i = 0; i < 4000; ++i) {
    plain.Apply(table, random);
    if (i % 1000 != 500) continue;
    plain_snapshot.ExpectSame(snapshot);
    snapshot = table;
    plain_snapshot = plain;
  }
  plain.ExpectSame(table);
  plain_snapshot.ExpectSame(snapshot);
}

}  // namespace
}  // namespace catalogue
