// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPointer>
#include <QWidget>
#include <array>

#include "app/ApplyButton.h"
#include "app/Workstation.h"
#include "ui/widgets/Look.h"

class QFileDialog;
class QGridLayout;
class QHBoxLayout;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace ui {

class ColourPanel;
class ElidedLabel;

/// Five things that take longer or are done seldom: an option says which of them the one button does.
class ApplyPanel final : public QWidget {
  Q_OBJECT

 public:
  /// Borrows the colours that it may be told to keep.
  ApplyPanel(app::Workstation& workstation, const ColourPanel& colours, const Look& look,
             QWidget* parent = nullptr);

  void Show();

 Q_SIGNALS:
  /// A scan has ended; a table may be another one.
  void Scanned();

 private:
  void MakeOptions(QGridLayout& grid);
  [[nodiscard]] QHBoxLayout* MakeFolder();
  [[nodiscard]] QHBoxLayout* MakeButtons();
  [[nodiscard]] app::ApplyMode Mode() const;
  [[nodiscard]] std::string Folder() const;
  /// As this system writes paths.
  [[nodiscard]] QString SystemText(const std::string& folder) const;
  void ShowFolder(const std::string& folder);
  void Apply();
  void AskForFolder();
  void ShowOutcome(const app::Reindex::Outcome& outcome);

  app::Workstation& workstation_;
  const ColourPanel& colours_;
  Look look_;
  std::array<QRadioButton*, 6> options_{};
  QLineEdit* folder_ = nullptr;
  std::string shown_folder_;  ///< the bytes behind the text, which need not be text
  QPushButton* apply_ = nullptr;
  QPushButton* cancel_ = nullptr;
  ElidedLabel* progress_ = nullptr;
  QPointer<QFileDialog> dialog_;
};

}  // namespace ui
