// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/FolderScan.h"

#include <gtest/gtest.h>
#include <filesystem>

#include <filesystem>
#include <fstream>

#include "catalogue/PlainFolders.h"

namespace catalogue {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

class FolderScanTest : public ::testing::Test {
 protected:
  FolderScanTest() { fs::remove_all(root_); }
  ~FolderScanTest() override { fs::remove_all(root_); }

  void Write(const std::string& name) {
    fs::create_directories((root_ / name).parent_path());
    std::ofstream(root_ / name) << "12345";
  }
  Names List(std::string_view mask) { return ListIn(root_, mask); }
  Names ListIn(const fs::path& folder, std::string_view mask) {
    Names names;
    bytes_ = 0;
    PlainFolders folders;
    FolderWalk walk(folders, folder.string(), ScanMode::Music);
    while (walk.Now() == FolderWalk::State::Going) {
      auto listed = walk.Step();
      if (listed) folders.Look(listed->path, listed->files);
      for (const ListedFile& file : listed ? listed->files : std::vector<ListedFile>()) {
        if (MasksOf(ScanMode::Music)[*MaskOf(ScanMode::Music, file.name)] != mask) continue;
        bytes_ += file.stamp.size;
        names.push_back(fs::relative(PathIn(listed->path, file.name), folder).generic_string());
      }
    }
    state_ = walk.Now();
    return names;
  }

  fs::path root_ = fs::path(::testing::TempDir()) / "folder-scan";
  std::int64_t bytes_ = 0;
  FolderWalk::State state_ = FolderWalk::State::Going;
};

TEST_F(FolderScanTest, DeeperFoldersComeBeforeTheFolderTheyAreIn) {
  for (const char* name : {"X.mp3", "a/x.mp3", "a/B/Y.mp3", "c/z.mp3"}) Write(name);
  EXPECT_EQ(List("*.mp3"), (Names{"a/B/Y.mp3", "a/x.mp3", "c/z.mp3", "X.mp3"}));
  EXPECT_EQ(bytes_, 20);
}

TEST_F(FolderScanTest, FilesOfAFolderAreInByteOrderWhateverTheCaseOfTheirExtension) {
  for (const char* name : {"b.MP3", "a.mp3", "C.Mp3", "d.ogg", "mp3", ".mp3"}) Write(name);
  EXPECT_EQ(List("*.mp3"), (Names{"C.Mp3", "a.mp3", "b.MP3"}));
}

#ifndef _WIN32  // links need an administrator there
TEST_F(FolderScanTest, ATreeThatLeadsBackIntoItselfEnds) {
  Write("a/x.mp3");
  fs::create_directory_symlink(root_, root_ / "a" / "back");
  EXPECT_EQ(List("*.mp3"), Names{"a/x.mp3"});
}
#endif

TEST_F(FolderScanTest, AMissingFolderIsEmpty) {
  EXPECT_EQ(List("*.mp3"), Names{});
  EXPECT_EQ(state_, FolderWalk::State::RootMissing);
}

TEST(ExcludedFolders, AreToldByTheirExactPathOnDriveC) {
  const struct {
    const char* folder;
    bool listed;
    bool entered;
  } cases[] = {{"C:\\System Volume Information", false, true},
               {"C:\\Recycler", true, false},
               {"D:\\System Volume Information", true, true},
               {"D:\\Recycler", true, true},
               {"c:\\Recycler", true, true},
               {"C:\\RECYCLER", true, true},
               {"C:\\system volume information", true, true},
               {"C:\\System Volume Information\\a", true, true},
               {"C:\\Recycler\\", true, true},
               {"", true, true}};
  for (const auto& one : cases) {
    EXPECT_EQ(IsListed(one.folder), one.listed) << one.folder;
    EXPECT_EQ(IsEntered(one.folder), one.entered) << one.folder;
  }
}

#ifndef _WIN32  // where such names are real drives, which a test leaves alone
TEST_F(FolderScanTest, TheSystemsFoldersOfDriveCAreLeftOutByTheirExactPath) {
  fs::create_directories(root_);
  const fs::path before = fs::current_path();
  fs::current_path(root_);
  Write("C:\\System Volume Information/x.mp3");
  Write("D:\\System Volume Information/x.mp3");
  const auto files = [this](const char* folder) { return ListIn(folder, "*.mp3"); };
  EXPECT_TRUE(files("C:\\System Volume Information").empty());
  EXPECT_EQ(files("D:\\System Volume Information").size(), 1U);
  fs::current_path(before);
}
#endif

TEST_F(FolderScanTest, MusicAndKaraokeHaveTheirMasksInOrder) {
  const auto masks = [](ScanMode mode) { return Names(MasksOf(mode).begin(), MasksOf(mode).end()); };
  EXPECT_EQ(masks(ScanMode::Music), (Names{"*.mp3", "*.ogg", "*.flac", "*.wma"}));
  EXPECT_EQ(masks(ScanMode::Karaoke), (Names{"*.mp3", "*.kar", "*.mid", "*.zip"}));
}

}  // namespace
}  // namespace catalogue
