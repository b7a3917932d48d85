// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/tags/TagFileEditor.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <taglib/aifffile.h>
#include <taglib/apetag.h>
#include <taglib/attachedpictureframe.h>
#include <taglib/id3v1tag.h>
#include <taglib/id3v2tag.h>
#include <taglib/mpegfile.h>
#include <taglib/unknownframe.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <filesystem>

#include "platform/codec/testing/MediaMaker.h"
#include "platform/files/testing/FaultyDisk.h"
#include "platform/tags/MixingTagWriter.h"
#include "platform/tags/TagLibTagReader.h"

namespace platform::tags {
namespace {

using catalogue::TagEdit;
using catalogue::TagField;
using catalogue::TagSheet;
using catalogue::TagUndo;
using codec::testing::MediaMaker;

/// What begins and ends like one; nobody here looks inside.
const std::string kJpeg =
    std::string("\xFF\xD8\xFF\xE0 a red square \0 ", 20) + std::string(3000, 'r') + "\xFF\xD9";
const std::string kPng =
    std::string("\x89PNG\r\n\x1A\n") + "pixels" + std::string("\0\0\0\0IEND\xAE\x42\x60\x82", 12);

class TagFileEditorTest : public ::testing::Test {
 protected:
  std::string Song(std::string_view name) const {
    return media_.Write(name, codec::testing::Tone(std::chrono::seconds(1)));
  }
  static TagSheet Read(const std::string& path) {
    const auto read = TagFileEditor().Read(path);
    EXPECT_TRUE(read) << read.Failure().text;
    return read ? read.Value() : TagSheet{};
  }
  static TagUndo Write(const std::string& path, const TagEdit& edit) {
    auto written = TagFileEditor().Write(path, edit);
    EXPECT_TRUE(written) << path << ": " << written.Failure().text;
    return written ? written.Value() : TagUndo{};
  }
  static std::string Why(const std::string& path, const TagEdit& edit) {
    const auto written = TagFileEditor().Write(path, edit);
    return written ? "" : written.Failure().text;
  }
  static TagEdit Edit(TagField field, const std::string& text) {
    TagEdit edit;
    edit[field] = text;
    return edit;
  }
  static TagEdit AllFields() {
    TagEdit edit;
    edit[TagField::Artist] = "J\xC3\xBCrgen";
    edit[TagField::Title] = "\xE6\x84\x9B";
    edit[TagField::Album] = "Album";
    edit[TagField::Genre] = "Levenslied";
    edit[TagField::Year] = "1999";
    edit[TagField::Track] = "3/12";
    edit[TagField::Comment] = "two\nlines";
    edit[TagField::Key] = "8A";
    edit[TagField::Bpm] = "128";
    edit.cover = catalogue::TagPicture{"", kJpeg};
    return edit;
  }
  /// What another program sees in the file.
  static std::string Seen(const std::string& path) {
    const std::string call = "mutagen-inspect '" + path + "' 2>&1";
    std::FILE* pipe = popen(call.c_str(), "r");
    std::string seen;
    std::array<char, 4096> block;
    while (const std::size_t size = std::fread(block.data(), 1, block.size(), pipe))
      seen.append(block.data(), size);
    pclose(pipe);
    return seen;
  }
  MediaMaker media_;
};

TEST_F(TagFileEditorTest, EveryFieldIsReadBackInEveryFormatByUsAndByAnotherProgram) {
  for (const char* name : {"a.mp3", "a.ogg", "a.opus", "a.flac", "a.wma", "a.wav", "a.m4a"}) {
    SCOPED_TRACE(name);
    const std::string path = Song(name);
    const TagEdit edit = AllFields();
    Write(path, edit);
    const TagSheet is = Read(path);
    for (std::size_t i = 0; i < catalogue::kTagFields; ++i) EXPECT_EQ(is.fields[i], *edit.fields[i]) << i;
    EXPECT_EQ(is.cover.bytes, kJpeg);
    EXPECT_EQ(is.cover.mime, "image/jpeg");
    const std::string seen = Seen(path);
    for (const char* text : {"J\xC3\xBCrgen", "\xE6\x84\x9B", "Album", "Levenslied", "1999", "8A", "128"})
      EXPECT_NE(seen.find(text), std::string::npos) << text << " in " << seen.substr(0, 2000);
  }
}

TEST_F(TagFileEditorTest, TakingAWriteBackGivesTheSameBytesAlsoWhenItWasTheFirst) {
  for (const char* name : {"a.mp3", "a.ogg", "a.opus", "a.flac", "a.wma", "a.wav", "a.m4a"}) {
    SCOPED_TRACE(name);
    const std::string path = Song(name);
    const std::string empty = MediaMaker::BytesOf(path);
    const TagUndo first = Write(path, AllFields());
    const std::string full = MediaMaker::BytesOf(path);
    const TagUndo second = Write(path, Edit(TagField::Title, "Another"));
    EXPECT_EQ(Read(path)[TagField::Artist], "J\xC3\xBCrgen") << "not touched";
    ASSERT_TRUE(TagFileEditor().Undo(path, second));
    EXPECT_TRUE(MediaMaker::BytesOf(path) == full);
    ASSERT_TRUE(TagFileEditor().Undo(path, first));
    EXPECT_TRUE(MediaMaker::BytesOf(path) == empty);
  }
}

TEST_F(TagFileEditorTest, WhatWasWrittenSinceStaysWhenAFieldIsTakenBack) {
  const std::string path = Song("a.mp3");
  const TagUndo undo = Write(path, Edit(TagField::Title, "New"));
  ASSERT_TRUE(MixingTagWriter().Write(path, "mine\r\nSMP\r\n1.000", {}));
  ASSERT_TRUE(TagFileEditor().Undo(path, undo));
  EXPECT_EQ(Read(path)[TagField::Title], "");
  EXPECT_EQ(TagLibTagReader().Read(path).Value().text_block, "mine\r\nSMP\r\n1.000");
}

TEST_F(TagFileEditorTest, UnknownFramesAndOtherPicturesStayToTheByte) {
  const std::string path = Song("a.mp3");
  const TagLib::ByteVector odd("XQQQ\0\0\0\7\0\0\1\xFFodd\0z", 17);
  {
    TagLib::MPEG::File file(path.c_str());
    auto* back = new TagLib::ID3v2::AttachedPictureFrame;
    back->setType(TagLib::ID3v2::AttachedPictureFrame::BackCover);
    back->setMimeType("image/png");
    back->setPicture(TagLib::ByteVector(kPng.data(), static_cast<unsigned>(kPng.size())));
    file.ID3v2Tag(true)->addFrame(back);
    auto* front = new TagLib::ID3v2::AttachedPictureFrame;
    front->setType(TagLib::ID3v2::AttachedPictureFrame::FrontCover);
    front->setPicture("front");
    file.ID3v2Tag()->addFrame(front);
    file.ID3v2Tag()->addFrame(new TagLib::ID3v2::UnknownFrame(odd));
    file.save();
  }
  TagEdit edit = AllFields();
  Write(path, edit);
  const std::string bytes = MediaMaker::BytesOf(path);
  EXPECT_NE(bytes.find(std::string("XQQQ\0\0\0\7\0\0\1\xFFodd\0z", 17)), std::string::npos);
  EXPECT_NE(bytes.find(kPng), std::string::npos);
  EXPECT_EQ(Read(path).cover.bytes, kJpeg) << "the front cover is the one that is replaced";
  edit = {};
  edit.cover = catalogue::TagPicture{};
  Write(path, edit);
  EXPECT_EQ(Read(path).cover.bytes, kPng) << "the next one";
}

TEST_F(TagFileEditorTest, OlderTagsGoOnInTheNewOneAndSayTheSame) {
  const std::string path = Song("a.mp3");
  {
    TagLib::MPEG::File file(path.c_str());
    file.ID3v1Tag(true)->setTitle("Old title");
    file.ID3v1Tag()->setArtist("Old artist");
    file.APETag(true)->addValue("MP3GAIN_MINMAX", "100,200");
    file.save(TagLib::MPEG::File::ID3v1 | TagLib::MPEG::File::APE, TagLib::File::StripOthers);
  }
  Write(path, Edit(TagField::Title, "New title"));
  EXPECT_EQ(Read(path)[TagField::Artist], "Old artist");
  TagLib::MPEG::File file(path.c_str());
  EXPECT_EQ(file.ID3v1Tag()->title(), "New title");
  EXPECT_EQ(file.APETag()->title(), "New title");
  EXPECT_EQ(file.ID3v2Tag()->artist(), "Old artist");
  EXPECT_EQ(file.APETag()->itemListMap()["MP3GAIN_MINMAX"].toString(), "100,200");
}

TEST_F(TagFileEditorTest, AnAiffFileIsEditedToo) {
  std::string sound = std::string("COMM\0\0\0\x12\0\1\0\0\x56\x22\0\x10\x40\x0E\xAC\x44\0\0\0\0\0\0", 26) +
                      std::string("SSND\0\0\xAC\x4C\0\0\0\0\0\0\0\0", 16) + std::string(44100, '\1');
  std::string file("FORM\0\0\0\0AIFF", 12);
  for (int i = 0; i < 4; ++i)
    file[static_cast<std::size_t>(4 + i)] = static_cast<char>((sound.size() + 4) >> (24 - 8 * i));
  const std::string path = media_.WriteBytes("a.aiff", file + sound);
  Write(path, AllFields());
  EXPECT_EQ(Read(path)[TagField::Key], "8A");
  EXPECT_NE(Seen(path).find("J\xC3\xBCrgen"), std::string::npos);
}

TEST_F(TagFileEditorTest, ATagOfTenMegabytesIsWrittenAndAPictureThatIsNoneIsRefused) {
  const std::string path = Song("a.mp3");
  TagEdit edit;
  edit.cover = catalogue::TagPicture{"image/jpeg", kJpeg + std::string(10 << 20, 'x') + "\xFF\xD9"};
  const TagUndo undo = Write(path, edit);
  EXPECT_EQ(Read(path).cover.bytes.size(), edit.cover->bytes.size());
  EXPECT_LT(undo.Weight(), 100'000U);
  const std::string full = MediaMaker::BytesOf(path);
  for (const std::string& none :
       {std::string("GIF89a"), std::string("\xFF\xD8\xFF cut"), kPng.substr(0, 10)}) {
    edit.cover = catalogue::TagPicture{"image/jpeg", none};
    EXPECT_NE(Why(path, edit), "");
  }
  EXPECT_TRUE(MediaMaker::BytesOf(path) == full);
}

TEST_F(TagFileEditorTest, EachFileThatCannotBeWrittenHasASentenceAndStaysToTheByte) {
  const std::string song = Song("a.mp3");
  const std::string bytes = MediaMaker::BytesOf(song);
  const TagEdit edit = Edit(TagField::Title, "New");
  EXPECT_NE(Why(media_.PathOf("gone.mp3"), edit), "");
  EXPECT_NE(Why(media_.Random("noise.mp3", 5000), edit), "");
  EXPECT_NE(Why(media_.Text("notes.txt"), edit), "");
  const int reasons[] = {ENOSPC, EROFS, EIO};
  for (const int reason : reasons) {
    for (int call = 1; call <= 6; ++call) {
      files::testing::FaultyDisk disk(1000);
      disk.FailFrom(call, reason);
      const auto written = TagFileEditor(disk).Write(song, edit);
      if (written) continue;  // a folder that cannot be flushed
      EXPECT_NE(written.Failure().text.find("a.mp3"), std::string::npos);
      EXPECT_TRUE(MediaMaker::BytesOf(song) == bytes);
    }
  }
}

TEST_F(TagFileEditorTest, ARenameIsNeverOverAnotherFileAndLetterCaseCounts) {
  const std::string a = Song("a.mp3"), b = Song("b.mp3"), upper = media_.PathOf("A.MP3");
  const std::string bytes = MediaMaker::BytesOf(b);
  const auto refused = TagFileEditor().Rename(a, b);
  ASSERT_FALSE(refused);
  EXPECT_EQ(refused.Failure().text, "There is a file called b.mp3 already.");
  EXPECT_TRUE(MediaMaker::BytesOf(b) == bytes);
  EXPECT_TRUE(TagFileEditor().Rename(a, upper));
  EXPECT_TRUE(std::filesystem::exists(upper));
  EXPECT_FALSE(TagFileEditor().Rename(a, media_.PathOf("c.mp3"))) << "it is not there any more";
}

}  // namespace
}  // namespace platform::tags
