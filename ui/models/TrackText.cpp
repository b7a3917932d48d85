// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/models/TrackText.h"

#include "catalogue/track_table.h"
#include "ui/strings/Decode.h"

namespace ui {

QString TitleText(std::string_view title, std::string_view filename) {
  if (!title.empty()) return Decode(title);
  return Decode(filename.substr(filename.find_last_of("/\\") + 1));
}

bool WasAnalysed(const catalogue::track_table& table, int row) {
  namespace column = catalogue::track;
  return !table.Cell(row, column::kBpm).empty() || !table.Cell(row, column::kStartMixPoint).empty() ||
         !table.Cell(row, column::kEndMixPoint).empty();
}

}  // namespace ui
