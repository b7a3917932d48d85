// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "karaoke/LyricShow.h"

#include <gtest/gtest.h>

#include "karaoke/testing/MidiBytes.h"

namespace karaoke {
namespace {

using std::chrono::milliseconds;
using testing::FileBytes;
using testing::TrackBytes;
using testing::UsualHead;

/// "Hello you" at 10 s, "Bye now" at 12 s, and after a long gap "End" at 30 s; a beat is 500 ms.
class LyricShowTest : public ::testing::Test {
 protected:
  [[nodiscard]] LyricFrame At(int ms) const { return show_.At(milliseconds(ms)); }
  /// "1>2" current and next line, "title", "-" for none.
  [[nodiscard]] std::string Lines(int ms) const {
    const LyricFrame frame = At(ms);
    if (frame.title) return "title";
    const auto text = [](std::optional<std::size_t> line) { return line ? std::to_string(*line) : "-"; };
    return text(frame.current) + ">" + text(frame.next);
  }
  [[nodiscard]] std::string Word(int ms) const {
    const LyricFrame frame = At(ms);
    return show_.Lines()[*frame.current].text.substr(frame.word_begin, frame.word_end - frame.word_begin);
  }

  LyricShow show_{ReadLyric(FileBytes({UsualHead().End(), TrackBytes()
                                                              .Name("Words")
                                                              .Text(0, "@TSong")
                                                              .Text(9600, "\\Hel")
                                                              .Text(480, "lo ")
                                                              .Text(480, "you")
                                                              .Text(960, "/Bye")
                                                              .Text(480, " now")
                                                              .Text(16'800, "/End")
                                                              .End()}))};
};

TEST_F(LyricShowTest, LinesComeAheadAndGoInLongGaps) {
  const struct {
    int ms;
    const char* lines;
  } rows[] = {{-50, "title"},  {0, "title"},    {5999, "title"},   {6000, "0>1"},   {11'799, "0>1"},
              {12'300, "1>2"}, {14'299, "1>2"}, {14'300, "->2"},   {25'999, "->2"}, {26'000, "2>-"},
              {31'799, "2>-"}, {31'800, "->-"}, {1'000'000, "->-"}};
  for (const auto& row : rows) EXPECT_EQ(Lines(row.ms), row.lines) << row.ms;
  EXPECT_TRUE(LyricShow().At(milliseconds(5)).title);
}

TEST_F(LyricShowTest, AWordIsSweptSyllableBySyllable) {
  EXPECT_FALSE(At(9999).syllable);
  EXPECT_EQ(At(10'000).syllable, 0U);
  EXPECT_DOUBLE_EQ(At(10'000).sweep, 0);
  EXPECT_DOUBLE_EQ(At(10'250).sweep, 0.5);
  EXPECT_EQ(Word(10'250), "Hello");
  EXPECT_EQ(Word(10'600), "Hello");
  EXPECT_EQ(Word(11'000), "you");
  EXPECT_DOUBLE_EQ(At(11'400).sweep, 0.5);  // a held one is swept within 800 ms
  EXPECT_DOUBLE_EQ(At(11'799).sweep, 799.0 / 800);
  EXPECT_EQ(Word(12'600), "now");
}

TEST_F(LyricShowTest, WordsWrittenWithoutBlanksAreParted) {
  TrackBytes words = TrackBytes().Name("Words");
  for (int i = 0; i < 3; ++i) words.Text(480, "/Twin-").Text(480, "kle").Text(480, "lit-").Text(480, "tle");
  const LyricShow parted(ReadLyric(FileBytes({UsualHead().End(), words})));
  EXPECT_EQ(parted.Lines()[2].text, "Twinkle little ");
  EXPECT_EQ(parted.Lines()[2].syllables[3].begin, 11U);
  EXPECT_EQ(parted.At(parted.Lines()[2].syllables[3].at).word_begin, 8U);
  for (int i = 0; i < 12; ++i) words.Text(480, "\xE3\x81\x82\xE3\x82\x8A\xE3\x81\x8C");
  const LyricShow japanese(ReadLyric(FileBytes({UsualHead().End(), words})));
  EXPECT_EQ(japanese.Lines()[0].text, "Twin-klelit-tle");
}

TEST_F(LyricShowTest, TheBallTouchesDownOnEverySyllable) {
  for (const ShownLine& line : show_.Lines()) {
    for (std::size_t i = 0; i < line.syllables.size(); ++i) {
      const LyricFrame before = show_.At(line.syllables[i].at - Microseconds(1));
      const LyricFrame on = show_.At(line.syllables[i].at);
      ASSERT_TRUE(before.ball && on.ball);
      EXPECT_EQ(before.ball->to, i);
      EXPECT_NEAR(before.ball->height, 0, 1e-4);
      EXPECT_EQ(on.ball->from, i);
      EXPECT_NEAR(on.ball->height, 0, 1e-9);
    }
  }
  EXPECT_NEAR(At(10'250).ball->height, 1, 1e-9);
  EXPECT_NEAR(At(10'125).ball->way, 0.25, 1e-9);
}

TEST_F(LyricShowTest, LinesAfterAPauseAreCountedIn) {
  const struct {
    int ms;
    int count;
  } rows[] = {{7999, 0}, {8000, 4},   {8499, 4},   {8500, 3},  {9500, 1},
              {9999, 1}, {10'000, 0}, {12'300, 0}, {29'999, 1}};
  for (const auto& row : rows) EXPECT_EQ(At(row.ms).count_in, row.count) << row.ms;
  EXPECT_FALSE(At(7000).ball);
  EXPECT_NEAR(At(8000).ball->height, 0, 1e-9);
  EXPECT_NEAR(At(8250).ball->height, 1, 1e-9);
}

}  // namespace
}  // namespace karaoke
