// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "music/SpectrumFeed.h"

#include <cassert>
#include <cmath>
#include <numbers>

namespace music {
namespace {

constexpr std::size_t kTogether = 4;

/// Four butterflies, as compilers make one vector of them.
void TurnTogether(float* __restrict re, float* __restrict im, float* __restrict far_re,
                  float* __restrict far_im, const float* __restrict cosine, const float* __restrict sine) {
  for (std::size_t i = 0; i < kTogether; ++i) {
    const float turned_re = far_re[i] * cosine[i] - far_im[i] * sine[i];
    const float turned_im = far_re[i] * sine[i] + far_im[i] * cosine[i];
    far_re[i] = re[i] - turned_re;
    far_im[i] = im[i] - turned_im;
    re[i] += turned_re;
    im[i] += turned_im;
  }
}

/// Transforms of four values each.
void FirstLevels(std::span<float> real, std::span<float> imaginary) {
  for (std::size_t i = 0; i + 4 <= real.size(); i += 4) {
    float* const re = &real[i];
    float* const im = &imaginary[i];
    const float sum_re = re[0] + re[1], gap_re = re[0] - re[1], sum_im = im[0] + im[1],
                gap_im = im[0] - im[1];
    const float far_re = re[2] + re[3], far_gap_re = re[2] - re[3];
    const float far_im = im[2] + im[3], far_gap_im = im[2] - im[3];
    re[0] = sum_re + far_re, im[0] = sum_im + far_im;
    re[2] = sum_re - far_re, im[2] = sum_im - far_im;
    re[1] = gap_re + far_gap_im, im[1] = gap_im - far_gap_re;
    re[3] = gap_re - far_gap_im, im[3] = gap_im + far_gap_re;
  }
}

}  // namespace

SpectrumFeed::SpectrumFeed(std::size_t size, std::size_t step)
    : size_(size),
      step_(step),
      window_(size),
      reversed_(size),
      real_(size),
      imaginary_(size),
      first_(size / 2),
      second_(size / 2) {
  assert(size >= 8 && (size & (size - 1)) == 0 && "frames are powers of two");
  assert(step > 0 && step <= size && "no sound is left out");
  const double turn = 2 * std::numbers::pi / static_cast<double>(size);
  for (std::size_t i = 0; i < size; ++i) {
    window_[i] = static_cast<float>(0.5 - 0.5 * std::cos(turn * static_cast<double>(i)));
    for (std::size_t bit = 1; bit < size; bit *= 2)
      reversed_[i] = reversed_[i] * 2 + ((i & bit) != 0 ? 1 : 0);
  }
  for (std::size_t half = kTogether; half < size; half *= 2) {
    for (std::size_t i = 0; i < half; ++i) {
      const double angle = std::numbers::pi * static_cast<double>(i) / static_cast<double>(half);
      cosines_.push_back(static_cast<float>(std::cos(angle)));
      sines_.push_back(static_cast<float>(-std::sin(angle)));
    }
  }
}

void SpectrumFeed::Add(std::span<const float> samples, const Visit& visit) {
  line_.insert(line_.end(), samples.begin(), samples.end());
  std::size_t from = 0;
  for (; from + size_ + step_ <= line_.size(); from += 2 * step_) {
    for (std::size_t i = 0; i < size_; ++i) {
      real_[reversed_[i]] = line_[from + i] * window_[i];
      imaginary_[reversed_[i]] = line_[from + step_ + i] * window_[i];
    }
    TransformPair();
    visit(first_);
    visit(second_);
  }
  line_.erase(line_.begin(), line_.begin() + static_cast<std::ptrdiff_t>(from));
}

void SpectrumFeed::Butterflies() {
  FirstLevels(real_, imaginary_);
  for (std::size_t half = kTogether; half < size_; half *= 2) {
    const float* const cosine = cosines_.data() + (half - kTogether);
    const float* const sine = sines_.data() + (half - kTogether);
    for (std::size_t block = 0; block < size_; block += 2 * half) {
      for (std::size_t i = 0; i < half; i += kTogether) {
        float* const re = real_.data() + block + i;
        float* const im = imaginary_.data() + block + i;
        TurnTogether(re, im, re + half, im + half, cosine + i, sine + i);
      }
    }
  }
}

void SpectrumFeed::TransformPair() {
  Butterflies();
  first_[0] = real_[0] * real_[0];
  second_[0] = imaginary_[0] * imaginary_[0];
  for (std::size_t i = 1; i < size_ / 2; ++i) {
    // The even part belongs to the real frame, the odd one to the imaginary.
    const float re = real_[i], im = imaginary_[i], back_re = real_[size_ - i],
                back_im = imaginary_[size_ - i];
    first_[i] = 0.25F * ((re + back_re) * (re + back_re) + (im - back_im) * (im - back_im));
    second_[i] = 0.25F * ((im + back_im) * (im + back_im) + (re - back_re) * (re - back_re));
  }
}

}  // namespace music
