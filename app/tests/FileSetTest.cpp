// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/files/FileSet.h"

#include <gtest/gtest.h>

#include <random>
#include <set>
#include <string>

namespace app {
namespace {

TEST(FileSetTest, ItHoldsWhatASetOfNamesWould) {
  std::mt19937 dice(5);
  const auto name = [&dice] { return "/music/" + std::to_string(dice() % 300) + ".mp3"; };
  FileSet files;
  std::set<std::string> plain;
  for (int i = 0; i < 200; ++i) {
    const std::string file = name();
    files.Collect(file);
    plain.insert(file);
  }
  files.Settle();
  for (int i = 0; i < 2000; ++i) {
    const std::string file = name();
    EXPECT_EQ(files.Has(file), plain.contains(file));
    if (i % 2 == 0) {
      EXPECT_EQ(files.Insert(file), plain.insert(file).second);
    } else {
      EXPECT_EQ(files.Erase(file), plain.erase(file) > 0);
    }
    ASSERT_EQ(files.Size(), plain.size());
  }
}

TEST(FileSetTest, OneHoldsAllOfAnotherOrNot) {
  FileSet some, more;
  EXPECT_TRUE(some.HasAllOf(more));
  for (const char* file : {"b", "a", "c"}) more.Insert(file);
  some.Insert("c");
  EXPECT_TRUE(more.HasAllOf(some));
  EXPECT_FALSE(some.HasAllOf(more));
}

}  // namespace
}  // namespace app
