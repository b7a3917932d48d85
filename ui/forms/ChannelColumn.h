// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <array>

#include "dmx/fixture.h"
#include "ui/widgets/Look.h"

class QLabel;
class QLineEdit;
class QPushButton;

namespace ui {

class Fader;

/// One channel of a fixture: its slider, the button of its function, its label.
class ChannelColumn final : public QWidget {
  Q_OBJECT

 public:
  static constexpr double kWidthEms = 9;

  explicit ChannelColumn(const Look& look, QWidget* parent = nullptr);

  /// Of the fixture's channel, from 1.
  void SetNumber(int number);
  [[nodiscard]] int Number() const { return number_; }
  /// Where the Tab key stops, in this order.
  [[nodiscard]] std::array<QWidget*, 4> Stops() const;

  enum class Slider { Hidden, Shown };
  void Show(const dmx::FixtureChannel& channel, int dmx_channel);
  void ShowChosen(bool chosen);
  void ShowLevel(int level);
  void ShowSlider(Slider slider);

 Q_SIGNALS:
  void Chosen(int number);
  void LevelMoved(int number, int level);
  void FunctionChosen(int number, dmx::ChannelFunction function);
  void Labelled(int number, const QString& label);
  /// What was typed is done.
  void Settled();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void MakeSlider();
  void MakeFunction();
  void MakeLabel();
  void ShowFunctions();
  void ShowFunctionTip();
  void ShowLabelTip();

  int number_ = 0;
  const Look& look_;
  QPushButton* head_;
  QLabel* counter_;
  Fader* slider_;
  QLabel* level_;
  QPushButton* function_;
  QLineEdit* label_;
  int shown_function_ = -1;
};

}  // namespace ui
