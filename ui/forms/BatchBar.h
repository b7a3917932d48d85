// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

#include "ui/widgets/Look.h"

class QPushButton;

namespace app {
class BatchAnalysis;
struct BatchProgress;
}  // namespace app

namespace ui {

class ElidedLabel;
class ReportList;

/// The analysis of many tracks: where several are chosen, a line with the button that starts it; then how far
/// it is, and what was left out. Line and list are there only while they have something to say.
class BatchBar final : public QWidget {
  Q_OBJECT

 public:
  /// Object names begin with the prefix.
  BatchBar(const QString& prefix, app::BatchAnalysis& analysis, const Look& look, QWidget* parent = nullptr);

  /// So many rows of the list are chosen; not_analysed: it is one, and its tempo is not known for want of an
  /// analysis.
  void Show(int chosen, bool not_analysed = false);

 Q_SIGNALS:
  void Pressed();

 private:
  enum class Line { None, Chosen, NotAnalysed, Running, Paused };
  void ShowLine(Line line);
  void ShowLeftOut(bool over);
  [[nodiscard]] QString TextOf(const app::BatchProgress& progress) const;

  app::BatchAnalysis& analysis_;
  Look look_;
  QPushButton* begin_;
  QWidget* line_;
  ElidedLabel* text_;
  QPushButton* pause_;
  QPushButton* go_on_;
  QPushButton* end_;
  ReportList* report_;
  Line shown_ = Line::None;
  std::size_t left_out_ = 0;
};

/// "3 min left".
[[nodiscard]] QString TimeLeftText(std::chrono::seconds left, const Strings& say);

}  // namespace ui
