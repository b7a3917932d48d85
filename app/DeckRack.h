// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/NoticeBoard.h"
#include "app/OutputRouting.h"
#include "app/SaveWatch.h"
#include "app/WorkstationView.h"
#include "app/sound/BeatMatch.h"
#include "app/sound/DeckStation.h"
#include "app/sound/FileAnalyses.h"
#include "app/sound/HallDesk.h"
#include "app/sound/LoudestSource.h"
#include "app/work/Mailbox.h"
#include "app/work/WorkGate.h"
#include "decks/ports/AudioEngine.h"
#include "decks/ports/SoundControl.h"
#include "support/Executor.h"
#include "support/TripleBuffer.h"

namespace app {

/// What the conductor runs: the four decks, their outputs and the snapshot for the window.
/// Threads: the conductor, but for View, which is the window's.
class DeckRack {
 public:
  DeckRack(const AnalysisPorts& ports, support::Executor& workers, std::shared_ptr<WorkGate> gate,
           std::shared_ptr<Mailbox> box, const support::Sentences& say, decks::SoundDesk* desk = nullptr,
           decks::DeckEffects* effects = nullptr, decks::DeckLoops* loops = nullptr);

  /// The master slider, 0 to 99, as the levels read it.
  void SetMainVolume(int main_volume) { controls_.MainVolume = main_volume; }
  /// The threshold of the mix points, 0 to 100; those of the files on the decks are looked for again.
  void SetGainPercent(int percent);
  /// The sliders as they were stored; nothing plays yet.
  void StoredEqualiser(const std::array<int, decks::kEqSliders>& sliders);
  /// Moves a slider, 0 to 19, and its band on every deck that plays.
  void SetEqualiser(int slider, int decibels);
  void SetHeadphones(const decks::HeadphoneMix& mix) { hall_.SetHeadphones(mix); }
  /// Deck 1 or 2 follows the other one, whose tempo may lie that many percent away.
  void Sync(int deck, SyncStart start, int most_percent);
  void Unsync(int deck);
  /// Deck 1 or 2 stands ready to begin when the other one is heard at a place: it takes the other one's tempo
  /// for the mix, and the place comes back moved to where the beats meet; unmoved when nothing is known of
  /// them.
  [[nodiscard]] std::chrono::microseconds MatchForMix(int deck, std::chrono::microseconds place,
                                                      int most_percent);
  void CancelMix(int deck);
  /// The system's volume was told.
  void FollowMixer(int percent);
  /// Called with each analysis of a deck's file that is complete.
  void OnAnalysed(FileAnalyses::Found found) { analyses_.OnFound(std::move(found)); }
  /// A warning about nothing that is known to get better.
  void Notice(support::Saying sentence) { notices_.Warn({}, std::move(sentence)); }
  [[nodiscard]] NoticeBoard& Notices() { return notices_; }

  [[nodiscard]] OutputRouting& Outputs() { return outputs_; }
  /// Requires: 1 to kDecks.
  [[nodiscard]] DeckStation& Deck(int number) { return *decks_[static_cast<std::size_t>(number - 1)]; }
  void ReleaseDecks();

  /// Called in each tick once the decks have been looked at.
  void OnTick(std::function<void(const WorkstationView&)> tick) { ticked_ = std::move(tick); }
  void Tick();
  /// The song that plays beside the decks is asked for in each tick.
  struct SongPlaying {
    HeardSong heard;
    decks::StreamHandle stream = 0;
  };
  /// What could not be saved goes into the view; null: nothing is known of it.
  void FollowSaves(const SaveWatch* saves) { saves_ = saves; }
  void FollowSong(std::function<SongPlaying()> song) { song_playing_ = std::move(song); }
  /// Of what is heard in this tick; 0 for nothing.
  [[nodiscard]] decks::StreamHandle StreamOf(HeardFrom from);
  [[nodiscard]] const WorkstationView& View() { return views_.Read(); }

 private:
  [[nodiscard]] support::Saying CannotSync(int deck, int most_percent);
  void Listen(WorkstationView& view);
  void TellOfCutShort(int deck, const WorkstationView& view);
  [[nodiscard]] std::string Unsaved();

  decks::AudioEngine& engine_;
  decks::SoundControl& sound_;
  std::shared_ptr<Mailbox> box_;
  const support::Sentences& say_;
  decks::MasterControls controls_;
  FileAnalyses analyses_;
  decks::Equaliser equaliser_;
  DeckStations decks_;
  BeatMatch beats_;
  std::function<SongPlaying()> song_playing_;
  LoudestSource loudest_;
  decks::StreamHandle song_ = 0;
  std::array<std::string, kDecks> cut_short_;  ///< the file that was told of, by deck
  const SaveWatch* saves_ = nullptr;
  bool has_mixer_ = false;
  std::function<void(const WorkstationView&)> ticked_;
  NoticeBoard notices_{say_};
  OutputRouting outputs_;
  HallDesk hall_;
  support::TripleBuffer<WorkstationView> views_;
};

}  // namespace app
