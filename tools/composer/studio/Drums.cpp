// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/composer/studio/Drums.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <numbers>

namespace tools::composer {
namespace {

constexpr double kTurnOf = 2 * std::numbers::pi;

struct Pair {
  double left, right;
};

/// Adds what the function makes of each time, as far as the sound goes.
void AddFor(Stereo& sound, std::size_t at, double seconds, const std::function<Pair(double t)>& make) {
  const std::size_t room = sound.Frames() - std::min(at, sound.Frames());
  const std::size_t frames = std::min(static_cast<std::size_t>(seconds * kRate), room);
  for (std::size_t n = 0; n < frames; ++n) {
    const Pair pair = make(static_cast<double>(n) / kRate);
    sound.left[at + n] += static_cast<float>(pair.left);
    sound.right[at + n] += static_cast<float>(pair.right);
  }
}

}  // namespace

void Kick(Stereo& sound, std::size_t at, double level, const KickShape& shape) {
  double phase = 0;
  AddFor(sound, at, shape.ring_seconds * 1.6, [&](double t) {
    const double hz =
        shape.deep_hz + (shape.high_hz - shape.deep_hz) * std::exp(-t / shape.sweep_seconds * 2.2);
    phase += hz / kRate;
    const double end = 1 - std::clamp((t / shape.ring_seconds - 1) / 0.6, 0.0, 1.0);
    const double body = std::sin(kTurnOf * phase) * std::exp(-t * 2.2 / shape.ring_seconds) * end;
    const double click = 0.35 * std::exp(-t * 900) * std::sin(kTurnOf * 2600 * t);
    const double hit = level * std::tanh(1.6 * body + click);
    return Pair{hit, hit};
  });
}

void Snare(Stereo& sound, std::size_t at, double level, Random& random, double tone_hz) {
  Filter noise;
  noise.Tune(3200, 0.8);
  AddFor(sound, at, 0.32, [&](double t) {
    noise.Feed(random.Next());
    const double body = std::sin(kTurnOf * tone_hz * t * (1 + 0.4 * std::exp(-t * 60))) * std::exp(-t * 26);
    const double rattle = (0.6 * noise.High() + 0.8 * noise.Band()) * std::exp(-t * 17);
    const double hit = level * std::tanh(0.9 * body + 0.75 * rattle);
    return Pair{hit, hit};
  });
}

void Clap(Stereo& sound, std::size_t at, double level, Random& random) {
  Filter left, right;
  left.Tune(1500, 1.4);
  right.Tune(1650, 1.4);
  AddFor(sound, at, 0.35, [&](double t) {
    // Four hands that are not quite together, then the room.
    const double stroke = std::fmod(t, 0.011);
    const double env = t < 0.033 ? std::exp(-stroke * 260) : std::exp(-(t - 0.033) * 20);
    left.Feed(random.Next());
    right.Feed(random.Next());
    return Pair{level * env * left.Band(), level * env * right.Band()};
  });
}

void Hat(Stereo& sound, std::size_t at, double level, double seconds, Random& random, double pan) {
  Filter metal;
  metal.Tune(8200, 1.1);
  AddFor(sound, at, seconds * 2.2, [&](double t) {
    double ring = 0;
    for (const double hz : {4173.0, 5561.0, 6829.0, 8467.0})
      ring += std::fmod(hz * t, 1.0) < 0.5 ? 0.22 : -0.22;
    metal.Feed(static_cast<float>(0.6 * random.Next() + ring));
    const double hit = level * metal.High() * std::exp(-t * 3.2 / seconds);
    return Pair{hit * (1 - pan), hit * (1 + pan)};
  });
}

void Shaker(Stereo& sound, std::size_t at, double level, Random& random) {
  Filter grain;
  grain.Tune(6200, 1.2);
  AddFor(sound, at, 0.09, [&](double t) {
    grain.Feed(random.Next());
    const double swell = std::min(t / 0.018, 1.0) * std::exp(-std::max(t - 0.018, 0.0) * 60);
    const double hit = level * grain.Band() * swell;
    return Pair{hit * 1.15, hit * 0.85};
  });
}

void Tom(Stereo& sound, std::size_t at, double level, double hz, double pan) {
  double phase = 0;
  AddFor(sound, at, 0.4, [&](double t) {
    phase += hz * (1 + 0.5 * std::exp(-t * 30)) / kRate;
    const double hit = level * std::sin(kTurnOf * phase) * std::exp(-t * 11);
    return Pair{hit * (1 - pan), hit * (1 + pan)};
  });
}

void Crash(Stereo& sound, std::size_t at, double level, Random& random) {
  Filter left, right;
  left.Tune(5200, 0.8);
  right.Tune(5600, 0.8);
  AddFor(sound, at, 2.4, [&](double t) {
    left.Feed(random.Next());
    right.Feed(random.Next());
    const double env = level * std::min(t / 0.002, 1.0) * std::exp(-t * 2.1) * std::clamp(2.4 - t, 0.0, 1.0);
    return Pair{env * left.High(), env * right.High()};
  });
}

void Riser(Stereo& sound, std::size_t at, std::size_t frames, double level, Random& random) {
  Filter left, right;
  const double seconds = static_cast<double>(frames) / kRate;
  AddFor(sound, at, seconds, [&](double t) {
    const double way = t / seconds;
    left.Tune(300 * std::exp2(5 * way), 2.5);
    right.Tune(330 * std::exp2(5 * way), 2.5);
    left.Feed(random.Next());
    right.Feed(random.Next());
    const double env = level * way * way * std::clamp((seconds - t) / 0.01, 0.0, 1.0);
    return Pair{env * left.Band(), env * right.Band()};
  });
}

}  // namespace tools::composer
