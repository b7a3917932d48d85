// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <fstream>

#include "app/tests/Evening.h"
#include "catalogue/IndexFile.h"
#include "catalogue/testing/FakeTagWriter.h"
#include "catalogue/testing/MemorySideStore.h"
#include "decks/testing/FakeFinders.h"

namespace app::testing {
namespace {

namespace fs = std::filesystem;
namespace track = catalogue::track;
using Names = std::vector<std::string>;
using BatchState = BatchProgress::State;

/// A catalogue of ten short files, 0.mp3 to 9.mp3, whose rows say nothing of how to mix them.
class Batch : public Evening {
 protected:
  Batch() {
    folder_ = fs::path(::testing::TempDir()) / "batch-program";
    fs::remove_all(folder_);
    fs::create_directories(folder_);
    std::vector<std::int16_t> samples(44'100 * 4);
    for (std::size_t i = 0; i < samples.size(); ++i)
      samples[i] = static_cast<std::int16_t>(i % 200 < 100 ? 9000 : -9000);
    for (int i = 0; i < 10; ++i) {
      files_of_.push_back(std::to_string(i) + ".mp3");
      engine_.AddFile(files_of_.back(), {.seconds = 2, .samples = samples});
      tags_.AddFile(files_of_.back());
    }
  }
  ~Batch() override { fs::remove_all(folder_); }
  void Begin() {
    Ports ports{engine_, engine_, tags_, settings_, files_, workers_, clock_, &mixer_, &visualisation_};
    ports.analysis = {&meters_, &trackers_};
    ports.side_store = &store_;
    ports.tag_writer = &tag_writer_;
    station_.emplace(ports, support::ProgramFolder(folder_), Workstation::Conducting::ByHand);
    station_->StartUp();
    for (const std::string& file : files_of_) {
      Music().AddRow(std::vector<std::string_view>{"", file, "00:02", file});
    }
  }
  void Work(int jobs = 1'000'000) {
    for (; jobs > 0 && workers_.RunOne(); --jobs) station_->PumpWindow();
    station_->PumpWindow();
  }
  /// The program is killed: what was not saved is lost. What it had saved lies on the disk.
  void Kill() {
    station_.reset();
    if (const auto list = files_.Content(folder_ / "tlv.batch"))
      std::ofstream(folder_ / "tlv.batch", std::ios::binary) << *list;
  }
  [[nodiscard]] int RowsFilled() {
    int filled = 0;
    for (int row = 1; row <= 10; ++row) filled += Music().Cell(row, track::kEndMixPoint).empty() ? 0 : 1;
    return filled;
  }
  /// Files of these rows, from 1.
  void Start(std::vector<int> rows = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}) {
    station_->Collections().Analyse(std::move(rows));
    for (int i = 0; i < 1000 && Progress().state == BatchState::Idle; ++i) Work(1);
  }
  [[nodiscard]] BatchProgress Progress() { return station_->Collections().Batch().Progress(); }

  Names files_of_;
  decks::testing::FakeLoudnessMeters meters_;
  decks::testing::FakeBeatTrackers trackers_;
  catalogue::testing::MemorySideStore store_;
  catalogue::testing::FakeTagWriter tag_writer_{tags_};
};

TEST_F(Batch, FillsTheRowsAndSavesTheIndex) {
  Begin();
  Start();
  EXPECT_EQ(Progress().state, BatchState::Running);
  EXPECT_EQ(Progress().total, 10);
  Work();
  EXPECT_EQ(Progress().state, BatchState::Idle);
  EXPECT_EQ(Progress().done, 10);
  EXPECT_EQ(RowsFilled(), 10);
  EXPECT_NE(files_.Content(folder_ / "tlv.ndx")->find("9.mp3"), std::string::npos);
  EXPECT_EQ(files_.Content(folder_ / "tlv.batch"), "");
  EXPECT_EQ(tag_writer_.Writes(), 0) << "nobody asked for tags";
}

TEST_F(Batch, EveryRowOfAFileIsFilledHoweverManyOthersThereAre) {
  Begin();
  catalogue::track_table& table = Music();
  for (int i = 0; i < 30'000; ++i) {
    table.AddRow(std::vector<std::string_view>{"", "", "", "other " + std::to_string(i)});
  }
  const int second = table.AddRow(std::vector<std::string_view>{"", "", "", "3.mp3"});
  Start({4});
  Work();
  EXPECT_FALSE(table.Cell(4, track::kEndMixPoint).empty());
  EXPECT_EQ(table.Cell(second, track::kEndMixPoint), table.Cell(4, track::kEndMixPoint));
}

TEST_F(Batch, WritesTheTagsWhereTheSettingSaysSo) {
  Store("Tags", "Write", "True");
  Begin();
  Start();
  Work();
  EXPECT_EQ(tag_writer_.Writes(), 10);
  const auto block = tags_.Read("3.mp3").Value().text_block;
  EXPECT_EQ(catalogue::ScanTextBlock(block).end_mix_point, Music().Cell(4, track::kEndMixPoint));
}

TEST_F(Batch, AFileThatCannotBeAnalysedIsLeftOutWithASentenceAndTheRestGoesOn) {
  Begin();
  Music().AddRow(std::vector<std::string_view>{"", "", "", "gone.mp3"});
  Start({1, 11, 2});
  Work();
  EXPECT_EQ(RowsFilled(), 2);
  EXPECT_EQ(Progress().done, 3);
  EXPECT_EQ(station_->Collections().Batch().LeftOut(),
            Names{"gone.mp3 was left out: it is not there, or holds no sound that can be read."});
}

TEST_F(Batch, APausedOneStandsStillUntilItGoesOn) {
  Begin();
  Start();
  for (int i = 0; i < 1000 && Progress().done < 3; ++i) Work(1);
  station_->Collections().Batch().Pause();
  Work();
  EXPECT_EQ(Progress().state, BatchState::Paused);
  EXPECT_EQ(RowsFilled(), 3);
  station_->Collections().Batch().Resume();
  Work();
  EXPECT_EQ(RowsFilled(), 10);
  EXPECT_EQ(Progress().done, 10);
}

TEST_F(Batch, ACancelledOneIsForgottenByTheNextRunToo) {
  Begin();
  Start();
  for (int i = 0; i < 1000 && Progress().done < 3; ++i) Work(1);
  station_->Collections().Batch().Cancel();
  Work();
  Kill();
  Begin();
  Work();
  EXPECT_EQ(Progress().state, BatchState::Idle);
  EXPECT_EQ(Progress().total, 0);
}

TEST_F(Batch, IsGoneOnWithAfterAKillAndWhatIsKeptIsNotReadAgain) {
  Begin();
  Start();
  for (int i = 0; i < 1000 && Progress().done < 4; ++i) Work(1);
  Kill();
  const int writes = store_.Writes();
  EXPECT_GE(writes, 4);
  Begin();
  Work();
  EXPECT_EQ(RowsFilled(), 10);
  EXPECT_EQ(Progress().state, BatchState::Idle);
  EXPECT_LT(store_.Writes(), writes * 10 / 4 + 4) << "the first ones were looked up";
}

TEST_F(Batch, FilesThatAreAddedMeanwhileAreAnalysedOnce) {
  Begin();
  Start({1, 2});
  Work(2);
  Start({2, 3});
  Work();
  EXPECT_EQ(RowsFilled(), 3);
  EXPECT_EQ(Progress().total, 3);
}

TEST_F(Batch, OneThatIsCancelledBeforeItsFilesAreKnownNeverBegins) {
  Begin();
  station_->Collections().Analyse({1, 2});
  station_->Collections().Batch().Cancel();
  Work();
  EXPECT_EQ(Progress().state, BatchState::Idle);
  EXPECT_EQ(RowsFilled(), 0);
  Start({3});
  Work();
  EXPECT_EQ(RowsFilled(), 1);
}

TEST_F(Batch, TellsWhenItWillBeThrough) {
  Begin();
  Start();
  EXPECT_FALSE(Progress().remaining);
  clock_.Advance(std::chrono::seconds(6));
  for (int i = 0; i < 1000 && Progress().done < 2; ++i) Work(1);
  EXPECT_EQ(Progress().remaining, std::chrono::seconds(24));
}

}  // namespace
}  // namespace app::testing
