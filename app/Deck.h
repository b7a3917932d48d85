// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <functional>
#include <type_traits>

#include "app/settings/Preferences.h"
#include "app/sound/DeckView.h"
#include "app/sound/GainQueries.h"
#include "decks/TempoSliders.h"

namespace catalogue {
class track_table;
}

namespace support {
class Settings;
}

namespace app {

class Collections;
class DeckCues;
class DeckStation;
class DeckTempo;
class DeckTone;
class ResumeStation;
class DeckRack;
struct StationContext;
struct Track;

/// How far a tempo slider may go, in percent.
inline constexpr std::array<int, 5> kTempoRanges{6, 8, 10, 16, 50};

/// A deck in the window's hands. What it can do is told by DeckStation and DeckTempo, whose member functions
/// the commands name: Do(&DeckStation::Seek, place).
///
/// Threads: the window's. Commands are queued to the conductor and return at once; what came of them stands
/// in a later View().
class Deck {
 public:
  struct Around {
    const StationContext& context;
    DeckRack& rack;
    ResumeStation& resume;
    support::Settings& settings;
    Collections& collections;
    GainQueries& gains;
  };
  /// number: 1 to kDecks.
  Deck(int number, const Around& around) : number_(number), around_(around) {}

  [[nodiscard]] int Number() const { return number_; }
  /// Of the newest snapshot; valid until the next one is asked for.
  [[nodiscard]] const DeckView& View() const;

  /// A hand decides what plays here.
  template <class... Wanted, class... Given>
  void Do(void (DeckStation::*command)(Wanted...), Given... given) {
    ByHand([command, ... copies = std::decay_t<Wanted>(given)](DeckStation& deck) {
      (deck.*command)(copies...);
    });
  }
  template <class... Wanted, class... Given>
  void Do(void (DeckCues::*command)(Wanted...), Given... given) {
    CuesByHand(
        [command, ... copies = std::decay_t<Wanted>(given)](DeckCues& cues) { (cues.*command)(copies...); });
  }
  template <class... Wanted, class... Given>
  void Adjust(void (DeckCues::*command)(Wanted...), Given... given) {
    PostCues(
        [command, ... copies = std::decay_t<Wanted>(given)](DeckCues& cues) { (cues.*command)(copies...); });
  }
  /// It is set otherwise; what plays is left as it is.
  template <class... Wanted, class... Given>
  void Adjust(void (DeckStation::*command)(Wanted...), Given... given) {
    Post([command, ... copies = std::decay_t<Wanted>(given)](DeckStation& deck) {
      (deck.*command)(copies...);
    });
  }
  template <class... Wanted, class... Given>
  void Adjust(void (DeckTempo::*command)(Wanted...), Given... given) {
    PostTempo([command, ... copies = std::decay_t<Wanted>(given)](DeckTempo& tempo) {
      (tempo.*command)(copies...);
    });
  }

  /// Opens the row's file. What plays goes on until the new file is ready, then fades out; the deck then
  /// stands at its start. Nothing for a row that is not there.
  void Load(const catalogue::track_table& table, int row);
  /// As a row, of a file that stands in none.
  void Load(const Track& track);

  // What is set by slider holds for every file that comes onto the deck, and is stored for decks 1 and 2;
  // anything past what the engine plays is taken back to it.
  /// From the original, -50 to 100. Lets go of a sync.
  void SetTempo(float percent);
  void SetKeyLock(decks::KeyLock lock);
  /// -12 to 12.
  void SetPitch(float semitones);
  /// From the file's own rate, -50 to 100: moves tempo and pitch together, whatever the key lock.
  void SetSampleRate(float percent);
  /// How far the slider goes; one of kTempoRanges. The tempo itself stays as it is.
  void SetTempoRange(int percent);
  /// Faster or slower by so many percent for as long as it is held; 0 lets go.
  void Nudge(float percent);
  /// The sliders as they were stored.
  void Restore(const StoredSection& section);

  // The deck's own channel of the desk, which is stored for decks 1 and 2 too, but for what is killed.
  /// kLeastTone to kMostTone, in dB.
  void SetTone(ToneBand band, int decibels);
  void Kill(ToneBand band, bool killed);
  /// 0 to 100; 50 is 0 dB.
  void SetTrim(int slider);
  void RestoreTone(const StoredSection& effects, const StoredSection& equaliser);

  /// Whether cues and loops of both mixing decks lie on beats; stored.
  void SetQuantise(bool on);

  /// A beat is heard now. From the fourth tap on they set the tempo of the file and its grid.
  void Tap();
  /// Deck 1 or 2 follows the tempo and the beats of the other one until the tempo is set by hand, another
  /// file comes, or the tempos lie further apart than BPMPercent, which is said. Gently: what is heard is
  /// pulled into the beat without a jump; AtOnce: it is crossfaded there.
  void Sync(SyncStart start = SyncStart::Gently);
  void Unsync();

  /// Moves a mix point of the file on the deck: in the catalogue, in the playlists and, where tags are to be
  /// written, in the file. Nothing when nothing is loaded.
  void SetMixPoint(MixPoint which, std::chrono::microseconds place);
  /// Back to the point that was found.
  void ResetMixPoint(MixPoint which);
  /// The gain of the file on the deck. Nothing for an empty deck.
  void QueryGain(const GainQueries::Done& done);

 private:
  void Post(std::function<void(DeckStation&)> command);
  void ByHand(std::function<void(DeckStation&)> command);
  void PostTone(std::function<void(DeckTone&)> command);
  void PostCues(std::function<void(DeckCues&)> command);
  void CuesByHand(std::function<void(DeckCues&)> command);
  void PostTempo(std::function<void(DeckTempo&)> command);
  /// Stores a slider of the tempo and moves it.
  void MoveTempo(double decks::TempoSliders::*slider, std::string_view key, double value);
  [[nodiscard]] bool IsStored() const { return number_ <= 2; }
  [[nodiscard]] std::string Section() const;

  int number_;
  Around around_;
};

}  // namespace app
