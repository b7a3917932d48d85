// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPixmap>
#include <QWidget>
#include <array>

#include "support/Clock.h"
#include "ui/skins/Skin.h"

namespace ui {

/// Two upright bars in dB with peak hold, left and right, and above them a mark that is lit once a channel
/// was overloaded, until somebody clicks the meter.
///
/// Rises at once and falls at a fixed speed. Painted from two prepared pictures, lit and unlit; a new reading
/// repaints only the rows that changed.
class LevelMeter final : public QWidget {
  Q_OBJECT

 public:
  static constexpr float kFloor = -48;  ///< dB, lower end of the bars
  static constexpr float kWarm = -12;   ///< dB, from here yellow
  static constexpr float kHot = -3;     ///< dB, from here red

  explicit LevelMeter(const Skin& skin, QWidget* parent = nullptr);

  /// dB below full scale, as measured now.
  void Show(float left_db, float right_db, support::TimePoint now);
  /// Highest level of the last hold time, of the louder channel, in dB.
  [[nodiscard]] float Peak() const;
  [[nodiscard]] bool Overloaded() const { return overloaded_; }
  void ClearOverload();
  /// What the bars show, in dB.
  [[nodiscard]] std::array<float, 2> Shown() const { return {bars_[0].level, bars_[1].level}; }

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  struct Bar {
    float level;
    float peak;
    support::TimePoint peak_at{};
  };

  void Fall(Bar& bar, float db, support::TimePoint now) const;
  [[nodiscard]] int RowOf(float db) const;
  [[nodiscard]] QRect BarRect(int bar) const;
  [[nodiscard]] QRect MarkRect() const;
  [[nodiscard]] QPixmap Draw(bool lit) const;
  void PaintScale(QPainter& painter) const;

  const Skin& skin_;
  std::array<Bar, 2> bars_;
  support::TimePoint shown_at_{};
  bool overloaded_ = false;
  QPixmap lit_;
  QPixmap unlit_;
};

}  // namespace ui
