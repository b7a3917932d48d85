// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>

namespace decks {

/// What a deck reads of the main window's sliders; one object for all decks.
struct MasterControls {
  int MainVolume = 0;                         ///< 0 (loudest) to 99
  std::array<int, 2> AutomationSlider{0, 3};  ///< element 1 is the threshold of the mix points, 0 to 100
};

/// The level of one channel in decibels, tied to the master slider.
///
/// Law: 20 log10(x / 32768) / ((100 - s) / 100) for a peak x of 32768 and a slider value s. A silent channel
/// has no logarithm and keeps its last reading.
class LevelMeter {
 public:
  /// Takes a new peak of 0 to 32768 and returns the reading. Requires: main_volume below 100.
  float Read(std::uint32_t peak, int main_volume);
  [[nodiscard]] float Last() const { return last_; }
  void Set(float reading) { last_ = reading; }

 private:
  float last_ = 0;
};

}  // namespace decks
