// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/models/LevelMirror.h"

namespace ui {
namespace {

constexpr auto kEchoTime = std::chrono::milliseconds(500);

}  // namespace

void LevelMirror::Move(int channel, dmx::DmxLevel level, support::TimePoint now) {
  const auto place = static_cast<std::size_t>(channel - 1);
  levels_[place] = level;
  sent_at_[place] = now;
  sent_[place] = true;
  held_[place] = false;
}

void LevelMirror::Hold(int channel, dmx::DmxLevel level) {
  const auto place = static_cast<std::size_t>(channel - 1);
  levels_[place] = level;
  sent_[place] = false;
  held_[place] = true;
}

bool LevelMirror::Take(const Levels& reported, support::TimePoint now) {
  bool moved = false;
  for (std::size_t place = 0; place < levels_.size(); ++place) {
    if (held_[place]) continue;
    if (reported[place] == levels_[place]) {
      sent_[place] = false;
      continue;
    }
    if (sent_[place] && now - sent_at_[place] < kEchoTime) continue;
    sent_[place] = false;
    levels_[place] = reported[place];
    moved = true;
  }
  return moved;
}

}  // namespace ui
