// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <array>

#include "app/lights/LiveLightStation.h"
#include "ui/widgets/Look.h"

class QHBoxLayout;
class QLabel;
class QPushButton;

namespace ui {

class LiveEffects;
class LiveGroups;
class LivePalette;

/// Light with one touch: groups of fixtures, what they look like and do, and what lasts while it is held.
class LiveConsole final : public QWidget {
  Q_OBJECT

 public:
  LiveConsole(app::LiveLightStation& live, const Look& look, QWidget* parent = nullptr);

  void Show();
  /// As a click on the fixture's column.
  void ChooseFixture(int position);

 Q_SIGNALS:
  void ShowEditorWanted();

 private:
  QWidget* MakeEmpty();
  QHBoxLayout* MakeHolds();
  void Steer();
  void Hold(std::size_t what);

  app::LiveLightStation& live_;
  Look look_;
  QWidget* empty_;
  QWidget* steering_;
  LiveGroups* groups_;
  LivePalette* palette_;
  LiveEffects* effects_;
  std::array<QPushButton*, app::kLightHolds> latches_{};
  std::array<bool, app::kLightHolds> pressed_{};
  bool shown_ = false;
};

}  // namespace ui
