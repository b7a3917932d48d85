// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

#include "dmx/ports/NetOutput.h"
#include "ui/widgets/Look.h"

class QComboBox;
class QLineEdit;
class QPushButton;
class QSpinBox;

namespace app {
class LightStation;
}

namespace ui {

/// The button of the lamps behind a network, and the small window at it: protocol, universe, address. What is
/// chosen there holds at once.
class NetChoices final : public QWidget {
  Q_OBJECT

 public:
  NetChoices(app::LightStation& lights, const Look& look, QWidget* parent = nullptr);
  [[nodiscard]] bool Sends() const { return wish_.protocol != dmx::NetWish::Protocol::Off; }

 private:
  [[nodiscard]] QWidget* MakeBox();
  void Choose();
  void ShowWish();

  app::LightStation& lights_;
  Look look_;
  dmx::NetWish wish_;
  QWidget* popup_;
  QPushButton* button_;
  QComboBox* protocol_;
  QSpinBox* universe_;
  QLineEdit* address_;
};

}  // namespace ui
