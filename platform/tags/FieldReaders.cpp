// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/tags/FieldReaders.h"

#include <taglib/apetag.h>
#include <taglib/asffile.h>
#include <taglib/commentsframe.h>
#include <taglib/fileref.h>
#include <taglib/flacfile.h>
#include <taglib/id3v2framefactory.h>
#include <taglib/id3v2tag.h>
#include <taglib/infotag.h>
#include <taglib/mp4file.h>
#include <taglib/mpegfile.h>
#include <taglib/oggflacfile.h>
#include <taglib/opusfile.h>
#include <taglib/speexfile.h>
#include <taglib/textidentificationframe.h>
#include <taglib/vorbisfile.h>
#include <taglib/wavfile.h>
#include <taglib/xingheader.h>
#include <taglib/xiphcomment.h>

#include <algorithm>
#include <string>

#include "platform/tags/AsfHeader.h"
#include "platform/tags/MpegLength.h"

namespace platform::tags {
namespace {

using catalogue::FileTags;

std::string Bytes(const TagLib::String& text) {
  return text.to8Bit(true);
}

void AddItem(FileTags& tags, const TagLib::String& name, const TagLib::String& value) {
  tags.user_items.push_back({Bytes(name), Bytes(value)});
}

void TakeCommon(const TagLib::Tag* tag, FileTags& tags) {
  if (tag == nullptr) return;
  tags.artist = Bytes(tag->artist());
  tags.title = Bytes(tag->title());
  tags.album = Bytes(tag->album());
  tags.genre = Bytes(tag->genre());
  tags.year = tag->year() == 0 ? "" : std::to_string(tag->year());
  tags.text_block = Bytes(tag->comment());
}

bool TakeProperties(const TagLib::AudioProperties* properties, FileTags& tags) {
  if (properties == nullptr || properties->sampleRate() <= 0) return false;
  tags.duration = std::chrono::milliseconds(std::max(properties->lengthInMilliseconds(), 0));
  tags.bit_rate = std::max(properties->bitrate(), 0);
  tags.sample_rate = properties->sampleRate();
  return tags.duration.count() > 0;
}

void TakeId3v2(const TagLib::ID3v2::Tag* tag, FileTags& tags) {
  if (tag == nullptr) return;
  const TagLib::ID3v2::FrameListMap& frames = tag->frameListMap();
  if (const auto bpm = frames.find("TBPM"); bpm != frames.end() && !bpm->second.isEmpty()) {
    tags.bpm = Bytes(bpm->second.front()->toString());
  }
  const auto users = frames.find("TXXX");
  if (users == frames.end()) return;
  for (const TagLib::ID3v2::Frame* frame : users->second) {
    const auto* text = dynamic_cast<const TagLib::ID3v2::UserTextIdentificationFrame*>(frame);
    if (text == nullptr) continue;
    const TagLib::StringList fields = text->fieldList();  // the name, then the values
    for (unsigned i = 1; i < fields.size(); ++i) AddItem(tags, text->description(), fields[i]);
  }
}

void TakeApe(const TagLib::APE::Tag* tag, FileTags& tags) {
  if (tag == nullptr) return;
  for (const auto& [key, item] : tag->itemListMap()) {
    if (item.type() == TagLib::APE::Item::Text) AddItem(tags, key, item.toString());
  }
}

void TakeXiph(const TagLib::Ogg::XiphComment* tag, FileTags& tags) {
  if (tag == nullptr) return;
  for (const auto& [key, values] : tag->fieldListMap()) {
    for (const TagLib::String& value : values) AddItem(tags, key, value);
  }
  const auto first = [&](const char* key) {
    const auto found = tag->fieldListMap().find(key);
    return found == tag->fieldListMap().end() || found->second.isEmpty() ? std::string()
                                                                         : Bytes(found->second.front());
  };
  tags.bpm = first("BPM").empty() ? first("TEMPO") : first("BPM");
  if (const std::string comment = first("COMMENT"); !comment.empty()) tags.text_block = comment;
}

/// Text and numbers; empty for raw bytes.
TagLib::String TextOf(const TagLib::ASF::Attribute& value) {
  using TagLib::ASF::Attribute;
  switch (value.type()) {
    case Attribute::UnicodeType:
      return value.toString();
    case Attribute::WordType:
      return TagLib::String::number(value.toUShort());
    case Attribute::DWordType:
      return std::to_string(value.toUInt());
    case Attribute::QWordType:
      return std::to_string(value.toULongLong());
    case Attribute::BoolType:
      return value.toBool() ? "True" : "False";
    case Attribute::BytesType:
    case Attribute::GuidType:
      break;
  }
  return {};
}

/// Of an Ogg file whose codec is not this one, the library's object is there but not valid.
template <typename OggFile>
bool ReadOggAs(TagLib::IOStream& stream, FileTags& tags) {
  stream.seek(0);
  OggFile file(&stream);
  if (!file.isValid() || !TakeProperties(file.audioProperties(), tags)) return false;
  TakeCommon(file.tag(), tags);
  TakeXiph(file.tag(), tags);
  return true;
}

}  // namespace

bool ReadMpeg(TagLib::IOStream& stream, FileTags& tags) {
  TagLib::MPEG::File file(&stream, TagLib::ID3v2::FrameFactory::instance());
  if (!file.isValid() || !TakeProperties(file.audioProperties(), tags)) return false;
  if (const auto* header = file.audioProperties()->xingHeader(); header == nullptr || !header->isValid()) {
    // Without that header the library takes the first frame's bit rate for all of them.
    if (const auto counted = CountVariableFrames(stream, file.firstFrameOffset())) {
      tags.duration = counted->duration;
      tags.bit_rate = counted->bit_rate;
    }
  }
  TakeCommon(file.tag(), tags);
  TakeId3v2(file.ID3v2Tag(), tags);
  TakeApe(file.APETag(), tags);
  return true;
}

bool ReadOgg(TagLib::IOStream& stream, FileTags& tags) {
  return ReadOggAs<TagLib::Ogg::Vorbis::File>(stream, tags) ||
         ReadOggAs<TagLib::Ogg::Opus::File>(stream, tags) ||
         ReadOggAs<TagLib::Ogg::FLAC::File>(stream, tags) ||
         ReadOggAs<TagLib::Ogg::Speex::File>(stream, tags);
}

bool ReadFlac(TagLib::IOStream& stream, FileTags& tags) {
  TagLib::FLAC::File file(&stream, TagLib::ID3v2::FrameFactory::instance());
  if (!file.isValid()) return false;
  // A FLAC header may leave its length open, which counts as 0; such a file plays all the same.
  if (!TakeProperties(file.audioProperties(), tags) && tags.sample_rate == 0) return false;
  TakeCommon(file.tag(), tags);
  if (file.hasXiphComment()) TakeXiph(file.xiphComment(), tags);
  if (file.hasID3v2Tag()) TakeId3v2(file.ID3v2Tag(), tags);
  return true;
}

bool ReadAsf(TagLib::IOStream& stream, FileTags& tags) {
  if (!AsfListsFit(stream)) return false;
  TagLib::ASF::File file(&stream);
  if (!file.isValid() || !TakeProperties(file.audioProperties(), tags)) return false;
  TakeCommon(file.tag(), tags);
  for (const auto& [key, values] : file.tag()->attributeListMap()) {
    for (const TagLib::ASF::Attribute& value : values) {
      const TagLib::String text = TextOf(value);
      if (text.isEmpty()) continue;
      AddItem(tags, key, text);
      if (key == "WM/BeatsPerMinute") tags.bpm = Bytes(text);
    }
  }
  return true;
}

bool ReadMp4(TagLib::IOStream& stream, FileTags& tags) {
  TagLib::MP4::File file(&stream);
  if (!file.isValid() || !TakeProperties(file.audioProperties(), tags)) return false;
  TakeCommon(file.tag(), tags);
  for (const auto& [key, item] : file.tag()->itemMap()) {
    if (key == "tmpo" && item.toInt() > 0) tags.bpm = std::to_string(item.toInt());
    if (!key.startsWith("----:")) continue;  // "----:com.apple.iTunes:NAME"
    for (const TagLib::String& value : item.toStringList()) {
      AddItem(tags, key.substr(static_cast<unsigned>(key.rfind(":") + 1)), value);
    }
  }
  return true;
}

bool ReadWav(TagLib::IOStream& stream, FileTags& tags) {
  TagLib::RIFF::WAV::File file(&stream);
  if (!file.isValid() || !TakeProperties(file.audioProperties(), tags)) return false;
  TakeCommon(file.hasID3v2Tag() ? static_cast<TagLib::Tag*>(file.ID3v2Tag()) : file.InfoTag(), tags);
  if (file.hasID3v2Tag()) TakeId3v2(file.ID3v2Tag(), tags);
  return true;
}

bool ReadAnyOther(TagLib::IOStream& stream, FileTags& tags) {
  const TagLib::FileRef file(&stream);
  if (file.isNull() || !TakeProperties(file.audioProperties(), tags)) return false;
  TakeCommon(file.tag(), tags);
  return true;
}

}  // namespace platform::tags
