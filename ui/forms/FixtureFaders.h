// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <vector>

#include "dmx/FixtureControls.h"
#include "dmx/show.h"
#include "ui/models/LevelMirror.h"
#include "ui/widgets/Look.h"
#include "ui/widgets/Surface.h"

class QHBoxLayout;
class QLabel;
class QPushButton;

namespace ui {

class Fader;
class Pad;

/// The controls of one patched fixture: a colour field, a pad for its direction, and a fader a channel.
class FixtureFaders final : public Surface {
  Q_OBJECT

 public:
  /// position: in the show, from 1. The fixture is copied.
  FixtureFaders(int position, const dmx::DMXfilename& fixture, const Look& look, QWidget* parent = nullptr);

  void ShowLevels(const LevelMirror::Levels& levels);
  void ShowChosen(bool chosen);
  /// To the size of the type that it was given.
  void Fit();
  [[nodiscard]] const dmx::DMXfilename& Fixture() const { return fixture_; }

 Q_SIGNALS:
  /// channel: of the fixture, from 1.
  void LevelMoved(int position, int channel, int level);
  void ColourMoved(int position, const QColor& colour);
  /// Pan and tilt from 0 to 1.
  void DirectionMoved(int position, const QPointF& place);

 private:
  struct Column {
    int channel;
    Fader* fader;
    QLabel* level;
    QPushButton* function;
    QWidget* box;
  };

  QWidget* MakeColumn(int channel);
  void AddPads(QHBoxLayout& row);
  void ShowPresets(int channel, QWidget& under);
  [[nodiscard]] int LevelIn(const LevelMirror::Levels& levels, int channel) const;
  [[nodiscard]] dmx::AxisLevels LevelsOf(const LevelMirror::Levels& levels,
                                         const dmx::AxisChannels& axis) const;
  void ShowPads(const LevelMirror::Levels& levels);

  int position_;
  dmx::DMXfilename fixture_;
  dmx::ColourChannels mix_;
  dmx::AxisChannels pan_;
  dmx::AxisChannels tilt_;
  const Look& look_;
  std::vector<Column> columns_;
  Pad* colour_ = nullptr;
  Pad* direction_ = nullptr;
};

/// "RGB Par 7ch": the name of the file that a fixture was patched from.
[[nodiscard]] QString FixtureTitle(const dmx::DMXfilename& fixture);
/// "1–7": the channels that it holds.
[[nodiscard]] QString FixtureChannels(const dmx::DMXfilename& fixture);

}  // namespace ui
