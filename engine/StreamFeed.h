// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>

#include "engine/BlockSource.h"
#include "engine/PcmStorePool.h"
#include "engine/Stream.h"

namespace engine {

/// The feeder's side of one stream: keeps the live lane full and prepares the idle one for every new segment.
///
/// Threads: the feeder. Law: what is being heard goes on until the callback has taken its successor.
class StreamFeed {
 public:
  StreamFeed(std::shared_ptr<Stream> stream, StretcherFactory& stretchers, PcmStorePool& pool,
             int device_rate);

  [[nodiscard]] const Stream& Of() const noexcept { return *stream_; }
  /// device_frame: the next frame that the stream's device mixes.
  void Pump(std::int64_t device_frame);

 private:
  [[nodiscard]] std::size_t Idle() const noexcept { return live_ == 0 ? 1 : 0; }
  [[nodiscard]] BlockSource& Live() { return *sources_[static_cast<std::size_t>(live_)]; }

  void FollowHandOver(const Stream::OrderView& orders);
  /// Whether the prepared segment is the one asked for; a mere change of speed it takes on.
  bool StillWanted(const Stream::OrderView& orders);
  void FollowOrders(const Stream::OrderView& orders);
  void FollowTempo(const Tempo& tempo);
  void FollowTimedTempo(const Stream::OrderView& orders, std::int64_t device_frame);
  /// False while a place that the system may have paged out is on its way back: reading it would keep every
  /// other stream waiting.
  bool IsWarm(const Stream::OrderView& orders);
  void Prepare(std::int64_t frame, const Tempo& tempo, std::uint32_t place, bool aligned);
  void FinishPreparing();
  /// True when the lane holds as much as it should.
  bool Fill(std::size_t lane);
  void FillLive();
  void KeepWarm();

  const std::shared_ptr<Stream> stream_;  // with the owner and the device's slot: the last one frees it
  PcmStorePool& pool_;
  const int lead_frames_;
  std::array<std::unique_ptr<BlockSource>, 2> sources_;
  int live_ = -1;  ///< the lane that sounds, or will next; none before the first
  bool offered_ = false;
  bool preparing_ = false;
  std::uint32_t live_place_ = 0;
  std::uint32_t prepared_place_ = 0;
  Tempo prepared_tempo_;
  std::int64_t warmed_chunk_ = -1;
  std::uint32_t warming_place_ = 0;
  const std::shared_ptr<std::atomic<std::uint32_t>> warmed_place_ =
      std::make_shared<std::atomic<std::uint32_t>>(0);  // with the worker
};

}  // namespace engine
