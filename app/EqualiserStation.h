// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <string>
#include <vector>

#include "app/sound/PresetKeeper.h"
#include "decks/Equaliser.h"

namespace support {
class Settings;
}

namespace app {

class DeckRack;
struct StationContext;
struct Preferences;

/// The sliders of the equaliser and their presets. How the bands sound stands in the decks' views.
/// Threads: the window's, which empties the box.
class EqualiserStation {
 public:
  EqualiserStation(const StationContext& context, DeckRack& rack, support::Settings& settings);

  /// The sliders as they were stored; the presets follow soon.
  void StartUp(const Preferences& stored);
  void ReadPresets();

  /// The sliders as they were moved last.
  [[nodiscard]] const std::array<int, decks::kEqSliders>& Sliders() const { return sliders_; }
  /// Moves slider 0 to 19 to -12 to 12 dB and stores it; the band follows on every deck that plays.
  void Set(int slider, int decibels);
  /// Carries every slider to the decks that play; a deck begins each track flat.
  void Resend();

  /// In the order of their file.
  [[nodiscard]] const std::vector<decks::EqPreset>& Presets() const { return presets_.List(); }
  /// Name of the preset that the bank was given last; empty for none.
  [[nodiscard]] std::string Chosen(decks::EqBank bank) const;
  /// Moves the bank's sliders; nothing for a name that is not there.
  void Apply(decks::EqBank bank, const std::string& name);
  /// Under a name that is there already, its values are replaced. Asks nobody.
  void Save(decks::EqBank bank, const std::string& name, PresetKeeper::Done done);
  void Delete(const std::string& name, PresetKeeper::Done done);
  /// Requires: the gate is closed.
  void Flush() { presets_.Flush(); }

 private:
  const StationContext& context_;
  DeckRack& rack_;
  support::Settings& settings_;
  std::array<int, decks::kEqSliders> sliders_{};
  PresetKeeper presets_;
};

}  // namespace app
