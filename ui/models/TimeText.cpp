// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/models/TimeText.h"

#include "support/Text.h"

namespace ui {

QString MinutesText(std::chrono::microseconds time) {
  return QString::fromStdString(
      support::FormatMinutes(std::chrono::duration_cast<std::chrono::seconds>(time).count()));
}

QString FineTimeText(std::chrono::microseconds time) {
  const auto rest = time % std::chrono::seconds(1) / std::chrono::milliseconds(1);
  return MinutesText(time) + QStringLiteral(".%1").arg(rest, 3, 10, QLatin1Char('0'));
}

}  // namespace ui
