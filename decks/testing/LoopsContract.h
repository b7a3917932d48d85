// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include "decks/ports/DeckLoops.h"

namespace decks::testing {

/// What all deck loops promise. T has Loops() and Stream(), another playing one of 20 s at 44.1 kHz at each
/// call.
template <typename T>
class EveryDeckLoops : public ::testing::Test {
 protected:
  static constexpr std::int64_t kSecond = 44'100;
  T given_;
};

TYPED_TEST_SUITE_P(EveryDeckLoops);

TYPED_TEST_P(EveryDeckLoops, EachStreamHasItsOwnUntilItIsEnded) {
  DeckLoops& loops = this->given_.Loops();
  const StreamHandle first = this->given_.Stream(), second = this->given_.Stream();
  const music::Loop loop{{this->kSecond}, {2 * this->kSecond}};
  EXPECT_TRUE(loops.SetLoop(first, loop));
  loops.SetSlip(second, true);
  EXPECT_EQ(loops.LoopState(first), (DeckLoops::State{loop, false}));
  EXPECT_EQ(loops.LoopState(second), (DeckLoops::State{std::nullopt, true}));
  EXPECT_TRUE(loops.SetLoop(second, loop));
  loops.SlipBack(second);
  EXPECT_TRUE(loops.SetLoop(first, std::nullopt));
  EXPECT_EQ(loops.LoopState(first), DeckLoops::State{});
  EXPECT_EQ(loops.LoopState(second), (DeckLoops::State{std::nullopt, true}));
}

TYPED_TEST_P(EveryDeckLoops, WhatCannotBeALoopLeavesAllAsItWas) {
  DeckLoops& loops = this->given_.Loops();
  const StreamHandle stream = this->given_.Stream();
  const music::Loop shortest{{0}, {ShortestLoop(44'100)}};
  ASSERT_TRUE(loops.SetLoop(stream, shortest));
  for (const music::Loop& bad :
       {music::Loop{{-1}, {this->kSecond}}, music::Loop{{500}, {501}}, music::Loop{{500}, {400}},
        music::Loop{{19 * this->kSecond}, {20 * this->kSecond + 1}}}) {
    EXPECT_FALSE(loops.SetLoop(stream, bad)) << bad.begin.value << " to " << bad.end.value;
  }
  EXPECT_FALSE(loops.JumpBy(stream, 20 * this->kSecond));
  EXPECT_EQ(loops.LoopState(stream).loop, shortest);
  EXPECT_FALSE(loops.SetLoop(0, shortest));
  EXPECT_FALSE(loops.JumpBy(0, 1));
  loops.SetSlip(0, true);
  loops.SlipBack(0);
  EXPECT_EQ(loops.LoopState(0), DeckLoops::State{});
}

REGISTER_TYPED_TEST_SUITE_P(EveryDeckLoops, EachStreamHasItsOwnUntilItIsEnded,
                            WhatCannotBeALoopLeavesAllAsItWas);

}  // namespace decks::testing
