// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "karaoke/SongReader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "karaoke/testing/MidiBytes.h"

namespace karaoke {
namespace {

using testing::Bytes;
using ::testing::ElementsAre;
using testing::FileBytes;
using ::testing::IsEmpty;
using testing::TrackBytes;
using testing::UsualHead;
using testing::Variable;

TrackBytes Words() {
  return TrackBytes().Name("Words");
}

Song SongOf(const TrackBytes& words) {
  return ReadSong(FileBytes({UsualHead().End(), words}));
}

/// "500:0 Hel" a syllable.
std::vector<std::string> Sung(const Song& song) {
  std::vector<std::string> all;
  for (const Syllable& syllable : song.syllables) {
    all.push_back(std::to_string(syllable.at.count() / 1000) + ":" + std::to_string(syllable.line) + " " +
                  syllable.text);
  }
  return all;
}

TEST(SongReaderTest, ASongTellsItsTagsItsTimesAndItsWords) {
  const Song song = SongOf(Words()
                               .Text(0, "@LENGL")
                               .Text(0, "@TMy Song")
                               .Text(0, "@TThe Singer")
                               .Text(0, "@GPop")
                               .Text(480, "\\Hel")
                               .Text(240, "lo ")
                               .Text(240, "you")
                               .Text(480, "/Bye")
                               .End());
  EXPECT_TRUE(song.is_lyric);
  EXPECT_EQ(song.titles, "My Song\r\nThe Singer");
  EXPECT_EQ(TitleOf(song) + "|" + ArtistOf(song), "My Song|The Singer");
  EXPECT_EQ(TitleOf({}) + ArtistOf({}), "");
  EXPECT_EQ(song.genre, "Pop");
  EXPECT_EQ(song.time_signature, "4/4");
  EXPECT_EQ(song.tempo, 500'000U);
  EXPECT_EQ(song.bpm, 120.0F);
  EXPECT_EQ(song.quarter_note, 480);
  EXPECT_EQ(song.text_lyric, "    \r\nHello you\r\nBye");
  EXPECT_THAT(song.lines, ElementsAre("    ", "Hello you", "Bye"));
  EXPECT_THAT(Sung(song), ElementsAre("500:1 Hel", "750:1 lo ", "1000:1 you", "1500:2 Bye"));
  EXPECT_EQ(song.length, std::chrono::milliseconds(1500));
  EXPECT_FALSE(song.note.has_value());
}

TEST(SongReaderTest, AMarkAtTheVeryStartGrowsTheTableButNotTheText) {
  const Song song =
      SongOf(Words().Text(0, "/One").Text(480, " ").Text(0, "two").Text(0, "\\").Text(0, "x").End());
  EXPECT_EQ(song.text_lyric, "One two\r\nx");
  EXPECT_THAT(song.lines, ElementsAre("", "One two", "x"));
  EXPECT_THAT(Sung(song), ElementsAre("0:1 One", "500:1 two", "500:2 x"));
}

TEST(SongReaderTest, ReadingStopsAtTheFirstThingThatIsMissing) {
  const TrackBytes words = Words().Text(0, "la").End();
  const Song no_signature = ReadSong(FileBytes({TrackBytes().Tempo(0, 500'000).End(), words}));
  EXPECT_FALSE(no_signature.is_lyric || no_signature.tempo || no_signature.time_signature);
  const Song no_tempo = ReadSong(FileBytes({TrackBytes().Signature(3, 2).End(), words}));
  EXPECT_EQ(no_tempo.time_signature, "3/4");
  EXPECT_FALSE(no_tempo.is_lyric || no_tempo.quarter_note || no_tempo.text_lyric);
  const Song no_words = ReadSong(FileBytes({UsualHead().End()}));
  EXPECT_EQ(no_words.quarter_note, 480);
  EXPECT_FALSE(no_words.is_lyric || no_words.text_lyric);
}

TEST(SongReaderTest, SignatureAndTempoAreWrittenByTheirTables) {
  const struct {
    int code;
    const char* text;
  } signatures[] = {{0, "6/0"}, {1, "6/2"}, {3, "6/8"}, {7, "6/128"}, {10, "6/1024"}, {11, "6/11"}};
  for (const auto& row : signatures) {
    EXPECT_EQ(ReadSong(FileBytes({TrackBytes().Signature(6, row.code)})).time_signature, row.text);
  }
  const struct {
    std::uint32_t tempo;
    float bpm;
  } tempos[] = {{500'000, 120.0F}, {483'871, 124.0F}, {768'000, 78.13F}, {16'777'215, 3.58F}};
  for (const auto& row : tempos) {
    EXPECT_EQ(ReadSong(FileBytes({TrackBytes().Signature(4, 2).Tempo(0, row.tempo)})).bpm, row.bpm);
  }
  EXPECT_FALSE(ReadSong(FileBytes({TrackBytes().Signature(4, 2).Tempo(0, 0)})).bpm);
}

TEST(SongReaderTest, ATitleAloneMakesASongOfTheTrackThatHoldsIt) {
  const Song song =
      ReadSong(FileBytes({UsualHead().Text(0, "intro").End(),
                          TrackBytes().Name("Melody").Text(0, "@TSolo").Text(480, "la").End()}));
  EXPECT_EQ(song.titles, "Solo");
  EXPECT_THAT(Sung(song), ElementsAre("500:0 la"));
}

TEST(SongReaderTest, TheTempoChangesOfAllTracksTimeTheWords) {
  const TrackBytes words = Words().Text(960, "a").Text(480, "b").Text(480, "c").End();
  const TrackBytes earlier = TrackBytes().Tempo(960, 1'000'000).End();
  const Song song = ReadSong(FileBytes({UsualHead().Tempo(1440, 250'000).End(), words, earlier}));
  EXPECT_THAT(Sung(song), ElementsAre("1000:0 a", "2000:0 b", "2250:0 c"));
}

TEST(SongReaderTest, HundredSpareBytesBehindTheTrackAreReadToo) {
  std::string bytes = FileBytes({UsualHead().End(), Words().Text(0, "la ").Text(480, "lu").End()});
  const std::size_t header = bytes.rfind("MTrk");
  bytes[header + 7] = 20;  // the header claims less than there is
  EXPECT_THAT(Sung(ReadSong(bytes)), ElementsAre("0:0 la ", "500:0 lu"));
  // The next chunk lies in them too: its pieces count as text, but it is no event of this track.
  const std::string next = TrackBytes().Raw(Bytes({0, 0, 0xFF, 1, 4}) + "next").Chunk();
  const Song song =
      ReadSong(FileBytes({UsualHead().End(), Words().Event(0, {0x90, 60, 1}).Text(0, "la")}) + next);
  EXPECT_EQ(song.text_lyric, "lanext");
  EXPECT_THAT(Sung(song), ElementsAre("0:0 la"));
}

TEST(SongReaderTest, OddFilesAreReadAsFarAsTheyGo) {
  const std::string head = FileBytes({UsualHead().End()});
  const std::string file = FileBytes({UsualHead().End(), Words().Text(0, "la").Text(480, "lu").End()});
  const struct {
    const char* fault;
    std::string bytes;
    std::vector<std::string> sung;
  } rows[] = {
      {"nothing", "", {}},
      {"text longer than the file", file.substr(0, file.size() - 5), {"0:0 la", "500:0 l"}},
      {"words without a track", "MThd" + head.substr(4, 10) + UsualHead().Content() + "@T", {}},
      {"endless number",
       head + "MTrk" + Bytes({0, 0, 0, 90}) + Words().Content() + std::string(80, '\xFF'),
       {}},
      {"length past the end",
       head + "MTrk" + Bytes({0x7F, 0xFF, 0xFF, 0xFF}) + Words().Text(480, "la").Content(),
       {"500:0 la"}},
      {"unknown chunk",
       head + "Junk" + Bytes({0, 0, 0, 2, 1, 2}) + Words().Text(480, "la").End().Chunk(),
       {"500:0 la"}},
      {"in a RIFF file", "RIFF" + Bytes({0, 1, 0, 0}) + "RMIDdata" + Bytes({0, 1, 0, 0}) + file, {}},
      {"no division", FileBytes({UsualHead().End(), Words().Text(480, "la").End()}, 0), {}},
      {"frames of 25 in 40 ticks",
       FileBytes({UsualHead().End(), Words().Text(500, "la").End()}, 0xE728),
       {"500:0 la"}},
      {"tracks one after the other",
       FileBytes({UsualHead().End(480), Words().Text(480, "la").End()}, 480, 2),
       {"1000:0 la"}},
  };
  for (const auto& row : rows) {
    const Song song = ReadSong(row.bytes);
    if (std::string(row.fault) == "in a RIFF file") {
      EXPECT_FALSE(Sung(song).empty()) << row.fault;
      continue;
    }
    EXPECT_EQ(Sung(song), row.sung) << row.fault;
  }
}

TEST(SongReaderTest, NoCutOfAFileBreaksTheReader) {
  const std::string file = FileBytes({UsualHead().End(), Words().Text(0, "@Tx").Text(480, "\\la").End()});
  for (std::size_t length = 0; length <= file.size(); ++length) {
    const Song song = ReadSong(file.substr(0, length));
    EXPECT_LE(song.syllables.size(), 1U);
  }
}

TEST(SongReaderTest, AHundredMegabytesOfNothingAreNoSong) {
  EXPECT_FALSE(ReadSong(std::string(100 << 20, '\0')).is_lyric);
}

TEST(TrackReaderTest, RunningStatusOutlivesMetaAndIllegalEvents) {
  const TrackBytes track = TrackBytes()
                               .Event(0, {0x90, 60, 100})
                               .Text(1, "x")
                               .Event(1, {61, 100})
                               .Event(1, {0xF0, 1, 0xF7})
                               .Event(1, {0xF2, 1, 2})
                               .Event(1, {0xFE})
                               .Event(1, {62, 0});
  std::vector<int> seen;
  TrackReader reader(track.Content());
  while (const auto event = reader.Next()) {
    seen.push_back(event->status == 0x90 ? event->data1 : -event->status);
    EXPECT_TRUE(event->data1 != 62 || event->tick == 6);
  }
  EXPECT_THAT(seen, ElementsAre(60, -0xFF, 61, -0xF0, 62));
}

TEST(TempoMapTest, TimeAndTickAreEachOthersInverse) {
  std::vector<TempoMap::Change> changes;
  for (int i = 0; i < 600; ++i) changes.push_back({i * 480, i % 2 == 0 ? 483'871 : 516'129});
  const auto map = TempoMap::Make(480, changes);
  ASSERT_TRUE(map);
  EXPECT_EQ(map->TimeOf(600 * 480), std::chrono::seconds(300));
  for (std::int64_t tick = 0; tick < 600 * 480; tick += 77) EXPECT_EQ(map->TickAt(map->TimeOf(tick)), tick);
}

}  // namespace
}  // namespace karaoke
