// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

#include "ui/widgets/Surface.h"

namespace ui {

/// A ground onto which files may be dropped.
class DropSurface : public Surface {
  Q_OBJECT

 public:
  using Surface::Surface;

 Q_SIGNALS:
  /// Files to be taken in.
  void FilesWanted(std::vector<std::string> paths);

 protected:
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragLeaveEvent(QDragLeaveEvent* event) override;
  void dropEvent(QDropEvent* event) override;
};

}  // namespace ui
