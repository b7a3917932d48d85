// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/sidestore/SqliteSideStore.h"

#include <gtest/gtest.h>

#include <fstream>
#include <optional>

#include "catalogue/testing/SideStoreContract.h"

namespace platform::sidestore {
namespace {

using catalogue::SidePart;

/// A store in a folder of its own.
class Shelf {
 public:
  Shelf() {
    std::filesystem::remove_all(folder_);
    std::filesystem::create_directories(folder_);
    Reopen();
  }
  ~Shelf() {
    store_.reset();
    std::filesystem::permissions(folder_, std::filesystem::perms::owner_all);
    std::filesystem::remove_all(folder_);
  }
  Shelf(const Shelf&) = delete;
  Shelf& operator=(const Shelf&) = delete;

  catalogue::SideStore& Store() { return *store_; }
  void Reopen() {
    store_.reset();
    store_.emplace(File());
  }
  void Close() { store_.reset(); }
  [[nodiscard]] std::filesystem::path File() const { return folder_ / "tlv.side"; }
  [[nodiscard]] std::filesystem::path Folder() const { return folder_; }

 private:
  std::filesystem::path folder_ =
      std::filesystem::path(::testing::TempDir()) /
      ("shelf-" + std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()));
  std::optional<SqliteSideStore> store_;
};

class SideStoreFile : public ::testing::Test {
 protected:
  std::string Read(const std::string& path) {
    return shelf_.Store().Read(path, {1, 2}, SidePart::Wave).value_or("(nothing)");
  }
  bool Write(const std::string& path, const std::string& bytes) {
    return shelf_.Store().Write(path, {1, 2}, SidePart::Wave, bytes).Ok();
  }
  Shelf shelf_;
};

TEST_F(SideStoreFile, IsThereTheNextTime) {
  EXPECT_TRUE(Write("a", "wave"));
  shelf_.Reopen();
  EXPECT_EQ(Read("a"), "wave");
}

TEST_F(SideStoreFile, AFileThatIsNoStoreIsSetAsideAndANewOneBegun) {
  for (const char* rubbish : {"this is no database, but quite a long text", "SQLite format 3"}) {
    shelf_.Close();
    std::filesystem::remove(shelf_.File());
    std::ofstream(shelf_.File()) << rubbish << std::string(5000, 'x');
    shelf_.Reopen();
    EXPECT_EQ(Read("a"), "(nothing)");
    EXPECT_TRUE(Write("a", "wave"));
    EXPECT_EQ(Read("a"), "wave");
  }
  EXPECT_TRUE(std::filesystem::exists(shelf_.Folder() / "tlv.side.damaged-1"));
  EXPECT_TRUE(std::filesystem::exists(shelf_.Folder() / "tlv.side.damaged-2"));
}

TEST_F(SideStoreFile, WhereverItIsDamagedNothingWrongComesBack) {
  const std::string wave(20'000, 'w');
  for (int i = 0; i < 10; ++i) EXPECT_TRUE(Write(std::to_string(i), wave));
  shelf_.Close();
  const auto sound = shelf_.Folder() / "sound";
  std::filesystem::copy_file(shelf_.File(), sound);
  const auto size = static_cast<std::int64_t>(std::filesystem::file_size(sound));
  for (std::int64_t at = 0; at < size; at += 1777) {
    shelf_.Close();
    std::filesystem::copy_file(sound, shelf_.File(), std::filesystem::copy_options::overwrite_existing);
    std::fstream file(shelf_.File(), std::ios::binary | std::ios::in | std::ios::out);
    file.seekp(at) << "damage";
    file.close();
    shelf_.Reopen();
    for (int i = 0; i < 10; ++i) {
      const std::string found = Read(std::to_string(i));
      EXPECT_TRUE(found == wave || found == "(nothing)") << at;
    }
    EXPECT_TRUE(Write("new", "wave")) << at;
    EXPECT_EQ(Read("new"), "wave") << at;
  }
}

TEST_F(SideStoreFile, WhereNothingCanBeWrittenItSaysSo) {
  shelf_.Close();
  SqliteSideStore nowhere(shelf_.Folder() / "no" / "such" / "folder" / "tlv.side");
  EXPECT_FALSE(nowhere.Read("a", {1, 2}, SidePart::Wave));
  const auto written = nowhere.Write("a", {1, 2}, SidePart::Wave, "wave");
  ASSERT_FALSE(written.Ok());
  EXPECT_NE(written.Failure().text.find("tlv.side"), std::string::npos);
}

TEST_F(SideStoreFile, AStampTellsTheSizeAndTheTimeOfAFile) {
  const std::string song = (shelf_.Folder() / "song").string();
  EXPECT_FALSE(shelf_.Store().StampOf(song));
  std::ofstream(song) << "four";
  const auto before = shelf_.Store().StampOf(song);
  ASSERT_TRUE(before);
  EXPECT_EQ(before->size, 4);
  std::filesystem::last_write_time(song, std::filesystem::file_time_type() + std::chrono::hours(1));
  EXPECT_NE(shelf_.Store().StampOf(song), before);
}

}  // namespace
}  // namespace platform::sidestore

namespace catalogue::testing {
namespace {

INSTANTIATE_TYPED_TEST_SUITE_P(Sqlite, EverySideStore, platform::sidestore::Shelf);

}  // namespace
}  // namespace catalogue::testing
