// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/stretch/SincResampler.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <numbers>

namespace platform::stretch {
namespace {

constexpr int kTableHalf = 32;
constexpr int kStepsPerFrame = 512;
constexpr double kKaiserBeta = 9;
/// The middle of the transition band, as a share of half the lower of the two rates: 21.4 kHz at 44.1 kHz.
constexpr double kCutoff = 0.97;

double Bessel0(double x) {
  double sum = 1, term = 1;
  for (int k = 1; k < 40; ++k) {
    term *= (x / (2 * k)) * (x / (2 * k));
    sum += term;
  }
  return sum;
}

/// The kernel from its middle outwards, and one zero more for the interpolation.
std::vector<float> MakeTable() {
  std::vector<float> table(kTableHalf * kStepsPerFrame + 2, 0.0F);
  for (int i = 0; i < kTableHalf * kStepsPerFrame; ++i) {
    const double x = static_cast<double>(i) / kStepsPerFrame;
    const double angle = std::numbers::pi * kCutoff * x;
    const double sinc = i == 0 ? 1 : std::sin(angle) / angle;
    const double edge = x / kTableHalf;
    const double window = Bessel0(kKaiserBeta * std::sqrt(1 - edge * edge)) / Bessel0(kKaiserBeta);
    table[static_cast<std::size_t>(i)] = static_cast<float>(kCutoff * sinc * window);
  }
  return table;
}

const std::vector<float>& Table() {
  static const std::vector<float> table = MakeTable();
  return table;
}

float KernelAt(const float* table, double steps) {
  const auto index = static_cast<int>(steps);
  const auto between = static_cast<float>(steps - index);
  return table[index] + between * (table[index + 1] - table[index]);
}

}  // namespace

SincResampler::SincResampler(double ratio) : weights_(2 * kHalf * kWidest + 2) {
  static_assert(kHalf == kTableHalf && kCapacity > 3 * kHalf * kWidest);
  for (std::vector<float>& channel : waiting_) channel.resize(kCapacity);
  [[maybe_unused]] const std::vector<float>& made_before_the_first_block = Table();
  SetRatio(ratio);
  Reset();
}

void SincResampler::SetRatio(double ratio) {
  ratio_ = std::clamp(ratio, 1.0 / 256, 256.0);
  width_ = std::clamp(ratio_, 1.0, static_cast<double>(kWidest));
  reach_ = static_cast<int>(kHalf * width_);
}

void SincResampler::Reset() {
  for (std::vector<float>& channel : waiting_) std::fill(channel.begin(), channel.end(), 0.0F);
  filled_ = at_ = kHalf * kWidest;
  fraction_ = 0;
}

engine::Resampler::Progress SincResampler::Process(std::span<const float> left_in,
                                                   std::span<const float> right_in, std::span<float> left_out,
                                                   std::span<float> right_out) {
  assert(left_in.size() == right_in.size() && left_out.size() == right_out.size());
  const int offered = static_cast<int>(left_in.size()), wanted = static_cast<int>(left_out.size());
  Progress done;
  while (true) {
    MakeRoom();
    const int count = std::min(offered - done.used, kCapacity - filled_);
    if (count > 0) {
      std::copy_n(left_in.data() + done.used, count, waiting_[0].data() + filled_);
      std::copy_n(right_in.data() + done.used, count, waiting_[1].data() + filled_);
      filled_ += count;
      done.used += count;
    }
    const int made_before = done.made;
    for (; done.made < wanted && at_ + reach_ < filled_; ++done.made) {
      WeighAround(fraction_);
      const int first = at_ - reach_ + 1;
      const float* left = waiting_[0].data() + first;
      const float* right = waiting_[1].data() + first;
      float left_sum = 0, right_sum = 0;
      for (int k = 0; k < 2 * reach_; ++k) {
        left_sum += weights_[static_cast<std::size_t>(k)] * left[k];
        right_sum += weights_[static_cast<std::size_t>(k)] * right[k];
      }
      left_out[static_cast<std::size_t>(done.made)] = left_sum;
      right_out[static_cast<std::size_t>(done.made)] = right_sum;
      fraction_ += ratio_;
      const double whole = std::floor(fraction_);
      at_ += static_cast<int>(whole);
      fraction_ -= whole;
    }
    if (count <= 0 && done.made == made_before) return done;
  }
}

/// Moves what is still needed to the front. At ratios beyond the widest kernel the position may lie behind
/// everything that waits; then nothing is needed and the position counts down as frames pass by.
void SincResampler::MakeRoom() {
  const int keep_before = kHalf * kWidest;
  const int drop = std::min(at_ - keep_before, filled_);
  if (drop <= 0 || (filled_ < kCapacity / 2 && drop < kCapacity / 4)) return;
  for (std::vector<float>& channel : waiting_) {
    std::copy(channel.begin() + drop, channel.begin() + filled_, channel.begin());
  }
  filled_ -= drop;
  at_ -= drop;
}

void SincResampler::WeighAround(double fraction) {
  const float* table = Table().data();
  const double step = kStepsPerFrame / width_;
  const auto scale = static_cast<float>(1 / width_);
  float* before = weights_.data() + reach_ - 1;  // the frame at the position, and outwards to the left
  float* behind = weights_.data() + reach_;
  const double limit = kHalf * kStepsPerFrame;
  for (int k = 0; k < reach_; ++k) {
    before[-k] = scale * KernelAt(table, std::min((k + fraction) * step, limit));
    behind[k] = scale * KernelAt(table, std::min((k + 1 - fraction) * step, limit));
  }
}

}  // namespace platform::stretch
