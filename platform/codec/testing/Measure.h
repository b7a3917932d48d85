// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>

namespace platform::codec::testing {

// Properties of interleaved 16-bit sound; 1 is full scale.

struct Channel {
  std::span<const std::int16_t> interleaved;
  int channels = 2;
  int index = 0;

  [[nodiscard]] std::int64_t Frames() const {
    return static_cast<std::int64_t>(interleaved.size()) / channels;
  }
  [[nodiscard]] double At(std::int64_t frame) const {
    return interleaved[static_cast<std::size_t>(frame * channels + index)] / 32768.0;
  }
};

[[nodiscard]] double Rms(const Channel& channel);
[[nodiscard]] double Peak(const Channel& channel);
/// Peak of the sine of that frequency within the sound; near 0 when it is not there.
[[nodiscard]] double LevelAt(const Channel& channel, double frequency, int sample_rate);
/// The largest step between neighbouring samples: a click shows as a step the tone itself does not make.
[[nodiscard]] double LargestStep(const Channel& channel);

}  // namespace platform::codec::testing
