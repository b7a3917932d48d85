// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>
#include <vector>

#include "decks/ports/DeckLoops.h"

namespace decks::testing {

/// Loops without sound: it keeps what it was told. Every file has 44.1 kHz. Threads: one.
class RecordingLoops final : public DeckLoops {
 public:
  explicit RecordingLoops(std::int64_t length = 20 * 44'100) : length_(length) {}

  bool SetLoop(StreamHandle stream, const std::optional<music::Loop>& loop) override {
    if (stream == 0) return false;
    if (loop && (loop->begin.value < 0 || loop->end.value > length_ || loop->Frames() < ShortestLoop(44'100)))
      return false;
    states[stream].loop = loop;
    return true;
  }
  bool JumpBy(StreamHandle stream, std::int64_t frames) override {
    if (stream == 0 || frames >= length_) return false;
    jumps.push_back(frames);
    return true;
  }
  void SetSlip(StreamHandle stream, bool slip) override {
    if (stream != 0) states[stream].slip = slip;
  }
  void SlipBack(StreamHandle stream) override {
    if (stream == 0) return;
    states[stream].loop.reset();
    if (states[stream].slip) ++slipped_back;
  }
  [[nodiscard]] State LoopState(StreamHandle stream) override {
    const auto found = states.find(stream);
    return found == states.end() ? State{} : found->second;
  }

  std::map<StreamHandle, State> states;
  std::vector<std::int64_t> jumps;
  int slipped_back = 0;

 private:
  const std::int64_t length_;
};

}  // namespace decks::testing
