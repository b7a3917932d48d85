// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/NumberedFiles.h"

#include <gtest/gtest.h>

#include <fstream>

namespace support::testing {
namespace {

namespace fs = std::filesystem;

TEST(NumberedFiles, TakeTheNextNumberAndTouchNoOthers) {
  const fs::path folder = fs::path(::testing::TempDir()) / "numbered-files";
  fs::remove_all(folder);
  fs::create_directories(folder);
  const fs::path file = folder / "tlv.ndx";
  EXPECT_EQ(SetAside(file, "damaged").Value(), fs::path());
  std::ofstream(file) << "x";
  EXPECT_EQ(SetAside(file, "damaged").Value(), folder / "tlv.ndx.damaged-1");
  for (const char* odd : {"tlv.ndx.before-x", "tlv.ndx.before-7", "tlv.ndx.before-99999999999"}) {
    std::ofstream(folder / odd) << odd;
  }
  std::ofstream(file) << "y";
  ASSERT_TRUE(KeepCopy(file, "before", 1));
  EXPECT_TRUE(fs::exists(folder / "tlv.ndx.before-8")) << "one more than the highest";
  EXPECT_FALSE(fs::exists(folder / "tlv.ndx.before-7"));
  EXPECT_TRUE(fs::exists(folder / "tlv.ndx.before-x")) << "none of ours";
  fs::remove_all(folder);
}

}  // namespace
}  // namespace support::testing
