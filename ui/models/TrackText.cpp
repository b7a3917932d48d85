// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/models/TrackText.h"

#include "ui/strings/Decode.h"

namespace ui {

QString TitleText(std::string_view title, std::string_view filename) {
  if (!title.empty()) return Decode(title);
  return Decode(filename.substr(filename.find_last_of("/\\") + 1));
}

}  // namespace ui
