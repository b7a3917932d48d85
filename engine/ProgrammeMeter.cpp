// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/ProgrammeMeter.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace engine {
namespace {

constexpr std::uint64_t kMomentary = 4;   // lines
constexpr std::uint64_t kShortTerm = 30;  // lines

support::Decibels DecibelsOf(double factor) {
  if (factor <= 0) return decks::MasterReading::kSilence;
  return {std::max(static_cast<float>(20 * std::log10(factor)), decks::MasterReading::kSilence.value)};
}

music::Biquad Divided(double a0, double b0, double b1, double b2, double a1, double a2) {
  return {b0 / a0, b1 / a0, b2 / a0, a1 / a0, a2 / a0};
}

}  // namespace

ProgrammeMeter::Weighting ProgrammeMeter::WeightingAt(int sample_rate) {
  // The analogue filters behind the two tables of BS.1770-4, which hold for 48 kHz alone: a shelf for the
  // head and a high pass.
  constexpr double kShelf = 1681.974450955533, kShelfQ = 0.7071752369554196, kShelfDb = 3.999843853973347;
  constexpr double kPass = 38.13547087602444, kPassQ = 0.5003270373238773;
  const auto bent = [&](double hertz) {
    return std::tan(std::numbers::pi * std::min(hertz / sample_rate, 0.45));
  };
  const double k = bent(kShelf);
  const double vh = std::pow(10.0, kShelfDb / 20);
  const double vb = std::pow(vh, 0.4996667741545416);
  const music::Biquad shelf =
      Divided(1 + k / kShelfQ + k * k, vh + vb * k / kShelfQ + k * k, 2 * (k * k - vh),
              vh - vb * k / kShelfQ + k * k, 2 * (k * k - 1), 1 - k / kShelfQ + k * k);
  const double p = bent(kPass);
  const double a0 = 1 + p / kPassQ + p * p;
  const music::Biquad pass{1, -2, 1, 2 * (p * p - 1) / a0, (1 - p / kPassQ + p * p) / a0};
  return {shelf, pass};
}

ProgrammeMeter::ProgrammeMeter(int sample_rate)
    : line_frames_(std::max(1, sample_rate / 10)), weighting_(WeightingAt(sample_rate)) {}

inline BothSides ProgrammeMeter::Memory::Step(const music::Biquad& filter, BothSides in) noexcept {
  const BothSides out = filter.b0 * in + z1;
  z1 = filter.b1 * in - filter.a1 * out + z2;
  z2 = filter.b2 * in - filter.a2 * out;
  return out;
}

void ProgrammeMeter::Add(std::span<const float> stereo, std::int64_t frame) noexcept {
  if (!on_.load(std::memory_order_relaxed)) return;
  const std::size_t frames = stereo.size() / 2;
  const std::span<float> heights(heights_.data(), frames);
  peaks_.Read(stereo, heights, line_.peak);  // what is not above the highest so far is of no interest
  for (std::size_t i = 0; i < frames; ++i) {
    const BothSides in = BothOf(stereo[2 * i], stereo[2 * i + 1]);
    const BothSides out = memory_[1].Step(weighting_[1], memory_[0].Step(weighting_[0], in));
    energy_ += out * out;
    line_.peak = std::max(line_.peak, heights[i]);
    if (++frames_ == line_frames_) Finish(frame + static_cast<std::int64_t>(i) + 1);
  }
}

void ProgrammeMeter::Finish(std::int64_t end) noexcept {
  line_.end = end;
  const double energy = energy_[0] + energy_[1];
  line_.power = std::isfinite(energy) ? energy / line_frames_ : 0;
  if (!std::isfinite(energy)) memory_ = {};
  lines_.Write(line_);
  line_ = {};
  energy_ = BothSides{};
  frames_ = 0;
}

void ProgrammeMeter::Note(float gain) noexcept {
  line_.gain = std::min(line_.gain, gain);
}

support::Decibels ProgrammeMeter::LoudnessOf(std::uint64_t before, std::uint64_t lines) const noexcept {
  double power = 0;
  for (std::uint64_t i = 0; i < std::min(lines, before); ++i) {
    if (const auto line = lines_.Read(before - 1 - i)) power += line->power;
  }
  const support::Decibels level = DecibelsOf(std::sqrt(power / static_cast<double>(lines)));
  return level == decks::MasterReading::kSilence ? level : support::Decibels{level.value - 0.691F};
}

decks::MasterReading ProgrammeMeter::Read(std::int64_t heard_frame) const noexcept {
  decks::MasterReading reading;
  for (std::uint64_t number = lines_.Written(); number > 0; --number) {
    const auto line = lines_.Read(number - 1);
    if (!line) break;
    if (line->end > heard_frame) continue;
    reading.reduction = {-DecibelsOf(static_cast<double>(line->gain)).value};
    reading.true_peak = DecibelsOf(static_cast<double>(line->peak));
    reading.momentary = LoudnessOf(number, kMomentary);
    reading.short_term = LoudnessOf(number, kShortTerm);
    break;
  }
  return reading;
}

}  // namespace engine
