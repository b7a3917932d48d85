// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "app/songs/MidiSong.h"
#include "app/songs/ReadySong.h"
#include "app/songs/SongView.h"
#include "app/sound/DeckStation.h"
#include "karaoke/ports/DiscImages.h"

namespace app {

struct WorkstationView;
struct StationContext;

/// A song and where it is, to go on with it in another run of the program.
struct SongInHand {
  SongRow row;  ///< without a name where there is none
  SongView::State state = SongView::State::Empty;
  std::chrono::microseconds position{0};
  int semitones = 0;
  double percent = 0;
  std::string coming;  ///< the file that is being made ready, else empty
  std::chrono::microseconds length{0};
  int volume = 100;  ///< 0 to 100
};

/// What songs sound on.
struct SongSources {
  decks::AudioEngine& engine;
  decks::SoundControl& control;
  DeckStation& companion;  ///< the deck that plays the songs which are audio files
  SongTools tools{};
  karaoke::DiscImages* images = nullptr;  ///< null: none are shown
};

/// Plays one song at a time: a MIDI file on the sequencer, any other on the companion deck.
///
/// Law: the next song is made ready beside the one that is there, which goes on, or stands, until the next
/// one sounds; a file that cannot be played changes nothing. The newest wish wins. Key and tempo are the
/// singer's: each song begins as it is written, or as was wished after it was chosen. Threads: the
/// conductor.
class SongPlayer {
 public:
  SongPlayer(const StationContext& context, const SongSources& sources);

  /// soundfont: a path, or empty for the first one installed.
  /// volume: 0 to 100, from its begin on; -1 leaves it.
  void Play(SongRow row, std::string soundfont, const SongWishes& wishes, int volume);
  /// The row's file will probably be wanted next: it is made ready, so that Play finds it so. One without a
  /// name: nothing is foreseen.
  void Foresee(SongRow row, std::string soundfont);
  /// Makes the song ready and goes on with it where it was; until then a hand that pauses or stops it wins.
  void GoOn(const SongInHand& song, std::string soundfont);
  void Pause();
  /// After the end: from the start.
  void Resume();
  void Stop();
  /// Nothing sounds, and nothing comes.
  void Drop();
  void Seek(std::chrono::microseconds position);
  void SetVolume(int volume);
  /// Of the song that comes, where one does.
  void SetKey(int semitones);
  void SetTempo(double percent);
  void SetMelody(int level);
  /// Of the song that is there, if it is still this file; empty for what was guessed.
  void SetCoding(const std::string& filename, const std::string& coding);

  /// decks: of the same tick.
  void Tick(const WorkstationView& decks, SongView& view);
  /// Of the song that is there.
  [[nodiscard]] SongRow Row() const;
  /// What a synthesiser plays now, and its stream; nothing and 0 while none does.
  [[nodiscard]] decks::StreamHandle Hear(HeardSong& song);
  void Release();

 private:
  enum class Kind { None, Midi, Companion };
  using State = SongView::State;
  /// A song that is made ready.
  struct Coming {
    SongRow row;
    SongWishes wishes;
    bool on_companion = false;
    std::optional<SongInHand> from = {};  ///< it goes on
    int volume = -1;
  };
  using Ready = support::Result<ReadySong>;
  /// A song that may be wanted next.
  struct Foreseen {
    SongRow row;
    std::string soundfont;
    std::optional<ReadySong> ready = {};  ///< of a MIDI file, once it is
    support::TimePoint prepared{};        ///< the engine was told to have any other one ready
  };

  void Prepare(const SongRow& row, std::uint64_t SongPlayer::*newest, void (SongPlayer::*then)(const Ready&));
  void Begin(const Ready& ready);
  void Move(const Ready& ready);
  [[nodiscard]] support::Result<std::unique_ptr<MidiSong>> OpenBeside(const SongRow& row, ReadySong ready,
                                                                      const SongWishes& wishes);
  void StartCompanion();
  void LookAtCompanion(const DeckView& deck);
  void TakeCompanion(const Coming& coming);
  void KeepForeseen();
  void TakeForeseen(const Ready& ready);
  void DropComing();
  void DropGoingOn();
  void FollowOutput(OutputView place);
  void ApplyWishes();
  void Fail(const SongRow& row, const std::string& why);
  void CloseMidi();
  [[nodiscard]] SongWishes& Wishes() { return coming_ ? coming_->wishes : wishes_; }
  void ShowMidi(SongView& view);
  void ShowCompanion(const DeckView& deck, SongView& view) const;

  const StationContext& context_;
  SongSources sources_;
  Kind kind_ = Kind::None;
  std::unique_ptr<MidiSong> midi_;                    ///< while a MIDI song is there
  State state_ = State::Empty;                        ///< of that
  SongRow companion_row_;                             ///< on the companion deck
  std::shared_ptr<const SongWords> companion_words_;  // with the window
  SongWishes wishes_;                                 ///< of the song that is there
  std::optional<Coming> coming_;
  Foreseen foreseen_;
  std::string soundfont_;
  std::uint64_t newest_ = 0;           ///< song that was chosen
  std::uint64_t newest_foreseen_ = 0;  ///< song that may be wanted next
  std::uint64_t newest_move_ = 0;      ///< of the song that is there
  OutputView place_;                   ///< where songs play
  int volume_ = 100;
  int melody_ = 100;
  std::string failure_;
  std::uint64_t failures_ = 0;
};

/// Whether a file is played by the sequencer, by the end of its name.
[[nodiscard]] bool IsMidiSong(std::string_view filename);

}  // namespace app
