// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

#include "support/Clock.h"
#include "ui/widgets/Look.h"

class QPushButton;

namespace app {
class MicrophoneStation;
struct MicrophoneView;
}  // namespace app

namespace ui {

class HoldButton;
class LevelBar;

/// The microphone over every page: on and off, its level, and what is held to speak.
class MicrophoneStrip final : public QWidget {
  Q_OBJECT

 public:
  MicrophoneStrip(app::MicrophoneStation& station, const Look& look, QWidget* parent = nullptr);
  ~MicrophoneStrip() override;

  void Show(support::TimePoint now);
  void Toggle();
  /// By a key that is held.
  void Talk(bool held);

 private:
  void ShowSwitch(const app::MicrophoneView& view);

  app::MicrophoneStation& station_;
  Look look_;
  QPushButton* on_;
  LevelBar* level_;
  HoldButton* talk_;
  support::TimePoint overloaded_{};
  bool by_key_ = false;
};

}  // namespace ui
