// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/archive/PackedDiscImages.h"

#include <gtest/gtest.h>

#include "karaoke/testing/DiscImagesContract.h"
#include "karaoke/testing/FakeDiscImages.h"
#include "platform/archive/testing/ZipMaker.h"
#include "platform/files/testing/TestFolder.h"

namespace platform::archive {
namespace {

using testing::Packing;

class ImagesInArchives {
 public:
  ImagesInArchives() { Pack({{"song.mp3", "sound"}}); }
  karaoke::DiscImages& Images() { return images_; }
  [[nodiscard]] std::string Song() const { return (folder_ / "song.zip").string(); }
  void Put(std::size_t size) const {
    std::string picture(size, '\0');
    for (std::size_t i = 0; i < size; ++i) picture[i] = static_cast<char>(i + 1);
    Pack({{"song.mp3", "sound"}, {"song.cdg", std::move(picture), Packing::Stored}});
  }

 private:
  void Pack(const std::vector<testing::ToPack>& members) const {
    folder_.Write("song.zip", testing::ZipBytes(members));
  }

  files::testing::TestFolder folder_;
  karaoke::testing::FakeDiscImages loose_;
  PackedDiscImages images_{loose_};
};

TEST(PackedDiscImagesTest, AnyOtherFilesImageIsLookedForBesideIt) {
  const files::testing::TestFolder folder;
  folder.Write("song.mp3", "sound");
  karaoke::testing::FakeDiscImages loose;
  for (const char* name : {"song.mp3", "gone.mp3"}) {
    const std::string song = (folder / name).string();
    loose.beside[song] = {7};
    EXPECT_TRUE(PackedDiscImages(loose).Of(song).Ok()) << name;
  }
}

}  // namespace
}  // namespace platform::archive

namespace karaoke::testing {
INSTANTIATE_TYPED_TEST_SUITE_P(Packed, EveryDiscImages, platform::archive::ImagesInArchives);
}  // namespace karaoke::testing
