// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/files/LooseDiscImages.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "karaoke/testing/DiscImagesContract.h"
#include "karaoke/testing/FakeDiscImages.h"
#include "platform/files/testing/TestFolder.h"

namespace platform::files {
namespace {

namespace fs = std::filesystem;

std::vector<std::uint8_t> Counted(std::size_t size) {
  std::vector<std::uint8_t> bytes(size);
  for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<std::uint8_t>(i + 1);
  return bytes;
}

class ImagesOnDisk {
 public:
  karaoke::DiscImages& Images() { return images_; }
  [[nodiscard]] std::string Song() const { return (folder_ / "song.mp3").string(); }
  void Put(std::size_t size) const {
    const auto bytes = Counted(std::min<std::size_t>(size, 100));
    folder_.Write("song.cdg", {reinterpret_cast<const char*>(bytes.data()), bytes.size()});
    fs::resize_file(folder_ / "song.cdg", size);  // a hole, so that a long one fills no disk
  }

 private:
  testing::TestFolder folder_;
  LooseDiscImages images_;
};

class ImagesInMemory {
 public:
  karaoke::DiscImages& Images() { return images_; }
  [[nodiscard]] static std::string Song() { return "song.mp3"; }
  void Put(std::size_t size) { images_.beside[Song()] = Counted(size); }

 private:
  karaoke::testing::FakeDiscImages images_;
};

using Finders = ::testing::Types<ImagesOnDisk, ImagesInMemory>;

TEST(LooseDiscImagesTest, LetterCaseCountsNeitherInNameNorInExtension) {
  struct Case {
    std::vector<const char*> files;
    const char* song;
    const char* found;
  };
  const Case cases[] = {
      {{"Song.cdg"}, "Song.mp3", "Song.cdg"},
      {{"Song.CDG"}, "Song.MP3", "Song.CDG"},
      {{"song.Cdg"}, "SONG.mp3", "song.Cdg"},
      {{"SONG.cdg", "Song.cdg", "song.cdg"}, "Song.ogg", "Song.cdg"},
      {{"SONG.Cdg", "song.cdG"}, "Song.ogg", "SONG.Cdg"},
      {{"a.b.cdg", "a.cdg"}, "a.b.mp3", "a.b.cdg"},
      {{".mp3.cdg", ".cdg"}, ".mp3", ".mp3.cdg"},
      {{"caf\xE9.cdg"}, "caf\xE9.mp3", "caf\xE9.cdg"},
      {{"Songs.cdg", "Son.cdg", "Song.cdg.txt"}, "Song.mp3", ""},
  };
  for (const Case& one : cases) {
    const testing::TestFolder folder;
    for (const char* file : one.files) folder.Write(file, file);
    const auto image = LooseDiscImages().Of((folder / one.song).string());
    EXPECT_EQ(image ? std::string(image.Value().begin(), image.Value().end()) : "", one.found) << one.song;
  }
}

TEST(LooseDiscImagesTest, WhatIsNoFileIsNoImage) {
  const testing::TestFolder folder;
  fs::create_directory(folder / "song.cdg");
  mkfifo((folder / "other.CDG").c_str(), 0600);
  for (const char* song : {"song.mp3", "other.mp3", "none/song.mp3"}) {
    const auto image = LooseDiscImages().Of((folder / song).string());
    ASSERT_FALSE(image.Ok()) << song;
    EXPECT_EQ(image.Failure().code, support::ErrorCode::NotFound) << song;
  }
}

}  // namespace
}  // namespace platform::files

namespace karaoke::testing {
INSTANTIATE_TYPED_TEST_SUITE_P(Images, EveryDiscImages, platform::files::Finders);
}  // namespace karaoke::testing
