// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later

// The words of the other system's header with this system's calls behind them.
#include "platform/rights/SoundThreads.h"

#include <windows.h>

#include <avrt.h>

#include <algorithm>
#include <map>
#include <utility>

#include "support/Mutex.h"

namespace platform::rights {

using Level = app::SoundPriority::Level;

struct SoundThreads::State {
  support::Mutex mutex;
  std::map<DWORD, Level> threads DJ_GUARDED_BY(mutex);
};

SoundThreads::SoundThreads(Options /*options*/) : state_(std::make_shared<State>()) {}

SoundThreads::~SoundThreads() = default;

void SoundThreads::Join(Duty duty) {
  /// Takes the thread out of the list as it ends, before its number is another one's.
  struct Membership {
    ~Membership() {
      const auto state = of.lock();
      if (state == nullptr) return;
      support::MutexLock lock(state->mutex);
      state->threads.erase(GetCurrentThreadId());
    }
    std::weak_ptr<State> of;
  };
  thread_local Membership membership;
  membership.of = state_;
  DWORD task = 0;
  Level level = Level::Normal;
  if (duty != Duty::Timing && AvSetMmThreadCharacteristicsA("Pro Audio", &task) != nullptr) {
    level = Level::RealTime;
  } else if (SetThreadPriority(GetCurrentThread(), duty == Duty::Timing ? THREAD_PRIORITY_HIGHEST
                                                                        : THREAD_PRIORITY_TIME_CRITICAL)) {
    level = Level::Raised;
  }
  if (duty == Duty::Timing) return;
  support::MutexLock lock(state_->mutex);
  state_->threads[GetCurrentThreadId()] = level;
}

app::SoundPriority::Level SoundThreads::Now() const {
  support::MutexLock lock(state_->mutex);
  if (state_->threads.empty()) return Level::Asked;
  Level least = Level::RealTime;
  for (const auto& [thread, level] : state_->threads) least = std::min(least, level);
  return least;
}

}  // namespace platform::rights
