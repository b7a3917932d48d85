// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/rights/SoundThreads.h"

#include <sched.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <condition_variable>
#include <thread>
#include <utility>
#include <vector>

#include "platform/rights/RealtimeKit.h"
#include "support/Mutex.h"

namespace platform::rights {
namespace {

using Duty = SoundThreads::Duty;
using Level = app::SoundPriority::Level;

constexpr int kNice = -11;
/// What a thread computed without a pause still counts when it gets its rights again: it would come ever
/// nearer to the system's end of patience.
constexpr int kMostGrants = 5;

/// Above desktop programs, below the sound server and the kernel's own threads.
int PriorityOf(Duty duty) {
  return duty == Duty::Callback ? 5 : 4;
}

/// Threads that may have real time, for the signal; 0 is none.
std::array<std::atomic<pid_t>, 32> privileged;

/// One of them has computed for too long: all give their rights back before the system ends the program.
extern "C" void GiveBack(int) {
  const int kept = errno;
  const sched_param none{};
  for (const auto& thread : privileged) {
    const pid_t id = thread.load(std::memory_order_relaxed);
    if (id != 0) sched_setscheduler(id, SCHED_OTHER, &none);
  }
  errno = kept;
}

void NoteForTheSignal(pid_t thread) {
  for (auto& place : privileged) {
    pid_t free = 0;
    if (place.compare_exchange_strong(free, thread)) return;
  }
}

void Forget(pid_t thread) {
  for (auto& place : privileged) {
    pid_t own = thread;
    if (place.compare_exchange_strong(own, 0)) return;
  }
}

Level LevelOf(pid_t thread) {
  const int policy = sched_getscheduler(thread) & ~SCHED_RESET_ON_FORK;
  if (policy == SCHED_FIFO || policy == SCHED_RR) return Level::RealTime;
  return getpriority(PRIO_PROCESS, static_cast<id_t>(thread)) < 0 ? Level::Raised : Level::Normal;
}

/// The kit gives real time only to programs that the system would end before they hold a processor for long.
bool LimitTime(std::int64_t most_us) {
  rlimit limit{};
  if (most_us <= 0 || getrlimit(RLIMIT_RTTIME, &limit) != 0) return false;
  struct sigaction action {};
  action.sa_handler = &GiveBack;
  action.sa_flags = SA_RESTART;
  if (sigaction(SIGXCPU, &action, nullptr) != 0) return false;
  limit.rlim_max = std::min<rlim_t>(limit.rlim_max, static_cast<rlim_t>(most_us));
  limit.rlim_cur = std::min<rlim_t>(limit.rlim_cur, limit.rlim_max / 2);
  return setrlimit(RLIMIT_RTTIME, &limit) == 0;
}

}  // namespace

struct SoundThreads::State {
  struct Thread {
    pid_t id;
    Duty duty;
    bool asked = false;    ///< the kit, whatever it said
    bool granted = false;  ///< real time, by the kit
    int taken_back = 0;    ///< so often
  };

  void Work() DJ_EXCLUDES(mutex);
  /// Those that have less than they should.
  [[nodiscard]] std::vector<Thread> Wanting() DJ_EXCLUDES(mutex);
  void AskFor(std::vector<Thread> wanting) DJ_EXCLUDES(mutex);
  void Leave(pid_t id) DJ_EXCLUDES(mutex);

  SoundThreads::Options options;
  support::Mutex mutex;
  std::condition_variable wake;
  std::vector<Thread> threads DJ_GUARDED_BY(mutex);
  bool news DJ_GUARDED_BY(mutex) = false;
  bool ending DJ_GUARDED_BY(mutex) = false;
  std::thread worker;
};

namespace {

bool Wants(Duty duty, Level level) {
  return duty == Duty::Timing ? level == Level::Normal : level != Level::RealTime;
}

}  // namespace

SoundThreads::SoundThreads(Options options) : state_(std::make_shared<State>()) {
  state_->options = std::move(options);
  state_->worker = std::thread([state = state_.get()] { state->Work(); });
}

SoundThreads::~SoundThreads() {
  {
    support::MutexLock lock(state_->mutex);
    state_->ending = true;
  }
  state_->wake.notify_all();
  state_->worker.join();
}

void SoundThreads::Join(Duty duty) {
  /// Takes the thread out of the list as it ends, before its number is another one's.
  struct Membership {
    ~Membership() {
      if (const auto state = of.lock()) state->Leave(id);
      Forget(id);
    }
    std::weak_ptr<State> of;
    pid_t id = 0;
  };
  thread_local Membership membership;
  const pid_t id = gettid();
  membership.of = state_;
  membership.id = id;
  if (duty != Duty::Timing) NoteForTheSignal(id);
  if (state_->options.by_ourselves) {
    sched_param wanted{};
    wanted.sched_priority = PriorityOf(duty);
    const bool real_time =
        duty != Duty::Timing && sched_setscheduler(0, SCHED_FIFO | SCHED_RESET_ON_FORK, &wanted) == 0;
    // On Linux this is the calling thread alone.
    if (!real_time) setpriority(PRIO_PROCESS, 0, kNice);
  }
  {
    support::MutexLock lock(state_->mutex);
    state_->threads.push_back({id, duty});
    state_->news = true;
  }
  state_->wake.notify_all();
}

app::SoundPriority::Level SoundThreads::Now() const {
  support::MutexLock lock(state_->mutex);
  Level least = Level::RealTime;
  bool any = false;
  for (const State::Thread& thread : state_->threads) {
    if (thread.duty == Duty::Timing) continue;
    const Level level = LevelOf(thread.id);
    least = std::min(least, level != Level::RealTime && !thread.asked ? Level::Asked : level);
    any = true;
  }
  return any ? least : Level::Asked;
}

void SoundThreads::State::Leave(pid_t id) {
  support::MutexLock lock(mutex);
  std::erase_if(threads, [id](const Thread& thread) { return thread.id == id; });
}

std::vector<SoundThreads::State::Thread> SoundThreads::State::Wanting() {
  support::MutexLock lock(mutex);
  std::vector<Thread> wanting;
  for (Thread& thread : threads) {
    if (!Wants(thread.duty, LevelOf(thread.id))) continue;
    if (std::exchange(thread.granted, false)) ++thread.taken_back;
    if (thread.taken_back < kMostGrants) wanting.push_back(thread);
  }
  return wanting;
}

void SoundThreads::State::Work() {
  while (true) {
    {
      support::MutexLock lock(mutex);
      const auto next = std::chrono::steady_clock::now() + options.look;
      while (!ending && !news && std::chrono::steady_clock::now() < next) lock.WaitUntil(wake, next);
      if (ending) return;
      news = false;
    }
    auto wanting = Wanting();
    if (!wanting.empty()) AskFor(std::move(wanting));
  }
}

void SoundThreads::State::AskFor(std::vector<Thread> wanting) {
  // A connection that is not kept needs nobody to read what comes on it.
  const auto kit = RealtimeKit::Find(options.bus);
  const bool any_sound = std::any_of(wanting.begin(), wanting.end(),
                                     [](const Thread& thread) { return thread.duty != Duty::Timing; });
  const bool limited = kit != nullptr && any_sound && LimitTime(kit->Allows().time_us);
  for (const Thread& thread : wanting) {
    {
      support::MutexLock lock(mutex);
      const auto still = std::find_if(threads.begin(), threads.end(),
                                      [&](const Thread& one) { return one.id == thread.id; });
      if (ending || still == threads.end()) continue;
      if (kit == nullptr) still->asked = true;
    }
    if (kit == nullptr) continue;
    const int priority = std::min(PriorityOf(thread.duty), kit->Allows().priority);
    const bool granted = thread.duty != Duty::Timing && limited && kit->MakeRealtime(thread.id, priority);
    if (!granted && LevelOf(thread.id) == Level::Normal) {
      kit->MakeHighPriority(thread.id, std::max(kNice, kit->Allows().nice));
    }
    support::MutexLock lock(mutex);
    for (Thread& one : threads) {
      if (one.id != thread.id) continue;
      one.asked = true;
      one.granted = granted;
    }
  }
}

}  // namespace platform::rights
