// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "dmx/ShowFile.h"

#include <gtest/gtest.h>

#include <map>

#include "dmx/ShowTime.h"
#include "support/Text.h"
#include "support/testing/MemoryFiles.h"

namespace dmx {
namespace {

using support::ErrorCode;

/// Lines as the file has them, from words with blanks between; "_" is an empty line.
std::string ShowLines(std::string_view words) {
  std::string text;
  for (const std::string_view word : support::Split(words, ' '))
    text.append(word == "_" ? "" : word).append("\r\n");
  return text;
}

const std::string kTwoScenes = ShowLines(
    "2 par.dmx 1 3 head.dmx 10 16 "
    "2 "
    "2 Walk-in 3 2 "
    "2 00:01.5 00:10.0 255 True 0 255 _ 0 False -255 255 _ "
    "0 00:00.0 00:00.1 "
    "2 _ 1 0");

Show ReadAll(const std::string& text) {
  const auto reading = ReadShow(text);
  EXPECT_TRUE(reading.Ok());
  return reading ? reading.Value().show : Show();
}

TEST(ShowFileTest, EveryFieldStandsOnItsLine) {
  const Show show = ReadAll(kTwoScenes);
  EXPECT_EQ(show.fixtures.count(), 2);
  EXPECT_EQ(*show.fixtures.Item(2), (DMXfilename{"head.dmx", 10, 16, {}}));
  EXPECT_EQ(show.scenes.count(), 2);
  const Scene& walk_in = *show.scenes.Item(1);
  EXPECT_EQ(walk_in.SceneName, "Walk-in");
  EXPECT_EQ(walk_in.Loops, 3);
  EXPECT_EQ(walk_in.Steps.count(), 2);
  EXPECT_EQ(walk_in.Steps.Item(1)->FadeTime, "00:01.5");
  EXPECT_EQ(walk_in.Steps.Item(1)->WaitTime, "00:10.0");
  EXPECT_EQ(*walk_in.Steps.Item(1)->SceneChannel.Item(1), (Sliders{255, 0, 255, true}));
  EXPECT_EQ(*walk_in.Steps.Item(1)->SceneChannel.Item(2), (Sliders{0, -255, 255, false}));
  EXPECT_EQ(walk_in.Steps.Item(2)->SceneChannel.count(), 0);
  EXPECT_EQ(show.scenes.Item(2)->SceneName, "");
}

TEST(ShowFileTest, IsWrittenByteForByteWholeAndPieceByPiece) {
  const Show show = ReadAll(kTwoScenes);
  EXPECT_EQ(ShowText(show), kTwoScenes);
  support::testing::MemoryFiles files;
  EXPECT_TRUE(SaveShow(files, "a.SHW", show));
  EXPECT_EQ(files.Content("a.SHW"), kTwoScenes);
}

TEST(ShowFileTest, AFixtureIsWrittenWithoutItsFolder) {
  Show show = ReadAll(kTwoScenes);
  show.fixtures.Item(1)->Filename = "C:\\dj\\DMXlibrary\\par.dmx";
  EXPECT_EQ(ShowText(show), kTwoScenes);
  show.fixtures.Item(1)->Filename = "/home/dj/par.dmx";
  EXPECT_EQ(ReadAll(ShowText(show)).fixtures.Item(1)->Filename, "/home/dj/par.dmx");
}

TEST(ShowFileTest, AShowNeedsScenesButNoFixtures) {
  support::testing::MemoryFiles files;
  Show show = ReadAll(kTwoScenes);
  show.fixtures = {};
  EXPECT_TRUE(ShowText(show).starts_with("0\r\n2\r\n2\r\nWalk-in"));
  show.scenes = {};
  const auto refused = SaveShow(files, "a.SHW", show);
  ASSERT_FALSE(refused.Ok());
  EXPECT_EQ(refused.Failure().text, "You don't have any Scene");
  EXPECT_EQ(files.Saves(), 0);
}

TEST(ShowFileTest, OtherLineEndsAndSpellingsOfARecordMeanTheSame) {
  for (const std::string_view end : {"\n", "\r"}) {
    std::string text;
    for (const std::string_view line : support::SplitLines(kTwoScenes)) text.append(line).append(end);
    EXPECT_EQ(ReadAll(text), ReadAll(kTwoScenes));
  }
  const std::string head = "0 1 1 a 1 1 1 x y ";
  const Show plain = ReadAll(ShowLines(head + "12 True -3 4 _"));
  for (const char* record : {"+12 TRUE -3 4 any", "00012 -1 -0003 4 _", "12 true -3 000004 _"}) {
    EXPECT_EQ(ReadAll(ShowLines(head + record)), plain) << record;
  }
}

TEST(ShowFileTest, AFileThatEndsAnywhereShowsWhatWasRead) {
  const auto lines = support::SplitLines(kTwoScenes);
  std::string text;
  for (std::size_t n = 1; n < lines.size(); ++n) {
    text.append(lines[n - 1]).append("\r\n");
    const auto reading = ReadShow(text);
    ASSERT_TRUE(reading.Ok()) << n;
    EXPECT_TRUE(reading.Value().ended_early) << n;
    EXPECT_EQ(reading.Value().show.scenes.count(), n < 9 ? 0 : n < 29 ? 1 : 2) << n;
  }
  EXPECT_FALSE(ReadShow(kTwoScenes).Value().ended_early);
  EXPECT_EQ(ReadShow("").Failure().code, ErrorCode::Empty);
}

TEST(ShowFileTest, ANumberThatIsNoneFailsAndNamesItsLine) {
  const std::map<std::string, std::string> cases{
      {"x", "Line 1: The number of fixtures"},
      {"0 -", "Line 2: The number of scenes"},
      {"0 1 ? a 1.5 1", "Line 5: The number of loops"},
      {"0 1 1 a 1 b", "Line 6: The number of steps"},
      {"0 1 1 a 1 1 c", "Line 7: The number of channels"},
      {"0 1 1 a 1 1 1 t t 9a True 0 0 _", "Line 10: The level"},
      {"0 1 1 a 1 1 2 t t 9 True 0 0 _ 9 True", "none"},  // ends, which is no failure
      {"0 1 1 a 1 1 1 t t 9 True 0x 0 _", "Line 12: The difference"},
      {"0 1 1 a 1 1 1 t t 9 True 0 _ _", "Line 13: The previous level"}};
  for (const auto& [words, start] : cases) {
    const auto reading = ReadShow(ShowLines(words));
    ASSERT_EQ(reading.Ok(), start == "none") << words;
    if (reading) continue;
    EXPECT_EQ(reading.Failure().code, ErrorCode::Malformed);
    EXPECT_TRUE(reading.Failure().text.starts_with(start)) << reading.Failure().text;
  }
}

TEST(ShowFileTest, LargeNumbersAllocateNothingAndAreBroughtIntoTheirBounds) {
  const std::string digits(100'000, '9');
  for (const std::string& words : {digits, "0 " + digits, "0 1 1 a 1 " + digits, "0 1 1 a 1 1 " + digits}) {
    const auto reading = ReadShow(ShowLines(words));
    ASSERT_TRUE(reading.Ok());
    EXPECT_TRUE(reading.Value().ended_early);
    EXPECT_EQ(reading.Value().notes.size(), 1u);
  }
  const auto reading = ReadShow(ShowLines("1 p 70000 -1x 1 1 a -40000 1 2 t t 300 True -9 9 _ -1 x 0 0 _"));
  ASSERT_TRUE(reading.Ok());
  const Show& show = reading.Value().show;
  EXPECT_EQ(show.fixtures.Item(1)->StartChannel, 32767);
  EXPECT_EQ(show.fixtures.Item(1)->NumberOf, -1);
  EXPECT_EQ(show.scenes.Item(1)->Loops, -32768);
  EXPECT_EQ(show.scenes.Item(1)->Steps.Item(1)->SceneChannel.Item(1)->ChannelValue, 255);
  EXPECT_EQ(show.scenes.Item(1)->Steps.Item(1)->SceneChannel.Item(2)->ChannelValue, 0);
  EXPECT_EQ(reading.Value().notes.size(), 4u);
}

TEST(ShowFileTest, NotesAreOnlyTheFirstOfMany) {
  std::string words = "0 1 1 a 1 1 5000 t t";
  for (int i = 0; i < 5000; ++i) words += " 999 True 0 0 _";
  const auto notes = ReadShow(ShowLines(words)).Value().notes;
  EXPECT_EQ(notes.size(), 21u);
  EXPECT_EQ(notes.back(), "And 4980 more of this kind.");
}

TEST(ShowTimeTest, IsReadByPositionAndWrittenInSevenCharacters) {
  const std::map<std::string, int> cases{{"00:00.0", 0}, {"01:02.3", 623}, {"99:59.9", 59999},
                                         {"", 0},        {"1", 600},       {"ab:3x.9", 39},
                                         {"-1:-2.-", 0}, {" 1-02/4", 624}};
  for (const auto& [text, tenths] : cases) EXPECT_EQ(ParseShowTime(text), Tenths(tenths)) << text;
  EXPECT_EQ(StepTimeText(Tenths(623)), "01:02.3");
  EXPECT_EQ(StepTimeText(Tenths(1'000'000)), "99:59.9");
  EXPECT_EQ(StepTimeText(Tenths(-1)), "00:00.0");
  EXPECT_EQ(ShowTimeText(Tenths(60'000)), "100:00.0");
}

TEST(ShowTimeTest, ASceneIsAsLongAsItsStepsAndAShowCountsLoops) {
  Show show = ReadAll(kTwoScenes);
  EXPECT_EQ(ShowTimeText(LengthOf(*show.scenes.Item(1))), "00:11.6");
  EXPECT_EQ(ShowTimeText(LengthOf(*show.scenes.Item(2))), "00:00.0");
  EXPECT_EQ(PlayingTime(show.scenes), Tenths(3 * 116));
  show.scenes.Item(1)->Loops = -2;
  EXPECT_EQ(PlayingTime(show.scenes), Tenths(0));
}

}  // namespace
}  // namespace dmx
