// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "dmx/FixtureFile.h"

#include <gtest/gtest.h>

#include <map>

#include "dmx/FixtureProblems.h"
#include "support/Text.h"
#include "support/testing/MemoryFiles.h"

namespace dmx {
namespace {

using support::ErrorCode;

/// Lines as the file has them, from words with blanks between; "_" is an empty line.
std::string Lines(std::string_view words) {
  std::string text;
  for (const std::string_view word : support::Split(words, ' '))
    text.append(word == "_" ? "" : word).append("\r\n");
  return text;
}

const std::string kScanner = Lines(
    "Scan-1 2 90 180 14 2 "
    "Channel1 3 Light 0 "
    "Channel2 4 _ 2 "
    "Channel2/Preset1 2 0 Closed 0 9 7 x "
    "Channel2/Preset2 3 5 _ 10 255 2.5 _");

Fixture Read(const std::string& text) {
  const auto reading = ReadFixture(text);
  EXPECT_TRUE(reading.Ok());
  return reading ? reading.Value().fixture : Fixture();
}

TEST(FixtureFileTest, EveryFieldStandsOnItsLine) {
  const Fixture fixture = Read(kScanner);
  EXPECT_EQ(fixture.name, "Scan-1");
  EXPECT_EQ(fixture.type, FixtureType::Scanner);
  EXPECT_EQ(std::vector({fixture.tilt_angle, fixture.pan_angle, fixture.beam_angle}),
            std::vector({90, 180, 14}));
  EXPECT_EQ(fixture.channels.count(), 2);
  EXPECT_EQ(fixture.channels.Item(1)->label, "Light");
  EXPECT_EQ(fixture.channels.Item(2)->function, ChannelFunction::Shutter);
  const presets closed{PresetEffect::Closed, 0, "Closed", 0, 9, "7", "", 2};
  const presets strobe{PresetEffect::Strobe, 5, "", 10, 255, "2.5", "", 2};
  EXPECT_EQ(*fixture.channels.Item(2)->presets.Item(1), closed);
  EXPECT_EQ(*fixture.channels.Item(2)->presets.Item(2), strobe);
}

TEST(FixtureFileTest, IsWrittenByteForByteButForTheExtraValueThatTheReaderDrops) {
  Fixture fixture = Read(kScanner);
  EXPECT_EQ(Read(FixtureText(fixture)), fixture);
  fixture.channels.Item(2)->presets.Item(1)->extra = "x";
  EXPECT_EQ(FixtureText(fixture), kScanner);
}

TEST(FixtureFileTest, ALineBreakInsideANameShiftsNoLine) {
  Fixture fixture = Read(kScanner);
  fixture.channels.Item(1)->label = "two\r\nlines";
  EXPECT_EQ(Read(FixtureText(fixture)).channels.Item(1)->label, "two  lines");
}

TEST(FixtureFileTest, MarkersAndLineEndsDoNotMatter) {
  std::string text = kScanner;
  for (std::size_t at; (at = text.find("Channel")) != std::string::npos;) text.erase(at, 8);
  EXPECT_EQ(Read(text), Read(kScanner));
  for (const std::string_view end : {"\n", "\r"}) {
    std::string other;
    for (const std::string_view line : support::SplitLines(kScanner)) other.append(line).append(end);
    EXPECT_EQ(Read(other), Read(kScanner));
  }
}

TEST(FixtureFileTest, AFileThatEndsAnywhereKeepsWhatWasReached) {
  const auto lines = support::SplitLines(kScanner);
  std::string text;
  for (std::size_t n = 0; n < lines.size(); ++n) {
    if (n > 0) {
      const auto reading = ReadFixture(text);
      ASSERT_TRUE(reading.Ok()) << n;
      EXPECT_TRUE(reading.Value().ended_early) << n;
      EXPECT_EQ(reading.Value().fixture.channels.count(), n < 6 ? 0 : 2) << n;
    }
    text.append(lines[n]).append("\r\n");
  }
  EXPECT_FALSE(ReadFixture(kScanner).Value().ended_early);
  EXPECT_EQ(ReadFixture("").Failure().code, ErrorCode::Empty);
}

TEST(FixtureFileTest, StrictNumbersThatAreNoneFailWithTheirLine) {
  const std::map<std::string, std::string> cases{
      {"a 1 0 0 0 two", "Line 6: The number of channels should be a whole number, but \"two\" is none."},
      {"a 1 0 0 0 1 Channel1 3x", "Line 8: The function should be a whole number, but \"3x\" is none."},
      {"a 1 0 0 0 1 Channel1 3 l _",
       "Line 10: The number of presets should be a whole number, but \"\" is none."}};
  for (const auto& [words, text] : cases) {
    const auto reading = ReadFixture(Lines(words));
    ASSERT_FALSE(reading.Ok()) << words;
    EXPECT_EQ(reading.Failure().code, ErrorCode::Malformed);
    EXPECT_EQ(reading.Failure().text, text);
  }
}

TEST(FixtureFileTest, LenientNumbersTakeTheirLeadingDigits) {
  const Fixture fixture = Read(Lines("a 2abc x90 90x _ 0"));
  EXPECT_EQ(fixture.type, FixtureType::Scanner);
  EXPECT_EQ(std::vector({fixture.tilt_angle, fixture.pan_angle, fixture.beam_angle}),
            std::vector({0, 90, 0}));
}

TEST(FixtureFileTest, WhatIsOutOfBoundsIsBroughtIntoThemWithANote) {
  const std::string digits(100'000, '9');
  struct Case {
    std::string words;
    int channels;
    std::size_t notes;
  };
  for (const Case& given :
       {Case{"a 1 0 0 0 -3", 0, 1}, Case{"a 1 0 0 0 " + digits, 512, 1},
        Case{"a 1 " + digits + " -5 0 0", 0, 2}, Case{"a 1 0 0 0 1 c 77 _ 1 p 1 1 n 300 -2 0 _", 1, 3},
        Case{"a 1 0 0 0 1 c 3 _ " + digits, 1, 1}}) {
    const auto reading = ReadFixture(Lines(given.words));
    ASSERT_TRUE(reading.Ok());
    EXPECT_EQ(reading.Value().fixture.channels.count(), given.channels) << given.words.substr(0, 40);
    EXPECT_EQ(reading.Value().notes.size(), given.notes) << given.words.substr(0, 40);
  }
}

TEST(FixtureFileTest, AFixtureWithoutANameIsNotSaved) {
  support::testing::MemoryFiles files;
  const auto refused = SaveFixture(files, "a.dmx", {});
  ASSERT_FALSE(refused.Ok());
  EXPECT_EQ(refused.Failure().text, "You must give a name for this Fixture!");
  EXPECT_EQ(files.Saves(), 0);
  EXPECT_TRUE(SaveFixture(files, "a.dmx", Read(kScanner)));
  EXPECT_EQ(OpenFixture("/nowhere/a.dmx").Failure().code, ErrorCode::NotFound);
}

/// One dimmer channel with these ranges as its presets.
Fixture WithRanges(const std::vector<std::pair<int, int>>& ranges) {
  Fixture fixture;
  FixtureChannel& channel = fixture.channels.Add({ChannelFunction::Dimmer, "", {}});
  for (const auto& [start, end] : ranges) {
    presets& preset = channel.presets.Add();
    preset.StartLevel = start;
    preset.EndLevel = end;
  }
  return fixture;
}

TEST(FixtureProblemsTest, EachDescribedLineAppearsForItsFault) {
  const auto overlapping = [](int p, int q) {
    return "Channel 1: The DMX level for Preset " + std::to_string(p) + " is overlapping with Preset " +
           std::to_string(q) + "!";
  };
  const std::string last = "Channel 1: Your last Preset must end on 255!";
  const std::string dark = "This Fixture doesn't show any light! You must have a Shutter and/or a Dimmer.";
  using Lines = std::vector<std::string>;
  EXPECT_EQ(FixtureProblems(WithRanges({})), Lines());
  EXPECT_EQ(FixtureProblems(WithRanges({{10, 100}, {101, 255}})), Lines());
  EXPECT_EQ(FixtureProblems(WithRanges({{0, 127}, {127, 255}})),
            (Lines{overlapping(1, 2), overlapping(2, 1)}));
  EXPECT_EQ(FixtureProblems(WithRanges({{0, 255}, {9, 3}, {4, 254}})),
            (Lines{overlapping(1, 3), overlapping(3, 1), last}));
  EXPECT_EQ(FixtureProblems({}), Lines{dark});
  Fixture pan = WithRanges({{0, 254}});
  pan.channels.Item(1)->function = ChannelFunction::Pan;
  EXPECT_EQ(FixtureProblems(pan), (Lines{last, dark}));
}

TEST(FixtureProblemsTest, TheQuestionListsThemAll) {
  EXPECT_EQ(FixtureQuestion({}), "");
  EXPECT_EQ(FixtureQuestion({"one", "two"}),
            "Following errors occurred:\r\n\r\none\r\ntwo\r\nIn order to make a correct show you have to "
            "solve these problems.\r\nDo you want to make this changes?");
}

TEST(FixtureTest, TextsAreThoseThatTheEditorShows) {
  EXPECT_EQ(FunctionText(ChannelFunction::Free), "Free");
  EXPECT_EQ(FunctionText(ChannelFunction::PanTiltSpeed), "Pan/Tilt Speed");
  EXPECT_EQ(TypeText(FixtureType::ColorChanger), "Color Changer");
  EXPECT_EQ(RangeText(*WithRanges({{8, 15}}).channels.Item(1)->presets.Item(1)), "8 --> 15");
}

TEST(FixtureTest, ChannelsComeAndGoAtTheEnd) {
  Fixture fixture = Read(kScanner);
  const Fixture before = fixture;
  SetChannelCount(fixture, 3);
  EXPECT_EQ(*fixture.channels.Item(3), FixtureChannel());
  SetChannelCount(fixture, 2);
  EXPECT_EQ(fixture, before);
  for (const auto& [count, channels] : {std::pair(-1, 0), std::pair(513, 512)}) {
    SetChannelCount(fixture, count);
    EXPECT_EQ(fixture.channels.count(), channels);
  }
}

}  // namespace
}  // namespace dmx
