// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace platform::files {

/// The system's requests that the program end: the signals TERM, HUP and INT, or the closing of the console
/// and of the session.
///
/// The first one asks; a further one, or the end of the patience, makes an end without the window, and the
/// process is over a moment later whatever still hangs. Signals that were ignored when the program was
/// started stay so. Owns: the thread that calls. Threads: one object at a time, made and destroyed by the
/// same one.
class EndRequests {
 public:
  struct Patience {
    std::chrono::milliseconds asked{8000};        ///< between the first request and the last resort
    std::chrono::milliseconds again{2000};        ///< at most, between a further request and the last resort
    std::chrono::milliseconds last_resort{3000};  ///< for that itself
  };

  /// ask: called once, at the first request; whoever owns the program's loop ends it. last_resort: called
  /// when the program did not end in time; what it does may hang. Both on a thread of their own.
  EndRequests(std::function<void()> ask, std::function<void()> last_resort, Patience patience);
  EndRequests(std::function<void()> ask, std::function<void()> last_resort)
      : EndRequests(std::move(ask), std::move(last_resort), Patience()) {}
  /// The program has ended by itself: nothing is called any more.
  ~EndRequests();
  EndRequests(const EndRequests&) = delete;
  EndRequests& operator=(const EndRequests&) = delete;

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace platform::files
