// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/NullDevice.h"

#include <algorithm>
#include <utility>

namespace engine {

NullDevice::NullDevice(OutputDeviceInfo info, const OutputRequest& request, RenderSource& source,
                       const std::function<void()>& thread_started)
    : info_(std::move(info)),
      sample_rate_(request.sample_rate),
      period_(std::chrono::milliseconds(std::clamp(request.period_ms, 1, 100))),
      source_(source) {
  const auto frames = sample_rate_ * std::clamp(request.period_ms, 1, 100) / 1000;
  block_.resize(static_cast<std::size_t>(frames) * info_.speakers.size());
  thread_ = std::thread([this, thread_started] {
    if (thread_started) thread_started();
    Run();
  });
}

NullDevice::~NullDevice() {
  {
    support::MutexLock lock(mutex_);
    end_ = true;
  }
  ending_.notify_all();
  thread_.join();
}

PlayedMark NullDevice::Played() const noexcept {
  return played_.Newest().value_or(PlayedMark{0, support::TimePoint::max()});
}

void NullDevice::Run() {
  constexpr auto kLongestGap = std::chrono::seconds(1);  // the machine slept: do not run after the lost time
  const auto channels = std::max<std::size_t>(info_.speakers.size(), 1);
  const auto frames = static_cast<std::int64_t>(block_.size() / channels);
  support::TimePoint due = std::chrono::steady_clock::now();
  for (std::int64_t rendered = 0;; rendered += frames) {
    {
      support::MutexLock lock(mutex_);
      while (!end_ && std::chrono::steady_clock::now() < due) lock.WaitUntil(ending_, due);
      if (end_) return;
    }
    played_.Write({rendered, due});
    source_.Render(block_);
    due += period_;
    due = std::max(due, std::chrono::steady_clock::now() - kLongestGap);
  }
}

}  // namespace engine
