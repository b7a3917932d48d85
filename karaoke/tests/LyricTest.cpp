// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "karaoke/Lyric.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <utility>

#include "karaoke/LyricCoding.h"
#include "karaoke/testing/FakeCodePages.h"
#include "karaoke/testing/MidiBytes.h"

namespace karaoke {
namespace {

using ::testing::ElementsAre;
using testing::FileBytes;
using ::testing::IsEmpty;
using testing::TrackBytes;
using testing::UsualHead;
using testing::Word32;

/// One piece of a song's words after the other, a quarter note each.
TrackBytes Sung(TrackBytes track, int type, const std::vector<std::string>& pieces) {
  for (const std::string& piece : pieces) track.Meta(480, type, piece);
  return track.End();
}

TrackBytes Texts(const std::vector<std::string>& pieces) {
  return Sung(TrackBytes().Name("Words"), 1, pieces);
}

TrackBytes Lyrics(const std::vector<std::string>& pieces) {
  return Sung(TrackBytes().Name("Melody"), 5, pieces);
}

/// "1000 Hel", and a "|" before each that begins a line.
std::vector<std::string> Told(const Lyric& lyric) {
  std::vector<std::string> told;
  int line = 0;
  for (const Syllable& syllable : lyric.syllables) {
    const bool begins = std::exchange(line, syllable.line) != syllable.line;
    told.push_back((begins ? "|" : "") + std::to_string(syllable.at.count() / 1000) + " " + syllable.text);
  }
  return told;
}

/// The lines alone.
std::vector<std::string> Lines(const std::vector<TrackBytes>& tracks) {
  std::vector<std::string> lines;
  for (const Syllable& syllable : ReadLyric(FileBytes(tracks)).syllables) {
    lines.resize(static_cast<std::size_t>(syllable.line) + 1);
    lines.back() += syllable.text;
  }
  return lines;
}

TEST(LyricTest, WordsNeedNeitherATempoNorASignature) {
  const TrackBytes words = Texts({"@TSong", "@TAnna", "\\Hel", "lo ", "you", "/Bye"});
  EXPECT_THAT(Told(ReadLyric(FileBytes({words}))),
              ElementsAre("1500 Hel", "2000 lo ", "2500 you", "|3000 Bye"));
  EXPECT_THAT(Told(ReadLyric(FileBytes({TrackBytes().Signature(3, 2).End(), words}))),
              ElementsAre("1500 Hel", "2000 lo ", "2500 you", "|3000 Bye"));
  const Lyric slow = ReadLyric(FileBytes({TrackBytes().Tempo(0, 1'000'000).End(), words}));
  EXPECT_THAT(Told(slow), ElementsAre("3000 Hel", "4000 lo ", "5000 you", "|6000 Bye"));
  EXPECT_EQ(slow.title + "|" + slow.artist, "Song|Anna");
}

TEST(LyricTest, TheTempoChangesOfAllTracksTimeTheWords) {
  const TrackBytes later = TrackBytes().Tempo(1440, 250'000).End();
  const TrackBytes earlier = TrackBytes().Tempo(960, 1'000'000).End();
  EXPECT_THAT(Told(ReadLyric(FileBytes({later, Lyrics({"a ", "b ", "c ", "d"}), earlier}))),
              ElementsAre("500 a ", "1000 b ", "2000 c ", "2250 d"));
}

TEST(LyricTest, EveryConventionGivesTheSameLines) {
  const auto lines = ElementsAre("Twinkle, little star", "How I wonder");
  const struct {
    const char* convention;
    TrackBytes track;
  } songs[] = {
      {"text events", Texts({"\\Twin", "kle, ", "lit", "tle ", "star", "/How ", "I ", "won", "der"})},
      {"lyric events with slashes",
       Lyrics({"/Twin", "kle, ", "lit", "tle ", "star", "/How ", "I ", "won", "der"})},
      {"CR behind a line", Lyrics({"Twin", "kle, ", "lit", "tle ", "star\r", "How ", "I ", "won", "der\r"})},
      {"LF alone", Lyrics({"Twin", "kle, ", "lit", "tle ", "star", "\n", "How ", "I ", "won", "der"})},
      {"CR LF before a line",
       Lyrics({"Twin", "kle, ", "lit", "tle ", "star", "\r\nHow ", "I ", "won", "der"})},
      {"marks of their own",
       Texts({"Twin", "kle, ", "lit", "tle ", "star", "/", "How ", "I ", "won", "der"})},
      {"blanks of their own",
       Texts({"/Twin", "kle,", " ", "lit", "tle", " ", "star", "/ ", "How", " ", "I", " won", "der"})},
      {"blanks before words",
       Lyrics({" Twin", "kle,", " lit", "tle", " star", "\r", " How", " I", " won", "der"})},
      {"the practice's own marks", Lyrics({"{#Title=Star}", "{@LATIN}Twin", "kle, ", "[x]lit", "tle ",
                                           "star\\r", "How ", "I ", "won", "der"})},
  };
  for (const auto& song : songs)
    EXPECT_THAT(Lines({UsualHead().End(), song.track}), lines) << song.convention;
}

TEST(LyricTest, TheTrackAndTheKindThatHoldTheWordsAreChosen) {
  const TrackBytes words = Texts({"/la ", "le ", "li ", "lo"});
  const TrackBytes same = Lyrics({"la ", "le ", "li ", "lo"});
  const auto only = ElementsAre("la le li lo");
  EXPECT_THAT(Lines({words, same}), only) << "never both";
  EXPECT_THAT(Lines({same}), only);
  EXPECT_THAT(Lines({TrackBytes().Text(0, "made with a sequencer").End(), same}), only);
  EXPECT_THAT(Lines({Sung(TrackBytes(), 5, {"oh"}), same, Sung(TrackBytes(), 5, {"ah", "ah"})}), only);
  EXPECT_THAT(Lines({Sung(TrackBytes(), 1, {"1 ", "2 ", "3 ", "4 ", "5 ", "6"}), words}), only)
      << "a track that says what it is";
  EXPECT_THAT(
      Lines({Texts({" SYX dump", "Track-1", "/la ", "%-3", "le ", std::string(1001, 'x'), "li ", "lo"})}),
      only);
}

TEST(LyricTest, RemarksAreNoWords) {
  EXPECT_THAT(Lines({TrackBytes().Text(0, "Intro").Text(960, "Verse").Text(960, "Chorus").End()}), IsEmpty());
  EXPECT_THAT(Lines({TrackBytes().Text(0, "@KMIDI KARAOKE FILE").Text(960, "Oh").End()}), ElementsAre("Oh"));
  std::vector<std::string> many(8, "oh ");
  EXPECT_THAT(Lines({Sung(TrackBytes(), 1, many)}), ElementsAre("oh oh oh oh oh oh oh oh "));
}

TEST(LyricTest, WordsBehindATrackThatClaimsTooMuchAreFound) {
  std::string bytes = FileBytes({UsualHead().End(), Texts({"@TSong", "/la"})});
  bytes[FileBytes({}).size() + 5] = 0x10;
  EXPECT_THAT(Told(ReadLyric(bytes)), ElementsAre("1000 la"));
}

TEST(LyricTest, WordsOfAnXfFileAreThoseOfItsChunk) {
  const TrackBytes words =
      TrackBytes().Meta(0, 7, "$Lyrc:1:312:JP").Meta(480, 5, "\x82\xa0").Meta(480, 5, "/\x82\xe8").End();
  const std::string chunk =
      "XFKM" + Word32(static_cast<std::uint32_t>(words.Content().size())) + words.Content();
  const Lyric lyric = ReadLyric(FileBytes({UsualHead().End()}) + chunk);
  EXPECT_THAT(Told(lyric), ElementsAre("500 \x82\xa0", "|1000 \x82\xe8"));
  EXPECT_EQ(CodingOf(lyric, {}, nullptr), "Shift_JIS");
}

TEST(LyricTest, ASongThatNobodyBrokeIntoLinesIsBrokenBetweenWords) {
  std::vector<std::string> pieces;
  for (int i = 0; i < 20; ++i) pieces.insert(pieces.end(), {"never ", "end", "ing "});
  const auto lines = Lines({Lyrics(pieces)});
  EXPECT_GT(lines.size(), 5U);
  std::string together;
  for (const std::string& line : lines) {
    EXPECT_LT(line.size(), 50U);
    EXPECT_EQ(line.back(), ' ') << line;
    together += line;
  }
  EXPECT_EQ(together.size(), 20 * std::string("never ending ").size());
}

TEST(LyricTest, StrokesBetweenTheWordsAreNoLines) {
  EXPECT_EQ(Lines({Lyrics({"la ", "/ ", "/ ", "/ ", "lo ", "/ ", "/ ", "/ "})}).size(), 1U);
}

TEST(LyricTest, BracketsInsideAJapaneseLetterAreNoBrackets) {
  const Lyric lyric = ReadLyric(FileBytes({Lyrics({"{@JP}", "\x83\x5b\x83\x5c", "[\x83\x5d]\x82\xa0"})}));
  EXPECT_THAT(Told(lyric), ElementsAre("1000 \x83\x5b\x83\x5c", "1500 \x82\xa0"));
  EXPECT_EQ(lyric.coding, "Shift_JIS");
}

TEST(LyricTest, WhatIsNoSongHasNoWords) {
  for (const std::string& bytes : {std::string(), std::string("MThd"), FileBytes({Texts({"/la"})}, 0)}) {
    EXPECT_THAT(ReadLyric(bytes).syllables, IsEmpty());
  }
}

Lyric Written(const std::string& words, const std::string& language = "") {
  Lyric lyric;
  lyric.syllables.push_back({Microseconds(0), 0, words});
  lyric.language = language;
  return lyric;
}

TEST(LyricCodingTest, TheFileThenItsLanguageThenItsLettersTell) {
  const std::string accents =
      "Caf\xe9 au lait, \xe0 la carte, \xe7"
      "a va, \xea";
  std::string polish;
  for (int i = 0; i < 12; ++i) polish += "\xb9\xea ";
  const struct {
    const char* why;
    Lyric lyric;
    const char* guess;
    std::string coding;
  } songs[] = {
      {"plain", Written("plain words"), "WINDOWS-1251", ""},
      {"UTF-8", Written("ありがとう café"), "WINDOWS-1251", ""},
      {"letters", Written(testing::kRussianWords), "WINDOWS-1251", "WINDOWS-1251"},
      {"language", Written(testing::kRussianWords, "POLS"), "WINDOWS-1251", "windows-1250"},
      {"every file says so", Written(testing::kRussianWords, "ENGL"), "WINDOWS-1251", "WINDOWS-1251"},
      {"kana", Written("\x82\xa0\x82\xe8\x82\xaa\x82\xc6\x82\xa4"), "WINDOWS-1252", "Shift_JIS"},
      {"few accents", Written(accents), "ISO-8859-2", ""},
      {"many accents", Written(polish), "WINDOWS-1250", "WINDOWS-1250"},
      {"nobody writes so", Written(polish), "MAC-CENTRALEUROPE", ""},
      {"too short", Written("\xcf\xee"), "WINDOWS-1251", ""},
      {"German", Written(accents, "GERM"), "WINDOWS-1251", ""},
      {"half a letter", Written("\x82"), "", ""},
  };
  for (const auto& song : songs) {
    testing::FakeCodePages pages;
    pages.guess = song.guess;
    EXPECT_EQ(CodingOf(song.lyric, {}, &pages), song.coding) << song.why;
  }
}

TEST(LyricCodingTest, ATitleIsTakenIntoAccountAndWithoutALibraryKanaTell) {
  const std::string_view names[] = {"\x82\xb3\x82\xad\x82\xe7", "plain"};
  EXPECT_EQ(CodingOf(Written("la la"), names, nullptr), "Shift_JIS");
  EXPECT_EQ(CodingOf(Written(testing::kRussianWords), {}, nullptr), "");
}

TEST(LyricCodingTest, Utf8IsToldFromWhatOnlyLooksLikeIt) {
  for (const char* text : {"", "a", "é", "ありがとう", "\xF0\x9F\x8E\xA4"}) EXPECT_TRUE(IsUtf8(text)) << text;
  for (const char* text :
       {"\x80", "\xC3", "\xC0\xAF", "\xE0\x80\xAF", "\xED\xA0\x80", "\xF5\x80\x80\x80", "caf\xe9"}) {
    EXPECT_FALSE(IsUtf8(text)) << text;
  }
}

}  // namespace
}  // namespace karaoke
