// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/sound/EffectUnits.h"

#include <algorithm>
#include <cmath>

namespace app {

void EffectUnits::Turn(EffectControl control, int slider) {
  choices_.sliders[PlaceOf(control)] = std::clamp(slider, 0, 100);
  Send();
}

void EffectUnits::Switch(decks::EffectKind kind, bool on) {
  choices_.on[PlaceOf(kind)] = on;
  Send();
}

void EffectUnits::Hold(decks::EffectKind kind, bool held) {
  held_[PlaceOf(kind)] = held;
  Send();
}

void EffectUnits::LockToBeat(decks::EffectKind kind, int quarters) {
  choices_.quarters[PlaceOf(kind)] = quarters;
  Send();
}

void EffectUnits::Restore(const EffectChoices& choices) {
  choices_ = choices;
  Send();
}

void EffectUnits::Apply() {
  Send();
}

void EffectUnits::Follow(double bpm) {
  // A deck that is held in step is bent all the time by what nobody hears: an echo is not to move with it.
  constexpr double kHeard = 0.001;
  if (std::abs(bpm - bpm_) <= kHeard * bpm_) return;
  bpm_ = bpm;
  const bool locked = std::any_of(choices_.quarters.begin(), choices_.quarters.end(),
                                  [](int quarters) { return quarters != 0; });
  if (locked) Send();
}

void EffectUnits::Send() {
  if (port_ == nullptr || player_.STRM() == 0) return;
  EffectChoices heard = choices_;
  for (std::size_t i = 0; i < held_.size(); ++i) heard.on[i] = heard.on[i] || held_[i];
  port_->SetEffects(player_.Channel(), player_.STRM(), SettingsOf(heard, bpm_));
}

void EffectUnits::Silence() {
  if (port_ != nullptr) port_->Silence(player_.Channel());
}

void EffectUnits::Show(DeckView& view) const {
  view.effects = choices_;
  view.effects_held = held_;
}

}  // namespace app
