// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/library/Values.h"

namespace platform::library {

/// The blocks that Serato puts into a music file; empty where there is none.
struct SeratoBlocks {
  std::string markers;   ///< "Serato Markers_": the first five cues and nine loops
  std::string markers2;  ///< "Serato Markers2"
  std::string beatgrid;  ///< "Serato BeatGrid"

  [[nodiscard]] bool IsEmpty() const { return markers.empty() && markers2.empty() && beatgrid.empty(); }
};

/// Takes the blocks into a track: pads count from 0, loops behind the eight cues. What the older block says
/// of a pad wins; the first beat of the grid counts as that of a bar. Gives the names of blocks that are
/// damaged, of which only what stands before the fault was taken.
[[nodiscard]] std::vector<std::string> TakeBlocks(const SeratoBlocks& blocks, Gathered& gathered,
                                                  catalogue::ForeignTrack& track);

/// Of base64, with or without its padding and with line ends anywhere; up to the first byte that is none.
[[nodiscard]] std::string Base64(std::string_view text);
/// The block in what an MP4 item or a Vorbis comment holds: base64 of a type, two names and the bytes.
[[nodiscard]] std::string Unwrapped(std::string_view text);

}  // namespace platform::library
