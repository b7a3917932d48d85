// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/TagScratch.h"

#include <gtest/gtest.h>

#include <fstream>
#include <thread>

#include "catalogue/AddFile.h"
#include "catalogue/testing/FakeTagReader.h"
#include "catalogue/track_table.h"

namespace catalogue {
namespace {

namespace fs = std::filesystem;

class TagScratchTest : public ::testing::Test {
 protected:
  TagScratchTest() {
    fs::remove_all(folder_);
    fs::create_directories(folder_);
  }
  ~TagScratchTest() override { fs::remove_all(folder_); }

  fs::path folder_ = fs::path(::testing::TempDir()) / "scratch";
  fs::path file_ = folder_ / "Tagging.tlv";
  TagScratch scratch_{file_};
};

TEST_F(TagScratchTest, ReadsWhatTheBlockHoldsAndNothingOfTheOneBefore) {
  EXPECT_EQ(scratch_.Read("pea\r\n0.5\r\nSMP\r\n1.500\r\nEMP\r\n180.000\r\nBPM\r\n128.00\r\n").bpm, "128.00");
  const MixingTags next = scratch_.Read("Pea\r\n0.7\r\nPEA\r\n0.9\r\nSMP");
  EXPECT_EQ(next.gain, "0.7");
  EXPECT_EQ(next.start_mix_point, std::nullopt);
  EXPECT_EQ(next.bpm, std::nullopt);
}

TEST_F(TagScratchTest, TheBlockStandsInTheFileUnchanged) {
  const std::string block("old line\r\nPEA\r\n1\0x\r\n", 20);
  static_cast<void>(scratch_.Read(block));
  std::ifstream file(file_, std::ios::binary);
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(file), {}), block);
}

TEST_F(TagScratchTest, AFileWithoutABlockIsReadWithoutTheScratchFile) {
  EXPECT_EQ(scratch_.Read("").gain, std::nullopt);
  EXPECT_FALSE(fs::exists(file_));
}

TEST_F(TagScratchTest, AScratchFileThatCannotBeWrittenLeavesTheRowWithoutValues) {
  fs::create_directories(file_ / "a folder in its place");
  testing::FakeTagReader reader;
  FileTags tags;
  tags.title = "T";
  tags.text_block = "PEA\r\n0.5\r\n";
  tags.user_items = {{"SMP", "1.500"}};
  reader.AddFile("a.mp3", tags);
  const auto row = AnalyseFile(reader, "a.mp3", {}, &scratch_);
  ASSERT_TRUE(row.Ok());
  EXPECT_EQ(row.Value()[track::kTitle - 1], "T");
  EXPECT_EQ(row.Value()[track::kGain - 1], "");
  EXPECT_EQ(row.Value()[track::kStartMixPoint - 1], "1.500");
}

TEST_F(TagScratchTest, AValueOfTheNumberedListWinsOverTheBlock) {
  FileTags tags;
  tags.text_block = "PEA\r\n0.5\r\nSMP\r\n9.000\r\n";
  tags.user_items = {{"SMP", "1.500"}};
  const MixingTags mixing = MixingTagsOf(tags, scratch_);
  EXPECT_EQ(mixing.start_mix_point, "1.500");
  EXPECT_EQ(mixing.gain, "0.5");
}

TEST_F(TagScratchTest, TwoReadersAtOnceKeepTheirBlocksApart) {
  const auto read = [this](const std::string& value) {
    for (int i = 0; i < 200; ++i) {
      if (scratch_.Read("PEA\r\n" + value + "\r\n").gain != value) ADD_FAILURE() << value;
    }
  };
  std::thread other(read, "1");
  read("2");
  other.join();
}

}  // namespace
}  // namespace catalogue
