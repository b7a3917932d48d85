// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/Feeder.h"

#include <utility>

namespace engine {

void Feeder::Add(std::shared_ptr<Stream> stream, std::shared_ptr<DeviceSlot> slot) {
  const int rate = slot->Core().SampleRate();
  auto item =
      std::make_shared<Item>(Item{std::move(slot), StreamFeed(std::move(stream), stretchers_, *pool_, rate)});
  support::MutexLock lock(mutex_);
  items_.push_back(std::move(item));
}

void Feeder::Remove(std::uint32_t stream) {
  support::MutexLock lock(mutex_);
  std::erase_if(items_, [&](const auto& item) { return item->feed.Of().Id() == stream; });
}

void Feeder::Pump() {
  {
    support::MutexLock lock(mutex_);
    pass_ = items_;
  }
  for (const auto& item : pass_) item->feed.Pump(item->slot->Core().Frames());
  pass_.clear();
}

PollingThread::PollingThread(std::function<void()> work, std::function<void()> started)
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
  constexpr auto kEvery = std::chrono::milliseconds(5);
  while (true) {
    work_();
    const auto next = std::chrono::steady_clock::now() + kEvery;
    support::MutexLock lock(mutex_);
    while (!end_ && !woken_ && std::chrono::steady_clock::now() < next) lock.WaitUntil(wake_, next);
    if (end_) return;
    woken_ = false;
  }
}

}  // namespace engine
