// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

#include "karaoke/ports/MidiSequencer.h"

namespace karaoke::testing {

/// Writes every call down and can refuse the nth one.
class RecordingSequencer final : public MidiSequencer {
 public:
  std::uint32_t mciSendCommandA(std::uint32_t device, std::uint32_t command, std::uint32_t flags,
                                MciParameters& parameters) override {
    std::string text = std::to_string(device) + " " + std::to_string(command) + " " + std::to_string(flags);
    if (command == kMciOpen) text += " " + parameters.device_type + " " + parameters.element_name;
    if (command == kMciSet) text += " format " + std::to_string(parameters.time_format);
    if (command == kMciStatus) text += " item " + std::to_string(parameters.item);
    if ((flags & kMciTo) != 0 && command == kMciSeek) text += " to " + std::to_string(parameters.to);
    const std::uint32_t error = Note(text);
    if (error != 0) return error;
    if (command == kMciOpen) parameters.device = 7;
    if (command == kMciStatus) parameters.result = parameters.item == kMciStatusLength ? length : 0;
    return 0;
  }
  std::uint32_t midiOutGetVolume(std::uint32_t, std::uint32_t& current) override {
    current = volume;
    return Note("volume?");
  }
  std::uint32_t midiOutSetVolume(std::uint32_t, std::uint32_t wanted) override {
    volume = wanted;
    return Note("volume");
  }
  std::uint32_t SetSpeed(std::uint32_t device, double factor) override {
    speed = factor;
    return Note(std::to_string(device) + " speed");
  }

  std::vector<std::string> calls;
  int refused_call = 0;  ///< counted from 1
  std::uint32_t refusal = 276;
  std::uint32_t length = 225'999;
  std::uint32_t volume = 0;
  double speed = 1;

 private:
  std::uint32_t Note(const std::string& call) {
    calls.push_back(call);
    return static_cast<int>(calls.size()) == refused_call ? refusal : 0;
  }
};

}  // namespace karaoke::testing
