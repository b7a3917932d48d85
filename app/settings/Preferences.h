// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "app/settings/Settings.h"

namespace app {

/// Key and value of one section, in the order of the vocabulary.
using StoredSection = std::vector<std::pair<std::string_view, std::string>>;

/// A colour as it is stored: blue, green and red from the highest byte to the lowest.
using StoredColour = std::uint32_t;

/// All that start-up reads for the controls, each with the type of its control.
struct Preferences {
  int mix_time = 0;  ///< seconds
  std::string rip_directory;
  struct Tags {
    int file_format = 0;
    std::string split_character;
    bool use_artist = false;
    bool use_split = false;
    bool write = false;
  } tags;
  struct Automix {
    bool on = false;
    bool match_tempo = false;
    bool match_gain = false;
    bool at_mix_points = false;
  } automix;
  std::string directory;
  int bpm_percent = 0;
  int gain_percent = 0;
  struct Mixer {
    int preview = 0;
    int left_down = 0, right_down = 0, left_up = 0, right_up = 0;
  } mixer;
  int outputs = 1;
  bool use_io_boards = false;
  bool use_dmx = false;
  struct Deck {
    StoredSection effects;
    StoredSection equaliser;
  };
  std::array<Deck, 2> decks;
  std::vector<StoredColour> colours;  ///< one for each channel of the console
};

/// Reads in the order in which start-up is described to.
[[nodiscard]] Preferences ReadPreferences(const Settings& settings);

/// Channels of the light console: 16 or 32.
[[nodiscard]] int ConsoleChannels(const Settings& settings);
[[nodiscard]] std::vector<StoredColour> ReadColours(const Settings& settings);
/// As many as the console has channels; surplus colours are dropped.
void StoreColours(Settings& settings, std::span<const StoredColour> colours);

}  // namespace app
