// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/Feeder.h"

#include <algorithm>
#include <utility>

namespace engine {

void Feeder::Add(std::shared_ptr<Stream> stream, std::shared_ptr<DeviceSlot> slot) {
  const int rate = slot->Core().SampleRate();
  auto item =
      std::make_shared<Item>(std::move(slot), StreamFeed(std::move(stream), stretchers_, *pool_, rate));
  support::MutexLock lock(mutex_);
  items_.push_back(std::move(item));
}

void Feeder::Remove(std::uint32_t stream) {
  support::MutexLock lock(mutex_);
  std::erase_if(items_, [&](const auto& item) { return item->feed.Of().Id() == stream; });
}

std::shared_ptr<Feeder::Item> Feeder::Find(std::uint32_t stream) const {
  const auto found = std::find_if(items_.begin(), items_.end(),
                                  [stream](const auto& item) { return item->feed.Of().Id() == stream; });
  return found == items_.end() ? nullptr : *found;
}

void Feeder::Follow(std::uint32_t follower, std::uint32_t leader) {
  support::MutexLock lock(mutex_);
  if (const auto item = Find(follower)) item->leader = Find(leader);
}

bool Feeder::Pump(Turn& turn, Reach reach) {
  {
    support::MutexLock lock(mutex_);
    for (const auto& item : items_) turn.pass_.push_back({item, item->leader.lock()});
  }
  bool more = false;
  for (const Pass& pass : turn.pass_) {
    if (!pass.item->Claim()) continue;
    if (pass.leader == nullptr || pass.leader->Claim()) {
      more = Pump(pass, reach) || more;
      if (pass.leader != nullptr) pass.leader->Release();
    }
    pass.item->Release();
  }
  turn.pass_.clear();
  return more;
}

bool Feeder::Pump(const Pass& pass, Reach reach) {
  Pump(pass);
  return reach == Reach::Further && pass.leader == nullptr && pass.item->feed.Further();
}

void Feeder::Pump(const Pass& pass) {
  Item& item = *pass.item;
  const std::int64_t frame = item.slot->Core().Frames();
  if (pass.leader == nullptr) return item.feed.Pump(frame);
  DeviceSlot& leaders = *pass.leader->slot;
  const FramePair now{item.slot->HeardFrame(), leaders.HeardFrame(),
                      static_cast<double>(leaders.Core().SampleRate()) / item.slot->Core().SampleRate()};
  if (now.own == kNothingHeard || now.leaders == kNothingHeard) {
    // An output that was opened this very moment: who is to begin with the leader waits for the first block.
    if (!pass.leader->feed.WillPlay()) item.feed.Pump(frame);
    return;
  }
  const StreamFeed::Leader leader{pass.leader->feed, now, &leaders != item.slot.get()};
  item.feed.Pump(frame, &leader);
}

PollingThread::PollingThread(std::function<std::chrono::milliseconds()> work, std::function<void()> started)
    : work_(std::move(work)) {
  thread_ = std::thread([this, started = std::move(started)] {
    if (started) started();
    Run();
  });
}

PollingThread::~PollingThread() {
  {
    support::MutexLock lock(mutex_);
    end_ = true;
  }
  wake_.notify_all();
  thread_.join();
}

void PollingThread::Wake() {
  {
    support::MutexLock lock(mutex_);
    woken_ = true;
  }
  wake_.notify_one();
}

void PollingThread::Run() {
  while (true) {
    const std::chrono::milliseconds rest = work_();
    const auto next = std::chrono::steady_clock::now() + rest;
    support::MutexLock lock(mutex_);
    while (!end_ && !woken_ && std::chrono::steady_clock::now() < next) lock.WaitUntil(wake_, next);
    if (end_) return;
    woken_ = false;
  }
}

}  // namespace engine
