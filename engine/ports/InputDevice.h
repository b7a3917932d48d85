// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "support/Clock.h"
#include "support/Result.h"

namespace engine {

struct InputDeviceInfo {
  std::string id;    ///< the system's own name, stable over restarts
  std::string name;  ///< for the user
  int channels = 1;
  int sample_rate = 44100;
  bool is_default = false;
  bool muted = false;      ///< by the system's mixer: it records silence
  std::string monitor_of;  ///< the id of the output whose sound it records; empty for a real input
};

/// What a device brings its samples to.
class CaptureSink {
 public:
  virtual ~CaptureSink() = default;
  /// Whole frames, interleaved as the device's channels, 1 is full scale; the newest was recorded just now,
  /// but for what Behind tells. Any block size. Threads: the device's callback, one at a time; never blocks.
  virtual void Capture(std::span<const float> interleaved) noexcept = 0;
};

/// One open input. Destroying it ends the recording: no Capture runs or starts after that.
class InputDevice {
 public:
  virtual ~InputDevice() = default;
  /// As it was opened: at this rate and with these channels it records.
  [[nodiscard]] virtual const InputDeviceInfo& Info() const noexcept = 0;
  /// From the air to Capture, beside the length of a block. Threads: any, never blocks.
  [[nodiscard]] virtual support::Duration Behind() const noexcept { return {}; }
  /// True for good once the device is gone; it records no more. Threads: any, never blocks.
  [[nodiscard]] virtual bool Lost() const noexcept = 0;
};

struct InputRequest {
  std::string id;    ///< of the list
  int block_ms = 5;  ///< wanted between two Captures
};

/// A system's sound inputs.
/// Threads: List and Open from any thread but a callback, they may block; one call at a time.
class InputDevices {
 public:
  virtual ~InputDevices() = default;
  /// Empty when there is no sound system now; asking again may find one.
  [[nodiscard]] virtual std::vector<InputDeviceInfo> List() = 0;
  /// It records from then on, at its own rate and with its own channels, into the sink, which outlives it and
  /// is called with those of the list.
  virtual support::Result<std::unique_ptr<InputDevice>> Open(const InputRequest& request,
                                                             CaptureSink& sink) = 0;
  /// The function is called after an input came, went, was lost or was muted; on any thread, so it only
  /// leaves a note. Set once, before the first Open.
  virtual void OnChange(std::function<void()> changed) = 0;
};

}  // namespace engine
