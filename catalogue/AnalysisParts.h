// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>

#include "catalogue/ports/SideStore.h"
#include "music/TrackAnalysis.h"

namespace music {
struct Cues;
struct TrackForm;
}  // namespace music

namespace catalogue {

/// Who says where a mix point of a file's row lies.
enum class PointBy {
  Unknown,  ///< the row came with it, from a tag or an older index
  Scan,     ///< it was found, by whatever threshold
  Hand,
};

/// What a hand did to a file.
struct FileMarks {
  PointBy start = PointBy::Unknown;
  PointBy end = PointBy::Unknown;
  // Where a hand put them; nothing where none did, or where that was not kept yet.
  std::optional<std::chrono::microseconds> start_at;
  std::optional<std::chrono::microseconds> end_at;
  std::shared_ptr<const music::BeatGrid> grid;   ///< as it was corrected; null where it was not
  std::shared_ptr<const music::Cues> cues;       ///< null where none were ever set
  std::optional<std::chrono::microseconds> bar;  ///< a bar begins at the beat there
};

/// A beat that begins a bar: as a hand says, else as it was found. form: may be null.
[[nodiscard]] std::optional<music::Seconds> BarOf(const music::TrackForm* form, const FileMarks& marks);

/// Where the findings about a file are kept: under its sound, so that they stay when the file is moved or
/// another program writes its tag; under its path and state where its sound cannot be told.
struct SideKey {
  std::string path;
  FileStamp stamp;
  bool operator==(const SideKey&) const = default;
};

/// Reads the file when this state of it is met for the first time, and takes along what is kept under its
/// path alone. Nothing for a file that is not there.
[[nodiscard]] std::optional<SideKey> KeyOf(SideStore& store, const std::string& path);
/// The same of a file about whose sound something is kept already; nothing for any other, which is quick.
[[nodiscard]] std::optional<SideKey> KeptKeyOf(SideStore& store, const std::string& path);
/// Where the file with this sound was when it was met last; empty where that is not known.
[[nodiscard]] std::string LastPathOf(SideStore& store, const SideKey& key);

/// What is kept of a file's analysis, or nothing unless its facts, wave and grid are all there and sound. Its
/// form is null where none was looked for yet.
[[nodiscard]] std::optional<music::TrackAnalysis> ReadAnalysis(SideStore& store, const std::string& path,
                                                               const FileStamp& stamp);
/// Requires: wave and grid are there.
support::Result<void> WriteAnalysis(SideStore& store, const std::string& path, const FileStamp& stamp,
                                    const music::TrackAnalysis& analysis);
/// Of an analysis that is kept already: its mix points, loudness and length alone.
support::Result<void> WriteFacts(SideStore& store, const std::string& path, const FileStamp& stamp,
                                 const music::TrackAnalysis& analysis);

/// What is kept of a hand's marks; none where nothing is.
[[nodiscard]] FileMarks ReadMarks(SideStore& store, const SideKey& key);

/// All that is kept of a file goes on to be kept of its new state, in which nothing but its tag differs.
support::Result<void> CarryOver(SideStore& store, const std::string& path, const FileStamp& from,
                                const FileStamp& to);
/// All that is kept of a file under its old path is kept under the new one too, where it is the same file by
/// size and time.
support::Result<void> CarryTo(SideStore& store, const std::string& from, const std::string& to);

// The parts as bytes. Each begins with the version of the analysis; bytes of another version, and any that
// were not written by the function beside, give nothing.
[[nodiscard]] std::string PackWave(const music::Wave& wave);
[[nodiscard]] std::optional<music::Wave> UnpackWave(std::string_view bytes);
[[nodiscard]] std::string PackGrid(const music::BeatGrid& grid);
[[nodiscard]] std::optional<music::BeatGrid> UnpackGrid(std::string_view bytes);
/// Of a version of its own.
[[nodiscard]] std::string PackForm(const music::TrackForm& form);
[[nodiscard]] std::optional<music::TrackForm> UnpackForm(std::string_view bytes);
/// All but wave, grid and form.
[[nodiscard]] std::string PackFacts(const music::TrackAnalysis& analysis);
[[nodiscard]] std::optional<music::TrackAnalysis> UnpackFacts(std::string_view bytes);
/// Of a version of its own.
[[nodiscard]] std::string PackMarks(const FileMarks& marks);
[[nodiscard]] std::optional<FileMarks> UnpackMarks(std::string_view bytes);

}  // namespace catalogue
