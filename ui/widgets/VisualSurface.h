// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

#include "app/ports/Visualisation.h"
#include "support/Clock.h"
#include "ui/skins/Skin.h"

namespace ui {

/// Paints what a visualiser shows. Bars rise at once and fall at a fixed speed.
class VisualSurface final : public QWidget {
  Q_OBJECT

 public:
  explicit VisualSurface(const Skin& skin, QWidget* parent = nullptr);

  /// Repaints only what differs. colour: of the deck that is heard.
  void Show(app::Picture picture, const QColor& colour, support::TimePoint now);
  /// What it shows now.
  [[nodiscard]] const app::Picture& Shown() const { return picture_; }

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void PaintBars(QPainter& painter) const;
  void PaintLine(QPainter& painter) const;

  const Skin& skin_;
  app::Picture picture_;
  QColor colour_;
  support::TimePoint shown_at_{};
};

}  // namespace ui
