// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "decks/clsMp3Info.h"

/// Whatever a program prints either fills the record with numbers that can be shown, or gives nothing.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  auto info = decks::ParseMp3GainOutput({reinterpret_cast<const char*>(data), size});
  if (!info) return 0;
  if (!info->Analysed() || !std::isfinite(info->RadiodBGain) || !std::isfinite(info->CurrMaxAmp)) abort();
  if (decks::GainText(*info) != "89.0") abort();
  info->AlterDb(1.5);
  if (decks::GainText(*info) != "90.5") abort();
  return 0;
}
