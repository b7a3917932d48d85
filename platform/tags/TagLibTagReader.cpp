// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/tags/TagLibTagReader.h"

#include <taglib/fileref.h>
#include <taglib/tbytevectorstream.h>
#include <taglib/tfilestream.h>

#include <algorithm>
#include <exception>
#include <limits>

#include "platform/files/PlainFile.h"
#include "platform/tags/Content.h"
#include "platform/tags/FieldReaders.h"
#include "support/Sentences.h"

namespace platform::tags {
namespace {

/// Pictures are the largest thing in honest tags. A tag that claims more gets this much of what it claims, so
/// that a broken length in a file of gigabytes takes neither the memory nor the evening.
constexpr unsigned long kMostBytesAtOnce = 64UL << 20;

class CappedFileStream : public TagLib::FileStream {
 public:
  explicit CappedFileStream(const std::string& path) : FileStream(path.c_str(), true) {}
  TagLib::ByteVector readBlock(unsigned long length) override {
    return FileStream::readBlock(std::min(length, kMostBytesAtOnce));
  }
};

support::Error NoAudio(const std::string& name) {
  return support::Failed(support::ErrorCode::Malformed, support::Sentence::NoReadableAudio, {name});
}

support::Result<catalogue::FileTags> ReadContent(TagLib::IOStream& stream, const std::string& name) {
  catalogue::FileTags tags;
  bool read = false;
  switch (Recognise(stream, name)) {
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
  if (const auto opened = files::OpenPlainFile(path); !opened) return opened.Failure();
  try {
    CappedFileStream stream(path);
    if (!stream.isOpen()) return NoAudio(files::LastPart(path));
    return ReadContent(stream, files::LastPart(path));
  } catch (const std::exception&) {
    return NoAudio(files::LastPart(path));
  }
}

support::Result<catalogue::FileTags> ReadTags(std::string_view bytes, const std::string& name) {
  constexpr std::size_t kMost = std::numeric_limits<int>::max();
  try {
    TagLib::ByteVectorStream stream(
        TagLib::ByteVector(bytes.data(), static_cast<unsigned>(std::min(bytes.size(), kMost))));
    return ReadContent(stream, name);
  } catch (const std::exception&) {
    return NoAudio(name);
  }
}

}  // namespace platform::tags
