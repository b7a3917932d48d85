// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "benchmarks/TempoSongs.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "benchmarks/SongHarmony.h"
#include "benchmarks/TempoBand.h"
#include "benchmarks/TempoStyles.h"

namespace bench {
namespace {

constexpr int kStepsPerBeat = 4;

/// Who plays in a part of the song.
struct Scene {
  bool kick = true, drums = true, hats = true, bass = true, chords = true, lead = false, pad = false;
};

/// Writes a song: chooses it from the seed, then plays it bar by bar.
class SongWriter {
 public:
  explicit SongWriter(std::uint64_t seed);
  TempoSong Write();

 private:
  [[nodiscard]] double At(double beat) const;
  [[nodiscard]] double StepAt(int bar, int step) const;
  [[nodiscard]] double Stroke(int bar, int step) { return StepAt(bar, step) + dice_.Near(loose_); }
  [[nodiscard]] int StepsPerBar() const { return style_.beats_per_bar * kStepsPerBeat; }
  [[nodiscard]] char Sign(std::string_view pattern, int bar, int step) const;
  [[nodiscard]] int Held(std::string_view pattern, int bar, int step, double most) const;
  [[nodiscard]] Scene ChooseScene(int bar);
  void PlayBar(int bar, const Scene& scene);
  void PlayPattern(Drum drum, std::string_view pattern, int bar, double share, double late = 0);
  void PlayBass(int bar);
  void PlayChords(int bar);
  void PlayPad(int bar);
  void PlayLead(int bar);
  void PlayFill(int bar);

  SongDice dice_;
  const TempoStyle& style_;
  const Groove& groove_;
  double bpm_;
  double seconds_, begin_;  ///< the song's length, and where its first bar begins
  double swing_, loose_ = 0, sway_ = 0, sway_beats_, backbeat_late_ = 0;
  int bars_, section_bars_;
  int tune_ = 0;
  SongHarmony harmony_;
  bool sparse_intro_ = false, in_break_ = false;
  TempoBand band_;
};

const TempoStyle& StyleOf(std::uint64_t seed) {
  return TempoStyles()[static_cast<std::size_t>(seed % TempoStyles().size())];
}

double ChooseBpm(SongDice& dice, const TempoStyle& style) {
  const double bpm = dice.Real(style.slowest, style.fastest);
  if (style.live) return bpm;
  return dice.Chance(0.6) ? std::round(bpm) : std::round(bpm * 100) / 100;  // as one sets a sequencer
}

SongWriter::SongWriter(std::uint64_t seed)
    : dice_(seed * 0x2545F4914F6CDD1DU + 77),
      style_(StyleOf(seed)),
      groove_(style_.grooves[static_cast<std::size_t>(dice_.Below(static_cast<int>(style_.grooves.size())))]),
      bpm_(ChooseBpm(dice_, style_)),
      seconds_(dice_.Real(60, 120)),
      begin_(dice_.Real(0.05, 1.4)),
      swing_(style_.swing * dice_.Real(0, 1)),
      sway_beats_(dice_.Real(12, 40)),
      bars_(static_cast<int>(std::ceil((seconds_ - begin_) * bpm_ / 60 / style_.beats_per_bar))),
      section_bars_(dice_.Chance(0.3) ? 4 : 8),
      harmony_(dice_),
      band_(style_, static_cast<std::size_t>(seconds_ * tools::composer::kRate), dice_.Next()) {
  sparse_intro_ = dice_.Chance(0.4);
  if (!style_.live) return;
  loose_ = dice_.Real(0.001, 0.005);
  sway_ = dice_.Chance(0.7) ? dice_.Real(0, 0.010) : 0;
  backbeat_late_ = dice_.Real(-0.004, 0.012);
}

double SongWriter::At(double beat) const {
  return begin_ + beat * 60 / bpm_ + sway_ * std::sin(2 * std::numbers::pi * beat / sway_beats_);
}

double SongWriter::StepAt(int bar, int step) const {
  const double late = step % 2 == 1 ? swing_ : 0;
  return At(bar * style_.beats_per_bar + (step + late) / kStepsPerBeat);
}

char SongWriter::Sign(std::string_view pattern, int bar, int step) const {
  const auto place = static_cast<std::size_t>(bar * StepsPerBar() + step);
  return pattern.empty() ? '.' : pattern[place % pattern.size()];
}

int SongWriter::Held(std::string_view pattern, int bar, int step, double most) const {
  int steps = 1;
  while (steps < static_cast<int>(pattern.size()) && Sign(pattern, bar, step + steps) == '.') ++steps;
  return std::min(steps, static_cast<int>(std::ceil(most)));
}

Scene SongWriter::ChooseScene(int bar) {
  Scene scene;
  const int section = bar / section_bars_;
  if (section == 0 && sparse_intro_) {
    scene.kick = scene.drums = false;
    scene.hats = dice_.Chance(0.3);
    scene.bass = dice_.Chance(0.4);
    scene.pad = true;
    return scene;
  }
  in_break_ = section > 1 && !in_break_ && dice_.Chance(0.3);
  if (in_break_) {
    scene.kick = scene.drums = scene.hats = false;
    scene.bass = dice_.Chance(0.5);
    scene.pad = scene.lead = true;
    return scene;
  }
  scene.lead = section > 0 && dice_.Chance(0.6);
  scene.pad = dice_.Chance(0.3);
  scene.chords = !dice_.Chance(0.12);
  scene.hats = !dice_.Chance(0.12);
  return scene;
}

void SongWriter::PlayPattern(Drum drum, std::string_view pattern, int bar, double share, double late) {
  for (int step = 0; step < StepsPerBar(); ++step) {
    const char sign = Sign(pattern, bar, step);
    if (sign == '.' || dice_.Chance(style_.live ? 0.02 : 0.004)) continue;
    const double level = sign == 'X' ? 1 : sign == 'x' ? 0.75 : 0.35;
    band_.Hit(drum, Stroke(bar, step) + late, share * level * (1 + dice_.Near(style_.live ? 0.12 : 0.03)));
  }
}

void SongWriter::PlayBass(int bar) {
  for (int step = 0; step < StepsPerBar(); ++step) {
    const char sign = Sign(groove_.bass, bar, step);
    if (sign == '.') continue;
    const int degree = harmony_.Degree(bar) + (sign == '5' ? 4 : sign == '8' ? 7 : 0);
    const int pitch = 28 + (harmony_.Pitch(degree) + 8) % 24;  // stays on the low strings
    const double held = Held(groove_.bass, bar, step, style_.bass_steps) * 14.0 / bpm_;
    band_.Note(Part::Bass, Stroke(bar, step), held, pitch, 1 + dice_.Near(0.1));
  }
}

void SongWriter::PlayChords(int bar) {
  for (int step = 0; step < StepsPerBar(); ++step) {
    const char sign = Sign(groove_.chords, bar, step);
    if (sign == '.') continue;
    const double level = sign == 'X' ? 1.1 : sign == 'x' ? 0.9 : 0.6;
    const double held = Held(groove_.chords, bar, step, style_.chord_steps) * 14.0 / bpm_;
    const double at = Stroke(bar, step);
    for (int voice = 0; voice < 3; ++voice) {
      const int pitch = 52 + (harmony_.Pitch(harmony_.Degree(bar) + 2 * voice) + 8) % 16;
      const double strummed = style_.live ? 0.004 * voice : 0;
      band_.Note(Part::Chords, at + strummed, held, pitch, level);
    }
  }
}

void SongWriter::PlayPad(int bar) {
  if (bar % 2 != 0) return;
  const double held = 2 * StepsPerBar() * 14.0 / bpm_;
  for (int voice = 0; voice < 3; ++voice)
    band_.Note(Part::Pad, StepAt(bar, 0), held,
               55 + (harmony_.Pitch(harmony_.Degree(bar) + 2 * voice) + 5) % 12, 1);
}

/// A tune that walks the scale, with syncopes, rests and held notes.
void SongWriter::PlayLead(int bar) {
  int step = dice_.Below(3) * 2;
  while (step < StepsPerBar()) {
    static constexpr std::array<int, 6> kLengths{2, 2, 3, 4, 6, 8};
    const int steps = std::min(kLengths[static_cast<std::size_t>(dice_.Below(6))], StepsPerBar() - step);
    tune_ = std::clamp(tune_ + dice_.Below(5) - 2, 0, 8);
    if (!dice_.Chance(0.25)) {
      const double at = Stroke(bar, step) + dice_.Near(0.008);  // singers are freer than drummers
      band_.Note(Part::Lead, at, steps * 14.0 / bpm_, 64 + harmony_.Pitch(harmony_.Degree(bar) % 2 + tune_),
                 1 + dice_.Near(0.15));
    }
    step += steps;
  }
}

void SongWriter::PlayFill(int bar) {
  const int from = StepsPerBar() - (dice_.Chance(0.5) ? 4 : 6);
  for (int step = from; step < StepsPerBar(); ++step) {
    if (dice_.Chance(0.25)) continue;
    const Drum drum = dice_.Chance(0.5) ? Drum::Snare : Drum::Tom;
    band_.Hit(drum, Stroke(bar, step), 0.5 + 0.4 * (step - from) / 6.0);
  }
}

void SongWriter::PlayBar(int bar, const Scene& scene) {
  if (scene.kick) PlayPattern(Drum::Kick, groove_.kick, bar, 1);
  if (scene.drums) {
    PlayPattern(Drum::Snare, groove_.snare, bar, 0.9, backbeat_late_);
    PlayPattern(Drum::Clap, groove_.clap, bar, 0.8, backbeat_late_);
    PlayPattern(Drum::Rim, groove_.rim, bar, 0.9, backbeat_late_);
    const bool last = bar % section_bars_ == section_bars_ - 1;
    if (last && style_.drums > 0.6 && dice_.Chance(0.6)) PlayFill(bar);
    if (bar % section_bars_ == 0 && dice_.Chance(0.6)) band_.Hit(Drum::Crash, Stroke(bar, 0), style_.drums);
  }
  if (scene.hats) {
    PlayPattern(Drum::Closed, groove_.closed, bar, 0.8);
    PlayPattern(Drum::Open, groove_.open, bar, 0.8);
    PlayPattern(Drum::Shaker, groove_.shaker, bar, 0.8);
  }
  if (scene.bass) PlayBass(bar);
  if (scene.chords) PlayChords(bar);
  if (scene.pad) PlayPad(bar);
  if (scene.lead) PlayLead(bar);
}

TempoSong SongWriter::Write() {
  Scene scene;
  for (int bar = 0; bar < bars_; ++bar) {
    if (bar % section_bars_ == 0) scene = ChooseScene(bar);
    PlayBar(bar, scene);
  }
  TempoSong song;
  song.style = style_.name;
  song.bpm = bpm_;
  song.beats_per_bar = style_.beats_per_bar;
  for (int beat = 0; At(beat) < seconds_; ++beat) song.beats.push_back(At(beat));
  song.samples = band_.Mix(ChooseMix(dice_, style_.duck));
  return song;
}

}  // namespace

TempoSong MakeTempoSong(std::uint64_t seed) {
  return SongWriter(seed).Write();
}

}  // namespace bench
