// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <thread>
#include <vector>

#include "engine/DeviceSlot.h"
#include "engine/StreamFeed.h"
#include "support/Mutex.h"

namespace engine {

/// Keeps the rings of all playing streams full.
/// Threads: Add and Remove any; Pump any with a Turn of its own. A stream is at one thread at a time.
class Feeder {
  struct Item;
  struct Pass {
    std::shared_ptr<Item> item;
    std::shared_ptr<Item> leader;
  };

 public:
  /// How far ahead of what is taken streams without a leader are kept.
  enum class Reach { Usual, Further };
  /// What a thread keeps from one Pump to the next.
  class Turn {
    friend Feeder;
    std::vector<Pass> pass_;
  };

  Feeder(StretcherFactory& stretchers, std::shared_ptr<PcmStorePool> pool)
      : stretchers_(stretchers), pool_(std::move(pool)) {}

  void Add(std::shared_ptr<Stream> stream, std::shared_ptr<DeviceSlot> slot) DJ_EXCLUDES(mutex_);
  void Remove(std::uint32_t stream) DJ_EXCLUDES(mutex_);
  /// From now on the follower is heard where the leader is, until one of them goes or another is named; a
  /// leader of 0 is none.
  void Follow(std::uint32_t follower, std::uint32_t leader) DJ_EXCLUDES(mutex_);
  /// Passes over what another thread is at. True while the further reach is not filled yet.
  bool Pump(Turn& turn, Reach reach) DJ_EXCLUDES(mutex_);

 private:
  struct Item {
    Item(std::shared_ptr<DeviceSlot> of, StreamFeed made) : slot(std::move(of)), feed(std::move(made)) {}
    [[nodiscard]] bool Claim() { return !at_work.exchange(true, std::memory_order_acquire); }
    void Release() { at_work.store(false, std::memory_order_release); }

    std::shared_ptr<DeviceSlot> slot;  // with the table: a pass may run while the device is closed
    StreamFeed feed;
    std::weak_ptr<Item> leader = {};  ///< under the lock
    std::atomic<bool> at_work{false};
  };

  [[nodiscard]] std::shared_ptr<Item> Find(std::uint32_t stream) const DJ_REQUIRES(mutex_);
  static void Pump(const Pass& pass);
  static bool Pump(const Pass& pass, Reach reach);

  StretcherFactory& stretchers_;
  const std::shared_ptr<PcmStorePool> pool_;  // with its jobs
  support::Mutex mutex_;
  std::vector<std::shared_ptr<Item>> items_ DJ_GUARDED_BY(mutex_);  // with the pass, which holds no lock
};

/// Calls a function again and again: after the time that it returns, or at once when woken.
/// Threads: one of its own, ended by the destructor.
class PollingThread {
 public:
  /// started runs first on the thread, and may be empty.
  PollingThread(std::function<std::chrono::milliseconds()> work, std::function<void()> started);
  ~PollingThread();
  PollingThread(const PollingThread&) = delete;
  PollingThread& operator=(const PollingThread&) = delete;

  void Wake() DJ_EXCLUDES(mutex_);

 private:
  void Run() DJ_EXCLUDES(mutex_);

  const std::function<std::chrono::milliseconds()> work_;
  support::Mutex mutex_;
  std::condition_variable wake_;
  bool woken_ DJ_GUARDED_BY(mutex_) = false;
  bool end_ DJ_GUARDED_BY(mutex_) = false;
  std::thread thread_;
};

}  // namespace engine
