// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/tags/MixingTagWriter.h"

#include <taglib/apetag.h>
#include <taglib/asffile.h>
#include <taglib/flacfile.h>
#include <taglib/id3v2framefactory.h>
#include <taglib/id3v2header.h>
#include <taglib/id3v2tag.h>
#include <taglib/infotag.h>
#include <taglib/mp4file.h>
#include <taglib/mpegfile.h>
#include <taglib/oggflacfile.h>
#include <taglib/opusfile.h>
#include <taglib/speexfile.h>
#include <taglib/tbytevectorstream.h>
#include <taglib/textidentificationframe.h>
#include <taglib/vorbisfile.h>
#include <taglib/wavfile.h>
#include <taglib/xiphcomment.h>

#include <cstdlib>
#include <exception>
#include <string_view>

#include "platform/archive/SongArchive.h"
#include "platform/files/DiskFileSaver.h"
#include "platform/files/PlainFile.h"
#include "platform/tags/Content.h"
#include "platform/tags/TagLibTagReader.h"
#include "support/Sentences.h"

namespace platform::tags {
namespace {

using Items = std::vector<catalogue::TagItem>;

TagLib::String Utf8(const std::string& bytes) {
  return {bytes, TagLib::String::UTF8};
}

void PutMixing(TagLib::ID3v2::Tag& tag, const std::string& block, const Items& items) {
  tag.setComment(Utf8(block));
  for (const catalogue::TagItem& item : items) {
    auto* old = TagLib::ID3v2::UserTextIdentificationFrame::find(&tag, Utf8(item.name));
    if (old != nullptr) old->setText(Utf8(item.value));
  }
}

TagLib::ID3v2::Version VersionOf(const TagLib::ID3v2::Tag& tag) {
  return tag.header()->majorVersion() == 3 ? TagLib::ID3v2::v3 : TagLib::ID3v2::v4;
}

void PutMixing(TagLib::Ogg::XiphComment& tag, const std::string& block, const Items& items) {
  const auto put_first = [&tag](const TagLib::String& key, const std::string& value) {
    TagLib::StringList values = tag.fieldListMap()[key];
    if (values.isEmpty()) {
      values.append(Utf8(value));
    } else {
      values.front() = Utf8(value);
    }
    tag.removeFields(key);
    for (const TagLib::String& each : values) tag.addField(key, each, false);
  };
  put_first("COMMENT", block);
  for (const catalogue::TagItem& item : items) {
    if (tag.contains(Utf8(item.name))) put_first(Utf8(item.name).upper(), item.value);
  }
}

bool WriteMpeg(TagLib::IOStream& stream, const std::string& block, const Items& items) {
  using TagLib::MPEG::File;
  File file(&stream, TagLib::ID3v2::FrameFactory::instance(), false);
  if (!file.isValid()) return false;
  int kinds = File::ID3v2;
  const bool had = file.hasID3v2Tag();
  TagLib::ID3v2::Tag& tag = *file.ID3v2Tag(true);
  PutMixing(tag, block, items);
  if (TagLib::APE::Tag* ape = file.APETag(); ape != nullptr && file.hasAPETag()) {
    kinds |= File::APE;
    for (const catalogue::TagItem& item : items) {
      const TagLib::String key = Utf8(item.name);
      if (ape->itemListMap().contains(key.upper())) ape->addValue(key, Utf8(item.value), true);
    }
  }
  // An old tag alone goes on in the new one, which would hide it.
  return file.save(kinds, TagLib::File::StripNone, had ? VersionOf(tag) : TagLib::ID3v2::v4,
                   had ? TagLib::File::DoNotDuplicate : TagLib::File::Duplicate);
}

template <typename OggFile>
bool WriteOggAs(TagLib::IOStream& stream, const std::string& block, const Items& items) {
  stream.seek(0);
  OggFile file(&stream, false);
  if (!file.isValid() || file.tag() == nullptr) return false;
  PutMixing(*file.tag(), block, items);
  return file.save();
}

bool WriteOgg(TagLib::IOStream& stream, const std::string& block, const Items& items) {
  return WriteOggAs<TagLib::Ogg::Vorbis::File>(stream, block, items) ||
         WriteOggAs<TagLib::Ogg::Opus::File>(stream, block, items) ||
         WriteOggAs<TagLib::Ogg::FLAC::File>(stream, block, items) ||
         WriteOggAs<TagLib::Ogg::Speex::File>(stream, block, items);
}

bool WriteFlac(TagLib::IOStream& stream, const std::string& block, const Items& items) {
  TagLib::FLAC::File file(&stream, TagLib::ID3v2::FrameFactory::instance(), false);
  if (!file.isValid()) return false;
  PutMixing(*file.xiphComment(true), block, items);
  if (file.hasID3v2Tag()) PutMixing(*file.ID3v2Tag(), block, items);
  return file.save();
}

bool WriteAsf(TagLib::IOStream& stream, const std::string& block, const Items& items) {
  TagLib::ASF::File file(&stream, false);
  if (!file.isValid() || file.tag() == nullptr) return false;
  file.tag()->setComment(Utf8(block));
  for (const catalogue::TagItem& item : items) {
    const TagLib::String name = Utf8(item.name);
    if (file.tag()->contains(name)) file.tag()->setAttribute(name, TagLib::ASF::Attribute(Utf8(item.value)));
  }
  return file.save();
}

bool WriteMp4(TagLib::IOStream& stream, const std::string& block, const Items& items) {
  TagLib::MP4::File file(&stream, false);
  if (!file.isValid() || file.tag() == nullptr) return false;
  file.tag()->setComment(Utf8(block));
  const TagLib::MP4::ItemMap old = file.tag()->itemMap();
  for (const auto& [key, unused] : old) {
    for (const catalogue::TagItem& item : items) {
      if (!key.startsWith("----:") || key.substr(static_cast<unsigned>(key.rfind(":") + 1)) != item.name)
        continue;
      file.tag()->setItem(key, TagLib::MP4::Item(TagLib::StringList(Utf8(item.value))));
    }
  }
  return file.save();
}

bool WriteWav(TagLib::IOStream& stream, const std::string& block, const Items& items) {
  using TagLib::RIFF::WAV::File;
  File file(&stream, false);
  if (!file.isValid()) return false;
  // The text of a file's list of information would be hidden by a new tag.
  if (!file.hasID3v2Tag() && file.hasInfoTag()) {
    file.InfoTag()->setComment(Utf8(block));
    return file.save(File::Info, TagLib::File::StripNone);
  }
  PutMixing(*file.ID3v2Tag(), block, items);
  return file.save(File::ID3v2, TagLib::File::StripNone,
                   file.hasID3v2Tag() ? VersionOf(*file.ID3v2Tag()) : TagLib::ID3v2::v4);
}

bool WriteContent(TagLib::IOStream& stream, const std::string& name, const std::string& block,
                  const Items& items) {
  switch (Recognise(stream, name)) {
    case Content::Mpeg:
      return WriteMpeg(stream, block, items);
    case Content::Ogg:
      return WriteOgg(stream, block, items);
    case Content::Flac:
      return WriteFlac(stream, block, items);
    case Content::Asf:
      return WriteAsf(stream, block, items);
    case Content::Mp4:
      return WriteMp4(stream, block, items);
    case Content::Wav:
      return WriteWav(stream, block, items);
    case Content::Other:
      break;
  }
  return false;
}

/// What is read of the new bytes is what was written, and the sound is as long as it was.
bool CameOut(const catalogue::FileTags& before, std::string_view bytes, const std::string& name,
             const std::string& block) {
  const auto after = ReadTags(bytes, name);
  return after && after.Value().text_block == block && after.Value().title == before.title &&
         after.Value().sample_rate == before.sample_rate &&
         std::abs((after.Value().duration - before.duration).count()) < 100;
}

}  // namespace

support::Result<void> MixingTagWriter::Write(const std::string& path, const std::string& text_block,
                                             const std::vector<catalogue::TagItem>& items) {
  const std::string name = files::LastPart(path);
  const auto opened = files::OpenPlainFile(path);
  if (!opened) return opened.Failure();
  if (archive::IsArchive(opened.Value())) {
    return support::Failed(support::ErrorCode::Unsupported, support::Sentence::TagInArchive, {name});
  }
  const support::Error failed =
      support::Failed(support::ErrorCode::Unreadable, support::Sentence::TagNotWritten, {name});
  if (opened.Value().size > kLargest) return failed;
  try {
    TagLib::ByteVector bytes(static_cast<unsigned>(opened.Value().size), '\0');
    if (std::fread(bytes.data(), 1, bytes.size(), opened.Value().file.get()) != bytes.size()) return failed;
    const auto before = ReadTags({bytes.data(), bytes.size()}, name);
    if (!before) return before.Failure();
    TagLib::ByteVectorStream stream(bytes);
    if (!WriteContent(stream, name, text_block, items)) return failed;
    const TagLib::ByteVector& made = *stream.data();
    const std::string_view view(made.data(), made.size());
    if (!CameOut(before.Value(), view, name, text_block)) return failed;
    return files::DiskFileSaver(calls_).Save(path, view);
  } catch (const std::exception&) {
    return failed;
  }
}

}  // namespace platform::tags
