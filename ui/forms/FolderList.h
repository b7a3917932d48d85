// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPointer>
#include <QWidget>
#include <string>
#include <vector>

#include "ui/widgets/Look.h"

class QFileDialog;
class QListWidget;
class QPushButton;

namespace support {
class Settings;
}  // namespace support

namespace ui {

/// The music folders that are scanned after the one of the text box.
class FolderList final : public QWidget {
  Q_OBJECT

 public:
  FolderList(support::Settings& settings, const Look& look, QWidget* parent = nullptr);

 private:
  void Fill(const std::vector<std::string>& folders);
  [[nodiscard]] std::vector<std::string> Folders() const;
  void AskForFolder();
  void Add(const std::string& folder);
  void RemoveChosen();
  void Store(const std::vector<std::string>& folders);

  support::Settings& settings_;
  Look look_;
  QListWidget* list_ = nullptr;
  QPushButton* remove_ = nullptr;
  QPointer<QFileDialog> dialog_;
};

}  // namespace ui
