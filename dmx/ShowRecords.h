// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <span>
#include <vector>

#include "dmx/Patch.h"
#include "dmx/show.h"

namespace dmx {

/// By what the records of a show's steps are told apart.
enum class RecordOrder {
  Spans,       ///< NumberOf records a fixture, by start channel; those set aside have theirs too
  ShownSpans,  ///< the same without those set aside
  Patched,     ///< the channels that are patched now, in their order
  FromOne,     ///< every channel of the universe from 1 on
};

/// What one record of a step stands for.
struct RecordPlace {
  int fixture = 0;      ///< position in the show from 1; from -1 down: one set aside; 0: nobody's
  int channel = 0;      ///< of the fixture, from 1
  int on_the_wire = 0;  ///< channel of the universe; 0: the level is kept, and sent nowhere

  bool operator==(const RecordPlace&) const = default;
};

/// Whether the stored spans tell whose records are whose.
[[nodiscard]] constexpr bool SpansTell(RecordOrder order) {
  return order == RecordOrder::Spans || order == RecordOrder::ShownSpans;
}

/// The stored spans where they add up to the records of a step; else what is patched, or, where there are
/// more records than that, every channel.
[[nodiscard]] RecordOrder OrderOf(const Show& show, const Patch& patch);

/// One for each record. last: FromOne goes on to there at least.
[[nodiscard]] std::vector<RecordPlace> RecordPlaces(const Show& show, const Patch& patch, RecordOrder order,
                                                    int last = 0);
/// The same in a few words: the channel that each record is sent to; 0 for none.
[[nodiscard]] std::vector<int> RecordChannels(const Show& show, const Patch& patch);
[[nodiscard]] std::vector<int> RecordChannels(const std::vector<RecordPlace>& places);

/// Gives every step a record for each of the sources, which are positions of its records so far, from 1;
/// those that it has not are dark.
void ArrangeRecords(Scenes& scenes, std::span<const int> sources);

}  // namespace dmx
