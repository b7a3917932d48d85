// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <string>

#include "engine/RenderCore.h"
#include "engine/ports/OutputDevice.h"
#include "support/Clock.h"
#include "support/Mutex.h"

namespace engine {

/// Before every frame, with room to reckon below it: nothing was heard yet.
inline constexpr std::int64_t kNothingHeard = std::numeric_limits<std::int64_t>::min() / 2;

/// An open output and the tap between it and a core: silence until the core is connected.
///
/// It counts what the output was given, which ties the output's own count to the core's frames.
/// Threads: Render in the callback, the rest by the slot.
class OutputPlug final : public RenderSource {
 public:
  explicit OutputPlug(OutputDeviceInfo info) : info_(std::move(info)) {}

  void Insert(std::unique_ptr<OutputDevice> device) { device_ = std::move(device); }
  /// Null disconnects.
  void Connect(RenderCore* core) noexcept { core_.store(core, std::memory_order_release); }
  [[nodiscard]] const OutputDeviceInfo& Info() const noexcept { return info_; }
  [[nodiscard]] bool Lost() const noexcept { return device_ != nullptr && device_->Lost(); }
  [[nodiscard]] std::uint64_t Gaps() const noexcept { return device_ == nullptr ? 0 : device_->Gaps(); }
  [[nodiscard]] std::string MovedTo() const {
    return device_ == nullptr ? std::string() : device_->MovedTo();
  }
  void SetBuffer(int buffer_ms, int period_ms) noexcept {
    if (device_ != nullptr) device_->SetBuffer(buffer_ms, period_ms);
  }
  /// The core's frame that is heard at that time; kNothingHeard when nothing of the core was given yet.
  [[nodiscard]] std::int64_t HeardFrame(support::TimePoint now, const RenderCore& core) const noexcept;

  void Render(std::span<float> interleaved) noexcept override;

 private:
  const OutputDeviceInfo info_;
  std::atomic<RenderCore*> core_{nullptr};
  std::atomic<std::int64_t> given_{0};
  std::atomic<std::int64_t> base_{kNothingHeard};  ///< the core's frame under the output's frame 0
  std::unique_ptr<OutputDevice> device_;           // last: it stops pulling before the rest goes
};

/// One device number that streams play on: the core lives as long as the number, outputs come and go.
///
/// Threads: any but the callback; each call short, but closing an output waits for it.
class DeviceSlot {
 public:
  DeviceSlot(int number, const OutputDeviceInfo& wanted, const OutputRequest& request,
             const support::Clock& clock);
  ~DeviceSlot() { Close(); }
  DeviceSlot(const DeviceSlot&) = delete;
  DeviceSlot& operator=(const DeviceSlot&) = delete;

  [[nodiscard]] int Number() const noexcept { return number_; }
  /// The output that the number stands for, whether it is there or not.
  [[nodiscard]] const OutputDeviceInfo& Wanted() const noexcept { return wanted_; }
  [[nodiscard]] const OutputRequest& Request() const noexcept { return request_; }
  [[nodiscard]] RenderCore& Core() noexcept { return core_; }

  /// Takes the present output away; the core stands still. The caller destroys what it gets.
  [[nodiscard]] std::unique_ptr<OutputPlug> Unplug() DJ_EXCLUDES(mutex_);
  /// Requires: unplugged, and what was unplugged pulls no more.
  void Plug(std::unique_ptr<OutputPlug> plug) DJ_EXCLUDES(mutex_);
  void Close() DJ_EXCLUDES(mutex_) { Unplug().reset(); }

  [[nodiscard]] bool Lost() const DJ_EXCLUDES(mutex_);
  /// See OutputDevice; of all outputs that it had.
  [[nodiscard]] std::uint64_t Gaps() const DJ_EXCLUDES(mutex_);
  /// See OutputDevice.
  [[nodiscard]] std::string MovedTo() const DJ_EXCLUDES(mutex_);
  /// The id of the output whose sound this is; empty while there is none.
  [[nodiscard]] std::string PlaysOn() const DJ_EXCLUDES(mutex_);
  /// Of this output and of those that take its place. See OutputDevice.
  void SetBuffer(int buffer_ms, int period_ms) DJ_EXCLUDES(mutex_);
  /// From the mixing of a frame to its being heard; nothing while that is unknown.
  [[nodiscard]] std::optional<std::chrono::duration<double>> Behind() DJ_EXCLUDES(mutex_);
  /// The core's frame at the loudspeaker now; never goes back.
  [[nodiscard]] std::int64_t HeardFrame() DJ_EXCLUDES(mutex_);

 private:
  const int number_;
  const OutputDeviceInfo wanted_;
  const OutputRequest request_;
  const support::Clock& clock_;
  RenderCore core_;
  mutable support::Mutex mutex_;
  std::int64_t last_heard_ DJ_GUARDED_BY(mutex_) = kNothingHeard;
  std::uint64_t gaps_before_ DJ_GUARDED_BY(mutex_) = 0;  ///< of outputs that are gone
  std::unique_ptr<OutputPlug> plug_ DJ_GUARDED_BY(mutex_);
  int buffer_ms_ DJ_GUARDED_BY(mutex_) = 0;  ///< 0: as it was opened
  int period_ms_ DJ_GUARDED_BY(mutex_) = 0;
};

}  // namespace engine
