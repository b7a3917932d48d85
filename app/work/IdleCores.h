// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <atomic>

namespace app {

/// How many workers long work may take: all of them, but for one while a deck plays.
/// Threads: any.
class IdleCores {
 public:
  explicit IdleCores(int workers) : workers_(workers) {}

  void SetPlaying(bool playing) { playing_ = playing; }
  [[nodiscard]] int Now() const { return playing_ ? std::max(1, workers_ - 1) : workers_; }

 private:
  const int workers_;
  std::atomic<bool> playing_{false};
};

}  // namespace app
