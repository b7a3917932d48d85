// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QWidget>

namespace ui {

/// The ground that a part of the window stands on, with a stripe in the part's own colour along its top.
class Surface : public QWidget {
  Q_OBJECT

 public:
  explicit Surface(QColor ground, QWidget* parent = nullptr);

  void SetStripe(const QColor& colour);
  /// A frame while something that can be dropped here hovers over it.
  void SetWelcoming(bool welcoming);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QColor ground_;
  QColor stripe_;
  bool welcoming_ = false;
};

}  // namespace ui
