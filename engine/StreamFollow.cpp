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

std::optional<StreamFeed::Made> StreamFeed::MadeSoFar() const {
  if (live_ < 0 || live_place_ != stream_->PlaceWanted() || !WillPlay()) return std::nullopt;
  const Lane& lane = stream_->lanes[static_cast<std::size_t>(live_)];
  const auto heard = stream_->log.Newest();
  if (!heard || heard->frames == 0 || heard->ended || heard->segment != lane.Segment() ||
      heard->lane != static_cast<std::uint32_t>(live_)) {
    return std::nullopt;
  }
  if (heard->frame + heard->frames < device_frame_) return std::nullopt;  // it stands still
  const BlockSource& source = *sources_[static_cast<std::size_t>(live_)];
  return Made{heard->frame + lane.Fed() - heard->taken, source.Source(), source.Ratio()};
}

std::optional<double> StreamFeed::SourceAt(double frame) const {
  const auto made = MadeSoFar();
  if (!made) return std::nullopt;
  if (turn_ && (preparing_ || offered_) && frame >= static_cast<double>(turn_->frame)) {
    return turn_->source + (frame - static_cast<double>(turn_->frame)) * turn_->ratio;
  }
  if (frame >= static_cast<double>(made->frame)) {
    return made->source + (frame - static_cast<double>(made->frame)) * made->ratio;
  }
  const std::uint64_t written = stream_->log.Written();
  for (std::uint64_t number = written; number > 0; --number) {
    const auto entry = stream_->log.Read(number - 1);
    if (!entry) return std::nullopt;
    const double into = frame - static_cast<double>(entry->frame);
    if (into < 0) continue;
    if (number < written) return entry->source + std::min<double>(into, entry->frames) * entry->ratio;
    // Behind the newest entry lies what is in the lane.
    const double pace = (made->source - entry->source) / static_cast<double>(made->frame - entry->frame);
    return entry->source + into * pace;
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
      if (gap || std::abs(end - later->source) > furthest) break;
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
  } else {
    const auto made = MadeSoFar();
    const Tempo led = leader.feed.TempoAt(leader.now.OfLeader(made ? made->frame : device_frame_));
    tempo.speed = led.speed;
    tempo.sample_rate = led.sample_rate;
    tempo.semitones = led.semitones;
    orders.next.reset();
  }
  if (tempo.bendable) tempo.bend = following_.Bend();
}

std::optional<StreamFeed::Meeting> StreamFeed::Meet(const Leader& leader) const {
  constexpr int kSoonest = 100;  // a hundredth of a second, in which the lane is filled
  if (!leader.feed.MadeSoFar()) return std::nullopt;
  const std::int64_t at = leader.UnbrokenFrom(device_frame_ + device_rate_ / kSoonest);
  const auto source = leader.feed.SourceAt(leader.now.OfLeader(at));
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
  const double then = made->source + static_cast<double>(at - made->frame) * made->ratio;
  const double behind = (*source - then) / stream_->Format().sample_rate;
  if (std::abs(behind) <= Following::kFurthest) {
    if (leader.other_device) following_.Next(behind, std::min(after, 0.1));
    return false;
  }
  const std::int64_t place = std::llround(*source);
  following_.Rest();
  if (!IsWarm(place, live_place_)) return false;
  Prepare(place, tempo, live_place_, {LaneEntry::When::AtFrame, at});
  return true;
}

}  // namespace engine
