// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "dmx/Collection.h"

#include <gtest/gtest.h>

namespace dmx {
namespace {

std::string Joined(const Collection<std::string>& list) {
  std::string all;
  for (const std::string& item : list) all += item;
  return all;
}

class CollectionTest : public ::testing::Test {
 protected:
  CollectionTest() {
    list_.Add("a");
    list_.Add("b", "second");
    list_.Add("c");
  }
  Collection<std::string> list_;
};

TEST_F(CollectionTest, MembersAreFoundByPositionFromOneAndByKey) {
  EXPECT_EQ(*list_.Item(1), "a");
  EXPECT_EQ(*list_.Item("second"), "b");
  for (const int nowhere : {0, 4, -1}) EXPECT_EQ(list_.Item(nowhere), nullptr) << nowhere;
  for (const char* none : {"", "third"}) EXPECT_EQ(list_.Item(none), nullptr) << none;
}

TEST_F(CollectionTest, KeysFollowTheirMembers) {
  list_.Insert(1, "z");
  list_.Move(4, 2);
  EXPECT_EQ(Joined(list_), "zcab");
  EXPECT_EQ(*list_.Item("second"), "b");
  list_.Remove(1);
  list_.Move(1, 3);
  EXPECT_EQ(Joined(list_), "abc");
  EXPECT_EQ(*list_.Item("second"), "b");
}

TEST_F(CollectionTest, RemovesByPositionAndByKeyAndNothingElse) {
  list_.Remove("second");
  list_.Remove("second");
  list_.Remove(1);
  list_.Remove(7);
  EXPECT_EQ(list_.count(), 1);
  EXPECT_EQ(Joined(list_), "c");
}

}  // namespace
}  // namespace dmx
