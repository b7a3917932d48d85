// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <chrono>

#include "app/sound/DeckView.h"
#include "ui/skins/Skin.h"

namespace ui {

/// The flag of a mix point on the overview of a track: dragged, moved by the arrow keys, sent back by a
/// double click or the Delete key. Filled once it was moved by hand. The hand takes hold of it on both sides
/// of the point and well below the flag, so that a finger or a quick hand does not seek instead.
class MixHandle final : public QWidget {
  Q_OBJECT

 public:
  MixHandle(app::MixPoint which, const Skin& skin, QWidget* parent);

  void Show(std::chrono::microseconds place, bool moved);
  [[nodiscard]] app::MixPoint Which() const { return which_; }
  /// Where the point itself lies, in the handle's own columns.
  [[nodiscard]] int Stem() const { return stem_; }
  /// Lies over its parent with the point at this column of it.
  void PlaceAt(int column);
  [[nodiscard]] bool Held() const { return held_; }

  [[nodiscard]] QSize sizeHint() const override;

 Q_SIGNALS:
  /// The hand has the point over this column of the parent; it is not set yet.
  void Dragged(int column);
  void Dropped();
  void StepWanted(std::chrono::microseconds step);
  void ResetWanted();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  const app::MixPoint which_;
  const Skin& skin_;
  bool moved_ = false;
  bool held_ = false;
  bool dragged_ = false;
  int stem_ = 0;
  int grip_ = 0;  ///< columns from the point to where the hand took hold
};

}  // namespace ui
