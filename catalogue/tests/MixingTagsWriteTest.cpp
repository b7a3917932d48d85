// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "catalogue/AnalysisParts.h"
#include "catalogue/MixingTags.h"
#include "catalogue/testing/FakeTagWriter.h"
#include "catalogue/testing/MemorySideStore.h"
#include "catalogue/testing/TagWriterContract.h"

namespace catalogue::testing {

struct FakeFiles {
  FakeTagWriter& Writer() { return writer; }
  FakeTagReader& Reader() { return reader; }
  std::string File(const FileTags& tags) {
    reader.AddFile("song.mp3", tags);
    return "song.mp3";
  }
  std::string Missing() { return "missing.mp3"; }

  FakeTagReader reader;
  FakeTagWriter writer{reader};
};
INSTANTIATE_TYPED_TEST_SUITE_P(Fake, EveryTagWriter, ::testing::Types<FakeFiles>);

}  // namespace catalogue::testing

namespace catalogue {
namespace {

TEST(WithMixingTagsTest, PutsValuesAfterTheirKeysAndCarriesOtherLinesOver) {
  MixingTags tags;
  tags.start_mix_point = "2.500";
  tags.bpm = "120.00";
  const struct {
    std::string_view block, with;
  } cases[] = {
      {"", "SMP\r\n2.500\r\nBPM\r\n120.00"},
      {"a word\nsmp\n1\nPEA\n-3", "a word\r\nsmp\r\n2.500\r\nPEA\r\n-3\r\nBPM\r\n120.00"},
      {"BPM\nSMP", "BPM\r\n120.00\r\nSMP\r\n2.500"},
      {"SMP\n2.500\nBPM\n120.00\n", "SMP\n2.500\nBPM\n120.00\n"},
  };
  for (const auto& each : cases) EXPECT_EQ(WithMixingTags(each.block, tags), each.with);
}

TEST(FileMarksTest, ComeBackAsTheyWereOrNotAtAll) {
  FileMarks marks;
  marks.start = PointBy::Hand;
  marks.end = PointBy::Scan;
  for (const bool corrected : {false, true}) {
    if (corrected) {
      marks.grid = std::make_shared<const music::BeatGrid>(
          music::BeatGrid::Even({120}, 1, music::Seconds(0.25), music::Seconds(9)));
    }
    const std::string bytes = PackMarks(marks);
    const auto read = UnpackMarks(bytes);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->start, PointBy::Hand);
    EXPECT_EQ(read->end, PointBy::Scan);
    ASSERT_EQ(read->grid != nullptr, corrected);
    EXPECT_TRUE(!corrected || *read->grid == *marks.grid);
    for (std::size_t size = 0; size < bytes.size(); ++size) EXPECT_FALSE(UnpackMarks(bytes.substr(0, size)));
  }
}

TEST(CarryOverTest, MovesEveryPartToTheNewStateOrSaysThatItCannot) {
  testing::MemorySideStore store;
  const FileStamp old_state{1, 1};
  const FileStamp new_state{2, 2};
  for (const SidePart part : {SidePart::Facts, SidePart::Wave, SidePart::Grid, SidePart::Marks}) {
    EXPECT_TRUE(store.Write("a", old_state, part, std::to_string(static_cast<int>(part))));
  }
  EXPECT_TRUE(CarryOver(store, "a", old_state, new_state));
  for (const SidePart part : {SidePart::Facts, SidePart::Wave, SidePart::Grid, SidePart::Marks}) {
    EXPECT_EQ(store.Read("a", new_state, part), std::to_string(static_cast<int>(part)));
  }
  store.SetFull(true);
  EXPECT_FALSE(CarryOver(store, "a", new_state, old_state));
}

}  // namespace
}  // namespace catalogue
