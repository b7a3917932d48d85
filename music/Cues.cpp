// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "music/Cues.h"

#include <algorithm>
#include <utility>

#include "support/CleanLine.h"

namespace music {
namespace {

bool IsPlace(std::chrono::microseconds place) {
  return place >= std::chrono::microseconds(0) && place <= std::chrono::hours(24);
}

}  // namespace

std::string CueName(std::string_view name) {
  return support::CleanLine(name, kLongestCueName);
}

Cues Sound(Cues cues) {
  if (cues.main && !IsPlace(*cues.main)) cues.main.reset();
  for (auto& cue : cues.hot) {
    if (!cue) continue;
    if (!IsPlace(cue->place)) {
      cue.reset();
      continue;
    }
    if (!IsPlace(cue->length)) cue->length = {};
    if (cue->colour < 0 || cue->colour >= kCueColours) cue->colour = 0;
    cue->name = CueName(cue->name);
  }
  return cues;
}

std::shared_ptr<const Cues> Joined(const std::shared_ptr<const Cues>& newer,
                                   const std::shared_ptr<const Cues>& older) {
  if (newer == nullptr || older == nullptr) return newer != nullptr ? newer : older;
  Cues both = *newer;
  if (!both.main) both.main = older->main;
  for (std::size_t i = 0; i < both.hot.size(); ++i) {
    if (!both.hot[i]) both.hot[i] = older->hot[i];
  }
  return std::make_shared<const Cues>(std::move(both));
}

}  // namespace music
