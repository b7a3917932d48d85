// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "dmx/Patch.h"

#include <gtest/gtest.h>

#include <fstream>

#include "support/testing/TemporaryFolder.h"

namespace dmx {
namespace {

const std::string kOver = "You are over the available 512 channels!";

std::string Taken(int channel) {
  return "Channel " + std::to_string(channel) + " is already taken. Please choose another Start Channel";
}

ChannelSlider Channels(int count) {
  ChannelSlider channels;
  for (int i = 0; i < count; ++i) channels.Add({ChannelFunction::Dimmer, "", {}});
  return channels;
}

TEST(PatchTest, RefusesClashesAndOverrunsWithTheirSentence) {
  Patch patch;
  ASSERT_TRUE(patch.Add(1, 10, Channels(5)));
  struct Case {
    int start, count;
    std::string refusal;
  };
  for (const Case& given : {Case{15, 3, ""}, Case{7, 3, ""}, Case{7, 4, Taken(10)}, Case{14, 1, Taken(14)},
                            Case{510, 3, ""}, Case{510, 4, kOver}, Case{0, 1, kOver}, Case{-5, 1, kOver},
                            Case{513, 0, ""}, Case{32767, 512, kOver}, Case{1, 512, Taken(10)}}) {
    const Patch before = patch;
    Patch after = patch;
    const auto added = after.Add(2, given.start, Channels(given.count));
    EXPECT_EQ(added ? "" : added.Failure().text, given.refusal) << given.start << " " << given.count;
    EXPECT_EQ(after == before, !added || given.count == 0);
  }
}

TEST(PatchTest, SuggestsTheLowestStartThatFits) {
  Patch patch;
  EXPECT_EQ(patch.SuggestStart(3), 1);
  ASSERT_TRUE(patch.Add(1, 3, Channels(4)));
  EXPECT_EQ(patch.SuggestStart(2), 1);
  EXPECT_EQ(patch.SuggestStart(3), 7);
  EXPECT_EQ(patch.SuggestStart(506), 7);
  EXPECT_EQ(patch.SuggestStart(507), 0);
  EXPECT_EQ(patch.SuggestStart(0), 1);
}

TEST(PatchTest, TellsWhoHoldsAChannel) {
  Patch patch;
  ASSERT_TRUE(patch.Add(4, 511, Channels(2)));
  EXPECT_EQ(patch.At(512), (PatchedChannel{4, 2, ChannelFunction::Dimmer}));
  EXPECT_EQ(patch.At(510).fixture, 0);
  EXPECT_EQ(patch.Channels(), std::vector({511, 512}));
}

class PatchShowTest : public ::testing::Test {
 protected:
  PatchShowTest() {
    std::filesystem::create_directories(folder_.Path() / "DMXlibrary");
    std::ofstream(folder_.Path() / "DMXlibrary" / "Par.dmx", std::ios::binary)
        << "Par\r\n3\r\n0\r\n0\r\n0\r\n3\r\nChannel1\r\n3\r\n";
  }
  void Add(const std::string& filename, int start, int number_of = 0) {
    show_.fixtures.Add(
        {filename, static_cast<std::int16_t>(start), static_cast<std::int16_t>(number_of), {}});
  }
  PatchReport PatchAll() { return PatchShow(show_, FixtureLibrary(support::ProgramFolder(folder_.Path()))); }

  support::testing::TemporaryFolder folder_;
  Show show_;
};

TEST_F(PatchShowTest, FixturesAreFoundByTheirNameAloneAndKeepTheirFullName) {
  Add("C:\\elsewhere\\par.DMX", 10, 7);
  const PatchReport report = PatchAll();
  EXPECT_EQ(report.patch.Channels(), std::vector({10, 11, 12}));
  EXPECT_EQ(show_.fixtures.Item(1)->Filename, folder_.Path().string() + "\\DMXlibrary\\par.DMX");
  EXPECT_EQ(show_.fixtures.Item(1)->Channels.Item(1)->function, ChannelFunction::Dimmer);
  EXPECT_EQ(show_.fixtures.Item(1)->NumberOf, 7) << "as the show has it";
}

TEST_F(PatchShowTest, NoNameLeadsOutOfTheLibrary) {
  std::filesystem::rename(folder_.Path() / "DMXlibrary" / "Par.dmx", folder_.Path() / "Par.dmx");
  Add("../Par.dmx", 1);
  Add("..\\Par.dmx", 2);
  EXPECT_EQ(PatchAll().missing, std::vector({1, 2}));
}

TEST_F(PatchShowTest, WhatDoesNotFitIsReportedAndRemoved) {
  Add("par.dmx", 511);
  Add("par.dmx", 1);
  Add("par.dmx", 2);
  Add("par.dmx", 4);
  const PatchReport report = PatchAll();
  EXPECT_EQ(report.refused, (std::vector{kOver, Taken(2)}));
  ASSERT_EQ(show_.fixtures.count(), 2);
  EXPECT_EQ(show_.fixtures.Item(2)->StartChannel, 4);
  EXPECT_EQ(report.patch.At(6).fixture, 2);
}

TEST_F(PatchShowTest, AFixtureWithoutAFileStaysAndHoldsItsPlace) {
  Add("gone.dmx", 2, 4);
  Add("par.dmx", 5);
  const PatchReport report = PatchAll();
  EXPECT_EQ(report.missing, std::vector{1});
  EXPECT_EQ(show_.fixtures.count(), 2);
  EXPECT_EQ(report.patch.Channels(), std::vector({2, 3, 4, 5, 6, 7}));
  EXPECT_EQ(report.patch.At(5).fixture, 2);
  EXPECT_TRUE(report.notes.front().starts_with("The file of \"gone.dmx\" cannot be read"));
}

/// One scene of one step with a record for each level.
}  // namespace
}  // namespace dmx
