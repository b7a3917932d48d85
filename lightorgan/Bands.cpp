// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "lightorgan/Bands.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <tuple>

namespace lightorgan {
namespace {

constexpr float kFloor = 0.15F;    // of the gained level; below it is dark
constexpr float kGainSeconds = 5;  // in which the gain follows
constexpr float kGainAttackSeconds = 0.15F;
constexpr float kLongTermSeconds = 60;
constexpr float kMostExtraGain = 31.6F;  // 30 dB
constexpr float kAttackSeconds = 0.015F;
constexpr float kBassRelease = 0.2F;
constexpr float kTrebleRelease = 0.12F;
// A tone of -54 dB below full scale, spread over its bin and the neighbours.
constexpr float kSilence = 0.002F;
constexpr float kDark = 0.01F;
constexpr float kNoise = 3e-5F;      // -90 dB in a bin: what decoders and 16 bits leave
constexpr float kLeakageMargin = 2;  // near both ends the mirrored tone leaks as well

/// How much of a tone in one bin a Hann window shows so many bins away, at most: 1 / (pi e (e^2 - 1)), e
/// being the least distance of a tone that is loudest in its bin. Its direct neighbours belong to it.
std::array<float, std::tuple_size_v<Bins>> Leakage() {
  std::array<float, std::tuple_size_v<Bins>> shares{};
  for (std::size_t bins = 2; bins < shares.size(); ++bins) {
    const float e = static_cast<float>(bins) - 0.5F;
    shares[bins] = kLeakageMargin / (std::numbers::pi_v<float> * e * (e * e - 1));
  }
  return shares;
}

float Seconds(std::chrono::microseconds elapsed) {
  return std::clamp(std::chrono::duration<float>(elapsed).count(), 0.0F, 10.0F);
}

bool IsSilent(const Bins& bins) {
  float power = 0;
  for (const float bin : std::span(bins).subspan(1)) power += std::isfinite(bin) ? bin * bin : 0;
  return !(std::sqrt(power) > kSilence);
}

}  // namespace

std::array<int, kMostOutputs + 1> BandEdges(int bands) {
  const auto count = static_cast<double>(Bins().size());
  std::array<int, kMostOutputs + 1> edges{};
  edges[0] = 1;
  for (int k = 1; k <= bands; ++k) {
    const auto grown = static_cast<int>(std::lround(std::pow(count, static_cast<double>(k) / bands)));
    edges[static_cast<std::size_t>(k)] = std::max(edges[static_cast<std::size_t>(k - 1)] + 1, grown);
  }
  edges[static_cast<std::size_t>(bands)] = static_cast<int>(count);
  return edges;
}

void GatherBands(const Bins& bins, std::span<float> bands) {
  const auto edges = BandEdges(static_cast<int>(bands.size()));
  for (std::size_t band = 0; band < bands.size(); ++band) {
    float sum = 0;
    for (int bin = edges[band]; bin < edges[band + 1]; ++bin) {
      const float magnitude = bins[static_cast<std::size_t>(bin)];
      if (std::isfinite(magnitude)) sum += std::abs(magnitude);
    }
    bands[band] = sum / static_cast<float>(edges[band + 1] - edges[band]);
  }
}

Bins WithoutLeakage(const Bins& bins) {
  static const auto kShares = Leakage();
  Bins clean{}, leaked{};
  std::transform(bins.begin(), bins.end(), clean.begin(),
                 [](float bin) { return std::isfinite(bin) ? std::abs(bin) : 0; });
  leaked.fill(kNoise);
  for (std::size_t from = 0; from < clean.size(); ++from) {
    for (std::size_t apart = 2; apart < clean.size(); ++apart) {
      const float leak = clean[from] * kShares[apart];
      if (leak <= kNoise) break;
      if (from >= apart) leaked[from - apart] = std::max(leaked[from - apart], leak);
      if (from + apart < leaked.size()) leaked[from + apart] = std::max(leaked[from + apart], leak);
    }
  }
  for (std::size_t i = 0; i < clean.size(); ++i) {
    if (clean[i] <= leaked[i]) clean[i] = 0;
  }
  return clean;
}

std::span<const float> BandFollower::Follow(const Bins& bins, std::chrono::microseconds elapsed) {
  if (IsSilent(bins)) return Fall(elapsed);
  const float seconds = Seconds(elapsed);
  std::array<float, kMostOutputs> targets{};
  const auto used = std::span(targets).first(static_cast<std::size_t>(bands_));
  GatherBands(WithoutLeakage(bins), used);
  for (std::size_t i = 0; i < used.size(); ++i) {
    Band& gain = gains_[i];
    gain.long_term = std::max(used[i], gain.long_term * std::exp(-seconds / kLongTermSeconds));
    // Not at once: the single bins of the bass swing far more than the many of a treble band.
    const float rise = gain.loudest > 0 ? 1 - std::exp(-seconds / kGainAttackSeconds) : 1;
    gain.loudest *= std::exp(-seconds / kGainSeconds);
    gain.loudest += std::max(0.0F, used[i] - gain.loudest) * rise;
    gain.loudest = std::max(gain.loudest, gain.long_term / kMostExtraGain);
    const float gained = gain.loudest > 0 ? used[i] / gain.loudest : 0;
    used[i] = std::clamp((gained - kFloor) / (1 - kFloor), 0.0F, 1.0F);
  }
  Approach(used, seconds);
  return std::span(levels_).first(used.size());
}

std::span<const float> BandFollower::Fall(std::chrono::microseconds elapsed) {
  const std::array<float, kMostOutputs> dark{};
  Approach(std::span(dark).first(static_cast<std::size_t>(bands_)), Seconds(elapsed));
  return std::span(levels_).first(static_cast<std::size_t>(bands_));
}

void BandFollower::Approach(std::span<const float> targets, float seconds) {
  for (std::size_t i = 0; i < targets.size(); ++i) {
    const float place = static_cast<float>(i) / static_cast<float>(std::max(bands_ - 1, 1));
    const float release = kBassRelease + (kTrebleRelease - kBassRelease) * place;
    const float constant = targets[i] > levels_[i] ? kAttackSeconds : release;
    levels_[i] += (targets[i] - levels_[i]) * (1 - std::exp(-seconds / constant));
    if (targets[i] <= 0 && levels_[i] < kDark) levels_[i] = 0;
  }
}

bool LevelSwitch::Update(float level, float threshold, std::chrono::microseconds elapsed) {
  since_ = std::min(since_ + elapsed, std::chrono::microseconds(std::chrono::hours(1)));
  const bool wanted = on_ ? level > 0 && level >= threshold * 2 / 3 : level > threshold;
  if (wanted != on_ && since_ >= kShortest) {
    on_ = wanted;
    since_ = std::chrono::microseconds(0);
  }
  return on_;
}

int DimmerValue(float level, int full) {
  const float clean = std::isfinite(level) ? std::clamp(level, 0.0F, 1.0F) : 0;
  return static_cast<int>(std::lround(std::pow(clean, 2.2F) * static_cast<float>(full)));
}

}  // namespace lightorgan
