// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

#include "engine/BlockSource.h"
#include "engine/Following.h"
#include "engine/PcmStorePool.h"
#include "engine/Stream.h"

namespace engine {

/// The feeder's side of one stream: keeps the live lane full and prepares the idle one for every new segment.
///
/// A stream may follow another one of the same file on another device, so that both are heard at the same
/// place: it begins where the leader will be when its first frame is heard, and from then on its pace is
/// bent. The leader knows nothing of it.
///
/// Where other programs may keep the feeder waiting, a file that simply plays is made further ahead. As soon
/// as its tempo is moved, what lies beyond the usual lead is left, and until two seconds after the last
/// movement no more than that is made: a hand is heard as soon as ever. Threads: the feeder. Law: what is
/// being heard goes on until the callback has taken its successor.
class StreamFeed {
 public:
  /// What a stream follows, while both devices tell what is heard.
  struct Leader {
    const StreamFeed& feed;
    FramePair now;
    bool other_device;  ///< whose clock is another one

    /// The own frame, that one or the first later one, from which on what is heard of the leader goes on
    /// without a break.
    [[nodiscard]] std::int64_t UnbrokenFrom(std::int64_t from) const;
  };

  StreamFeed(std::shared_ptr<Stream> stream, StretcherFactory& stretchers, PcmStorePool& pool,
             int device_rate);

  [[nodiscard]] const Stream& Of() const noexcept { return *stream_; }
  /// It plays, or has been asked to.
  [[nodiscard]] bool WillPlay() const;
  /// device_frame: the next frame that the stream's device mixes. leader: null for none, or none now.
  void Pump(std::int64_t device_frame, const Leader* leader = nullptr);
  /// Makes a little more than Pump does; false when enough is made. Requires: no leader.
  bool Further();

 private:
  /// Where a stream joins the one that it follows.
  struct Meeting {
    std::int64_t source = 0;
    LaneEntry entry;
  };
  /// As far as the sound that goes on without a break is made.
  struct Made {
    std::int64_t frame = 0;  ///< engine frame of the next one
    double line = 0;
    double ratio = 1;
    std::optional<music::Loop> loop;

    [[nodiscard]] double LineAt(double engine_frame) const {
      return line + (engine_frame - static_cast<double>(frame)) * ratio;
    }
    [[nodiscard]] double SourceAt(double engine_frame) const;
  };
  /// What a lane was begun with.
  struct Segment {
    std::int64_t begin = 0;
    std::optional<music::Loop> loop;
    double away = 0;  ///< what its line is short of the place where it would be with nothing asked
  };
  /// What of the orders went into a segment.
  struct Done {
    std::uint32_t place = 0;
    std::uint32_t turn = 0;
    std::int64_t moved = 0;
    std::uint32_t returned = 0;
  };
  struct OrderedTempo {
    std::int64_t frame = 0;
    Tempo tempo;
  };

  static constexpr int kSoonest = 100;  ///< a hundredth of a second, in which a lane is filled

  [[nodiscard]] std::size_t Idle() const noexcept { return live_ == 0 ? 1 : 0; }
  [[nodiscard]] BlockSource& Live() const { return *sources_[static_cast<std::size_t>(live_)]; }

  void FollowHandOver(const Stream::OrderView& orders);
  /// Whether the prepared segment is the one asked for; a mere change of speed it takes on.
  bool StillWanted(const Stream::OrderView& orders);
  void FollowOrders(const Stream::OrderView& orders, const Leader* leader);
  void FollowTempo(const Tempo& tempo);
  /// The end of the usual lead, where more than that lies in the live lane.
  struct Ahead {
    Made made;
    std::int64_t taken = 0;
  };
  [[nodiscard]] std::optional<Ahead> EndOfLead() const;
  void FollowTimedTempo(const Stream::OrderView& orders);
  /// False while a place that the system may have paged out is on its way back: reading it would keep every
  /// other stream waiting.
  /// wish: a number of its own for each that is asked for.
  bool IsWarm(std::int64_t frame, std::uint32_t wish);
  /// Of which of the orders the new segment takes nothing, it goes on with the live one's.
  void Begin(std::int64_t frame, const Tempo& tempo, const LaneEntry& entry, const Segment& segment,
             const Done& done);
  /// Goes over to another tempo where the live lane gets to that place, once so much was taken from it.
  void Switch(const Made& at, std::int64_t taken, const Tempo& tempo);
  /// The live segment, goes on at that place of its line as another one.
  void GoOn(double line, std::int64_t taken, const Tempo& tempo);
  /// The place is taken elsewhere, or a loop begins or ends.
  void PrepareTurn(const Stream::OrderView& orders, const Leader* leader);
  void FollowSlip(bool slip);
  /// The live segment's line where it would go on, were it left alone until that engine frame; or, while it
  /// stands, where it stands.
  struct Reached {
    double line = 0;
    bool runs = false;
  };
  [[nodiscard]] Reached ReachedAt(std::int64_t frame) const;
  [[nodiscard]] std::optional<Made> MadeAnywhere() const;
  /// Nothing unless it plays, at the newest place that was asked for.
  [[nodiscard]] std::optional<Made> MadeSoFar() const;
  /// The file's frame at an engine frame, heard long ago or still to be made.
  [[nodiscard]] std::optional<double> SourceAt(double frame) const;
  /// The engine frame since which it has gone on without a break, or any that is not after `before`.
  [[nodiscard]] double UnbrokenSince(double before) const;
  [[nodiscard]] Tempo TempoAt(double frame) const;
  /// The frame from which on it is heard is told, or is the next one to be made.
  void NoteTempo(const Tempo& tempo, std::optional<std::int64_t> frame = {});
  void PrepareOrdered(const Stream::OrderView& orders, const Leader* leader);

  /// The leader's tempo, at the place that is made next, and the bend.
  void BeLed(const Leader& leader, Stream::OrderView& orders);
  [[nodiscard]] std::optional<Meeting> Meet(const Leader& leader) const;
  /// True when it is so far from the leader that it jumps.
  bool Rejoin(const Leader& leader, const Tempo& tempo);
  void FinishPreparing();
  /// True when the lane holds as much as that, or more does not come.
  bool Fill(std::size_t lane, int frames);
  void FillLive();
  void KeepWarm();

  const std::shared_ptr<Stream> stream_;  // with the owner and the device's slot: the last one frees it
  PcmStorePool& pool_;
  const int device_rate_;
  const int lead_frames_;
  const int furthest_frames_;
  std::array<std::unique_ptr<BlockSource>, 2> sources_;
  int live_ = -1;             ///< the lane that sounds, or will next; none before the first
  std::optional<Made> turn_;  ///< what is prepared goes on from there
  bool offered_ = false;
  bool preparing_ = false;
  std::array<Segment, 2> segments_{};
  Done live_done_, prepared_done_;
  bool slips_ = false;
  Tempo prepared_tempo_;
  Following following_;
  std::int64_t device_frame_ = 0;
  std::optional<std::int64_t> tempo_moved_at_;  ///< engine frame
  std::int64_t followed_at_ = 0;
  std::array<OrderedTempo, 64> tempos_{};  ///< a ring of what was ordered last, and from which frame on
  std::size_t newest_tempo_ = 0;
  std::int64_t warmed_chunk_ = -1;
  std::uint32_t warming_wish_ = 0;
  const std::shared_ptr<std::atomic<std::uint32_t>> warmed_wish_ =
      std::make_shared<std::atomic<std::uint32_t>>(0);  // with the worker
};

}  // namespace engine
