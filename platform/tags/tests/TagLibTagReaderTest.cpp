// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/tags/TagLibTagReader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <taglib/asffile.h>
#include <taglib/commentsframe.h>
#include <taglib/id3v1tag.h>
#include <taglib/id3v2tag.h>
#include <taglib/mpegfile.h>
#include <taglib/textidentificationframe.h>
#include <taglib/wavfile.h>

#include "platform/archive/testing/ZipMaker.h"
#include "platform/codec/testing/MediaMaker.h"
#include "platform/tags/TagWriter.h"

namespace platform::tags {
namespace {

using catalogue::FileTags;
using codec::testing::MediaMaker;
using ::testing::AllOf;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::Field;
using ::testing::StartsWith;
using namespace std::chrono_literals;

auto Item(const std::string& name, const std::string& value) {
  return AllOf(Field(&catalogue::TagItem::name, name), Field(&catalogue::TagItem::value, value));
}

FileTags FullTags() {
  FileTags tags;
  tags.artist = "J\xC3\xBCrgen \xE2\x99\xAB";
  tags.title = "Na\xC3\xAFve \xD0\xBC";
  tags.album = "Alb\xC3\xBCm";
  tags.genre = "Eurodance";
  tags.year = "1997";
  tags.bpm = "128";
  tags.text_block = "PEA\r\n-1.50\r\nSMP\r\n0.500";
  tags.user_items = {{"PEA", "-2.25"}, {"EMP", "183.250"}};
  return tags;
}

class TagReaderTest : public ::testing::Test {
 protected:
  std::string Tagged(std::string_view name, const FileTags& tags) const {
    const std::string path = media_.Write(name, codec::testing::Tone(2s));
    const auto written = WriteTags(path, tags);
    EXPECT_TRUE(written) << written.Failure().text;
    return path;
  }
  static FileTags Read(const std::string& path) {
    const auto read = TagLibTagReader().Read(path);
    EXPECT_TRUE(read) << read.Failure().text;
    return read ? read.Value() : FileTags{};
  }
  static std::string Refusal(const std::string& path) {
    const auto read = TagLibTagReader().Read(path);
    EXPECT_FALSE(read);
    return read ? "" : read.Failure().text;
  }
  /// The library writes when its object goes.
  template <typename File, typename Change>
  static void Edit(const std::string& path, Change change) {
    File file(path.c_str());
    change(file);
  }
  /// An mp3 whose ID3v2 tag is made by the function and saved in that version.
  template <typename Make>
  std::string WithId3v2(std::string_view name, TagLib::ID3v2::Version version, Make make) const {
    const std::string path = media_.Write(name, codec::testing::Tone(1s));
    Edit<TagLib::MPEG::File>(path, [&](TagLib::MPEG::File& file) {
      make(*file.ID3v2Tag(true));
      file.save(TagLib::MPEG::File::ID3v2, TagLib::File::StripOthers, version);
    });
    return path;
  }

  MediaMaker media_;
};

class EveryTaggedFormat : public TagReaderTest, public ::testing::WithParamInterface<std::string_view> {
 protected:
  std::string Name(std::string_view stem) const { return std::string(stem) + "." + std::string(GetParam()); }
};

TEST_P(EveryTaggedFormat, TextComesBackAsUtf8Bytes) {
  const FileTags tags = Read(Tagged(Name("full"), FullTags()));
  EXPECT_EQ(tags.artist, FullTags().artist);
  EXPECT_EQ(tags.title, FullTags().title);
  EXPECT_EQ(tags.album, FullTags().album);
  EXPECT_EQ(tags.genre, "Eurodance");
  EXPECT_EQ(tags.year, "1997");
  EXPECT_EQ(tags.bpm, "128");
}

TEST_P(EveryTaggedFormat, MixingTagsComeAsBlockAndAsItems) {
  const FileTags tags = Read(Tagged(Name("mixing"), FullTags()));
  EXPECT_EQ(tags.text_block, FullTags().text_block);
  EXPECT_THAT(tags.user_items, Contains(Item("PEA", "-2.25")));
  EXPECT_THAT(tags.user_items, Contains(Item("EMP", "183.250")));
}

TEST_P(EveryTaggedFormat, LengthAndRatesAreTold) {
  const FileTags tags = Read(media_.Write(Name("plain"), codec::testing::Tone(2s, {}, {48000, 1}), 96'000));
  EXPECT_NEAR(static_cast<double>(tags.duration.count()), 2000, 90);
  EXPECT_EQ(tags.sample_rate, 48000);
  EXPECT_GT(tags.bit_rate, 15);
  EXPECT_LT(tags.bit_rate, 900);
}

TEST_P(EveryTaggedFormat, AFileWithoutATagGivesEmptyText) {
  const FileTags tags = Read(media_.Write(Name("bare"), codec::testing::Tone(1s)));
  EXPECT_EQ(tags.artist + tags.title + tags.album + tags.genre + tags.year + tags.bpm + tags.text_block, "");
}

TEST_P(EveryTaggedFormat, BrokenFilesAreRefusedBySentencesThatNameThem) {
  const std::string whole = Tagged(Name("whole"), FullTags());
  const std::string name = Name("broken");
  for (const std::string& path : {media_.Empty(name), media_.Random(name, 30'000), media_.Text(name),
                                  media_.FirstBytes(whole, name, 30)}) {
    EXPECT_THAT(Refusal(path), StartsWith(name));
  }
}

TEST_P(EveryTaggedFormat, EveryCutEndsCleanly) {
  const std::string whole = MediaMaker::BytesOf(Tagged(Name("whole"), FullTags()));
  for (std::size_t size = 0; size < whole.size(); size += size < 4000 ? 13 : 997) {
    if (const auto read = ReadTags(std::string_view(whole).substr(0, size), "cut.x")) {
      EXPECT_GT(read.Value().sample_rate, 0);
    }
  }
}

TEST_P(EveryTaggedFormat, ContentCountsAndNotTheName) {
  const std::string path = media_.Renamed(Tagged(Name("true"), FullTags()), Name("false") + ".jpg");
  EXPECT_EQ(Read(path).title, FullTags().title);
}

TEST_P(EveryTaggedFormat, MemoryAndFileTellTheSame) {
  const std::string path = Tagged(Name("both"), FullTags());
  const auto in_memory = ReadTags(MediaMaker::BytesOf(path), path);
  ASSERT_TRUE(in_memory);
  EXPECT_EQ(in_memory.Value().title, Read(path).title);
  EXPECT_EQ(in_memory.Value().duration, Read(path).duration);
}

TEST_P(EveryTaggedFormat, AnArchiveAndTheLooseFileTellTheSame) {
  const std::string name = Name("packed");
  const std::string loose = Tagged(name, FullTags());
  const std::string zip = media_.WriteBytes(
      "song.zip",
      archive::testing::ZipBytes({{name, MediaMaker::BytesOf(loose)}, {"packed.cdg", "picture"}}));
  const FileTags packed = Read(zip), tags = Read(loose);
  EXPECT_EQ(packed.artist + packed.title + packed.genre, tags.artist + tags.title + tags.genre);
  EXPECT_EQ(packed.duration, tags.duration);
  EXPECT_EQ(packed.bit_rate, tags.bit_rate);
}

INSTANTIATE_TEST_SUITE_P(, EveryTaggedFormat, ::testing::ValuesIn(MediaMaker::kExtensions),
                         [](const auto& test) { return std::string(test.param); });

TEST_F(TagReaderTest, AnId3v1TagIsRead) {
  const std::string path = media_.Write("old.mp3", codec::testing::Tone(1s));
  Edit<TagLib::MPEG::File>(path, [](TagLib::MPEG::File& file) {
    file.ID3v1Tag(true)->setTitle("Old title");
    file.ID3v1Tag()->setGenre("Disco");
    file.ID3v1Tag()->setYear(1979);
    file.save(TagLib::MPEG::File::ID3v1, TagLib::File::StripOthers);
  });
  const FileTags tags = Read(path);
  EXPECT_EQ(tags.title, "Old title");
  EXPECT_EQ(tags.genre, "Disco");
  EXPECT_EQ(tags.year, "1979");
}

TEST_F(TagReaderTest, BothId3v2VersionsGiveTheirUserTexts) {
  for (const auto version : {TagLib::ID3v2::v3, TagLib::ID3v2::v4}) {
    const std::string path = WithId3v2("v.mp3", version, [](TagLib::ID3v2::Tag& tag) {
      tag.addFrame(new TagLib::ID3v2::UserTextIdentificationFrame(
          "SMP", TagLib::StringList(TagLib::String("1.250")), TagLib::String::UTF16));
      tag.setTitle(TagLib::String("\xC3\xA9t\xC3\xA9", TagLib::String::UTF8));
    });
    EXPECT_THAT(Read(path).user_items, ElementsAre(Item("SMP", "1.250")));
    EXPECT_EQ(Read(path).title, "\xC3\xA9t\xC3\xA9");
  }
}

TEST_F(TagReaderTest, TheCommentWithoutADescriptionIsTheTextBlock) {
  const std::string path = WithId3v2("comments.mp3", TagLib::ID3v2::v4, [](TagLib::ID3v2::Tag& tag) {
    auto* other = new TagLib::ID3v2::CommentsFrame;
    other->setDescription("iTunNORM");
    other->setText("00001234");
    tag.addFrame(other);
    auto* block = new TagLib::ID3v2::CommentsFrame;
    block->setText("BPM\r\n120");
    tag.addFrame(block);
  });
  EXPECT_EQ(Read(path).text_block, "BPM\r\n120");
}

TEST_F(TagReaderTest, ALatinTagComesOutAsUtf8) {
  const std::string path = WithId3v2("latin.mp3", TagLib::ID3v2::v3, [](TagLib::ID3v2::Tag& tag) {
    tag.setArtist(TagLib::String("Ren\xE9", TagLib::String::Latin1));
  });
  EXPECT_EQ(Read(path).artist, "Ren\xC3\xA9");
}

TEST_F(TagReaderTest, AWavWithAnInfoListIsRead) {
  const std::string path = media_.Write("info.wav", codec::testing::Tone(1s));
  Edit<TagLib::RIFF::WAV::File>(path, [](TagLib::RIFF::WAV::File& file) {
    file.InfoTag()->setArtist("Info artist");
    file.InfoTag()->setComment("SMP\r\n2");
    file.save(TagLib::RIFF::WAV::File::Info);
  });
  EXPECT_EQ(Read(path).artist, "Info artist");
  EXPECT_EQ(Read(path).text_block, "SMP\r\n2");
}

TEST_F(TagReaderTest, AnAsfNumberIsANumberInText) {
  const std::string path = media_.Write("number.wma", codec::testing::Tone(1s));
  Edit<TagLib::ASF::File>(path, [](TagLib::ASF::File& file) {
    file.tag()->setAttribute("WM/BeatsPerMinute", TagLib::ASF::Attribute(124U));
    file.save();
  });
  EXPECT_EQ(Read(path).bpm, "124");
}

TEST_F(TagReaderTest, AnMp3OfVariableBitRateWithoutALengthHeaderIsCounted) {
  std::string both;
  for (const int bit_rate : {64'000, 320'000}) {
    std::string bytes =
        MediaMaker::BytesOf(media_.Write("part.mp3", codec::testing::Noise(4s, 0.3), bit_rate));
    for (const char* mark : {"Info", "Xing"}) {
      if (const std::size_t at = bytes.find(mark); at != std::string::npos) bytes.replace(at, 4, "none");
    }
    both += bytes.substr(both.empty() ? 0 : bytes.find("\xFF\xFB"));  // the second without its tag
  }
  const FileTags tags = Read(media_.WriteBytes("variable.mp3", both));
  EXPECT_NEAR(static_cast<double>(tags.duration.count()), 8000, 200);
  EXPECT_NEAR(tags.bit_rate, 192, 8);
}

TEST_F(TagReaderTest, ATagThatClaimsMoreThanTheFileIsSurvived) {
  const std::string mp3 = MediaMaker::BytesOf(media_.Write("small.mp3", codec::testing::Tone(1s)));
  const std::string huge = std::string("ID3\x04\x00\x00\x7F\x7F\x7F\x7F", 10) + "TXXX\x7F\x7F\x7F\x7F" + mp3;
  EXPECT_THAT(Refusal(media_.WriteBytes("huge.mp3", huge)), StartsWith("huge.mp3"));
}

TEST_F(TagReaderTest, AnAsfListThatClaimsMoreEntriesThanItCanHoldIsRefused) {
  std::string bytes = MediaMaker::BytesOf(Tagged("list.wma", FullTags()));
  const std::size_t list = bytes.find("\x40\xA4\xD0\xD2");  // the extended content description
  ASSERT_NE(list, std::string::npos);
  bytes.replace(list + 24, 2, "\xFF\xFF");
  EXPECT_THAT(Refusal(media_.WriteBytes("long-list.wma", bytes)), StartsWith("long-list.wma"));
}

TEST_F(TagReaderTest, AnArchiveWithoutReadableSoundIsSaidSo) {
  const std::string zip = archive::testing::ZipBytes({{"a.ogg", "text"}, {"a.cdg", "picture"}});
  EXPECT_EQ(Refusal(media_.WriteBytes("song.zip", zip)),
            "song.zip is no audio file that can be read, or it is damaged.");
}

TEST_F(TagReaderTest, WhatIsNotThereIsSaidSo) {
  EXPECT_EQ(Refusal(media_.PathOf("gone.mp3")), "gone.mp3 was not found; it may have been moved or deleted.");
  EXPECT_EQ(Refusal(media_.Text("notes.txt")),
            "notes.txt is no audio file that can be read, or it is damaged.");
}

}  // namespace
}  // namespace platform::tags
