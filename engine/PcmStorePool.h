// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "engine/PcmStore.h"
#include "support/Clock.h"
#include "support/Executor.h"
#include "support/Mutex.h"

namespace engine {

/// Hands out the store of a file; whoever asks for the same file while it is in use gets the same store.
///
/// Decoding goes on in slices on the workers for as long as somebody holds the store. Threads: any. Owned by
/// shared_ptr, because jobs on the workers may still run when its owner is gone.
class PcmStorePool final : public std::enable_shared_from_this<PcmStorePool> {
 public:
  using Done = std::function<void(support::Result<void>)>;
  using Store = std::shared_ptr<PcmStore>;
  /// A prepared file is kept this long for the creators that follow.
  static constexpr std::chrono::seconds kKeep{10};

  PcmStorePool(DecoderFactory& decoders, SampleMemory* memory, support::Executor& workers,
               const support::Clock& clock);

  /// Opens on a worker. done is called there once, with success when the first second is there.
  void Prepare(const std::string& path, DecoderKind kind, Done done);
  /// A file that is prepared or in use is there at once; any other is opened on this thread, which waits for
  /// the header and the first block.
  support::Result<Store> Get(const std::string& path, DecoderKind kind);
  /// Asks a worker to bring the sound at and after a frame back into memory.
  /// warmed, where there is one, is then set to mark.
  void WarmAhead(const Store& store, std::int64_t frame,
                 std::shared_ptr<std::atomic<std::uint32_t>> warmed = nullptr, std::uint32_t mark = 0);
  /// Lets go of prepared files that nobody came for.
  void DropOld() DJ_EXCLUDES(mutex_);

 private:
  struct Entry {
    std::weak_ptr<PcmStore> store;
    Store kept;
    support::TimePoint kept_until{};
  };

  [[nodiscard]] Store Find(const std::string& path) DJ_EXCLUDES(mutex_);
  /// The store that others see from now on: the given one, or one that came first.
  [[nodiscard]] Store Share(const std::string& path, Store store) DJ_EXCLUDES(mutex_);
  void Keep(const std::string& path, const Store& store) DJ_EXCLUDES(mutex_);
  support::Result<Store> OpenUpTo(const std::string& path, DecoderKind kind, std::int64_t milliseconds);
  void DecodeOn(std::weak_ptr<PcmStore> store);

  DecoderFactory& decoders_;
  SampleMemory* const memory_;
  support::Executor& workers_;
  const support::Clock& clock_;
  support::Mutex mutex_;
  std::map<std::string, Entry> entries_ DJ_GUARDED_BY(mutex_);
};

}  // namespace engine
