// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/SaveWatch.h"

#include <gtest/gtest.h>

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

TEST_F(WatchedSaves, AFileThatTheUserNamedElsewhereDoesNotCount) {
  files.SetFull(true);
  EXPECT_FALSE(watch.Save("/stick/list.tpl", "rows").Ok());
  EXPECT_EQ(watch.Now().files, 0U);
}

}  // namespace
}  // namespace app
