// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "engine/VirtualOutputs.h"
#include "engine/ports/InputDevice.h"

namespace engine::testing {

[[nodiscard]] InputDeviceInfo Microphone(const std::string& id, bool is_default = false, int channels = 1,
                                         int sample_rate = 48000);

/// Sound inputs on a virtual clock, which hear a function of time.
/// Threads: one. The inputs live no longer than this.
class VirtualInputs final : public InputDevices {
 public:
  /// What is in the air at that time, in seconds on the clock.
  using Air = std::function<float(double seconds)>;

  VirtualInputs(VirtualTime& time, std::vector<InputDeviceInfo> inputs);

  [[nodiscard]] std::vector<InputDeviceInfo> List() override { return inputs_; }
  support::Result<std::unique_ptr<InputDevice>> Open(const InputRequest& request, CaptureSink& sink) override;
  void OnChange(std::function<void()> changed) override { changed_ = std::move(changed); }

  /// Brings every block that is due until now, each at its own time.
  void CatchUp();
  /// All channels hear it but for the last of several, which is silent.
  void Hear(Air air) { air_ = std::move(air); }
  /// By how many millionths the crystals of inputs run too fast that are opened from now on.
  void SetClock(double millionths) { millionths_ = millionths; }
  /// Every block comes late by this and in turn not.
  void SetLateness(support::Duration late) { late_ = late; }

  /// As if a cable was pulled, or plugged.
  void Remove(const std::string& id);
  void Add(const InputDeviceInfo& info);
  void Mute(const std::string& id, bool muted);
  /// They stay in the list, but bring nothing, until they go on.
  void Hang(bool hangs) { hangs_ = hangs; }
  [[nodiscard]] int OpenInputs() const { return static_cast<int>(open_.size()); }

 private:
  class Device;
  friend class Device;

  VirtualTime& time_;
  std::vector<InputDeviceInfo> inputs_;
  std::vector<Device*> open_;
  Air air_ = [](double) { return 0.0F; };
  double millionths_ = 0;
  support::Duration late_{};
  bool hangs_ = false;
  std::function<void()> changed_;
};

}  // namespace engine::testing
