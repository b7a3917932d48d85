// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

#include "ui/widgets/Look.h"

class QCheckBox;
class QListWidget;

namespace ui {

/// The fonts there are, each in its own letters. Not modal; what is chosen is told at once, so that it can be
/// seen where it is used.
class FontChooser final : public QDialog {
  Q_OBJECT

 public:
  struct Choice {
    QString family;
    bool bold = false;
    bool italic = false;
  };

  FontChooser(const Choice& present, const Look& look, QWidget* parent);

 Q_SIGNALS:
  void Chosen(const ui::FontChooser::Choice& choice);

 private:
  void Tell();

  QListWidget* families_;
  QCheckBox* bold_;
  QCheckBox* italic_;
};

}  // namespace ui
