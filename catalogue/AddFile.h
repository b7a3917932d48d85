// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "catalogue/MixingTags.h"
#include "catalogue/TagScratch.h"
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
[[nodiscard]] std::string AudioPathOf(const std::string& path);

/// The cells of a track record in column order.
using TrackCells = std::array<std::string, 13>;

/// The record of an analysed file. A file without a title in its tag is called by its name.
[[nodiscard]] TrackCells TrackRow(const std::string& path, const FileTags& tags);
/// With these values for mixing.
[[nodiscard]] TrackCells TrackRow(const std::string& path, const FileTags& tags, const MixingTags& mixing);

/// The karaoke record of an analysed file, in column order.
using KaraokeCells = std::array<std::string, 6>;
[[nodiscard]] KaraokeCells KaraokeRow(const std::string& path, const FileTags& tags);

/// Analyses one music file; its block of mixing tags goes by way of the scratch file where one is given.
/// Threads: a worker; blocks on the disk.
support::Result<TrackCells> AnalyseFile(TagReader& reader, const std::string& path,
                                        const support::Sentences& say = {}, TagScratch* scratch = nullptr);

}  // namespace catalogue
