// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/MovedFiles.h"

#include <gtest/gtest.h>

namespace catalogue {
namespace {

struct Row {
  const char* path;
  const char* title;
  const char* end_mix_point = "";
};

track_table Table(const std::vector<Row>& rows) {
  track_table table(TrackColumns());
  for (const Row& row : rows) {
    table.AddRow(std::vector<std::string_view>{"A", row.title, "03:00", row.path, "", "", "", "", "", "", "",
                                               "", row.end_mix_point});
  }
  return table;
}

TEST(MovedFiles, AreThoseThatAreFoundOnceElsewhereWithTheSameNameAndTag) {
  const struct {
    const char* what;
    std::vector<Row> before, after;
    const char* moved_to;
    int gone;
  } cases[] = {
      {"nothing happened", {{"/a/x.mp3", "T"}}, {{"/a/x.mp3", "T"}}, "", 0},
      {"a folder moved", {{"/a/x.mp3", "T"}}, {{"/b/c/x.mp3", "T"}}, "/b/c/x.mp3", 0},
      {"another tag", {{"/a/x.mp3", "T"}}, {{"/b/x.mp3", "U"}}, "", 1},
      {"another name", {{"/a/x.mp3", "T"}}, {{"/b/y.mp3", "T"}}, "", 1},
      {"a copy, the first one stays", {{"/a/x.mp3", "T"}}, {{"/a/x.mp3", "T"}, {"/b/x.mp3", "T"}}, "", 0},
      {"two copies to choose from", {{"/a/x.mp3", "T"}}, {{"/b/x.mp3", "T"}, {"/c/x.mp3", "T"}}, "", 1},
      {"two that are alike went", {{"/a/x.mp3", "T"}, {"/b/x.mp3", "T"}}, {{"/c/x.mp3", "T"}}, "", 2},
      {"all went", {{"/a/x.mp3", "T"}, {"/a/y.mp3", "U"}}, {}, "", 2},
  };
  for (const auto& one : cases) {
    const ScanComparison found = CompareScans(Table(one.before), Table(one.after));
    EXPECT_EQ(found.moved.empty() ? "" : found.moved[0].to, one.moved_to) << one.what;
    EXPECT_EQ(found.gone, one.gone) << one.what;
  }
}

TEST(MovedFiles, TakeAlongWhatTheirRowsKnewForMixing) {
  const track_table before = Table({{"/a/x.mp3", "T", "170.000"}, {"/a/y.mp3", "U", "1.000"}});
  track_table after = Table({{"/b/y.mp3", "U", "2.000"}, {"/b/x.mp3", "T"}});
  CarryMixing(CompareScans(before, after), before, after);
  EXPECT_EQ(after.Cell(1, track::kEndMixPoint), "2.000") << "what the tag says";
  EXPECT_EQ(after.Cell(2, track::kEndMixPoint), "170.000");
}

}  // namespace
}  // namespace catalogue
