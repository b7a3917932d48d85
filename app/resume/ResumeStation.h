// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>

#include "app/DeckRack.h"
#include "app/lights/LightStation.h"
#include "app/lights/LiveLightStation.h"
#include "app/lists/ListStation.h"
#include "app/resume/DecksGoOn.h"
#include "app/resume/Journal.h"
#include "app/resume/JournalKeeper.h"
#include "app/resume/Suspects.h"
#include "app/songs/SongStation.h"

namespace support {
class Settings;
}

namespace app {

struct StationContext;

/// Keeps what plays on the disk, and goes on with it after the program fell.
///
/// Law: a run that ends as it should leaves nothing to go on with. What is on the disk is at most kEvery old,
/// and older only while the decks come back: then it is what they come back to. A journal that cannot be read
/// is told and left; nothing that it says can keep the program from starting.
/// Threads: StartUp and Resumed on the window's; Tick and HandOn on the conductor; ShutDown once that has
/// stopped and the gate is closed.
class ResumeStation {
 public:
  static constexpr std::chrono::milliseconds kEvery{500};

  struct Around {
    DeckRack& rack;
    LightStation& lights;
    LiveLightStation& live;
    SongStation& songs;
    ListStation& lists;
    support::Settings& settings;
  };
  /// writer: for the journal alone, so that it never waits behind other work; null: nothing is kept.
  ResumeStation(const StationContext& context, const Around& around, support::Executor* writer);

  /// Reads the journal; the rest follows when the outputs are open.
  void StartUp();
  /// What goes on in this run; null where nothing does. It never changes after StartUp.
  [[nodiscard]] const Journal* Resumed() const { return resumed_ ? &*resumed_ : nullptr; }
  /// view: of the same tick.
  void Tick(const WorkstationView& view);
  /// A hand commands a deck.
  void HandOn(int deck) { decks_.HandOn(deck); }
  void ShutDown();

 private:
  /// Waiting: for what was read, over which nothing may be written. Returning: the decks come back.
  enum class Phase { Waiting, Returning, Following };

  // The window's.
  [[nodiscard]] bool Take(Journal journal);
  void LeaveOut(Journal& journal);
  // The conductor's.
  void Begin();
  void GoOn(const WorkstationView& view);
  void Keep(const WorkstationView& view);
  [[nodiscard]] Journal InHand(const WorkstationView& view) const;
  [[nodiscard]] DeckInHand DeckNow(int deck, const DeckView& view) const;
  void KeepWhatReturns(Journal& journal) const;

  const StationContext& context_;
  Around around_;
  std::optional<JournalKeeper> keeper_;
  std::optional<Journal> resumed_;
  bool lost_ = false;  ///< a deck that played was left out
  // The conductor's, from what StartUp posts on.
  Phase phase_ = Phase::Waiting;
  Suspects suspects_;
  DecksGoOn decks_;
  support::TimePoint begun_{};
  support::TimePoint looked_{};
  std::string show_;     ///< the file of the one that is there
  std::string written_;  ///< the journal as it was kept last, without its number
};

}  // namespace app
