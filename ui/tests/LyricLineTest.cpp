// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/LyricLine.h"

#include <gtest/gtest.h>

#include <vector>

#include "ui/strings/LyricCoding.h"
#include "ui/widgets/LyricScene.h"

namespace ui {
namespace {

const LyricCanvas kCanvas{QSize(1280, 720)};

/// A line whose words are its syllables, each with the blank behind it.
karaoke::ShownLine LineOf(const std::string& text) {
  karaoke::ShownLine line;
  line.text = text;
  for (std::size_t begin = 0; begin < text.size();) {
    const std::size_t end = std::min(text.find(' ', begin), text.size());
    line.syllables.push_back({{}, {}, begin, end});
    begin = end + 1;
  }
  return line;
}

LyricLine Placed(const std::string& text) {
  return {LineOf(text), "", {"DejaVu Sans", 30, true, false}, kCanvas, 0.33};
}

std::string Repeated(const std::string& text, int times) {
  std::string all;
  for (int i = 0; i < times; ++i) all += text;
  return all;
}

class FittingTest : public ::testing::TestWithParam<std::string> {};

TEST_P(FittingTest, ALineOfAnyLengthFitsAndLosesNoLetter) {
  const LyricLine line = Placed(GetParam());
  QString together;
  double tall = 0;
  for (const LyricRow& row : line.Rows()) {
    EXPECT_LE(row.width, kCanvas.width * 0.9);
    together += row.text;
    tall += line.Pitch();
  }
  EXPECT_EQ(together.remove(QLatin1Char(' ')), QString::fromStdString(GetParam()).remove(QLatin1Char(' ')));
  EXPECT_LE(tall, kCanvas.height / 2);
}

INSTANTIATE_TEST_SUITE_P(Lines, FittingTest,
                         ::testing::Values("", "a", "Twinkle, twinkle", Repeated("some words ", 4),
                                           Repeated("a line that never ends ", 9),
                                           Repeated("Donaudampfschiff", 6), Repeated("ありがとう世界", 6),
                                           Repeated("שלום עולם ", 8)));

TEST(LyricLineTest, RowsOfALongLineAreAboutAsWideAsEachOther) {
  const LyricLine line = Placed("How I wonder what you are, up above the world so high");
  ASSERT_EQ(line.Rows().size(), 2U);
  EXPECT_NEAR(line.Rows()[0].width, line.Rows()[1].width, kCanvas.width * 0.15);
}

TEST(LyricLineTest, SingingBeginsWhereTheScriptDoes) {
  const struct {
    const char* text;
    bool from_right;
  } kLines[] = {{"one two three", false}, {"שלום עולם כולו", true}, {"مرحبا بالعالم كله", true}};
  for (const auto& given : kLines) {
    const LyricLine line = Placed(given.text);
    const double width = line.Rows()[0].width;
    double sung = 0;
    for (std::size_t word = 0; word < 3; ++word) {
      for (const double sweep : {0.0, 0.5, 1.0}) {
        const auto spans = line.SungOf(0, word, sweep);
        ASSERT_EQ(spans.size(), 1U) << given.text;
        const auto [from, to] = spans.front();
        EXPECT_NEAR(given.from_right ? to : from, given.from_right ? width : 0, 1) << given.text;
        EXPECT_GE(to - from, sung - 1e-6) << given.text << word << sweep;
        sung = to - from;
      }
    }
    EXPECT_NEAR(sung, width, 1) << given.text;
  }
}

TEST(LyricLineTest, TheBallLandsWithinItsSyllable) {
  const LyricLine line = Placed(Repeated("one two three ", 5));
  for (std::size_t word = 1; word < 15; ++word) {
    const LyricLine::Middle middle = line.MiddleOf(word);
    EXPECT_GT(middle.x, 0);
    EXPECT_LT(middle.x, line.Rows()[middle.row].width);
    const LyricLine::Middle before = line.MiddleOf(word - 1);
    EXPECT_TRUE(middle.row > before.row || middle.x > before.x) << word;
  }
}

TEST(LyricLineTest, AWordIsFoundByItsBytes) {
  const LyricLine line = Placed("één twee");
  const auto spans = line.WordOf(0, 6, 10);  // each é is two bytes
  ASSERT_EQ(spans.size(), 1U);
  EXPECT_NEAR(spans[0].second, line.Rows()[0].width, 1);
  EXPECT_GT(spans[0].first, line.Rows()[0].width * 0.3);
}

TEST(LyricLineTest, AWordIsFoundByItsBytesInEveryCodePage) {
  const karaoke::ShownLine words = LineOf("\x82\xa0\x82\xe8 \x82\xaa\x82\xc6\x82\xa4");
  const LyricLine line(words, "Shift_JIS", {"DejaVu Sans", 30, true, false}, kCanvas, 0.33);
  EXPECT_EQ(line.Rows().front().text, QString::fromUtf8("あり がとう"));
  EXPECT_LT(line.MiddleOf(0).x, line.MiddleOf(1).x);
  EXPECT_NEAR(line.WordOf(0, 5, 11)[0].second, line.Rows()[0].width, 1);
}

TEST(LyricCodingTest, BytesAreReadInTheSongsLetters) {
  const struct {
    const char* bytes;
    const char* coding;
    const char* text;
  } rows[] = {{"\x82\xa0\x82\xe8", "Shift_JIS", "あり"},
              {"\xcf\xee\xe4", "windows-1251", "Под"},
              {"\xcf\xee\xe4", "WINDOWS-1251", "Под"},
              {"\xf9\xec", "windows-1255", "של"},
              {"caf\xe9", "", "café"},
              {"caf\xe9", "windows-1252", "café"},
              {"caf\xe9", "no such thing", "café"},
              {"ありがとう", "Shift_JIS", "ありがとう"}};
  for (const auto& row : rows) {
    EXPECT_EQ(DecodeLyric(row.bytes, row.coding), QString::fromUtf8(row.text)) << row.coding;
  }
}

}  // namespace
}  // namespace ui
