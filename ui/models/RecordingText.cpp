// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/models/RecordingText.h"

#include "ui/strings/RecordingWords.h"
#include "ui/strings/Strings.h"

namespace ui {

QString HoursText(std::chrono::microseconds time) {
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(time).count();
  return QStringLiteral("%1:%2:%3")
      .arg(seconds / 3600)
      .arg(seconds / 60 % 60, 2, 10, QLatin1Char('0'))
      .arg(seconds % 60, 2, 10, QLatin1Char('0'));
}

QString SizeText(std::int64_t bytes, const Strings& say) {
  constexpr double kMega = 1e6;
  constexpr double kGiga = 1e9;
  const auto size = static_cast<double>(bytes);
  if (size < kGiga) return say(RecordingWord::Megabytes).arg(size / kMega, 0, 'f', 1);
  return say(RecordingWord::Gigabytes).arg(size / kGiga, 0, 'f', 2);
}

QString RoomText(std::chrono::seconds room, const Strings& say) {
  constexpr std::chrono::hours kInHours{2};
  const auto minutes = std::chrono::duration_cast<std::chrono::minutes>(room).count();
  return room < kInHours ? say.Count(RecordingWord::RoomInMinutes, minutes)
                         : say.Count(RecordingWord::RoomInHours, minutes / 60);
}

}  // namespace ui
