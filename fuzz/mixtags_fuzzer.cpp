// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "catalogue/FolderRecord.h"
#include "catalogue/MixingTags.h"

namespace {

/// Whatever stands in a tag's text: values that are put into it are found there again, and what is kept of a
/// folder is either read whole or given up.
void CheckBlock(std::string_view block) {
  const catalogue::MixingTags found = catalogue::ScanTextBlock(block);
  const catalogue::MixingTags wanted{"-1.50", "0.500", "180.250", "120.00"};
  const std::string written = catalogue::WithMixingTags(block, wanted);
  if (catalogue::ScanTextBlock(written) != wanted) abort();
  if (catalogue::WithMixingTags(written, wanted) != written) abort();
  for (const auto& value : {found.gain, found.start_mix_point, found.end_mix_point, found.bpm}) {
    if (value && value->size() > block.size()) abort();
  }
}

void CheckRecord(std::string_view bytes) {
  catalogue::FolderRecordReader reader(bytes);
  catalogue::KnownFile file;
  catalogue::FolderRecordWriter again;
  std::size_t files = 0;
  while (reader.Next(file)) {
    if (file.name.size() > bytes.size()) abort();
    again.Add(file);
    ++files;
  }
  const std::string copy = again.Take();
  catalogue::FolderRecordReader second(copy);
  while (second.Next(file)) --files;
  if (files != 0) abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  CheckBlock(bytes);
  CheckRecord(bytes);
  return 0;
}
