// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include "app/recording/RecordedTracks.h"

namespace app {

/// A recording on the disk.
struct KeptRecording {
  std::string title;                  ///< its name, and when it began
  std::string path;                   ///< native, of its file; of its folder where each track has a file
  std::vector<RecordedTrack> tracks;  ///< their files with the whole path
};

/// "Wedding 2026-11-21 20.05.00": a text that ends in the moment of a beginning, as recordings are called.
[[nodiscard]] bool NamesARecording(const std::string& text);

/// By its ending.
[[nodiscard]] bool IsSoundFile(const std::filesystem::path& path);

/// The newest recordings of a folder, the newest first, each with its tracks. Other files are passed over.
/// Blocks on the disk.
[[nodiscard]] std::vector<KeptRecording> RecordingsIn(const std::filesystem::path& folder,
                                                      std::size_t most = 60);

}  // namespace app
