// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
// The calls of StreamFeed on a stream that follows another one, or is followed.

#include <algorithm>
#include <cmath>

#include "engine/StreamFeed.h"

namespace engine {

std::int64_t StreamFeed::Leader::UnbrokenFrom(std::int64_t from) const {
  return std::max(from, now.OwnOf(feed.UnbrokenSince(now.OfLeader(from))));
}

bool StreamFeed::WillPlay() const {
  const std::uint64_t asked = stream_->TransportAsked();
  if (asked != stream_->transport_seen.load(std::memory_order_acquire)) {
    return Stream::TransportOf(asked) == Stream::Transport::Play;
  }
  return stream_->playing.load(std::memory_order_acquire);
}

double StreamFeed::Made::SourceAt(double engine_frame) const {
  const double at = LineAt(engine_frame);
  return loop ? Folded(at, *loop) : at;
}

std::optional<StreamFeed::Made> StreamFeed::MadeSoFar() const {
  if (live_ < 0 || live_done_.place != stream_->PlaceWanted() || !WillPlay()) return std::nullopt;
  return MadeAnywhere();
}

std::optional<StreamFeed::Made> StreamFeed::MadeAnywhere() const {
  const Lane& lane = stream_->lanes[static_cast<std::size_t>(live_)];
  const auto heard = stream_->log.Newest();
  if (!heard || heard->frames == 0 || heard->ended || heard->segment != lane.Segment() ||
      heard->lane != static_cast<std::uint32_t>(live_)) {
    return std::nullopt;
  }
  if (heard->frame + heard->frames < device_frame_) return std::nullopt;  // it stands still
  const auto live = static_cast<std::size_t>(live_);
  const BlockSource& source = *sources_[live];
  return Made{heard->frame + lane.Fed() - heard->taken, source.Line(), source.Ratio(), segments_[live].loop};
}

std::optional<double> StreamFeed::SourceAt(double frame) const {
  const auto made = MadeSoFar();
  if (!made) return std::nullopt;
  if (turn_ && (preparing_ || offered_) && frame >= static_cast<double>(turn_->frame)) {
    return turn_->SourceAt(frame);
  }
  if (frame >= static_cast<double>(made->frame)) return made->SourceAt(frame);
  const std::uint64_t written = stream_->log.Written();
  for (std::uint64_t number = written; number > 0; --number) {
    const auto entry = stream_->log.Read(number - 1);
    if (!entry) return std::nullopt;
    const double into = frame - static_cast<double>(entry->frame);
    if (into < 0) continue;
    if (number < written) return entry->source + std::min<double>(into, entry->frames) * entry->ratio;
    // Behind the newest entry lies what is in the lane.
    const double pace = (made->line - entry->line) / static_cast<double>(made->frame - entry->frame);
    return Made{entry->frame, entry->line, pace, made->loop}.SourceAt(frame);
  }
  return std::nullopt;
}

double StreamFeed::UnbrokenSince(double before) const {
  const double furthest = Following::kFurthest * stream_->Format().sample_rate;
  std::optional<HeardEntry> later;
  for (std::uint64_t number = stream_->log.Written(); number > 0; --number) {
    const auto entry = stream_->log.Read(number - 1);
    if (!entry || (later && static_cast<double>(later->frame) <= before)) break;
    if (later) {
      const bool gap = entry->frames == 0 || entry->frame + entry->frames != later->frame;
      const double end = entry->source + entry->frames * entry->ratio;
      const bool turned = entry->segment == later->segment && entry->lane == later->lane;
      if (gap || (!turned && std::abs(end - later->source) > furthest)) break;
    }
    later = entry;
  }
  return later ? static_cast<double>(later->frame) : before;
}

void StreamFeed::NoteTempo(const Tempo& tempo, std::optional<std::int64_t> frame) {
  const auto made = MadeSoFar();
  newest_tempo_ = (newest_tempo_ + 1) % tempos_.size();
  tempos_[newest_tempo_] = {frame.value_or(made ? made->frame : device_frame_), tempo};
}

Tempo StreamFeed::TempoAt(double frame) const {
  for (std::size_t back = 0; back + 1 < tempos_.size(); ++back) {
    const OrderedTempo& ordered = tempos_[(newest_tempo_ + tempos_.size() - back) % tempos_.size()];
    if (static_cast<double>(ordered.frame) <= frame) return ordered.tempo;
  }
  return tempos_[newest_tempo_].tempo;
}

void StreamFeed::BeLed(const Leader& leader, Stream::OrderView& orders) {
  Tempo& tempo = orders.tempo;
  tempo.bendable = leader.other_device;
  if (!leader.feed.MadeSoFar()) {
    following_.Rest();
    orders.turns.number = live_done_.turn;  // what it has, until the leader says otherwise
    orders.turns.loop = live_ >= 0 ? segments_[static_cast<std::size_t>(live_)].loop : std::nullopt;
  } else {
    const auto made = MadeSoFar();
    const Tempo led = leader.feed.TempoAt(leader.now.OfLeader(made ? made->frame : device_frame_));
    tempo.speed = led.speed;
    tempo.sample_rate = led.sample_rate;
    tempo.semitones = led.semitones;
    orders.next.reset();
    // Its loop and its jumps are the leader's, as soon as that one has them.
    const bool ahead = leader.feed.preparing_ || leader.feed.offered_;
    orders.turns.number = (ahead ? leader.feed.prepared_done_ : leader.feed.live_done_).turn;
    const auto lane = ahead ? leader.feed.Idle() : static_cast<std::size_t>(leader.feed.live_);
    orders.turns.loop = leader.feed.segments_[lane].loop;
  }
  if (tempo.bendable) tempo.bend = following_.Bend();
}

std::optional<StreamFeed::Meeting> StreamFeed::Meet(const Leader& leader) const {
  if (!leader.feed.MadeSoFar()) return std::nullopt;
  std::int64_t at = leader.UnbrokenFrom(device_frame_ + device_rate_ / kSoonest);
  const StreamFeed& feed = leader.feed;
  if (feed.turn_ && feed.offered_)
    at = std::max(at, leader.now.OwnOf(static_cast<double>(feed.turn_->frame)));
  const auto source = feed.SourceAt(leader.now.OfLeader(at));
  if (!source) return std::nullopt;
  return Meeting{std::max<std::int64_t>(std::llround(*source), 0), {LaneEntry::When::AtFrame, at}};
}

bool StreamFeed::Rejoin(const Leader& leader, const Tempo& tempo) {
  const double after = static_cast<double>(device_frame_ - followed_at_) / device_rate_;
  followed_at_ = device_frame_;
  const auto made = MadeSoFar();
  if (!made || after <= 0) return false;
  const std::int64_t at = leader.UnbrokenFrom(made->frame);
  const auto source = leader.feed.SourceAt(leader.now.OfLeader(at));
  if (!source || *source < 0 || *source >= static_cast<double>(stream_->Length())) return false;
  double frames = *source - made->SourceAt(static_cast<double>(at));
  // Whole turns of a loop apart they sound the same.
  if (made->loop) frames = std::remainder(frames, static_cast<double>(made->loop->Frames()));
  const double behind = frames / stream_->Format().sample_rate;
  if (std::abs(behind) <= Following::kFurthest) {
    if (leader.other_device) following_.Next(behind, std::min(after, 0.1));
    return false;
  }
  const std::int64_t place = std::llround(*source);
  following_.Rest();
  if (!IsWarm(place, live_done_.place + live_done_.turn)) return false;
  NoteTempo(tempo);
  Begin(place, tempo, {LaneEntry::When::AtFrame, at}, {place, made->loop, 0}, live_done_);
  return true;
}

}  // namespace engine
