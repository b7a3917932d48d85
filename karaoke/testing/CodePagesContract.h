// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include "karaoke/testing/FakeCodePages.h"

namespace karaoke::testing {

/// What everybody who guesses code pages promises.
template <typename T>
class EveryCodePages : public ::testing::Test {
 protected:
  T pages_;
};
TYPED_TEST_SUITE_P(EveryCodePages);

TYPED_TEST_P(EveryCodePages, TellsALanguageByItsLetters) {
  EXPECT_EQ(this->pages_.Guess(kRussianWords), "WINDOWS-1251");
}

TYPED_TEST_P(EveryCodePages, TellsNothingOfNothing) {
  EXPECT_EQ(this->pages_.Guess(""), "");
}

REGISTER_TYPED_TEST_SUITE_P(EveryCodePages, TellsALanguageByItsLetters, TellsNothingOfNothing);

}  // namespace karaoke::testing
