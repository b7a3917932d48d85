// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/settings/SettingsFile.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <condition_variable>
#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <utility>

#include "platform/files/DiskFileSaver.h"
#include "platform/files/testing/FaultyDisk.h"
#include "platform/files/testing/HundredKills.h"
#include "platform/files/testing/TestFolder.h"
#include "platform/settings/SettingsDisk.h"
#include "support/testing/MemorySettings.h"
#include "support/testing/SettingsStoreContract.h"

namespace platform::settings {
namespace {

namespace fs = std::filesystem;
using files::testing::FaultyDisk;
using files::testing::RunInChild;
using files::testing::TestFolder;
using std::chrono::hours;
using support::kApplication;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

/// Saves for real and counts; fails when told to.
class CountedSaver final : public support::FileSaver {
 public:
  support::Result<void> Save(const fs::path& path, std::string_view content) override {
    const std::lock_guard<std::mutex> lock(mutex_);
    ++saves_;
    saved_.notify_all();
    if (during_) std::exchange(during_, nullptr)();
    if (failures_ > 0) {
      --failures_;
      return support::Error{support::ErrorCode::Unavailable, "The disk is full."};
    }
    return disk_.Save(path, content);
  }
  void FailNext(int saves) {
    const std::lock_guard<std::mutex> lock(mutex_);
    failures_ = saves;
  }
  /// Runs in the middle of the next save.
  void During(std::function<void()> job) {
    const std::lock_guard<std::mutex> lock(mutex_);
    during_ = std::move(job);
  }
  [[nodiscard]] int Saves() {
    const std::lock_guard<std::mutex> lock(mutex_);
    return saves_;
  }
  bool AwaitSave() {
    std::unique_lock<std::mutex> lock(mutex_);
    return saved_.wait_for(lock, std::chrono::seconds(20), [this] { return saves_ > 0; });
  }

 private:
  files::DiskFileSaver disk_;
  std::mutex mutex_;
  std::condition_variable saved_;
  int saves_ = 0;
  int failures_ = 0;
  std::function<void()> during_;
};

class RealStore {
 public:
  support::SettingsStore& Store() { return store_; }

 private:
  TestFolder folder_;
  files::DiskFileSaver saver_;
  SettingsFile store_{folder_ / "settings.ini", saver_};
};

class StoreInMemory {
 public:
  support::SettingsStore& Store() { return store_; }

 private:
  support::testing::MemorySettings store_;
};

using Stores = ::testing::Types<RealStore, StoreInMemory>;
class UserSettings : public ::testing::Test {
 protected:
  /// A program that starts. Its writes wait for Flush unless a window is given.
  std::unique_ptr<SettingsFile> Start(std::chrono::milliseconds window = hours(1)) {
    return std::make_unique<SettingsFile>(folder_ / "settings.ini", saver_, window);
  }
  static void Set(SettingsFile& store, std::string_view key, std::string_view value) {
    store.Set(kApplication, "Mixer", key, value);
  }
  static std::string Get(const SettingsFile& store, std::string_view key) {
    return store.Get(kApplication, "Mixer", key, "default");
  }
  static std::vector<std::string> Notices(const SettingsFile& store) {
    std::vector<std::string> texts;
    for (const support::Error& notice : store.Notices(0)) texts.push_back(notice.text);
    return texts;
  }
  [[nodiscard]] std::string File() const { return folder_.Read("settings.ini"); }

  TestFolder folder_;
  CountedSaver saver_;
};

TEST_F(UserSettings, AreThereAtTheNextStart) {
  auto store = Start();
  Set(*store, "MixTime", "two\r\nlines");
  store.reset();
  EXPECT_EQ(Get(*Start(), "MixTime"), "two\r\nlines");
  EXPECT_THAT(folder_.Names(), ElementsAre("settings.ini", "settings.ini.lock"));
}

TEST_F(UserSettings, ReachTheDiskWithoutAskingForIt) {
  auto store = Start(SettingsFile::kWindow);
  Set(*store, "MixTime", "9");
  EXPECT_TRUE(saver_.AwaitSave());
}

TEST_F(UserSettings, OfTenThousandSetsAreOneWrite) {
  auto store = Start();
  for (int i = 0; i < 10'000; ++i) Set(*store, "Volume", std::to_string(i));
  store->Flush();
  EXPECT_EQ(saver_.Saves(), 1);
  EXPECT_EQ(File(), "[TLVG/Mixer]\r\nVolume=9999\r\n");
}

TEST_F(UserSettings, ThatWereOnlyReadWriteNothing) {
  auto store = Start();
  EXPECT_EQ(Get(*store, "MixTime"), "default");
  store->Flush();
  store.reset();
  EXPECT_THAT(folder_.Names(), IsEmpty());
}

TEST_F(UserSettings, AreNotWrittenAgainWhenNothingChanged) {
  Set(*Start(), "MixTime", "9");
  Set(*Start(), "MixTime", "9");
  EXPECT_EQ(saver_.Saves(), 1);
}

TEST_F(UserSettings, OfTwoProgramsAreBothKept) {
  const auto one = Start();
  const auto other = Start();
  for (int i = 0; i < 50; ++i) {
    Set(*one, "one" + std::to_string(i), "1");
    Set(*other, "other" + std::to_string(i), "2");
    Set(*(i % 2 == 0 ? one : other), "both", std::to_string(i));
    one->Flush();
    other->Flush();
  }
  const auto later = Start();
  for (int i = 0; i < 50; ++i) {
    EXPECT_EQ(Get(*later, "one" + std::to_string(i)), "1");
    EXPECT_EQ(Get(*later, "other" + std::to_string(i)), "2");
  }
  EXPECT_EQ(Get(*later, "both"), "49");
  EXPECT_EQ(Get(*one, "other48"), "2") << "what the other wrote is seen after a write of our own";
}

/// Somebody is next to have the lock.
bool SomebodyWaits(const fs::path& lock) {
  struct flock first {};
  first.l_type = F_WRLCK;
  first.l_len = 1;
  const int file = open(lock.c_str(), O_RDWR | O_CLOEXEC);
  const bool told = fcntl(file, F_OFD_GETLK, &first) == 0;
  close(file);
  return told && first.l_type != F_UNLCK;
}

TEST_F(UserSettings, OfAProgramThatSavesOverAndOverLetTheOthersComeBetween) {
  const fs::path path = folder_.Path() / "settings.ini.lock";
  std::atomic<int> order{0};
  int others = 0;
  auto lock = std::make_unique<ProgramLock>(path, hours(1));
  std::thread other([&] {
    const ProgramLock held(path, hours(1));
    others = ++order;
  });
  const auto until = std::chrono::steady_clock::now() + std::chrono::seconds(5);
  while (!SomebodyWaits(path) && std::chrono::steady_clock::now() < until) std::this_thread::yield();
  lock.reset();
  lock = std::make_unique<ProgramLock>(path, hours(1));
  EXPECT_TRUE(lock->Held());
  EXPECT_EQ(++order, 2);
  lock.reset();
  other.join();
  EXPECT_EQ(others, 1);
}

TEST_F(UserSettings, OfTwoProgramsThatWriteAtOnceAreBothKept) {
  const auto write = [this](const std::string& name) {
    const auto store = Start();
    for (int i = 0; i < 200; ++i) {
      Set(*store, name + std::to_string(i), "x");
      store->Flush();
    }
  };
  std::thread one(write, "one");
  std::thread other(write, "other");
  one.join();
  other.join();
  const auto later = Start();
  for (int i = 0; i < 200; ++i) {
    EXPECT_EQ(Get(*later, "one" + std::to_string(i)), "x");
    EXPECT_EQ(Get(*later, "other" + std::to_string(i)), "x");
  }
}

TEST_F(UserSettings, WithGarbageBetweenThemKeepBoth) {
  folder_.Write("settings.ini", "rubbish\r\n[TLVG/Mixer]\r\nMixTime=7\r\n\xFF\xFF\r\n");
  auto store = Start();
  EXPECT_EQ(Get(*store, "MixTime"), "7");
  Set(*store, "Volume", "1");
  store.reset();
  EXPECT_EQ(File(), "rubbish\r\n[TLVG/Mixer]\r\nMixTime=7\r\n\xFF\xFF\r\nVolume=1\r\n");
}

TEST_F(UserSettings, ThatCannotBeReadAreKeptAsideAndToldOf) {
  const std::string garbage(300, '\x01');
  folder_.Write("settings.ini", garbage);
  folder_.Write("settings.ini.unreadable-1", "an older one");
  auto store = Start();
  ASSERT_THAT(Notices(*store), ElementsAre(HasSubstr("cannot be read")));
  store->Flush();
  EXPECT_EQ(File(), garbage) << "only a set replaces it";
  Set(*store, "MixTime", "9");
  store->Flush();
  EXPECT_EQ(folder_.Read("settings.ini.unreadable-1"), "an older one");
  EXPECT_EQ(folder_.Read("settings.ini.unreadable-2"), garbage);
  EXPECT_EQ(File(), "[TLVG/Mixer]\r\nMixTime=9\r\n");
  EXPECT_THAT(Notices(*store).back(), HasSubstr("settings.ini.unreadable-2"));
}

TEST_F(UserSettings, ThatCannotBeReadAreKeptAsideOnceWhenTheSaveFails) {
  folder_.Write("settings.ini", "garbage");
  auto store = Start();
  saver_.FailNext(2);
  Set(*store, "MixTime", "9");
  store->Flush();
  store->Flush();
  EXPECT_EQ(File(), "garbage");
  store.reset();
  EXPECT_THAT(folder_.Names(), ElementsAre("settings.ini", "settings.ini.lock", "settings.ini.unreadable-1"));
}

TEST_F(UserSettings, BehindALinkAreKeptAsideWithTheirContent) {
  folder_.Write("real", "garbage");
  fs::create_symlink("real", folder_ / "settings.ini");
  Set(*Start(), "MixTime", "9");
  EXPECT_EQ(folder_.Read("settings.ini.unreadable-1"), "garbage");
  EXPECT_EQ(folder_.Read("real"), "[TLVG/Mixer]\r\nMixTime=9\r\n");
}

TEST_F(UserSettings, WhereAFolderStandsAreNotSavedAndSaySo) {
  fs::create_directory(folder_ / "settings.ini");
  auto store = Start();
  Set(*store, "MixTime", "9");
  store->Flush();
  EXPECT_THAT(Notices(*store).back(), HasSubstr("Settings are not saved"));
  EXPECT_EQ(Get(*store, "MixTime"), "9") << "they hold until the end";
}

TEST_F(UserSettings, ThatWereDeletedMeanwhileAreMadeAgain) {
  auto store = Start();
  Set(*store, "MixTime", "9");
  store->Flush();
  fs::remove(folder_ / "settings.ini");
  Set(*store, "Volume", "1");
  store->Flush();
  EXPECT_EQ(File(), "[TLVG/Mixer]\r\nMixTime=9\r\nVolume=1\r\n");
}

TEST_F(UserSettings, AreSavedLaterWhenTheDiskFailsAndTheNewerValueWins) {
  Set(*Start(), "Old", "0");
  auto store = Start();
  saver_.FailNext(1);
  Set(*store, "MixTime", "9");
  Set(*store, "Volume", "1");
  store->Flush();
  EXPECT_THAT(Notices(*store), ElementsAre("The disk is full."));
  Set(*store, "Volume", "2");
  store->Flush();
  EXPECT_EQ(File(), "[TLVG/Mixer]\r\nOld=0\r\nMixTime=9\r\nVolume=2\r\n");
}

TEST_F(UserSettings, ThatAreSetDuringAWriteHoldAtOnceAndAreWrittenNext) {
  auto store = Start();
  Set(*store, "MixTime", "9");
  saver_.During([&] { Set(*store, "Volume", "1"); });
  store->Flush();
  EXPECT_EQ(Get(*store, "Volume"), "1");
  store->Flush();
  EXPECT_EQ(File(), "[TLVG/Mixer]\r\nMixTime=9\r\nVolume=1\r\n");
}

TEST_F(UserSettings, LieInAFolderOfTheUserAlone) {
  files::DiskFileSaver disk;
  const fs::path path = folder_ / "config/djtolven/settings.ini";
  SettingsFile(path, disk).Set(kApplication, "Mixer", "MixTime", "9");
  EXPECT_TRUE(fs::exists(path));
  EXPECT_EQ(fs::status(path.parent_path()).permissions(), fs::perms::owner_all);
}

TEST_F(UserSettings, AreOldOrNewWholeWheneverTheProgramIsKilled) {
  constexpr int kKeys = 20;
  const auto change_often = [&](FaultyDisk& disk) {
    files::DiskFileSaver saver(disk);
    SettingsFile store(folder_ / "settings.ini", saver, hours(1));
    for (int n = 0;; ++n) {
      for (int key = 0; key < kKeys; ++key) Set(store, "key" + std::to_string(key), std::to_string(n));
      store.Flush();
    }
  };
  Set(*Start(), "key0", "before");
  files::testing::KillHundredTimes(100, 2, change_often, [&](const files::testing::Death&) {
    const auto store = Start();
    ASSERT_THAT(Notices(*store), IsEmpty());
    const std::string first = Get(*store, "key0");
    ASSERT_NE(first, "default");
    for (int key = 1; first != "before" && key < kKeys; ++key) {
      ASSERT_EQ(Get(*store, "key" + std::to_string(key)), first);
    }
  });
  EXPECT_NE(Get(*Start(), "key0"), "before") << "some saves came to their end";
}

TEST(UserSettingsPath, FollowsTheDesktop) {
  setenv("XDG_CONFIG_HOME", "/else/where", 1);
  EXPECT_EQ(UserSettingsPath(), "/else/where/djtolven/settings.ini");
  setenv("XDG_CONFIG_HOME", "relative", 1);
  setenv("HOME", "/home/dj", 1);
  EXPECT_EQ(UserSettingsPath(), "/home/dj/.config/djtolven/settings.ini");
  unsetenv("XDG_CONFIG_HOME");
  EXPECT_EQ(UserSettingsPath(), "/home/dj/.config/djtolven/settings.ini");
}

}  // namespace
}  // namespace platform::settings

namespace support::testing {
INSTANTIATE_TYPED_TEST_SUITE_P(Settings, EverySettingsStore, platform::settings::Stores);
}  // namespace support::testing
