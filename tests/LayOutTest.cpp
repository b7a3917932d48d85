// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace {

namespace fs = std::filesystem;

/// A made program folder and a user's one, laid out by the real script.
class LayOut : public ::testing::Test {
 protected:
  void SetUp() override {
    std::string pattern = (fs::temp_directory_path() / "lay-out-XXXXXX").string();
    ASSERT_NE(mkdtemp(pattern.data()), nullptr);
    root_ = pattern;
    Made("djtolven", "program 1");
    Made("MyMusic/first dance.mp3", "sound");
    Made("tlv.ndx", "index 1");
  }
  void TearDown() override { fs::remove_all(root_); }

  void Made(const std::string& name, const std::string& content) { Put(root_ / "made" / name, content); }
  void UserPuts(const std::string& name, const std::string& content) { Put(root_ / "user" / name, content); }
  void UserRemoves(const std::string& name) { fs::remove(root_ / "user" / name); }
  void Lay() {
    const std::string command = std::string(DJ_SOURCE_FOLDER "/tools/lay-out '") + (root_ / "made").string() +
                                "' '" + (root_ / "user").string() + "' > /dev/null";
    ASSERT_EQ(std::system(command.c_str()), 0);
  }
  /// What the user's folder holds; "-" where there is no such file.
  std::string Has(const std::string& name) const {
    std::ifstream file(root_ / "user" / name);
    if (!file) return "-";
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
  }

 private:
  static void Put(const fs::path& path, const std::string& content) {
    fs::create_directories(path.parent_path());
    std::ofstream(path) << content;
  }
  fs::path root_;
};

TEST_F(LayOut, BringsNewFilesAndNewVersionsOfUntouchedOnes) {
  Lay();
  EXPECT_EQ(Has("MyMusic/first dance.mp3"), "sound");
  Made("djtolven", "program 2");
  Made("help/introduction.htm", "manual");
  Lay();
  EXPECT_EQ(Has("djtolven"), "program 2");
  EXPECT_EQ(Has("help/introduction.htm"), "manual");
}

TEST_F(LayOut, NeverTouchesWhatTheUserChangedMadeOrDeleted) {
  UserPuts("BankIO16.txt", "the user's own");
  Made("BankIO16.txt", "ours");
  Lay();
  UserPuts("tlv.ndx", "the user's index");
  UserRemoves("MyMusic/first dance.mp3");
  Made("tlv.ndx", "index 2");
  Made("MyMusic/first dance.mp3", "sound 2");
  for (int again = 0; again < 2; ++again) {
    Lay();
    EXPECT_EQ(Has("BankIO16.txt"), "the user's own");
    EXPECT_EQ(Has("tlv.ndx"), "the user's index");
    EXPECT_EQ(Has("MyMusic/first dance.mp3"), "-");
  }
}

}  // namespace
