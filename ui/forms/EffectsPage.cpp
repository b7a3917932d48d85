// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/EffectsPage.h"

#include <QPushButton>
#include <QStackedWidget>
#include <QVBoxLayout>

#include "app/WorkstationView.h"
#include "ui/forms/EffectRow.h"
#include "ui/strings/EffectWords.h"
#include "ui/strings/Say.h"
#include "ui/widgets/Kit.h"

namespace ui {

EffectsPage::EffectsPage(app::EffectStation& effects, QWidget* mixing, const Look& look, QWidget* parent)
    : Surface(look.skin.ground, parent), sides_(new QStackedWidget) {
  Name(*this, "EffectsPage", look.say(Say::Effects));
  auto* rack = new QWidget;
  for (const int deck : {1, 2}) rows_[deck == 1 ? 0 : 1] = new EffectRow(deck, effects, look);
  FillColumn(*rack, 0, 0.4, {{rows_[0], 1}, {rows_[1], 1}});
  sides_->addWidget(rack);
  sides_->addWidget(mixing);
  buttons_ = {Lamp("EffectsRack", look.say.Of(EffectWord::Rack), [this](bool) { Turn(0); }),
              Lamp("EffectsMixing", look.say.Of(EffectWord::RackMixing), [this](bool) { Turn(1); })};
  FillColumn(*this, 0, 0.4, {Row(0.4, {buttons_[0], buttons_[1], Part::Room()}), {sides_, 1}});
  Turn(0);
}

void EffectsPage::Turn(int side) {
  sides_->setCurrentIndex(side);
  for (int i = 0; i < 2; ++i) buttons_[static_cast<std::size_t>(i)]->setChecked(i == side);
}

void EffectsPage::Show(const app::WorkstationView& view, support::TimePoint now) {
  for (std::size_t deck = 0; deck < rows_.size(); ++deck) rows_[deck]->Show(view.decks[deck], now);
}

}  // namespace ui
