// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "catalogue/AnalysisParts.h"

/// Any bytes are a part or none; what was read from them and is packed again reads the same.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  if (const auto wave = catalogue::UnpackWave(bytes)) {
    const auto again = catalogue::UnpackWave(catalogue::PackWave(*wave));
    if (!again || again->fine != wave->fine) abort();
  }
  if (const auto grid = catalogue::UnpackGrid(bytes)) {
    const auto again = catalogue::UnpackGrid(catalogue::PackGrid(*grid));
    if (!again || again->Beats().size() != grid->Beats().size()) abort();
  }
  if (const auto facts = catalogue::UnpackFacts(bytes)) {
    const auto again = catalogue::UnpackFacts(catalogue::PackFacts(*facts));
    if (!again || again->mix_points != facts->mix_points) abort();
  }
  return 0;
}
