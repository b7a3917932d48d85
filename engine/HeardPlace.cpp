// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/HeardPlace.h"

#include <algorithm>
#include <cmath>

namespace engine {
namespace {

constexpr int kPeakMilliseconds = 20;

void TakePlace(HeardPlace& place, const HeardEntry& entry, std::int64_t heard_frame) {
  const std::int64_t into = std::clamp<std::int64_t>(heard_frame - entry.frame, 0, entry.frames);
  place.source =
      static_cast<std::int64_t>(std::floor(entry.source + static_cast<double>(into) * entry.ratio + 1e-6));
  place.place = entry.place;
  place.moved = entry.moved;
  place.ratio = entry.ratio;
  place.ended = entry.ended;
}

}  // namespace

HeardPlace ReadHeardPlace(const Stream& stream, std::int64_t heard_frame, int device_rate) {
  HeardPlace place;
  const std::int64_t oldest = heard_frame - device_rate * kPeakMilliseconds / 1000;
  bool placed = false;
  std::optional<HeardEntry> first;  // the first sound to come, or where it will start
  for (std::uint64_t number = stream.log.Written(); number > 0; --number) {
    const auto entry = stream.log.Read(number - 1);
    if (!entry) break;  // overwritten: older than everything that is still wanted
    if (entry->frame > heard_frame) {
      if (!first || entry->frames > 0) first = entry;
      continue;
    }
    if (!placed) TakePlace(place, *entry, heard_frame);
    placed = true;
    if (entry->frame + entry->frames <= oldest) break;
    if (entry->frame == heard_frame) continue;  // it begins only now
    place.left_peak = std::max(place.left_peak, entry->left_peak);
    place.right_peak = std::max(place.right_peak, entry->right_peak);
  }
  if (!placed && first) TakePlace(place, *first, first->frame);
  return place;
}

}  // namespace engine
