// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/archive/SongPairs.h"

#include <gtest/gtest.h>

namespace platform::archive {
namespace {

using Names = std::vector<std::string>;

std::vector<Member> MembersOf(const Names& names) {
  std::vector<Member> members;
  for (const std::string& name : names) members.push_back({name, 1, members.size(), false});
  return members;
}

/// "sound|picture" of each pair.
Names PairsIn(const Names& names) {
  Names pairs;
  for (const SongPair& pair : PairSongs(MembersOf(names)))
    pairs.push_back(pair.sound.name + "|" + pair.picture.name);
  return pairs;
}

TEST(SongPairsTest, SoundAndPictureOfOneNameAreASong) {
  const std::pair<Names, Names> cases[] = {
      {{"a.mp3", "a.cdg"}, {"a.mp3|a.cdg"}},
      {{"A - B.CDG", "a - b.Mp3", "read me.txt"}, {"a - b.Mp3|A - B.CDG"}},
      {{"songs/a.cdg", "songs/a.ogg"}, {"songs/a.ogg|songs/a.cdg"}},
      {{"songs\\a.cdg", "songs\\a.wav"}, {"songs\\a.wav|songs\\a.cdg"}},
      {{"v1.2.cdg", "v1.2.mp3", "v1.3.mp3"}, {"v1.2.mp3|v1.2.cdg"}},
      {{"pictures/a.cdg", "sound/a.mp3"}, {"sound/a.mp3|pictures/a.cdg"}},
  };
  for (const auto& [names, pairs] : cases) EXPECT_EQ(PairsIn(names), pairs) << names[0];
}

TEST(SongPairsTest, TheSoundBesideThePictureGoesBeforeOneElsewhereAndMp3BeforeOtherKinds) {
  EXPECT_EQ(PairsIn({"x/a.mp3", "y/a.wav", "y/a.cdg"}), Names{"y/a.wav|y/a.cdg"});
  EXPECT_EQ(PairsIn({"a.wav", "a.ogg", "a.mp3", "a.cdg"}), Names{"a.mp3|a.cdg"});
}

TEST(SongPairsTest, AllSongsComeInOrderOfTheirNames) {
  EXPECT_EQ(PairsIn({"b.mp3", "a.cdg", "b.cdg", "a.mp3"}), (Names{"a.mp3|a.cdg", "b.mp3|b.cdg"}));
}

TEST(SongPairsTest, ALoneSoundAndALonePictureBelongTogether) {
  EXPECT_EQ(PairsIn({"words.cdg", "song.mp3"}), Names{"song.mp3|words.cdg"});
  EXPECT_EQ(PairsIn({"words.cdg", "song.mp3", "other.mp3"}), Names{});
  EXPECT_EQ(PairsIn({"words.cdg", "more.cdg", "song.mp3"}), Names{});
}

TEST(SongPairsTest, WhatSystemsPutBesideFilesAndNamesThatLeadUpwardsAreNoMembers) {
  for (const char* picture : {"__MACOSX/a.cdg", "x/__MACOSX/a.cdg", "._a.cdg", "x/._a.cdg", "../a.cdg",
                              "x/../a.cdg", "..\\a.cdg", "a.cdg/", ".cdg", "", "/", "cdg"}) {
    EXPECT_EQ(PairsIn({"a.mp3", picture}), Names{}) << picture;
    EXPECT_FALSE(HasPicture(MembersOf({picture}))) << picture;
  }
  EXPECT_EQ(PairsIn({"a.cdg", "a.mp3", "__MACOSX/._a.cdg", "__MACOSX/._a.mp3"}), Names{"a.mp3|a.cdg"});
}

TEST(SongPairsTest, APictureAloneIsToldFromNone) {
  EXPECT_TRUE(HasPicture(MembersOf({"a.cdg", "notes.txt"})));
  EXPECT_FALSE(HasPicture(MembersOf({"a.mp3"})));
}

}  // namespace
}  // namespace platform::archive
