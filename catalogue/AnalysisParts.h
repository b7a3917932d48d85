// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "catalogue/ports/SideStore.h"
#include "music/TrackAnalysis.h"

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
  std::shared_ptr<const music::BeatGrid> grid;  ///< as it was corrected; null where it was not
};

/// What is kept of a file's analysis, or nothing unless its facts, wave and grid are all there and sound.
[[nodiscard]] std::optional<music::TrackAnalysis> ReadAnalysis(SideStore& store, const std::string& path,
                                                               const FileStamp& stamp);
/// Requires: wave and grid are there.
support::Result<void> WriteAnalysis(SideStore& store, const std::string& path, const FileStamp& stamp,
                                    const music::TrackAnalysis& analysis);
/// Of an analysis that is kept already: its mix points, loudness and length alone.
support::Result<void> WriteFacts(SideStore& store, const std::string& path, const FileStamp& stamp,
                                 const music::TrackAnalysis& analysis);

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
/// All but wave and grid.
[[nodiscard]] std::string PackFacts(const music::TrackAnalysis& analysis);
[[nodiscard]] std::optional<music::TrackAnalysis> UnpackFacts(std::string_view bytes);
/// Of a version of its own.
[[nodiscard]] std::string PackMarks(const FileMarks& marks);
[[nodiscard]] std::optional<FileMarks> UnpackMarks(std::string_view bytes);

}  // namespace catalogue
