// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "lightorgan/BankBook.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lightorgan {
namespace {

BankBook Book(std::string_view text, Side side = Side::Io) {
  return {side, IoBoardSize::One, ParseBanks(text)};
}

std::string Text(const BankBook& book) {
  return BankText(book.Banks());
}

TEST(BankBook, BanksStandInTheOrderOfTheirNumbersAndNewOnesGoBehindThem) {
  BankBook book = Book("[7]\n1\n[3]\n0:1\n");
  EXPECT_FALSE(book.Changed());
  EXPECT_EQ(book.Add(), 2U);
  EXPECT_EQ(book.Copy(0), 3U);
  EXPECT_EQ(Text(book), "[3]\r\n0:1\r\n[7]\r\n1\r\n[8]\r\n0:0:0:0:0:0:0:0\r\n[9]\r\n0:1\r\n");
  book.Remove(1);
  EXPECT_EQ(book.Banks()[1].number, 8);
  EXPECT_EQ(BankBook().Add(), 0U);
}

TEST(BankBook, EachSideHoldsItsOwnRangeOfValues) {
  for (const auto& [side, given, held] : {std::tuple{Side::Io, 2, 1}, std::tuple{Side::Io, -1, 0},
                                          std::tuple{Side::Dac, 300, 255}, std::tuple{Side::Dac, 2, 2}}) {
    BankBook book = Book("[1]\n0\n", side);
    book.SetValue(0, 0, 8, given);
    EXPECT_EQ(book.Value(0, 0, 8), held);
    EXPECT_EQ(book.Value(0, 0, 7), 0);
    EXPECT_EQ(book.Changed(), held != 0);
  }
}

TEST(BankBook, StepsAreAddedCopiedMovedAndRemoved) {
  BankBook book = Book("[1]\n1\n");
  book.CopyStep(0, 0);
  book.AddStep(0, 0);
  book.SetValue(0, 1, 2, 1);
  EXPECT_FALSE(book.MoveStep(0, 0, -1));
  EXPECT_FALSE(book.MoveStep(0, 2, 1));
  EXPECT_TRUE(book.MoveStep(0, 1, -1));
  EXPECT_EQ(Text(book), "[1]\r\n0:1:0:0:0:0:0:0\r\n1\r\n1\r\n");
  for (int i = 0; i < 4; ++i) book.RemoveStep(0, 0);
  EXPECT_EQ(Text(book), "[1]\r\n");
  book.AddStep(0, 0);
  EXPECT_EQ(book.Banks()[0].steps.size(), 1U);
}

TEST(BankBook, WhatIsNotThereIsLeftAlone) {
  BankBook book = Book("[1]\n1\n");
  book.Remove(5);
  book.Copy(5);
  book.AddStep(5, 0);
  for (const std::size_t bank : {std::size_t{0}, std::size_t{5}}) {
    book.SetValue(bank, 9, 1, 1);
    book.SetValue(0, 0, bank == 0 ? 0 : 9, 0);
    book.RemoveStep(bank, 9);
    book.MoveStep(bank, 9, -1);
    book.SetFurther(bank, 9, "x");
  }
  EXPECT_FALSE(book.Changed());
  EXPECT_EQ(book.Played(5).Rows(), 0);
}

TEST(BankBook, FurtherFieldsAreHeldOnOneLine) {
  BankBook book = Book("[1]\n5:6;7;8\n", Side::Dac);
  EXPECT_EQ(book.Further(0, 0), "7;8");
  book.SetFurther(0, 0, "1\r\n[2];3");
  EXPECT_EQ(Text(book), "[1]\r\n5:6;1[2];3\r\n");
  book.SetFurther(0, 0, "");
  EXPECT_EQ(Text(book), "[1]\r\n5:6\r\n");
}

TEST(BankBook, ABankPlaysAsItWouldFromTheFile) {
  const std::string text = "[1]\r\n1\r\n0:1\r\n[2]\r\n1:1\r\n0:0:1\r\n";
  for (const Side side : {Side::Io, Side::Dac}) {
    const BankBook book = Book(text, side);
    for (const int number : {1, 2}) {
      const StepTable file = LoadBank(text, side, number, IoBoardSize::One);
      const StepTable played = book.Played(static_cast<std::size_t>(number - 1));
      ASSERT_EQ(played.Rows(), file.Rows());
      for (int row = 1; row <= file.Rows(); ++row) EXPECT_EQ(played.At(row, 2), file.At(row, 2));
    }
    EXPECT_EQ(book.NeverPlayed(1, 1), side == Side::Io);
    EXPECT_FALSE(book.NeverPlayed(0, 1));
    EXPECT_FALSE(book.NeverPlayed(1, 0));
  }
}

}  // namespace
}  // namespace lightorgan
