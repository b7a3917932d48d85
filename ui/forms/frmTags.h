// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPointer>
#include <QWidget>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "app/tags/TagStation.h"
#include "catalogue/TagDraft.h"
#include "ui/widgets/Look.h"

class QPushButton;
class QTableView;

namespace ui {

class ElidedLabel;
class ReportList;
class TagCoverPanel;
class TagFieldsPanel;
class TagFilesModel;
class TagToolsPanel;

/// The tag editor: what the tags of some files say, and what they are to say. Nothing is written before a
/// hand says so, and the last writings can be taken back.
///
/// Law: what is typed outlives the contents, which a change of language or colours makes anew. No question
/// and no work stands in another window's way.
class frmTags final : public QWidget {
  Q_OBJECT

 public:
  explicit frmTags(app::TagStation& tags);
  ~frmTags() override;

  /// Makes the contents; points: size of the type.
  void ApplySheet(const Look& look, double points);
  /// Before language or colours go.
  void ClearSheet();
  void BringToFront();
  /// Of other files than before; asks first where something is not written.
  void Edit(std::vector<std::string> files);
  /// With the main window's frame.
  void ShowFrame();
  [[nodiscard]] bool Changed() const { return draft_.Touched() > 0; }
  /// Asks whether to drop what is not written.
  void Leave(std::function<void()> then);

 Q_SIGNALS:
  void Left();

 protected:
  void closeEvent(QCloseEvent* event) override;
  /// Ctrl+Enter, Ctrl+Z and Escape are this window's while it has the keyboard.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  [[nodiscard]] QWidget* MakeBody();
  [[nodiscard]] QWidget* MakeList();
  [[nodiscard]] QWidget* MakeFields();
  [[nodiscard]] QWidget* MakeFoot();
  void Read(std::vector<std::string> files);
  void ReadAgain();
  void Write();
  void Undo();
  void AskRename();
  void Rename();
  void Revert();
  void ShowDraft();
  void ShowState();
  void ShowReport(const app::TagStation::Report& report, const QString& told);
  void Ask(const QString& name, const QString& question, const QString& yes, std::function<void()> then);
  [[nodiscard]] std::vector<std::string> Files() const;
  [[nodiscard]] app::TagStation::Done Answer(void (frmTags::*answer)(const app::TagStation::Report&));
  void Written(const app::TagStation::Report& report);
  void Undone(const app::TagStation::Report& report);
  void Renamed(const app::TagStation::Report& report);
  void WereRead(const app::TagStation::Report& report);

  app::TagStation& tags_;
  catalogue::TagDraft draft_;
  std::optional<Look> look_;
  QString told_;  ///< what came of the last job
  std::vector<std::string> sentences_;
  std::vector<catalogue::TagDraft::File> unwritten_;  ///< as it was typed
  bool keeps_report_ = false;  ///< the reading that is under way only follows another job

  QWidget* body_ = nullptr;
  TagFilesModel* model_ = nullptr;
  TagFieldsPanel* fields_ = nullptr;
  TagCoverPanel* cover_ = nullptr;
  TagToolsPanel* tools_ = nullptr;
  QWidget* right_ = nullptr;
  ReportList* report_ = nullptr;
  ElidedLabel* state_ = nullptr;
  QPushButton* stop_ = nullptr;
  QPushButton* write_ = nullptr;
  QPushButton* undo_ = nullptr;
  QPushButton* revert_ = nullptr;
};

}  // namespace ui
