// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include "karaoke/LyricPainter.h"
#include "karaoke/testing/RecordingSurface.h"
#include "support/testing/MemorySettings.h"

namespace karaoke {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;

class TextOutlineTest : public ::testing::Test {
 protected:
  TextOutlineTest() { text_.hdc(&surface_); }

  testing::RecordingSurface surface_;
  CTextOutlineEx text_{surface_};
};

TEST_F(TextOutlineTest, AFreshOneOutlinesWithWhatIsSelected) {
  EXPECT_TRUE(text_.Angle() == 0 && text_.FillColor() == 255 && !text_.Filled() && !text_.Font() &&
              !text_.OutlineBehind() && text_.OutlineColor() == 0 && text_.Outlined() &&
              text_.PenWidth() == 1 && text_.UseExistingObjects());
  text_.DrawText("la", 3, 4);
  EXPECT_THAT(surface_.calls, ElementsAre("SetBkMode 1", "BeginPath", "TextOutA 3 4 la", "EndPath",
                                          "StrokePath", "SetBkMode 2"));
  text_.hdc(nullptr);
  text_.DrawText("la", 3, 4);
  EXPECT_EQ(surface_.calls.size(), 6U);
}

TEST_F(TextOutlineTest, ThePathIsPaintedAsFillAndOutlineSay) {
  const struct {
    bool filled, outlined, behind;
    std::vector<std::string> painted;
  } rows[] = {{false, false, false, {}},
              {false, false, true, {}},
              {true, false, true, {"FillPath"}},
              {false, true, true, {"StrokePath"}},
              {true, true, false, {"StrokeAndFillPath"}},
              {true, true, true, {"StrokePath", "BeginPath", "TextOutA 0 0 x", "EndPath", "FillPath"}}};
  for (const auto& row : rows) {
    surface_.calls.clear();
    text_.Filled(row.filled);
    text_.Outlined(row.outlined);
    text_.OutlineBehind(row.behind);
    text_.DrawText("x", 0, 0);
    std::vector<std::string> all{"SetBkMode 1", "BeginPath", "TextOutA 0 0 x", "EndPath"};
    all.insert(all.end(), row.painted.begin(), row.painted.end());
    all.push_back("SetBkMode 2");
    EXPECT_THAT(surface_.calls, ElementsAreArray(all));
  }
}

TEST_F(TextOutlineTest, ObjectsOfItsOwnAreMadeSelectedPutBackAndDeleted) {
  text_.UseExistingObjects(false);
  text_.Filled(true);
  text_.FillColor(0x8000000F);
  text_.PenWidth(2);
  text_.Angle(90);
  text_.Font(FontObject{"Sans", 30, true, false});
  text_.DrawText("x", 1, 2);
  EXPECT_THAT(surface_.calls,
              ElementsAre("SetBkMode 1", "CreateSolidBrush 4111", "SelectObject 101", "CreatePen 0 2 0",
                          "SelectObject 201", "CreateRotatedFont Sans 90", "SelectObject 301", "BeginPath",
                          "TextOutA 1 2 x", "EndPath", "StrokeAndFillPath", "SelectObject 100",
                          "SelectObject 200", "SelectObject 300", "DeleteObject 101", "DeleteObject 201",
                          "SetBkMode 2", "DeleteFont 301"));
}

TEST_F(TextOutlineTest, WhateverCannotBeMadeTheSurfaceIsLeftAsItWas) {
  text_.UseExistingObjects(false);
  text_.Filled(true);
  text_.Font(FontObject{});
  for (surface_.refused_make = 0; surface_.refused_make <= 9; ++surface_.refused_make) {
    text_.DrawText("x", 0, 0);
    EXPECT_TRUE(surface_.IsAsFound()) << surface_.refused_make;
  }
}

TEST_F(TextOutlineTest, TheThreeRolesAreDrawnInTheirColours) {
  support::testing::MemorySettings store;
  support::Settings settings(store, support::ProgramFolder("/prog"));
  LyricPainter painter(surface_);
  painter.Look(ReadLook(settings, LookReader::Display));
  const struct {
    LyricRole role;
    float size;
    const char* brush;
    const char* pen;
  } rows[] = {{LyricRole::CurrentText, 30, "CreateSolidBrush 16711680", "CreatePen 0 2 16777215"},
              {LyricRole::CurrentWord, 29.9F, "CreateSolidBrush 255", "CreatePen 0 1 16777215"},
              {LyricRole::NextText, 48, "CreateSolidBrush 65280", "CreatePen 0 2 16777215"}};
  for (const auto& row : rows) {
    surface_.calls.clear();
    painter.Draw(row.role, LyricDisplay::SingersWindow, surface_, {"Verdana", row.size, false, false}, "la",
                 0, 0);
    EXPECT_THAT(surface_.calls, Contains(row.brush));
    EXPECT_THAT(surface_.calls, Contains(row.pen));
    EXPECT_THAT(surface_.calls, Contains("StrokeAndFillPath"));
  }
}

TEST_F(TextOutlineTest, TheLookIsTheUsersAndHasTwoBackgroundsWithout) {
  support::testing::MemorySettings store;
  support::Settings settings(store, support::ProgramFolder("/prog"));
  EXPECT_EQ(ReadLook(settings, LookReader::Display).background, 0U);
  EXPECT_EQ(ReadLook(settings, LookReader::SettingsPage).background, 0xFFFFFFU);
  EXPECT_EQ(ReadLook(settings, LookReader::Display).bouncing_ball, "/prog\\smile.ICO");
  settings.SetText("Karaoke", "BackGround", "255");
  settings.SetText("Karaoke", "NextText", "&HFF&");
  settings.SetText("Karaoke", "Outline", "-2147483633");
  settings.SetText("Karaoke", "CurrentWord", "red");
  settings.SetText("Karaoke", "FontBold", "True");
  const LyricLook look = ReadLook(settings, LookReader::SettingsPage);
  EXPECT_EQ(look.background, 255U);
  EXPECT_THAT(look.fill, ElementsAre(0xFF0000U, 255U, 255U));
  EXPECT_EQ(look.outline, 0x8000000FU);
  EXPECT_TRUE(look.font_bold && !look.font_italic && look.font_name == "Verdana");
}

/// Of a colour, as contrast between two of them is reckoned.
double Luminance(Colour colour) {
  const auto part = [&](int shift) {
    const double value = static_cast<double>(colour >> shift & 0xFF) / 255;
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * part(0) + 0.7152 * part(8) + 0.0722 * part(16);
}

double Contrast(Colour one, Colour other) {
  const double a = Luminance(one) + 0.05, b = Luminance(other) + 0.05;
  return std::max(a, b) / std::min(a, b);
}

TEST(StageLookTest, IsReadableForTheColourBlindToo) {
  const LyricLook look = StageLook();
  const auto [line, word, next] = look.fill;
  EXPECT_GT(Contrast(line, word), 3) << "sung from unsung";
  for (const Colour letters : look.fill) {
    EXPECT_GT(Contrast(letters, look.outline), 4.5);
    EXPECT_GT(Contrast(letters, look.background), 4.5);
  }
  EXPECT_GT(Luminance(line), Luminance(next)) << "what waits stands back";
}

}  // namespace
}  // namespace karaoke
