// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "decks/LevelMeter.h"

#include <cassert>
#include <cmath>

namespace decks {

float LevelMeter::Read(std::uint32_t peak, int main_volume) {
  assert(main_volume < 100 && "the master slider ends below 100");
  if (peak == 0) return last_;
  const double plain = 20 * std::log10(static_cast<double>(peak) / 32768);
  last_ = static_cast<float>(plain / ((100.0 - main_volume) / 100));
  return last_;
}

}  // namespace decks
