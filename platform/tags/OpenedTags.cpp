// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/tags/OpenedTags.h"

#include <taglib/aifffile.h>
#include <taglib/asffile.h>
#include <taglib/id3v2framefactory.h>
#include <taglib/id3v2header.h>
#include <taglib/mp4file.h>
#include <taglib/mpegfile.h>
#include <taglib/oggflacfile.h>
#include <taglib/opusfile.h>
#include <taglib/speexfile.h>
#include <taglib/vorbisfile.h>
#include <taglib/wavfile.h>

#include "platform/tags/AsfHeader.h"
#include "platform/tags/Content.h"

namespace platform::tags {
namespace {

TagLib::ID3v2::Version SavedVersion(const TagLib::ID3v2::Tag& tag) {
  return tag.header()->majorVersion() == 3 ? TagLib::ID3v2::v3 : TagLib::ID3v2::v4;
}

template <typename OggFile>
std::shared_ptr<OggFile> OpenOggAs(TagLib::IOStream& stream) {
  stream.seek(0);
  auto file = std::make_shared<OggFile>(&stream, false);
  return file->isValid() && file->tag() != nullptr ? file : nullptr;
}

}  // namespace

std::unique_ptr<OpenedTags> OpenedTags::Open(TagLib::IOStream& stream, const std::string& name, For what) {
  std::unique_ptr<OpenedTags> tags(new OpenedTags);
  const auto open = [&]() -> bool {
    switch (Recognise(stream, name)) {
      case Content::Mpeg:
        return tags->OpenMpeg(stream, what);
      case Content::Ogg:
        return tags->OpenOgg(stream);
      case Content::Flac:
        return tags->OpenFlac(stream);
      case Content::Asf:
        return tags->OpenAsf(stream);
      case Content::Mp4:
        return tags->OpenMp4(stream);
      case Content::Wav:
        return tags->OpenWav(stream, what);
      case Content::Other:
        return tags->OpenAiff(stream);
    }
    return false;
  };
  return open() ? std::move(tags) : nullptr;
}

bool OpenedTags::OpenMpeg(TagLib::IOStream& stream, For what) {
  using TagLib::MPEG::File;
  auto file = std::make_shared<File>(&stream, TagLib::ID3v2::FrameFactory::instance(), false);
  if (!file->isValid()) return false;
  if (file->hasID3v1Tag()) id3v1_ = file->ID3v1Tag();
  if (file->hasAPETag()) ape_ = file->APETag();
  const bool had = file->hasID3v2Tag();
  if (had || what == For::Writing) id3v2_ = file->ID3v2Tag(true);
  // Older tags alone go on in the new one, which would hide them.
  if (!had && id3v2_ != nullptr && ape_ != nullptr) TagLib::Tag::duplicate(ape_, id3v2_, false);
  if (!had && id3v2_ != nullptr && id3v1_ != nullptr) TagLib::Tag::duplicate(id3v1_, id3v2_, false);
  save_ = [this, mpeg = file.get(), had] {
    const int kinds = File::ID3v2 | (id3v1_ != nullptr ? File::ID3v1 : 0) | (ape_ != nullptr ? File::APE : 0);
    return mpeg->save(kinds, TagLib::File::StripNone, had ? SavedVersion(*id3v2_) : TagLib::ID3v2::v4,
                      TagLib::File::DoNotDuplicate);
  };
  file_ = file;
  return true;
}

bool OpenedTags::OpenOgg(TagLib::IOStream& stream) {
  const auto take = [this](auto file) {
    if (file == nullptr) return false;
    xiph_ = file->tag();
    save_ = [ogg = file.get()] { return ogg->save(); };
    file_ = file;
    return true;
  };
  return take(OpenOggAs<TagLib::Ogg::Vorbis::File>(stream)) ||
         take(OpenOggAs<TagLib::Ogg::Opus::File>(stream)) ||
         take(OpenOggAs<TagLib::Ogg::FLAC::File>(stream)) ||
         take(OpenOggAs<TagLib::Ogg::Speex::File>(stream));
}

bool OpenedTags::OpenFlac(TagLib::IOStream& stream) {
  auto file = std::make_shared<TagLib::FLAC::File>(&stream, TagLib::ID3v2::FrameFactory::instance(), false);
  if (!file->isValid()) return false;
  flac_ = file.get();
  xiph_ = file->xiphComment(true);
  if (file->hasID3v2Tag()) id3v2_ = file->ID3v2Tag();
  if (file->hasID3v1Tag()) id3v1_ = file->ID3v1Tag();
  save_ = [flac = file.get()] { return flac->save(); };
  file_ = file;
  return true;
}

bool OpenedTags::OpenAsf(TagLib::IOStream& stream) {
  if (!AsfListsFit(stream)) return false;
  stream.seek(0);
  auto file = std::make_shared<TagLib::ASF::File>(&stream, false);
  if (!file->isValid() || file->tag() == nullptr) return false;
  asf_ = file->tag();
  save_ = [asf = file.get()] { return asf->save(); };
  file_ = file;
  return true;
}

bool OpenedTags::OpenMp4(TagLib::IOStream& stream) {
  auto file = std::make_shared<TagLib::MP4::File>(&stream, false);
  if (!file->isValid() || file->tag() == nullptr) return false;
  mp4_ = file->tag();
  save_ = [mp4 = file.get()] { return mp4->save(); };
  file_ = file;
  return true;
}

bool OpenedTags::OpenWav(TagLib::IOStream& stream, For what) {
  using TagLib::RIFF::WAV::File;
  auto file = std::make_shared<File>(&stream, false);
  if (!file->isValid()) return false;
  const bool had = file->hasID3v2Tag();
  if (file->hasInfoTag()) info_ = file->InfoTag();
  if (had || what == For::Writing) id3v2_ = file->ID3v2Tag();
  if (!had && id3v2_ != nullptr && info_ != nullptr) TagLib::Tag::duplicate(info_, id3v2_, false);
  save_ = [this, wav = file.get(), had] {
    const auto kinds = static_cast<File::TagTypes>(File::ID3v2 | (info_ != nullptr ? File::Info : 0));
    return wav->save(kinds, TagLib::File::StripNone, had ? SavedVersion(*id3v2_) : TagLib::ID3v2::v4);
  };
  file_ = file;
  return true;
}

bool OpenedTags::OpenAiff(TagLib::IOStream& stream) {
  stream.seek(0);
  const TagLib::ByteVector head = stream.readBlock(12);
  stream.seek(0);
  const bool aiff = head.size() == 12 && head.startsWith("FORM") && head.containsAt("AIF", 8);
  if (!aiff) return false;
  auto file = std::make_shared<TagLib::RIFF::AIFF::File>(&stream, false);
  if (!file->isValid()) return false;
  id3v2_ = file->tag();
  save_ = [this, form = file.get()] { return form->save(SavedVersion(*id3v2_)); };
  file_ = file;
  return true;
}

}  // namespace platform::tags
