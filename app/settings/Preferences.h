// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "support/Settings.h"

namespace app {

/// Key and value of one section, in the order of the vocabulary.
using StoredSection = std::vector<std::pair<std::string_view, std::string>>;

/// Empty for a key that is not there.
[[nodiscard]] std::string_view ValueOf(const StoredSection& section, std::string_view key);

/// A colour as it is stored: blue, green and red from the highest byte to the lowest.
using StoredColour = std::uint32_t;

/// What start-up reads for all parts at once, each with the type of its control.
struct Preferences {
  int mix_time = 0;  ///< seconds
  struct Automix {
    bool on = false;
    bool match_tempo = false;
    bool match_gain = false;
    bool at_mix_points = false;
  } automix;
  int bpm_percent = 0;
  int gain_percent = 0;
  struct Deck {
    StoredSection effects;
    StoredSection equaliser;
  };
  std::array<Deck, 2> decks;
};

/// Reads in the order in which start-up is described to.
[[nodiscard]] Preferences ReadPreferences(const support::Settings& settings);

/// Channels of the light console: 16 or 32.
[[nodiscard]] int ConsoleChannels(const support::Settings& settings);
[[nodiscard]] std::vector<StoredColour> ReadColours(const support::Settings& settings);
/// As many as the console has channels; surplus colours are dropped.
void StoreColours(support::Settings& settings, std::span<const StoredColour> colours);

}  // namespace app
