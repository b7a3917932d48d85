// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/lists/AutoMix.h"

namespace app {

class DeckRack;

/// The decks of the rack, as the automatic mixer moves them. Threads: the conductor.
class RackDecks final : public MixingDecks {
 public:
  explicit RackDecks(DeckRack& rack) : rack_(rack) {}

  void Load(int deck, const catalogue::track_table& playlist, int row) override;
  void Seek(int deck, std::chrono::microseconds place) override;
  void Play(int deck) override;
  void Pause(int deck) override;
  void Stop(int deck) override;
  void SetVolume(int deck, int volume) override;
  void Glide(int deck, double level, std::chrono::milliseconds time) override;
  void SetMixing(int deck, bool mixing) override;
  bool StartWith(int deck, int other, std::chrono::microseconds place) override;
  bool Started(int deck) override;
  void CancelStart(int deck) override;
  std::chrono::microseconds MatchTempo(int deck, std::chrono::microseconds place, int most_percent) override;
  void SetGain(int deck, support::Decibels gain) override;

 private:
  DeckRack& rack_;
};

}  // namespace app
