// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/codec/RecordingRepair.h"

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <system_error>
#include <vector>

#include "platform/codec/FlacStream.h"
#include "platform/codec/WavEncoder.h"

namespace platform::codec {
namespace {

namespace fs = std::filesystem;
using Bytes = std::vector<std::uint8_t>;

constexpr std::int64_t kHead = 1 << 16;
constexpr std::int64_t kMostTail = 1 << 26;
constexpr std::int64_t kTail = 1 << 18;  ///< more than the longest frame of a FLAC stream of ours

Bytes ReadAt(std::fstream& file, std::int64_t place, std::int64_t count) {
  Bytes bytes(static_cast<std::size_t>(count));
  file.clear();
  file.seekg(place);
  file.read(reinterpret_cast<char*>(bytes.data()), count);
  bytes.resize(static_cast<std::size_t>(file.gcount()));
  return bytes;
}

void WriteAt(std::fstream& file, std::int64_t place, std::span<const std::uint8_t> bytes) {
  file.clear();
  file.seekp(place);
  file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
  file.flush();
}

/// Gives the size that the file should have.
std::int64_t RepairWav(std::fstream& file, Bytes head, std::int64_t size) {
  const std::size_t data = WavDataPlace(head);
  if (data == 0) return size;
  head.resize(data);
  const int block = std::max(1, head[68] + head[69] * 256);
  const std::int64_t whole = (size - static_cast<std::int64_t>(data)) / block * block;
  PutWavSizes(head, whole);
  WriteAt(file, 0, head);
  return static_cast<std::int64_t>(data) + whole;
}

std::int64_t RepairFlac(std::fstream& file, const Bytes& head, std::int64_t size) {
  const int block = head[8] * 256 + head[9];
  if (block == 0 || block != head[10] * 256 + head[11]) return size;
  std::optional<FlacEnd> end;
  std::int64_t from = size;
  // A stick that was pulled may end in clusters that were never written.
  for (std::int64_t tail = kTail; !end && from > 42 && tail <= kMostTail; tail *= 4) {
    from = std::max<std::int64_t>(size - tail, 42);
    end = FindFlacEnd(ReadAt(file, from, size - from), block);
  }
  if (!end) return size;
  const int bits = ((head[20] & 1) << 4 | head[21] >> 4) + 1;
  WriteAt(file, static_cast<std::int64_t>(kFlacLengthPlace), FlacLength(end->frames, bits));
  return from + static_cast<std::int64_t>(end->place);
}

}  // namespace

void RepairHead(const fs::path& path) {
  std::error_code error;
  const auto size = static_cast<std::int64_t>(fs::file_size(path, error));
  std::fstream file(path, std::ios::in | std::ios::out | std::ios::binary);
  if (error || !file || size < 42) return;
  const Bytes head = ReadAt(file, 0, std::min(size, kHead));
  if (head.size() < 42) return;
  const bool flac = head[0] == 'f' && head[1] == 'L' && head[2] == 'a' && head[3] == 'C';
  const std::int64_t whole = flac ? RepairFlac(file, head, size) : RepairWav(file, head, size);
  file.close();
  if (whole < size) fs::resize_file(path, static_cast<std::uintmax_t>(whole), error);
}

}  // namespace platform::codec
