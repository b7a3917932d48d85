// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>
#include <vector>

#include "decks/ports/DeckEffects.h"

namespace decks::testing {

/// Effects without sound: it keeps what it was told. Threads: one.
class RecordingEffects final : public DeckEffects {
 public:
  void SetEffects(int deck, StreamHandle stream, const EffectSettings& settings) override {
    if (stream == 0) return;
    told[stream] = InRange(settings);
    decks[stream] = deck;
  }
  [[nodiscard]] EffectSettings Effects(StreamHandle stream) override {
    const auto found = told.find(stream);
    return found == told.end() ? EffectSettings{} : found->second;
  }
  void Silence(int deck) override { silenced.push_back(deck); }

  std::map<StreamHandle, EffectSettings> told;
  std::map<StreamHandle, int> decks;
  std::vector<int> silenced;
};

}  // namespace decks::testing
