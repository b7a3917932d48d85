// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

#include "ui/widgets/Look.h"

class QHBoxLayout;
class QPushButton;

namespace ui {

/// A sentence and the buttons below it, in the window's own type, as wide as can be read at a glance. Not
/// modal; it destroys itself when it is closed.
class MessageBox final : public QDialog {
  Q_OBJECT

 public:
  MessageBox(const QString& object_name, const QString& text, QWidget& owner);

  /// Each button closes the box. The last one added has the keyboard.
  QPushButton* AddButton(const QString& object_name, const QString& caption);
  /// Below the middle of its window, where it hides lists and no deck.
  void ShowOverLists(const QWidget& owner);
  [[nodiscard]] const QString& Text() const { return text_; }

 private:
  QString text_;
  QLabel* label_ = nullptr;  ///< null where the text is so long that it scrolls
  QWidget* shown_;
  QHBoxLayout* buttons_;
};

}  // namespace ui
