// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/RowBlock.h"

#include <gtest/gtest.h>

#include <string>

namespace catalogue {
namespace {

std::string Line(std::size_t row) {
  return "a line of some length, number " + std::to_string(row) + "\r\n";
}

/// 256 lines, as one that others hold.
std::shared_ptr<const RowBlock> Full() {
  auto block = std::make_shared<RowBlock>();
  for (std::size_t row = 0; row < RowBlock::kMostRows; ++row) {
    block->Add(Line(row), static_cast<std::uint32_t>(row));
  }
  return block;
}

TEST(RowBlockTest, AChangeOfACopyCopiesNoOtherText) {
  const auto full = Full();
  RowBlock copy(full);
  copy.Remove(3, 1);
  copy.Remove(100, 10);
  EXPECT_EQ(copy.OwnBytes(), 0U);
  copy.Replace(7, "changed\r\n", 9);
  EXPECT_EQ(copy.OwnBytes(), 9U);
  EXPECT_EQ(copy.Row(7), "changed\r\n");
  EXPECT_EQ(copy.Row(8), Line(9));
  EXPECT_EQ(full->Row(8), Line(8));
  EXPECT_EQ(full->Rows() - copy.Rows(), 11U);
}

TEST(RowBlockTest, ACopyOfAChangedOneStillHoldsTheFirstTextAlone) {
  std::weak_ptr<const RowBlock> in_between;
  auto first = Full();
  auto third = [&] {
    auto second = std::make_shared<RowBlock>(first);
    second->Replace(7, "changed\r\n", 9);
    in_between = second;
    return RowBlock(second);
  }();
  EXPECT_TRUE(in_between.expired());
  first.reset();
  EXPECT_EQ(third.Row(7), "changed\r\n");
  EXPECT_EQ(third.Row(255), Line(255));
}

TEST(RowBlockTest, EditingForeverDoesNotTakeMoreAndMoreRoom) {
  RowBlock block(Full());
  for (std::size_t i = 0; i < 100'000; ++i) block.Replace(i % 256, Line(i % 300), 0);
  EXPECT_LT(block.OwnBytes(), Line(255).size() * 256 * 5 / 4 + 100);
}

TEST(RowBlockTest, WhereAlmostAllIsGoneTheOldTextGoesToo) {
  auto full = Full();
  const std::weak_ptr<const RowBlock> old = full;
  RowBlock block(std::move(full));
  block.Remove(1, 254);
  EXPECT_TRUE(old.expired());
  EXPECT_EQ(std::string(block.Row(0)) + std::string(block.Row(1)), Line(0) + Line(255));
}

TEST(RowBlockTest, LinesLieTogetherUpToARowThatIsNotBehindTheOneBefore) {
  RowBlock block(Full());
  block.Remove(2, 1);
  block.Replace(5, "changed\r\n", 0);
  EXPECT_EQ(block.LinesFrom(0).text, Line(0) + Line(1));
  EXPECT_EQ(block.LinesFrom(2).text, Line(3) + Line(4) + Line(5));
  EXPECT_EQ(block.LinesFrom(5).text, "changed\r\n");
  EXPECT_EQ(block.LinesFrom(6).rows, 249U);
  EXPECT_EQ(block.LinesFrom(255).rows, 0U);
}

}  // namespace
}  // namespace catalogue
