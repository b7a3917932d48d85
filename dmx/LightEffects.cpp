// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "dmx/LightEffects.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace dmx {
namespace {

constexpr double kUsualTempo = 120;  ///< where there is no music to ask
constexpr double kLeastTempo = 20;
constexpr double kMostTempo = 400;
constexpr double kMostTurns = 0.7;  ///< whole ranges of pan a second: 540 degrees take a head that long
constexpr double kTurn = 2 * std::numbers::pi;

double Part(double rounds) {
  return rounds - std::floor(rounds);
}

/// Which of `count` a step is; also for steps before the first.
std::size_t StepOf(double rounds, std::size_t count) {
  const double step = std::floor(rounds);
  const double turns = std::floor(step / static_cast<double>(count));
  return std::min(static_cast<std::size_t>(step - turns * static_cast<double>(count)), count - 1);
}

/// How many rounds a second it can do.
double MostRounds(const LightEffect& effect, Flashing flashing) {
  if (SubjectOf(effect.kind) != EffectSubject::Movement) return MostFlashes(flashing);
  const double inner = effect.kind == EffectKind::Eight ? 2 : 1;  // tilt swings twice a round
  const double size = std::clamp(effect.size, 0.01, 1.0);
  return kMostTurns / (std::numbers::pi * size * inner);
}

LiveLook Movement(const LightEffect& effect, std::size_t place, double rounds, const LiveLook& around) {
  const double reach = std::clamp(effect.size, 0.0, 1.0) / 2;
  const auto count = static_cast<double>(std::max<std::size_t>(effect.fixtures.size(), 1));
  const double angle = kTurn * Part(rounds);
  double pan = 0, tilt = 0;
  switch (effect.kind) {
    case EffectKind::Circle:
      pan = std::cos(angle);
      tilt = std::sin(angle);
      break;
    case EffectKind::Eight:
      pan = std::sin(angle);
      tilt = std::sin(2 * angle);
      break;
    case EffectKind::Fan:  // out and in, the outermost ones farthest
      pan = std::sin(angle) * (count < 2 ? 1 : 2 * static_cast<double>(place) / (count - 1) - 1);
      break;
    default:
      pan = std::sin(angle + kTurn * static_cast<double>(place) / count);
      break;
  }
  LiveLook look;
  const auto at = [reach](double middle, double way) {
    // Where the range ends the figure is moved, not cut.
    return std::clamp(std::clamp(middle, 0.0, 1.0), reach, 1 - reach) + reach * way;
  };
  look.pan = at(around.pan.value_or(0.5), pan);
  look.tilt = at(around.tilt.value_or(0.5), tilt);
  return look;
}

}  // namespace

EffectSubject SubjectOf(EffectKind kind) {
  if (kind == EffectKind::ColourChase) return EffectSubject::Colour;
  const bool light = kind == EffectKind::Chase || kind == EffectKind::Pulse;
  return light ? EffectSubject::Light : EffectSubject::Movement;
}

double MostFlashes(Flashing flashing) {
  return flashing == Flashing::Guarded ? 3.5 : 12;
}

double RoundsAt(const LightEffect& effect, const std::optional<MusicPlace>& music, double seconds,
                Flashing flashing) {
  const double most = MostRounds(effect, flashing);
  const double value = std::clamp(effect.rate.value, 0.01, 64.0);
  const bool heard = music && std::isfinite(music->beat) && effect.rate.unit == EffectRate::Unit::Beats;
  double pace = value, rounds = value * seconds;
  if (effect.rate.unit == EffectRate::Unit::Beats) {
    const double tempo = heard && music->tempo > 0 ? music->tempo : kUsualTempo;
    pace = std::clamp(tempo, kLeastTempo, kMostTempo) / 60 / value;
    rounds = heard ? music->beat / value : pace * seconds;
  }
  for (; pace > most; pace /= 2) rounds /= 2;
  return rounds;
}

LiveLook LookAt(const LightEffect& effect, std::size_t place, double rounds, const LiveLook& around) {
  const std::size_t count = std::max<std::size_t>(effect.fixtures.size(), 1);
  LiveLook look;
  switch (effect.kind) {
    case EffectKind::ColourChase: {
      const auto mixed = MixedColours();
      std::vector<MixedColour> colours = effect.colours;
      if (colours.empty()) colours.assign(mixed.begin(), mixed.end() - 2);
      look.colour = colours[(StepOf(rounds, colours.size()) + place) % colours.size()];
      return look;
    }
    case EffectKind::Chase:  // one that goes alone is lit every other step
      look.light = StepOf(rounds, std::max<std::size_t>(count, 2)) == place ? 1 : 0;
      return look;
    case EffectKind::Pulse:
      look.light = (1 - Part(rounds)) * (1 - Part(rounds));
      return look;
    default:
      return Movement(effect, place, rounds, around);
  }
}

double FlashGate::Pass(double rounds, double seconds, Flashing flashing) {
  // Shorter than the pace that effects are held to, whose ticks come late now and then; four a second.
  constexpr double kBetweenFlashes = 0.25;
  const bool flashes = rounds_ && (std::floor(rounds) != std::floor(*rounds_) || rounds < *rounds_);
  if (flashes && flashing == Flashing::Guarded && seconds - flashed_ < kBetweenFlashes) return *rounds_;
  if (flashes) flashed_ = seconds;
  rounds_ = rounds;
  return rounds;
}

}  // namespace dmx
