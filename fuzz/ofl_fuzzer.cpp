// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstddef>
#include <cstdint>

#include "fuzz/PackInput.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  (void)platform::fixtures::FixtureReaders().Makers(text);
  fuzz::ImportAnything(text);
  return 0;
}
