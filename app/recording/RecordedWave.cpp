// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/recording/RecordedWave.h"

#include <algorithm>
#include <cmath>

namespace app {

void RecordedWave::Add(std::chrono::microseconds place, float peak) {
  if (place <= place.zero()) return;
  while ((place.count() - 1) / step.count() >= static_cast<std::int64_t>(kMostColumns)) {
    for (std::size_t i = 0; i < columns.size(); i += 2) {
      columns[i / 2] = std::max(columns[i], columns[std::min(i + 1, columns.size() - 1)]);
    }
    columns.resize((columns.size() + 1) / 2);
    step *= 2;
  }
  const auto column = static_cast<std::size_t>((place.count() - 1) / step.count());
  const auto height = static_cast<std::uint8_t>(std::lround(std::clamp(peak, 0.0F, 1.0F) * 255));
  if (column >= columns.size()) columns.resize(column + 1, height);
  columns[column] = std::max(columns[column], height);
}

}  // namespace app
