// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/skins/Skin.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <algorithm>

#include "ui/models/ChannelText.h"
#include "ui/widgets/Rim.h"

namespace ui {
namespace {

class SkinTest : public ::testing::TestWithParam<Skin::Name> {
 protected:
  const Skin& skin = SkinOf(GetParam());
};

TEST_P(SkinTest, EveryColourOfAFaderIsSeenInItsGroove) {
  using Function = dmx::ChannelFunction;
  EXPECT_NEAR(Contrast(Qt::black, Qt::white), 21, 0.01);
  const std::pair<Function, const char*> channels[] = {
      {Function::Dimmer, "White"}, {Function::Dimmer, "Blue"}, {Function::Dimmer, "UV"},
      {Function::Dimmer, "Green"}, {Function::Dimmer, ""},     {Function::Pan, ""},
      {Function::Tilt, ""},        {Function::Shutter, ""},    {Function::Free, ""}};
  for (const auto& [function, label] : channels) {
    QImage image(12, 12, QImage::Format_RGB32);
    image.fill(skin.well);
    QPainter painter(&image);
    FillRimmed(painter, {4, 4, 4, 4}, FunctionColour(function, label), skin.well, skin.dim, 1);
    EXPECT_EQ(image.pixelColor(4, 4), FunctionColour(function, label)) << label;
    EXPECT_GE(
        std::max(Contrast(image.pixelColor(3, 4), skin.well), Contrast(image.pixelColor(4, 4), skin.well)),
        3.0)
        << label;
  }
}

TEST_P(SkinTest, WhatMustBeReadStandsOutOnEveryGround) {
  for (const QColor& ground : {skin.ground, skin.panel, skin.raised, skin.well, skin.stripe, skin.chosen}) {
    EXPECT_GE(Contrast(skin.text, ground), 7.0) << ground.name().toStdString();
  }
}

TEST_P(SkinTest, CaptionsAndColouredTextCanBeReadWhereTheyStand) {
  for (const QColor& ground : {skin.panel, skin.well, skin.stripe}) {
    for (const QColor& ink : {skin.dim, skin.warning, skin.danger, skin.Deck(1), skin.Deck(2)}) {
      EXPECT_GE(Contrast(ink, ground), 4.5)
          << ink.name().toStdString() << " on " << ground.name().toStdString();
    }
  }
  for (const int deck : {1, 2}) {
    EXPECT_GE(Contrast(skin.Deck(deck), skin.chosen), 4.5) << "row of deck " << deck;
    EXPECT_GE(Contrast(skin.on_deck, skin.Deck(deck)), 4.5) << "on deck " << deck;
  }
  EXPECT_GE(Contrast(skin.dim, skin.ground), 4.5);
}

TEST_P(SkinTest, WhatCannotBeUsedCanStillBeSeen) {
  EXPECT_GE(Contrast(skin.faint, skin.panel), 3.0);
}

INSTANTIATE_TEST_SUITE_P(All, SkinTest, ::testing::Values(Skin::Name::Dark, Skin::Name::Light));

}  // namespace
}  // namespace ui
