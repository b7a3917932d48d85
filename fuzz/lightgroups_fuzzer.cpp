// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "dmx/LightGroups.h"

/// Any bytes are lines of groups of lights, whatever their check sum would say; what is written of them is
/// whole, and says the same when it is read.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  static_cast<void>(dmx::ParseLightGroups(bytes));
  const std::vector<dmx::LightGroup> groups = dmx::ParseLightGroupLines(bytes);
  const std::string written = dmx::LightGroupsText(groups);
  const auto read = dmx::ParseLightGroups(written);
  if (!read || dmx::LightGroupsText(*read) != written) abort();
  return 0;
}
