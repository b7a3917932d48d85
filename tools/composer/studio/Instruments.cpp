// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/composer/studio/Instruments.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace tools::composer {
namespace {

constexpr double kTurn = 2 * std::numbers::pi;
constexpr std::size_t kControlFrames = 16;  ///< envelopes, filter and vibrato move this often
constexpr int kMostVoices = 7;

double Frequency(double pitch) {
  return 440 * std::exp2((pitch - 69) / 12);
}

/// Rounds the corner of a wave form at its jump, so that it does not alias.
double RoundedStep(double phase, double step) {
  if (phase < step) {
    const double t = phase / step;
    return t + t - t * t - 1;
  }
  if (phase > 1 - step) {
    const double t = (phase - 1) / step;
    return t * t + t + t + 1;
  }
  return 0;
}

double Wave(const Patch& patch, double phase, double step, double modulator) {
  double out = 0;
  if (patch.saw > 0) out += patch.saw * (2 * phase - 1 - RoundedStep(phase, step));
  if (patch.square > 0) {
    const double half = phase < 0.5 ? phase + 0.5 : phase - 0.5;
    const double square = (phase < 0.5 ? 1 : -1) + RoundedStep(phase, step) - RoundedStep(half, step);
    out += patch.square * square;
  }
  if (patch.sine > 0) out += patch.sine * std::sin(kTurn * phase + modulator);
  return out;
}

struct Gains {
  float left, right;
};

Gains PanGains(double pan) {
  const double angle = (std::clamp(pan, -1.0, 1.0) + 1) * std::numbers::pi / 4;
  return {static_cast<float>(std::cos(angle)), static_cast<float>(std::sin(angle))};
}

float Driven(float sample, double drive) {
  return drive > 1 ? static_cast<float>(std::tanh(drive * sample)) : sample;
}

struct Oscillator {
  double phase = 0, cents = 0;
  Gains gains{};
};

}  // namespace

double Envelope::At(double t, double held) const {
  const auto pressed = [this](double time) {
    if (time < attack) return time / attack;
    return sustain + (1 - sustain) * std::exp(-(time - attack) * 4 / std::max(decay, 1e-4));
  };
  if (t <= held) return pressed(t);
  return pressed(held) * std::exp(-(t - held) * 5 / std::max(release, 1e-4));
}

void Play(Stereo& sound, std::size_t at, const Patch& patch, const Note& note) {
  std::array<Oscillator, kMostVoices> voices{};
  const int unison = std::clamp(patch.unison, 1, kMostVoices);
  for (int i = 0; i < unison; ++i) {
    const double place = unison == 1 ? 0 : 2.0 * i / (unison - 1) - 1;
    Oscillator& voice = voices[static_cast<std::size_t>(i)];
    voice.cents = place * patch.detune_cents / 2;
    voice.phase = unison == 1 ? 0 : std::fmod(0.37 * i, 1.0);
    voice.gains = PanGains(note.pan + place * patch.width);
  }
  Filter left_filter, right_filter;
  double modulator_phase = 0, step_scale = 1, bend = 0;
  double gain = 0, gain_step = 0;
  const double level = note.level / std::sqrt(unison);
  const double whole = note.seconds + 1.4 * patch.amp.release;
  const std::size_t frames =
      std::min(static_cast<std::size_t>(whole * kRate), sound.Frames() - std::min(at, sound.Frames()));
  const double base_step = Frequency(note.pitch) / kRate;
  for (std::size_t n = 0; n < frames; ++n) {
    const double t = static_cast<double>(n) / kRate;
    if (n % kControlFrames == 0) {
      const double open = patch.sweep_octaves * patch.filter.At(t, note.seconds);
      left_filter.Tune(patch.cutoff_hz * std::exp2(open), patch.resonance);
      right_filter.Tune(patch.cutoff_hz * std::exp2(open), patch.resonance);
      const double settled = std::min(t / 0.3, 1.0);
      bend = patch.fm_index * patch.filter.At(t, note.seconds);
      const double next_t = t + static_cast<double>(kControlFrames) / kRate;
      gain = level * patch.amp.At(t, note.seconds);
      gain_step = (level * patch.amp.At(next_t, note.seconds) - gain) / static_cast<double>(kControlFrames);
      step_scale = std::exp2(patch.vibrato_cents * settled * std::sin(kTurn * patch.vibrato_hz * t) / 1200);
    }
    double modulator = 0;
    if (patch.fm_index > 0) {
      modulator_phase += base_step * patch.fm_ratio;
      modulator = bend * std::sin(kTurn * modulator_phase);
    }
    float left = 0, right = 0;
    for (int i = 0; i < unison; ++i) {
      Oscillator& voice = voices[static_cast<std::size_t>(i)];
      const double step = base_step * step_scale * (1 + voice.cents * 0.000578);  // a cent is 0.0578 %
      const auto wave = static_cast<float>(Wave(patch, voice.phase, step, modulator));
      left += wave * voice.gains.left;
      right += wave * voice.gains.right;
      voice.phase += step;
      voice.phase -= std::floor(voice.phase);
    }
    left_filter.Feed(left);
    right_filter.Feed(right);
    sound.left[at + n] += static_cast<float>(gain) * Driven(left_filter.Low(), patch.drive);
    sound.right[at + n] += static_cast<float>(gain) * Driven(right_filter.Low(), patch.drive);
    gain += gain_step;
  }
}

void Pluck(Stereo& sound, std::size_t at, const Note& note, double brightness, Random& random) {
  const double period = kRate / Frequency(note.pitch);
  std::vector<float> string(static_cast<std::size_t>(period) + 1);
  Filter pick;
  pick.Tune(800 + 9000 * brightness, 0.7);
  for (float& sample : string) {
    pick.Feed(random.Next());
    sample = pick.Low();
  }
  const Gains gains = PanGains(note.pan);
  const double whole = note.seconds + 0.08;
  const std::size_t frames =
      std::min(static_cast<std::size_t>(whole * kRate), sound.Frames() - std::min(at, sound.Frames()));
  const auto keep = static_cast<float>(0.4 + 0.3 * brightness);
  std::size_t place = 0;
  for (std::size_t n = 0; n < frames; ++n) {
    const std::size_t next = place + 1 < string.size() ? place + 1 : 0;
    const float out = string[place];
    string[place] = 0.996F * (keep * string[place] + (1 - keep) * string[next]);
    place = next;
    const double t = static_cast<double>(n) / kRate;
    const double damp = t < note.seconds ? 1 : std::exp(-(t - note.seconds) * 60);
    const auto sample = static_cast<float>(note.level * damp * out);
    sound.left[at + n] += sample * gains.left;
    sound.right[at + n] += sample * gains.right;
  }
}

}  // namespace tools::composer
