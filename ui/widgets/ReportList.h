// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <string>
#include <vector>

#include "ui/widgets/Look.h"

class QPlainTextEdit;

namespace ui {

/// Sentences about what was left out, under a head line, until somebody closes them; hidden without any.
class ReportList final : public QWidget {
  Q_OBJECT

 public:
  /// Object names of its parts begin with this one.
  ReportList(const QString& name, const Look& look, QWidget* parent = nullptr);

  /// Hides the list when there is no sentence.
  void Show(const QString& head, const std::vector<std::string>& sentences);

 private:
  QLabel* head_;
  QPlainTextEdit* list_;
};

}  // namespace ui
