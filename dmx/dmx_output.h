// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>

#include "dmx/ports/DmxInterface.h"

namespace support {
class Settings;
}

namespace dmx {

/// The levels of all channels, which are the positions of their faders.
///
/// Law: a level goes to the interface when its fader moves, and then only; there is no other way to it.
/// Threads: one at a time.
class Universe {
 public:
  explicit Universe(DmxInterface& wire) : wire_(wire) {}

  /// A fader that stands there already does not move, and a channel outside 1 to 512 has no fader.
  void MoveFader(int channel, DmxLevel level);
  /// Tells the interface where every fader stands that is not at the bottom.
  void Resend();

  /// Requires: 1 to kUniverseChannels.
  [[nodiscard]] DmxLevel Level(int channel) const { return levels_[static_cast<std::size_t>(channel - 1)]; }
  [[nodiscard]] const std::array<DmxLevel, kUniverseChannels>& Levels() const { return levels_; }

 private:
  DmxInterface& wire_;
  std::array<DmxLevel, kUniverseChannels> levels_{};
};

/// Turns the output on and off, and remembers it in the settings ("Setup"/"UseK8062").
/// Threads: one at a time.
class OutputSwitch {
 public:
  OutputSwitch(DmxInterface& wire, support::Settings& settings) : wire_(wire), settings_(settings) {}

  void TurnOn();
  void TurnOff();
  /// Opens the interface when the settings say so.
  void Restore();
  [[nodiscard]] bool IsOn() const { return on_; }

  /// What the windows ask for, whatever the switch says.
  void ShowEditorLoaded();
  void FixtureEditorLoaded();
  void MainWindowClosed();

 private:
  void Open();

  DmxInterface& wire_;
  support::Settings& settings_;
  bool on_ = false;
};

}  // namespace dmx
