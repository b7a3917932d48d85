// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/ProgramFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <string>

namespace support::testing {
namespace {

namespace fs = std::filesystem;

class Folder : public ::testing::Test {
 protected:
  void SetUp() override { fs::create_directories(path_ / "DMXlibrary"); }
  void TearDown() override { fs::remove_all(path_); }
  void Touch(const std::string& name) { std::ofstream(path_ / name) << "x"; }

  const fs::path path_ =
      fs::temp_directory_path() / ("program-folder-" + std::to_string(std::random_device()()));
  const ProgramFolder folder_{path_};
};

TEST_F(Folder, TurnsANameIntoANativePath) {
  EXPECT_EQ(folder_.Native("\\tlv.ndx"), path_ / "tlv.ndx");
  EXPECT_EQ(folder_.Native("\\DMXlibrary/new.tlv"), path_ / "DMXlibrary" / "new.tlv");
  EXPECT_EQ(folder_.TextOf("\\tlv.ndx"), path_.string() + "\\tlv.ndx");
}

TEST_F(Folder, FindsTheFolderThatASettingNames) {
  EXPECT_EQ(folder_.NativeOfText(folder_.TextOf("\\MyMusic")), path_ / "MyMusic");
  for (const fs::path& other : {path_ / "MyMusic", path_.parent_path() / "music"}) {
    EXPECT_EQ(folder_.NativeOfText(other.string()), other);
  }
  EXPECT_EQ(folder_.NativeOfText(""), fs::path());
}

TEST_F(Folder, FindsAFileUnderAnotherLetterCase) {
  Touch("DMXlibrary/Scanner.TLV");
  EXPECT_TRUE(
      fs::equivalent(folder_.Native("\\dmxLIBRARY\\scanner.tlv"), path_ / "DMXlibrary" / "Scanner.TLV"));
}

#ifndef _WIN32  // where names that differ by case alone are the same file
TEST_F(Folder, PrefersTheExactNameThenTheFirstInByteOrder) {
  Touch("b.tlv");
  Touch("B.tlv");
  EXPECT_EQ(folder_.Native("\\b.tlv").filename(), "b.tlv");
  Touch("C.tlv");
  Touch("C.TLV");
  EXPECT_EQ(folder_.Native("\\c.Tlv").filename(), "C.TLV");
}
#endif

TEST(Backslash, IsAddedOnce) {
  EXPECT_EQ(AddBackslash("C:"), "C:\\");
  EXPECT_EQ(AddBackslash("C:\\"), "C:\\");
  EXPECT_EQ(AddBackslash(""), "\\");
}

}  // namespace
}  // namespace support::testing
