// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/songs/MidiSong.h"

#include <utility>

namespace app {

support::Result<std::unique_ptr<MidiSong>> MidiSong::Open(decks::AudioEngine& engine,
                                                          decks::SoundControl& control, OutputView place,
                                                          SongRow row, ReadySong ready,
                                                          const SongWishes& wishes, int volume) {
  std::unique_ptr<MidiSong> song(new MidiSong(engine, control, std::move(row), ready));
  song->output_.Place(place);
  song->karaoke_.TakeSong(song->row_.filename, std::move(ready.song));
  song->sequencer_.Offer(song->row_.filename, std::move(ready.sound));
  song->SetTempo(wishes.percent);
  song->SetVolume(volume);
  if (const auto opened = song->karaoke_.KarOpenDevice(); !opened) return opened.Failure();
  song->SetKey(wishes.semitones);
  return song;
}

bool MidiSong::HasMelody() const {
  return sequencer_.Open() != nullptr && sequencer_.Open()->HasMelody();
}

void MidiSong::SetVolume(int volume) {
  const auto level = static_cast<std::uint32_t>(volume * 0xFFFF / 100);
  static_cast<void>(karaoke_.SetMusicVolume(level << 16 | level));
}

void MidiSong::SetKey(int semitones) {
  if (sequencer_.Open() != nullptr) sequencer_.Open()->Wishes().semitones = semitones;
}

void MidiSong::SetTempo(double percent) {
  static_cast<void>(karaoke_.Velocity(1 + percent / 100));
}

void MidiSong::SetMelody(int level) {
  if (sequencer_.Open() != nullptr) {
    sequencer_.Open()->Wishes().melody_level = static_cast<float>(level) / 100;
  }
}

}  // namespace app
