// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/tags/MixingTagWriter.h"

#include <gtest/gtest.h>
#include <taglib/apetag.h>
#include <taglib/id3v1tag.h>
#include <taglib/mpegfile.h>
#include <taglib/vorbisfile.h>
#include <taglib/wavfile.h>

#include <filesystem>
#include <fstream>

#include "catalogue/testing/TagWriterContract.h"
#include "platform/archive/testing/ZipMaker.h"
#include "platform/codec/testing/MediaMaker.h"
#include "platform/tags/TagLibTagReader.h"
#include "platform/tags/TagWriter.h"

namespace platform::tags {

using catalogue::FileTags;
using codec::testing::MediaMaker;

/// Real files, a folder a test.
template <int kFormat>
struct FilesOfFormat {
  MixingTagWriter& Writer() { return writer; }
  TagLibTagReader& Reader() { return reader; }
  std::string File(const FileTags& tags) {
    const std::string name = "song." + std::string(MediaMaker::kExtensions[kFormat]);
    const std::string path = media.Write(name, codec::testing::Tone(std::chrono::seconds(1)));
    EXPECT_TRUE(WriteTags(path, tags));
    return path;
  }
  std::string Missing() { return media.PathOf("missing.mp3"); }

  MediaMaker media;
  MixingTagWriter writer;
  TagLibTagReader reader;
};

}  // namespace platform::tags

namespace catalogue::testing {

using Formats = ::testing::Types<platform::tags::FilesOfFormat<0>, platform::tags::FilesOfFormat<1>,
                                 platform::tags::FilesOfFormat<2>, platform::tags::FilesOfFormat<3>,
                                 platform::tags::FilesOfFormat<4>, platform::tags::FilesOfFormat<5>>;
INSTANTIATE_TYPED_TEST_SUITE_P(EveryFormat, EveryTagWriter, Formats);

}  // namespace catalogue::testing

namespace platform::tags {
namespace {

static_assert(std::size(MediaMaker::kExtensions) == 6, "a format without a contract");

class MixingTagWriterTest : public ::testing::Test {
 protected:
  std::string Song(std::string_view name) const {
    return media_.Write(name, codec::testing::Tone(std::chrono::seconds(1)));
  }
  static void Put(const std::string& path) {
    const auto written = MixingTagWriter().Write(path, "SMP\r\n2.500", {{"REPLAYGAIN_TRACK_GAIN", "x"}});
    EXPECT_TRUE(written) << written.Failure().text;
  }
  MediaMaker media_;
};

TEST_F(MixingTagWriterTest, TheOtherTagsOfAnMp3Stay) {
  const std::string path = Song("a.mp3");
  {
    TagLib::MPEG::File file(path.c_str());
    file.ID3v1Tag(true)->setTitle("Old title");
    file.APETag(true)->addValue("MP3GAIN_MINMAX", "100,200");
    file.save(TagLib::MPEG::File::ID3v1 | TagLib::MPEG::File::APE, TagLib::File::StripOthers);
  }
  Put(path);
  TagLib::MPEG::File file(path.c_str());
  EXPECT_EQ(file.ID3v1Tag()->title(), "Old title");
  EXPECT_EQ(file.ID3v2Tag()->title(), "Old title") << "not hidden by the new tag";
  EXPECT_EQ(file.APETag()->itemListMap()["MP3GAIN_MINMAX"].toString(), "100,200");
}

TEST_F(MixingTagWriterTest, AnInfoListIsNotHiddenAndFurtherCommentsStay) {
  const std::string wav = Song("a.wav");
  {
    TagLib::RIFF::WAV::File file(wav.c_str());
    file.InfoTag()->setArtist("Info artist");
    file.save(TagLib::RIFF::WAV::File::Info);
  }
  Put(wav);
  EXPECT_EQ(TagLibTagReader().Read(wav).Value().artist, "Info artist");
  const std::string ogg = Song("a.ogg");
  {
    TagLib::Ogg::Vorbis::File file(ogg.c_str());
    file.tag()->addField("COMMENT", "first");
    file.tag()->addField("COMMENT", "second", false);
    file.save();
  }
  Put(ogg);
  TagLib::Ogg::Vorbis::File file(ogg.c_str());
  EXPECT_EQ(file.tag()->fieldListMap()["COMMENT"].toString("|"), "SMP\r\n2.500|second");
}

TEST_F(MixingTagWriterTest, WhatCannotBeWrittenIsLeftToTheByte) {
  const std::string text = media_.Text("notes.txt");
  const std::string broken = media_.Random("broken.mp3", 30'000);
  const std::string zip = media_.WriteBytes(
      "song.zip",
      archive::testing::ZipBytes({{"a.mp3", MediaMaker::BytesOf(Song("a.mp3"))}, {"a.cdg", "x"}}));
  for (const std::string& path : {text, broken, zip}) {
    const std::string bytes = MediaMaker::BytesOf(path);
    EXPECT_FALSE(MixingTagWriter().Write(path, "SMP\r\n1", {})) << path;
    EXPECT_EQ(MediaMaker::BytesOf(path), bytes);
  }
}

TEST_F(MixingTagWriterTest, NothingIsWrittenIntoAnArchiveAndThatIsSaid) {
  const auto written = MixingTagWriter().Write(
      media_.WriteBytes("song.zip", archive::testing::ZipBytes({{"a.txt", "x"}})), "SMP\r\n1", {});
  ASSERT_FALSE(written);
  EXPECT_EQ(written.Failure().text, "song.zip is a zip archive; nothing is written into it.");
}

}  // namespace
}  // namespace platform::tags
