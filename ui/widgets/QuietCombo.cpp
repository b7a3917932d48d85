// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/QuietCombo.h"

#include <QWheelEvent>

namespace ui {

void QuietCombo::wheelEvent(QWheelEvent* event) {
  event->ignore();
}

}  // namespace ui
