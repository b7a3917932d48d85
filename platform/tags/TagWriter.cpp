// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/tags/TagWriter.h"

#include <taglib/asffile.h>
#include <taglib/flacfile.h>
#include <taglib/id3v2tag.h>
#include <taglib/mp4file.h>
#include <taglib/mpegfile.h>
#include <taglib/textidentificationframe.h>
#include <taglib/vorbisfile.h>
#include <taglib/wavfile.h>
#include <taglib/xiphcomment.h>

#include <exception>

#include "platform/files/PlainFile.h"
#include "support/Sentences.h"
#include "support/Text.h"

namespace platform::tags {
namespace {

using catalogue::FileTags;

TagLib::String Text(const std::string& bytes) {
  return {bytes, TagLib::String::UTF8};
}

void PutCommon(TagLib::Tag& tag, const FileTags& tags) {
  tag.setArtist(Text(tags.artist));
  tag.setTitle(Text(tags.title));
  tag.setAlbum(Text(tags.album));
  tag.setGenre(Text(tags.genre));
  tag.setYear(static_cast<unsigned>(support::LeadingInteger(tags.year)));
  tag.setComment(Text(tags.text_block));
}

void PutId3v2(TagLib::ID3v2::Tag& tag, const FileTags& tags) {
  using TagLib::ID3v2::UserTextIdentificationFrame;
  PutCommon(tag, tags);
  tag.removeFrames("TBPM");
  if (!tags.bpm.empty()) {
    auto* frame = new TagLib::ID3v2::TextIdentificationFrame("TBPM", TagLib::String::UTF8);
    frame->setText(Text(tags.bpm));
    tag.addFrame(frame);  // the tag owns it
  }
  for (const catalogue::TagItem& item : tags.user_items) {
    if (auto* old = UserTextIdentificationFrame::find(&tag, Text(item.name))) tag.removeFrame(old);
    tag.addFrame(new UserTextIdentificationFrame(Text(item.name), TagLib::StringList(Text(item.value)),
                                                 TagLib::String::UTF8));
  }
}

void PutXiph(TagLib::Ogg::XiphComment& tag, const FileTags& tags) {
  PutCommon(tag, tags);
  tag.removeFields("DESCRIPTION");
  if (!tags.text_block.empty()) tag.addField("COMMENT", Text(tags.text_block), true);
  if (!tags.bpm.empty()) tag.addField("BPM", Text(tags.bpm), true);
  for (const catalogue::TagItem& item : tags.user_items)
    tag.addField(Text(item.name), Text(item.value), true);
}

void PutAsf(TagLib::ASF::Tag& tag, const FileTags& tags) {
  PutCommon(tag, tags);
  if (!tags.bpm.empty()) tag.setAttribute("WM/BeatsPerMinute", TagLib::ASF::Attribute(Text(tags.bpm)));
  for (const catalogue::TagItem& item : tags.user_items) {
    tag.setAttribute(Text(item.name), TagLib::ASF::Attribute(Text(item.value)));
  }
}

void PutMp4(TagLib::MP4::Tag& tag, const FileTags& tags) {
  PutCommon(tag, tags);
  if (const auto bpm = support::LeadingInteger(tags.bpm); bpm > 0) {
    tag.setItem("tmpo", TagLib::MP4::Item(static_cast<int>(bpm)));
  }
  for (const catalogue::TagItem& item : tags.user_items) {
    tag.setItem("----:com.apple.iTunes:" + Text(item.name),
                TagLib::MP4::Item(TagLib::StringList(Text(item.value))));
  }
}

bool WriteByExtension(const std::string& path, const FileTags& tags) {
  const std::string extension = files::ExtensionOf(path);
  const char* name = path.c_str();
  if (extension == "MP3") {
    TagLib::MPEG::File file(name, false);
    if (!file.isValid()) return false;
    PutId3v2(*file.ID3v2Tag(true), tags);
    return file.save(TagLib::MPEG::File::ID3v2);
  }
  if (extension == "OGG") {
    TagLib::Ogg::Vorbis::File file(name, false);
    if (!file.isValid()) return false;
    PutXiph(*file.tag(), tags);
    return file.save();
  }
  if (extension == "FLAC") {
    TagLib::FLAC::File file(name, false);
    if (!file.isValid()) return false;
    PutXiph(*file.xiphComment(true), tags);
    return file.save();
  }
  if (extension == "WMA") {
    TagLib::ASF::File file(name, false);
    if (!file.isValid()) return false;
    PutAsf(*file.tag(), tags);
    return file.save();
  }
  if (extension == "M4A") {
    TagLib::MP4::File file(name, false);
    if (!file.isValid()) return false;
    PutMp4(*file.tag(), tags);
    return file.save();
  }
  TagLib::RIFF::WAV::File file(name, false);
  if (extension != "WAV" || !file.isValid()) return false;
  PutId3v2(*file.ID3v2Tag(), tags);
  return file.save();
}

}  // namespace

support::Result<void> WriteTags(const std::string& path, const FileTags& tags) {
  if (const auto opened = files::OpenPlainFile(path); !opened) return opened.Failure();
  bool written = false;
  try {
    written = WriteByExtension(path, tags);
  } catch (const std::exception&) {
    written = false;
  }
  if (written) return {};
  return support::Failed(support::ErrorCode::Unreadable, support::Sentence::TagNotWritten,
                         {files::LastPart(path)});
}

}  // namespace platform::tags
