// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

#include "app/Workstation.h"
#include "ui/strings/ScanWords.h"
#include "ui/widgets/Look.h"

class QPushButton;

namespace ui {

class ElidedLabel;
class ReportList;

/// The analysis of many tracks: the button that starts it, a line that tells how far it is, and what was left
/// out. Line and list are there only while they have something to say.
class BatchBar final : public QWidget {
  Q_OBJECT

 public:
  BatchBar(app::Workstation& workstation, const Look& look, QWidget* parent = nullptr);

  /// Whoever lays out the bar gives it a place.
  [[nodiscard]] QPushButton& Button() { return *button_; }
  void Show();

 Q_SIGNALS:
  void Pressed();

 private:
  QPushButton* MakeButton(const char* name, ScanWord caption, ScanWord tip);
  void ShowState(app::BatchProgress::State state);
  [[nodiscard]] QString TextOf(const app::BatchProgress& progress) const;

  app::Workstation& workstation_;
  Look look_;
  QPushButton* button_;
  QWidget* line_;
  ElidedLabel* text_;
  QPushButton* pause_;
  QPushButton* go_on_;
  QPushButton* end_;
  ReportList* report_;
  app::BatchProgress::State shown_ = app::BatchProgress::State::Idle;
};

/// "3 min left".
[[nodiscard]] QString TimeLeftText(std::chrono::seconds left, const Strings& say);

}  // namespace ui
