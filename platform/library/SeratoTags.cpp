// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <taglib/aifffile.h>
#include <taglib/flacfile.h>
#include <taglib/generalencapsulatedobjectframe.h>
#include <taglib/id3v2framefactory.h>
#include <taglib/id3v2tag.h>
#include <taglib/mp4file.h>
#include <taglib/mpegfile.h>
#include <taglib/wavfile.h>
#include <taglib/xiphcomment.h>

#include <exception>
#include <filesystem>
#include <utility>

#include "platform/archive/SoundFile.h"
#include "platform/library/LibraryFiles.h"
#include "platform/library/SeratoBlocks.h"
#include "platform/tags/Content.h"
#include "platform/tags/PagedFile.h"
#include "support/Sentences.h"

namespace platform::library {
namespace {

using support::ErrorCode;
using support::Sentence;

std::string Plain(const TagLib::ByteVector& bytes) {
  return {bytes.data(), bytes.size()};
}

SeratoBlocks OfId3(const TagLib::ID3v2::Tag* tag) {
  SeratoBlocks blocks;
  if (tag == nullptr) return blocks;
  for (const TagLib::ID3v2::Frame* frame : tag->frameList("GEOB")) {
    const auto* const object = dynamic_cast<const TagLib::ID3v2::GeneralEncapsulatedObjectFrame*>(frame);
    if (object == nullptr) continue;
    const TagLib::String name = object->description();
    if (name == "Serato Markers_") blocks.markers = Plain(object->object());
    if (name == "Serato Markers2") blocks.markers2 = Plain(object->object());
    if (name == "Serato BeatGrid") blocks.beatgrid = Plain(object->object());
  }
  return blocks;
}

SeratoBlocks OfVorbis(const TagLib::Ogg::XiphComment* comment) {
  if (comment == nullptr) return {};
  const auto block = [&](const char* name) {
    const auto& fields = comment->fieldListMap();
    const auto at = fields.find(name);
    return at == fields.end() || at->second.isEmpty() ? std::string()
                                                      : Unwrapped(at->second.front().to8Bit(true));
  };
  return {"", block("SERATO_MARKERS_V2"), block("SERATO_BEATGRID")};
}

/// The entries of the older block differ here, and the newer one says the same.
SeratoBlocks OfMp4(const TagLib::MP4::Tag* tag) {
  if (tag == nullptr) return {};
  const auto block = [&](const char* name) {
    const auto& items = tag->itemMap();
    const auto at = items.find(name);
    if (at == items.end()) return std::string();
    const TagLib::StringList texts = at->second.toStringList();
    return texts.isEmpty() ? std::string() : Unwrapped(texts.front().to8Bit(true));
  };
  return {"", block("----:com.serato.dj:markersv2"), block("----:com.serato.dj:beatgrid")};
}

struct Found {
  SeratoBlocks blocks;
  std::string artist, title;
};

template <typename File, typename Blocks>
Found In(File& file, const Blocks& blocks) {
  if (!file.isValid() || file.tag() == nullptr) return {};
  return {blocks(), file.tag()->artist().to8Bit(true), file.tag()->title().to8Bit(true)};
}

Found LookIn(TagLib::IOStream& stream, const std::string& name) {
  using tags::Content;
  auto* const frames = TagLib::ID3v2::FrameFactory::instance();
  switch (tags::Recognise(stream, name)) {
    case Content::Mpeg: {
      TagLib::MPEG::File file(&stream, frames, false);
      return In(file, [&] { return OfId3(file.ID3v2Tag()); });
    }
    case Content::Flac: {
      TagLib::FLAC::File file(&stream, frames, false);
      return In(file, [&] { return OfVorbis(file.xiphComment()); });
    }
    case Content::Mp4: {
      TagLib::MP4::File file(&stream, false);
      return In(file, [&] { return OfMp4(file.tag()); });
    }
    case Content::Wav: {
      TagLib::RIFF::WAV::File file(&stream, false);
      return In(file, [&] { return OfId3(file.ID3v2Tag()); });
    }
    case Content::Other: {
      stream.seek(0);
      if (!stream.readBlock(4).startsWith("FORM")) return {};
      stream.seek(0);
      TagLib::RIFF::AIFF::File file(&stream, false);
      return In(file, [&] { return OfId3(file.tag()); });
    }
    case Content::Ogg:
    case Content::Asf:
      return {};
  }
  return {};
}

}  // namespace

support::Result<catalogue::ForeignLibrary> ReadSerato(const std::string& path,
                                                      catalogue::LibraryWatch& watch) {
  auto opened = archive::OpenSoundFile(path);
  if (!opened) return opened.Failure();
  const std::string name = files::LastPart(path);
  Found found;
  try {
    archive::SoundFile& sound = opened.Value();
    tags::PagedFile stream(sound.file.file.release(), static_cast<long>(sound.file.size), sound.name);
    found = LookIn(stream, sound.name);
  } catch (const std::exception&) {
    return Failed(ErrorCode::Malformed, Sentence::NoReadableAudio, {name});
  }
  if (found.blocks.IsEmpty()) return Failed(ErrorCode::Unsupported, Sentence::LibraryNoMarks, {name});
  Gathered gathered(catalogue::LibraryKind::Serato, watch);
  catalogue::ForeignTrack track;
  track.path = CleanPath(std::filesystem::absolute(path).generic_string());
  track.artist = Cut(found.artist);
  track.title = Cut(found.title);
  const auto damaged = TakeBlocks(found.blocks, gathered, track);
  (void)gathered.AddTrack(std::move(track));
  catalogue::ForeignLibrary library = gathered.Take();
  for (const std::string& block : damaged) library.notes.push_back({Sentence::LibraryBlockDamaged, {block}});
  return library;
}

}  // namespace platform::library
