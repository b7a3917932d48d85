// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/files/FolderLock.h"

#include <gtest/gtest.h>

#include "support/testing/TemporaryFolder.h"

namespace platform::files {
namespace {

bool IsHeld(const FolderLock::Claim& claim) {
  return std::holds_alternative<FolderHolder>(claim);
}

TEST(FolderLockTest, TheSecondOneIsToldWhoHoldsItUntilTheFirstIsGone) {
  const support::testing::TemporaryFolder folder;
  auto first = FolderLock::Take(folder.Path() / "lock");
  ASSERT_FALSE(IsHeld(first));
  const auto second = FolderLock::Take(folder.Path() / "lock");
  ASSERT_TRUE(IsHeld(second));
  EXPECT_TRUE(std::get<FolderHolder>(second).same_user);
  EXPECT_FALSE(std::get<FolderHolder>(second).since.empty());
  first = FolderHolder{};
  EXPECT_FALSE(IsHeld(FolderLock::Take(folder.Path() / "lock")));
}

TEST(FolderLockTest, AFolderThatIsNotThereKeepsNobodyOut) {
  EXPECT_FALSE(IsHeld(FolderLock::Take("Z:\\no\\such\\folder\\lock")));
}

}  // namespace
}  // namespace platform::files
