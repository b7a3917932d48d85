// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <ebur128.h>

#include <algorithm>
#include <cmath>
#include <span>
#include <string>
#include <vector>

#include "benchmarks/Bench.h"
#include "engine/Limiter.h"
#include "engine/testing/HotMaster.h"

namespace bench {
namespace {

constexpr int kLimitedRate = 44100;
constexpr int kLimitedRuns = 9;

/// Both sides of it, as a bus has them.
std::vector<float> Stereo(const std::vector<float>& side) {
  std::vector<float> stereo;
  for (const float sample : side) stereo.insert(stereo.end(), {sample, sample});
  return stereo;
}

void Limit(engine::Limiter& limiter, std::span<float> stereo) {
  constexpr std::size_t kPiece = 2 * engine::Limiter::kMostFrames;
  for (std::size_t at = 0; at < stereo.size(); at += kPiece) {
    limiter.Process(stereo.subspan(at, std::min(kPiece, stereo.size() - at)));
  }
}

/// As libebur128 reads it, in dB of full scale.
double StandardPeak(const std::vector<float>& stereo) {
  ebur128_state* meter = ebur128_init(2, kLimitedRate, EBUR128_MODE_TRUE_PEAK);
  double left = 0, right = 0;
  ebur128_add_frames_float(meter, stereo.data(), stereo.size() / 2);
  ebur128_true_peak(meter, 0, &left);
  ebur128_true_peak(meter, 1, &right);
  ebur128_destroy(&meter);
  return 20 * std::log10(std::max(left, right));
}

/// Per cent of a core for one bus that this sounds on.
double BusCpu(const std::vector<float>& stereo) {
  std::vector<double> runs;
  for (int run = 0; run < kLimitedRuns; ++run) {
    engine::Limiter limiter(kLimitedRate);
    std::vector<float> sound = stereo;
    const double begin = ThreadCpuSeconds();
    Limit(limiter, sound);
    runs.push_back(100 * (ThreadCpuSeconds() - begin) * kLimitedRate /
                   (static_cast<double>(sound.size()) / 2));
  }
  return Median(runs);
}

}  // namespace

std::vector<Figure> MeasureLimiter() {
  double standard = -100, fine = -100, busy = 0;
  std::vector<float> quiet(2 * kLimitedRate);
  for (const engine::testing::HotMaster& master : engine::testing::HotMasters(kLimitedRate)) {
    engine::Limiter limiter(kLimitedRate);
    std::vector<float> stereo = Stereo(master.samples);
    busy = std::max(busy, BusCpu(stereo));
    Limit(limiter, stereo);
    standard = std::max(standard, StandardPeak(stereo));
    std::vector<float> left;
    for (std::size_t i = 0; i < stereo.size(); i += 2) left.push_back(stereo[i]);
    fine = std::max(fine, engine::testing::TruePeakOf(left));
    std::transform(stereo.begin(), stereo.end(), quiet.begin(), [](float sample) { return 0.1F * sample; });
  }
  return {
      {"limiter, masters 12 dB too loud: highest true peak over the ceiling, by libebur128",
       "dB",
       standard,
       {},
       "under 0.1"},
      {"the same, read sixteen times a frame", "dB", fine, {}, "under 0.7"},
      {"limiter, CPU of a pair of speakers while it works", "% of a core", busy, {}, ""},
      {"the same, far below the ceiling", "% of a core", BusCpu(quiet), {}, ""},
  };
}

}  // namespace bench
