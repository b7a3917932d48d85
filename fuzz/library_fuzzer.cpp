// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "platform/library/LibraryFiles.h"
#include "platform/library/SeratoBlocks.h"

namespace {

void Require(bool holds) {
  if (!holds) abort();
}

void Check(const catalogue::ForeignTrack& track) {
  for (const catalogue::ForeignCue& cue : track.cues) {
    Require(cue.start >= 0 && std::isfinite(cue.start) && cue.number >= -1);
    Require((cue.end > cue.start) == (cue.kind == catalogue::ForeignCue::Kind::Loop));
  }
  double last = -1;
  for (const catalogue::ForeignTempo& tempo : track.grid) {
    Require(tempo.start > last && tempo.bpm > 0 && std::isfinite(tempo.bpm) && tempo.beat >= 1 &&
            tempo.beat <= 4);
    last = tempo.start;
  }
}

void ReadBlocks(std::string_view text) {
  using platform::library::SeratoBlocks;
  const std::string block(text);
  catalogue::LibraryWatch watch;
  for (const SeratoBlocks& blocks :
       {SeratoBlocks{block, block, block}, SeratoBlocks{"", platform::library::Unwrapped(text), ""}}) {
    platform::library::Gathered gathered(catalogue::LibraryKind::Serato, watch);
    catalogue::ForeignTrack track;
    track.path = "/a.mp3";
    (void)platform::library::TakeBlocks(blocks, gathered, track);
    Check(track);
  }
}

}  // namespace

/// Any bytes are refused or give places inside a day, loops that end behind their start, tempos that rise,
/// and lists of tracks that are there.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  ReadBlocks(text);
  const auto read = platform::library::ReadXmlLibrary(text, "input.xml");
  if (!read) return read.Failure().text.empty() ? abort(), 1 : 0;
  const catalogue::ForeignLibrary& library = read.Value();
  for (const catalogue::ForeignTrack& track : library.tracks) {
    Require(!track.path.empty() && track.rating >= 0 && track.rating <= 5);
    Check(track);
  }
  for (const catalogue::ForeignList& list : library.lists) {
    for (const std::uint32_t track : list.tracks) Require(track < library.tracks.size());
  }
  return 0;
}
