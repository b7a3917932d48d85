// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "benchmarks/TempoBand.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace bench {
namespace {

using tools::composer::kRate;
using tools::composer::Patch;
using tools::composer::Stereo;

constexpr int kVariants = 3;  ///< of each stroke, so that no two in a row are alike

/// How much of each drum goes to the room.
double SendOf(Drum drum) {
  return drum == Drum::Kick ? 0.03 : drum == Drum::Closed || drum == Drum::Shaker ? 0.1 : 0.35;
}

}  // namespace

TempoBand::TempoBand(const TempoStyle& style, std::size_t frames, std::uint64_t seed)
    : dice_(seed),
      noise_(static_cast<std::uint32_t>(seed)),
      buses_(frames),
      drum_share_(style.drums * dice_.Real(0.6, 1.1)) {
  kick_ = {dice_.Real(44, 62), dice_.Real(120, 280), dice_.Real(0.03, 0.06), dice_.Real(0.14, 0.34)};
  snare_hz_ = dice_.Real(160, 230);
  ChoosePatches(style);
}

void TempoBand::ChoosePatches(const TempoStyle& style) {
  bass_ = Patch{.saw = dice_.Real(0, 0.8), .sine = dice_.Real(0.4, 1), .cutoff_hz = dice_.Real(180, 600)};
  bass_.sweep_octaves = dice_.Real(0, 2);
  bass_.amp = {style.live ? 0.008 : 0.003, 0.3, dice_.Real(0.3, 0.9), 0.06};
  const int count = static_cast<int>(style.chord_sounds.size());
  switch (style.chord_sounds[static_cast<std::size_t>(dice_.Below(count))]) {
    case ChordSound::Stab:
      chords_ = Patch{
          .saw = 0.8, .unison = 2, .detune_cents = 16, .width = 0.7, .cutoff_hz = 900, .sweep_octaves = 2};
      chords_.amp = {0.003, 0.25, 0.2, 0.15};
      break;
    case ChordSound::ElectricPiano:
      chords_ = Patch{.sine = 1, .fm_ratio = 1, .fm_index = dice_.Real(0.6, 2), .cutoff_hz = 5000};
      chords_.amp = {0.006, 0.9, 0.15, 0.25};
      break;
    case ChordSound::Organ:
      chords_ = Patch{.square = 0.35, .sine = 0.7, .cutoff_hz = 2600, .vibrato_cents = 9, .vibrato_hz = 6.3};
      chords_.amp = {0.012, 0.1, 0.9, 0.06};
      break;
    case ChordSound::Guitar:
      plucked_ = true;
      break;
    case ChordSound::Distorted:
      chords_ = Patch{.saw = 1, .unison = 2, .detune_cents = 14, .width = 1, .cutoff_hz = 2600, .drive = 7};
      chords_.amp = {0.004, 1.5, 0.7, 0.06};
      break;
    case ChordSound::Strings:
      chords_ = Patch{.saw = 0.7, .unison = 2, .detune_cents = 18, .width = 0.9, .cutoff_hz = 2200};
      chords_.amp = {dice_.Real(0.05, 0.3), 1, 0.9, 0.5};
      break;
  }
  pad_ = Patch{.saw = 0.7, .unison = 2, .detune_cents = 20, .width = 1, .cutoff_hz = dice_.Real(500, 1600)};
  pad_.amp = {0.4, 1, 0.9, 0.6};
  lead_ = Patch{.saw = dice_.Real(0.2, 0.9),
                .square = dice_.Real(0, 0.5),
                .sine = 0.4,
                .cutoff_hz = dice_.Real(900, 3500)};
  lead_.vibrato_cents = dice_.Real(5, 35);
  lead_.vibrato_hz = dice_.Real(4.5, 6.5);
  lead_.amp = {dice_.Real(0.01, 0.09), 0.5, 0.7, 0.15};
}

Stereo TempoBand::Strike(Drum drum, int variant) {
  using namespace tools::composer;  // the drums' own names
  const double turn = variant / 3.0;
  Stereo sound(static_cast<std::size_t>((drum == Drum::Crash ? 2.5 : 0.55) * kRate));
  switch (drum) {
    case Drum::Kick:
      Kick(sound, 0, 0.9, kick_);
      break;
    case Drum::Snare:
      Snare(sound, 0, 0.75, noise_, snare_hz_ * (1 + 0.02 * turn));
      break;
    case Drum::Clap:
      Clap(sound, 0, 0.9, noise_);
      break;
    case Drum::Rim:
      Tom(sound, 0, 0.45, 720 + 30 * turn, -0.2);
      break;
    case Drum::Closed:
      Hat(sound, 0, 0.4, 0.03 + 0.015 * turn, noise_);
      break;
    case Drum::Open:
      Hat(sound, 0, 0.4, 0.2 + 0.05 * turn, noise_, -0.15);
      break;
    case Drum::Shaker:
      Shaker(sound, 0, 0.5, noise_);
      break;
    case Drum::Tom:
      Tom(sound, 0, 0.55, 150 - 32 * variant, 0.4 * variant - 0.4);
      break;
    case Drum::Crash:
      Crash(sound, 0, 0.4, noise_);
      break;
  }
  return sound;
}

const Patch& TempoBand::PatchOf(Part part) const {
  return part == Part::Bass ? bass_ : part == Part::Chords ? chords_ : part == Part::Pad ? pad_ : lead_;
}

Stereo TempoBand::Sing(Part part, double held, int pitch) {
  static constexpr std::array<double, 4> kLevels{0.25, 0.16, 0.07, 0.15};
  const double level = kLevels[static_cast<std::size_t>(part)];
  const double pan = part == Part::Chords ? 0.5 * (pitch % 5 - 2) / 2 : 0;
  const tools::composer::Note note{static_cast<double>(pitch), held, level, pan};
  if (part == Part::Chords && plucked_) {
    Stereo sound(static_cast<std::size_t>((held + 0.09) * kRate));
    tools::composer::Note loud = note;
    loud.level *= 3;
    tools::composer::Pluck(sound, 0, loud, 0.6, noise_);
    return sound;
  }
  const Patch& patch = PatchOf(part);
  Stereo sound(static_cast<std::size_t>((held + 1.4 * patch.amp.release) * kRate));
  tools::composer::Play(sound, 0, patch, note);
  return sound;
}

void TempoBand::Hit(Drum drum, double seconds, double level) {
  const int variant = dice_.Below(kVariants);
  const Key key{static_cast<int>(drum), variant, 0};
  auto found = strokes_.find(key);
  if (found == strokes_.end()) found = strokes_.emplace(key, Strike(drum, variant)).first;
  if (drum == Drum::Kick) buses_.kicks.push_back(static_cast<std::size_t>(std::max(seconds, 0.0) * kRate));
  Add(buses_.drums, found->second, seconds, level * drum_share_, SendOf(drum));
}

void TempoBand::Note(Part part, double seconds, double held, int pitch, double level) {
  const Key key{static_cast<int>(part), pitch, static_cast<int>(held * 1000)};
  auto found = notes_.find(key);
  if (found == notes_.end()) found = notes_.emplace(key, Sing(part, held, pitch)).first;
  Add(buses_.music, found->second, seconds, level, part == Part::Bass ? 0.02 : 0.35);
}

void TempoBand::Add(Stereo& bus, const Stereo& sample, double seconds, double gain, double send) {
  const auto at = static_cast<std::size_t>(std::llround(std::max(seconds, 0.0) * kRate));
  if (at >= bus.Frames()) return;
  const std::size_t frames = std::min(sample.Frames(), bus.Frames() - at);
  const auto dry = static_cast<float>(gain), wet = static_cast<float>(0.5 * gain * send);
  for (std::size_t n = 0; n < frames; ++n) {
    bus.left[at + n] += dry * sample.left[n];
    bus.right[at + n] += dry * sample.right[n];
  }
  for (std::size_t n = 0; n < frames; n += 2)
    buses_.to_room[(at + n) / 2] += wet * (sample.left[n] + sample.right[n]);
}

}  // namespace bench
