// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/files/TagKeeper.h"

#include <gtest/gtest.h>

#include <fstream>
#include <future>
#include <optional>
#include <thread>

#include "catalogue/testing/FakeTagReader.h"
#include "catalogue/testing/FakeTagWriter.h"
#include "support/testing/ManualExecutor.h"
#include "support/testing/MemoryFiles.h"
#include "support/testing/TemporaryFolder.h"

namespace app {
namespace {

using namespace std::chrono_literals;

catalogue::MixingTags Gain(const char* gain) {
  catalogue::MixingTags tags;
  tags.gain = gain;
  return tags;
}

TEST(TagList, HoldsWhatALineCanHold) {
  const TagToWrite whole{"\\a b.mp3", {"-3.20", "0.500", {}, "120.50"}};
  const TagToWrite none{"c.mp3", {}};
  const TagToWrite broken{"d.mp3", Gain("1\r\n2")};
  EXPECT_EQ(ReadTagList(TagListText({whole, broken, none})), (std::vector<TagToWrite>{whole, none}));
  for (const char* text : {"", "a.mp3", "a.mp3\r\n1\r\n2\r\n", "\r\n\r\n\r\n\r\n\r\n"}) {
    EXPECT_TRUE(ReadTagList(text).empty()) << text;
  }
}

/// Three files, whose tags the workers write when the test lets them.
class TagKeeperTest : public ::testing::Test {
 protected:
  TagKeeperTest() {
    for (const char* file : {"a.mp3", "b.mp3", "c.mp3"}) tags_.AddFile(file, {});
    Open();
  }
  /// The program starts again.
  void Open() {
    keeper_.emplace(TagPorts{tags_, &writer_, nullptr, files_, list_}, workers_,
                    std::make_shared<FileLocks>(), [](const support::Error&) {});
    keeper_->StartUp();
  }
  void WriteAll() {
    for (const char* file : {"a.mp3", "b.mp3", "c.mp3"}) keeper_->Write(file, Gain("-3.20"));
  }
  [[nodiscard]] std::size_t Left() const { return ReadTagList(files_.Content(list_).value_or("")).size(); }
  /// From memory to where the next run reads it.
  void PutListOnDisk() { std::ofstream(list_, std::ios::binary) << files_.Content(list_).value_or(""); }

  support::testing::TemporaryFolder folder_;
  const std::filesystem::path list_ = folder_.Path() / "tlv.tags";
  catalogue::testing::FakeTagReader tags_;
  catalogue::testing::FakeTagWriter writer_{tags_};
  support::testing::MemoryFiles files_;
  support::testing::ManualExecutor workers_;
  std::optional<TagKeeper> keeper_;
};

TEST_F(TagKeeperTest, WhatWaitsAtQuitIsWrittenWhileItMayBe) {
  WriteAll();
  std::thread worker([this] { workers_.RunAll(); });
  EXPECT_TRUE(keeper_->ShutDown(60s));
  EXPECT_EQ(writer_.Writes(), 3);
  worker.join();
  EXPECT_EQ(files_.Content(list_), std::nullopt);
}

TEST_F(TagKeeperTest, WhatIsLeftThenIsDoneByTheNextRun) {
  WriteAll();
  EXPECT_TRUE(keeper_->ShutDown(0ms));
  workers_.RunAll();
  EXPECT_EQ(writer_.Writes(), 0);
  ASSERT_EQ(Left(), 3U);
  PutListOnDisk();
  Open();
  keeper_->Write("b.mp3", Gain("-4.00"));
  workers_.RunAll();
  EXPECT_EQ(writer_.Writes(), 3);
  EXPECT_NE(tags_.Read("b.mp3").Value().text_block.find("-4.00"), std::string::npos) << "the newer value";
  EXPECT_TRUE(keeper_->ShutDown(0ms));
  EXPECT_EQ(files_.Content(list_), "");
}

TEST_F(TagKeeperTest, AListThatNobodyCameToIsKept) {
  WriteAll();
  EXPECT_TRUE(keeper_->ShutDown(0ms));
  PutListOnDisk();
  Open();
  EXPECT_TRUE(keeper_->ShutDown(0ms));
  EXPECT_EQ(Left(), 3U);
}

TEST_F(TagKeeperTest, AFileThatIsHeldByADeadDiskIsLeftToDoToo) {
  std::promise<void> reached, goes_on;
  writer_.OnWritten([&](const std::string&) {
    reached.set_value();
    goes_on.get_future().wait();
  });
  keeper_->Write("a.mp3", Gain("-3.20"));
  std::thread worker([this] { workers_.RunAll(); });
  reached.get_future().wait();
  EXPECT_FALSE(keeper_->ShutDown(0ms));
  EXPECT_EQ(Left(), 1U);
  goes_on.set_value();
  worker.join();
}

}  // namespace
}  // namespace app
