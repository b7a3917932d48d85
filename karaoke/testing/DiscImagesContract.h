// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "karaoke/ports/DiscImages.h"

namespace karaoke::testing {

/// What every finder of disc images promises. T gives one by Images(), the path of its song by Song(), and
/// puts an image of so many bytes (1, 2, 3 ...) beside it by Put().
template <typename T>
class EveryDiscImages : public ::testing::Test {
 protected:
  [[nodiscard]] support::ErrorCode Refusal() {
    const auto image = given_.Images().Of(given_.Song());
    EXPECT_FALSE(image.Ok());
    return image ? support::ErrorCode::Cancelled : image.Failure().code;
  }
  T given_;
};
TYPED_TEST_SUITE_P(EveryDiscImages);

TYPED_TEST_P(EveryDiscImages, GivesTheBytesThatLieBesideTheSong) {
  this->given_.Put(5);
  const auto image = this->given_.Images().Of(this->given_.Song());
  ASSERT_TRUE(image.Ok());
  EXPECT_EQ(image.Value(), (std::vector<std::uint8_t>{1, 2, 3, 4, 5}));
}

TYPED_TEST_P(EveryDiscImages, SaysWhyThereIsNone) {
  EXPECT_EQ(this->Refusal(), support::ErrorCode::NotFound);
  this->given_.Put(0);
  EXPECT_EQ(this->Refusal(), support::ErrorCode::Empty);
  this->given_.Put(kLongestDiscImage + 1);
  EXPECT_EQ(this->Refusal(), support::ErrorCode::Unsupported);
}

REGISTER_TYPED_TEST_SUITE_P(EveryDiscImages, GivesTheBytesThatLieBesideTheSong, SaysWhyThereIsNone);

}  // namespace karaoke::testing
