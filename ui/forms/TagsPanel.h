// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

#include "ui/strings/ScanWords.h"
#include "ui/widgets/Look.h"

class QCheckBox;
class QGridLayout;
class QLabel;
class QLineEdit;

namespace support {
class Settings;
}  // namespace support

namespace ui {

class QuietCombo;

/// How file names tell artist and title, with an example, and whether tags are written. Each choice is stored
/// at once and counts from the next scan on.
class TagsPanel final : public QWidget {
  Q_OBJECT

 public:
  TagsPanel(support::Settings& settings, const Look& look, QWidget* parent = nullptr);

 private:
  void MakeOrder(QGridLayout& grid);
  void MakeSeparator(QGridLayout& grid);
  QCheckBox* MakeFlag(const char* key, ScanWord caption, ScanWord tip);
  void ShowExample();

  support::Settings& settings_;
  Look look_;
  QuietCombo* order_;
  QLineEdit* separator_;
  QCheckBox* use_split_;
  QCheckBox* use_artist_;
  QLabel* example_;
};

}  // namespace ui
