// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/songs/SongView.h"

#include <algorithm>

namespace app {

std::chrono::microseconds HeardPlace::HeardAt(support::TimePoint now) const {
  // A conductor that stands still must not make the words run away.
  constexpr support::Duration kFurthest = std::chrono::milliseconds(100);
  const support::Duration since = std::clamp(now - at, support::Duration(0), kFurthest);
  const auto gone = std::chrono::duration<double, std::micro>(since) * speed;
  return std::min(position + std::chrono::duration_cast<std::chrono::microseconds>(gone),
                  std::max(length, position));
}

std::chrono::microseconds SongView::HeardAt(support::TimePoint now) const {
  return HeardPlace{position, at, speed, length}.HeardAt(now);
}

}  // namespace app
