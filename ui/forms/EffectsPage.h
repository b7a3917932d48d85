// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>

#include "support/Clock.h"
#include "ui/widgets/Look.h"
#include "ui/widgets/Surface.h"

class QPushButton;
class QStackedWidget;

namespace app {
class EffectStation;
struct WorkstationView;
}  // namespace app

namespace ui {

class EffectRow;

/// The effects of both decks, each deck's in a row; behind a second button the equaliser and how decks are
/// mixed.
class EffectsPage final : public Surface {
  Q_OBJECT

 public:
  /// mixing: the page's other side.
  EffectsPage(app::EffectStation& effects, QWidget* mixing, const Look& look, QWidget* parent = nullptr);

  void Show(const app::WorkstationView& view, support::TimePoint now);

 private:
  void Turn(int side);

  QStackedWidget* sides_;
  std::array<QPushButton*, 2> buttons_{};
  std::array<EffectRow*, 2> rows_{};
};

}  // namespace ui
