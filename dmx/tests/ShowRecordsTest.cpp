// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "dmx/ShowRecords.h"

#include <gtest/gtest.h>

#include <fstream>

#include "dmx/FixtureFile.h"
#include "dmx/ShowFile.h"
#include "support/testing/TemporaryFolder.h"

namespace dmx {
namespace {

using V = std::vector<int>;

/// A show of one step, whose fixture files have become others since it was made. "A.dmx 1 3" stands for a
/// fixture from channel 1 on that had three.
class ShowRecordsTest : public ::testing::Test {
 protected:
  ShowRecordsTest() { std::filesystem::create_directories(folder_.Path() / "DMXlibrary"); }

  void FileHas(const char* file, int channels) {
    Fixture fixture;
    fixture.name = file;
    for (int i = 0; i < channels; ++i) fixture.channels.Add({ChannelFunction::Dimmer, "", {}});
    std::ofstream(folder_.Path() / "DMXlibrary" / file, std::ios::binary) << FixtureText(fixture);
  }
  void Patched(const char* file, int start, int number_of) {
    show.fixtures.Add({file, static_cast<std::int16_t>(start), static_cast<std::int16_t>(number_of), {}});
  }
  void Levels(const V& levels) {
    SceneStep& step = show.scenes.Add().Steps.Add();
    for (const int level : levels) step.SceneChannel.Add().ChannelValue = static_cast<std::int16_t>(level);
  }
  /// Where each record is sent, once the show was opened.
  V Open() {
    const std::string before = ShowText(show);
    report = PatchShow(show, FixtureLibrary(support::ProgramFolder(folder_.Path())));
    EXPECT_EQ(ShowText(show), before) << "opening writes nothing away";
    return RecordChannels(show, report.patch);
  }

  support::testing::TemporaryFolder folder_;
  Show show;
  PatchReport report;
};

TEST_F(ShowRecordsTest, LevelsStayOnTheirLampsWhateverTheFilesOfTheOthersSay) {
  const struct {
    const char* name;
    int channels;  ///< that the first fixture's file describes now; below 0: there is no file
    V sent;        ///< of the records of channels 1 to 3, and 10 and 11
    const char* told;
  } cases[] = {
      {"the same", 3, {1, 2, 3, 10, 11}, ""},
      {"grown", 5, {1, 2, 3, 10, 11}, "levels for 3 channels of \"A.dmx\", whose file now describes 5"},
      {"shrunk", 1, {1, 0, 0, 10, 11}, "levels for 3 channels of \"A.dmx\", whose file now describes only 1"},
      {"missing", -1, {1, 2, 3, 10, 11}, "\"A.dmx\" cannot be read; its channels get the levels"},
      {"out of the show", 512, {0, 0, 0, 10, 11}, "\"A.dmx\" is out of the show"}};
  for (const auto& one : cases) {
    show = {};
    std::filesystem::remove(folder_.Path() / "DMXlibrary" / "A.dmx");
    if (one.channels >= 0) FileHas("A.dmx", one.channels);
    FileHas("B.dmx", 2);
    Patched("B.dmx", 10, 2);
    Patched("A.dmx", 1, 3);
    Levels({1, 2, 3, 10, 11});
    EXPECT_EQ(Open(), one.sent) << one.name;
    EXPECT_EQ(report.notes.size(), *one.told == 0 ? 0U : 1U) << one.name;
    if (*one.told == 0) continue;
    EXPECT_NE(report.notes.front().find(one.told), std::string::npos) << one.name;
  }
}

TEST_F(ShowRecordsTest, AFileThatEndsEarlyIsMarkedAndOneWithoutChannelsTakesNoLight) {
  const struct {
    const char* text;
    int missing;
    bool marked;
  } cases[] = {{"A\r\n1\r\n0\r\n0\r\n0\r\n2\r\nChannel1\r\n3\r\n", 0, true}, {"A\r\n1\r\n", 1, false}};
  for (const auto& one : cases) {
    show = {};
    std::ofstream(folder_.Path() / "DMXlibrary" / "A.dmx", std::ios::binary) << one.text;
    Patched("A.dmx", 5, 2);
    Levels({1, 2});
    EXPECT_EQ(Open(), (V{5, 6})) << one.text;
    EXPECT_EQ(static_cast<int>(report.missing.size()), one.missing) << one.text;
    EXPECT_EQ(show.fixtures.Item(1)->cut_short, one.marked) << one.text;
    EXPECT_EQ(report.notes.size(), 1U) << one.text;
  }
}

TEST_F(ShowRecordsTest, ARefusedFixtureIsWrittenBackInItsPlaceWithItsRecords) {
  FileHas("A.dmx", 4);
  FileHas("B.dmx", 2);
  FileHas("C.dmx", 1);
  Patched("A.dmx", 1, 2);
  Patched("B.dmx", 3, 2);
  Patched("C.dmx", 9, 1);
  Levels({1, 2, 30, 40, 9});
  EXPECT_EQ(Open(), (V{1, 2, 0, 0, 9})) << "A has grown into the place of B";
  EXPECT_EQ(report.refused.front(), "Channel 3 is already taken. Please choose another Start Channel");
  ASSERT_EQ(show.aside.size(), 1U);
  EXPECT_EQ(show.fixtures.count(), 2);
  const Show again = ReadShow(ShowText(show)).Value().show;
  EXPECT_EQ(again.fixtures.Item(2)->StartChannel, 3);
  EXPECT_EQ(again.fixtures.Item(2)->NumberOf, 2);
  EXPECT_EQ(again.scenes, show.scenes);
}

TEST_F(ShowRecordsTest, WhereTheSpansDoNotAddUpRecordsStandForThePatchedChannelsInOrder) {
  FileHas("A.dmx", 2);
  FileHas("B.dmx", 1);
  const struct {
    int records;
    V sent;
  } cases[] = {{3, {3, 7, 8}}, {1, {3, 7, 8}}, {4, {1, 2, 3, 4}}};
  for (const auto& one : cases) {
    show = {};
    Patched("A.dmx", 7, 0);
    Patched("B.dmx", 3, 9);
    Levels(V(static_cast<std::size_t>(one.records), 1));
    EXPECT_EQ(Open(), one.sent) << one.records;
    EXPECT_EQ(report.notes, std::vector<std::string>()) << one.records;
  }
  show = {};
  Levels(V(600, 1));
  EXPECT_EQ(Open().size(), 512U);
}

TEST_F(ShowRecordsTest, WhereTheRefusedOneHasNoRecordsTheOthersHaveTheirOwn) {
  FileHas("A.dmx", 4);
  FileHas("B.dmx", 2);
  Patched("A.dmx", 1, 2);
  Patched("B.dmx", 2, 2);
  Levels({1, 2});
  EXPECT_EQ(Open(), (V{1, 2}));
}

}  // namespace
}  // namespace dmx
