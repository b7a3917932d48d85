// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue/TagDraft.h"
#include "ui/models/TagFilesModel.h"
#include "ui/strings/TagWords.h"
#include "ui/widgets/Look.h"

class QComboBox;
class QHBoxLayout;
class QLineEdit;

namespace ui {

/// Patterns between fields and file names, and repairs of many fields at once. What they make is in the draft
/// and seen in the list before anything is written. Borrows both.
class TagToolsPanel final : public QWidget {
  Q_OBJECT

 public:
  TagToolsPanel(catalogue::TagDraft& draft, TagFilesModel& files, const Look& look,
                QWidget* parent = nullptr);

  /// The list shows what a pattern makes only while that is being typed.
  void ShowChanges();

 Q_SIGNALS:
  void Touched();
  void RenameWanted();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  [[nodiscard]] QLineEdit* MakePattern(const char* name, TagWord word, const char* text);
  [[nodiscard]] QHBoxLayout* MakeRepairs();
  [[nodiscard]] QHBoxLayout* MakeReplacing();
  void ShowPreview(const QObject* pattern);
  void ReadNames();
  [[nodiscard]] std::vector<catalogue::TagField> ChosenFields() const;
  void Repair(const std::function<std::string(std::string_view)>& change);

  catalogue::TagDraft& draft_;
  TagFilesModel& files_;
  Look look_;
  QLineEdit* from_;
  QLineEdit* to_;
  QComboBox* field_ = nullptr;
  QLineEdit* find_ = nullptr;
  QLineEdit* replace_ = nullptr;
};

}  // namespace ui
