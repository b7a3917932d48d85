// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/testing/FakeStretchers.h"

#include <algorithm>
#include <cmath>
#include <deque>

namespace engine::testing {
namespace {

struct StereoFrame {
  float left = 0;
  float right = 0;
};

StereoFrame Between(StereoFrame a, StereoFrame b, double part) {
  const float f = static_cast<float>(part);
  return {a.left + (b.left - a.left) * f, a.right + (b.right - a.right) * f};
}

class LineStretcher final : public Stretcher {
 public:
  explicit LineStretcher(int pad) : pad_(pad) {}

  void SetTempo(double ratio) override { ratio_ = ratio; }
  void SetPitch(double /*semitones*/) override {}
  void Reset() override {
    in_.clear();
    out_.assign(kHeld, {});
    phase_ = 0;
  }
  [[nodiscard]] int StartPad() const override { return pad_; }
  /// The held silence, and the pad: the frames of it that come out before the first source frame.
  [[nodiscard]] int StartDelay() const override { return kHeld + static_cast<int>(std::ceil(pad_ / ratio_)); }
  [[nodiscard]] int Wanted() const override { return 100; }
  void Put(std::span<const float> left, std::span<const float> right) override {
    for (std::size_t i = 0; i < left.size(); ++i) in_.push_back({left[i], right[i]});
    while (phase_ + 1 < static_cast<double>(in_.size())) {
      const auto at = static_cast<std::size_t>(phase_);
      out_.push_back(Between(in_[at], in_[at + 1], phase_ - std::floor(phase_)));
      phase_ += ratio_;
      while (phase_ >= 1 && in_.size() > 1) {
        in_.pop_front();
        phase_ -= 1;
      }
    }
  }
  [[nodiscard]] int Available() const override { return std::max(static_cast<int>(out_.size()) - kHeld, 0); }
  int Take(std::span<float> left, std::span<float> right) override {
    const int count = std::min(Available(), static_cast<int>(left.size()));
    for (std::size_t i = 0; i < static_cast<std::size_t>(count); ++i) {
      left[i] = out_.front().left;
      right[i] = out_.front().right;
      out_.pop_front();
    }
    return count;
  }

 private:
  static constexpr int kHeld = 300;
  const int pad_;
  double ratio_ = 1;
  double phase_ = 0;
  std::deque<StereoFrame> in_;
  std::deque<StereoFrame> out_ = std::deque<StereoFrame>(kHeld);
};

class LineResampler final : public Resampler {
 public:
  void SetRatio(double ratio) override { ratio_ = ratio; }
  void Reset() override { phase_ = 0; }
  Progress Process(std::span<const float> left_in, std::span<const float> right_in, std::span<float> left_out,
                   std::span<float> right_out) override {
    Progress progress;
    while (static_cast<std::size_t>(progress.made) < left_out.size()) {
      const auto at = static_cast<std::size_t>(phase_);
      if (at + 1 >= left_in.size()) break;
      const StereoFrame frame = Between({left_in[at], right_in[at]}, {left_in[at + 1], right_in[at + 1]},
                                        phase_ - std::floor(phase_));
      left_out[static_cast<std::size_t>(progress.made)] = frame.left;
      right_out[static_cast<std::size_t>(progress.made)] = frame.right;
      ++progress.made;
      phase_ += ratio_;
    }
    progress.used = std::min(static_cast<int>(phase_), static_cast<int>(left_in.size()));
    phase_ -= progress.used;
    return progress;
  }

 private:
  double ratio_ = 1;
  double phase_ = 0;
};

}  // namespace

std::unique_ptr<Stretcher> FakeStretchers::MakeStretcher(StretchQuality quality, int /*sample_rate*/) {
  return std::make_unique<LineStretcher>(quality == StretchQuality::Best ? 260 : 80);
}

std::unique_ptr<Resampler> FakeStretchers::MakeResampler(double /*ratio*/) {
  return std::make_unique<LineResampler>();
}

}  // namespace engine::testing
