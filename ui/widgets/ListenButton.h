// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPushButton>

#include "ui/skins/Skin.h"

namespace ui {

/// Headphones of a deck: a click switches them, a drag to the side or the arrow keys set their level, which
/// the button shows as a bar and a number.
class ListenButton final : public QPushButton {
  Q_OBJECT

 public:
  ListenButton(const QString& caption, const Skin& skin, const QColor& accent, QWidget* parent = nullptr);

  /// 0 to 100.
  void SetLevel(int level);
  [[nodiscard]] int Level() const { return level_; }

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

 Q_SIGNALS:
  /// By the hand.
  void LevelMoved(int level);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void Move(int level);

  const Skin& skin_;
  QColor accent_;
  int level_ = 100;
  int grabbed_at_ = 0;
  int grabbed_level_ = 0;
  bool dragged_ = false;
};

}  // namespace ui
