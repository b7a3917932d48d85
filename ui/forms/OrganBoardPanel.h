// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <functional>
#include <string>
#include <vector>

#include "app/lights/OrganStation.h"
#include "ui/models/SentEcho.h"
#include "ui/widgets/Look.h"

class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QVBoxLayout;

namespace ui {

class ElidedLabel;
class MessageBoxes;
class QuietCombo;

/// What both sides of the light organ share: the boards, the flash guard and the memories.
class OrganBoardPanel final : public QWidget {
  Q_OBJECT

 public:
  OrganBoardPanel(app::OrganStation& station, MessageBoxes& boxes, const Look& look,
                  QWidget* parent = nullptr);

  void Show(const app::OrganView& view, support::TimePoint now);

 Q_SIGNALS:
  void EditorWanted();

 private:
  void MakeBoards(QVBoxLayout& rows);
  void MakeGuard(QVBoxLayout& rows);
  void MakeMemories(QVBoxLayout& rows);
  void AskToLift();
  void Remember();
  void Recall();
  void Forget();
  /// Those that were listed, by name.
  void ShowMemories();

  app::OrganStation& station_;
  MessageBoxes& boxes_;
  Look look_;
  support::TimePoint now_{};
  QPushButton* use_;
  SentEcho use_echo_;
  QuietCombo* size_;
  ElidedLabel* state_;
  QPushButton* guard_;
  SentEcho guard_echo_;
  QLabel* holds_;
  support::TimePoint held_at_{};
  QListWidget* memories_;
  QLineEdit* name_;
  QPushButton* recall_;
  QPushButton* forget_;
  std::vector<std::string> listed_;
};

}  // namespace ui
