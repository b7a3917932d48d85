// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "app/DeskContext.h"
#include "app/songs/EngineSongOutput.h"
#include "app/songs/SongView.h"
#include "app/sound/DeckStation.h"
#include "karaoke/Karaoke.h"
#include "karaoke/SongSequencer.h"
#include "karaoke/SongSound.h"
#include "karaoke/ports/DiscImages.h"

namespace app {

/// A row of the karaoke table.
struct SongRow {
  std::string filename;
  std::string artist;
  std::string title;
};

/// What songs sound on.
struct SongSources {
  decks::AudioEngine& engine;
  decks::SoundControl& control;
  DeckStation& companion;  ///< the deck that plays the songs which are audio files
  karaoke::SynthesiserFactory* synthesisers = nullptr;  ///< null: MIDI songs make no sound
  karaoke::DiscImages* images = nullptr;                ///< null: none are shown
};

/// A MIDI file that a worker made ready.
struct ReadySong {
  karaoke::Song song;
  std::shared_ptr<karaoke::SongSound> sound;     // with the engine
  std::shared_ptr<const SongWords> words;        // with the window
  std::shared_ptr<const music::BeatGrid> beats;  // with the views
};

/// Plays one song at a time: a MIDI file on the sequencer, any other on the companion deck.
///
/// Law: what plays goes on until the new song is ready; a file that cannot be played stops nothing. The
/// newest wish wins. Key and tempo are the singer's: each song begins as it is written. Threads: the
/// conductor.
class SongPlayer {
 public:
  SongPlayer(const DeskContext& context, const SongSources& sources);

  /// soundfont: a path, or empty for the first one installed.
  void Play(SongRow row, std::string soundfont);
  void Pause();
  /// After the end: from the start.
  void Resume();
  void Stop();
  void Seek(std::chrono::microseconds position);
  void SetVolume(int volume);
  void SetKey(int semitones);
  void SetTempo(double percent);
  void SetMelody(int level);

  /// decks: of the same tick.
  void Tick(const WorkstationView& decks, SongView& view);
  /// What a synthesiser plays now, and its stream; nothing and 0 while none does.
  [[nodiscard]] decks::StreamHandle Hear(HeardSong& song);
  void Release();

 private:
  enum class Kind { None, Midi, Companion };
  using State = SongView::State;
  /// A song that is made ready, for the place that it plays on.
  struct Wish {
    SongRow row;
    std::string soundfont;
    bool moves = false;  ///< the song that plays, for another output
  };

  void Prepare(const Wish& wish);
  void Prepared(const Wish& wish, support::Result<ReadySong> ready);
  support::Result<void> Open(const SongRow& row, ReadySong ready);
  void Move(ReadySong ready);
  void StartCompanion(SongRow row);
  void LookAtCompanion(const DeckView& deck);
  void FollowOutput(OutputView place);
  void ApplyCompanionTempo();
  void ApplyWishes();
  void Fail(const SongRow& row, const std::string& why);
  void CloseMidi();
  void ShowMidi(SongView& view);
  void ShowCompanion(const DeckView& deck, SongView& view) const;

  DeskContext context_;
  SongSources sources_;
  EngineSongOutput output_;
  karaoke::SongSequencer sequencer_{output_};
  karaoke::Karaoke karaoke_{sequencer_};
  Kind kind_ = Kind::None;
  State state_ = State::Empty;
  SongRow row_;  ///< that plays
  std::string soundfont_;
  std::shared_ptr<const SongWords> words_;        // with the window
  std::shared_ptr<const music::BeatGrid> beats_;  // with the views
  std::optional<SongRow> coming_;
  bool companion_comes_ = false;
  std::uint64_t newest_ = 0;
  OutputView moving_to_;  ///< where the newest wish will play
  int volume_ = 100;
  int semitones_ = 0;
  double percent_ = 0;
  int melody_ = 100;
  std::string failure_;
  std::uint64_t failures_ = 0;
};

/// Whether a file is played by the sequencer, by the end of its name.
[[nodiscard]] bool IsMidiSong(std::string_view filename);

}  // namespace app
