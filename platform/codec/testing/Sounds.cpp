// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/codec/testing/Sounds.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <functional>
#include <numbers>

namespace platform::codec::testing {
namespace {

constexpr double kTurn = 2 * std::numbers::pi;

std::int16_t ToSample(double value) {
  return static_cast<std::int16_t>(std::lround(std::clamp(value, -1.0, 1.0) * 32767));
}

std::int64_t FramesIn(Seconds length, int sample_rate) {
  return std::llround(length.count() * sample_rate);
}

/// The function gives the sample of a frame and channel.
Sound Fill(Seconds length, Format format,
           const std::function<std::int16_t(std::int64_t frame, int channel)>& sample) {
  Sound sound{format.sample_rate, format.channels, {}};
  const std::int64_t frames = FramesIn(length, format.sample_rate);
  sound.samples.reserve(static_cast<std::size_t>(frames * format.channels));
  for (std::int64_t frame = 0; frame < frames; ++frame) {
    for (int channel = 0; channel < format.channels; ++channel) {
      sound.samples.push_back(sample(frame, channel));
    }
  }
  return sound;
}

}  // namespace

Sound& Sound::operator+=(const Sound& next) {
  assert(next.sample_rate == sample_rate && next.channels == channels);
  samples.insert(samples.end(), next.samples.begin(), next.samples.end());
  return *this;
}

Sound operator+(Sound first, const Sound& second) {
  return first += second;
}

Sound Tones(Seconds length, std::span<const Voice> voices, int sample_rate) {
  return Fill(length, {sample_rate, static_cast<int>(voices.size())}, [&](std::int64_t frame, int channel) {
    const Voice& voice = voices[static_cast<std::size_t>(channel)];
    const double phase = kTurn * voice.frequency * static_cast<double>(frame) / sample_rate;
    return ToSample(voice.level * std::sin(phase));
  });
}

Sound Tone(Seconds length, Voice voice, Format format) {
  return Tones(length, std::vector<Voice>(static_cast<std::size_t>(format.channels), voice),
               format.sample_rate);
}

Sound Silence(Seconds length, Format format) {
  return Fill(length, format, [](std::int64_t, int) { return std::int16_t{0}; });
}

Sound Clicks(Seconds length, double beats_per_minute, Format format) {
  const double beat = 60 * format.sample_rate / beats_per_minute;  // in frames
  return Fill(length, format, [&](std::int64_t frame, int) {
    const auto n = static_cast<double>(frame);
    const double since = n - std::ceil(std::floor(n / beat) * beat);
    return ToSample(0.9 * std::cos(since * 0.15) * std::exp(-since / 60));
  });
}

Sound Sweep(Seconds length, double from_hz, double to_hz, double level, Format format) {
  const double octaves = std::log(to_hz / from_hz);
  const double seconds = length.count();
  return Fill(length, format, [&](std::int64_t frame, int) {
    const double t = static_cast<double>(frame) / format.sample_rate;
    const double turns = from_hz * seconds / octaves * (std::exp(octaves * t / seconds) - 1);
    return ToSample(level * std::sin(kTurn * turns));
  });
}

Sound Ramp(Seconds length, int period, Format format) {
  return Fill(length, format, [&](std::int64_t frame, int channel) {
    return static_cast<std::int16_t>(frame % period + 3000 * channel);
  });
}

Sound Noise(Seconds length, double level, Format format) {
  std::uint32_t state = 1;
  return Fill(length, format, [&](std::int64_t, int) {
    state = state * 1664525U + 1013904223U;
    return ToSample(level * (static_cast<double>(state >> 8) / (1 << 23) - 1));
  });
}

}  // namespace platform::codec::testing
