// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "catalogue/MixingTags.h"
#include "catalogue/NameRule.h"
#include "catalogue/TagScratch.h"
#include "catalogue/ports/SongReader.h"
#include "catalogue/ports/TagReader.h"
#include "support/Result.h"
#include "support/Sentences.h"

namespace catalogue {

/// What the add-one-file step makes of a file, told by the last three characters of its name.
enum class FileKind {
  Audio,      ///< analysed as it is; the tag reader decides whether it is audio at all
  MidiSong,   ///< "KAR" or "MID"
  DiscImage,  ///< "CDG": its sound is the mp3 beside it
};
[[nodiscard]] FileKind KindOf(std::string_view path);

/// The file that is analysed and played for this one: a disc image's companion, else the file itself.
/// Threads: a worker; of a disc image it blocks on the disk.
[[nodiscard]] std::string AudioPathOf(const std::string& path);

/// The cells of a track record in column order.
using TrackCells = std::array<std::string, 13>;

using CellViews = std::array<std::string_view, 13>;

/// What a row is made of as far as the file itself tells: all but its path, artist and title as its tag gives
/// them.
[[nodiscard]] TrackCells MaterialOf(const FileTags& tags, const MixingTags& mixing);
/// The same of a MIDI song.
[[nodiscard]] TrackCells MaterialOf(const SongFacts& song);
[[nodiscard]] CellViews ViewsOf(const TrackCells& cells);
/// Makes the row of it: puts in the path, and what its name tells where the tag gave no artist or no title.
/// The views lead into the path then.
void NameRow(CellViews& material, std::string_view path, const NameRule& rule);

/// The record of an analysed file.
[[nodiscard]] TrackCells TrackRow(const std::string& path, const FileTags& tags, const MixingTags& mixing,
                                  const NameRule& rule = {});
[[nodiscard]] TrackCells TrackRow(const std::string& path, const FileTags& tags, const NameRule& rule = {});

/// The karaoke record out of a track record, in column order.
using KaraokeViews = std::array<std::string_view, 6>;
[[nodiscard]] KaraokeViews KaraokeRow(const CellViews& track_row);

/// Analyses one music file; its block of mixing tags goes by way of the scratch file where one is given.
/// Threads: a worker; blocks on the disk.
support::Result<TrackCells> AnalyseFile(TagReader& reader, const std::string& path,
                                        const support::Sentences& say = {}, TagScratch* scratch = nullptr,
                                        const NameRule& rule = {});

/// The same for a file of the karaoke table: MIDI songs are read by their reader.
support::Result<TrackCells> AnalyseSong(SongReader& songs, TagReader& reader, const std::string& path,
                                        TagScratch* scratch = nullptr, const NameRule& rule = {});

}  // namespace catalogue
