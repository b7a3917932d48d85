// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "engine/ports/OutputDevice.h"

namespace engine {

/// A clock that goes only as far as an evening was rendered.
/// Threads: moved by one, read by any.
class VirtualTime final : public support::Clock {
 public:
  [[nodiscard]] support::TimePoint Now() const noexcept override {
    return support::TimePoint(support::Duration(ticks_.load(std::memory_order_acquire)));
  }
  void MoveTo(support::TimePoint time) noexcept {
    ticks_.store(time.time_since_epoch().count(), std::memory_order_release);
  }

 private:
  std::atomic<support::Duration::rep> ticks_{0};
};

/// Sound outputs on a virtual clock: an evening renders as fast as the machine can.
///
/// Every open output pulls its blocks in the order of their virtual times; between two blocks a function of
/// the owner's feeds the streams. Threads: one. The outputs live no longer than this.
class VirtualOutputs final : public OutputDevices {
 public:
  using Heard = std::function<void(std::span<const float> interleaved)>;

  VirtualOutputs(VirtualTime& time, std::vector<OutputDeviceInfo> devices);

  [[nodiscard]] std::vector<OutputDeviceInfo> List() override { return devices_; }
  support::Result<std::unique_ptr<OutputDevice>> Open(const OutputRequest& request,
                                                      RenderSource& source) override;
  void OnChange(std::function<void()> changed) override { changed_ = std::move(changed); }
  /// An output that nobody hears, for when none of the list can be opened.
  [[nodiscard]] std::unique_ptr<OutputDevice> OpenSilent(OutputDeviceInfo info, const OutputRequest& request,
                                                         RenderSource& source);

  /// Renders whatever falls into this stretch of time.
  void Advance(support::Duration by);
  /// Called before each block and every 5 ms, with the clock at its time.
  void BeforeBlock(std::function<void()> work) { before_block_ = std::move(work); }
  /// Gets every block of an output from now on.
  void Listen(const std::string& id, Heard heard) { listeners_[id] = std::move(heard); }
  /// Sizes in frames of the blocks of outputs opened from now on, one after the other, again and again; none
  /// is the size that the request asks for.
  void SetBlocks(std::vector<int> frames) { blocks_ = std::move(frames); }
  /// From Render to ear, for outputs opened from now on; none is what the request asks for.
  void SetLatency(std::optional<support::Duration> latency) { latency_ = latency; }
  /// Of one output, before the one of all.
  void SetLatency(const std::string& id, support::Duration latency) { latencies_[id] = latency; }

  /// What an open output was told to hold last, in ms; 0 when nothing.
  [[nodiscard]] int BufferOf(const std::string& id) const;
  /// By how many millionths the crystal of an output runs too fast, for when it is opened from now on.
  void SetClock(const std::string& id, double millionths) { clocks_[id] = millionths; }

  /// As if a cable was pulled, or plugged.
  void Remove(const std::string& id);
  void Add(const OutputDeviceInfo& info);
  /// As if the system ran out of an output's samples.
  void RunDry(const std::string& id);
  /// As if the system put an output to sleep: it stays in the list and takes no sound until it wakes, which
  /// nobody is told.
  void Suspend(const std::string& id);
  void Wake(const std::string& id);
  /// As if the user put the sound of one output onto another one, with means of the system's.
  void MoveByHand(const std::string& from, const std::string& to);
  /// An output that is listed but cannot be opened, or can again.
  void SetBroken(const std::string& id, bool broken);

 private:
  class Device;
  friend class Device;

  void MarkSuspended(const std::string& id, bool suspended);
  [[nodiscard]] Device* Next(support::TimePoint until) const;
  [[nodiscard]] support::Duration LatencyOf(const std::string& id, support::Duration wanted) const;

  VirtualTime& time_;
  std::vector<OutputDeviceInfo> devices_;
  std::set<std::string> broken_;
  std::vector<Device*> open_;
  std::map<std::string, Heard> listeners_;
  std::function<void()> before_block_;
  std::function<void()> changed_;
  support::TimePoint next_work_{};
  std::vector<int> blocks_;
  std::optional<support::Duration> latency_;
  std::map<std::string, support::Duration> latencies_;
  std::map<std::string, double> clocks_;
};

}  // namespace engine
