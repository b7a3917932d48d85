// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

#include "support/Clock.h"
#include "ui/models/SentEcho.h"
#include "ui/widgets/Look.h"

class QPushButton;

namespace app {
class HeadphoneStation;
struct WorkstationView;
}  // namespace app

namespace ui {

class Knob;

/// What the headphones hear, in one row: how much of the hall, whether each ear has its own, and how loud.
class HeadphoneStrip final : public QWidget {
  Q_OBJECT

 public:
  HeadphoneStrip(app::HeadphoneStation& headphones, const Look& look, QWidget* parent = nullptr);

  void Show(const app::WorkstationView& view, support::TimePoint now);

 private:
  void TellTips();

  app::HeadphoneStation& headphones_;
  Look look_;
  support::TimePoint now_{};
  bool device_ = false;
  bool hall_ = false;  ///< can be heard in them
  Knob* mix_;
  QPushButton* split_;
  Knob* level_;
  SentEcho mix_echo_, level_echo_;
};

}  // namespace ui
