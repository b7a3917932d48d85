// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "dmx/ports/FixtureFormats.h"
#include "support/Sentences.h"

namespace dmx {

/// A mode that can be imported.
struct PackEntry {
  std::string maker, model, mode;
  std::string key;  ///< all three in capitals, for the search
  std::size_t channels = 0;
  std::filesystem::path file;
  std::size_t number = 0;  ///< of the mode in the file, from 0
};

/// The modes of whole libraries, by maker, model and mode.
struct PackIndex {
  static constexpr std::size_t kMostEntries = 100'000;
  static constexpr std::size_t kMostNotes = 100;

  std::vector<PackEntry> entries;
  std::size_t fixtures = 0;
  std::size_t left_out = 0;        ///< files that are none, or cannot be read
  std::vector<std::string> notes;  ///< why; the first of them, a sentence each
};

/// Files below the folder that may be fixtures, by name. What cannot be entered is passed over; folders that
/// are links are not entered. Blocks on the disk.
/// stopped: by whoever no longer waits for it.
[[nodiscard]] std::vector<std::filesystem::path> PackFilesIn(const std::filesystem::path& folder,
                                                             const std::atomic<bool>& stopped);

/// Reads a file and adds its modes, or a note. Blocks on the disk.
void AddToIndex(const FixtureFormats& formats, const std::filesystem::path& file, PackIndex& index,
                const support::Sentences& say = support::English());
void SortIndex(PackIndex& index);

/// What a search found: the first entries, and how many there are in all.
struct PackFound {
  std::vector<const PackEntry*> entries;
  std::size_t all = 0;
};
/// Entries in which every word of the text stands, in any letter case.
[[nodiscard]] PackFound FindInIndex(const PackIndex& index, std::string_view text, std::size_t most);

}  // namespace dmx
