// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "app/sound/DeckView.h"
#include "support/Clock.h"
#include "ui/widgets/Look.h"
#include "ui/widgets/Surface.h"

namespace app {
class EffectStation;
}

namespace ui {

class EffectUnit;

/// The effects of a deck side by side, in the order in which its sound goes through them.
class EffectRow final : public Surface {
  Q_OBJECT

 public:
  EffectRow(int deck, app::EffectStation& effects, const Look& look, QWidget* parent = nullptr);

  void Show(const app::DeckView& view, support::TimePoint now);

 protected:
  /// With the chain from one to the next.
  void paintEvent(QPaintEvent* event) override;

 private:
  const Skin& skin_;
  const QColor accent_;
  QWidget* badge_ = nullptr;
  std::vector<EffectUnit*> units_;
};

}  // namespace ui
