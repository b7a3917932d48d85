// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <memory>
#include <set>
#include <string>

#include "app/DeckStation.h"
#include "app/Mailbox.h"
#include "app/WorkstationView.h"
#include "decks/ports/AudioEngine.h"
#include "decks/ports/SoundControl.h"
#include "support/TripleBuffer.h"

namespace app {

/// An output as start-up and the settings page ask for it.
struct OutputWish {
  OutputView place;
  std::uint32_t flags = 0;  ///< for opening the device
  std::string name;         ///< of the device, for sentences
};

/// What the conductor runs: the four decks, their outputs and the snapshot for the window.
/// Threads: the conductor, but for View, which is the window's.
class Stage {
 public:
  Stage(decks::AudioEngine& engine, decks::SoundControl& sound, std::shared_ptr<Mailbox> box);

  /// Releases the engine in case it was running and opens the outputs; each that fails is skipped with a
  /// sentence. Blocks while devices open.
  void OpenOutputs(const std::array<OutputWish, 3>& wishes);
  /// Update period and playback buffer, short ones, so that decks answer at once.
  void SetBuffers();
  /// Routes deck 1, deck 2 or (3) the pre-listen output. Requires: the device is open.
  void Route(int output, OutputView place);
  [[nodiscard]] bool IsOpen(int device) const { return open_.contains(device); }
  void DeviceOpened(int device) { open_.insert(device); }
  void Notice(std::string sentence) { notice_ = std::move(sentence); }

  /// Requires: 1 to kDecks.
  [[nodiscard]] DeckStation& Deck(int number) { return *decks_[static_cast<std::size_t>(number - 1)]; }
  void ReleaseDecks();
  void ReleaseEngine();

  void Tick();
  [[nodiscard]] const WorkstationView& View() { return views_.Read(); }

 private:
  bool Open(const OutputWish& wish);

  decks::AudioEngine& engine_;
  decks::SoundControl& sound_;
  decks::MasterControls controls_;
  std::array<std::unique_ptr<DeckStation>, kDecks> decks_;
  std::array<OutputView, 3> outputs_{};
  std::set<int> open_;
  std::string notice_;
  support::TripleBuffer<WorkstationView> views_;
};

}  // namespace app
