// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

namespace engine::testing {

/// A second of one side of music as loud masters are made, 12 dB too loud.
struct HotMaster {
  std::string name;
  std::vector<float> samples;
};
[[nodiscard]] std::vector<HotMaster> HotMasters(int sample_rate);

/// The highest value of a band-limited sound in dB of full scale, read sixteen times a frame: a way of its
/// own, longer and finer than what the engine has the time for.
[[nodiscard]] double TruePeakOf(const std::vector<float>& samples);

}  // namespace engine::testing
