// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/models/DroppedFiles.h"

#include <QMimeData>
#include <QUrl>

#include "ui/strings/Decode.h"

namespace ui {

std::vector<std::string> DroppedFiles(const QMimeData& data) {
  std::vector<std::string> paths;
  for (const QUrl& url : data.urls()) {
    if (std::string path = PathBytes(url); !path.empty()) paths.push_back(std::move(path));
  }
  return paths;
}

}  // namespace ui
