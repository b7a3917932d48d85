// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <array>

#include "catalogue/TagDraft.h"
#include "ui/widgets/Look.h"

class QGridLayout;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;

namespace ui {

/// The fields of the tags that are edited, each with a mark once it is touched. Borrows the draft.
class TagFieldsPanel final : public QWidget {
  Q_OBJECT

 public:
  TagFieldsPanel(catalogue::TagDraft& draft, const Look& look, QWidget* parent = nullptr);

  /// What all files say; a field that has the keyboard keeps what is typed.
  void Show();
  /// The same, whatever has the keyboard.
  void ShowAll();

 Q_SIGNALS:
  /// The draft is another one.
  void Touched();

 private:
  struct Line {
    QLineEdit* line = nullptr;
    QPlainTextEdit* text = nullptr;  ///< of the comment, instead of a line
    QPushButton* mark = nullptr;
  };
  void MakeLine(QGridLayout& grid, catalogue::TagField field);
  QWidget* MakeEdit(catalogue::TagField field, Line& made);
  void Type(catalogue::TagField field, const QString& text);
  void ShowLine(std::size_t field);

  catalogue::TagDraft& draft_;
  Look look_;
  std::array<Line, catalogue::kTagFields> lines_;
  bool showing_ = false;
};

}  // namespace ui
