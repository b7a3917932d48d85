// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/codepages/UchardetCodePages.h"

#include <gtest/gtest.h>

#include "karaoke/LyricCoding.h"
#include "karaoke/testing/CodePagesContract.h"

namespace karaoke::testing {
namespace {

using platform::codepages::UchardetCodePages;

INSTANTIATE_TYPED_TEST_SUITE_P(Uchardet, EveryCodePages, UchardetCodePages);
INSTANTIATE_TYPED_TEST_SUITE_P(Fake, EveryCodePages, FakeCodePages);

std::string Told(const std::string& words) {
  Lyric lyric;
  lyric.syllables.push_back({Microseconds(0), 0, words});
  UchardetCodePages pages;
  return CodingOf(lyric, {}, &pages);
}

TEST(SongsInTheWildTest, AreReadInTheirOwnLetters) {
  const struct {
    const char* words;
    const char* coding;
  } songs[] = {
      {kRussianWords, "WINDOWS-1251"},
      {"\xd2\xc1\xd3\xc3\xd7\xc5\xd4\xc1\xcc\xc9 \xd1\xc2\xcc\xcf\xce\xc9 \xc9 \xc7\xd2\xd5\xdb\xc9, "
       "\xd0\xcf\xd0\xcc\xd9\xcc\xc9 \xd4\xd5\xcd\xc1\xce\xd9 \xce\xc1\xc4 \xd2\xc5\xcb\xcf\xca",
       "KOI8-R"},
      {"\xf9\xec\xe5\xed \xf2\xec\xe9\xeb\xed \xee\xec\xe0\xeb\xe9 \xe4\xf9\xf8\xfa \xee\xec\xe0\xeb\xe9 "
       "\xf2\xec\xe9\xe5\xef",
       "WINDOWS-1255"},
      {"\x8f\xe3\x82\xf0\x8c\xfc\x82\xa2\x82\xc4\x95\xe0\x82\xb1\x82\xa4", "Shift_JIS"},
      // Western words with an accent here and there are those that guesses are wrong about.
      {"Caf\xe9 au lait, caf\xe9 noir", ""},
      {"Don\x92t stop \x97 believing in the feeling, it\x92s a lonely world", ""},
      {"Ik heb een zee\xebn van tijd, een re\xfcnie", ""},
      {"Stra\xdf"
       "e und Gr\xfc\xdf"
       "e, sch\xf6ne M\xe4"
       "dchen h\xf6ren \xfc"
       "ber die B\xe4ume",
       ""},
  };
  for (const auto& song : songs) EXPECT_EQ(Told(song.words), song.coding) << song.words;
}

}  // namespace
}  // namespace karaoke::testing
