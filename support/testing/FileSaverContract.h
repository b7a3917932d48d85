// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "support/ports/FileSaver.h"

namespace support::testing {

/// What every saver promises. T gives one by Saver(), where it saves to by Path() and what lies there by
/// Content(); FailNextSave() lets the next save fail, and Repair() takes away what made it fail.
template <typename T>
class EveryFileSaver : public ::testing::Test {
 protected:
  Result<void> Save(std::string_view content) { return given_.Saver().Save(given_.Path(), content); }
  T given_;
};
TYPED_TEST_SUITE_P(EveryFileSaver);

TYPED_TEST_P(EveryFileSaver, PutsTheContentInPlaceOfTheOld) {
  const std::string bytes("a\0b\r\n", 5);
  EXPECT_TRUE(this->Save("a longer text than the next").Ok());
  EXPECT_TRUE(this->Save(bytes).Ok());
  EXPECT_EQ(this->given_.Content(), bytes);
  EXPECT_TRUE(this->Save("").Ok());
  EXPECT_EQ(this->given_.Content(), "");
}

TYPED_TEST_P(EveryFileSaver, LeavesTheOldFileWhenItFails) {
  ASSERT_TRUE(this->Save("old").Ok());
  this->given_.FailNextSave();
  const auto saved = this->Save("new");
  this->given_.Repair();
  ASSERT_FALSE(saved.Ok());
  EXPECT_NE(saved.Failure().text.find(this->given_.Path().string()), std::string::npos);
  EXPECT_EQ(this->given_.Content(), "old");
  EXPECT_TRUE(this->Save("new").Ok());
  EXPECT_EQ(this->given_.Content(), "new");
}

TYPED_TEST_P(EveryFileSaver, DoesTheSameSwiftly) {
  const auto save = [this](std::string_view content) {
    return this->given_.Saver().SaveSwiftly(this->given_.Path(), content);
  };
  EXPECT_TRUE(save("a longer text than the next").Ok());
  EXPECT_TRUE(save("new").Ok());
  EXPECT_EQ(this->given_.Content(), "new");
  this->given_.FailNextSave();
  EXPECT_FALSE(save("newer").Ok());
  this->given_.Repair();
  EXPECT_EQ(this->given_.Content(), "new");
}

REGISTER_TYPED_TEST_SUITE_P(EveryFileSaver, PutsTheContentInPlaceOfTheOld, LeavesTheOldFileWhenItFails,
                            DoesTheSameSwiftly);

}  // namespace support::testing
