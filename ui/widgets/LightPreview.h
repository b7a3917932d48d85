// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

#include "dmx/cLights.h"
#include "ui/skins/Skin.h"

namespace ui {

/// The stage as the levels light it: a disc of light for each fixture, with its number below.
class LightPreview final : public QWidget {
  Q_OBJECT

 public:
  enum class Height { Stage, Strip };
  explicit LightPreview(const Skin& skin, Height height = Height::Stage, QWidget* parent = nullptr);

  /// Repaints when something looks different.
  void Show(const dmx::DMXname& fixtures, std::span<const dmx::DmxLevel, dmx::kUniverseChannels> levels);

  /// Position from 1 of the light at a place; 0 where there is none.
  [[nodiscard]] int FixtureAt(const QPoint& place) const;

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 Q_SIGNALS:
  /// A light was clicked: the fixture's position from 1.
  void Chosen(int fixture);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;

 private:
  [[nodiscard]] double FloorHeight() const;

  const Skin& skin_;
  const Height height_;
  dmx::cLights lights_;
};

}  // namespace ui
