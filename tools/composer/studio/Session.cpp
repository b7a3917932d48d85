// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/composer/studio/Session.h"

#include <algorithm>
#include <cmath>

#include "tools/composer/studio/Effects.h"

namespace tools::composer {
namespace {

constexpr double kRingOutSeconds = 3.5;

/// The part in which the last echoes fade to nothing.
void FadeOut(Stereo& sound, std::size_t from, std::size_t to) {
  for (std::size_t n = from; n < sound.Frames(); ++n) {
    const double way = n < to ? static_cast<double>(n - from) / static_cast<double>(to - from) : 1;
    const auto gain = static_cast<float>(0.5 + 0.5 * std::cos(3.14159265 * way));
    sound.left[n] *= n < to ? gain : 0;
    sound.right[n] *= n < to ? gain : 0;
  }
}

Stereo WithSilence(const Stereo& sound, double head_seconds, double tail_seconds) {
  const auto head = static_cast<std::size_t>(std::lround(head_seconds * kRate));
  const auto tail = static_cast<std::size_t>(std::lround(tail_seconds * kRate));
  Stereo whole(head + sound.Frames() + tail);
  std::copy(sound.left.begin(), sound.left.end(), whole.left.begin() + static_cast<std::ptrdiff_t>(head));
  std::copy(sound.right.begin(), sound.right.end(), whole.right.begin() + static_cast<std::ptrdiff_t>(head));
  return whole;
}

}  // namespace

Session::Session(Tempo tempo, int bars, std::uint32_t seed) : tempo_(tempo), bars_(bars), dice_(seed) {
  const std::size_t frames = At(bars, 0) + static_cast<std::size_t>(kRingOutSeconds * kRate);
  for (Stereo& strip : strips_) strip = Stereo(frames);
}

std::size_t Session::At(int bar, double step) const {
  const bool late = static_cast<int>(step) % 2 == 1;
  const double steps = bar * 16.0 + step + (late ? tempo_.swing : 0);
  return static_cast<std::size_t>(std::llround(std::max(steps, 0.0) * 15 / tempo_.bpm * kRate));
}

void Session::Note(Strip strip, int bar, double step, const Patch& patch, const composer::Note& note) {
  composer::Note played = note;
  played.level *= 1 + 0.08 * dice_.Next();
  Play(On(strip), At(bar, step), patch, played);
}

void Session::Chord(Strip strip, int bar, double step, const Patch& patch, const std::vector<int>& pitches,
                    double seconds, double level) {
  for (std::size_t i = 0; i < pitches.size(); ++i) {
    const double pan =
        pitches.size() < 2
            ? 0
            : 0.5 * (2.0 * static_cast<double>(i) / static_cast<double>(pitches.size() - 1) - 1);
    Note(strip, bar, step, patch, {static_cast<double>(pitches[i]), seconds, level, pan});
  }
}

void Session::BassDrum(int bar, double step, double level, const KickShape& shape) {
  Kick(On(Strip::Drums), At(bar, step), level, shape);
  bass_drums_.push_back(At(bar, step));
}

void Session::Sweep(Strip strip, int first_bar, int bars, double from_hz, double to_hz) {
  Stereo& sound = On(strip);
  Filter left, right;
  const std::size_t from = At(first_bar, 0), to = std::min(At(first_bar + bars, 0), sound.Frames());
  for (std::size_t n = from; n < to; ++n) {
    if ((n - from) % 64 == 0) {
      const double way = static_cast<double>(n - from) / static_cast<double>(to - from);
      const double cutoff = from_hz * std::pow(to_hz / from_hz, way);
      left.Tune(cutoff, 1.1);
      right.Tune(cutoff, 1.1);
    }
    left.Feed(sound.left[n]);
    right.Feed(sound.right[n]);
    sound.left[n] = left.Low();
    sound.right[n] = right.Low();
  }
}

Stereo Session::Mix(const Finish& finish) {
  std::sort(bass_drums_.begin(), bass_drums_.end());
  const std::size_t frames = strips_.front().Frames();
  Stereo sum(frames), to_reverb(frames), to_echo(frames);
  for (std::size_t i = 0; i < kStrips; ++i) {
    const StripSetting& setting = settings_[i];
    if (setting.duck > 0) Duck(strips_[i], bass_drums_, setting.duck, Steps(3.2));
    AddTo(sum, strips_[i], setting.gain);
    if (setting.reverb > 0) AddTo(to_reverb, strips_[i], setting.gain * setting.reverb);
    if (setting.echo > 0) AddTo(to_echo, strips_[i], setting.gain * setting.echo);
  }
  const Stereo echo = Echo(to_echo, Steps(finish.echo_steps), finish.echo_feedback);
  AddTo(to_reverb, echo, 0.25);
  AddTo(sum, echo, 1);
  AddTo(sum, Reverb(to_reverb, finish.reverb_seconds, finish.reverb_hz), 1);
  const std::size_t end = At(bars_, 0);
  FadeOut(sum, end, frames);
  Master(sum, finish.lufs, 0.79);  // lossy coding adds up to 1.5 dB to a peak
  return WithSilence(sum, finish.head_seconds, finish.tail_seconds);
}

std::vector<int> Hits(std::string_view pattern) {
  std::vector<int> hits;
  for (std::size_t i = 0; i < pattern.size(); ++i) {
    if (pattern[i] != '.') hits.push_back(static_cast<int>(i));
  }
  return hits;
}

}  // namespace tools::composer
