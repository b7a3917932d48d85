// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/tags/TagLibTagReader.h"

#include <taglib/fileref.h>
#include <taglib/tbytevectorstream.h>

#include <algorithm>
#include <exception>
#include <limits>

#include "platform/archive/SoundFile.h"
#include "platform/tags/Content.h"
#include "platform/tags/FieldReaders.h"
#include "platform/tags/PagedFile.h"
#include "support/Sentences.h"

namespace platform::tags {
namespace {

support::Error NoAudio(const std::string& name) {
  return support::Failed(support::ErrorCode::Malformed, support::Sentence::NoReadableAudio, {name});
}

/// hint: what the sound is called; name: what the failure's sentence says.
support::Result<catalogue::FileTags> ReadContent(TagLib::IOStream& stream, const std::string& hint,
                                                 const std::string& name) {
  catalogue::FileTags tags;
  bool read = false;
  switch (Recognise(stream, hint)) {
    case Content::Mpeg:
      read = ReadMpeg(stream, tags);
      break;
    case Content::Ogg:
      read = ReadOgg(stream, tags);
      break;
    case Content::Flac:
      read = ReadFlac(stream, tags);
      break;
    case Content::Asf:
      read = ReadAsf(stream, tags);
      break;
    case Content::Mp4:
      read = ReadMp4(stream, tags);
      break;
    case Content::Wav:
      read = ReadWav(stream, tags);
      break;
    case Content::Other:
      read = ReadAnyOther(stream, tags);
      break;
  }
  if (!read) return NoAudio(name);
  return tags;
}

}  // namespace

support::Result<catalogue::FileTags> TagLibTagReader::Read(const std::string& path) {
  auto opened = archive::OpenSoundFile(path);
  if (!opened) return opened.Failure();
  const std::string name = files::LastPart(path);
  try {
    archive::SoundFile& sound = opened.Value();
    PagedFile stream(sound.file.file.release(), static_cast<long>(sound.file.size), sound.name);
    return ReadContent(stream, sound.name, name);
  } catch (const std::exception&) {
    return NoAudio(name);
  }
}

support::Result<catalogue::FileTags> ReadTags(std::string_view bytes, const std::string& name) {
  constexpr std::size_t kMost = std::numeric_limits<int>::max();
  try {
    TagLib::ByteVectorStream stream(
        TagLib::ByteVector(bytes.data(), static_cast<unsigned>(std::min(bytes.size(), kMost))));
    return ReadContent(stream, name, name);
  } catch (const std::exception&) {
    return NoAudio(name);
  }
}

}  // namespace platform::tags
