// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/files/EndRequests.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <future>
#include <limits>
#include <optional>
#include <thread>
#include <utility>

namespace platform::files {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::array kRequests{SIGTERM, SIGHUP, SIGINT};
constexpr std::uint8_t kOver = 0;  ///< no signal has this number

std::atomic<int> pipe_in{-1};

/// What a signal may do: tell its number to whoever reads the pipe.
extern "C" void TellThePipe(int number) {
  const int kept = errno;
  const auto byte = static_cast<std::uint8_t>(number);
  // A full pipe holds enough requests.
  [[maybe_unused]] const auto written = write(pipe_in.load(std::memory_order_relaxed), &byte, 1);
  errno = kept;
}

}  // namespace

struct EndRequests::State {
  void Catch() {
    struct sigaction caught {};
    caught.sa_handler = &TellThePipe;
    caught.sa_flags = SA_RESTART;
    for (std::size_t i = 0; i < kRequests.size(); ++i) {
      sigaction(kRequests[i], nullptr, &before[i]);
      if (before[i].sa_handler != SIG_IGN) sigaction(kRequests[i], &caught, nullptr);
    }
    // A display that is gone is told by a failing call, which is handled; the signal would end the program
    // first.
    signal(SIGPIPE, SIG_IGN);
  }
  void Release() {
    for (std::size_t i = 0; i < kRequests.size(); ++i) sigaction(kRequests[i], &before[i], nullptr);
  }

  void Work() {
    std::optional<Clock::time_point> deadline;
    while (true) {
      std::uint8_t number = kOver;
      if (!Await(deadline)) MakeAnEnd();
      if (read(ends[0], &number, 1) != 1) continue;
      if (number == kOver) return;
      first = first == 0 ? number : first;
      const bool again = deadline.has_value();
      const auto end = Clock::now() + (again ? patience.again : patience.asked);
      deadline = again ? std::min(*deadline, end) : end;
      if (!again) ask();
    }
  }

  /// False when the deadline came first.
  [[nodiscard]] bool Await(const std::optional<Clock::time_point>& deadline) const {
    pollfd request{ends[0], POLLIN, 0};
    while (true) {
      int wait = -1;
      if (deadline) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(*deadline - Clock::now()).count();
        wait = static_cast<int>(std::clamp<std::int64_t>(left, 0, std::numeric_limits<int>::max()));
      }
      const int ready = poll(&request, 1, wait);
      if (ready > 0) return true;
      if (ready == 0) return false;
    }
  }

  [[noreturn]] void MakeAnEnd() {
    std::promise<void> done;
    auto end = done.get_future();
    std::thread([this, &done] {
      last_resort();
      done.set_value();
    }).detach();
    end.wait_for(patience.last_resort);
    std::_Exit(128 + first);
  }

  std::function<void()> ask;
  std::function<void()> last_resort;
  Patience patience;
  std::array<int, 2> ends{-1, -1};
  std::array<struct sigaction, kRequests.size()> before{};
  int first = 0;
  std::thread thread;
};

EndRequests::EndRequests(std::function<void()> ask, std::function<void()> last_resort, Patience patience)
    : state_(std::make_unique<State>()) {
  State& state = *state_;
  state.ask = std::move(ask);
  state.last_resort = std::move(last_resort);
  state.patience = patience;
  if (pipe2(state.ends.data(), O_CLOEXEC) != 0) return;
  fcntl(state.ends[1], F_SETFL, O_NONBLOCK);
  pipe_in = state.ends[1];
  state.thread = std::thread([&state] { state.Work(); });
  state.Catch();
}

EndRequests::~EndRequests() {
  if (!state_->thread.joinable()) return;
  state_->Release();
  TellThePipe(kOver);
  state_->thread.join();
  pipe_in = -1;
  for (const int end : state_->ends) close(end);
}

}  // namespace platform::files
