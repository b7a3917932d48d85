// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/PcmStorePool.h"

#include <utility>

namespace engine {

PcmStorePool::PcmStorePool(DecoderFactory& decoders, SampleMemory* memory, support::Executor& workers,
                           const support::Clock& clock)
    : decoders_(decoders), memory_(memory), workers_(workers), clock_(clock) {}

void PcmStorePool::Prepare(const std::string& path, DecoderKind kind, Done done) {
  workers_.Post([self = shared_from_this(), path, kind, done = std::move(done)] {
    auto store = self->OpenUpTo(path, kind, 1000);
    if (!store) return done(store.Failure());
    self->Keep(path, store.Value());
    done({});
  });
}

support::Result<PcmStorePool::Store> PcmStorePool::Get(const std::string& path, DecoderKind kind) {
  return OpenUpTo(path, kind, 1);
}

support::Result<PcmStorePool::Store> PcmStorePool::OpenUpTo(const std::string& path, DecoderKind kind,
                                                            std::int64_t milliseconds) {
  Store store = Find(path);
  if (store == nullptr) {
    auto opened = PcmStore::Open(path, kind, decoders_, memory_);
    if (!opened) return opened.Failure();
    store = Share(path, std::move(opened).Value());
  }
  store->DecodeUpTo(store->Format().sample_rate * milliseconds / 1000 + 1);
  if (store->Ready() == 0) {
    const std::size_t cut = path.find_last_of("/\\");
    const std::string name = cut == std::string::npos ? path : path.substr(cut + 1);
    return store->Failure().value_or(support::Error{support::ErrorCode::Empty, name + " holds no sound."});
  }
  if (!store->Complete() && store->ClaimDecoding()) DecodeOn(store);
  return store;
}

void PcmStorePool::DecodeOn(std::weak_ptr<PcmStore> store) {
  workers_.Post([self = shared_from_this(), store = std::move(store)] {
    const Store held = store.lock();
    if (held == nullptr) return;
    held->DecodeUpTo(held->Ready() + PcmStore::kChunkFrames);
    if (!held->Complete()) self->DecodeOn(store);
  });
}

void PcmStorePool::WarmAhead(const Store& store, std::int64_t frame,
                             std::shared_ptr<std::atomic<std::uint32_t>> warmed, std::uint32_t mark) {
  workers_.Post([weak = std::weak_ptr<PcmStore>(store), frame, warmed = std::move(warmed), mark] {
    const Store held = weak.lock();
    for (int chunk = 0; held != nullptr && chunk < 3; ++chunk)
      held->Warm(frame + chunk * PcmStore::kChunkFrames);
    if (warmed != nullptr) warmed->store(mark, std::memory_order_release);
  });
}

PcmStorePool::Store PcmStorePool::Find(const std::string& path) {
  support::MutexLock lock(mutex_);
  const auto entry = entries_.find(path);
  return entry == entries_.end() ? nullptr : entry->second.store.lock();
}

PcmStorePool::Store PcmStorePool::Share(const std::string& path, Store store) {
  support::MutexLock lock(mutex_);
  Entry& entry = entries_[path];
  if (Store first = entry.store.lock()) return first;
  entry.store = store;
  return store;
}

void PcmStorePool::Keep(const std::string& path, const Store& store) {
  support::MutexLock lock(mutex_);
  Entry& entry = entries_[path];
  entry.store = store;
  entry.kept = store;
  entry.kept_until = clock_.Now() + kKeep;
}

void PcmStorePool::DropOld() {
  std::vector<Store> dropped;  // freed after the lock: a long file takes a while
  support::MutexLock lock(mutex_);
  for (auto entry = entries_.begin(); entry != entries_.end();) {
    if (entry->second.kept != nullptr && entry->second.kept_until <= clock_.Now()) {
      dropped.push_back(std::move(entry->second.kept));
    }
    entry = entry->second.store.expired() ? entries_.erase(entry) : std::next(entry);
  }
}

}  // namespace engine
