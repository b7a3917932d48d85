// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <vector>

#include "app/ports/SystemMixer.h"
#include "support/Mutex.h"

namespace app::testing {

/// A system volume in memory; without one, until it is given one, it is silent.
/// Threads: any.
class FakeMixer final : public SystemMixer {
 public:
  void Open(Changed changed) override {
    int percent = 0;
    {
      support::MutexLock lock(mutex_);
      ++openings_;
      changed_ = changed;
      if (!there_) return;
      percent = percent_;
    }
    changed(percent);
  }
  void Choose(const std::string& output) override {
    support::MutexLock lock(mutex_);
    chosen_ = output;
  }
  void SetVolume(int percent) override {
    support::MutexLock lock(mutex_);
    if (!there_ || changed_ == nullptr) return;
    percent_ = std::clamp(percent, 0, 100);
  }

  /// Somebody else moves it, or a sound system comes.
  void Move(int percent) {
    Changed changed;
    {
      support::MutexLock lock(mutex_);
      there_ = true;
      percent_ = percent;
      changed = changed_;
    }
    if (changed) changed(percent);
  }
  [[nodiscard]] int Volume() const {
    support::MutexLock lock(mutex_);
    return percent_;
  }
  [[nodiscard]] std::string Chosen() const {
    support::MutexLock lock(mutex_);
    return chosen_;
  }
  [[nodiscard]] int Openings() const {
    support::MutexLock lock(mutex_);
    return openings_;
  }

 private:
  mutable support::Mutex mutex_;
  Changed changed_ DJ_GUARDED_BY(mutex_);
  std::string chosen_ DJ_GUARDED_BY(mutex_);
  int percent_ DJ_GUARDED_BY(mutex_) = 0;
  bool there_ DJ_GUARDED_BY(mutex_) = false;
  int openings_ DJ_GUARDED_BY(mutex_) = 0;
};

}  // namespace app::testing
