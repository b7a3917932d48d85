// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/work/Lanes.h"

#include <utility>

namespace app {

Lanes::Lanes(support::Executor& workers, std::shared_ptr<WorkGate> gate,
             std::shared_ptr<const IdleCores> cores, Task ended)
    : workers_(workers), gate_(std::move(gate)), cores_(std::move(cores)), ended_(std::move(ended)) {}

void Lanes::Push(Task task, Turn turn) {
  int more = 0;
  {
    support::MutexLock lock(mutex_);
    ++open_;
    turn == Turn::First ? waiting_.push_front(std::move(task)) : waiting_.push_back(std::move(task));
    more = LanesWanted();
    lanes_ += more;
  }
  PostLanes(more);
}

void Lanes::Drop() {
  std::deque<Task> dropped;  // freed after the lock
  support::MutexLock lock(mutex_);
  dropped.swap(waiting_);
  // The end is a task too, so that it is told by a worker.
  if (!dropped.empty()) waiting_.push_back([] {});
  open_ += static_cast<int>(waiting_.size()) - static_cast<int>(dropped.size());
}

/// Those that are to be posted besides the ones that are there.
int Lanes::LanesWanted() {
  const int useful = std::min(cores_->Now(), static_cast<int>(waiting_.size()) + lanes_);
  return std::max(0, useful - lanes_);
}

void Lanes::PostLanes(int lanes) {
  for (int i = 0; i < lanes; ++i) workers_.Post([self = shared_from_this()] { Run(self); });
}

void Lanes::Run(const std::shared_ptr<Lanes>& lanes) {
  lanes->gate_->Pass([&lanes] {
    if (lanes->TakeTurn()) lanes->workers_.Post([lanes] { Run(lanes); });
  });
}

bool Lanes::TakeTurn() {
  Task task;
  {
    support::MutexLock lock(mutex_);
    if (waiting_.empty() || lanes_ > cores_->Now()) {
      --lanes_;
      return false;
    }
    task = std::move(waiting_.front());
    waiting_.pop_front();
  }
  task();
  task = nullptr;
  int more = 0;
  bool stay = false, over = false;
  {
    support::MutexLock lock(mutex_);
    over = --open_ == 0;
    stay = !waiting_.empty() && lanes_ <= cores_->Now();
    if (!stay) --lanes_;
    more = LanesWanted();
    lanes_ += more;
  }
  PostLanes(more);
  if (over) ended_();
  return stay;
}

}  // namespace app
