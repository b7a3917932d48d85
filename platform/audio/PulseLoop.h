// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <pulse/pulseaudio.h>

#include <functional>

namespace platform::audio {

/// The thread on which libpulse calls back, and the lock that holds it still.
///
/// Owns: the thread; it ends with this object. Threads: any but the loop's own.
class PulseLoop {
 public:
  /// started runs first on the thread, and may be empty.
  explicit PulseLoop(std::function<void()> started);
  ~PulseLoop();
  PulseLoop(const PulseLoop&) = delete;
  PulseLoop& operator=(const PulseLoop&) = delete;

  /// False when the system gave no thread; nothing else may be called then.
  [[nodiscard]] bool Runs() const { return loop_ != nullptr; }
  [[nodiscard]] pa_mainloop_api* Api() { return pa_threaded_mainloop_get_api(loop_); }
  /// Until the next Signal. Requires: the lock.
  void Wait() { pa_threaded_mainloop_wait(loop_); }
  /// Threads: the loop's own, in a callback.
  void Signal() { pa_threaded_mainloop_signal(loop_, 0); }

 private:
  friend class PulseLock;
  const std::function<void()> started_;
  pa_threaded_mainloop* loop_;
};

/// While it lives, no callback runs.
class PulseLock {
 public:
  explicit PulseLock(PulseLoop& loop) : loop_(loop.loop_) { pa_threaded_mainloop_lock(loop_); }
  ~PulseLock() { pa_threaded_mainloop_unlock(loop_); }
  PulseLock(const PulseLock&) = delete;
  PulseLock& operator=(const PulseLock&) = delete;

 private:
  pa_threaded_mainloop* loop_;
};

}  // namespace platform::audio
