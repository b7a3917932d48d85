// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/files/FolderLock.h"

#include <gtest/gtest.h>
#include <pwd.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/files/testing/TestFolder.h"

namespace platform::files {
namespace {

bool IsHeld(const FolderLock::Claim& claim) {
  return std::holds_alternative<FolderHolder>(claim);
}

TEST(FolderLockTest, TheSecondOneIsToldWhoHoldsItUntilTheFirstIsGone) {
  const testing::TestFolder folder;
  auto first = FolderLock::Take(folder / "lock");
  ASSERT_FALSE(IsHeld(first));
  const auto second = FolderLock::Take(folder / "lock");
  ASSERT_TRUE(IsHeld(second));
  const FolderHolder& holder = std::get<FolderHolder>(second);
  EXPECT_TRUE(holder.same_user);
  EXPECT_EQ(holder.user, getpwuid(geteuid())->pw_name);
  EXPECT_EQ(holder.since.size(), std::string("2026-11-22 03:00").size());
  first = FolderHolder{};
  EXPECT_FALSE(IsHeld(FolderLock::Take(folder / "lock"))) << "the file itself stays";
}

TEST(FolderLockTest, ItIsGoneWithAProgramThatIsKilled) {
  const testing::TestFolder folder;
  EXPECT_EQ(testing::RunInChild([&] {
              const auto held = FolderLock::Take(folder / "lock");
              if (!IsHeld(held)) raise(SIGKILL);
            }),
            SIGKILL);
  EXPECT_FALSE(IsHeld(FolderLock::Take(folder / "lock")));
}

TEST(FolderLockTest, AFolderThatCannotBeWrittenToKeepsNobodyOut) {
  EXPECT_FALSE(IsHeld(FolderLock::Take("/no/such/folder/lock")));
  EXPECT_FALSE(IsHeld(FolderLock::Take("/proc/lock")));
}

TEST(FolderLockTest, AnotherUserIsNamedAlthoughHisFileMayOnlyBeRead) {
  const testing::TestFolder folder;
  const auto held = FolderLock::Take(folder / "lock");
  ASSERT_FALSE(IsHeld(held));
  folder.Write("lock", "4242\nanna\n2026-11-22 03:00\n");
  chmod(folder.Path().c_str(), 0755);
  chmod((folder / "lock").c_str(), 0444);
  const int signal = testing::RunInChild([&] {
    constexpr uid_t kNobody = 65534;
    if (geteuid() == 0 && seteuid(kNobody) != 0) raise(SIGUSR2);
    const auto claim = FolderLock::Take(folder / "lock");
    const auto* holder = std::get_if<FolderHolder>(&claim);
    if (holder != nullptr && !holder->same_user && holder->user == "anna") raise(SIGUSR1);
  });
  EXPECT_EQ(signal, SIGUSR1);
}

}  // namespace
}  // namespace platform::files
