// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "benchmarks/TempoBand.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "tools/composer/studio/Effects.h"

namespace bench {
namespace {

using tools::composer::kRate;
using tools::composer::Patch;
using tools::composer::Stereo;

constexpr int kVariants = 3;  ///< of each stroke, so that no two in a row are alike

float FromDecibels(double db) {
  return static_cast<float>(std::pow(10, db / 20));
}

/// How much of each drum goes to the room.
double SendOf(Drum drum) {
  return drum == Drum::Kick ? 0.03 : drum == Drum::Closed || drum == Drum::Shaker ? 0.1 : 0.35;
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

}  // namespace

std::uint64_t SongDice::Next() {
  state_ += 0x9E3779B97F4A7C15U;
  std::uint64_t mixed = (state_ ^ (state_ >> 30)) * 0xBF58476D1CE4E5B9U;
  mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBU;
  return mixed ^ (mixed >> 31);
}

double SongDice::Real(double from, double to) {
  return from + (to - from) * (static_cast<double>(Next() >> 11) * 0x1p-53);
}

double SongDice::Near(double deviation) {
  const double first = Real(-1, 1), second = Real(-1, 1), third = Real(-1, 1);
  return deviation * (first + second + third);  // three dice come close to a bell
}

TempoBand::TempoBand(const TempoStyle& style, std::size_t frames, std::uint64_t seed)
    : dice_(seed),
      noise_(static_cast<std::uint32_t>(seed)),
      drums_(frames),
      music_(frames),
      to_room_(frames / 2 + 1),
      duck_(style.duck * dice_.Real(0.4, 1.2)),
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
      Snare(sound, 0, 0.6, noise_, snare_hz_ * (1 + 0.02 * turn));
      break;
    case Drum::Clap:
      Clap(sound, 0, 0.7, noise_);
      break;
    case Drum::Rim:
      Tom(sound, 0, 0.45, 720 + 30 * turn, -0.2);
      break;
    case Drum::Closed:
      Hat(sound, 0, 0.22, 0.03 + 0.015 * turn, noise_);
      break;
    case Drum::Open:
      Hat(sound, 0, 0.22, 0.2 + 0.05 * turn, noise_, -0.15);
      break;
    case Drum::Shaker:
      Shaker(sound, 0, 0.3, noise_);
      break;
    case Drum::Tom:
      Tom(sound, 0, 0.55, 150 - 32 * variant, 0.4 * variant - 0.4);
      break;
    case Drum::Crash:
      Crash(sound, 0, 0.25, noise_);
      break;
  }
  return sound;
}

const Patch& TempoBand::PatchOf(Part part) const {
  return part == Part::Bass ? bass_ : part == Part::Chords ? chords_ : part == Part::Pad ? pad_ : lead_;
}

Stereo TempoBand::Sing(Part part, double held, int pitch) {
  static constexpr std::array<double, 4> kLevels{0.38, 0.14, 0.07, 0.13};
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
  if (drum == Drum::Kick) kicks_.push_back(static_cast<std::size_t>(std::max(seconds, 0.0) * kRate));
  Add(drums_, found->second, seconds, level * drum_share_, SendOf(drum));
}

void TempoBand::Note(Part part, double seconds, double held, int pitch, double level) {
  const Key key{static_cast<int>(part), pitch, static_cast<int>(held * 1000)};
  auto found = notes_.find(key);
  if (found == notes_.end()) found = notes_.emplace(key, Sing(part, held, pitch)).first;
  Add(music_, found->second, seconds, level, part == Part::Bass ? 0.02 : 0.35);
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
    to_room_[(at + n) / 2] += wet * (sample.left[n] + sample.right[n]);
}

void TempoBand::DuckMusic() {
  std::sort(kicks_.begin(), kicks_.end());
  auto next = kicks_.begin();
  auto depth = 0.0F, wish = 0.0F;
  for (std::size_t n = 0; n < music_.Frames(); ++n) {
    for (; next != kicks_.end() && *next <= n; ++next) wish = static_cast<float>(duck_);
    depth += 0.01F * (wish - depth);
    wish *= 0.99985F;
    music_.left[n] *= 1 - depth;
    music_.right[n] *= 1 - depth;
  }
}

void TempoBand::AddRoom(double level) {
  RoomTail tail(dice_.Real(0.6, 0.92));
  const auto gain = static_cast<float>(level);
  for (std::size_t n = 0; n + 1 < drums_.Frames(); n += 2) {
    tail.Feed(to_room_[n / 2]);
    drums_.left[n] += gain * tail.left;
    drums_.left[n + 1] += gain * tail.left;
    drums_.right[n] += gain * tail.right;
    drums_.right[n + 1] += gain * tail.right;
  }
}

void TempoBand::AddHiss(double level) {
  const auto gain = static_cast<float>(level);
  for (float& sample : drums_.left) sample += gain * noise_.Next();
  for (float& sample : drums_.right) sample += gain * noise_.Next();
}

std::vector<std::int16_t> TempoBand::Mix(const BandMix& mix) {
  if (duck_ > 0) DuckMusic();
  AddRoom(mix.room);
  tools::composer::AddTo(drums_, music_, 1);
  const double gain = FromDecibels(mix.loudness_db) / std::sqrt(std::max(MeanPower(drums_), 1e-9));
  for (std::size_t n = 0; n < drums_.Frames(); ++n) {
    drums_.left[n] *= static_cast<float>(gain);
    drums_.right[n] *= static_cast<float>(gain);
  }
  AddHiss(FromDecibels(mix.hiss_db));
  Compress(drums_, mix.squeeze);
  std::vector<std::int16_t> samples(2 * drums_.Frames());
  const double whole = static_cast<double>(drums_.Frames()) / kRate;
  for (std::size_t n = 0; n < drums_.Frames(); ++n) {
    const double t = static_cast<double>(n) / kRate;
    const double in = t < mix.fade_in_seconds ? t / mix.fade_in_seconds : 1;
    const double out = whole - t < mix.fade_out_seconds ? (whole - t) / mix.fade_out_seconds : 1;
    const auto fade = static_cast<float>(in * in * out * out);
    samples[2 * n] = Rounded(fade * drums_.left[n]);
    samples[2 * n + 1] = Rounded(fade * drums_.right[n]);
  }
  return samples;
}

}  // namespace bench
