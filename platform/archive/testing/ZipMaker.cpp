// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/archive/testing/ZipMaker.h"

#include <zip.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace platform::archive::testing {
namespace {

/// An archive that cannot be made is a broken test machine: say so and stop.
void Require(bool done, const char* what) {
  if (done) return;
  std::fprintf(stderr, "ZipMaker: %s\n", what);
  std::abort();
}

void Add(zip_t* archive, const ToPack& member) {
  zip_source_t* source = zip_source_buffer(archive, member.bytes.data(), member.bytes.size(), 0);
  const zip_int64_t place = zip_file_add(archive, member.name.c_str(), source, ZIP_FL_ENC_GUESS);
  Require(place >= 0, "a member is not taken");
  const auto index = static_cast<zip_uint64_t>(place);
  const auto method = member.packing == Packing::Stored ? ZIP_CM_STORE : ZIP_CM_DEFLATE;
  Require(zip_set_file_compression(archive, index, method, 0) == 0, "no such packing");
  if (member.packing != Packing::Locked) return;
  Require(zip_file_set_encryption(archive, index, ZIP_EM_AES_256, "secret") == 0, "no encryption");
}

void Put32(std::string& bytes, std::size_t at, std::uint32_t number) {
  for (std::size_t i = 0; i < 4; ++i) bytes[at + i] = static_cast<char>(number >> 8 * i);
}

// Places in the headers of the format.
constexpr std::string_view kBefore("PK\x03\x04", 4), kInDirectory("PK\x01\x02", 4);
constexpr std::size_t kPackedBefore = 18, kNameBefore = 30, kPackedInDirectory = 20, kNameInDirectory = 46;

/// Of the member's header of that kind.
std::size_t HeaderOf(const std::string& archive, std::string_view mark, std::size_t name_at,
                     std::string_view member) {
  for (std::size_t at = archive.find(mark); at != std::string::npos; at = archive.find(mark, at + 1)) {
    if (std::string_view(archive).substr(at + name_at).starts_with(member)) return at;
  }
  Require(false, "no such member");
  return 0;
}

}  // namespace

std::string ZipBytes(const std::vector<ToPack>& members) {
  zip_error_t error;
  zip_source_t* buffer = zip_source_buffer_create(nullptr, 0, 0, &error);
  zip_t* archive = zip_open_from_source(buffer, ZIP_TRUNCATE, &error);
  Require(archive != nullptr, "no archive");
  zip_source_keep(buffer);
  for (const ToPack& member : members) Add(archive, member);
  Require(zip_close(archive) == 0, "not written");
  zip_stat_t told;
  Require(zip_source_open(buffer) == 0 && zip_source_stat(buffer, &told) == 0, "not readable");
  std::string bytes(told.size, '\0');
  Require(zip_source_read(buffer, bytes.data(), bytes.size()) == static_cast<zip_int64_t>(bytes.size()),
          "not read");
  zip_source_close(buffer);
  zip_source_free(buffer);
  return bytes;
}

std::string WithSize(std::string archive, std::string_view member, SizeField field, std::uint32_t bytes) {
  const std::size_t behind = field == SizeField::Unpacked ? 4 : 0;
  Put32(archive, HeaderOf(archive, kBefore, kNameBefore, member) + kPackedBefore + behind, bytes);
  Put32(archive, HeaderOf(archive, kInDirectory, kNameInDirectory, member) + kPackedInDirectory + behind,
        bytes);
  return archive;
}

std::string WithDamage(std::string archive, std::string_view member, std::size_t at) {
  const std::size_t header = HeaderOf(archive, kBefore, kNameBefore, member);
  std::uint16_t extra = 0;
  std::memcpy(&extra, archive.data() + header + kNameBefore - 2, sizeof extra);
  char& byte = archive[header + kNameBefore + member.size() + extra + at];
  byte = static_cast<char>(byte ^ 0x10);
  return archive;
}

}  // namespace platform::archive::testing
