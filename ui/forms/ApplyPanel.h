// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPointer>
#include <QWidget>
#include <string>

#include "app/ApplyButton.h"
#include "app/Workstation.h"
#include "ui/widgets/Look.h"

class QFileDialog;
class QLineEdit;
class QPushButton;

namespace ui {

class BatchBar;
class ElidedLabel;

/// The music collection: its folder and what is done to it, each act a button beside what it acts on, and how
/// far it is.
class ApplyPanel final : public QWidget {
  Q_OBJECT

 public:
  ApplyPanel(app::Workstation& workstation, const Look& look, QWidget* parent = nullptr);

  void Show();

 Q_SIGNALS:
  /// A scan has ended; a table may be another one.
  void Scanned();

 private:
  [[nodiscard]] QLayout* MakeFolder();
  [[nodiscard]] QLayout* MakeScans();
  [[nodiscard]] std::string Folder() const;
  /// As this system writes paths.
  [[nodiscard]] QString SystemText(const std::string& folder) const;
  void ShowFolder(const std::string& folder);
  void Scan(app::ApplyMode mode);
  void AskForFolder();
  void ShowOutcome(const app::Reindex::Outcome& outcome);

  app::Workstation& workstation_;
  Look look_;
  QLineEdit* folder_ = nullptr;
  std::string shown_folder_;  ///< the bytes behind the text, which need not be text
  QPushButton* cancel_ = nullptr;
  ElidedLabel* progress_ = nullptr;
  BatchBar* analysis_ = nullptr;
  QPointer<QFileDialog> dialog_;
};

}  // namespace ui
