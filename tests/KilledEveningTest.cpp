// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>
#include <signal.h>

#include <array>
#include <filesystem>
#include <numeric>
#include <random>
#include <string>
#include <vector>

#include "app/testing/AllParts.h"
#include "catalogue/AnalysisParts.h"
#include "catalogue/IndexFile.h"
#include "decks/testing/RecordingEngine.h"
#include "platform/codec/testing/MediaMaker.h"
#include "platform/files/DiskFileSaver.h"
#include "platform/files/DiskFolders.h"
#include "platform/files/testing/FaultyDisk.h"
#include "platform/files/testing/TestFolder.h"
#include "platform/sidestore/SqliteSideStore.h"
#include "platform/tags/MixingTagWriter.h"
#include "platform/tags/TagLibTagReader.h"
#include "platform/tags/TagWriter.h"
#include "support/testing/FakeClock.h"
#include "support/testing/ManualExecutor.h"
#include "support/testing/MemorySettings.h"

namespace {

namespace fs = std::filesystem;
namespace track = catalogue::track;
using platform::files::testing::Death;
using platform::files::testing::FaultyDisk;
using platform::files::testing::RunInChild;

enum class Phase { Walk, Analysis, Save, TagWrite, Batch };
constexpr std::array<const char*, 5> kPhases{"walk", "analysis", "save", "tag write", "batch"};

/// Ends the program, as by a power cut, at one of its calls.
class Reaper {
 public:
  Reaper(int nth, Death::Moment moment) : left_(nth), moment_(moment) {}
  template <typename Call>
  auto Around(const Call& call) {
    const bool now = --left_ == 0;
    if (now && moment_ == Death::Before) raise(SIGKILL);
    auto result = call();
    if (now) raise(SIGKILL);
    return result;
  }

 private:
  int left_;
  Death::Moment moment_;
};

class DeadlyFolders final : public catalogue::FolderReader {
 public:
  explicit DeadlyFolders(Reaper* reaper) : reaper_(reaper) {}
  support::Result<catalogue::FolderContent> List(const std::string& folder, const Wanted& wanted) override {
    const auto list = [&] { return folders_.List(folder, wanted); };
    return reaper_ == nullptr ? list() : reaper_->Around(list);
  }
  void Look(const std::string& folder, std::vector<catalogue::ListedFile>& files) override {
    folders_.Look(folder, files);
  }

 private:
  Reaper* reaper_;
  platform::files::DiskFolders folders_;
};

class DeadlyReader final : public catalogue::TagReader {
 public:
  explicit DeadlyReader(Reaper* reaper) : reaper_(reaper) {}
  support::Result<catalogue::FileTags> Read(const std::string& path) override {
    const auto read = [&] { return reader_.Read(path); };
    return reaper_ == nullptr ? read() : reaper_->Around(read);
  }

 private:
  Reaper* reaper_;
  platform::tags::TagLibTagReader reader_;
};

/// Dies at what a batch keeps of a file.
class DeadlyStore final : public catalogue::SideStore {
 public:
  DeadlyStore(const fs::path& file, Reaper* reaper) : store_(file), reaper_(reaper) {}
  std::optional<catalogue::FileStamp> StampOf(const std::string& path) override {
    return store_.StampOf(path);
  }
  std::optional<std::string> ContentOf(const std::string& path) override { return store_.ContentOf(path); }
  bool KeepsSounds() override { return store_.KeepsSounds(); }
  std::optional<std::string> KeptContentOf(const std::string& path) override {
    return store_.KeptContentOf(path);
  }
  std::optional<std::string> Read(const std::string& path, const catalogue::FileStamp& stamp,
                                  catalogue::SidePart part) override {
    return store_.Read(path, stamp, part);
  }
  support::Result<void> Write(const std::string& path, const catalogue::FileStamp& stamp,
                              catalogue::SidePart part, std::string_view bytes) override {
    const auto write = [&] { return store_.Write(path, stamp, part, bytes); };
    return reaper_ == nullptr ? write() : reaper_->Around(write);
  }
  support::Result<void> WriteAll(std::span<const catalogue::SideEntry> entries) override {
    return store_.WriteAll(entries);
  }

 private:
  platform::sidestore::SqliteSideStore store_;
  Reaper* reaper_;
};

/// Eight real files in three folders, which an evening scans, analyses and writes the tags of.
class KilledEvening : public ::testing::Test {
 protected:
  static constexpr int kFiles = 8;

  KilledEvening() {
    for (const char* kind : {"mp3", "ogg", "flac", "wma"}) {
      media_.Write(std::string("x.") + kind, platform::codec::testing::Tone(std::chrono::milliseconds(300)));
    }
    for (int file = 0; file < kFiles; ++file) {
      fs::create_directories(PathOf(file).parent_path());
      fs::copy_file(media_.PathOf("x" + PathOf(file).extension().string()), PathOf(file));
      GiveTag(file, 0);
    }
  }

  [[nodiscard]] fs::path PathOf(int file) const {
    constexpr std::array<const char*, 4> kKinds{"mp3", "ogg", "flac", "wma"};
    const auto kind = static_cast<std::size_t>(file % 4);
    return music_ / std::to_string(file % 3) / (std::to_string(file) + "." + kKinds[kind]);
  }
  static std::string TitleOf(int file) { return "Title " + std::to_string(file); }
  static std::string CommentOf(int round) { return "round " + std::to_string(round); }
  /// A tag without values for mixing, so that there is something to do again.
  void GiveTag(int file, int round) const {
    catalogue::FileTags tags;
    tags.title = TitleOf(file);
    tags.text_block = CommentOf(round);
    ASSERT_TRUE(platform::tags::WriteTags(PathOf(file).string(), tags));
  }

  /// Scans, analyses and writes; dies on the way where that is asked for.
  void Evening(Phase phase, Reaper& reaper, const Death& death) const;
  void ExpectAllWhole(int round) const;

  platform::codec::testing::MediaMaker media_;
  platform::files::testing::TestFolder music_, program_;
};

void KilledEvening::Evening(Phase phase, Reaper& reaper, const Death& death) const {
  const auto of = [&](Phase one) { return phase == one ? &reaper : nullptr; };
  support::testing::FakeClock clock;
  decks::testing::RecordingEngine engine(clock);
  for (int file = 0; file < kFiles; ++file) engine.AddFile(PathOf(file).string(), {.seconds = 2});
  DeadlyReader tags(of(Phase::Analysis));
  DeadlyFolders folders(of(Phase::Walk));
  DeadlyStore store(program_ / "tlv.side", of(Phase::Batch));
  FaultyDisk disk, tag_disk(1000);
  if (phase == Phase::Save) disk.DieAt(death);
  if (phase == Phase::TagWrite) tag_disk.DieAt(death);
  platform::files::DiskFileSaver files(disk);
  platform::tags::MixingTagWriter writer(tag_disk);
  support::testing::MemorySettings settings;
  settings.Set(support::kApplication, "Tags", "Write", "True");
  support::testing::ManualExecutor workers;
  app::Ports ports{engine, engine, tags, settings, files, workers, clock};
  ports.side_store = &store;
  ports.tag_writer = &writer;
  ports.folders = &folders;
  app::Workstation station(ports, support::ProgramFolder(program_.Path()),
                           app::Workstation::Conducting::ByHand);
  const auto work = [&] {
    while (workers.RunOne()) station.PumpWindow();
    station.PumpWindow();
  };
  station.StartUp();
  work();
  station.ApplyButton().Press({app::ApplyMode::ReindexMusic, music_.Path().string(), {}});
  work();
  std::vector<int> rows(static_cast<std::size_t>(station.Collections().Music().Table().Rows()));
  std::iota(rows.begin(), rows.end(), 1);
  station.Collections().Analyse(rows);
  work();
}

void KilledEvening::ExpectAllWhole(int round) const {
  catalogue::track_table table(catalogue::TrackColumns());
  const auto report = catalogue::LoadIndex(program_ / "tlv.ndx", table);
  ASSERT_TRUE(report.Ok());
  ASSERT_EQ(report.Value().Skipped(), 0);
  ASSERT_EQ(table.Rows(), kFiles);
  platform::tags::TagLibTagReader reader;
  for (int file = 0; file < kFiles; ++file) {
    const auto tags = reader.Read(PathOf(file).string());
    ASSERT_TRUE(tags) << tags.Failure().text;
    ASSERT_EQ(tags.Value().title, TitleOf(file));
    const std::string comment = CommentOf(file % 2 == 0 ? round : 0);
    ASSERT_TRUE(tags.Value().text_block.starts_with(comment)) << tags.Value().text_block;
    const auto mixing = catalogue::ScanTextBlock(tags.Value().text_block);
    ASSERT_EQ(mixing.start_mix_point.has_value(), tags.Value().text_block != comment) << "half a block";
  }
}

TEST_F(KilledEvening, LeavesAnIndexThatLoadsWholeAndTagsThatReadWholeInEveryPhase) {
  Reaper nobody(0, Death::Before);
  ASSERT_EQ(RunInChild([&] { Evening(Phase::Walk, nobody, {}); }), 0);
  ExpectAllWhole(0);
  constexpr int kKills = 100;
  constexpr std::array<const char*, 6> kDiskCalls{"Create", "Write",  "CopyRights",
                                                  "Sync",   "Rename", "SyncFolder"};
  std::mt19937 seed(1);
  const auto below = [&seed](int end) { return std::uniform_int_distribution<int>(0, end - 1)(seed); };
  std::array<int, kPhases.size()> kills{};
  for (int kill = 1; kill <= kKills; ++kill) {
    for (int file = 0; file < kFiles; file += 2) GiveTag(file, kill);
    const auto phase = static_cast<Phase>(kill % static_cast<int>(kPhases.size()));
    const auto moment = below(2) == 0 ? Death::Before : Death::After;
    const char* const call = kDiskCalls[static_cast<std::size_t>(below(int(kDiskCalls.size())))];
    const int nth = 1 + below(phase == Phase::Save ? 2 : 4);
    SCOPED_TRACE(std::string(kPhases[static_cast<std::size_t>(phase)]) + " " + call + " " +
                 std::to_string(nth));
    Reaper reaper(nth, moment);
    ASSERT_EQ(RunInChild([&] { Evening(phase, reaper, {call, nth, moment}); }), SIGKILL);
    ++kills[static_cast<std::size_t>(phase)];
    ExpectAllWhole(kill);
    if (HasFatalFailure()) return;
  }
  for (const int of_phase : kills) EXPECT_GE(of_phase, 10);
  ASSERT_EQ(RunInChild([&] { Evening(Phase::Walk, nobody, {}); }), 0);
  catalogue::track_table table(catalogue::TrackColumns());
  ASSERT_TRUE(catalogue::LoadIndex(program_ / "tlv.ndx", table).Ok());
  for (int row = 1; row <= kFiles; ++row)
    EXPECT_NE(table.Cell(row, track::kEndMixPoint), "") << "gone on with";
}

}  // namespace
