// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstddef>
#include <cstdint>

#include "fuzz/PackInput.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::ImportAnything({reinterpret_cast<const char*>(data), size});
  return 0;
}
