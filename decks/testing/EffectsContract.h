// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <limits>

#include "decks/ports/DeckEffects.h"

namespace decks::testing {

/// What all deck effects promise. T has Effects() and Stream(), another playing one at each call.
template <typename T>
class EveryDeckEffects : public ::testing::Test {
 protected:
  T given_;
};

TYPED_TEST_SUITE_P(EveryDeckEffects);

TYPED_TEST_P(EveryDeckEffects, EachStreamHasThoseThatWereSetForIt) {
  DeckEffects& effects = this->given_.Effects();
  const StreamHandle first = this->given_.Stream(), second = this->given_.Stream();
  EXPECT_EQ(effects.Effects(first), EffectSettings{});
  EffectSettings settings;
  settings.echo = {.on = true, .level = 0.5F, .seconds = 0.25F};
  settings.equaliser = false;
  effects.SetEffects(1, first, settings);
  EXPECT_EQ(effects.Effects(first), settings);
  EXPECT_EQ(effects.Effects(second), EffectSettings{});
  effects.SetEffects(1, first, {});
  EXPECT_EQ(effects.Effects(first), EffectSettings{});
}

TYPED_TEST_P(EveryDeckEffects, WhatIsPastARangeOrNoNumberIsTakenBack) {
  DeckEffects& effects = this->given_.Effects();
  const StreamHandle stream = this->given_.Stream();
  constexpr float kNone = std::numeric_limits<float>::quiet_NaN();
  constexpr float kEndless = std::numeric_limits<float>::infinity();
  EffectSettings garbage;
  garbage.filter = {.position = kNone, .q = kEndless};
  garbage.low_pass = {.on = true, .hertz = -kEndless, .q = kNone};
  garbage.flanger = {.on = true, .hertz = 1e9F, .wet = -1};
  garbage.echo = {.on = true, .level = 7, .seconds = kEndless};
  garbage.echo3 = {.on = true, .dry = kNone, .wet = kNone, .seconds = 0};
  garbage.reverb = {.on = true, .level = -3, .seconds = kNone};
  garbage.rotate = {.on = true, .hertz = 0, .depth = kEndless};
  effects.SetEffects(2, stream, garbage);
  const EffectSettings kept = effects.Effects(stream);
  EXPECT_EQ(kept.filter, (EffectSettings::Filter{0, 4}));
  EXPECT_EQ(kept.low_pass, (EffectSettings::LowPass{true, 20, 0.71F}));
  EXPECT_EQ(kept.flanger, (EffectSettings::Flanger{true, 16, 0}));
  EXPECT_EQ(kept.echo, (EffectSettings::Echo{true, 1, kLongestEcho}));
  EXPECT_EQ(kept.echo3, (EffectSettings::Echo3{true, 1, 0.4F, 0.01F}));
  EXPECT_EQ(kept.reverb, (EffectSettings::Reverb{true, 0, 1.8F}));
  EXPECT_EQ(kept.rotate, (EffectSettings::Rotate{true, 0.01F, 1}));
}

TYPED_TEST_P(EveryDeckEffects, AStreamThatIsNoneHasNone) {
  EffectSettings settings;
  settings.swap = true;
  this->given_.Effects().SetEffects(1, 0, settings);
  EXPECT_EQ(this->given_.Effects().Effects(0), EffectSettings{});
}

REGISTER_TYPED_TEST_SUITE_P(EveryDeckEffects, EachStreamHasThoseThatWereSetForIt,
                            WhatIsPastARangeOrNoNumberIsTakenBack, AStreamThatIsNoneHasNone);

}  // namespace decks::testing
