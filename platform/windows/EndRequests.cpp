// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later

// The words of the other system's header with this system's calls behind them.
#include "platform/files/EndRequests.h"

#include <windows.h>

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <cstdlib>
#include <future>
#include <thread>
#include <utility>

#include "support/Mutex.h"

namespace platform::files {
namespace {

using Clock = std::chrono::steady_clock;

/// The system ends the process some seconds after a closed console or session, or when the handler is back.
constexpr auto kSystemsPatience = std::chrono::milliseconds(3500);

}  // namespace

struct EndRequests::State {
  /// Each event comes on a thread of its own.
  void Come(bool system_ends_it) DJ_EXCLUDES(mutex) {
    bool first = false;
    {
      support::MutexLock lock(mutex);
      const auto wait = system_ends_it ? std::min(patience.asked, kSystemsPatience) : patience.asked;
      first = !std::exchange(asked, true);
      const auto end = Clock::now() + (first ? wait : std::min(wait, patience.again));
      deadline = first ? end : std::min(deadline, end);
    }
    changed.notify_all();
    if (first) ask();
    if (first || system_ends_it) AwaitTheEnd();
  }

  void AwaitTheEnd() DJ_EXCLUDES(mutex) {
    {
      support::MutexLock lock(mutex);
      while (!over && Clock::now() < deadline) lock.WaitUntil(changed, deadline);
      if (over) return;
    }
    std::promise<void> done;
    auto end = done.get_future();
    std::thread([this, &done] {
      last_resort();
      done.set_value();
    }).detach();
    end.wait_for(patience.last_resort);
    std::_Exit(EXIT_FAILURE);
  }

  std::function<void()> ask;
  std::function<void()> last_resort;
  Patience patience;
  support::Mutex mutex;
  std::condition_variable changed;
  bool asked DJ_GUARDED_BY(mutex) = false;
  bool over DJ_GUARDED_BY(mutex) = false;
  Clock::time_point deadline DJ_GUARDED_BY(mutex);

  static std::atomic<State*> present;
};

std::atomic<EndRequests::State*> EndRequests::State::present{nullptr};

EndRequests::EndRequests(std::function<void()> ask, std::function<void()> last_resort, Patience patience)
    : state_(std::make_unique<State>()) {
  state_->ask = std::move(ask);
  state_->last_resort = std::move(last_resort);
  state_->patience = patience;
  State::present = state_.get();
  static bool handles = false;
  if (std::exchange(handles, true)) return;
  SetConsoleCtrlHandler(
      [](DWORD event) -> BOOL {
        State* const state = State::present;
        if (state == nullptr) return FALSE;
        state->Come(event == CTRL_CLOSE_EVENT || event == CTRL_LOGOFF_EVENT || event == CTRL_SHUTDOWN_EVENT);
        return TRUE;
      },
      TRUE);
}

EndRequests::~EndRequests() {
  State::present = nullptr;
  {
    support::MutexLock lock(state_->mutex);
    state_->over = true;
  }
  state_->changed.notify_all();
  // An event's thread may still be on its way out of it; the process ends with this object.
  static_cast<void>(state_.release());
}

}  // namespace platform::files
