// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "lightorgan/PatternBank.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lightorgan {
namespace {

using ::testing::ElementsAre;
using Rows = std::vector<std::vector<int>>;

constexpr std::string_view kFile =
    "[1]\r\n1:0:0\r\n0:1:0\r\n[2]\r\n1\r\n0:1\r\n1:0:1:0:1:0:1:0:1\r\n[4]\r\n1:1:1:1\r\n0:0:0:1\r\n";

/// The first four outputs of every row.
Rows Load(std::string_view text, int number, Side side = Side::Io, IoBoardSize size = IoBoardSize::One) {
  const StepTable table = LoadBank(text, side, number, size);
  Rows rows;
  for (int row = 1; row <= table.Rows(); ++row) {
    rows.push_back({table.At(row, 1), table.At(row, 2), table.At(row, 3), table.At(row, 4)});
  }
  return rows;
}

std::vector<int> Played(Side side, int rows, int ticks) {
  std::vector<int> played;
  for (int row = 0, tick = 0; tick < ticks; ++tick) played.push_back(row = NextRow(side, row, rows));
  return played;
}

TEST(PatternBank, TheHeaderThatEndsABankIsARowOfZeros) {
  EXPECT_EQ(Load(kFile, 1), (Rows{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 0, 0}}));
  EXPECT_EQ(Load(kFile, 2), (Rows{{1, 0, 0, 0}, {0, 1, 0, 0}, {1, 0, 1, 0}, {0, 0, 0, 0}}));
}

TEST(PatternBank, TheLastBankOfAFileHasItsOwnRowsAlone) {
  EXPECT_EQ(Load(kFile, 4), (Rows{{1, 1, 1, 1}, {0, 0, 0, 1}}));
}

TEST(PatternBank, ABankThatIsNotThereIsEmpty) {
  for (const int number : {0, 3, 5, 99}) EXPECT_TRUE(Load(kFile, number).empty()) << number;
  EXPECT_TRUE(Load("", 1).empty());
}

TEST(PatternBank, ReadsWhateverAFileHolds) {
  EXPECT_EQ(Load("[1]\n1:x:1\n", 1), (Rows{{1, 0, 1, 0}}));
  EXPECT_EQ(Load("[1]\r1:1\r[2]\r", 1), (Rows{{1, 1, 0, 0}, {0, 0, 0, 0}}));
  EXPECT_EQ(Load("[1]\r\n99999999999:1\r\n\r\n", 1), (Rows{{0, 1, 0, 0}, {0, 0, 0, 0}}));
  EXPECT_EQ(Load("[1\r\n1\r\n[1]\r\n0:1\r\n[\r\n", 1), (Rows{{0, 1, 0, 0}, {0, 0, 0, 0}}));
  EXPECT_EQ(Load(std::string_view("[1]\n1\0:1\n", 9), 1), (Rows{{0, 1, 0, 0}}));
  // A header of a smaller number does not end a bank; it is one of its rows.
  EXPECT_EQ(Load("[2]\n1\n[1]\n0:1\n[3]\n", 2),
            (Rows{{1, 0, 0, 0}, {0, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 0, 0}}));
  EXPECT_EQ(LoadBank("[1]\n" + std::string(200'000, '\n'), Side::Io, 1, IoBoardSize::One).Rows(), kMostRows);
}

TEST(PatternBank, HoldsAsManyOutputsAsTheBoardsHave) {
  const std::string sixteen = "[1]\n0:0:0:0:0:0:0:0:1:0:0:0:0:0:0:1:1\n";
  const StepTable one = LoadBank(sixteen, Side::Io, 1, IoBoardSize::One);
  EXPECT_EQ(one.At(1, 9), 0);
  const StepTable two = LoadBank(sixteen, Side::Io, 1, IoBoardSize::Two);
  EXPECT_EQ(PatternByte(two, 1, 0), 0);
  EXPECT_EQ(PatternByte(two, 1, 1), 0b1000'0001);
}

TEST(PatternBank, AByteHasABitForEveryOutputThatIsOne) {
  const StepTable table = LoadBank("[1]\n1:0:1\n2:1:-1\n", Side::Io, 1, IoBoardSize::One);
  EXPECT_EQ(PatternByte(table, 1, 0), 5);
  EXPECT_EQ(PatternByte(table, 2, 0), 2);
}

TEST(PatternBank, ValuesOfADacStepEndAtItsSemicolon) {
  EXPECT_EQ(Load("[1]\n255:10;7:8;9\n4\n", 1, Side::Dac), (Rows{{255, 10, 0, 0}, {4, 0, 0, 0}}));
}

TEST(PatternBank, TheIoSideNeverPlaysTheRowOfTheCountAndTheDacSidePlaysAll) {
  EXPECT_THAT(Played(Side::Io, 3, 5), ElementsAre(1, 2, 1, 2, 1));
  EXPECT_THAT(Played(Side::Io, 1, 3), ElementsAre(1, 1, 1));
  EXPECT_THAT(Played(Side::Dac, 3, 5), ElementsAre(1, 2, 3, 1, 2));
}

TEST(PatternBank, WhatWasEditedIsWrittenAsItWasReadInTheOrderOfNumbers) {
  const std::string text = "[1]\r\n255:0:10;1:2;3\r\n0\r\n[7]\r\n1:1\r\n";
  EXPECT_EQ(BankText(ParseBanks(text)), text);
  EXPECT_EQ(BankText({{9, {{{1, 0}, ""}}}, {3, {}}}), "[3]\r\n[9]\r\n1:0\r\n");
  EXPECT_TRUE(ParseBanks("1:1\r\n[x]\r\n0\r\n").empty());
}

}  // namespace
}  // namespace lightorgan
