// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <chrono>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "app/NoticeBoard.h"
#include "app/SaveWatch.h"
#include "app/WorkstationView.h"
#include "app/settings/OutputSettings.h"
#include "app/sound/AnalysisDesk.h"
#include "app/sound/BeatMatch.h"
#include "app/sound/DeckStation.h"
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
class Stage {
 public:
  Stage(const AnalysisPorts& ports, support::Executor& workers, std::shared_ptr<WorkGate> gate,
        std::shared_ptr<Mailbox> box, const support::Sentences& say);

  /// Releases the engine in case it was running and opens the outputs; each that fails is skipped with a
  /// sentence, which is given back. Blocks while devices open, so nothing plays yet.
  [[nodiscard]] std::vector<std::string> OpenOutputs(const std::array<OutputWish, kOutputs>& wishes);
  /// Update period and playback buffer, short ones, so that decks answer at once.
  void SetBuffers();
  /// Moves an output's device back to where it was before it was lost, see WorkstationView::can_return.
  void ReturnOutput(int output);
  /// Moves an output (1 to 3) while music plays. A device that is not open yet is opened by a worker; the
  /// decks go on where they are until it is, and stay there when it cannot be. The newest wish for an output
  /// wins.
  void MoveOutput(int output, const OutputWish& wish);
  /// Output 2 goes where output 1 was wished to.
  void ShareOutput() { MoveOutput(2, moves_[0]); }
  /// The master slider, 0 to 99, as the levels read it.
  void SetMainVolume(int main_volume) { controls_.MainVolume = main_volume; }
  /// The threshold of the mix points, 0 to 100; those of the files on the decks are looked for again.
  void SetGainPercent(int percent);
  /// The sliders as they were stored; nothing plays yet.
  void StoredEqualiser(const std::array<int, decks::kEqSliders>& sliders);
  /// Moves a slider, 0 to 19, and its band on every deck that plays.
  void SetEqualiser(int slider, int decibels);
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
  /// Called when the engine knows a device more.
  void OnDevicesListed(std::function<void()> listed) { listed_ = std::move(listed); }
  /// Called with each analysis of a deck's file that is complete.
  void OnAnalysed(AnalysisDesk::Found found) { analyses_.OnFound(std::move(found)); }
  /// A warning about nothing that is known to get better.
  void Notice(std::string sentence) { notices_.Warn({}, std::move(sentence)); }
  [[nodiscard]] NoticeBoard& Notices() { return notices_; }

  /// Requires: 1 to kDecks.
  [[nodiscard]] DeckStation& Deck(int number) { return *decks_[static_cast<std::size_t>(number - 1)]; }
  void ReleaseDecks();
  void ReleaseEngine();

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
  void CannotOpen(int output, const OutputWish& wish);
  [[nodiscard]] std::string SentenceOn(const OutputWish& wish) const;
  [[nodiscard]] std::string CannotSync(int deck, int most_percent);
  bool Open(const OutputWish& wish);
  void Opened(int device, bool success);
  void Route(int output, OutputView place);
  /// What was told of the output before is settled.
  void RouteAsWished(int output);
  void TellRoles();
  void TellIfForHeadphones(int output);
  void TellOf(const decks::DeviceEvent& event);
  void Listen(WorkstationView& view);
  void FollowHand(const decks::DeviceEvent& event);
  [[nodiscard]] std::string Unsaved();

  decks::AudioEngine& engine_;
  decks::SoundControl& sound_;
  support::Executor& workers_;
  std::shared_ptr<WorkGate> gate_;
  std::shared_ptr<Mailbox> box_;
  const support::Sentences& say_;
  decks::MasterControls controls_;
  AnalysisDesk analyses_;
  decks::Equaliser equaliser_;
  std::array<std::unique_ptr<DeckStation>, kDecks> decks_;
  BeatMatch beats_;
  std::function<SongPlaying()> song_playing_;
  LoudestSource loudest_;
  decks::StreamHandle song_ = 0;
  const SaveWatch* saves_ = nullptr;
  std::array<OutputView, kOutputs> outputs_{};
  std::array<OutputWish, kOutputs> moves_{};  ///< the newest wish for each output
  std::set<int> opening_;                     ///< devices that a worker is at
  std::set<int> open_;
  std::set<int> can_return_;  ///< devices
  bool has_mixer_ = false;
  std::function<void()> listed_;
  std::function<void(const WorkstationView&)> ticked_;
  NoticeBoard notices_;
  support::TripleBuffer<WorkstationView> views_;
};

}  // namespace app
