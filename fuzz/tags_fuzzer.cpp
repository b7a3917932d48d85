// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "catalogue/AddFile.h"
#include "platform/tags/TagLibTagReader.h"

/// Any bytes are either refused or give a row with a length and a rate that can be shown.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const auto tags = platform::tags::ReadTags(bytes, "input.bin");
  if (!tags) return tags.Failure().text.empty() ? abort(), 1 : 0;
  if (tags.Value().sample_rate <= 0 || tags.Value().duration.count() < 0) abort();
  const auto row = catalogue::TrackRow("input.bin", tags.Value());
  if (row[0] != tags.Value().artist) abort();
  return 0;
}
