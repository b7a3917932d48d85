// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/time.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <new>
#include <random>
#include <string>
#include <vector>

#include "catalogue/IndexFile.h"
#include "catalogue/track_table.h"
#include "platform/files/DiskFileSaver.h"
#include "platform/files/testing/HundredKills.h"
#include "platform/files/testing/TestFolder.h"

namespace {

using catalogue::track_table;
using platform::files::DiskCalls;
using platform::files::DiskFileSaver;
using platform::files::testing::Death;
using platform::files::testing::FaultyDisk;
using platform::files::testing::KillHundredTimes;
using platform::files::testing::RunInChild;
using platform::files::testing::TestFolder;

/// A number that a child process tells its parent, whenever it dies.
class SharedNumber {
 public:
  SharedNumber() {
    void* memory =
        mmap(nullptr, sizeof(std::atomic<int>), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    number_ = new (memory) std::atomic<int>(0);
  }
  ~SharedNumber() { munmap(number_, sizeof *number_); }
  SharedNumber(const SharedNumber&) = delete;
  SharedNumber& operator=(const SharedNumber&) = delete;
  std::atomic<int>& operator*() { return *number_; }

 private:
  std::atomic<int>* number_;
};

/// A catalogue of some thousand tracks whose versions differ in every row and in their number.
class KilledIndexSave : public ::testing::Test {
 protected:
  static int RowsOf(int version) { return 3000 + version % 7; }
  static track_table Version(int version) {
    track_table table(catalogue::TrackColumns());
    for (int row = 0; row < RowsOf(version); ++row) {
      // Every third row has to be escaped.
      const std::string cell = (row % 3 == 0 ? "version\t" : "version ") + std::to_string(version);
      table.AddRow(std::vector<std::string_view>(13, cell));
    }
    return table;
  }
  [[nodiscard]] std::filesystem::path Path() const { return folder_ / "tlv.ndx"; }
  void SaveOneAfterAnother(DiskCalls& disk) {
    DiskFileSaver saver(disk);
    while (catalogue::SaveIndex(saver, Path(), Version(*saved_ + 1))) ++*saved_;
  }
  /// The version that was saved last or the one that was being saved, and every row of it.
  void ExpectOldOrNewWhole() {
    track_table table(catalogue::TrackColumns());
    const auto report = catalogue::LoadIndex(Path(), table);
    ASSERT_TRUE(report.Ok());
    ASSERT_EQ(report.Value().Skipped(), 0);
    const int version = table.Rows() == RowsOf(*saved_) ? int{*saved_} : *saved_ + 1;
    ASSERT_EQ(catalogue::IndexText(table), catalogue::IndexText(Version(version)));
    *saved_ = version;
  }

  TestFolder folder_;
  SharedNumber saved_;
};

TEST_F(KilledIndexSave, LeavesTheOldOrTheNewIndexWholeInEveryPhase) {
  constexpr std::size_t kBytesAWrite = 16384;
  DiskFileSaver saver;
  const track_table first = Version(0);
  ASSERT_TRUE(catalogue::SaveIndex(saver, Path(), first));
  const int writes = static_cast<int>(catalogue::IndexText(first).size() / kBytesAWrite);
  KillHundredTimes(
      kBytesAWrite, writes, [&](FaultyDisk& disk) { SaveOneAfterAnother(disk); },
      [&](const Death&) { ExpectOldOrNewWhole(); });
  EXPECT_GT(*saved_, 50);
  ASSERT_TRUE(catalogue::SaveIndex(saver, Path(), first));
  EXPECT_EQ(folder_.Names().size(), 1U) << "what the kills left is gone";
}

TEST_F(KilledIndexSave, LeavesTheOldOrTheNewIndexWholeAtAnyInstant) {
  DiskFileSaver saver;
  const auto began = std::chrono::steady_clock::now();
  ASSERT_TRUE(catalogue::SaveIndex(saver, Path(), Version(0)));
  // Some saves long, however long that is on this machine.
  const std::chrono::microseconds some =
      std::chrono::duration_cast<std::chrono::microseconds>(4 * (std::chrono::steady_clock::now() - began));
  std::uniform_int_distribution<suseconds_t> instants(100,
                                                      std::clamp<suseconds_t>(some.count(), 40'000, 900'000));
  std::mt19937 seed(1);
  for (int kill = 0; kill < 50; ++kill) {
    const suseconds_t instant = instants(seed);
    const int signal = RunInChild([&] {
      // Nobody handles the alarm, so it ends the process where it stands, inside a call of the system too.
      const itimerval alarm{{0, 0}, {0, instant}};
      setitimer(ITIMER_REAL, &alarm, nullptr);
      SaveOneAfterAnother(platform::files::SystemDisk());
    });
    ASSERT_EQ(signal, SIGALRM);
    ExpectOldOrNewWhole();
    if (HasFatalFailure()) return;
  }
  EXPECT_GT(*saved_, 10);
}

}  // namespace
