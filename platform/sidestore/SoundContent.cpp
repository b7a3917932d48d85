// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/sidestore/SoundContent.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace platform::sidestore {
namespace {

constexpr std::uint64_t kWindow = 1 << 14;
constexpr std::uint64_t kOggWindow = 1 << 17;  ///< two of the longest pages
constexpr std::string_view kPage = "OggS";
constexpr std::size_t kPageHead = 27;
/// Number and checksum of a page, which change when the comments before it take more pages.
constexpr std::size_t kPageNumbers = 18, kPageNumbersSize = 8;
constexpr int kMostParts = 100'000;  ///< of a file that is no end of them

/// Fewer bytes where the file ends.
std::string ReadAt(std::istream& file, std::uint64_t at, std::uint64_t size) {
  std::string bytes(size, '\0');
  file.clear();
  file.seekg(static_cast<std::streamoff>(at));
  file.read(bytes.data(), static_cast<std::streamsize>(size));
  bytes.resize(file.gcount() > 0 ? static_cast<std::size_t>(file.gcount()) : 0);
  return bytes;
}

std::uint64_t Byte(std::string_view bytes, std::size_t at) {
  return at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : 0;
}

std::uint64_t Big(std::string_view bytes, std::size_t at, std::size_t size, unsigned bits = 8) {
  std::uint64_t number = 0;
  for (std::size_t i = 0; i < size; ++i) number = (number << bits) | Byte(bytes, at + i);
  return number;
}

std::uint64_t Little(std::string_view bytes, std::size_t at, std::size_t size) {
  std::uint64_t number = 0;
  for (std::size_t i = size; i-- > 0;) number = (number << 8) | Byte(bytes, at + i);
  return number;
}

SoundSpan Between(std::uint64_t begin, std::uint64_t end) {
  return {SoundSpan::Kind::Plain, begin, end > begin ? end - begin : 0};
}

/// Behind the ID3v2 tags that a file begins with.
std::uint64_t BehindId3(std::istream& file) {
  std::uint64_t begin = 0;
  for (int tag = 0; tag < 4; ++tag) {
    const std::string head = ReadAt(file, begin, 10);
    if (!head.starts_with("ID3")) break;
    constexpr std::uint64_t kFooter = 0x10;
    begin += 10 + Big(head, 6, 4, 7) + ((Byte(head, 5) & kFooter) != 0 ? 10 : 0);
  }
  return begin;
}

/// How much of the tags that a file ends with is one tag; 0 for none.
std::uint64_t TagAtEnd(std::istream& file, std::uint64_t end) {
  constexpr std::uint64_t kId3 = 128, kFooter = 32, kLyrics = 15;
  if (end >= kId3 && ReadAt(file, end - kId3, 3) == "TAG") return kId3;
  const std::string foot = end >= kFooter ? ReadAt(file, end - kFooter, kFooter) : "";
  if (foot.starts_with("APETAGEX")) {
    constexpr std::uint64_t kHasHead = 0x80;
    return Little(foot, 12, 4) + ((Byte(foot, 23) & kHasHead) != 0 ? kFooter : 0);
  }
  if (!foot.ends_with("LYRICS200")) return 0;
  std::uint64_t size = 0;
  for (const char digit : foot.substr(foot.size() - kLyrics, 6)) {
    if (digit < '0' || digit > '9') return 0;
    size = size * 10 + static_cast<std::uint64_t>(digit - '0');
  }
  return size + kLyrics;
}

std::uint64_t BeforeTags(std::istream& file, std::uint64_t begin, std::uint64_t end) {
  for (int tag = 0; tag < 4; ++tag) {
    const std::uint64_t size = TagAtEnd(file, end);
    if (size == 0 || size > end - begin) break;
    end -= size;
  }
  return end;
}

SoundSpan InFlac(std::istream& file, std::uint64_t begin, std::uint64_t size) {
  std::uint64_t at = begin + 4;
  for (int block = 0; block < kMostParts && at < size; ++block) {
    const std::string head = ReadAt(file, at, 4);
    at += 4 + Big(head, 1, 3);
    if (head.size() < 4 || (Byte(head, 0) & 0x80) != 0) break;
  }
  return at < size ? Between(at, BeforeTags(file, at, size)) : Between(0, size);
}

/// From the first page on that is no header: headers end at no time.
SoundSpan InOgg(std::istream& file, std::uint64_t begin, std::uint64_t size) {
  constexpr std::uint64_t kNone = ~0ULL;
  std::uint64_t at = begin;
  for (int page = 0; page < kMostParts && at < size; ++page) {
    const std::string head = ReadAt(file, at, kPageHead + 255);
    if (!head.starts_with(kPage)) break;
    const std::uint64_t time = Little(head, 6, 8);
    if (time != 0 && time != kNone) return {SoundSpan::Kind::OggPages, at, size - at};
    const auto segments = static_cast<std::size_t>(Byte(head, 26));
    at += kPageHead + segments;
    for (std::size_t i = 0; i < segments; ++i) at += Byte(head, kPageHead + i);
  }
  return Between(0, size);
}

SoundSpan InAsf(std::istream& file, std::uint64_t begin, std::uint64_t size) {
  const std::uint64_t header = Little(ReadAt(file, begin + 16, 8), 0, 8);
  return header < size - begin ? Between(begin + header, size) : Between(0, size);
}

/// The largest part of one name in a chain of them.
template <typename PartAt>
SoundSpan Largest(std::uint64_t begin, std::uint64_t size, std::string_view name, const PartAt& part_at) {
  SoundSpan found = Between(0, size);
  bool any = false;
  std::uint64_t at = begin;
  for (int part = 0; part < kMostParts && at < size; ++part) {
    const auto [called, head, whole] = part_at(at);
    if (whole < head || whole == 0) break;
    const std::uint64_t end = whole < size - at ? at + whole : size;
    if (called == name && (!any || end - at - head > found.size)) found = Between(at + head, end), any = true;
    at = end;
  }
  return found;
}

struct Part {
  std::string name;
  std::uint64_t head;
  std::uint64_t whole;
};

SoundSpan InMp4(std::istream& file, std::uint64_t begin, std::uint64_t size) {
  return Largest(begin, size, "mdat", [&file, size](std::uint64_t at) {
    const std::string head = ReadAt(file, at, 16);
    const std::uint64_t whole = Big(head, 0, 4);
    const std::string name = head.size() >= 8 ? head.substr(4, 4) : "";
    if (whole == 1) return Part{name, 16, Big(head, 8, 8)};
    return Part{name, 8, whole == 0 ? size - at : whole};
  });
}

SoundSpan InWave(std::istream& file, std::uint64_t begin, std::uint64_t size) {
  return Largest(begin + 12, size, "data", [&file](std::uint64_t at) {
    const std::string head = ReadAt(file, at, 8);
    const std::uint64_t bytes = Little(head, 4, 4);
    return Part{head.substr(0, 4), 8, head.size() < 8 ? 0 : 8 + bytes + bytes % 2};
  });
}

std::uint64_t Mix(std::uint64_t hash, std::string_view bytes) {
  const auto mix = [&hash](std::uint64_t word) {
    hash = (hash ^ word) * 1099511628211ULL;
    hash ^= hash >> 32;
  };
  mix(bytes.size());
  for (std::uint64_t word = 0; bytes.size() >= sizeof(word); bytes.remove_prefix(sizeof(word))) {
    std::memcpy(&word, bytes.data(), sizeof(word));
    mix(word);
  }
  for (const char byte : bytes) mix(static_cast<unsigned char>(byte));
  return hash;
}

/// Whole pages alone, without their numbers.
void KeepPages(std::string& window) {
  const std::size_t first = window.find(kPage);
  const std::size_t last = window.rfind(kPage);
  if (first == std::string::npos) return;
  if (last > first) window.resize(last);
  for (std::size_t at = first; at != std::string::npos; at = window.find(kPage, at + 1)) {
    for (std::size_t i = at + kPageNumbers; i < std::min(at + kPageNumbers + kPageNumbersSize, window.size());
         ++i) {
      window[i] = '\0';
    }
  }
  window.erase(0, first);
}

std::string Text(std::uint64_t number) {
  std::string text(sizeof(number), '\0');
  for (std::size_t i = 0; i < text.size(); ++i)
    text[text.size() - 1 - i] = static_cast<char>(number >> (8 * i));
  return text;
}

}  // namespace

SoundSpan FindSound(std::istream& file, std::uint64_t file_size) {
  const std::uint64_t begin = BehindId3(file);
  if (begin >= file_size) return Between(0, file_size);
  const std::string head = ReadAt(file, begin, 12);
  if (head.starts_with("fLaC")) return InFlac(file, begin, file_size);
  if (head.starts_with(kPage)) return InOgg(file, begin, file_size);
  if (head.starts_with("\x30\x26\xB2\x75")) return InAsf(file, begin, file_size);
  if (std::string_view(head).substr(std::min<std::size_t>(4, head.size())).starts_with("ftyp")) {
    return InMp4(file, begin, file_size);
  }
  if (head.starts_with("RIFF")) return InWave(file, begin, file_size);
  return Between(begin, BeforeTags(file, begin, file_size));
}

std::string SizeText(const SoundSpan& sound) {
  return Text(sound.size);
}

std::optional<std::string> ContentText(std::istream& file, const SoundSpan& sound) {
  const bool pages = sound.kind == SoundSpan::Kind::OggPages;
  const std::uint64_t window = std::min(pages ? kOggWindow : kWindow, sound.size);
  const std::uint64_t rest = sound.size - window;
  std::uint64_t hash = 14695981039346656037ULL;
  for (const std::uint64_t at : {std::uint64_t{0}, rest / 2, rest}) {
    std::string bytes = ReadAt(file, sound.begin + at, window);
    if (bytes.size() != window) return std::nullopt;
    if (pages) KeepPages(bytes);
    hash = Mix(hash, bytes);
  }
  return SizeText(sound) + Text(hash);
}

}  // namespace platform::sidestore
