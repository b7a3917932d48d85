// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <array>
#include <vector>

#include "app/lights/LiveLightStation.h"
#include "ui/widgets/Look.h"

class QLabel;
class QPushButton;

namespace ui {

class Fader;
class QuietCombo;

/// What the chosen fixtures do by themselves, and how fast.
class LiveEffects final : public QWidget {
  Q_OBJECT

 public:
  LiveEffects(app::LiveLightStation& live, const Look& look, QWidget* parent = nullptr);

  void ShowFor(const dmx::DMXname& fixtures, const std::vector<int>& targets);
  void Show(const app::LiveView& view);

 private:
  void MakeRates();
  void Switch(dmx::EffectKind kind, bool on);
  /// What runs on the chosen fixtures runs on at the rate and in the size that are set.
  void Retime();
  [[nodiscard]] dmx::LightEffect Effect(dmx::EffectKind kind) const;
  [[nodiscard]] bool Runs(const app::LiveView& view, dmx::EffectKind kind) const;

  app::LiveLightStation& live_;
  Look look_;
  std::array<QPushButton*, dmx::kEffectKinds> kinds_{};
  QuietCombo* rate_;
  Fader* size_;
  QLabel* music_;
  std::vector<dmx::EffectRate> rates_;
  std::vector<int> targets_;
};

}  // namespace ui
