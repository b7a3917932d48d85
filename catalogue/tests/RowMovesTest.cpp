// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/RowMoves.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace catalogue {
namespace {

/// One row a letter, as its title.
track_table Lettered(std::string_view letters) {
  track_table table(TrackColumns());
  for (std::size_t i = 0; i < letters.size(); ++i) {
    table.AddRow(std::vector<std::string_view>{"", letters.substr(i, 1)});
    table.SetCell(table.Rows(), track::kEndMixPoint, "180.000");
  }
  return table;
}

std::string Letters(const track_table& table) {
  std::string letters;
  for (int row = 1; row <= table.Rows(); ++row) letters += table.Cell(row, track::kTitle);
  return letters;
}

TEST(RowMovesTest, RowsAreAppendedInTheOrderGivenWithTheirHiddenCells) {
  track_table list = Lettered("xy");
  const int rows[] = {3, 1, 9, 0, 3};
  EXPECT_EQ(AppendRows(list, Lettered("abc"), rows), 3);
  EXPECT_EQ(Letters(list), "xycac");
  EXPECT_EQ(list.Cell(5, track::kEndMixPoint), "180.000");
}

TEST(RowMovesTest, ATableCanBeAppendedToItself) {
  track_table list = Lettered("ab");
  const int rows[] = {1, 2, 3};
  EXPECT_EQ(AppendRows(list, list, rows), 2);
  EXPECT_EQ(Letters(list), "abab");
}

TEST(RowMovesTest, RemovedRowsAreNamedByTheirNumbersBeforeTheRemoval) {
  track_table list = Lettered("abcde");
  EXPECT_EQ(RemoveRows(list, {1, 4, 4, 2, 77}), 3);
  EXPECT_EQ(Letters(list), "ce");
}

TEST(RowMovesTest, MovedRowsStayTogetherInTheirOrder) {
  const struct {
    std::vector<int> rows;
    int before;
    const char* after;
    int first;
  } cases[] = {{{2}, 1, "bacde", 1},    {{1}, 6, "bcdea", 5},     {{5, 1}, 3, "baecd", 2},
               {{2, 3}, 3, "abcde", 2}, {{1, 2}, 99, "cdeab", 4}, {{4}, -7, "dabce", 1},
               {{}, 1, "abcde", 0},     {{9}, 1, "abcde", 0}};
  for (const auto& one : cases) {
    track_table list = Lettered("abcde");
    EXPECT_EQ(MoveRows(list, one.rows, one.before), one.first) << one.after;
    EXPECT_EQ(Letters(list), one.after);
    EXPECT_EQ(list.Cell(5, track::kEndMixPoint), "180.000");
  }
}

track_table Long(int rows) {
  track_table table(TrackColumns());
  for (int row = 1; row <= rows; ++row) {
    table.AddRow(std::vector<std::string_view>{"", std::to_string(row)});
  }
  return table;
}

std::size_t RowsOfItsOwn(const track_table& table, const track_table& other) {
  return table.RowsNotSharedWith(other).size();
}

TEST(RowMovesTest, OfALongTableOnlyWhatLiesAroundAMoveIsCopied) {
  const track_table table = Long(100'000);
  track_table playlist(TrackColumns());
  std::vector<int> all(100'000);
  for (int row = 1; row <= 100'000; ++row) all[static_cast<std::size_t>(row - 1)] = row;
  EXPECT_EQ(AppendRows(playlist, table, all), 100'000);
  EXPECT_LT(RowsOfItsOwn(playlist, table), 300U);
  EXPECT_EQ(MoveRows(playlist, {70'000}, 20), 20);
  EXPECT_EQ(playlist.Cell(20, track::kTitle), "70000");
  EXPECT_EQ(playlist.Cell(70'001, track::kTitle), "70001");
  EXPECT_LT(RowsOfItsOwn(playlist, table), 2000U);
}

TEST(RowMovesTest, RowsThatAreMovedAboutDoNotEndUpInABlockEach) {
  track_table table = Long(20'000);
  std::mt19937 dice(3);
  for (int i = 0; i < 2000; ++i) {
    const auto place = [&] { return 1 + static_cast<int>(dice() % 20'000); };
    MoveRows(table, {place()}, place());
  }
  EXPECT_EQ(table.Rows(), 20'000);
  EXPECT_LT(table.Stretches().size(), 20'000U / 60);
}

}  // namespace
}  // namespace catalogue
