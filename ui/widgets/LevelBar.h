// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <array>

#include "ui/skins/Skin.h"

namespace ui {

/// Two lying bars in dB, left above right, without a scale, and a mark at their end that stays lit after an
/// overload for as long as the meter that it follows.
class LevelBar final : public QWidget {
  Q_OBJECT

 public:
  explicit LevelBar(const Skin& skin, double ems = 7, QWidget* parent = nullptr);

  /// What the bars show, in dB below full scale; repaints only what differs.
  void Show(const std::array<float, 2>& levels, bool overloaded);
  [[nodiscard]] std::array<float, 2> Shown() const { return levels_; }

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  [[nodiscard]] int ColumnOf(float db) const;

  const Skin& skin_;
  const double ems_;  ///< its width
  std::array<float, 2> levels_;
  bool overloaded_ = false;
};

}  // namespace ui
