// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <array>
#include <functional>

#include "app/lights/OrganStation.h"
#include "ui/models/SentEcho.h"
#include "ui/widgets/LevelFader.h"
#include "ui/widgets/Look.h"

class QBoxLayout;
class QHBoxLayout;
class QLabel;
class QPushButton;
class QStackedWidget;

namespace ui {

class ElidedLabel;
class Fader;
class OutputLamps;
class PatternGrid;

/// One side of the light organ: its modes, its lamps, and what the running mode lets a hand do.
class OrganSidePanel final : public QWidget {
  Q_OBJECT

 public:
  OrganSidePanel(lightorgan::Side side, app::OrganStation& station, const Look& look,
                 QWidget* parent = nullptr);

  void Show(const app::OrganView& view, support::TimePoint now);
  /// The greatest number among the banks that can be chosen.
  void SetHighestBank(int bank);

 private:
  /// A fader that follows the view but when a hand has just moved it.
  using Command = void (lightorgan::LightOrgan::*)(int);
  using OutputCommand = void (lightorgan::LightOrgan::*)(int output, int value);

  [[nodiscard]] bool Io() const { return side_ == lightorgan::Side::Io; }
  void MakeModes(QHBoxLayout& row);
  [[nodiscard]] QWidget* MakeSliders();
  [[nodiscard]] QWidget* MakeButtons();
  [[nodiscard]] QWidget* MakeBeat();
  [[nodiscard]] LevelFader MakeFader(const QString& name, Qt::Orientation orientation, int highest);
  void MakeRunning(QHBoxLayout& row);
  void Send(Command command, int value);

  void ShowModes(const lightorgan::LightOrganView& lamps);
  void ShowLamps(const lightorgan::LightOrganView& lamps);
  void ShowOutputs(const lightorgan::LightOrganView& lamps);
  void ShowRunning(const app::OrganView& view);
  void Follow(LevelFader& moved, int reported, const QString& text);
  [[nodiscard]] QString StateText(const app::OrganView& view) const;
  [[nodiscard]] int ModeOf(const lightorgan::LightOrganView& lamps) const;

  lightorgan::Side side_;
  app::OrganStation& station_;
  Look look_;
  support::TimePoint now_{};
  std::array<QPushButton*, lightorgan::kModeButtons> modes_{};
  SentEcho mode_echo_;
  OutputLamps* lamps_;
  QStackedWidget* stack_;
  std::array<LevelFader, lightorgan::kMostOutputs> sliders_;
  std::array<QWidget*, lightorgan::kMostOutputs> columns_{};
  std::array<QPushButton*, lightorgan::kMostOutputs> buttons_{};
  std::array<SentEcho, lightorgan::kMostOutputs> button_echoes_;
  PatternGrid* pattern_;
  ElidedLabel* beat_ = nullptr;
  LevelFader speed_, bank_;
  ElidedLabel* state_;
};

}  // namespace ui
