// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QSlider>

#include "dmx/ports/DmxInterface.h"
#include "support/Clock.h"
#include "ui/models/SentEcho.h"
#include "ui/skins/Skin.h"

namespace ui {

/// A fader of the light console: the counter label with the DMX channel that it drives, the level, what the
/// channel is for, and beside the groove what of it is on the wire.
///
/// It moves with the pointer from wherever it is touched. Arrows, page keys, Home and End move it; three
/// digits, or fewer and Enter, set a level; a double click goes to the other end.
class ChannelFader final : public QSlider {
  Q_OBJECT

 public:
  explicit ChannelFader(const Skin& skin, QWidget* parent = nullptr);

  /// purpose: a word or two, written along the groove; may be empty.
  void SetChannel(int channel, const QString& purpose);
  void SetColour(const QColor& colour);
  [[nodiscard]] int Channel() const { return channel_; }
  [[nodiscard]] const QString& Purpose() const { return purpose_; }
  [[nodiscard]] const QColor& Colour() const { return colour_; }

  /// What the universe says; a hand on the fader is not pulled away by it.
  void Show(dmx::DmxLevel level, dmx::DmxLevel on_the_wire, support::TimePoint now);
  /// As the counter label above the groove shows it: the level, or the digits typed so far.
  [[nodiscard]] QString ValueText() const;

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 Q_SIGNALS:
  /// By hand.
  void Moved(int channel, int level);
  /// Left or right, to another fader.
  void StepWanted(int by);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void sliderChange(SliderChange change) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;

 private:
  [[nodiscard]] QRect Body() const;    ///< value, groove and number, in the middle of a wide strip
  [[nodiscard]] QRect Groove() const;  ///< with the handle's half above and below
  [[nodiscard]] QRect Head() const;
  [[nodiscard]] QRect Foot() const;
  /// A line of the strip, with its middle above the middle of the groove.
  [[nodiscard]] QRect OverGroove(QRect line) const;
  [[nodiscard]] int RowOf(int level) const;
  [[nodiscard]] int HandleHeight() const;
  void PaintGroove(QPainter& painter) const;
  void PaintPurpose(QPainter& painter) const;
  void PaintWire(QPainter& painter) const;
  void Type(const QString& digit);
  void TakeTyped();
  void DropTyped();

  const Skin& skin_;
  QColor colour_;
  int channel_ = 0;
  QString purpose_;
  dmx::DmxLevel wire_ = 0;
  int painted_ = 0;  ///< value that stands on the screen
  QString typed_;
  int grabbed_at_ = 0;
  int grabbed_value_ = 0;
  SentEcho echo_;
  support::TimePoint now_{};
};

}  // namespace ui
