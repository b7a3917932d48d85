// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "benchmarks/TempoMix.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "tools/composer/studio/Effects.h"

namespace bench {
namespace {

using tools::composer::kRate;
using tools::composer::Stereo;

float FromDecibels(double db) {
  return static_cast<float>(std::pow(10, db / 20));
}

/// Four delay lines that feed each other; they run at half the rate, as a room swallows the highs.
class RoomTail {
 public:
  explicit RoomTail(double keep) : keep_(static_cast<float>(keep)) {
    constexpr std::array<std::size_t, 4> kFrames{743, 887, 1019, 1163};
    for (std::size_t i = 0; i < 4; ++i) lines_[i].resize(kFrames[i]);
  }
  void Feed(float in) {
    std::array<float, 4> out{};
    float half_sum = 0;
    for (std::size_t i = 0; i < 4; ++i) {
      dull_[i] += 0.6F * (lines_[i][place_[i]] - dull_[i]);
      out[i] = dull_[i];
      half_sum += 0.5F * out[i];
    }
    for (std::size_t i = 0; i < 4; ++i) {
      lines_[i][place_[i]] = in + keep_ * (out[i] - half_sum);
      if (++place_[i] == lines_[i].size()) place_[i] = 0;
    }
    left = out[0] - out[2];
    right = out[1] - out[3];
  }
  float left = 0, right = 0;

 private:
  float keep_;
  std::array<std::vector<float>, 4> lines_;
  std::array<std::size_t, 4> place_{};
  std::array<float, 4> dull_{};
};

double MeanPower(const Stereo& sound) {
  double sum = 0;
  for (std::size_t n = 0; n < sound.Frames(); n += 4)
    sum += sound.left[n] * sound.left[n] + sound.right[n] * sound.right[n];
  return sum / (2.0 * static_cast<double>(sound.Frames() / 4 + 1));
}

/// Turns down what is above the mean level, with an attack of some milliseconds and a release of a tenth.
void Compress(Stereo& sound, double squeeze) {
  const float threshold = FromDecibels(-16);
  float level = threshold, gain = 1;
  for (std::size_t n = 0; n < sound.Frames(); ++n) {
    const float peak = std::max(std::abs(sound.left[n]), std::abs(sound.right[n]));
    level += (peak - level) * (peak > level ? 0.006F : 0.0003F);
    if (n % 16 == 0) {
      gain = level > threshold ? static_cast<float>(std::pow(threshold / level, 0.7 * squeeze)) : 1;
    }
    sound.left[n] *= gain;
    sound.right[n] *= gain;
  }
}

/// Full scale is reached softly.
std::int16_t Rounded(float sample) {
  const float in = std::clamp(sample, -1.5F, 1.5F);
  return static_cast<std::int16_t>(std::lrint((in - in * in * in * (4.0F / 27)) * 32000));
}

void DuckMusic(BandBuses& buses, double duck) {
  auto& [left, right] = buses.music;
  std::vector<std::size_t>& kicks = buses.kicks;
  std::sort(kicks.begin(), kicks.end());
  auto next = kicks.begin();
  auto depth = 0.0F, wish = 0.0F;
  for (std::size_t n = 0; n < left.size(); ++n) {
    for (; next != kicks.end() && *next <= n; ++next) wish = static_cast<float>(duck);
    depth += 0.01F * (wish - depth);
    wish *= 0.99985F;
    left[n] *= 1 - depth;
    right[n] *= 1 - depth;
  }
}

void AddRoom(Stereo& sound, const std::vector<float>& to_room, const BandMix& mix) {
  RoomTail tail(mix.room_rings);
  const auto gain = static_cast<float>(mix.room);
  for (std::size_t n = 0; n + 1 < sound.Frames(); n += 2) {
    tail.Feed(to_room[n / 2]);
    sound.left[n] += gain * tail.left;
    sound.left[n + 1] += gain * tail.left;
    sound.right[n] += gain * tail.right;
    sound.right[n + 1] += gain * tail.right;
  }
}

void AddHiss(Stereo& sound, double level, tools::composer::Random& noise) {
  const auto gain = static_cast<float>(level);
  for (float& sample : sound.left) sample += gain * noise.Next();
  for (float& sample : sound.right) sample += gain * noise.Next();
}

/// Lifts the highs above some 3 kHz.
void Brighten(std::vector<float>& channel, double lift_db) {
  const float more = FromDecibels(lift_db) - 1;
  float low = 0;
  for (float& sample : channel) {
    low += 0.35F * (sample - low);
    sample += more * (sample - low);
  }
}

}  // namespace

BandMix ChooseMix(SongDice& dice, double most_duck) {
  BandMix mix;
  mix.loudness_db = dice.Real(-20, -10);
  mix.squeeze = dice.Real(0, 1);
  mix.duck = most_duck * dice.Real(0.4, 1.2);
  mix.room_rings = dice.Real(0.6, 0.92);
  mix.bright_db = dice.Real(0, 10);
  mix.room = dice.Real(0.1, 0.5);
  mix.hiss_db = dice.Real(-80, -48);
  if (dice.Chance(0.2)) mix.fade_in_seconds = dice.Real(3, 10);
  if (dice.Chance(0.3)) mix.fade_out_seconds = dice.Real(3, 12);
  return mix;
}

std::vector<std::int16_t> MixDown(BandBuses& buses, const BandMix& mix, tools::composer::Random& noise) {
  Stereo& sum = buses.drums;
  if (mix.duck > 0) DuckMusic(buses, mix.duck);
  AddRoom(sum, buses.to_room, mix);
  tools::composer::AddTo(sum, buses.music, 1);
  for (std::vector<float>* channel : {&sum.left, &sum.right}) Brighten(*channel, mix.bright_db);
  const double gain = FromDecibels(mix.loudness_db) / std::sqrt(std::max(MeanPower(sum), 1e-9));
  for (std::size_t n = 0; n < sum.Frames(); ++n) {
    sum.left[n] *= static_cast<float>(gain);
    sum.right[n] *= static_cast<float>(gain);
  }
  AddHiss(sum, FromDecibels(mix.hiss_db), noise);
  Compress(sum, mix.squeeze);
  std::vector<std::int16_t> samples(2 * sum.Frames());
  const double whole = static_cast<double>(sum.Frames()) / kRate;
  for (std::size_t n = 0; n < sum.Frames(); ++n) {
    const double t = static_cast<double>(n) / kRate;
    const double in = t < mix.fade_in_seconds ? t / mix.fade_in_seconds : 1;
    const double out = whole - t < mix.fade_out_seconds ? (whole - t) / mix.fade_out_seconds : 1;
    const auto fade = static_cast<float>(in * in * out * out);
    samples[2 * n] = Rounded(fade * sum.left[n]);
    samples[2 * n + 1] = Rounded(fade * sum.right[n]);
  }
  return samples;
}

}  // namespace bench
