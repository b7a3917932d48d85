// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <array>

#include "ui/skins/Skin.h"

namespace ui {

/// The ten bands of the equaliser as columns of equal width: a handle for each slider, and for each deck the
/// curve of what its bands do to the sound. A handle is dragged, or moved by the arrow keys.
///
/// Between the centres of the bands the frequencies lie evenly on a logarithmic scale.
class EqGraph final : public QWidget {
  Q_OBJECT

 public:
  using Gains = std::array<float, 10>;
  /// Of a deck; no sample rate: nothing is loaded.
  struct Curve {
    Gains gains{};
    int sample_rate = 0;
    bool operator==(const Curve&) const = default;
  };

  /// Inside: the centres of the bands stand in the graph itself.
  enum class Captions { Inside, None };

  EqGraph(Captions captions, const Skin& skin, QWidget* parent = nullptr);

  /// Sliders in dB. Repaints only when something is another one.
  void Show(const std::array<int, 10>& sliders, const std::array<Curve, 2>& curves);
  /// Text for a band's centre: "80 Hz", "1 kHz".
  [[nodiscard]] static QString BandText(int band);
  /// Centre of a band's handle.
  [[nodiscard]] QPoint HandleAt(int band) const;

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 Q_SIGNALS:
  /// band: 0 to 9.
  void GainWanted(int band, int decibels);

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  [[nodiscard]] double RowOf(double decibels) const;
  /// Of the graph without its captions.
  [[nodiscard]] int GraphHeight() const;
  void PaintCaptions(QPainter& painter) const;
  [[nodiscard]] int BandAt(int column) const;
  [[nodiscard]] double FrequencyAt(double column) const;
  void Want(int band, int decibels);
  void PaintCurve(QPainter& painter, const Curve& curve, QPen pen) const;

  const Captions captions_;
  const Skin& skin_;
  std::array<int, 10> sliders_{};
  std::array<Curve, 2> curves_;
  int band_ = 0;       ///< that the keys move
  bool held_ = false;  ///< by the pointer
  int held_at_ = 0;
  int held_gain_ = 0;
};

}  // namespace ui
