// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <thread>

#include "app/work/Mailbox.h"

namespace app {

/// The thread for everything that must go on when the window hangs: it runs commands at once, in the order of
/// posting, and its tick every 10 ms of absolute time.
///
/// Threads: Post from any; Start, Stop and ConductOnce from the owner's. What a command touches belongs to
/// the conductor from Start to Stop, and to the owner before and after.
class Conductor {
 public:
  static constexpr std::chrono::milliseconds kPeriod{10};

  /// started runs first on the thread, and may be empty.
  explicit Conductor(std::function<void()> tick, std::function<void()> started = {});
  ~Conductor();
  Conductor(const Conductor&) = delete;
  Conductor& operator=(const Conductor&) = delete;

  void Post(Mailbox::Job command) { box_->Post(std::move(command)); }
  /// For answers that may come after the conductor is gone.
  [[nodiscard]] std::shared_ptr<Mailbox> Box() const { return box_; }

  void Start();
  /// Returns when the running command or tick is over; what was posted and not run stays in the box.
  void Stop();
  /// The commands posted so far and one tick, on the caller's thread. Requires: not started.
  void ConductOnce();

 private:
  void Run();
  void RunCommands();

  std::function<void()> tick_;
  const std::function<void()> started_;
  std::shared_ptr<Mailbox> box_ = std::make_shared<Mailbox>();
  std::atomic<bool> stopping_{false};
  std::thread thread_;
};

}  // namespace app
