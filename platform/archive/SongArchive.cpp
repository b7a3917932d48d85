// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/archive/SongArchive.h"

#include <unistd.h>
#include <zip.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <new>
#include <utility>

#include "platform/files/MemoryFile.h"
#include "support/Sentences.h"

namespace platform::archive {
namespace {

using support::ErrorCode;
using support::Sentence;

constexpr std::size_t kBlockBytes = 64 * 1024;

support::Error FailureOf(int code, const std::string& name) {
  switch (code) {
    case ZIP_ER_MEMORY:
      return support::Failed(ErrorCode::Unavailable, Sentence::NoMemoryToOpen, {name});
    case ZIP_ER_SEEK:
    case ZIP_ER_READ:
      return support::Failed(ErrorCode::Unreadable, Sentence::DiskDoesNotAnswer, {name});
    case ZIP_ER_NOPASSWD:
    case ZIP_ER_WRONGPASSWD:
    case ZIP_ER_ENCRNOTSUPP:
      return support::Failed(ErrorCode::Unsupported, Sentence::ArchiveLocked, {name});
    case ZIP_ER_COMPNOTSUPP:
      return support::Failed(ErrorCode::Unsupported, Sentence::ArchivePackedOtherwise, {name});
    default:
      return support::Failed(ErrorCode::Malformed, Sentence::ArchiveDamaged, {name});
  }
}

std::vector<Member> MembersOf(zip* archive) {
  std::vector<Member> members;
  const zip_int64_t count = zip_get_num_entries(archive, 0);
  for (zip_int64_t i = 0; i < count; ++i) {
    zip_stat_t told;
    const auto place = static_cast<zip_uint64_t>(i);
    if (zip_stat_index(archive, place, 0, &told) != 0) continue;
    constexpr zip_uint64_t kNeeded = ZIP_STAT_NAME | ZIP_STAT_SIZE;
    if ((told.valid & kNeeded) != kNeeded || told.size > INT64_MAX) continue;
    const bool locked =
        (told.valid & ZIP_STAT_ENCRYPTION_METHOD) != 0 && told.encryption_method != ZIP_EM_NONE;
    members.push_back({told.name, static_cast<std::int64_t>(told.size), place, locked});
  }
  return members;
}

struct MemberCloser {
  void operator()(zip_file_t* open) const { zip_fclose(open); }
};

}  // namespace

bool IsArchive(const files::PlainFile& file) {
  std::array<char, 4> head{};
  if (pread(fileno(file.file.get()), head.data(), head.size(), 0) != static_cast<ssize_t>(head.size())) {
    return false;
  }
  return std::memcmp(head.data(), "PK\x03\x04", head.size()) == 0 ||
         std::memcmp(head.data(), "PK\x05\x06", head.size()) == 0;  // the end of an empty one
}

void SongArchive::Closer::operator()(zip* open) const {
  zip_discard(open);
}

support::Result<SongArchive> SongArchive::Open(files::PlainFile file, const std::string& path) {
  const std::string name = files::LastPart(path);
  zip_error_t error;
  zip_error_init(&error);
  zip_source_t* source = zip_source_filep_create(file.file.get(), 0, file.size, &error);
  if (source == nullptr) return FailureOf(zip_error_code_zip(&error), name);
  file.file.release();  // the source's from here on
  Zip archive(zip_open_from_source(source, ZIP_RDONLY, &error));
  if (archive == nullptr) {
    zip_source_free(source);
    return FailureOf(zip_error_code_zip(&error), name);
  }
  const std::vector<Member> members = MembersOf(archive.get());
  std::vector<SongPair> songs = PairSongs(members);
  if (songs.empty()) {
    const bool picture = HasPicture(members);
    return support::Failed(ErrorCode::Malformed,
                           picture ? Sentence::ArchiveWithoutSound : Sentence::ArchiveWithoutPicture, {name});
  }
  SongArchive opened(std::move(archive), name, std::move(songs));
  if (const auto good = opened.Check(opened.Song().sound, kLargestSound); !good) return good.Failure();
  if (const auto good = opened.Check(opened.Song().picture, kLargestPicture); !good) return good.Failure();
  return opened;
}

SongArchive::SongArchive(Zip zip, std::string name, std::vector<SongPair> songs)
    : zip_(std::move(zip)), name_(std::move(name)), songs_(std::move(songs)) {}

support::Result<void> SongArchive::Check(const Member& member, std::int64_t most) const {
  if (member.locked) return support::Failed(ErrorCode::Unsupported, Sentence::ArchiveLocked, {name_});
  const std::string part = files::LastPart(member.name);
  if (member.bytes == 0) {
    return support::Failed(ErrorCode::Empty, Sentence::ArchivePartEmpty, {name_, part});
  }
  if (member.bytes > most) {
    return support::Failed(ErrorCode::Unsupported, Sentence::ArchivePartTooLarge,
                           {name_, part, std::to_string(most >> 20)});
  }
  return {};
}

support::Result<void> SongArchive::Unpack(const Member& member, const Sink& sink) {
  const std::unique_ptr<zip_file_t, MemberCloser> open(zip_fopen_index(zip_.get(), member.place, 0));
  if (open == nullptr) return FailureOf(zip_error_code_zip(zip_get_error(zip_.get())), name_);
  std::vector<char> block(kBlockBytes);
  std::int64_t total = 0;
  for (;;) {
    const zip_int64_t got = zip_fread(open.get(), block.data(), block.size());
    if (got < 0) return FailureOf(zip_error_code_zip(zip_file_get_error(open.get())), name_);
    total += got;
    if (total > member.bytes || (got == 0 && total != member.bytes)) return FailureOf(ZIP_ER_INCONS, name_);
    if (got == 0) return {};
    if (!sink({block.data(), static_cast<std::size_t>(got)})) return FailureOf(ZIP_ER_MEMORY, name_);
  }
}

support::Result<files::PlainFile> SongArchive::UnpackSound() {
  files::MemoryFile memory;
  const auto done = Unpack(Song().sound, [&](std::span<const char> bytes) { return memory.Append(bytes); });
  if (!done) return done.Failure();
  auto file = memory.Take();
  if (!file) return FailureOf(ZIP_ER_MEMORY, name_);
  return std::move(*file);
}

support::Result<std::vector<std::uint8_t>> SongArchive::UnpackPicture() try {
  std::vector<std::uint8_t> picture;
  const auto done = Unpack(Song().picture, [&](std::span<const char> bytes) {
    picture.insert(picture.end(), bytes.begin(), bytes.end());
    return true;
  });
  if (!done) return done.Failure();
  return picture;
} catch (const std::bad_alloc&) {
  return FailureOf(ZIP_ER_MEMORY, name_);
}

}  // namespace platform::archive
