// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "support/Clock.h"
#include "support/Result.h"

namespace engine {

enum class Speaker : std::uint8_t {
  FrontLeft,
  FrontRight,
  FrontCentre,
  Lfe,
  RearLeft,
  RearRight,
  SideLeft,
  SideRight,
  Mono,
  Other
};

struct OutputDeviceInfo {
  std::string id;                 ///< the system's own name, stable over restarts
  std::string name;               ///< for the user
  std::vector<Speaker> speakers;  ///< one entry a channel, in the order of the samples
  bool is_default = false;
  bool suspended = false;  ///< it takes no sound now; opening it may wake it
};

/// How many frames of a device have been heard, and when that was so. Frames count from the device's first
/// Render; between two marks a reader goes on at the device's rate.
struct PlayedMark {
  std::int64_t frames = 0;
  support::TimePoint at{};
};

/// What a device pulls its samples from.
class RenderSource {
 public:
  virtual ~RenderSource() = default;
  /// Fills whole frames, interleaved floats, 1 is full scale. Any block size, other ones every time.
  /// Threads: the device's callback, one at a time; never blocks.
  virtual void Render(std::span<float> interleaved) noexcept = 0;
};

/// One open output that pulls from its source by its own clock. Destroying it ends the pulling: no Render
/// runs or starts after that.
class OutputDevice {
 public:
  virtual ~OutputDevice() = default;
  [[nodiscard]] virtual const OutputDeviceInfo& Info() const noexcept = 0;
  /// Threads: any, never blocks.
  [[nodiscard]] virtual PlayedMark Played() const noexcept = 0;
  /// True for good once the device is gone; it then pulls no more. Threads: any, never blocks.
  [[nodiscard]] virtual bool Lost() const noexcept = 0;
  /// How often the system ran out of its samples and played silence, because Render was called or came back
  /// too late. Threads: any, never blocks.
  [[nodiscard]] virtual std::uint64_t Gaps() const noexcept = 0;
  /// The id of the output on which the sound comes out instead, since the user moved it there with means of
  /// the system's; empty while it is where it was opened. Threads: any, never blocks for long.
  [[nodiscard]] virtual std::string MovedTo() const { return {}; }
  /// Holds more or less from now on than it was opened with, as OutputRequest has it, without a gap: what it
  /// holds too much is played first. Threads: any, never blocks.
  virtual void SetBuffer(int /*buffer_ms*/, int /*period_ms*/) noexcept {}
};

struct OutputRequest {
  std::string id;  ///< empty: the system's default
  int sample_rate = 44100;
  int buffer_ms = 60;  ///< wanted from Render to ear
  int period_ms = 20;  ///< wanted between two Renders
  bool stays = false;  ///< nobody moves it to another output, not even the user: head-phones
};

/// A system's sound outputs.
/// Threads: List and Open from any thread but a callback, they may block; one call at a time.
class OutputDevices {
 public:
  virtual ~OutputDevices() = default;
  /// Empty when there is no sound system now; asking again may find one.
  [[nodiscard]] virtual std::vector<OutputDeviceInfo> List() = 0;
  /// The device pulls from the source at once; the source outlives it. The source is asked for as many
  /// channels as the device's Info() has speakers, which the caller knows from List (a default from what List
  /// marked).
  virtual support::Result<std::unique_ptr<OutputDevice>> Open(const OutputRequest& request,
                                                              RenderSource& source) = 0;
  /// The function is called after a device came, went or was lost; on any thread, so it only leaves a note.
  /// Set once, before the first Open.
  virtual void OnChange(std::function<void()> changed) = 0;
};

}  // namespace engine
