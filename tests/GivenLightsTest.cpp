// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "dmx/FixtureFile.h"
#include "dmx/FixtureProblems.h"
#include "dmx/ShowFile.h"
#include "dmx/ShowPlan.h"
#include "dmx/ShowRecords.h"

namespace tests {
namespace {

namespace fs = std::filesystem;

const fs::path kFolder = fs::path(DJ_SOURCE_FOLDER) / "program-folder";

std::string Bytes(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

TEST(GivenLightsTest, EveryFixtureOfOursIsSoundAndWrittenAsWeWriteIt) {
  int fixtures = 0;
  for (const fs::directory_entry& entry : fs::directory_iterator(kFolder / "DMXlibrary")) {
    const auto reading = dmx::OpenFixture(entry.path());
    ASSERT_TRUE(reading.Ok()) << entry.path();
    EXPECT_TRUE(dmx::FixtureProblems(reading.Value().fixture).empty()) << entry.path();
    EXPECT_EQ(dmx::FixtureText(reading.Value().fixture), Bytes(entry.path())) << entry.path();
    ++fixtures;
  }
  EXPECT_GE(fixtures, 12);
}

TEST(GivenLightsTest, EveryShowOfOursIsPatchedWithoutQuestionsAndPlays) {
  const dmx::FixtureLibrary library{support::ProgramFolder(kFolder)};
  int shows = 0;
  for (const fs::directory_entry& entry : fs::directory_iterator(kFolder / "DMXShows")) {
    auto reading = dmx::OpenShow(entry.path());
    ASSERT_TRUE(reading.Ok()) << entry.path();
    dmx::Show& show = reading.Value().show;
    EXPECT_EQ(dmx::ShowText(show), Bytes(entry.path())) << entry.path();
    const dmx::PatchReport report = dmx::PatchShow(show, library);
    EXPECT_TRUE(report.refused.empty() && report.missing.empty() && report.notes.empty()) << entry.path();
    const auto channels = dmx::RecordChannels(show, report.patch);
    EXPECT_EQ(show.scenes.Item(1)->Steps.Item(1)->SceneChannel.count(), static_cast<int>(channels.size()));
    const auto plan = dmx::ShowPlan::Make(show.scenes, channels);
    ASSERT_TRUE(plan.Ok());
    EXPECT_GT(plan.Value().Length(), std::chrono::minutes(1));
    ++shows;
  }
  EXPECT_GE(shows, 2);
}

}  // namespace
}  // namespace tests
