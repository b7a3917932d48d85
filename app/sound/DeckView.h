// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <chrono>
#include <memory>
#include <optional>
#include <string>

#include "app/sound/EffectTable.h"
#include "decks/TempoSliders.h"
#include "music/BeatGrid.h"
#include "music/TrackAnalysis.h"

namespace music {
struct Cues;
}  // namespace music

namespace app {

inline constexpr int kDecks =
    4;  ///< 1 and 2 mix, 3 plays karaoke's companion audio, 4 is the catalogue's pre-listen

inline constexpr int kMixingDecks = 2;

inline constexpr int kMostEqGain = 12;  ///< of an equaliser slider, up and down, in dB

/// The bands of a deck's own equaliser.
enum class ToneBand { High, Mid, Bass };
inline constexpr std::size_t kToneBands = 3;
[[nodiscard]] constexpr std::size_t PlaceOf(ToneBand band) {
  return static_cast<std::size_t>(band);
}
inline constexpr int kLeastTone = -24;  ///< of a band, in dB; whoever wants less kills it
inline constexpr int kMostTone = 12;
inline constexpr int kMiddleTrim = 50;  ///< of 0 to 100: 0 dB

inline constexpr int kTempoRange = 8;  ///< of a tempo slider that was not set, up and down, in percent

/// Where a track begins and ends in a mix.
enum class MixPoint { Start, End };

template <typename T>
struct MixPointPair {
  T start{};
  T end{};
  [[nodiscard]] T& Of(MixPoint which) { return which == MixPoint::Start ? start : end; }
  [[nodiscard]] const T& Of(MixPoint which) const { return which == MixPoint::Start ? start : end; }
};

/// Cues and loops of a deck.
struct CuesView {
  std::shared_ptr<const music::Cues> marked;  ///< null when there are none; shared, because it never changes
  bool looping = false;
  bool has_loop = false;  ///< the one that plays, or the newest that did
  std::chrono::microseconds loop_begin{0};
  std::chrono::microseconds loop_end{0};
  std::optional<std::chrono::microseconds> in;  ///< of a loop by hand that has no end yet
  bool held = false;                            ///< it plays as long as a cue is held
  bool has_beats = false;                       ///< loops and jumps by beats can be made
  double beats = 4;                             ///< of the next loop
  double jump = 4;
  bool quantise = true;
  bool slip = false;
};

/// What a deck shows. A snapshot of one tick of the conductor.
struct DeckView {
  enum class State { Empty, Loading, Stopped, Playing, Paused, Ended };
  State state = State::Empty;
  std::string filename;  ///< of the track that is shown: of the one that comes while it is made ready
  std::string artist;
  std::string title;
  /// What stands on the deck, and how, also while another file is made ready beside it; position, length and
  /// levels are its.
  std::string loaded;
  State loaded_state = State::Empty;
  std::string message;  ///< a sentence for the title area, when a file could not be played; else empty
  std::chrono::microseconds position{0};  ///< heard now
  bool waiting = false;                   ///< the place is not decoded yet
  std::chrono::microseconds length{0};
  bool length_exact = false;
  bool cut_short = false;  ///< the file could be read no further: it ends there
  support::Decibels gain;  ///< that brings the track to the others' loudness, in the levels too
  float left_db = -90;     ///< dB below full scale, -90 is silence
  float right_db = -90;
  int trim = kMiddleTrim;                 ///< 0 to 100, see TrimOf; in the levels too
  std::array<int, kToneBands> tone{};     ///< where each band is turned to, in dB, by PlaceOf
  std::array<bool, kToneBands> killed{};  ///< and which of them are taken out
  bool listening = false;                 ///< it stands, and is heard in the head-phones alone
  double bpm = 0;           ///< of the file: of its row, else as it was measured; 0 when unknown
  int volume = 100;         ///< 0 to 100
  int pre_volume = 0;       ///< 0 to 100, in the head-phones; each Play begins at 0
  double playing_bpm = 0;   ///< as it is heard, 0 when unknown
  double speed = 1;         ///< seconds of the file a second
  float tempo_percent = 0;  ///< from the original
  decks::KeyLock key_lock = decks::KeyLock::On;
  float pitch = 0;                ///< semitones from the original
  float sample_percent = 0;       ///< sample rate from the file's own
  int tempo_range = kTempoRange;  ///< how far the tempo slider goes, up and down, in percent
  bool synced = false;            ///< it follows the other deck's beat
  /// Seconds by which its beat comes late (above 0) or early while it is synced.
  double sync_error = 0;
  int sample_rate = 0;  ///< Hz
  /// Of the file on the deck; null until a worker has begun it, and growing until it is done. Shared, because
  /// the window draws from it while the deck goes on to another file; it never changes.
  std::shared_ptr<const music::Wave> wave;
  /// Where the beats lie, as they were found or set by hand; null when none are known. Shared in the same
  /// way.
  std::shared_ptr<const music::BeatGrid> grid;
  std::shared_ptr<const music::TrackForm> form;  ///< as it was found; null when nothing is known
  std::optional<music::Seconds> bar;             ///< a beat that begins a bar, as found or set by hand
  music::Loudness loudness;                      ///< not valid until it was measured
  bool has_mix_points = false;                   ///< false until a worker has found them
  std::chrono::microseconds start_mix_point{0};
  std::chrono::microseconds end_mix_point{0};
  MixPointPair<bool> moved{};  ///< by hand, or by what the catalogue remembers
  MixPointPair<std::optional<std::chrono::microseconds>> found;  ///< what the scan found
  std::array<float, 10> equaliser{};                             ///< gain of each band as it sounds, in dB
  EffectChoices effects;
  std::array<bool, decks::kEffectKinds> effects_held{};  ///< by a pad
  CuesView cues;
  double scan_busy = 0;  ///< 0 to 1, over and over, while the file is analysed; else 0
};

/// How a deck comes into the other one's beat.
enum class SyncStart {
  Gently,  ///< what is heard is pulled there
  AtOnce   ///< it is crossfaded there
};

}  // namespace app
