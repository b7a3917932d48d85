// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/NameRule.h"

#include <gtest/gtest.h>

#include "catalogue/AddFile.h"

namespace catalogue {
namespace {

TEST(NameRuleTest, ANameIsSplitAtItsFirstSeparator) {
  using Order = NameRule::Order;
  const struct {
    const char* path;
    NameRule rule;
    const char* artist;
    const char* title;
  } cases[] = {
      {"/m/One - Two.mp3", {}, "One", "Two"},
      {"/m/One - Two.mp3", {Order::TitleFirst, "-", true, true}, "Two", "One"},
      {"/m/AC-DC - Song.mp3", {}, "AC", "DC - Song"},
      {"/m/AC-DC - Song.mp3", {Order::ArtistFirst, " - ", true, true}, "AC-DC", "Song"},
      {"C:\\m\\One_Two.x.flac", {Order::ArtistFirst, "_", true, true}, "One", "Two.x"},
      {"/m/One - Two.mp3", {Order::ArtistFirst, "-", false, true}, "", "Two"},
      {"/m/One - Two.mp3", {Order::ArtistFirst, "-", true, false}, "", "One - Two"},
      {"/m/One - Two.mp3", {Order::ArtistFirst, "", true, true}, "", "One - Two"},
      {"/m - n/Plain.mp3", {}, "", "Plain"},
      {"/m/- Two.mp3", {}, "", "- Two"},
      {"/m/One -.mp3", {}, "", "One -"},
      {"/m/-.mp3", {}, "", "-"},
      {"", {}, "", ""},
  };
  for (const auto& one : cases) {
    const NamesOfFile names = SplitName(one.path, one.rule);
    EXPECT_EQ(names.artist, one.artist) << one.path;
    EXPECT_EQ(names.title, one.title) << one.path;
  }
}

TEST(NameRuleTest, TheNameFillsOnlyWhatTheTagLeavesOpen) {
  const struct {
    const char* tag_artist;
    const char* tag_title;
    const char* artist;
    const char* title;
  } cases[] = {{"", "", "One", "Two"}, {"A", "", "A", "Two"}, {"", "T", "One", "T"}, {"A", "T", "A", "T"}};
  for (const auto& one : cases) {
    CellViews cells{one.tag_artist, one.tag_title};
    NameRow(cells, "/m/One - Two.mp3", {});
    EXPECT_EQ(cells[0], one.artist);
    EXPECT_EQ(cells[1], one.title);
    EXPECT_EQ(cells[3], "/m/One - Two.mp3");
  }
}

}  // namespace
}  // namespace catalogue
