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
constexpr const wchar_t* kWindowClass = L"djTolvenEndOfSession";

}  // namespace

/// A window that nobody sees, on a thread of its own: the end of a session is told to windows alone, and to
/// none that is for messages only.
class SessionWindow {
 public:
  /// ends: called on that thread when the session ends; the system waits for it.
  explicit SessionWindow(std::function<void()> ends) : ends_(std::move(ends)), thread_([this] { Run(); }) {
    made_.get_future().wait();
  }
  ~SessionWindow() {
    if (window_ != nullptr) PostMessageW(window_, WM_CLOSE, 0, 0);
    thread_.join();
  }
  SessionWindow(const SessionWindow&) = delete;
  SessionWindow& operator=(const SessionWindow&) = delete;

 private:
  static LRESULT CALLBACK Answer(HWND window, UINT message, WPARAM first, LPARAM second) {
    switch (message) {
      case WM_QUERYENDSESSION:
        return TRUE;
      case WM_ENDSESSION:
        if (first != 0) {
          reinterpret_cast<SessionWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA))->ends_();
        }
        return 0;
      case WM_DESTROY:
        PostQuitMessage(0);
        return 0;
      default:
        return DefWindowProcW(window, message, first, second);
    }
  }

  void Run() {
    WNDCLASSW kind{};
    kind.lpfnWndProc = &Answer;
    kind.hInstance = GetModuleHandleW(nullptr);
    kind.lpszClassName = kWindowClass;
    RegisterClassW(&kind);  // fails where it is known already
    window_ = CreateWindowExW(0, kWindowClass, L"", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr, kind.hInstance,
                              nullptr);
    if (window_ != nullptr) {
      SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    }
    made_.set_value();
    if (window_ == nullptr) return;
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
  }

  const std::function<void()> ends_;
  std::promise<void> made_;
  HWND window_ = nullptr;
  std::thread thread_;  // last: it uses all of the above
};

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
  std::unique_ptr<SessionWindow> session;

  static std::atomic<State*> present;
};

std::atomic<EndRequests::State*> EndRequests::State::present{nullptr};

EndRequests::EndRequests(std::function<void()> ask, std::function<void()> last_resort, Patience patience)
    : state_(std::make_unique<State>()) {
  state_->ask = std::move(ask);
  state_->last_resort = std::move(last_resort);
  state_->patience = patience;
  State::present = state_.get();
  state_->session = std::make_unique<SessionWindow>([state = state_.get()] { state->Come(true); });
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
  state_->session.reset();
  // An event's thread may still be on its way out of it; the process ends with this object.
  static_cast<void>(state_.release());
}

}  // namespace platform::files
