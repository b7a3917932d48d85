// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

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
/// Threads: Add and Remove any; Pump one at a time.
class Feeder {
 public:
  Feeder(StretcherFactory& stretchers, std::shared_ptr<PcmStorePool> pool)
      : stretchers_(stretchers), pool_(std::move(pool)) {}

  void Add(std::shared_ptr<Stream> stream, std::shared_ptr<DeviceSlot> slot) DJ_EXCLUDES(mutex_);
  void Remove(std::uint32_t stream) DJ_EXCLUDES(mutex_);
  /// From now on the follower is heard where the leader is, until one of them goes or another is named; a
  /// leader of 0 is none.
  void Follow(std::uint32_t follower, std::uint32_t leader) DJ_EXCLUDES(mutex_);
  void Pump() DJ_EXCLUDES(mutex_);

 private:
  struct Item {
    std::shared_ptr<DeviceSlot> slot;  // with the table: a pass may run while the device is closed
    StreamFeed feed;
    std::weak_ptr<Item> leader = {};  ///< under the lock
  };
  struct Pass {
    std::shared_ptr<Item> item;
    std::shared_ptr<Item> leader;
  };

  [[nodiscard]] std::shared_ptr<Item> Find(std::uint32_t stream) const DJ_REQUIRES(mutex_);
  static void Pump(const Pass& pass);

  StretcherFactory& stretchers_;
  const std::shared_ptr<PcmStorePool> pool_;  // with its jobs
  support::Mutex mutex_;
  std::vector<std::shared_ptr<Item>> items_ DJ_GUARDED_BY(mutex_);  // with the pass, which holds no lock
  std::vector<Pass> pass_;
};

/// Calls a function every 5 ms, and at once when woken.
/// Threads: one of its own, ended by the destructor.
class PollingThread {
 public:
  /// started runs first on the thread, and may be empty.
  PollingThread(std::function<void()> work, std::function<void()> started);
  ~PollingThread();
  PollingThread(const PollingThread&) = delete;
  PollingThread& operator=(const PollingThread&) = delete;

  void Wake() DJ_EXCLUDES(mutex_);

 private:
  void Run() DJ_EXCLUDES(mutex_);

  const std::function<void()> work_;
  support::Mutex mutex_;
  std::condition_variable wake_;
  bool woken_ DJ_GUARDED_BY(mutex_) = false;
  bool end_ DJ_GUARDED_BY(mutex_) = false;
  std::thread thread_;
};

}  // namespace engine
