// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/composer/studio/Effects.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace tools::composer {
namespace {

class DelayLine {
 public:
  explicit DelayLine(std::size_t frames) : line_(std::max<std::size_t>(frames, 1)) {}
  [[nodiscard]] float Out() const { return line_[place_]; }
  void In(float sample) {
    line_[place_] = sample;
    place_ = place_ + 1 < line_.size() ? place_ + 1 : 0;
  }
  [[nodiscard]] std::size_t Frames() const { return line_.size(); }

 private:
  std::vector<float> line_;
  std::size_t place_ = 0;
};

/// A row of parallel combs that lose their highs, then all passes that blur what is left.
class Room {
 public:
  Room(double seconds, double brightness_hz, std::size_t spread) {
    for (const std::size_t frames : {1493U, 1613U, 1759U, 1867U, 2011U, 2203U})
      combs_.emplace_back(frames + spread);
    for (const std::size_t frames : {557U, 443U, 211U}) blurs_.emplace_back(frames + spread / 2);
    lost_.resize(combs_.size());
    for (const DelayLine& comb : combs_) {
      fades_.push_back(
          static_cast<float>(std::pow(0.001, static_cast<double>(comb.Frames()) / kRate / seconds)));
    }
    keep_ = static_cast<float>(std::exp(-2 * std::numbers::pi * brightness_hz / kRate));
  }

  float Next(float in) {
    float sum = 0;
    for (std::size_t i = 0; i < combs_.size(); ++i) {
      DelayLine& comb = combs_[i];
      lost_[i] = comb.Out() * (1 - keep_) + lost_[i] * keep_;
      sum += comb.Out();
      comb.In(in + fades_[i] * lost_[i]);
    }
    for (DelayLine& blur : blurs_) {
      const float before = blur.Out();
      blur.In(sum + 0.5F * before);
      sum = before - 0.5F * sum;
    }
    return sum / 6;
  }

 private:
  std::vector<DelayLine> combs_, blurs_;
  std::vector<float> lost_, fades_;
  float keep_ = 0;
};

/// A filter of the second order in direct form, for weights with given coefficients.
struct Biquad {
  double b0, b1, b2, a1, a2;
  double s1 = 0, s2 = 0;
  double Next(double in) {
    const double out = b0 * in + s1;
    s1 = b1 * in - a1 * out + s2;
    s2 = b2 * in - a2 * out;
    return out;
  }
};

/// The head's and the ear's weight of BS.1770, computed for our rate.
std::array<Biquad, 2> EarWeight() {
  const double k1 = std::tan(std::numbers::pi * 1681.974450955533 / kRate);
  const double vh = std::pow(10, 3.999843853973347 / 20), vb = std::pow(vh, 0.4996667741545416);
  const double q1 = 0.7071752369554196, d1 = 1 + k1 / q1 + k1 * k1;
  const double k2 = std::tan(std::numbers::pi * 38.13547087602444 / kRate);
  const double q2 = 0.5003270373238773, d2 = 1 + k2 / q2 + k2 * k2;
  return {Biquad{(vh + vb * k1 / q1 + k1 * k1) / d1, 2 * (k1 * k1 - vh) / d1,
                 (vh - vb * k1 / q1 + k1 * k1) / d1, 2 * (k1 * k1 - 1) / d1, (1 - k1 / q1 + k1 * k1) / d1},
          Biquad{1, -2, 1, 2 * (k2 * k2 - 1) / d2, (1 - k2 / q2 + k2 * k2) / d2}};
}

/// Mean squares of the weighted sound, both channels together, for each tenth of a second.
std::vector<double> WeightedPower(const Stereo& sound) {
  std::vector<double> tenths(sound.Frames() / (kRate / 10) + 1);
  for (const std::vector<float>* channel : {&sound.left, &sound.right}) {
    std::array<Biquad, 2> weight = EarWeight();
    for (std::size_t n = 0; n < channel->size(); ++n) {
      const double w = weight[1].Next(weight[0].Next((*channel)[n]));
      tenths[n / (kRate / 10)] += w * w / (kRate / 10.0);
    }
  }
  return tenths;
}

double ToLufs(double power) {
  return -0.691 + 10 * std::log10(std::max(power, 1e-12));
}

double MeanAbove(const std::vector<double>& blocks, double gate_lufs) {
  double sum = 0;
  int count = 0;
  for (const double power : blocks) {
    if (ToLufs(power) <= gate_lufs) continue;
    sum += power;
    ++count;
  }
  return count == 0 ? 0 : sum / count;
}

/// Every sample's gain is the least that any sample within the look-ahead needs, smoothed.
void Limit(Stereo& sound, double ceiling) {
  constexpr std::size_t kAhead = kRate / 400;
  std::vector<float> gain(sound.Frames() + kAhead, 1.0F);
  for (std::size_t n = 0; n < sound.Frames(); ++n) {
    const float peak = std::max(std::abs(sound.left[n]), std::abs(sound.right[n]));
    if (peak > ceiling) gain[n] = static_cast<float>(ceiling) / peak;
  }
  std::vector<float> least(gain.size());
  std::size_t held = gain.size() - 1;            // where the least gain of the window stands
  for (std::size_t n = gain.size(); n-- > 0;) {  // backwards, over windows of the next kAhead
    if (gain[n] <= gain[held]) {
      held = n;
    } else if (held >= n + kAhead) {
      held =
          static_cast<std::size_t>(std::min_element(gain.begin() + static_cast<std::ptrdiff_t>(n),
                                                    gain.begin() + static_cast<std::ptrdiff_t>(n + kAhead)) -
                                   gain.begin());
    }
    least[n] = gain[held];
  }
  float release = 1;
  double sum = static_cast<double>(kAhead);
  std::vector<float> window(kAhead, 1.0F);
  for (std::size_t n = 0; n < sound.Frames(); ++n) {
    release = std::min(least[n], release + (1 - release) * 0.0004F);
    sum += release - window[n % kAhead];
    window[n % kAhead] = release;
    const auto smooth = static_cast<float>(sum / kAhead);
    const std::size_t out = n + 1 >= kAhead ? n + 1 - kAhead : 0;
    if (n + 1 >= kAhead) {
      sound.left[out] *= std::min(smooth, gain[out]);
      sound.right[out] *= std::min(smooth, gain[out]);
    }
  }
}

}  // namespace

Stereo Reverb(const Stereo& sound, double seconds, double brightness_hz) {
  Room left(seconds, brightness_hz, 0), right(seconds, brightness_hz, 37);
  Stereo wet(sound.Frames());
  for (std::size_t n = 0; n < sound.Frames(); ++n) {
    const float middle = 0.35F * (sound.left[n] + sound.right[n]);
    wet.left[n] = left.Next(middle + 0.3F * sound.left[n]);
    wet.right[n] = right.Next(middle + 0.3F * sound.right[n]);
  }
  return wet;
}

Stereo Echo(const Stereo& sound, double delay_seconds, double feedback) {
  const auto frames = static_cast<std::size_t>(delay_seconds * kRate);
  DelayLine left(frames), right(frames);
  Filter left_tone, right_tone;
  left_tone.Tune(3800, 0.7);
  right_tone.Tune(3800, 0.7);
  Stereo wet(sound.Frames());
  for (std::size_t n = 0; n < sound.Frames(); ++n) {
    wet.left[n] = left.Out();
    wet.right[n] = right.Out();
    left_tone.Feed(right.Out() * static_cast<float>(feedback) + 0.5F * (sound.left[n] + sound.right[n]));
    right_tone.Feed(left.Out());
    left.In(left_tone.Low());
    right.In(right_tone.Low());
  }
  return wet;
}

void Duck(Stereo& sound, std::span<const std::size_t> at, double depth, double seconds) {
  for (std::size_t hit = 0; hit < at.size(); ++hit) {
    const std::size_t next = hit + 1 < at.size() ? at[hit + 1] : sound.Frames();
    const std::size_t end =
        std::min({next, at[hit] + static_cast<std::size_t>(seconds * kRate), sound.Frames()});
    for (std::size_t n = at[hit]; n < end; ++n) {
      const double t = static_cast<double>(n - at[hit]) / kRate;
      const double back = 0.5 - 0.5 * std::cos(std::numbers::pi * std::min(t / seconds, 1.0));
      const double in = std::min(t / 0.004, 1.0);  // no click where the hit falls
      const auto gain = static_cast<float>(1 - depth * in * (1 - back));
      sound.left[n] *= gain;
      sound.right[n] *= gain;
    }
  }
}

void AddTo(Stereo& sum, const Stereo& sound, double gain) {
  const auto g = static_cast<float>(gain);
  for (std::size_t n = 0; n < std::min(sum.Frames(), sound.Frames()); ++n) {
    sum.left[n] += g * sound.left[n];
    sum.right[n] += g * sound.right[n];
  }
}

double Loudness(const Stereo& sound) {
  const std::vector<double> tenths = WeightedPower(sound);
  std::vector<double> blocks;  // of 0.4 s, a tenth apart
  for (std::size_t i = 0; i + 4 <= tenths.size(); ++i) {
    blocks.push_back((tenths[i] + tenths[i + 1] + tenths[i + 2] + tenths[i + 3]) / 4);
  }
  const double above_silence = MeanAbove(blocks, -70);
  return ToLufs(MeanAbove(blocks, ToLufs(above_silence) - 10));
}

void Master(Stereo& sound, double lufs, double ceiling) {
  const Stereo before = sound;
  double gain_db = lufs - Loudness(before);
  for (int pass = 0; pass < 4; ++pass) {
    const auto gain = static_cast<float>(std::pow(10, gain_db / 20));
    for (std::size_t n = 0; n < sound.Frames(); ++n) {
      sound.left[n] = gain * before.left[n];
      sound.right[n] = gain * before.right[n];
    }
    Limit(sound, ceiling);
    const double missing = lufs - Loudness(sound);
    if (std::abs(missing) < 0.1) return;
    gain_db += missing;
  }
}

}  // namespace tools::composer
