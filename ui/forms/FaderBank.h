// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <array>
#include <vector>

#include "app/lights/LightStation.h"
#include "ui/models/ChannelText.h"
#include "ui/widgets/Look.h"

namespace ui {

class ChannelFader;
class FixtureLine;

/// As many faders of the universe as are shown at a time, under the names of their fixtures.
class FaderBank final : public QWidget {
  Q_OBJECT

 public:
  static constexpr int kMostFaders = 32;

  explicit FaderBank(const Look& look, QWidget* parent = nullptr);

  /// 16 or 32 of them, each with a colour of its own.
  void SetColours(const std::vector<QColor>& colours);
  /// The faders begin with this channel, or as near to it as the universe allows.
  void ShowFrom(int channel);
  void Page(int by) { ShowFrom(first_ + by * size_); }
  void Show(const app::LightView& view, support::TimePoint now);

  [[nodiscard]] int First() const { return first_; }
  [[nodiscard]] int Size() const { return size_; }

 Q_SIGNALS:
  void FaderMoved(int channel, int level);
  void Scrolled();

 private:
  void MakeFader(int place);
  void Label();
  void PlaceNames();
  /// The keyboard goes to the fader beside the one that has it, and the bank with it.
  void Step(int place, int by);
  /// The one that the Tab key stops at; the arrows reach the others.
  void SetStop(int place);

  Look look_;
  FixtureLine* names_;
  std::array<ChannelFader*, kMostFaders> faders_{};
  std::shared_ptr<const app::StagePatch> patch_;
  std::vector<QColor> colours_;  ///< of channels that nobody has, by place
  std::vector<FixtureSpan> spans_;
  QRect placed_;  ///< of the last fader, when the names were placed
  int first_ = 1;
  int size_ = kMostFaders;
};

}  // namespace ui
