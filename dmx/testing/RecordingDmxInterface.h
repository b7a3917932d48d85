// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "dmx/ports/DmxInterface.h"

namespace dmx::testing {

/// Writes down the calls, "SetData 12 255", and keeps the levels as a box would.
class RecordingDmxInterface final : public DmxInterface {
 public:
  void StartDevice() override { Note("StartDevice"); }
  void SetChannelCount(int count) override { Note("SetChannelCount " + std::to_string(count)); }
  void SetData(int channel, DmxLevel level) override {
    Note("SetData " + std::to_string(channel) + " " + std::to_string(level));
    levels_.at(static_cast<std::size_t>(channel - 1)) = level;
  }
  void StopDevice() override { Note("StopDevice"); }
  [[nodiscard]] DmxInterfaceStatus Status() const override { return status; }

  void OnCall(std::function<void(const std::string&)> note) { note_ = std::move(note); }
  /// Those since the last time that they were taken.
  std::vector<std::string> TakeCalls() { return std::exchange(calls_, {}); }
  [[nodiscard]] int Level(int channel) const { return levels_.at(static_cast<std::size_t>(channel - 1)); }

  DmxInterfaceStatus status;

 private:
  void Note(const std::string& call) {
    calls_.push_back(call);
    if (note_) note_(call);
  }

  std::vector<std::string> calls_;
  std::function<void(const std::string&)> note_;
  std::array<DmxLevel, kUniverseChannels> levels_{};
};

}  // namespace dmx::testing
