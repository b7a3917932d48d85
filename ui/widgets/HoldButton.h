// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPushButton>

namespace ui {

/// A button for what lasts as long as it is held: by the mouse, wherever the hand drifts to meanwhile, or by
/// the space bar. It lets go by itself when it is switched off, hidden or loses the keyboard.
class HoldButton final : public QPushButton {
  Q_OBJECT

 public:
  explicit HoldButton(const QString& caption, QWidget* parent = nullptr);

  [[nodiscard]] bool IsHeld() const { return held_; }

 Q_SIGNALS:
  void Held(bool held);

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void Hold(bool held);

  bool held_ = false;
};

}  // namespace ui
