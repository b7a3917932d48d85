// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/sound/EffectTable.h"

#include <algorithm>
#include <cmath>

namespace app {
namespace {

using decks::EffectKind;
using Law = EffectKnob::Law;
using Unit = EffectKnob::Unit;

constexpr std::array<EffectKnob, kEffectControls> kKnobs{{
    {EffectControl::Filter, EffectKind::Filter, "Filter", kMiddleFilter, Law::Linear, -1, 1, Unit::Position},
    {EffectControl::FilterResonance, EffectKind::Filter, "FilterResonance", 30, Law::Exponential, 0.7F, 4,
     Unit::Q},
    {EffectControl::LowPassCut, EffectKind::LowPass, "LowPassCut", 100, Law::Exponential, 20, 20'000,
     Unit::Hertz},
    {EffectControl::LowPassResonance, EffectKind::LowPass, "LowPassResonance", 12, Law::Exponential, 0.5F, 10,
     Unit::Q},
    {EffectControl::FlangerSpeed, EffectKind::Flanger, "FlangerSpeed", 46, Law::Exponential, 0.02F, 5,
     Unit::Turns},
    {EffectControl::FlangerWetdry, EffectKind::Flanger, "FlangerWetdry", 50, Law::Linear, 0, 1, Unit::Share},
    {EffectControl::EchoLevel, EffectKind::Echo, "EchoLevel", 30, Law::Linear, 0, 1, Unit::Share},
    {EffectControl::EchoDelay, EffectKind::Echo, "EchoDelay", 68, Law::Exponential, 0.01F, 2, Unit::Seconds},
    {EffectControl::Echo3DryMix, EffectKind::Echo3, "Echo3DryMix", 100, Law::Linear, 0, 1, Unit::Share},
    {EffectControl::Echo3WetMix, EffectKind::Echo3, "Echo3WetMix", 40, Law::Linear, 0, 1, Unit::Share},
    {EffectControl::Echo3Delay, EffectKind::Echo3, "Echo3Delay", 68, Law::Exponential, 0.01F, 2,
     Unit::Seconds},
    {EffectControl::ReverbLevel, EffectKind::Reverb, "ReverbLevel", 25, Law::Linear, 0, 1, Unit::Share},
    {EffectControl::ReverbDelay, EffectKind::Reverb, "ReverbDelay", 60, Law::Exponential, 0.2F, 8,
     Unit::Seconds},
    {EffectControl::RotateSpeed, EffectKind::Rotate, "RotateSpeed", 44, Law::Exponential, 0.05F, 2,
     Unit::Turns},
    {EffectControl::RotateDepth, EffectKind::Rotate, "RotateDepth", 70, Law::Linear, 0, 1, Unit::Share},
}};

/// Seconds that a locked effect takes; 0 where it is not, or no tempo is known.
double LockedSeconds(const EffectChoices& choices, EffectKind kind, double bpm) {
  const int quarters = choices.quarters[PlaceOf(kind)];
  return quarters > 0 && std::isfinite(bpm) && bpm > 1 ? quarters / 4.0 * 60 / bpm : 0;
}

}  // namespace

std::span<const EffectKnob, kEffectControls> EffectKnobs() {
  return kKnobs;
}

const EffectKnob& KnobOf(EffectControl control) {
  return kKnobs[PlaceOf(control)];
}

float MeaningOf(const EffectKnob& knob, int slider) {
  const float share = static_cast<float>(std::clamp(slider, 0, 100)) / 100;
  if (knob.law == Law::Linear) return knob.least + share * (knob.most - knob.least);
  return knob.least * std::pow(knob.most / knob.least, share);
}

EffectKeys KeysOf(EffectKind kind) {
  switch (kind) {
    case EffectKind::Equaliser:
      return {"Equalizer", ""};
    case EffectKind::Filter:
      return {"", ""};
    case EffectKind::LowPass:
      return {"LowPass", ""};
    case EffectKind::Flanger:
      return {"Flanger", "FlangerBeats"};
    case EffectKind::Echo:
      return {"Echo", "EchoBeats"};
    case EffectKind::Echo3:
      return {"Echo3", "Echo3Beats"};
    case EffectKind::Reverb:
      return {"Reverb", ""};
    case EffectKind::Swap:
      return {"Swap", ""};
    case EffectKind::Rotate:
      break;
  }
  return {"Rotate", "RotateBeats"};
}

EffectChoices::EffectChoices() {
  std::transform(kKnobs.begin(), kKnobs.end(), sliders.begin(),
                 [](const EffectKnob& knob) { return knob.rest; });
  on[PlaceOf(EffectKind::Equaliser)] = true;
}

decks::EffectSettings SettingsOf(const EffectChoices& choices, double bpm) {
  const auto on = [&](EffectKind kind) { return choices.on[PlaceOf(kind)]; };
  const auto at = [&](EffectControl control) {
    return MeaningOf(KnobOf(control), choices.sliders[PlaceOf(control)]);
  };
  const auto seconds = [&](EffectKind kind, EffectControl knob) {
    double locked = LockedSeconds(choices, kind, bpm);
    while (locked > static_cast<double>(decks::kLongestEcho)) locked /= 2;
    return locked > 0 ? static_cast<float>(locked) : at(knob);
  };
  const auto hertz = [&](EffectKind kind, EffectControl knob) {
    const double locked = LockedSeconds(choices, kind, bpm);
    return locked > 0 ? static_cast<float>(1 / locked) : at(knob);
  };
  using enum EffectControl;
  decks::EffectSettings settings;
  settings.equaliser = on(EffectKind::Equaliser);
  settings.filter = {at(Filter), at(FilterResonance)};
  settings.low_pass = {on(EffectKind::LowPass), at(LowPassCut), at(LowPassResonance)};
  settings.flanger = {on(EffectKind::Flanger), hertz(EffectKind::Flanger, FlangerSpeed), at(FlangerWetdry)};
  settings.echo = {on(EffectKind::Echo), at(EchoLevel), seconds(EffectKind::Echo, EchoDelay)};
  settings.echo3 = {on(EffectKind::Echo3), at(Echo3DryMix), at(Echo3WetMix),
                    seconds(EffectKind::Echo3, Echo3Delay)};
  settings.reverb = {on(EffectKind::Reverb), at(ReverbLevel), at(ReverbDelay)};
  settings.swap = on(EffectKind::Swap);
  settings.rotate = {on(EffectKind::Rotate), hertz(EffectKind::Rotate, RotateSpeed), at(RotateDepth)};
  return settings;
}

}  // namespace app
