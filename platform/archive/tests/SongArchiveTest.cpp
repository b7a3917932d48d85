// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/archive/SongArchive.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>

#include "platform/archive/SoundFile.h"
#include "platform/archive/testing/ZipMaker.h"
#include "platform/files/testing/TestFolder.h"

namespace platform::archive {
namespace {

using support::ErrorCode;
using testing::Packing;
using testing::SizeField;
using testing::ToPack;
using testing::WithDamage;
using testing::WithSize;
using testing::ZipBytes;

/// Bytes that hardly get smaller, the same on every run.
std::string Noise(std::size_t count) {
  std::string bytes(count, '\0');
  std::uint32_t state = 1;
  for (char& byte : bytes) byte = static_cast<char>((state = state * 1664525 + 1013904223) >> 24);
  return bytes;
}

class SongArchiveTest : public ::testing::Test {
 protected:
  std::string Put(const std::string& bytes) const {
    folder_.Write("song.zip", bytes);
    return (folder_ / "song.zip").string();
  }
  std::string Sound(const std::string& bytes) const {
    auto opened = OpenSoundFile(Put(bytes));
    EXPECT_TRUE(opened) << opened.Failure().text;
    if (!opened) return {};
    std::string sound(static_cast<std::size_t>(opened.Value().file.size), '\0');
    EXPECT_EQ(std::fread(sound.data(), 1, sound.size(), opened.Value().file.file.get()), sound.size());
    return sound;
  }
  support::Result<std::vector<std::uint8_t>> Picture(const std::string& bytes) const {
    auto archive = SongArchive::Open(std::move(files::OpenPlainFile(Put(bytes))).Value(), "x/song.zip");
    if (!archive) return archive.Failure();
    return archive.Value().UnpackPicture();
  }
  /// The code and the sentence with which an archive's sound is refused.
  std::pair<ErrorCode, std::string> Refusal(const std::string& bytes) const {
    const auto opened = OpenSoundFile(Put(bytes));
    EXPECT_FALSE(opened);
    return opened ? std::pair(ErrorCode::Cancelled, std::string())
                  : std::pair(opened.Failure().code, opened.Failure().text);
  }

  files::testing::TestFolder folder_;
  const std::string sound_ = Noise(300'000), picture_ = std::string(72'000, '\x09');
};

using Refused = std::pair<ErrorCode, std::string>;
const Refused kDamaged{ErrorCode::Malformed,
                       "song.zip cannot be unpacked: it is no zip archive, or damaged."};

TEST_F(SongArchiveTest, SoundAndPictureComeOutAsTheyWentIn) {
  for (const Packing packing : {Packing::Deflated, Packing::Stored}) {
    const std::string zip = ZipBytes({{"a.mp3", sound_, packing}, {"a.cdg", picture_, packing}});
    EXPECT_TRUE(Sound(zip) == sound_);
    const auto picture = Picture(zip);
    ASSERT_TRUE(picture);
    EXPECT_TRUE(std::equal(picture_.begin(), picture_.end(), picture.Value().begin(), picture.Value().end()));
  }
}

TEST_F(SongArchiveTest, TheNameOfTheSoundIsToldInUtf8WhateverCodePageTheArchiveHas) {
  for (const char* name : {"Caf\xC3\xA9.mp3", "Caf\x82.mp3"}) {
    const std::string stem(name, std::string_view(name).size() - 4);
    const auto opened = OpenSoundFile(Put(ZipBytes({{name, "sound"}, {stem + ".cdg", "picture"}})));
    ASSERT_TRUE(opened);
    EXPECT_EQ(opened.Value().name, "Caf\xC3\xA9.mp3");
    EXPECT_TRUE(opened.Value().packed);
  }
}

TEST_F(SongArchiveTest, OfTwoSongsTheFirstByNameIsTaken) {
  EXPECT_EQ(Sound(ZipBytes({{"2.mp3", "two"}, {"2.cdg", "x"}, {"1.cdg", "x"}, {"1.mp3", "one"}})), "one");
}

TEST_F(SongArchiveTest, AFileThatIsNoArchiveIsOpenedAsItIs) {
  EXPECT_EQ(Sound("plain sound under the name of an archive"), "plain sound under the name of an archive");
  EXPECT_EQ(Sound("PK"), "PK");
}

TEST_F(SongArchiveTest, WhatIsNoSongIsRefusedBySentencesThatSayWhy) {
  const std::pair<std::vector<ToPack>, Refused> cases[] = {
      {{}, {ErrorCode::Malformed, "song.zip is no karaoke archive: there is no picture (.cdg) in it."}},
      {{{"a.mp3", "x"}, {"b.txt", "x"}},
       {ErrorCode::Malformed, "song.zip is no karaoke archive: there is no picture (.cdg) in it."}},
      {{{"a.cdg", "x"}, {"b.txt", "x"}},
       {ErrorCode::Malformed, "song.zip is no karaoke archive: there is no sound to the picture in it."}},
      {{{"a.cdg", "x"}, {"d/a.mp3", ""}},
       {ErrorCode::Empty, "song.zip cannot be played: a.mp3 in it is empty (0 bytes)."}},
      {{{"a.cdg", ""}, {"a.mp3", "x"}},
       {ErrorCode::Empty, "song.zip cannot be played: a.cdg in it is empty (0 bytes)."}},
      {{{"a.cdg", "x"}, {"a.mp3", "x", Packing::Locked}},
       {ErrorCode::Unsupported, "song.zip cannot be unpacked: it is locked by a password."}},
      {{{"a.cdg", "x", Packing::Locked}, {"a.mp3", "x"}},
       {ErrorCode::Unsupported, "song.zip cannot be unpacked: it is locked by a password."}},
      {{{"a.cdg", "x"}, {"../a.mp3", "x"}},
       {ErrorCode::Malformed, "song.zip is no karaoke archive: there is no sound to the picture in it."}},
  };
  for (const auto& [members, refused] : cases) {
    const std::string empty = std::string("PK\x05\x06", 4) + std::string(18, '\0');
    EXPECT_EQ(Refusal(members.empty() ? empty : ZipBytes(members)), refused);
  }
}

TEST_F(SongArchiveTest, ABrokenArchiveIsRefusedWhereverItBreaks) {
  const std::string whole = ZipBytes({{"a.mp3", sound_}, {"a.cdg", picture_}});
  for (std::size_t size = 4; size < whole.size(); size += whole.size() / 37) {
    EXPECT_EQ(Refusal(whole.substr(0, size)), kDamaged) << size;
  }
  EXPECT_EQ(Refusal(whole.substr(0, whole.size() - 1)), kDamaged);
  EXPECT_EQ(Refusal(WithDamage(whole, "a.mp3", 150'000)), kDamaged);
}

TEST_F(SongArchiveTest, ADirectoryThatLiesAboutSizesIsNotBelieved) {
  const std::string whole = ZipBytes({{"a.mp3", std::string(4 << 20, '\0')}, {"a.cdg", picture_}});
  for (const std::uint32_t size : {1U, 4096U, (4U << 20) - 1, (4U << 20) + 1, 250U << 20}) {
    EXPECT_EQ(Refusal(WithSize(whole, "a.mp3", SizeField::Unpacked, size)), kDamaged) << size;
  }
  for (const std::uint32_t size : {0U, 10U}) {
    EXPECT_EQ(Refusal(WithSize(whole, "a.mp3", SizeField::Packed, size)), kDamaged) << size;
  }
}

TEST_F(SongArchiveTest, NoMoreIsUnpackedThanWasTold) {
  const std::string whole = ZipBytes({{"a.mp3", std::string(4 << 20, '\0')}, {"a.cdg", picture_}});
  const std::string path = Put(WithSize(whole, "a.mp3", SizeField::Unpacked, 4096));
  // There is room for more than was told, and for less than would come.
  rlimit before{};
  getrlimit(RLIMIT_FSIZE, &before);
  const auto handler = std::signal(SIGXFSZ, SIG_IGN);
  const rlimit little{1 << 20, before.rlim_max};
  setrlimit(RLIMIT_FSIZE, &little);
  const auto opened = OpenSoundFile(path);
  setrlimit(RLIMIT_FSIZE, &before);
  std::signal(SIGXFSZ, handler);
  ASSERT_FALSE(opened);
  EXPECT_EQ(opened.Failure().text, kDamaged.second);
}

TEST_F(SongArchiveTest, WhatWouldBeTooLargeIsNotUnpacked) {
  const std::string whole = ZipBytes({{"a.mp3", sound_}, {"a.cdg", picture_}});
  EXPECT_EQ(
      Refusal(WithSize(whole, "a.mp3", SizeField::Unpacked, kLargestSound + 1)),
      Refused(ErrorCode::Unsupported, "song.zip cannot be played: a.mp3 in it would be larger than 256 MB."));
  const auto picture = Picture(WithSize(whole, "a.cdg", SizeField::Unpacked, kLargestPicture + 1));
  ASSERT_FALSE(picture);
  EXPECT_EQ(picture.Failure().text, "song.zip cannot be played: a.cdg in it would be larger than 64 MB.");
}

}  // namespace
}  // namespace platform::archive
