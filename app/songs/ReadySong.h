// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>

#include "app/ports/HeardSound.h"
#include "app/songs/SongView.h"
#include "catalogue/ports/SideStore.h"
#include "karaoke/SongReader.h"
#include "karaoke/SongSound.h"
#include "karaoke/ports/CodePages.h"
#include "music/BeatGrid.h"
#include "support/Result.h"

namespace app {

inline constexpr int kSongRate = 44100;  ///< of MIDI songs: what every output is opened at

/// A row of the karaoke table.
struct SongRow {
  std::string filename;
  std::string artist;
  std::string title;
};

/// A MIDI file that a worker made ready.
struct ReadySong {
  karaoke::Song song;
  std::shared_ptr<karaoke::SongSound> sound;     // with the engine
  std::shared_ptr<const SongWords> words;        // with the window
  std::shared_ptr<const music::BeatGrid> beats;  // with the views
};

/// What a MIDI song is made ready with.
struct SongTools {
  karaoke::SynthesiserFactory* synthesisers = nullptr;  ///< null: MIDI songs make no sound
  karaoke::CodePages* code_pages = nullptr;             ///< null: nobody guesses them
  catalogue::SideStore* side_store = nullptr;           ///< null: choices of code pages are not kept
};

/// Requires: a factory among the tools. Blocks on the disk: workers only.
[[nodiscard]] support::Result<ReadySong> MakeReady(const SongRow& row, const std::string& soundfont,
                                                   const SongTools& tools);

/// The same words in another code page; without one, in the one that was guessed.
[[nodiscard]] std::shared_ptr<const SongWords> WithCoding(const SongWords& words, const std::string& coding);

/// What was chosen for a file is kept with it; empty is no choice. Blocks on the disk: workers only.
[[nodiscard]] std::string KeptCoding(catalogue::SideStore* store, const std::string& filename);
support::Result<void> KeepCoding(catalogue::SideStore& store, const std::string& filename,
                                 const std::string& coding);

/// The choice for Windows-1252, which is no guess.
inline constexpr const char* kWesternCoding = "windows-1252";

}  // namespace app
