// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "singers/RotationFile.h"

#include <gtest/gtest.h>

namespace singers {
namespace {

Wish Song(const std::string& file) {
  return {file, "Artist", "T=1\n50 %", std::chrono::seconds(200), -3, 4.5, 80, "Ben", 0};
}

Evening FullEvening() {
  Evening evening;
  evening.date = "2026-11-22";
  Rotation& rotation = evening.rotation;
  rotation.SetRule(Rule::NewcomersFirst);
  for (const auto* name : {"Anna", "\xD7\x93\xD7\xA0\xD7\x94", "[Bob]=x"}) {
    rotation.Ask(rotation.Add(name), Song("/songs/a.kar"));
    rotation.Ask(rotation.FindName(name)->id, Song("/songs/b.mp3"));
  }
  rotation.Begin();
  rotation.Begin();
  rotation.Hold(rotation.Singers().back().id, true);
  evening.pace.AddChangeOver(std::chrono::seconds(31));
  evening.pace.AddTurn(false);
  return evening;
}

TEST(RotationFileTest, AnEveningIsReadAsItWasWrittenAndGoesOnAsItWould) {
  const Evening evening = FullEvening();
  auto read = ParseRotation(RotationText(evening));
  ASSERT_TRUE(read);
  EXPECT_EQ(*read, evening);
  Evening other = evening;
  for (Rotation* rotation : {&other.rotation, &read->rotation}) {
    rotation->Ask(rotation->Add("New"), Song("c"));
    rotation->End();
  }
  EXPECT_EQ(*read, other);
}

TEST(RotationFileTest, AFileThatWasCutOrTurnedIsNotTaken) {
  const std::string text = RotationText(FullEvening());
  for (std::size_t length = 0; length < text.size() - 2; length += 7)
    EXPECT_FALSE(ParseRotation(text.substr(0, length))) << length;
  std::string turned = text;
  turned[text.size() / 2] ^= 1;
  EXPECT_FALSE(ParseRotation(turned));
  EXPECT_FALSE(ParseSingerBook(text));
}

TEST(RotationFileTest, WhatALineSaysWronglyIsLeftOut) {
  const Evening evening = ParseRotationLines(
      "id=3\n[wish]\nfile=lost\n[evening]\nrule=none\nround=-5\nchangeover=-1\nturn=maybe\n[singer]\nname="
      "A\nid=7\nround=x\n"
      "[wish]\ntitle=no "
      "file\n[wish]\nfile=f\nkey=99\ntempo=nan\nvolume=-9\n[singer]\nid=8\n[singer]\nname=a\nid=7\n"
      "[singer]\nname=C\nid=99999999999\n[stage]\nsinger=55\nfile=s\n");
  const auto& singers = evening.rotation.Singers();
  ASSERT_EQ(singers.size(), 3U);
  EXPECT_EQ(evening.rotation.Round(), 1);
  EXPECT_EQ(singers[1].name, "a 2");
  EXPECT_NE(singers[1].id, singers[0].id);
  ASSERT_EQ(singers[0].wishes.size(), 1U);
  EXPECT_EQ(singers[0].wishes[0].semitones, 12);
  EXPECT_EQ(singers[0].wishes[0].percent, 0);
  EXPECT_EQ(singers[0].wishes[0].volume, -1);
  EXPECT_EQ(evening.rotation.OnStage()->singer, 0U);
}

TEST(SingerBookTest, SongsAreRememberedAsTheyWereSungLast) {
  SingerBook book;
  book.Note("Anna", Song("a"), "2026-11-01");
  book.Note("ANNA ", Song("b"), "2026-11-01");
  Wish again = Song("a");
  again.semitones = 2;
  book.Note("anna", again, "2026-11-22");
  book.Note("Andy", Song("a"), "2026-11-23");
  const auto* page = book.Of("Anna");
  ASSERT_NE(page, nullptr);
  ASSERT_EQ(page->songs.size(), 2U);
  EXPECT_EQ(page->songs[0].times, 2);
  EXPECT_EQ(book.Sung("aNNA", "a")->wish.semitones, 2);
  EXPECT_EQ(book.Names("an", 5), (std::vector<std::string>{"Andy", "anna"}));
  EXPECT_EQ(book.Names("an", 1).size(), 1U);
  const auto read = ParseSingerBook(SingerBookText(book));
  ASSERT_TRUE(read);
  EXPECT_EQ(SingerBookText(*read), SingerBookText(book));
  book.Rename("anna", "Andy");
  EXPECT_NE(book.Of("Anna"), nullptr) << "another's page stays";
  book.Rename("anna", "Hanna");
  EXPECT_EQ(book.Of("HANNA")->songs.size(), 2U);
  EXPECT_EQ(book.Of("Anna"), nullptr);
  for (int i = 0; i < 600; ++i) book.Note("Hanna", Song(std::to_string(i)), "x");
  EXPECT_EQ(book.Of("Hanna")->songs.size(), SingerBook::kMostSongs);
}

}  // namespace
}  // namespace singers
