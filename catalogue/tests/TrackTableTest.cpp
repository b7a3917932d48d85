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
    if (random() % 100 == 0) return RemoveEach(table, 2 + random() % 30);
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
        Add(table, {text, "b", "", "", "", text.substr(0, 2)});
        rows_.push_back({text, "b", "", "", "", text.substr(0, 2)});
    }
  }
  void ExpectSame(const track_table& table) const {
    ASSERT_EQ(table.Rows(), static_cast<int>(rows_.size()));
    for (int row = 1; row <= table.Rows(); ++row) {
      ASSERT_EQ(CellsOf(table, row), rows_[static_cast<std::size_t>(row - 1)]) << "row " << row;
    }
    const std::string files[] = {"aa", "", "none", "qq", "aa", rows_.empty() ? "" : rows_.back()[5]};
    const std::vector<int> first = table.FirstRowsOf(files);
    for (std::size_t i = 0; i < std::size(files); ++i) {
      const std::vector<int> rows = RowsOf(files[i]);
      EXPECT_EQ(table.RowsOf(files[i]), rows) << files[i];
      EXPECT_EQ(first[i], rows.empty() ? 0 : rows.front()) << files[i];
      EXPECT_EQ(table.FindRow(karaoke::kFilename, files[i]), first[i]) << files[i];
    }
  }

 private:
  [[nodiscard]] std::vector<int> RowsOf(const std::string& file) const {
    std::vector<int> rows;
    for (std::size_t i = 0; i < rows_.size(); ++i) {
      if (rows_[i][5] == file) rows.push_back(static_cast<int>(i) + 1);
    }
    return rows;
  }
  void RemoveEach(track_table& table, std::size_t step) {
    std::vector<int> removed;
    std::vector<Row> left;
    for (std::size_t i = 0; i < rows_.size(); ++i) {
      if (i % step < step / 4) {
        removed.push_back(static_cast<int>(i) + 1);
      } else {
        left.push_back(rows_[i]);
      }
    }
    table.RemoveRows(removed);
    rows_ = std::move(left);
  }
  [[nodiscard]] bool Has(int row) const { return row >= 1 && row <= static_cast<int>(rows_.size()); }
  std::vector<Row> rows_;
};

TEST(TrackTableTest, ManyChangesLeaveWhatAPlainTableWouldHold) {
  std::mt19937 random(7);
  track_table table(KaraokeColumns());
  PlainTable plain;
  track_table snapshot = table;
  PlainTable plain_snapshot;
  for (int i = 0; i < 8000; ++i) {
    plain.Apply(table, random);
    if (i % 500 != 250) continue;
    plain.ExpectSame(table);
    plain_snapshot.ExpectSame(snapshot);
    snapshot = table;
    plain_snapshot = plain;
  }
  plain.ExpectSame(table);
  plain_snapshot.ExpectSame(snapshot);
}

/// The same things done to a table and to a plain list of its first cells.
TEST(TrackTableEditTest, RowsGoInAndOutAtAnyPlaceOfLargeTables) {
  track_table table(KaraokeColumns());
  std::vector<std::string> plain;
  for (int i = 0; i < 2000; ++i) {
    plain.push_back(std::to_string(i));
    table.AddRow(std::vector<std::string_view>{plain.back()});
  }
  const track_table copy = table;
  unsigned seed = 1;
  const auto pick = [&seed](std::size_t below) { return (seed = seed * 1103515245 + 12345) / 65536 % below; };
  for (int step = 0; step < 1500; ++step) {
    const std::size_t place = pick(plain.size());
    const std::size_t from = pick(2000);
    table.InsertFrom(static_cast<int>(place) + 1, copy, static_cast<int>(from) + 1);
    plain.insert(plain.begin() + static_cast<std::ptrdiff_t>(place), std::to_string(from));
  }
  for (int step = 0; step < 20; ++step) {
    std::vector<int> gone;
    for (std::size_t row = pick(50) + 1; row <= plain.size() && gone.size() < 300; row += 1 + pick(3)) {
      gone.push_back(static_cast<int>(row));
    }
    for (auto row = gone.rbegin(); row != gone.rend(); ++row) plain.erase(plain.begin() + *row - 1);
    table.RemoveRows(gone);
    track_table more(KaraokeColumns());
    for (int row = 1; row <= 300; ++row) more.AppendFrom(copy, row);
    const std::size_t place = pick(plain.size());
    table.InsertAll(static_cast<int>(place) + 1, std::move(more));
    for (int row = 300; row >= 1; --row) {
      plain.insert(plain.begin() + static_cast<std::ptrdiff_t>(place), std::to_string(row - 1));
    }
  }
  ASSERT_EQ(table.Rows(), static_cast<int>(plain.size()));
  for (int row = 1; row <= table.Rows(); ++row) {
    ASSERT_EQ(table.Cell(row, 1), plain[static_cast<std::size_t>(row) - 1]) << row;
  }
  EXPECT_EQ(copy.Rows(), 2000);
  for (int row = 1; row <= 2000; ++row) ASSERT_EQ(copy.Cell(row, 1), std::to_string(row - 1));
}

}  // namespace
}  // namespace catalogue
