// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/SaveWatch.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "app/WatchedSideStore.h"
#include "catalogue/testing/MemorySideStore.h"
#include "support/testing/MemoryFiles.h"

namespace app {
namespace {

class WatchedSaves : public ::testing::Test {
 protected:
  WatchedSaves() { watch.Keep("/evening"); }

  support::testing::MemoryFiles files;
  SaveWatch watch{files};
};

TEST_F(WatchedSaves, AFileCountsUntilItIsSavedAgain) {
  files.SetFull(true);
  EXPECT_FALSE(watch.Save("/evening/tlv.ndx", "rows").Ok());
  EXPECT_FALSE(watch.Save("/evening/tlv.list1", "rows").Ok());
  EXPECT_EQ(watch.Now().files, 2U);
  EXPECT_NE(watch.Now().why.text, "");
  files.SetFull(false);
  EXPECT_TRUE(watch.Save("/evening/tlv.list1", "rows").Ok());
  EXPECT_EQ(watch.Now().files, 1U) << "another file's success is not its own";
  EXPECT_TRUE(watch.Save("/evening/tlv.ndx", "rows").Ok());
  EXPECT_EQ(watch.Now(), SaveWatch::Unsaved());
}

TEST_F(WatchedSaves, AFileThatIsNotTheProgramsOwnDoesNotCount) {
  files.SetFull(true);
  EXPECT_FALSE(watch.Save("/stick/list.tpl", "rows").Ok());
  EXPECT_FALSE(watch.Save("/evening/can-write.tmp", "").Ok()) << "a trial of the folder";
  EXPECT_EQ(watch.Now().files, 0U);
}

TEST_F(WatchedSaves, TheSideStoreCountsUntilItTakesSomethingAgain) {
  catalogue::testing::MemorySideStore store;
  WatchedSideStore watched(store, watch, "/evening/tlv.side");
  store.SetFull(true);
  EXPECT_FALSE(watched.Write("/m/a.mp3", {1, 1}, catalogue::SidePart::Grid, "beats").Ok());
  EXPECT_EQ(watch.Now().files, 1U);
  store.SetFull(false);
  const std::vector<catalogue::SideEntry> entries{{"/m/a.mp3", {1, 1}, catalogue::SidePart::Grid, "beats"}};
  EXPECT_TRUE(watched.WriteAll(entries).Ok());
  EXPECT_EQ(watch.Now().files, 0U);
  EXPECT_EQ(watched.Read("/m/a.mp3", {1, 1}, catalogue::SidePart::Grid), "beats");
}

/// Knows how it was asked.
class AskedSaver final : public support::FileSaver {
 public:
  support::Result<void> Save(const std::filesystem::path& /*path*/, std::string_view /*content*/) override {
    asked += "whole ";
    return {};
  }
  support::Result<void> SaveSwiftly(const std::filesystem::path& /*path*/,
                                    std::string_view /*content*/) override {
    asked += "swiftly ";
    return {};
  }
  support::Result<void> SavePieces(const std::filesystem::path& /*path*/, const Pieces& /*next*/) override {
    asked += "pieces ";
    return {};
  }
  std::string asked;
};

TEST(WatchedSaver, IsAskedAsTheWatchWasSoThatWhatIsWrittenEveryMomentWaitsForNoDisk) {
  AskedSaver saver;
  SaveWatch watch(saver);
  EXPECT_TRUE(watch.SaveSwiftly("/evening/tlv.resume1", "deck 1").Ok());
  EXPECT_TRUE(watch.Save("/evening/tlv.ndx", "rows").Ok());
  EXPECT_TRUE(watch.SavePieces("/evening/tlv.ndx", [] { return std::string_view(); }).Ok());
  EXPECT_EQ(saver.asked, "swiftly whole pieces ");
}

}  // namespace
}  // namespace app
