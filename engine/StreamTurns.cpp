// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
// The calls of StreamFeed that take a stream elsewhere while it plays: loops, jumps and the way back.

#include <algorithm>
#include <cmath>

#include "engine/StreamFeed.h"

namespace engine {

StreamFeed::Reached StreamFeed::ReachedAt(std::int64_t frame) const {
  const auto live = static_cast<std::size_t>(live_);
  const auto heard = stream_->log.Newest();
  const bool of_it = heard && heard->segment == stream_->lanes[live].Segment() &&
                     heard->lane == static_cast<std::uint32_t>(live_);
  if (!of_it) return {static_cast<double>(segments_[live].begin), false};
  const auto made = WillPlay() ? MadeAnywhere() : std::nullopt;
  if (!made) return {heard->line + heard->frames * heard->ratio, false};
  if (frame >= made->frame) return {made->LineAt(static_cast<double>(frame)), true};
  const double pace = (made->line - heard->line) / static_cast<double>(made->frame - heard->frame);
  return {heard->line + static_cast<double>(frame - heard->frame) * pace, true};
}

void StreamFeed::FollowSlip(bool slip) {
  if (slip == slips_) return;
  slips_ = slip;
  if (!slip || live_ < 0) return;
  Segment& live = segments_[static_cast<std::size_t>(live_)];
  const double line = ReachedAt(device_frame_).line;
  live.away = live.loop ? Folded(line, *live.loop) - line : 0;
}

void StreamFeed::PrepareTurn(const Stream::OrderView& orders, const Leader* leader) {
  const Stream::Turns& turns = orders.turns;
  const Done done{orders.place, turns.number, turns.moved, turns.returned};
  if (live_ < 0) return;
  if (leader != nullptr && leader->feed.WillPlay() && WillPlay()) {
    const auto met = Meet(*leader);
    if (!met || !IsWarm(met->source, orders.place + turns.number)) return;
    NoteTempo(orders.tempo);
    return Begin(met->source, orders.tempo, met->entry, {met->source, turns.loop, 0}, done);
  }
  const Segment& live = segments_[static_cast<std::size_t>(live_)];
  const std::int64_t at = device_frame_ + device_rate_ / kSoonest;
  const Reached reached = ReachedAt(at);
  const double straight = reached.line + live.away;
  double source = live.loop ? Folded(reached.line, *live.loop) : reached.line;
  if (turns.returned != live_done_.returned) source = straight;
  source += static_cast<double>(turns.moved - live_done_.moved);
  if (turns.loop) source = Folded(source, *turns.loop);
  const std::int64_t last = std::max<std::int64_t>(stream_->Length() - 1, 0);
  const std::int64_t begin = std::clamp<std::int64_t>(std::llround(source), 0, last);
  if (!IsWarm(begin, orders.place + turns.number)) return;
  LaneEntry entry;
  if (reached.runs) entry = {LaneEntry::When::AtFrame, at};
  NoteTempo(orders.tempo);
  Begin(begin, orders.tempo, entry, {begin, turns.loop, straight - static_cast<double>(begin)}, done);
  if (reached.runs) {
    turn_ = Made{at, static_cast<double>(begin), sources_[Idle()]->Ratio(), turns.loop};
  }
}

}  // namespace engine
