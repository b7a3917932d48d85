// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/files/PlainFile.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "platform/files/testing/TestFolder.h"

namespace platform::files {
namespace {

class PlainFileTest : public ::testing::Test {
 protected:
  std::string Make(std::string_view name, std::string_view bytes) const {
    folder_.Write(name, bytes);
    return (folder_ / name).string();
  }
  static std::string Refusal(const std::string& path) {
    const auto opened = OpenPlainFile(path);
    return opened ? "" : opened.Failure().text;
  }

  testing::TestFolder folder_;
};

TEST_F(PlainFileTest, AFileIsOpenAtItsStartAndItsSizeKnown) {
  const auto opened = OpenPlainFile(Make("http:caf\xC3\xA9.mp3", "abc"));
  ASSERT_TRUE(opened);
  EXPECT_EQ(opened.Value().size, 3);
  EXPECT_EQ(std::fgetc(opened.Value().file.get()), 'a');
}

TEST_F(PlainFileTest, WhatIsNoFileOrHoldsNothingIsSaidSo) {
  EXPECT_EQ(Refusal((folder_ / "gone.mp3").string()),
            "gone.mp3 was not found; it may have been moved or deleted.");
  EXPECT_EQ(Refusal(folder_.Path().string() + "/"),
            folder_.Path().filename().string() + " is a folder, not an audio file.");
  EXPECT_EQ(Refusal(Make("none.mp3", "")), "none.mp3 is empty (0 bytes).");
  EXPECT_EQ(Refusal("/dev/zero"), "zero is a device or a pipe, not an audio file.");
  EXPECT_EQ(Refusal(""), " was not found; it may have been moved or deleted.");
}

TEST_F(PlainFileTest, AFileThatMayNotBeReadIsSaidSo) {
  const std::string path = Make("secret.wav", "abc");
  std::filesystem::permissions(path, std::filesystem::perms::none);
  const bool lowered = geteuid() == 0 && seteuid(65534) == 0;  // rights do not bind the superuser
  const std::string sentence = Refusal(path);
  ASSERT_TRUE(!lowered || seteuid(0) == 0);
  EXPECT_EQ(sentence, "secret.wav may not be read: the system denies access to it.");
}

TEST_F(PlainFileTest, NamesAreTakenApartOnEitherSlash) {
  EXPECT_EQ(LastPart("/music/a.b/song.Mp3"), "song.Mp3");
  EXPECT_EQ(LastPart("C:\\Music\\song.mp3"), "song.mp3");
  EXPECT_EQ(LastPart("/"), "/");
  EXPECT_EQ(ExtensionOf("/music/a.b/song.Mp3"), "MP3");
  EXPECT_EQ(ExtensionOf("/music/a.b/song"), "");
}

}  // namespace
}  // namespace platform::files
