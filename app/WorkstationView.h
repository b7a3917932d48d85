// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <string>
#include <vector>

#include "app/Notice.h"
#include "app/OutputView.h"
#include "app/ports/HeardSound.h"
#include "app/sound/DeckView.h"
#include "decks/ports/SoundControl.h"
#include "decks/ports/SoundDesk.h"

namespace app {

struct HeadphonesView {
  decks::HeadphoneMix mix;
  bool hear_hall = false;  ///< the hall can be heard in them
};

/// Everything that the window draws from, published by the conductor.
struct WorkstationView {
  std::array<DeckView, kDecks> decks;  ///< deck n is decks[n - 1]
  std::array<OutputView, 3> outputs;   ///< deck 1, deck 2, pre-listen
  std::array<bool, 3> can_return{};    ///< it plays on a stand-in and its own device is back
  HeadphonesView headphones;
  bool has_meter = false;
  decks::MasterReading master;      ///< of the output of deck 1
  int main_volume = 0;              ///< the master slider: 0 (loudest) to 99
  std::array<int, 20> equaliser{};  ///< the sliders Eq, in dB
  bool has_mixer = false;           ///< the slider follows and moves the system's volume
  decks::EngineHealth health;
  HeardSong song;
  HeardSound sound;             ///< for light organ and visualisers
  std::vector<Notice> notices;  ///< those that are true now, the newest last
  std::string notice;           ///< text of the newest; empty when there is none
  std::string unsaved;          ///< why something that the program keeps is not on the disk now; else empty
};

}  // namespace app
