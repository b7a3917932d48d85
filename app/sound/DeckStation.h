// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "app/OutputView.h"
#include "app/sound/DeckCues.h"
#include "app/sound/DeckTempo.h"
#include "app/sound/DeckTone.h"
#include "app/sound/DeckView.h"
#include "app/sound/EffectUnits.h"
#include "app/sound/FileAnalyses.h"
#include "app/work/Mailbox.h"
#include "decks/Equaliser.h"
#include "decks/clsBassPlayer.h"
#include "decks/ports/SoundControl.h"
#include "support/Result.h"
#include "support/Sentences.h"

namespace app {

/// What a deck is asked to load.
struct Track {
  std::string filename;
  std::string artist;
  std::string title;
  double bpm = 0;
  MixPointPair<std::optional<std::chrono::microseconds>> marks;  ///< set by hand or remembered
  std::optional<decks::TempoSliders> tempo{};  ///< it begins with; without, with the deck's own
  /// What stands on the deck stays there, sounding or not, when this one cannot be read.
  bool beside = false;
  std::chrono::microseconds stands_at{0};  ///< when it is loaded
};

/// What all decks share.
struct DeckTools {
  FileAnalyses& analyses;
  decks::Equaliser& equaliser;
  const support::Sentences& say;
  decks::SoundDesk* desk = nullptr;             ///< null: the engine has none
  decks::DeckEffects* effects = nullptr;        ///< null: the deck has none
  decks::DeckLoops* loops = nullptr;            ///< null: nothing loops
  std::function<void(support::Saying)> tell{};  ///< a sentence that passes
};

/// One deck with what its player does not know: files that are being prepared, the end of a track, moves
/// from one output to another, and what the window shows.
///
/// Law: a file is opened only after a worker prepared it, so nothing here waits for a disk. What plays goes
/// on until the new file is ready; a file that cannot be played never stops one that plays. The newest wish
/// wins. Threads: the conductor.
class DeckStation {
 public:
  /// Answers of workers come through the box, which the conductor empties.
  DeckStation(int number, decks::AudioEngine& engine, decks::SoundControl& sound,
              const decks::MasterControls& controls, const DeckTools& tools, std::shared_ptr<Mailbox> box);

  void Load(Track track);
  /// The file that is being prepared is not wanted any more; what stands on the deck stays as it is. False
  /// when none was: what came of the last one stands on the deck, or was refused.
  bool CancelLoad();
  /// Tempo and key of the file that is being prepared.
  void BeginNextWith(const decks::TempoSliders& sliders);
  /// While a file is being prepared: as soon as it is ready. After the end: from the start.
  void Play();
  void Pause();
  void Resume();
  /// Begins to sound, to the sample, when another deck is heard at this place; then Play makes it complete.
  /// False when it does not stand ready, or it cannot be said when that will be.
  [[nodiscard]] bool StartWith(const DeckStation& other, std::chrono::microseconds place);
  /// It was told to start with another deck, and sounds.
  [[nodiscard]] bool Started() const { return starting_ && heard_.playing; }
  void CancelStart();
  /// It is the one that fades out in an automatic mix.
  void SetMixing(bool mixing) { player_.IsMixing(mixing); }
  /// Ends the sound and stands at the start of the same file.
  void Stop();
  void Seek(std::chrono::microseconds position);
  void SetVolume(int volume);
  /// Comes to this level, 0 to 100, after that time, on the clock of the output.
  void Glide(double level, std::chrono::milliseconds time);
  /// In the head-phones; a deck that stands is heard there alone from its place on, until 0 or Play.
  void SetPreVolume(int volume);
  /// On top of the volume, of this file: the next one begins without.
  void SetGain(support::Decibels gain);
  /// A mark set by hand goes before what is found; without one the found point holds again.
  void SetMixPoint(MixPoint which, std::optional<std::chrono::microseconds> mark);
  /// A slider was moved while the deck was asked to follow.
  void FollowEqualiser(int slider, int decibels);
  /// Of the bands as they sound, for the file that is on the deck.
  void SetEqualiser(const decks::Equaliser::Gains& gains);
  [[nodiscard]] DeckTempo& Tempo() { return tempo_; }
  [[nodiscard]] const DeckTempo& Tempo() const { return tempo_; }
  [[nodiscard]] DeckTone& Tone() { return tone_; }
  [[nodiscard]] DeckCues& Cues() { return cues_; }
  /// What stands on it, whatever is made ready beside.
  [[nodiscard]] DeckView::State Standing() const { return state_; }
  [[nodiscard]] EffectUnits& Effects() { return effects_; }
  /// The beats are again those that were found.
  void ForgetGrid();
  /// The beat that is nearest to what is heard begins a bar; nothing where no beats are known.
  void BarHere();
  /// Has the file on the deck analysed, its mix points by the threshold as it stands now.
  void Analyse();
  [[nodiscard]] const decks::clsBassPlayer& Player() const { return player_; }

  /// Where the deck plays from now on; what sounds moves at its heard position.
  void RouteMain(OutputView output);
  void RoutePrelisten(OutputView output);

  /// Frees both streams; the deck is empty.
  void Release();

  /// Notices the end of the track and fills in what is heard now.
  void Tick(DeckView& view);

 private:
  /// Why a file is being prepared. A newer wish of the same kind overtakes an older one.
  enum Wish { kLoad, kReopen, kMoveMain, kMovePrelisten, kWishes };

  void Prepare(Wish wish, const std::string& filename);
  void Prepared(Wish wish, const support::Result<void>& result);
  void Forget(Wish wish) { ++newest_[wish]; }
  void Loaded(Track track, const support::Result<void>& result);
  void OpenTrack(Track track, const support::Result<void>& result);
  void ForgetReopening();
  void MoveMain();
  void MovePrelisten();
  void ListenAlone();
  void NoticeTheEndOfListening();
  void ApplySliders();
  void ShowAnalysis(DeckView& view);
  void ShowFound(const music::MixPoints& points, DeckView& view);
  void ShowMixPoint(MixPoint which, DeckView& view);
  /// Who put the point where it is, kept with the file.
  void Say(MixPoint which, catalogue::PointBy by, std::optional<std::chrono::microseconds> place = {});
  void KeepCorrections();
  void Reject(const Track& track, const std::string& sentence);
  void Clear();
  /// Opens the same file again, because its stream is gone or at its end: what is heard of an ended stream
  /// lags behind a seek, so a new stream is the clean start.
  void Reopen(support::BytePosition at);
  void ShowHeard(DeckView& view);
  void NoticeTheEnd();

  decks::AudioEngine& engine_;
  decks::SoundControl& sound_;
  DeckTools tools_;
  std::shared_ptr<Mailbox> box_;
  decks::clsBassPlayer player_;
  DeckTempo tempo_;
  DeckTone tone_;
  EffectUnits effects_;
  DeckCues cues_;
  DeckView::State state_ = DeckView::State::Empty;
  Track track_;                  ///< on the deck
  std::optional<Track> coming_;  ///< being prepared
  std::string message_;
  decks::HeardStream heard_;  ///< at the last tick
  std::array<std::uint64_t, kWishes> newest_{};
  std::optional<support::BytePosition> reopen_at_;  ///< while the same file is being prepared again
  bool play_when_ready_ = false;
  bool listening_ = false;           ///< see DeckView
  bool starting_ = false;            ///< its start was scheduled
  bool cancelled_ = false;           ///< it was, and may have come before it was taken back
  decks::Equaliser::Gains gains_{};  ///< of the bands, as they were set
};

/// Deck n is the one before n.
using DeckStations = std::array<std::unique_ptr<DeckStation>, kDecks>;

}  // namespace app
