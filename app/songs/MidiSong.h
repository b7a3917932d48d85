// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "app/songs/EngineSongOutput.h"
#include "app/songs/ReadySong.h"
#include "karaoke/Karaoke.h"
#include "karaoke/SongSequencer.h"

namespace app {

/// What the singer wants of a song.
struct SongWishes {
  int semitones = 0;   ///< -12 to 12
  double percent = 0;  ///< tempo from the original, -50 to 100
  bool operator==(const SongWishes&) const = default;
};

/// A MIDI song on a sequencer and a stream of its own, so that the next one can be made ready beside it.
/// Threads: the conductor. Owns: its stream, which fades out when this ends.
class MidiSong {
 public:
  /// place: where it plays. volume: 0 to 100. Stands at the start then.
  [[nodiscard]] static support::Result<std::unique_ptr<MidiSong>> Open(decks::AudioEngine& engine,
                                                                       decks::SoundControl& control,
                                                                       OutputView place, SongRow row,
                                                                       ReadySong ready,
                                                                       const SongWishes& wishes, int volume);

  [[nodiscard]] const SongRow& Row() const { return row_; }
  [[nodiscard]] karaoke::Karaoke& Device() { return karaoke_; }
  [[nodiscard]] const std::shared_ptr<const music::BeatGrid>& Beats() const { return beats_; }
  [[nodiscard]] const std::shared_ptr<const SongWords>& Words() const { return words_; }
  void Show(std::shared_ptr<const SongWords> words) { words_ = std::move(words); }
  [[nodiscard]] bool HasMelody() const;
  [[nodiscard]] decks::HeardStream Heard() { return output_.Heard(); }
  [[nodiscard]] decks::StreamHandle Stream() const { return output_.Stream(); }

  void SetVolume(int volume);
  void SetKey(int semitones);
  void SetTempo(double percent);
  /// 0 to 100.
  void SetMelody(int level);

 private:
  MidiSong(decks::AudioEngine& engine, decks::SoundControl& control, SongRow row, const ReadySong& ready)
      : output_(engine, control), row_(std::move(row)), words_(ready.words), beats_(ready.beats) {}

  EngineSongOutput output_;
  karaoke::SongSequencer sequencer_{output_};
  karaoke::Karaoke karaoke_{sequencer_};
  SongRow row_;
  std::shared_ptr<const SongWords> words_;        // with the window
  std::shared_ptr<const music::BeatGrid> beats_;  // with the views
};

}  // namespace app
