// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

#include "app/songs/DiscFinder.h"
#include "app/songs/SongPlayer.h"
#include "app/songs/SongView.h"
#include "app/sound/DeckView.h"
#include "karaoke/LyricPainter.h"
#include "support/TripleBuffer.h"

namespace app {

struct StationContext;
struct WorkstationView;

/// Karaoke songs in the running program: what sounds and what the singers see.
/// Threads: StartUp, View and commands on the window's; Tick on the conductor, also before StartUp; ShutDown
/// once the conductor has stopped.
class SongStation {
 public:
  SongStation(const StationContext& context, const SongSources& sources);

  void StartUp();
  /// decks: of the same tick.
  void Tick(const WorkstationView& decks);
  void ShutDown();
  /// As SongPlayer; the conductor's.
  [[nodiscard]] decks::StreamHandle Hear(HeardSong& song) { return player_.Hear(song); }

  /// The song of the synthesiser in the last tick, as a deck's view would show it; the conductor's.
  [[nodiscard]] const DeckView& Sung() const { return sung_; }
  /// What there is to go on with, of this tick; the conductor's.
  [[nodiscard]] const SongInHand& InHand() const { return in_hand_; }

  /// One plays, is only paused, or is being made ready; the conductor's.
  [[nodiscard]] bool SoundsOrComes() const;

  // Of the rotation, on the conductor.
  /// Plays the file as soon as it is ready, as the singer wants it. volume: 0 to 100;
  /// -1: as the fader was left by hand.
  void PlayNow(const SongRow& row, const SongWishes& wishes, int volume);
  /// Nothing sounds then, and nothing comes.
  void StopNow() { player_.Drop(); }
  /// As SongPlayer.
  void Foresee(const SongRow& row) { player_.Foresee(row, Soundfont()); }

  [[nodiscard]] const SongView& View() { return views_.Read(); }

  // Commands; what came of them stands in a later View().
  /// Plays the row's file as soon as it is ready.
  void Play(SongRow row);
  /// As it was in another run of the program.
  void GoOn(const SongInHand& song);
  void Pause();
  /// After the end: from the start.
  void Resume();
  /// Stands at the start then.
  void Stop();
  void Seek(std::chrono::microseconds position);
  /// 0 to 100, stored.
  void SetVolume(int volume);
  /// -12 to 12, for this song alone, or for the one that comes; drums stay.
  void SetKey(int semitones);
  /// From the original, -50 to 100, in the same way.
  void SetTempo(double percent);
  /// The code page of a song's words, as iconv calls it; empty for what is guessed. Kept with the file.
  void SetCoding(const std::string& filename, const std::string& coding);
  /// How loud the channel is that plays what is sung, 0 to 100, stored.
  void SetMelody(int level);

  /// What MIDI songs may sound with, the best known first. Filled in by PumpWindow soon after StartUp.
  [[nodiscard]] const std::vector<karaoke::Soundfont>& Soundfonts() const { return soundfonts_; }
  /// A path, or empty for the first one installed; stored, from the next song on.
  void SetSoundfont(const std::string& path);
  [[nodiscard]] std::string Soundfont() const;

  /// How the words are to look, as it is stored now: a display shows what was chosen, which is the stage's
  /// look until then; the settings page is about the user's own.
  [[nodiscard]] karaoke::LyricLook Look(karaoke::LookReader reader) const;
  /// Of a picture's path as it is stored: data files keep the backslash before their name.
  [[nodiscard]] std::filesystem::path Native(const std::string& stored) const;

 private:
  void NoteSung(const SongView& view);
  [[nodiscard]] int StoredLevel(std::string_view key) const;

  const StationContext& context_;
  SongSources sources_;
  SongPlayer player_;
  DiscFinder discs_;
  DeckView sung_;
  SongInHand in_hand_;
  std::vector<karaoke::Soundfont> soundfonts_;
  support::TripleBuffer<SongView> views_;
};

}  // namespace app
