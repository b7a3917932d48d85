// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPushButton>
#include <QTimer>

#include "ui/widgets/Look.h"

namespace ui {

/// A button that steps once when it is pressed, and again and again while it is held; each has a timer of its
/// own.
class StepButton final : public QPushButton {
  Q_OBJECT

 public:
  /// timer: object name of its timer.
  StepButton(const QString& caption, const QString& timer, QWidget* parent = nullptr);

 Q_SIGNALS:
  void Stepped();
  /// Nothing is held any more.
  void Released();

 private:
  QTimer* repeat_;
};

}  // namespace ui
