// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/tags/Content.h"

#include "platform/files/PlainFile.h"

namespace platform::tags {
namespace {

bool HasPrefix(const TagLib::ByteVector& bytes, unsigned at, const char* prefix) {
  return bytes.containsAt(TagLib::ByteVector(prefix), at);
}

/// Where the content begins: behind an ID3v2 tag, which some programs put in front of anything.
long ContentStart(TagLib::IOStream& stream) {
  stream.seek(0);
  const TagLib::ByteVector head = stream.readBlock(10);
  if (head.size() < 10 || !HasPrefix(head, 0, "ID3")) return 0;
  long size = 0;
  for (int i = 6; i < 10; ++i) size = size * 128 + (static_cast<unsigned char>(head[i]) & 0x7F);
  return size + 10;
}

}  // namespace

Content Recognise(TagLib::IOStream& stream, const std::string& name) {
  const long start = ContentStart(stream);
  stream.seek(start);
  const TagLib::ByteVector head = stream.readBlock(36);
  stream.seek(0);
  if (HasPrefix(head, 0, "OggS")) return Content::Ogg;
  if (HasPrefix(head, 0, "fLaC")) return Content::Flac;
  if (HasPrefix(head, 0, "\x30\x26\xB2\x75")) return Content::Asf;
  if (HasPrefix(head, 4, "ftyp")) return Content::Mp4;
  if (HasPrefix(head, 0, "RIFF") && HasPrefix(head, 8, "WAVE")) return Content::Wav;
  const bool frame = head.size() >= 2 && head[0] == '\xFF' && (head[1] & '\xE0') == '\xE0';
  return start > 0 || frame || files::ExtensionOf(name) == "MP3" ? Content::Mpeg : Content::Other;
}

}  // namespace platform::tags
