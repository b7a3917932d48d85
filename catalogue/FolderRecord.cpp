// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/FolderRecord.h"

#include <utility>

namespace catalogue {
namespace {

constexpr char kVersion = 1;
constexpr std::uint64_t kPlayable = 1;

}  // namespace

FolderRecordWriter::FolderRecordWriter() : bytes_(1, kVersion) {}

/// Seven bits a byte, the lowest first; the top bit stands for "more follows".
void FolderRecordWriter::AddNumber(std::uint64_t number) {
  for (; number >= 0x80; number >>= 7) bytes_.push_back(static_cast<char>((number & 0x7F) | 0x80));
  bytes_.push_back(static_cast<char>(number));
}

void FolderRecordWriter::AddText(std::string_view text) {
  AddNumber(text.size());
  bytes_ += text;
}

void FolderRecordWriter::Add(const KnownFile& file) {
  AddText(file.name);
  AddNumber(static_cast<std::uint64_t>(file.stamp.size));
  AddNumber(static_cast<std::uint64_t>(file.stamp.modified));
  AddNumber(file.playable ? kPlayable : 0);
  if (!file.playable) return;
  for (const std::string_view cell : file.cells) AddText(cell);
}

FolderRecordReader::FolderRecordReader(std::string_view bytes) : rest_(bytes) {
  if (rest_.empty() || rest_.front() != kVersion) {
    rest_ = {};
  } else {
    rest_.remove_prefix(1);
  }
}

bool FolderRecordReader::TakeNumber(std::uint64_t& number) {
  number = 0;
  for (int shift = 0; shift < 64 && !rest_.empty(); shift += 7) {
    const auto byte = static_cast<unsigned char>(rest_.front());
    rest_.remove_prefix(1);
    number |= static_cast<std::uint64_t>(byte & 0x7F) << shift;
    if ((byte & 0x80) == 0) return true;
  }
  return false;
}

bool FolderRecordReader::TakeText(std::string_view& text) {
  std::uint64_t size = 0;
  if (!TakeNumber(size) || size > rest_.size()) return false;
  text = rest_.substr(0, size);
  rest_.remove_prefix(size);
  return true;
}

bool FolderRecordReader::Next(KnownFile& file) {
  std::uint64_t size = 0, modified = 0, kind = 0;
  bool good = TakeText(file.name) && TakeNumber(size) && TakeNumber(modified) && TakeNumber(kind);
  file.stamp = {static_cast<std::int64_t>(size), static_cast<std::int64_t>(modified)};
  file.playable = kind == kPlayable;
  file.cells = {};
  for (std::size_t i = 0; good && file.playable && i < file.cells.size(); ++i) good = TakeText(file.cells[i]);
  if (!good) rest_ = {};
  return good;
}

}  // namespace catalogue
