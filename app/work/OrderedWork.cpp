// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/work/OrderedWork.h"

#include <deque>
#include <utility>

#include "support/Mutex.h"

namespace app {

struct OrderedWork::State {
  support::Mutex working;  ///< one job at a time
  support::Mutex mutex;
  std::deque<std::function<void()>> waiting DJ_GUARDED_BY(mutex);
};

OrderedWork::OrderedWork(support::Executor& workers, std::shared_ptr<WorkGate> gate)
    : workers_(workers), gate_(std::move(gate)), state_(std::make_shared<State>()) {}

void OrderedWork::Post(std::function<void()> job) {
  {
    support::MutexLock lock(state_->mutex);
    state_->waiting.push_back(std::move(job));
  }
  workers_.Post([state = state_, gate = gate_] { gate->Pass([&] { WorkOnOne(*state); }); });
}

void OrderedWork::Flush() {
  while (WorkOnOne(*state_)) {
  }
}

bool OrderedWork::WorkOnOne(State& state) {
  support::MutexLock one_at_a_time(state.working);
  std::function<void()> job;
  {
    support::MutexLock lock(state.mutex);
    if (state.waiting.empty()) return false;
    job = std::move(state.waiting.front());
    state.waiting.pop_front();
  }
  job();
  return true;
}

}  // namespace app
