// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/EngineLoops.h"

#include <algorithm>

namespace engine {
namespace {

/// What is heard, with what was asked for since and is on its way.
std::int64_t PlaceAsked(const HeardPlace& heard, const Stream::OrderView& orders) {
  if (heard.place != orders.place) return orders.frame + orders.turns.moved - orders.moved_before;
  return heard.source + orders.turns.moved - heard.moved;
}

}  // namespace

bool EngineLoops::SetLoop(decks::StreamHandle handle, const std::optional<music::Loop>& loop) {
  Playing* playing = players_.Find(handle);
  if (playing == nullptr) return false;
  Stream& stream = *playing->stream;
  if (loop && (loop->begin.value < 0 || loop->end.value > stream.Length() ||
               loop->Frames() < decks::ShortestLoop(stream.Format().sample_rate))) {
    return false;
  }
  stream.SetLoop(loop);
  wake_();
  return true;
}

bool EngineLoops::JumpBy(decks::StreamHandle handle, std::int64_t frames) {
  Playing* playing = players_.Find(handle);
  if (playing == nullptr) return false;
  Stream& stream = *playing->stream;
  const auto orders = stream.View();
  const std::int64_t place = PlaceAsked(PlaceOf(*playing), orders);
  if (frames > stream.Length() || place + frames >= stream.Length()) return false;
  frames = std::max(frames, -place);
  std::optional<music::Loop> loop = orders.turns.loop;
  if (loop && loop->Holds(place)) {
    loop = loop->MovedBy(frames);
    if (loop->begin.value < 0 || loop->end.value > stream.Length()) return false;
  } else if (loop && place + frames >= loop->end.value) {
    loop.reset();
  }
  stream.Move(frames, loop);
  wake_();
  return true;
}

void EngineLoops::SetSlip(decks::StreamHandle handle, bool slip) {
  Playing* playing = players_.Find(handle);
  if (playing == nullptr) return;
  playing->stream->SetSlip(slip);
  wake_();
}

void EngineLoops::SlipBack(decks::StreamHandle handle) {
  Playing* playing = players_.Find(handle);
  if (playing == nullptr) return;
  Stream& stream = *playing->stream;
  const auto turns = stream.View().turns;
  if (turns.slip) {
    stream.SlipBack();
  } else if (turns.loop) {
    stream.SetLoop(std::nullopt);
  }
  wake_();
}

decks::DeckLoops::State EngineLoops::LoopState(decks::StreamHandle handle) {
  const Playing* playing = players_.Find(handle);
  if (playing == nullptr) return {};
  const auto turns = playing->stream->View().turns;
  return {turns.loop, turns.slip};
}

}  // namespace engine
