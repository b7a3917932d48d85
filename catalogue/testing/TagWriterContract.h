// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "catalogue/ports/TagWriter.h"

namespace catalogue::testing {

/// What every tag writer promises. T gives a Writer() and its Reader(), a file with tags by File(tags), and
/// the path of a file that is not there by Missing().
template <typename T>
class EveryTagWriter : public ::testing::Test {
 protected:
  FileTags Read(const std::string& path) {
    const auto read = given_.Reader().Read(path);
    EXPECT_TRUE(read) << read.Failure().text;
    return read ? read.Value() : FileTags{};
  }
  static FileTags Tags() {
    FileTags tags;
    tags.artist = "J\xC3\xBCrgen";
    tags.title = "T";
    tags.text_block = "a word\r\nSMP\r\n1.000";
    tags.user_items = {{"SMP", "1.000"}, {"MOOD", "calm"}};
    return tags;
  }
  static std::string ValueOf(const FileTags& tags, const std::string& name) {
    for (const TagItem& item : tags.user_items) {
      if (item.name == name) return item.value;
    }
    return "(none)";
  }
  T given_;
};
TYPED_TEST_SUITE_P(EveryTagWriter);

TYPED_TEST_P(EveryTagWriter, PutsTheBlockAndTheItemsThatAreThereAndKeepsAllElse) {
  const std::string path = this->given_.File(this->Tags());
  const std::string block = "a word\r\nSMP\r\n2.500\r\nBPM\r\n120.00";
  const auto written = this->given_.Writer().Write(path, block, {{"SMP", "2.500"}, {"EMP", "9.000"}});
  ASSERT_TRUE(written) << written.Failure().text;
  const FileTags tags = this->Read(path);
  EXPECT_EQ(tags.text_block, block);
  EXPECT_EQ(this->ValueOf(tags, "SMP"), "2.500");
  EXPECT_EQ(this->ValueOf(tags, "EMP"), "(none)");
  EXPECT_EQ(this->ValueOf(tags, "MOOD"), "calm");
  EXPECT_EQ(tags.artist, "J\xC3\xBCrgen");
  EXPECT_EQ(tags.title, "T");
}

TYPED_TEST_P(EveryTagWriter, SaysSoWhenThereIsNoFile) {
  const auto written = this->given_.Writer().Write(this->given_.Missing(), "SMP\r\n1", {});
  ASSERT_FALSE(written);
  EXPECT_NE(written.Failure().text, "");
}

REGISTER_TYPED_TEST_SUITE_P(EveryTagWriter, PutsTheBlockAndTheItemsThatAreThereAndKeepsAllElse,
                            SaysSoWhenThereIsNoFile);

}  // namespace catalogue::testing
