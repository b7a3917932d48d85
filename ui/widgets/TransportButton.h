// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPushButton>

#include "ui/skins/Skin.h"

class QPainterPath;

namespace ui {

/// A button of the transport, with a symbol that is drawn, never less than 36 pixels in both directions.
class TransportButton final : public QPushButton {
  Q_OBJECT

 public:
  enum class Symbol { ToStart, Play, Pause, Stop };
  enum class Size { Normal, Wide };

  TransportButton(const Skin& skin, const QColor& accent, Symbol symbol, Size size,
                  QWidget* parent = nullptr);

  void SetSymbol(Symbol symbol);
  /// Filled with the accent: what the button stands for is going on.
  void SetLit(bool lit);
  [[nodiscard]] Symbol Shown() const { return symbol_; }

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  [[nodiscard]] QPainterPath Outline(const QRectF& box) const;

  const Skin& skin_;
  QColor accent_;
  Symbol symbol_;
  Size size_;
  bool lit_ = false;
};

}  // namespace ui
