// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <filesystem>
#include <string>
#include <thread>

#include "platform/files/DiskFileSaver.h"
#include "platform/files/testing/FaultyDisk.h"
#include "platform/files/testing/HundredKills.h"
#include "platform/files/testing/TestFolder.h"
#include "support/testing/FileSaverContract.h"
#include "support/testing/MemoryFiles.h"

namespace platform::files {
namespace {

namespace fs = std::filesystem;
using support::ErrorCode;
using ::testing::ElementsAre;
using testing::FaultyDisk;
using ::testing::HasSubstr;
using testing::RunInChild;
using testing::TestFolder;

class RealSaver {
 public:
  support::FileSaver& Saver() { return saver_; }
  [[nodiscard]] fs::path Path() const { return folder_ / "index"; }
  [[nodiscard]] std::string Content() const { return folder_.Read("index"); }
  void FailNextSave() { disk_.FailOn(3, ENOSPC); }
  void Repair() {}

 private:
  TestFolder folder_;
  FaultyDisk disk_;
  DiskFileSaver saver_{disk_};
};

class SaverInMemory {
 public:
  support::FileSaver& Saver() { return saver_; }
  [[nodiscard]] static fs::path Path() { return "index"; }
  [[nodiscard]] std::string Content() const { return saver_.Content("index").value_or(""); }
  void FailNextSave() { saver_.FailNext(); }
  void Repair() {}

 private:
  support::testing::MemoryFiles saver_;
};

using Savers = ::testing::Types<RealSaver, SaverInMemory>;
class SavedFiles : public ::testing::Test {
 protected:
  support::Result<void> Save(std::string_view name, std::string_view content) {
    return saver_.Save(folder_ / name, content);
  }
  [[nodiscard]] mode_t Rights(std::string_view name) const {
    struct stat status {};
    stat((folder_ / name).c_str(), &status);
    return status.st_mode & 07777;
  }

  TestFolder folder_;
  DiskFileSaver saver_;
};

TEST_F(SavedFiles, LeaveNothingBesideThem) {
  ASSERT_TRUE(Save("a", "1").Ok());
  ASSERT_TRUE(Save("a", "2").Ok());
  EXPECT_THAT(folder_.Names(), ElementsAre("a"));
}

TEST_F(SavedFiles, WaitForNoDiskWhereTheyAreSavedSwiftly) {
  FaultyDisk disk;
  DiskFileSaver saver(disk);
  ASSERT_TRUE(saver.SaveSwiftly(folder_ / "a", "1").Ok());
  ASSERT_TRUE(saver.SaveSwiftly(folder_ / "a", "2").Ok());
  EXPECT_THAT(disk.Log(),
              ElementsAre("Create", "Write", "Rename", "Create", "Write", "CopyRights", "Rename"));
  EXPECT_EQ(folder_.Read("a"), "2");
}

TEST_F(SavedFiles, KeepTheRightsOfTheOldFile) {
  folder_.Write("secret", "old");
  chmod((folder_ / "secret").c_str(), 0640);
  ASSERT_TRUE(Save("secret", "new").Ok());
  EXPECT_EQ(Rights("secret"), 0640U);
}

TEST_F(SavedFiles, KeepTheOwnerOfTheOldFile) {
  folder_.Write("theirs", "old");
  if (chown((folder_ / "theirs").c_str(), 12345, 12345) != 0) return;  // only an administrator can tell
  ASSERT_TRUE(Save("theirs", "new").Ok());
  struct stat status {};
  stat((folder_ / "theirs").c_str(), &status);
  EXPECT_EQ(status.st_uid, 12345U);
}

TEST_F(SavedFiles, GoWhereALinkPoints) {
  fs::create_directory(folder_ / "far");
  fs::create_symlink("far/real", folder_ / "link");
  ASSERT_TRUE(Save("link", "first").Ok());
  ASSERT_TRUE(Save("link", "second").Ok());
  EXPECT_TRUE(fs::is_symlink(folder_ / "link"));
  EXPECT_EQ(folder_.Read("far/real"), "second");
}

TEST_F(SavedFiles, AreNotPutWhereSomethingElseStands) {
  fs::create_directory(folder_ / "folder");
  mkfifo((folder_ / "pipe").c_str(), 0600);
  EXPECT_EQ(Save("folder", "x").Failure().code, ErrorCode::Unsupported);
  EXPECT_EQ(Save("pipe", "x").Failure().code, ErrorCode::Unsupported);
  EXPECT_EQ(Save("none/file", "x").Failure().code, ErrorCode::NotFound);
  EXPECT_THAT(folder_.Names(), ElementsAre("folder", "pipe"));
}

TEST_F(SavedFiles, WithTheLongestNameAreSavedToo) {
  const std::string name(255, 'n');
  ASSERT_TRUE(Save(name, "x").Ok());
  EXPECT_EQ(folder_.Read(name), "x");
}

TEST_F(SavedFiles, WithoutPermissionAreRefused) {
  folder_.Write("locked", "old");
  chmod((folder_ / "locked").c_str(), 0444);
  // As somebody who is not the administrator; the answer comes back through the file system.
  chmod(folder_.Path().c_str(), 0777);
  RunInChild([&] {
    if (getuid() == 0 && setuid(65534) != 0) return;
    folder_.Write("answer", Save("locked", "new").Failure().text);
  });
  EXPECT_EQ(folder_.Read("answer"), "There is no permission to write " + (folder_ / "locked").string() + ".");
  EXPECT_EQ(folder_.Read("locked"), "old");
}

TEST_F(SavedFiles, LargerThanTheDiskAllowsLeaveTheOldOne) {
  folder_.Write("index", "old");
  RunInChild([&] {
    signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{1000, 1000};
    setrlimit(RLIMIT_FSIZE, &limit);
    folder_.Write("answer", Save("index", std::string(5000, 'x')).Failure().text);
  });
  EXPECT_THAT(folder_.Read("answer"), HasSubstr("There is no room left"));
  EXPECT_EQ(folder_.Read("index"), "old");
  EXPECT_THAT(folder_.Names(), ElementsAre("answer", "index"));
}

TEST_F(SavedFiles, AreOnTheDiskBeforeTheyAreSwappedIn) {
  folder_.Write("index", "old");
  FaultyDisk disk;
  ASSERT_TRUE(DiskFileSaver(disk).Save(folder_ / "index", std::string(350, 'n')).Ok());
  EXPECT_THAT(disk.Log(), ElementsAre("Create", "Write", "CopyRights", "Sync", "Rename", "SyncFolder"));
}

TEST_F(SavedFiles, SurviveTheFailureOfAnyCallWhole) {
  const std::string next(350, 'n');
  for (int nth = 1;; ++nth) {
    folder_.Write("index", "old");
    FaultyDisk disk;
    disk.FailOn(nth, EIO);
    const bool saved = DiskFileSaver(disk).Save(folder_ / "index", next).Ok();
    EXPECT_EQ(folder_.Read("index"), saved ? next : "old") << "call " << nth;
    EXPECT_THAT(folder_.Names(), ElementsAre("index")) << "call " << nth;
    if (disk.Calls() < nth) break;
  }
}

TEST_F(SavedFiles, AreWholeWheneverTheProgramIsKilled) {
  const auto version = [](int n) {
    return std::string(static_cast<std::size_t>(250 + n), static_cast<char>('a' + n));
  };
  const auto save_often = [&](FaultyDisk& disk) {
    for (int n = 0; DiskFileSaver(disk).Save(folder_ / "index", version(n)); n = (n + 1) % 26) continue;
  };
  folder_.Write("index", version(0));
  testing::KillHundredTimes(100, 3, save_often, [&](const testing::Death&) {
    const std::string left = folder_.Read("index");
    ASSERT_FALSE(left.empty());
    ASSERT_EQ(left, version(left[0] - 'a'));
  });
  ASSERT_TRUE(Save("index", "after").Ok());
  EXPECT_THAT(folder_.Names(), ElementsAre("index")) << "what the crashes left is gone";
}

TEST_F(SavedFiles, DoNotDisturbAnotherProgramThatIsSaving) {
  folder_.Write(".index.saving-1-0", "half");
  folder_.Write(".other.saving-1-0", "half");
  const int busy = open((folder_ / ".index.saving-1-0").c_str(), O_RDONLY | O_CLOEXEC);
  flock(busy, LOCK_EX);
  ASSERT_TRUE(Save("index", "x").Ok());
  EXPECT_THAT(folder_.Names(), ElementsAre(".index.saving-1-0", ".other.saving-1-0", "index"));
  close(busy);
}

TEST_F(SavedFiles, AreSavedByTwoProgramsAtOnceWithoutOneSpoilingTheOther) {
  std::atomic<int> failures{0};
  const auto save_often = [&](char letter) {
    for (int i = 0; i < 300; ++i) failures += Save("index", std::string(1000, letter)).Ok() ? 0 : 1;
  };
  std::thread one(save_often, 'a');
  std::thread other(save_often, 'b');
  one.join();
  other.join();
  EXPECT_EQ(failures, 0);
  EXPECT_EQ(folder_.Read("index"), std::string(1000, folder_.Read("index")[0]));
  EXPECT_THAT(folder_.Names(), ElementsAre("index"));
}

}  // namespace
}  // namespace platform::files

namespace support::testing {
INSTANTIATE_TYPED_TEST_SUITE_P(Files, EveryFileSaver, platform::files::Savers);
}  // namespace support::testing
