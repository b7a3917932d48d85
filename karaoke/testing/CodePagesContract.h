// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include "karaoke/ports/CodePages.h"

namespace karaoke::testing {

/// Words long enough to be told by, in Windows-1251.
inline constexpr const char* kRussianWords =
    "\xcf\xee\xe4\xec\xee\xf1\xea\xee\xe2\xed\xfb\xe5 \xe2\xe5\xf7\xe5\xf0\xe0 \xed\xe5 "
    "\xf1\xeb\xfb\xf8\xed\xfb \xe2 \xf1\xe0\xe4\xf3 \xe4\xe0\xe6\xe5 \xf8\xee\xf0\xee\xf5\xe8";

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
