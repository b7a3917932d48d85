// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

#include "app/files/IntakeOutcome.h"
#include "ui/widgets/Look.h"

class QProgressBar;
class QPushButton;

namespace ui {

class ElidedLabel;

/// How far files are on their way into a list, with a button that stops them; then what came of them. There
/// only while it has something to say.
class AddingBar final : public QWidget {
  Q_OBJECT

 public:
  /// Object names of its parts begin with this one. Narrow: text and button stand above the bar.
  enum class Width { Wide, Narrow };
  AddingBar(const QString& name, Width width, const Look& look, QWidget* parent = nullptr);

  /// Once a frame.
  void Show(const app::AddingProgress& progress);
  void Tell(const QString& sentence);
  /// Of an order that is done, as far as it is not told by its rows: what was there already, what went to the
  /// karaoke songs, that it was stopped.
  [[nodiscard]] QString TextOf(const app::IntakeOutcome& outcome) const;

 Q_SIGNALS:
  void StopWanted();

 private:
  Look look_;
  ElidedLabel* text_;
  QProgressBar* bar_;
  QPushButton* stop_;
  bool adding_ = false;
};

}  // namespace ui
