// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

#include "ui/widgets/Look.h"

class QLabel;
class QPushButton;

namespace app {
class ListStation;
struct ListView;
}  // namespace app

namespace ui {

class AutomixChoices;
class ElidedLabel;

/// The automatic mixer's switch, how it mixes (a small window at its button), what it goes over to next, and
/// when.
class AutomixLine final : public QWidget {
  Q_OBJECT

 public:
  /// Narrow: what comes next stands below the buttons. Object names begin with the prefix.
  enum class Form { Narrow, Wide };
  AutomixLine(const QString& prefix, app::ListStation& lists, Form form, const Look& look,
              QWidget* parent = nullptr);

  void Show(const app::ListView& lists);

 private:
  [[nodiscard]] QPushButton* MakeSetup(const QString& prefix);
  void PopUpSetup();
  [[nodiscard]] QString NextText(const app::ListView& lists) const;
  [[nodiscard]] QString InText(const app::ListView& lists) const;

  app::ListStation& lists_;
  Look look_;
  QPushButton* automix_;
  QPushButton* setup_;
  QWidget* popup_ = nullptr;
  AutomixChoices* choices_ = nullptr;
  ElidedLabel* next_;
  QLabel* in_;
};

}  // namespace ui
