// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <condition_variable>
#include <thread>
#include <vector>

#include "engine/ports/OutputDevice.h"
#include "support/HistoryRing.h"
#include "support/Mutex.h"

namespace engine {

/// Pulls by the system's clock and lets nothing be heard: what plays while no output works.
///
/// A block is heard, so to say, from the moment it was pulled. Threads: one of its own, ended by the
/// destructor.
class NullDevice final : public OutputDevice {
 public:
  /// thread_started runs first on the device's thread.
  NullDevice(OutputDeviceInfo info, const OutputRequest& request, RenderSource& source,
             const std::function<void()>& thread_started);
  ~NullDevice() override;
  NullDevice(const NullDevice&) = delete;
  NullDevice& operator=(const NullDevice&) = delete;

  [[nodiscard]] const OutputDeviceInfo& Info() const noexcept override { return info_; }
  [[nodiscard]] PlayedMark Played() const noexcept override;
  [[nodiscard]] bool Lost() const noexcept override { return false; }
  [[nodiscard]] std::uint64_t Gaps() const noexcept override { return 0; }

 private:
  void Run() DJ_EXCLUDES(mutex_);

  const OutputDeviceInfo info_;
  const int sample_rate_;
  const support::Duration period_;
  RenderSource& source_;
  std::vector<float> block_;
  support::HistoryRing<PlayedMark, 8> played_;
  support::Mutex mutex_;
  std::condition_variable ending_;
  bool end_ DJ_GUARDED_BY(mutex_) = false;
  std::thread thread_;
};

}  // namespace engine
