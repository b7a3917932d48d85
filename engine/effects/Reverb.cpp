// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/effects/Reverb.h"

#include <cmath>

namespace engine {
namespace {

constexpr double kBefore = 0.010;  // s
/// Lengths without a common divisor, so that no two lines repeat together; frames at 44.1 kHz.
constexpr std::array kLengths{907, 1153, 1427, 1747, 2089, 2521, 3121, 3889};
constexpr std::array kDiffuserLengths{225, 341, 441, 556};
constexpr int kRight = 23;  // frames that the right side's all-passes are longer
constexpr float kDiffusion = 0.5F;
constexpr float kDamping = 0.3F;   // of the treble, at each turn
constexpr float kMostInto = 2.5F;  // the shortest rooms stay a little softer

int Scaled(int frames, int sample_rate) {
  return std::max(1, static_cast<int>(std::lround(static_cast<double>(frames) * sample_rate / 44100)));
}

/// Each output is a sum of all inputs, of the same power (Hadamard).
void Mix(std::array<float, 8>& of) noexcept {
  for (std::size_t half = 1; half < of.size(); half *= 2) {
    for (std::size_t i = 0; i < of.size(); ++i) {
      if ((i & half) != 0) continue;
      const float a = of[i], b = of[i + half];
      of[i] = a + b;
      of[i + half] = a - b;
    }
  }
  constexpr float kSamePower = 0.35355339F;
  for (float& value : of) value *= kSamePower;
}

}  // namespace

Reverb::Reverb(int sample_rate)
    : sample_rate_(sample_rate),
      longest_(Scaled(kLengths.back() + 4 * 600, sample_rate) + sample_rate / 100),
      before_(static_cast<int>(kBefore * sample_rate) + 1),
      before_frames_(std::max(1, static_cast<int>(kBefore * sample_rate))),
      open_(sample_rate),
      level_(0, sample_rate),
      into_(1, sample_rate),
      quiet_(longest_) {
  for (std::size_t i = 0; i < kLines; ++i) {
    lines_[i].sound.resize(static_cast<std::size_t>(Scaled(kLengths[i], sample_rate)));
  }
  for (std::size_t side = 0; side < diffusers_.size(); ++side) {
    for (std::size_t i = 0; i < kDiffusers; ++i) {
      const int frames = kDiffuserLengths[i] + (side == 1 ? kRight : 0);
      diffusers_[side][i].sound.resize(static_cast<std::size_t>(Scaled(frames, sample_rate)));
    }
  }
  AimGains(wanted_.seconds);
  Arrive();
}

void Reverb::Set(const decks::EffectSettings::Reverb& settings) noexcept {
  if (settings.seconds != wanted_.seconds) AimGains(settings.seconds);
  wanted_ = settings;
  open_.Aim(settings.on);
  level_.Aim(settings.level);
}

void Reverb::AimGains(float seconds) noexcept {
  gains_left_ = std::max(1, sample_rate_ / 50);
  float kept = 0;  // of the power in the lines, from one turn to the next
  for (Line& line : lines_) {
    const float turn = static_cast<float>(line.sound.size()) / static_cast<float>(sample_rate_);
    line.gain_target = std::pow(10.0F, -3 * turn / seconds);
    line.gain_step = (line.gain_target - line.gain) / static_cast<float>(gains_left_);
    kept += line.gain_target * line.gain_target / kLines;
  }
  // What gathers in the lines is as much as one turn keeps of it to what it loses. Taken back before the
  // lines: what rings already is not made louder by another decay.
  into_.Aim(std::min(std::sqrt((1 - kept) / kept), kMostInto));
}

void Reverb::Arrive() noexcept {
  open_.Arrive();
  level_.JumpTo(level_.Target());
  into_.JumpTo(into_.Target());
  gains_left_ = 0;
  for (Line& line : lines_) line.gain = line.gain_target;
}

void Reverb::Clear() noexcept {
  before_.Clear();
  for (auto& side : diffusers_) {
    for (Diffuser& one : side) std::fill(one.sound.begin(), one.sound.end(), 0.0F);
  }
  for (Line& line : lines_) {
    std::fill(line.sound.begin(), line.sound.end(), 0.0F);
    line.damped = 0;
  }
  quiet_ = longest_;
}

inline float Reverb::Diffuser::Step(float in) noexcept {
  float& kept = sound[at];
  at = at + 1 == sound.size() ? 0 : at + 1;
  const float out = kept - kDiffusion * in;
  kept = in + kDiffusion * out;
  return out;
}

inline BothSides Reverb::Ring(float left, float right) noexcept {
  for (Diffuser& one : diffusers_[0]) left = one.Step(left);
  for (Diffuser& one : diffusers_[1]) right = one.Step(right);
  std::array<float, kLines> out;
  if (gains_left_ > 0 && --gains_left_ == 0) {
    for (Line& line : lines_) line.gain = line.gain_target;
  }
  float heard_left = 0, heard_right = 0;
  for (std::size_t i = 0; i < kLines; ++i) {
    Line& line = lines_[i];
    if (gains_left_ > 0) line.gain += line.gain_step;
    line.damped += (1 - kDamping) * (line.sound[line.at] - line.damped);
    out[i] = line.gain * line.damped;
    (i % 2 == 0 ? heard_left : heard_right) += out[i];
  }
  Mix(out);
  for (std::size_t i = 0; i < kLines; ++i) {
    Line& line = lines_[i];
    line.sound[line.at] = out[i] + (i % 2 == 0 ? left : right);
    line.at = line.at + 1 == line.sound.size() ? 0 : line.at + 1;
  }
  return BothOf(heard_left, heard_right);
}

void Reverb::Process(std::span<float> stereo) noexcept {
  constexpr float kInaudible = 1e-5F;  // -100 dB
  if (Idle()) return;
  for (std::size_t i = 0; i + 1 < stereo.size(); i += 2) {
    const BothSides in = BothOf(stereo[i], stereo[i + 1]);
    before_.Write(static_cast<double>(open_.Next()) * in);
    const BothSides late = static_cast<double>(into_.Next()) * before_.Read(before_frames_);
    const auto left = static_cast<float>(late[0]), right = static_cast<float>(late[1]);
    const BothSides room = Ring(left, right);
    const bool silent = std::abs(room[0]) + std::abs(room[1]) < static_cast<double>(kInaudible) &&
                        std::abs(left) + std::abs(right) < kInaudible;
    quiet_ = silent ? std::min(quiet_ + 1, longest_) : 0;
    const BothSides heard = in + static_cast<double>(level_.Next()) * room;
    stereo[i] = static_cast<float>(heard[0]);
    stereo[i + 1] = static_cast<float>(heard[1]);
  }
}

}  // namespace engine
