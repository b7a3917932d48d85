// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <functional>
#include <vector>

#include "app/lights/OrganStation.h"
#include "ui/models/BankModel.h"
#include "ui/strings/BankWords.h"
#include "ui/widgets/Look.h"

class QHBoxLayout;
class QLabel;
class QListWidget;
class QPushButton;
class QTableView;
class QVBoxLayout;

namespace ui {

class ElidedLabel;
class MessageBoxes;
class QuietCombo;

/// A window of its own that edits the pattern banks of the four files and plays one of them meanwhile.
class BankEditor final : public QDialog {
  Q_OBJECT

 public:
  /// size: of the boards there are, whose files are offered first.
  BankEditor(app::OrganStation& station, MessageBoxes& boxes, BankDraft& draft, const Look& look,
             lightorgan::IoBoardSize size, QWidget* parent);
  ~BankEditor() override;

  /// Reads the file unless changes of it wait to be saved.
  void Open();
  void Show(const app::OrganView& view);
  /// Asks first where changes are not saved.
  void reject() override;

 Q_SIGNALS:
  void Saved();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct File {
    lightorgan::Side side;
    lightorgan::IoBoardSize size;
  };
  using StepAct = void (BankEditor::*)(std::size_t step);

  [[nodiscard]] QVBoxLayout* MakeBanks(lightorgan::IoBoardSize size);
  [[nodiscard]] QVBoxLayout* MakeSteps();
  void MakeTable();
  [[nodiscard]] QHBoxLayout* MakeEnd();
  [[nodiscard]] QPushButton* MakeButton(const char* name, BankWord caption, BankWord tip,
                                        std::function<void()> pressed);
  [[nodiscard]] File Chosen() const;
  [[nodiscard]] std::size_t ChosenBank() const;
  /// Then, at once, or when the user lets the changes go.
  void Leave(std::function<void()> then);

  void ChooseFile();
  void Read();
  void Save();
  void Close();
  void OnSteps(StepAct act);
  void AddStep(std::size_t step);
  void CopyStep(std::size_t step);
  void RemoveStep(std::size_t step);
  void StepUp(std::size_t step);
  void StepDown(std::size_t step);
  void ChooseStep(std::size_t step);
  void RemoveBank();
  void ShowBanks(std::size_t chosen);
  void ShowSteps();
  void Place();
  void SizeColumns();
  void Changed();
  void ShowActs();
  void Play(bool on);
  void Try();
  void Tell(const QString& sentence, const QColor& colour);

  app::OrganStation& station_;
  MessageBoxes& boxes_;
  BankDraft& draft_;
  Look look_;
  BankModel model_;
  QuietCombo* file_;
  QListWidget* banks_;
  QTableView* steps_;
  std::vector<QPushButton*> bank_acts_, step_acts_;
  QPushButton* play_;
  QPushButton* save_;
  ElidedLabel* message_;
  int shown_file_ = 0;
  int edits_ = 0;
  bool playing_ = false;
  bool seen_playing_ = false;  ///< since Play was pressed
  bool fits_boards_ = true;    ///< the file is for as many boards as there are
};

}  // namespace ui
