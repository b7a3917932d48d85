// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

#include "app/recording/RecordingChoice.h"
#include "ui/widgets/Look.h"

class QFileDialog;
class QGridLayout;
class QLineEdit;

namespace app {
class RecordingStation;
}

namespace ui {

class ElidedLabel;
class QuietCombo;

/// What the next recording is called, where it goes and how it is written; kept at once.
class RecordingChoices final : public QWidget {
  Q_OBJECT

 public:
  RecordingChoices(app::RecordingStation& station, const Look& look, QWidget* parent = nullptr);

 private:
  void AddName(QGridLayout& grid);
  void AddFolder(QGridLayout& grid);
  void AddFormat(QGridLayout& grid);
  void AddFiles(QGridLayout& grid);
  void AskForFolder();
  void Keep();
  void ShowChoice();

  app::RecordingStation& station_;
  Look look_;
  app::RecordingChoice choice_;
  QLineEdit* name_ = nullptr;
  ElidedLabel* folder_ = nullptr;
  QuietCombo* format_ = nullptr;
  QuietCombo* bit_rate_ = nullptr;
  QuietCombo* files_ = nullptr;
  QFileDialog* dialog_ = nullptr;
};

}  // namespace ui
