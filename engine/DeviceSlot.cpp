// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/DeviceSlot.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace engine {

void OutputPlug::Render(std::span<float> interleaved) noexcept {
  const std::int64_t channels = std::max<std::int64_t>(static_cast<std::int64_t>(info_.speakers.size()), 1);
  const std::int64_t given = given_.load(std::memory_order_relaxed);
  if (RenderCore* core = core_.load(std::memory_order_acquire)) {
    if (base_.load(std::memory_order_relaxed) == kNothingHeard) {
      base_.store(core->Frames() - given, std::memory_order_release);
    }
    core->Render(interleaved);
  } else {
    std::fill(interleaved.begin(), interleaved.end(), 0.0F);
  }
  given_.store(given + static_cast<std::int64_t>(interleaved.size()) / channels, std::memory_order_release);
}

std::int64_t OutputPlug::HeardFrame(support::TimePoint now, const RenderCore& core) const noexcept {
  const std::int64_t base = base_.load(std::memory_order_acquire);
  if (base == kNothingHeard || device_ == nullptr) return kNothingHeard;
  const PlayedMark mark = device_->Played();
  const double seconds = std::chrono::duration<double>(now - mark.at).count();
  // A mark may lie ahead: an output knows when its very first frame will be heard.
  // The margin keeps a whole number of frames whole after the way through seconds.
  const double since = std::floor(std::clamp(seconds, -10.0, 10.0) * core.SampleRate() + 1e-3);
  const std::int64_t frames = mark.frames + static_cast<std::int64_t>(since);
  return base + std::min(frames, given_.load(std::memory_order_acquire)) - core.LookAhead();
}

DeviceSlot::DeviceSlot(int number, const OutputDeviceInfo& wanted, const OutputRequest& request,
                       const support::Clock& clock)
    : number_(number),
      wanted_(wanted),
      request_(request),
      clock_(clock),
      core_(request.sample_rate, SpeakerMap(wanted.speakers), clock) {}

std::unique_ptr<OutputPlug> DeviceSlot::Unplug() {
  support::MutexLock lock(mutex_);
  if (plug_ != nullptr) {
    last_heard_ = std::max(last_heard_, plug_->HeardFrame(clock_.Now(), core_));
    gaps_before_ += plug_->Gaps();
    plug_->Connect(nullptr);
  }
  return std::move(plug_);
}

void DeviceSlot::Plug(std::unique_ptr<OutputPlug> plug) {
  core_.SetSpeakers(SpeakerMap(plug->Info().speakers));
  support::MutexLock lock(mutex_);
  plug_ = std::move(plug);
  if (buffer_ms_ > 0) plug_->SetBuffer(buffer_ms_, period_ms_);
  plug_->Connect(&core_);
}

bool DeviceSlot::Lost() const {
  support::MutexLock lock(mutex_);
  return plug_ != nullptr && plug_->Lost();
}

std::uint64_t DeviceSlot::Gaps() const {
  support::MutexLock lock(mutex_);
  return gaps_before_ + (plug_ == nullptr ? 0 : plug_->Gaps());
}

std::string DeviceSlot::MovedTo() const {
  support::MutexLock lock(mutex_);
  return plug_ == nullptr ? std::string() : plug_->MovedTo();
}

std::string DeviceSlot::PlaysOn() const {
  support::MutexLock lock(mutex_);
  if (plug_ == nullptr) return {};
  const std::string moved = plug_->MovedTo();
  return moved.empty() ? plug_->Info().id : moved;
}

void DeviceSlot::SetBuffer(int buffer_ms, int period_ms) {
  support::MutexLock lock(mutex_);
  buffer_ms_ = buffer_ms;
  period_ms_ = period_ms;
  if (plug_ != nullptr) plug_->SetBuffer(buffer_ms, period_ms);
}

std::int64_t DeviceSlot::HeardFrame() {
  support::MutexLock lock(mutex_);
  if (plug_ != nullptr) last_heard_ = std::max(last_heard_, plug_->HeardFrame(clock_.Now(), core_));
  return last_heard_;
}

std::optional<std::chrono::duration<double>> DeviceSlot::Behind() {
  using Seconds = std::chrono::duration<double>;
  const auto mark = core_.Mixed();
  const std::int64_t heard = HeardFrame();
  if (!mark || heard == kNothingHeard) return std::nullopt;
  const Seconds to_come(static_cast<double>(mark->frame - heard) / core_.SampleRate());
  return to_come + Seconds(clock_.Now() - mark->at);
}

}  // namespace engine
