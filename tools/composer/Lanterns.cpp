// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <array>

#include "tools/composer/Songs.h"
#include "tools/composer/studio/Session.h"

namespace tools::composer {
namespace {

// C minor, two bars each. The first pitch of a chord is its bass.
const std::array<std::vector<int>, 4> kLanternsChords{
    {{36, 58, 63, 67, 70, 74}, {44, 56, 60, 63, 67, 70}, {41, 56, 60, 63, 67, 72}, {43, 58, 62, 65, 69, 72}}};

class Lanterns {
 public:
  Song Make();

 private:
  static constexpr int kBars = 38;

  void Desk();
  void Beat(int bar);
  void Bass(int bar);
  void Piano(int bar);
  void Pad(int bar);
  void Voice(int bar);
  void Bells(int bar);

  static const std::vector<int>& ChordAt(int bar) {
    return kLanternsChords[static_cast<std::size_t>(bar / 2 % 4)];
  }
  static bool In(int bar, int from, int to) { return bar >= from && bar < to; }

  Session session_{{96, 0.3}, kBars, 96};
};

void Lanterns::Desk() {
  session_.Set(Strip::Drums, {0.60, 0.08, 0, 0});
  session_.Set(Strip::Hats, {0.24, 0.10, 0.05, 0});
  session_.Set(Strip::Bass, {0.70, 0, 0, 0.3});
  session_.Set(Strip::Chords, {0.42, 0.28, 0.15, 0.15});
  session_.Set(Strip::Pad, {0.28, 0.5, 0, 0.25});
  session_.Set(Strip::Arp, {0.18, 0.45, 0.5, 0});
  session_.Set(Strip::Lead, {0.34, 0.40, 0.35, 0});
  session_.Set(Strip::Effects, {0.25, 0.4, 0, 0});
}

/// A broken beat, dusty and late.
void Lanterns::Beat(int bar) {
  if (bar < 4 || In(bar, 20, 24) || bar >= 36) return;
  Random& dice = session_.Dice();
  for (const int step : Hits(bar % 2 == 0 ? "x......x..x....." : "x.....x...x..x..")) {
    session_.BassDrum(bar, step, step == 0 ? 0.85 : 0.65, {46, 150, 0.05, 0.32});
  }
  for (const int step : Hits("....x.......x..."))
    Snare(session_.On(Strip::Drums), session_.At(bar, step), 0.55, dice, 175);
  if (bar % 4 == 3) Snare(session_.On(Strip::Drums), session_.At(bar, 15), 0.2, dice, 175);
  for (int step = 0; step < 16; ++step) {
    const double accent = step % 4 == 2 ? 0.6 : step % 2 == 0 ? 0.4 : 0.22;
    Hat(session_.On(Strip::Hats), session_.At(bar, step), accent + 0.06 * dice.Next(),
        step == 10 ? 0.12 : 0.03, dice);
    if (bar >= 12) Shaker(session_.On(Strip::Hats), session_.At(bar, step), 0.5 * accent, dice);
  }
}

void Lanterns::Bass(int bar) {
  if (bar < 4 || In(bar, 20, 22) || bar >= 37) return;
  Patch patch{.square = 0.15, .sine = 1, .cutoff_hz = 320, .sweep_octaves = 0.8, .drive = 1.2};
  patch.amp = {0.012, 0.5, 0.8, 0.12};
  patch.filter = {0.01, 0.3, 0.2, 0.1};
  const int root = ChordAt(bar).front();
  session_.Note(Strip::Bass, bar, 0, patch, {static_cast<double>(root), session_.Steps(5.5), 0.75, 0});
  if (bar % 2 == 0) {
    session_.Note(Strip::Bass, bar, 7, patch, {static_cast<double>(root), session_.Steps(2), 0.6, 0});
    session_.Note(Strip::Bass, bar, 10, patch, {static_cast<double>(root + 7), session_.Steps(4.5), 0.6, 0});
  } else {
    session_.Note(Strip::Bass, bar, 6, patch, {static_cast<double>(root + 12), session_.Steps(1.5), 0.5, 0});
    session_.Note(Strip::Bass, bar, 10, patch, {static_cast<double>(root), session_.Steps(2.5), 0.65, 0});
    session_.Note(Strip::Bass, bar, 14, patch, {static_cast<double>(root + 10), session_.Steps(1.6), 0.5, 0});
  }
}

/// An electric piano that lets its chords roll.
void Lanterns::Piano(int bar) {
  Patch patch{
      .sine = 1, .fm_ratio = 1, .fm_index = 1.5, .cutoff_hz = 5200, .vibrato_cents = 4, .vibrato_hz = 4.2};
  patch.amp = {0.004, 1.6, 0.15, 0.35};
  patch.filter = {0.001, 0.5, 0.25, 0.2};
  const std::vector<int>& chord = ChordAt(bar);
  const auto roll = [&](double step, double steps, double level) {
    for (std::size_t i = 1; i < chord.size(); ++i) {
      const double pan = -0.5 + 0.22 * static_cast<double>(i);
      session_.Note(Strip::Chords, bar, step + 0.09 * static_cast<double>(i), patch,
                    {static_cast<double>(chord[i]), session_.Steps(steps), level, pan});
    }
  };
  if (bar % 2 == 0) {
    roll(0, 7, 0.32);
    roll(10, 5, 0.22);
  } else {
    roll(4, 4, 0.22);
    if (bar % 4 == 3) roll(12, 3, 0.2);
  }
}

void Lanterns::Pad(int bar) {
  if (!(In(bar, 8, 38)) || bar % 2 != 0) return;
  Patch patch{.saw = 0.8,
              .sine = 0.4,
              .unison = 5,
              .detune_cents = 16,
              .width = 1,
              .cutoff_hz = 900,
              .sweep_octaves = 0.9};
  patch.amp = {0.9, 1, 0.9, 1.2};
  patch.filter = {2.2, 2, 0.5, 1};
  const std::vector<int>& chord = ChordAt(bar);
  session_.Chord(Strip::Pad, bar, 0, patch, {chord[2], chord[3], chord[4], chord[5]}, session_.Steps(30),
                 0.26);
}

/// A hummed tune: a soft tone that leans into its vibrato.
void Lanterns::Voice(int bar) {
  if (!(In(bar, 12, 20) || In(bar, 24, 34))) return;
  Patch patch{.saw = 0.25,
              .sine = 0.8,
              .cutoff_hz = 1700,
              .sweep_octaves = 0.3,
              .vibrato_cents = 26,
              .vibrato_hz = 5.1};
  patch.amp = {0.07, 0.6, 0.8, 0.3};
  patch.filter = {0.1, 0.5, 0.6, 0.2};
  struct Tone {
    double step, pitch, steps;
  };
  static const std::array<std::vector<Tone>, 8> kTune{{{{2, 67, 3}, {6, 70, 3}, {10, 72, 5.5}},
                                                       {{0, 70, 3}, {4, 67, 8}},
                                                       {{2, 67, 2}, {5, 68, 2}, {8, 72, 7}},
                                                       {{2, 70, 3}, {6, 67, 2}, {9, 63, 6}},
                                                       {{2, 65, 3}, {6, 67, 3}, {10, 68, 5.5}},
                                                       {{0, 72, 4}, {5, 70, 2}, {8, 68, 6}},
                                                       {{2, 67, 2}, {5, 65, 2}, {8, 62, 4}, {13, 65, 3}},
                                                       {{0, 67, 12}}}};
  for (const Tone& tone : kTune[static_cast<std::size_t>(bar % 8)]) {
    session_.Note(Strip::Lead, bar, tone.step, patch,
                  {tone.pitch + (bar >= 28 ? 12 : 0), session_.Steps(tone.steps), 0.5, -0.05});
  }
}

void Lanterns::Bells(int bar) {
  if (In(bar, 4, 8) || bar >= 36) return;
  Patch patch{.sine = 1, .fm_ratio = 3.5, .fm_index = 1.2, .cutoff_hz = 9000};
  patch.amp = {0.001, 0.5, 0, 0.4};
  patch.filter = {0.001, 0.12, 0, 0.1};
  const std::vector<int>& chord = ChordAt(bar);
  for (const int step : Hits(bar % 2 == 0 ? "......x.....x..." : "x.......x....x..")) {
    const std::size_t which = static_cast<std::size_t>(2 + (step + bar) % 4);
    session_.Note(
        Strip::Arp, bar, step, patch,
        {static_cast<double>(chord[which] + 24), session_.Steps(2), 0.35, step % 8 == 0 ? -0.6 : 0.6});
  }
}

Song Lanterns::Make() {
  Desk();
  for (int bar = 0; bar < kBars; ++bar) {
    Beat(bar);
    Bass(bar);
    Piano(bar);
    Pad(bar);
    Voice(bar);
    Bells(bar);
  }
  session_.Sweep(Strip::Chords, 0, 4, 600, 6000);
  Song song;
  song.file_name = "Mira Solano - Paper Lanterns.flac";
  song.tags.artist = "Mira Solano";
  song.tags.title = "Paper Lanterns";
  song.tags.album = "Late Ferry";
  song.tags.genre = "Downtempo";
  song.tags.year = "2022";
  song.tags.bpm = "96";
  song.sound = session_.Mix({.head_seconds = 1.2,
                             .tail_seconds = 2.4,
                             .reverb_seconds = 2.8,
                             .reverb_hz = 3800,
                             .echo_steps = 3,
                             .lufs = -11.5});
  return song;
}

}  // namespace

Song MakeLanterns() {
  return Lanterns().Make();
}

}  // namespace tools::composer
