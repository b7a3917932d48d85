// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <memory>
#include <string>
#include <vector>

#include "app/OutputView.h"
#include "app/ports/SoundPriority.h"

namespace support {
class Settings;
}

namespace app {

class Prompts;
class DeckRack;
class SystemMixer;
struct StationContext;
struct Ports;

/// Where decks and head-phones play, and how loud all of it is. What came of it stands in the view.
/// Threads: the window's, which empties the box.
class OutputStation {
 public:
  OutputStation(const StationContext& context, const Ports& ports, DeckRack& rack,
                support::Settings& settings);

  // Start-up.
  /// The master slider follows the system's mixer as soon as that answers.
  void OpenMixer();
  /// Lists the devices, now and each time that one is plugged in.
  void FollowDevices();
  /// Opens the outputs as they are stored; what cannot be opened is told in boxes.
  void Open(Prompts& prompts);

  /// Routes deck 1, deck 2 or (3) the pre-listen output, while music plays, and stores the choice. Deck 2
  /// goes with deck 1 until it is given an output of its own.
  void Set(int output, OutputView choice);
  /// Deck 2 goes with deck 1 again; stored.
  void Share();
  /// Deck 2 has an output of its own.
  [[nodiscard]] bool HasOwn() const;
  /// Moves output 1 to 3 from its stand-in back to its own device, when the View says that it can.
  void Return(int output);
  /// Names of the output devices, the first one is device 1. Those that were plugged in are appended; one
  /// that is pulled keeps its number.
  [[nodiscard]] const std::vector<std::string>& DeviceNames() const { return device_names_; }
  /// How far the sound goes before other programs.
  [[nodiscard]] SoundPriority::Level Priority() const;
  /// Moves the master slider, 0 (loudest) to 99, and with it the volume that the system gives output 1.
  void SetMainVolume(int main_volume);

 private:
  void ListDevices();
  /// The master slider is that device's.
  void FollowOutput(int device);
  void MoveMainVolume(int slider);

  const StationContext& context_;
  const Ports& ports_;
  DeckRack& rack_;
  support::Settings& settings_;
  std::vector<std::string> device_names_;
  /// How often the master slider moved the mixer; shared with the mixer, which outlives this.
  std::shared_ptr<std::atomic<int>> volume_sets_ = std::make_shared<std::atomic<int>>(0);
};

}  // namespace app
