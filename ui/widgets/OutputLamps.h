// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <vector>

#include "ui/skins/Skin.h"

namespace ui {

/// The indicators of a light organ's outputs, side by side: `Led` 1 and up, and below each a bar with a mark.
class OutputLamps final : public QWidget {
  Q_OBJECT

 public:
  struct Led {
    float light = 0;   ///< 0 is the unlit look, `LedBack`; 1 is fully lit
    float level = -1;  ///< of the bar; below 0 there is none
    float mark = -1;   ///< likewise
    bool operator==(const Led&) const = default;
  };

  explicit OutputLamps(const Skin& skin, QWidget* parent = nullptr);

  void Show(std::vector<Led> leds);
  [[nodiscard]] const std::vector<Led>& Leds() const { return leds_; }

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  [[nodiscard]] QRect CellOf(std::size_t led) const;
  void PaintLed(QPainter& painter, const QRect& cell, std::size_t led) const;
  void PaintBar(QPainter& painter, const QRect& cell, const Led& led) const;

  const Skin& skin_;
  std::vector<Led> leds_;
};

}  // namespace ui
