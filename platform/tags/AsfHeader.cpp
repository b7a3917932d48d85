// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/tags/AsfHeader.h"

#include <string_view>

namespace platform::tags {
namespace {

constexpr long kObjectHead = 24;  ///< identity and size
constexpr long kExtensionHead = kObjectHead + 22;
constexpr int kMostObjects = 2000;

// The first four bytes of each identity; the rest tells nothing more here.
constexpr std::string_view kHeaderExtension = "\xB5\x03\xBF\x5F";
constexpr std::string_view kExtendedContent = "\x40\xA4\xD0\xD2";
constexpr std::string_view kMetadata = "\xEA\xCB\xF8\xC5";
constexpr std::string_view kMetadataLibrary = "\x94\x1C\x23\x44";

bool Is(const TagLib::ByteVector& identity, std::string_view wanted) {
  return identity.startsWith(TagLib::ByteVector(wanted.data(), static_cast<unsigned>(wanted.size())));
}

/// The list's count stands first in the object; an entry takes at least that many bytes.
bool ListFits(TagLib::IOStream& stream, long at, long long size, long long smallest_entry) {
  stream.seek(at + kObjectHead);
  const long long count = stream.readBlock(2).toUShort(false);
  return count * smallest_entry <= size - kObjectHead - 2;
}

enum class Level { Header, Extension };

bool ObjectsFit(TagLib::IOStream& stream, long from, long end, Level level) {
  for (int object = 0; object < kMostObjects; ++object) {
    if (from > end - kObjectHead) return true;
    stream.seek(from);
    const TagLib::ByteVector head = stream.readBlock(kObjectHead);
    const long long size = head.toLongLong(16U, false);
    if (size < kObjectHead || size > end - from) return false;
    const long next = from + static_cast<long>(size);
    if (Is(head, kExtendedContent) && !ListFits(stream, from, size, 6)) return false;
    if ((Is(head, kMetadata) || Is(head, kMetadataLibrary)) && !ListFits(stream, from, size, 12))
      return false;
    if (Is(head, kHeaderExtension) &&
        (level == Level::Extension || !ObjectsFit(stream, from + kExtensionHead, next, Level::Extension))) {
      return false;
    }
    from = next;
  }
  return false;
}

}  // namespace

bool AsfListsFit(TagLib::IOStream& stream) {
  constexpr long kHeaderHead = 30;
  stream.seek(0);
  const long long size = stream.readBlock(kObjectHead).toLongLong(16U, false);
  const bool fit = size >= kHeaderHead && size <= stream.length() &&
                   ObjectsFit(stream, kHeaderHead, static_cast<long>(size), Level::Header);
  stream.seek(0);
  return fit;
}

}  // namespace platform::tags
