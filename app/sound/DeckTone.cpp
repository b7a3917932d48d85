// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/sound/DeckTone.h"

#include <algorithm>

namespace app {

support::Decibels TrimOf(int slider) {
  constexpr float kMostTrim = 12;
  return {static_cast<float>(std::clamp(slider, 0, 100) - kMiddleTrim) * kMostTrim / kMiddleTrim};
}

void DeckTone::Set(ToneBand band, int decibels) {
  bands_[PlaceOf(band)] = std::clamp(decibels, kLeastTone, kMostTone);
  ApplyTone();
}

void DeckTone::Kill(ToneBand band, bool killed) {
  killed_[PlaceOf(band)] = killed;
  ApplyTone();
}

void DeckTone::Trim(int slider) {
  trim_ = std::clamp(slider, 0, 100);
  sound_.SetGain(player_.STRM(), Gain());
}

void DeckTone::SetGain(support::Decibels gain) {
  gain_ = gain;
  sound_.SetGain(player_.STRM(), Gain());
}

void DeckTone::Apply() {
  sound_.SetGain(player_.STRM(), Gain());
  ApplyTone();
}

void DeckTone::ApplyTone() {
  if (desk_ == nullptr || player_.STRM() == 0) return;
  const auto wanted = [this](ToneBand band) {
    const std::size_t place = PlaceOf(band);
    return killed_[place] ? decks::kKilled : support::Decibels{static_cast<float>(bands_[place])};
  };
  desk_->SetTone(player_.STRM(), {wanted(ToneBand::Bass), wanted(ToneBand::Mid), wanted(ToneBand::High)});
}

void DeckTone::Show(DeckView& view) const {
  view.gain = gain_;
  view.trim = trim_;
  view.tone = bands_;
  view.killed = killed_;
}

}  // namespace app
