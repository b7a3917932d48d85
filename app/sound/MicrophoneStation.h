// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "decks/ports/Microphone.h"
#include "support/Saying.h"
#include "support/TripleBuffer.h"

namespace app {

struct StationContext;
struct WorkstationView;

/// What the window draws of it; a snapshot of one tick.
struct MicrophoneView {
  bool there = false;          ///< the program can record at all
  decks::MicrophoneWish wish;  ///< what was asked last
  std::string device_name;     ///< of the one that was chosen; empty: the system's default
  decks::MicrophoneState now;  ///< what it does; the list of inputs is never null
  std::string trouble;         ///< why it is not heard though it is asked for; else empty
};

/// Somebody speaks over the music: in the hall, where decks 1 and 2 play.
///
/// Law: at the start it is off, whatever it was before. What is chosen is stored, what is switched is not.
/// Threads: StartUp, View and commands on the window's; Tick on the conductor, also before StartUp; ShutDown
/// once the conductor has stopped.
class MicrophoneStation {
 public:
  /// port: null where there is none.
  MicrophoneStation(const StationContext& context, decks::Microphone* port);

  void StartUp();
  /// decks: of the same tick.
  void Tick(const WorkstationView& decks);
  void ShutDown();

  [[nodiscard]] const MicrophoneView& View() { return views_.Read(); }

  void Switch(bool on);
  /// For as long as the key is held: it is heard, and the music low.
  void TalkOver(bool held);
  /// For as long as the level is shown: it listens, but is not heard.
  void Check(bool level);
  /// id: of the View's list; empty is the system's default.
  void Choose(const std::string& id);
  void SetChannel(int channel);
  void SetVoice(const decks::VoiceSettings& voice);
  void SetDuck(const decks::DuckSettings& duck);
  /// The outputs hold less meanwhile.
  void SetSwift(bool swift);
  /// The list of inputs is made anew; it stands in a later View.
  void LookForInputs();

 private:
  void ReadSettings();
  void StoreVoice() const;
  void Send();

  // The conductor's.
  void Ask(const decks::MicrophoneWish& wish, const std::string& name);
  void TellOf(const support::Saying& trouble);

  const StationContext& context_;
  decks::Microphone* const port_;
  const std::shared_ptr<const std::vector<decks::InputInfo>> no_inputs_ =
      std::make_shared<const std::vector<decks::InputInfo>>();  // with the window
  decks::MicrophoneWish wish_;                                  ///< the window's, but for the hall
  std::string device_name_;                                     ///< the window's
  decks::MicrophoneWish asked_;
  std::string asked_name_;
  support::Saying told_;
  support::TripleBuffer<MicrophoneView> views_;
};

}  // namespace app
