// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/StreamFeed.h"

#include <algorithm>
#include <cmath>

#include "engine/GeneratedSource.h"
#include "engine/SegmentSource.h"

namespace engine {
namespace {

constexpr int kLeadMilliseconds = 60;
constexpr int kFurthestMilliseconds = 300;

int Frames(int milliseconds, int device_rate) {
  const int room = static_cast<int>(Lane::kBlocks - 2) * kLaneBlockFrames;
  return std::min(device_rate * milliseconds / 1000, room);
}

std::unique_ptr<BlockSource> MakeSource(const Stream& stream, std::size_t lane, StretcherFactory& stretchers,
                                        int device_rate) {
  if (stream.Generator() != nullptr) return std::make_unique<GeneratedSource>(stream.Generator(), lane);
  return std::make_unique<SegmentSource>(stream.Store(), stretchers, device_rate);
}

}  // namespace

StreamFeed::StreamFeed(std::shared_ptr<Stream> stream, StretcherFactory& stretchers, PcmStorePool& pool,
                       int device_rate)
    : stream_(std::move(stream)),
      pool_(pool),
      device_rate_(device_rate),
      lead_frames_(Frames(kLeadMilliseconds, device_rate)),
      furthest_frames_(Frames(kFurthestMilliseconds, device_rate)),
      sources_{MakeSource(*stream_, 0, stretchers, device_rate),
               MakeSource(*stream_, 1, stretchers, device_rate)} {}

void StreamFeed::Pump(std::int64_t device_frame, const Leader* leader) {
  Stream::OrderView orders = stream_->View();
  device_frame_ = device_frame;
  if (leader != nullptr) BeLed(*leader, orders);
  FollowHandOver(orders);
  FollowOrders(orders, leader);
  if (preparing_) FinishPreparing();
  FollowTimedTempo(orders);
  FillLive();
  KeepWarm();
}

void StreamFeed::FollowHandOver(const Stream::OrderView& orders) {
  if (!offered_) return;
  const Stream::HandOver now = stream_->hand_over.load(std::memory_order_acquire);
  if (now == Stream::HandOver::Held) return;
  if (now != Stream::HandOver::Ready) {
    live_ = static_cast<int>(Idle());
    live_done_ = prepared_done_;
    offered_ = false;
    return;
  }
  if (StillWanted(orders)) return;
  Stream::HandOver ready = Stream::HandOver::Ready;
  if (stream_->hand_over.compare_exchange_strong(ready, Stream::HandOver::Free, std::memory_order_acq_rel)) {
    offered_ = false;
  } else {
    FollowHandOver(orders);  // it was taken, or is looked at, at this very moment
  }
}

bool StreamFeed::StillWanted(const Stream::OrderView& orders) {
  if (orders.place != prepared_done_.place || orders.turns.number != prepared_done_.turn) return false;
  if (orders.tempo == prepared_tempo_) return true;
  BlockSource& source = *sources_[Idle()];
  if (source.PathOf(orders.tempo) != source.PathOf(prepared_tempo_)) return false;
  source.SetTempo(orders.tempo);  // a slider on the move must not put the change off again and again
  prepared_tempo_ = orders.tempo;
  return true;
}

void StreamFeed::FollowOrders(const Stream::OrderView& orders, const Leader* leader) {
  if (offered_) return;
  if (preparing_ && !StillWanted(orders)) preparing_ = false;
  if (preparing_ || stream_->hand_over.load(std::memory_order_acquire) != Stream::HandOver::Free) return;
  FollowSlip(orders.turns.slip);
  if (orders.place != live_done_.place) {
    PrepareOrdered(orders, leader);
  } else if (orders.turns.number != live_done_.turn) {
    PrepareTurn(orders, leader);
  } else if (leader == nullptr || !Rejoin(*leader, orders.tempo)) {
    FollowTempo(orders.tempo);
  }
}

void StreamFeed::PrepareOrdered(const Stream::OrderView& orders, const Leader* leader) {
  // Jumps that were asked for after the place start at it.
  const std::int64_t last = std::max<std::int64_t>(stream_->Length() - 1, orders.frame);
  const std::int64_t jumped = orders.turns.moved - orders.moved_before;
  Meeting meeting{
      std::clamp<std::int64_t>(orders.frame + jumped, std::min<std::int64_t>(orders.frame, 0), last), {}};
  if (orders.with_leader && leader != nullptr && leader->feed.WillPlay()) {
    const auto met = Meet(*leader);
    if (!met) return;  // it will, in a moment
    meeting = *met;
  }
  if (!IsWarm(meeting.source, orders.place + orders.turns.number)) return;
  Segment segment{meeting.source, orders.turns.loop, 0};
  if (slips_ && live_ >= 0 && leader == nullptr) {
    const std::int64_t at = device_frame_ + device_rate_ / kSoonest;
    const Reached reached = ReachedAt(at);
    segment.away =
        reached.line + segments_[static_cast<std::size_t>(live_)].away - static_cast<double>(meeting.source);
    if (reached.runs) meeting.entry = {LaneEntry::When::AtFrame, at};
  }
  NoteTempo(orders.tempo);
  Begin(meeting.source, orders.tempo, meeting.entry, segment,
        {orders.place, orders.turns.number, orders.turns.moved, orders.turns.returned});
}

bool StreamFeed::IsWarm(std::int64_t frame, std::uint32_t wish) {
  if (stream_->Store() == nullptr) return true;
  constexpr std::int64_t kBefore = 4096;  // what warms a stretcher up
  const std::int64_t first = std::max<std::int64_t>(frame - kBefore, 0);
  if (!stream_->Store()->IsPaged(first) && !stream_->Store()->IsPaged(frame)) return true;
  if (warming_wish_ != wish) {
    warming_wish_ = wish;
    pool_.WarmAhead(stream_->Store(), first, warmed_wish_, wish);
  }
  return warmed_wish_->load(std::memory_order_acquire) == wish;
}

void StreamFeed::FollowTempo(const Tempo& tempo) {
  if (live_ < 0) return;
  if (Live().InForce() == tempo) {
    // A segment that took on this tempo, or that was dropped, began with another one, which was noted.
    if (tempos_[newest_tempo_].tempo != tempo) NoteTempo(tempo, device_frame_);
    return;
  }
  const auto end = EndOfLead();
  if (!end && Live().Ended()) return;
  tempo_moved_at_ = device_frame_;
  if (end) {
    Switch(end->made, end->taken, tempo);
  } else if (Live().PathOf(tempo) == Live().PathOf(Live().InForce())) {
    NoteTempo(tempo);
    Live().SetTempo(tempo);
  } else {
    NoteTempo(tempo);
    GoOn(std::ceil(Live().Line()), stream_->lanes[static_cast<std::size_t>(live_)].Fed(), tempo);
  }
}

std::optional<StreamFeed::Ahead> StreamFeed::EndOfLead() const {
  const Lane& lane = stream_->lanes[static_cast<std::size_t>(live_)];
  if (lane.Queued() <= lead_frames_) return std::nullopt;
  const auto heard = stream_->log.Newest();
  if (!heard || heard->segment != lane.Segment() || heard->lane != static_cast<std::uint32_t>(live_)) {
    return std::nullopt;
  }
  // Beyond the lead all was made at one pace. A block less, so that who follows has not made that frame yet.
  const std::int64_t ahead = heard->frames + lead_frames_ - kLaneBlockFrames;
  const double ratio = Live().Ratio();
  return Ahead{{heard->frame + ahead, heard->line + static_cast<double>(ahead) * ratio, ratio,
                segments_[static_cast<std::size_t>(live_)].loop},
               heard->taken + ahead};
}

bool StreamFeed::Further() {
  constexpr int kBlocksAtOnce = 4;
  constexpr int kRestSeconds = 2;
  if (live_ < 0 || offered_ || preparing_ || stream_->Store() == nullptr || Live().Ended()) return false;
  if (!stream_->playing.load(std::memory_order_acquire)) return false;
  if (tempo_moved_at_ && device_frame_ - *tempo_moved_at_ < std::int64_t{kRestSeconds} * device_rate_) {
    return false;
  }
  const auto live = static_cast<std::size_t>(live_);
  const auto queued = static_cast<int>(stream_->lanes[live].Queued());
  if (queued + kLaneBlockFrames > furthest_frames_) return false;
  if (stream_->lanes[live].Back() == nullptr) return false;  // a short loop's blocks are short
  return Fill(live, std::min(queued + kBlocksAtOnce * kLaneBlockFrames, furthest_frames_));
}

void StreamFeed::FollowTimedTempo(const Stream::OrderView& orders) {
  if (!orders.next || live_ < 0 || offered_ || preparing_ || orders.place != live_done_.place) return;
  if (stream_->hand_over.load(std::memory_order_acquire) != Stream::HandOver::Free) return;
  const std::int64_t at = orders.next->at;
  if (at <= device_frame_) return stream_->ApplyTimedTempo();
  const auto heard = stream_->log.Newest();
  const Lane& lane = stream_->lanes[static_cast<std::size_t>(live_)];
  if (!heard || heard->segment != lane.Segment() || heard->lane != static_cast<std::uint32_t>(live_)) return;
  if (!stream_->playing.load(std::memory_order_acquire)) return;
  const std::int64_t queued = std::min(lane.Fed() - heard->taken, std::int64_t{heard->frames} + lead_frames_);
  if (at > heard->frame + queued) return;
  // Its place is in the ring now: a segment that begins there takes over.
  Tempo tempo = Live().InForce();
  tempo.speed = orders.next->speed;
  stream_->ApplyTimedTempo();
  const double line = heard->line + static_cast<double>(at - heard->frame) * heard->ratio;
  tempo_moved_at_ = device_frame_;
  Switch({at, line, heard->ratio, segments_[static_cast<std::size_t>(live_)].loop},
         heard->taken + at - heard->frame, tempo);
  FinishPreparing();
}

void StreamFeed::Switch(const Made& at, std::int64_t taken, const Tempo& tempo) {
  NoteTempo(tempo, at.frame);
  GoOn(at.line, taken, tempo);
  turn_ = {at.frame, static_cast<double>(segments_[Idle()].begin), sources_[Idle()]->Ratio(),
           segments_[Idle()].loop};
}

void StreamFeed::GoOn(double line, std::int64_t taken, const Tempo& tempo) {
  const Segment& live = segments_[static_cast<std::size_t>(live_)];
  const std::int64_t rounded = std::llround(line);
  Segment next{rounded, live.loop, live.away};
  if (live.loop) {
    next.begin = std::llround(Folded(static_cast<double>(rounded), *live.loop));
    next.away += static_cast<double>(rounded - next.begin);
  }
  // A place in a loop is come to again and again: there it is told by what was taken.
  const LaneEntry entry =
      live.loop ? LaneEntry{LaneEntry::When::Counted, taken} : LaneEntry{LaneEntry::When::Aligned};
  Begin(next.begin, tempo, entry, next, live_done_);
}

void StreamFeed::Begin(std::int64_t frame, const Tempo& tempo, const LaneEntry& entry, const Segment& segment,
                       const Done& done) {
  segments_[Idle()] = segment;
  stream_->lanes[Idle()].Clear(done.place, entry, done.moved);
  sources_[Idle()]->Begin(frame, tempo, segment.loop);
  prepared_done_ = done;
  prepared_tempo_ = tempo;
  preparing_ = true;
  turn_.reset();
}

void StreamFeed::FinishPreparing() {
  if (!Fill(Idle(), lead_frames_)) return;
  preparing_ = false;
  offered_ = true;
  stream_->hand_over.store(Stream::HandOver::Ready, std::memory_order_release);
}

bool StreamFeed::Fill(std::size_t number, int frames) {
  Lane& lane = stream_->lanes[number];
  BlockSource& source = *sources_[number];
  while (!source.Ended() && lane.Queued() + kLaneBlockFrames <= frames) {
    LaneBlock* block = lane.Back();
    if (block == nullptr) return true;
    if (!source.Make(*block, kLaneBlockFrames)) return false;
    lane.Append();
  }
  return true;
}

void StreamFeed::FillLive() {
  if (live_ >= 0) Fill(static_cast<std::size_t>(live_), lead_frames_);
}

void StreamFeed::KeepWarm() {
  if (live_ < 0 || stream_->Store() == nullptr) return;
  const std::int64_t frame = std::max<std::int64_t>(static_cast<std::int64_t>(Live().Source()), 0);
  const std::int64_t chunk = frame / PcmStore::kChunkFrames;
  if (chunk == warmed_chunk_) return;
  warmed_chunk_ = chunk;
  if (stream_->Store()->IsPaged(frame + PcmStore::kChunkFrames)) pool_.WarmAhead(stream_->Store(), frame);
}

}  // namespace engine
