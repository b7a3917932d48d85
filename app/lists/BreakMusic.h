// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <string>

#include "app/lists/AutoMix.h"

namespace app {

/// How the music between the songs of a karaoke night is wished.
struct BreakWishes {
  bool on = false;
  std::chrono::seconds pause{0};  ///< of silence behind a song, for the applause
  bool operator==(const BreakWishes&) const = default;
};

/// What it goes by, of one tick.
struct BreakStage {
  bool song = false;     ///< one is on stage, or on its way there
  bool singers = false;  ///< there are turns to sing
};

/// Music from playlist 3 between the songs of the singers: behind a song it comes up on a free one of decks 1
/// and 2, before the next one it fades out, and in the next break it goes on where it stopped.
///
/// Law: it begins only where nothing else sounds, loads over nothing that a hand has put on a deck, and a
/// hand on its deck, or music on the other one, ends it until the next song has been sung. Threads: the
/// conductor.
class BreakMusic {
 public:
  static constexpr std::chrono::milliseconds kRise{2000};
  static constexpr std::chrono::milliseconds kFall{1200};

  BreakMusic(MixingDecks& decks, const support::Clock& clock) : decks_(decks), clock_(clock) {}

  void Choose(const BreakWishes& wishes) { wishes_ = wishes; }
  /// mixer: what the faders are at. others: somebody else brings the next track to the decks.
  void Tick(const WorkstationView& view, const ListTables& tables, const Files& played,
            const MixerHands& mixer, const BreakStage& stage, bool others);
  [[nodiscard]] BreakInHand InHand() const;
  /// With what another run of the program left, once the decks are as far as they come.
  void GoOn(const BreakInHand& music, const WorkstationView& view);

 private:
  enum class Phase { Idle, Waiting, Loading, Rising, Playing, Falling };

  void TickSilence(const WorkstationView& view, const ListTables& tables, const Files& played,
                   const MixerHands& mixer, bool others);
  void FallSilent(const WorkstationView& view, const MixerHands& mixer);
  void Begin(const WorkstationView& view, const ListTables& tables, const Files& played,
             const MixerHands& mixer);
  void LoadNext(const ListTables& tables, const Files& played);
  void Await(const DeckView& deck, const ListTables& tables, const Files& played, const MixerHands& mixer);
  void Rise(const MixerHands& mixer);
  void Move(const WorkstationView& view, const MixerHands& mixer);
  [[nodiscard]] int Full(const MixerHands& mixer);
  void LetGo(const MixerHands& mixer);
  void Enter(Phase phase);
  [[nodiscard]] int FreeDeck(const WorkstationView& view) const;
  [[nodiscard]] bool HandIsOn(const WorkstationView& view) const;

  MixingDecks& decks_;
  const support::Clock& clock_;
  BreakWishes wishes_;
  Phase phase_ = Phase::Idle;
  support::TimePoint since_{};
  bool due_ = false;     ///< a song was on stage, and no break has been made since
  int deck_ = 0;         ///< that it plays on, or played on last; 0 is none
  std::string file_;     ///< there
  bool lifted_ = false;  ///< heard though the crossfader stands elsewhere, until that is moved
  int crossfader_ = 0;   ///< where it was left
  double from_ = 0;      ///< share of the full level where a move of it began
  double share_ = 0;     ///< and where it stands
  int misses_ = 0;       ///< files that did not come, one after the other
  Files done_;           ///< played in breaks, or not to be played, since the list began anew
};

}  // namespace app
