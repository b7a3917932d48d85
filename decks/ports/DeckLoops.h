// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>

#include "decks/ports/AudioEngine.h"
#include "music/Loop.h"

namespace decks {

/// Frames of a file at that rate, 5 ms: what is shorter would be a tone and no beat.
[[nodiscard]] constexpr std::int64_t ShortestLoop(int sample_rate) {
  return sample_rate / 200;
}

/// Loops and jumps of playing streams, each on one frame, without a click and in step with what would have
/// been heard: as soon as the next block, whatever was made ahead. Streams that follow go along.
/// Threads: as AudioEngine; all calls from its owner's.
class DeckLoops {
 public:
  struct State {
    std::optional<music::Loop> loop;
    bool slip = false;
    bool operator==(const State&) const = default;
  };

  virtual ~DeckLoops() = default;

  /// Played again and again from the moment that its end is reached, or at once where that has passed: then
  /// from the place inside where it would be. A place set outside of the loop ends it, as does the file's
  /// next stream; none ends it, and the music goes on. False, and all as it was, for a loop that is shorter
  /// than ShortestLoop or not within the file, and for a stream that is none.
  virtual bool SetLoop(StreamHandle stream, const std::optional<music::Loop>& loop) = 0;
  /// On, or back where it is below 0, no further than to the file's beginning; a loop that plays moves along.
  /// False, and all as it was, beyond the end.
  virtual bool JumpBy(StreamHandle stream, std::int64_t frames) = 0;
  /// While it is on, the place is kept where the stream would be without loops, jumps and places set since.
  virtual void SetSlip(StreamHandle stream, bool slip) = 0;
  /// Goes on there; a loop ends. Without slip only that.
  virtual void SlipBack(StreamHandle stream) = 0;
  [[nodiscard]] virtual State LoopState(StreamHandle stream) = 0;
};

}  // namespace decks
