// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <array>

#include "dmx/ports/DmxInterface.h"
#include "ui/widgets/Look.h"

namespace ui {

/// All channels of the universe as they are on the wire, a cell each in four rows, brighter where there is
/// more light. The channels that have a fader now are framed; a click brings others.
class WireStrip final : public QWidget {
  Q_OBJECT

 public:
  using Levels = std::array<dmx::DmxLevel, dmx::kUniverseChannels>;

  explicit WireStrip(const Look& look, QWidget* parent = nullptr);

  void Show(const Levels& levels);
  /// Channels from 1 on.
  void SetFrame(int first, int count);
  [[nodiscard]] QRect CellOf(int channel) const;

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

 Q_SIGNALS:
  void ChannelWanted(int channel);

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;

 private:
  [[nodiscard]] int ChannelAt(const QPoint& place) const;

  Look look_;
  Levels levels_{};
  int first_ = 1;
  int count_ = 0;
};

}  // namespace ui
