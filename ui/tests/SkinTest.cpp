// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/skins/Skin.h"

#include <gtest/gtest.h>

#include <cmath>

namespace ui {
namespace {

double Luminance(const QColor& colour) {
  const auto part = [](float value) {
    return value <= 0.03928F ? double(value) / 12.92 : std::pow((double(value) + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * part(colour.redF()) + 0.7152 * part(colour.greenF()) + 0.0722 * part(colour.blueF());
}

double Contrast(const QColor& a, const QColor& b) {
  const double light = std::max(Luminance(a), Luminance(b));
  const double dark = std::min(Luminance(a), Luminance(b));
  return (light + 0.05) / (dark + 0.05);
}

class SkinTest : public ::testing::TestWithParam<Skin::Name> {
 protected:
  const Skin& skin = SkinOf(GetParam());
};

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
