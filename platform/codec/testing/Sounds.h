// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <cstdint>
#include <span>
#include <vector>

namespace platform::codec::testing {

/// Sound in memory: interleaved 16-bit samples.
struct Sound {
  int sample_rate = 44100;
  int channels = 2;
  std::vector<std::int16_t> samples;

  [[nodiscard]] std::int64_t Frames() const { return static_cast<std::int64_t>(samples.size()) / channels; }
  /// Behind this sound, another of the same rate and channels.
  Sound& operator+=(const Sound& next);
};
[[nodiscard]] Sound operator+(Sound first, const Sound& second);

struct Format {
  int sample_rate = 44100;
  int channels = 2;
};

using Seconds = std::chrono::duration<double>;

/// One sine a channel; a channel without an entry is silent. The level is the peak, 1 is full scale.
struct Voice {
  double frequency = 440;
  double level = 0.5;
};
[[nodiscard]] Sound Tones(Seconds length, std::span<const Voice> voices, int sample_rate = 44100);
/// The same sine in every channel.
[[nodiscard]] Sound Tone(Seconds length, Voice voice = {}, Format format = {});
[[nodiscard]] Sound Silence(Seconds length, Format format = {});
/// A short decaying click on every beat, the first at frame 0; the peak is on the first frames of a click.
[[nodiscard]] Sound Clicks(Seconds length, double beats_per_minute, Format format = {});
/// A sine whose frequency grows evenly in octaves a second.
[[nodiscard]] Sound Sweep(Seconds length, double from_hz, double to_hz, double level, Format format = {});
/// The sample of frame n in channel c is n mod period plus 3000 c: every lost, doubled or swapped frame
/// shows.
[[nodiscard]] Sound Ramp(Seconds length, int period = 2000, Format format = {});
/// White noise, the same on every run.
[[nodiscard]] Sound Noise(Seconds length, double level, Format format = {});

}  // namespace platform::codec::testing
