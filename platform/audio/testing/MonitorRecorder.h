// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace platform::audio::testing {

/// Records what comes out of a sink, from its monitor, at 44100 Hz with the sink's own channels.
///
/// Threads: one; the recording itself runs on a thread of its own.
class MonitorRecorder {
 public:
  /// Started before the sound is, it misses nothing.
  MonitorRecorder(const std::string& server, const std::string& sink, int channels);
  ~MonitorRecorder();
  MonitorRecorder(const MonitorRecorder&) = delete;
  MonitorRecorder& operator=(const MonitorRecorder&) = delete;

  [[nodiscard]] bool Recording() const;
  /// Waits until so many frames were recorded that hold any sample but 0; false when the time is over first.
  bool AwaitSound(std::size_t frames, std::chrono::milliseconds limit = std::chrono::seconds(20));
  /// Everything so far, interleaved; silence before, between and after the sound included.
  [[nodiscard]] std::vector<std::int16_t> Samples() const;
  /// One channel of Samples().
  [[nodiscard]] std::vector<std::int16_t> Channel(int channel) const;

 private:
  struct Stream;
  int channels_;
  std::unique_ptr<Stream> stream_;
};

}  // namespace platform::audio::testing
