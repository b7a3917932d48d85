// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/SaveWatch.h"

#include <gtest/gtest.h>

#include <string>

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
