// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "catalogue/ports/SideStore.h"

namespace catalogue::testing {

/// What every side store promises. T gives one by Store().
template <typename T>
class EverySideStore : public ::testing::Test {
 protected:
  std::string Read(const std::string& path, const FileStamp& stamp, SidePart part = SidePart::Wave) {
    return given_.Store().Read(path, stamp, part).value_or("(nothing)");
  }
  void Write(const std::string& path, const FileStamp& stamp, const std::string& bytes,
             SidePart part = SidePart::Wave) {
    EXPECT_TRUE(given_.Store().Write(path, stamp, part, bytes).Ok());
  }
  const FileStamp old_{100, 7};
  const FileStamp new_{100, 8};
  T given_;
};
TYPED_TEST_SUITE_P(EverySideStore);

TYPED_TEST_P(EverySideStore, GivesBackWhatWasWrittenToTheByte) {
  const std::string bytes("\0a\xFF\r\n", 5);
  const std::string odd_path = "/m/caf\xE9's \"best\".mp3";
  EXPECT_EQ(this->Read("a", this->old_), "(nothing)");
  this->Write("a", this->old_, bytes);
  this->Write(odd_path, this->old_, "");
  this->Write("a", this->old_, "facts", SidePart::Facts);
  EXPECT_EQ(this->Read("a", this->old_), bytes);
  EXPECT_EQ(this->Read(odd_path, this->old_), "");
  EXPECT_EQ(this->Read("a", this->old_, SidePart::Facts), "facts");
  EXPECT_EQ(this->Read("a", this->old_, SidePart::Grid), "(nothing)");
  this->Write("a", this->old_, "newer");
  EXPECT_EQ(this->Read("a", this->old_), "newer");
}

TYPED_TEST_P(EverySideStore, WhatBelongsToAnotherStateOfTheFileIsNotThere) {
  this->Write("a", this->old_, "wave");
  this->Write("a", this->old_, "facts", SidePart::Facts);
  EXPECT_EQ(this->Read("a", this->new_), "(nothing)");
  EXPECT_EQ(this->Read("a", this->old_), "wave");
  this->Write("a", this->new_, "new facts", SidePart::Facts);
  EXPECT_EQ(this->Read("a", this->old_), "(nothing)");
  EXPECT_EQ(this->Read("a", this->new_), "(nothing)");
  EXPECT_EQ(this->Read("a", this->new_, SidePart::Facts), "new facts");
}

REGISTER_TYPED_TEST_SUITE_P(EverySideStore, GivesBackWhatWasWrittenToTheByte,
                            WhatBelongsToAnotherStateOfTheFileIsNotThere);

}  // namespace catalogue::testing
