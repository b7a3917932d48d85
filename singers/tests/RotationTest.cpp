// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "singers/Rotation.h"

#include <gtest/gtest.h>

namespace singers {
namespace {

/// Singers with a letter for a name, and many wishes each.
class RotationTest : public ::testing::Test {
 protected:
  SingerId Add(std::string_view name, int wishes = 9) {
    const SingerId id = rotation_.Add(name);
    for (int i = 0; i < wishes; ++i) Ask(name);
    return id;
  }
  void Ask(std::string_view name, const std::string& file = "song") {
    Wish wish;
    wish.filename = file;
    EXPECT_TRUE(rotation_.Ask(Of(name), wish));
  }
  void AddAll(std::string_view names) {
    for (const char name : names) Add(std::string(1, name));
  }
  [[nodiscard]] SingerId Of(std::string_view name) const { return rotation_.FindName(name)->id; }
  [[nodiscard]] std::string Order() const {
    std::string order;
    for (const Singer& singer : rotation_.Singers()) order += singer.name;
    return order;
  }
  /// Who sings in so many turns.
  std::string Sing(int turns) {
    std::string sung;
    for (int i = 0; i < turns && rotation_.Begin(); ++i)
      sung += rotation_.Find(rotation_.OnStage()->singer)->name;
    return sung;
  }

  Rotation rotation_;
};

TEST_F(RotationTest, EverybodySingsOnceARoundAndWhoIsNewComesAtTheEndOfTheOneThatRuns) {
  AddAll("ABC");
  EXPECT_EQ(Sing(4), "ABCA");
  AddAll("N");
  EXPECT_EQ(Sing(5), "BCNAB");
}

TEST_F(RotationTest, WhoIsNewCanComeBeforeThoseWhoHaveSung) {
  rotation_.SetRule(Rule::NewcomersFirst);
  AddAll("ABC");
  EXPECT_EQ(Sing(4), "ABCA");
  AddAll("NM");
  EXPECT_EQ(Sing(6), "NMBCAN");
}

TEST_F(RotationTest, SongsCanComeInTheOrderInWhichTheyWereAskedFor) {
  rotation_.SetRule(Rule::FirstCome);
  for (const auto* name : {"A", "B", "C"}) rotation_.Add(name);
  for (const auto* name : {"B", "B", "A", "C", "B"}) Ask(name);
  EXPECT_EQ(rotation_.Next()->name, "B");
  EXPECT_EQ(Sing(9), "BBACB");
}

TEST_F(RotationTest, WhoComesNextIsWhoThenSings) {
  for (const Rule rule : {Rule::Turns, Rule::NewcomersFirst, Rule::FirstCome}) {
    rotation_ = {};
    rotation_.SetRule(rule);
    for (const auto* name : {"A", "B", "C"}) rotation_.Add(name);
    for (const auto* name : {"B", "B", "A", "C", "B", "A", "A"}) Ask(name);
    for (int turn = 0; turn < 7; ++turn) {
      const std::string next = rotation_.Next()->name;
      EXPECT_EQ(Sing(1), next) << static_cast<int>(rule) << ' ' << turn;
    }
    EXPECT_EQ(rotation_.Next(), nullptr);
  }
}

TEST_F(RotationTest, WhoIsHeldOrHasNoWishKeepsThePlaceAndIsPassedOver) {
  AddAll("ABCD");
  rotation_.Hold(Of("B"), true);
  rotation_.Add("E");
  EXPECT_EQ(Sing(7), "ACDACDA");
  rotation_.Hold(Of("B"), false);
  Ask("E");
  EXPECT_EQ(Sing(6), "BECDAB") << "once each, however long they were away";
}

TEST_F(RotationTest, AHandMovesTheTurnWithThePlace) {
  AddAll("ABCD");
  Sing(2);
  EXPECT_EQ(Order(), "BCDA");
  rotation_.Move(Of("A"), 1);
  EXPECT_EQ(Sing(5), "ACDBA");
  rotation_.Move(Of("C"), 99);
  EXPECT_EQ(Order().back(), 'C');
}

TEST_F(RotationTest, ATurnThatIsSkippedIsOverUnderEveryRule) {
  for (const Rule rule : {Rule::Turns, Rule::NewcomersFirst, Rule::FirstCome}) {
    rotation_ = {};
    rotation_.SetRule(rule);
    for (const auto* name : {"A", "B"}) Add(name, 1);
    rotation_.Skip(Of("A"));
    EXPECT_EQ(rotation_.Next()->name, "B") << static_cast<int>(rule);
    EXPECT_EQ(Sing(9), "BA");
  }
}

TEST_F(RotationTest, ASongThatWasNotSungComesBackWithItsTurn) {
  AddAll("AB");
  Ask("A", "other");
  const Rotation before = rotation_;
  rotation_.Begin();
  rotation_.TakeBack();
  EXPECT_EQ(rotation_, before);
  rotation_.Begin();
  rotation_.BeginOther({});
  EXPECT_EQ(rotation_.Find(Of("A"))->sung, 1) << "a song of the host's own ends the turn before it";
  rotation_.TakeBack();
  EXPECT_EQ(rotation_.Singers().size(), 2U);
}

TEST_F(RotationTest, WhoWasRemovedComesBackWithAllWishes) {
  AddAll("ABC");
  EXPECT_TRUE(rotation_.Remove(Of("B")));
  EXPECT_EQ(Sing(3), "ACA");
  rotation_.Add("b");
  EXPECT_TRUE(rotation_.BringBack());
  EXPECT_FALSE(rotation_.BringBack());
  ASSERT_NE(rotation_.FindName("B 2"), nullptr);
  EXPECT_EQ(rotation_.FindName("B 2")->wishes.size(), 9U);
  rotation_.Begin();
  rotation_.Remove(rotation_.OnStage()->singer);
  rotation_.End();
  rotation_.TakeBack();
  EXPECT_FALSE(rotation_.OnStage());
}

TEST_F(RotationTest, WishesOfOneSingerChangeTheirOrderAndNobodyElsesTurn) {
  rotation_.SetRule(Rule::FirstCome);
  for (const auto* name : {"A", "B"}) rotation_.Add(name);
  Ask("A", "1");
  Ask("B", "2");
  Ask("A", "3");
  EXPECT_TRUE(rotation_.MoveWish(Of("A"), 1, 0));
  rotation_.Begin();
  EXPECT_EQ(rotation_.OnStage()->wish.filename, "3");
  EXPECT_EQ(rotation_.Next()->name, "B");
  EXPECT_FALSE(rotation_.MoveWish(Of("A"), 0, 1));
  EXPECT_FALSE(rotation_.Withdraw(Of("A"), 1));
  EXPECT_TRUE(rotation_.Withdraw(Of("A"), 0));
  EXPECT_EQ(Sing(9), "B");
}

TEST_F(RotationTest, NamesAreCleanAndEachIsThereOnce) {
  EXPECT_EQ(CleanName("  Ann\ta \r\n\x1b[31m  B\xC2\x85.\xE2\x80\xAE  "), "Ann a [31m B .");
  EXPECT_EQ(CleanName("\xE2\x80\xAB \x01"), "");
  const std::string family = "\xF0\x9F\x91\xA8\xE2\x80\x8D\xF0\x9F\x91\xA9";  // joined by U+200D
  EXPECT_EQ(CleanName(family), family);
  const std::string cut = CleanName(std::string(79, 'x') + "\xC3\xA9");
  EXPECT_EQ(cut, std::string(79, 'x'));
  EXPECT_EQ(rotation_.Add(" \n"), 0U);
  for (const auto* name : {"Anna", "ANNA", "anna"}) rotation_.Add(name);
  EXPECT_EQ(Order(), "AnnaANNA 2anna 3");
  EXPECT_FALSE(rotation_.Rename(Of("anna 2"), "Anna"));
  EXPECT_TRUE(rotation_.Rename(Of("anna 2"), "Anne"));
  EXPECT_TRUE(rotation_.Rename(Of("anne"), "ANNE"));
  while (rotation_.Add("x") != 0) {
  }
  EXPECT_EQ(rotation_.Singers().size(), Rotation::kMostSingers);
}

}  // namespace
}  // namespace singers
