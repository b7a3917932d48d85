// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <array>
#include <vector>

#include "app/lights/LiveLightStation.h"
#include "ui/widgets/Look.h"

class QHBoxLayout;
class QLabel;

namespace ui {

class ColourButton;
class Fader;
class QuietCombo;

/// Colour, gobo and direction for the fixtures that are chosen: as much of it as they can do.
class LivePalette final : public QWidget {
  Q_OBJECT

 public:
  explicit LivePalette(const Look& look, QWidget* parent = nullptr);

  void ShowFor(const dmx::DMXname& fixtures, const std::vector<int>& targets);

 Q_SIGNALS:
  void LookWanted(const dmx::LiveLook& look);

 private:
  using Field = std::optional<double> dmx::LiveLook::*;
  /// A fader with its name before it.
  QWidget* Slide(const char* name, AnyWord called, Field field);
  void MakeColours();
  void ShowColours();

  Look look_;
  QHBoxLayout* colours_;
  QLabel* none_;
  QuietCombo* gobo_;
  QWidget* rotation_;
  QWidget* speed_;
  QWidget* pan_;
  QWidget* tilt_;
  std::vector<dmx::PaletteColour> palette_;
  std::array<ColourButton*, 20> fields_{};  ///< those behind the palette are hidden
};

}  // namespace ui
