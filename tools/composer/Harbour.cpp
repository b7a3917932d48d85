// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <array>

#include "tools/composer/Songs.h"
#include "tools/composer/studio/Session.h"

namespace tools::composer {
namespace {

// A minor; four chords, two bars each. The first pitch of a chord is its bass.
const std::array<std::vector<int>, 4> kHarbourChords{
    {{45, 60, 64, 67, 71}, {41, 60, 64, 65, 69}, {48, 59, 64, 67, 71}, {43, 59, 62, 67, 69}}};

class Harbour {
 public:
  Song Make();

 private:
  static constexpr int kBars = 56;

  void Desk();
  void Beat(int bar);
  void Bass(int bar);
  void Stabs(int bar);
  void Pad(int bar);
  void Arpeggio(int bar);
  void Lead(int bar);
  void Turns();

  static const std::vector<int>& ChordAt(int bar) {
    return kHarbourChords[static_cast<std::size_t>(bar / 2 % 4)];
  }
  static bool In(int bar, int from, int to) { return bar >= from && bar < to; }

  Session session_{{124, 0.12}, kBars, 124};
};

void Harbour::Desk() {
  session_.Set(Strip::Drums, {0.56, 0.03, 0, 0});
  session_.Set(Strip::Hats, {0.30, 0.06, 0, 0});
  session_.Set(Strip::Bass, {0.60, 0, 0, 0.55});
  session_.Set(Strip::Chords, {0.42, 0.30, 0.28, 0.45});
  session_.Set(Strip::Pad, {0.42, 0.35, 0, 0.6});
  session_.Set(Strip::Arp, {0.26, 0.25, 0.40, 0.35});
  session_.Set(Strip::Lead, {0.40, 0.30, 0.35, 0.2});
  session_.Set(Strip::Effects, {0.30, 0.30, 0.1, 0});
}

void Harbour::Beat(int bar) {
  const bool breakdown = In(bar, 28, 35);
  Random& dice = session_.Dice();
  if (!breakdown) {
    for (const int step : Hits("x...x...x...x...")) session_.BassDrum(bar, step, 0.9);
  }
  if (!breakdown || bar >= 32) {
    for (const int step : Hits("..x...x...x...x.")) {
      Hat(session_.On(Strip::Hats), session_.At(bar, step), 0.8, 0.13, dice);
    }
  }
  if (bar >= 4 && !breakdown) {
    for (const int step : Hits("x.xxx.xxx.xxx.xx")) {
      Hat(session_.On(Strip::Hats), session_.At(bar, step), 0.35 + 0.1 * dice.Next(), 0.035, dice, -0.2);
    }
    for (int step = 0; step < 16; ++step) {
      Shaker(session_.On(Strip::Hats), session_.At(bar, step), step % 4 == 2 ? 0.7 : 0.35, dice);
    }
  }
  if (In(bar, 8, 28) || In(bar, 36, 52)) {
    for (const int step : Hits("....x.......x..."))
      Clap(session_.On(Strip::Drums), session_.At(bar, step), 0.75, dice);
    if (bar % 8 == 7) Snare(session_.On(Strip::Drums), session_.At(bar, 15), 0.35, dice);
  }
}

void Harbour::Bass(int bar) {
  if (!(In(bar, 8, 28) || In(bar, 36, 54))) return;
  Patch patch{.saw = 0.6,
              .square = 0.3,
              .sine = 0.6,
              .cutoff_hz = 170,
              .sweep_octaves = 2.2,
              .resonance = 1.1,
              .drive = 1.4};
  patch.amp = {0.004, 0.18, 0.6, 0.05};
  patch.filter = {0.002, 0.14, 0.1, 0.05};
  const int root = ChordAt(bar).front() - 12;
  for (const int step : Hits(bar % 2 == 0 ? "..x...x..xx...x." : "..x...x...x..xx.")) {
    const double up = step == 9 || step == 13 ? 12 : 0;
    session_.Note(Strip::Bass, bar, step, patch,
                  {root + 12 + up - 12 * (step == 14), session_.Steps(1.6), 0.8, 0});
  }
}

void Harbour::Stabs(int bar) {
  if (!(In(bar, 0, 28) || In(bar, 32, 52))) return;
  Patch patch{.saw = 0.7,
              .square = 0.3,
              .unison = 3,
              .detune_cents = 14,
              .width = 0.5,
              .cutoff_hz = 700,
              .sweep_octaves = 2.2,
              .resonance = 0.9};
  patch.amp = {0.003, 0.22, 0.15, 0.12};
  patch.filter = {0.002, 0.2, 0.1, 0.1};
  const std::vector<int> upper(ChordAt(bar).begin() + 1, ChordAt(bar).end());
  for (const int step : Hits(bar % 2 == 0 ? "...x..x.....x..." : "...x..x...x..x..")) {
    session_.Chord(Strip::Chords, bar, step, patch, upper, session_.Steps(1.3), 0.32);
  }
}

void Harbour::Pad(int bar) {
  if (!(In(bar, 16, 36) || In(bar, 44, 56)) || bar % 2 != 0) return;
  Patch patch{
      .saw = 1, .unison = 5, .detune_cents = 22, .width = 0.9, .cutoff_hz = 1500, .sweep_octaves = 0.6};
  patch.amp = {0.5, 1, 0.9, 0.7};
  patch.filter = {1.5, 2, 0.6, 0.5};
  const std::vector<int> upper(ChordAt(bar).begin() + 1, ChordAt(bar).end());
  session_.Chord(Strip::Pad, bar, 0, patch, upper, session_.Steps(30), 0.24);
  Patch floor{.sine = 1, .cutoff_hz = 400};
  floor.amp = {0.3, 1, 0.9, 0.5};
  if (In(bar, 28, 36))
    session_.Note(Strip::Bass, bar, 0, floor, {ChordAt(bar).front() - 0.0, session_.Steps(30), 0.35, 0});
}

void Harbour::Arpeggio(int bar) {
  if (!(In(bar, 12, 28) || In(bar, 30, 52))) return;
  Patch patch{.square = 0.5, .sine = 0.6, .cutoff_hz = 1400, .sweep_octaves = 1.8, .resonance = 1.2};
  patch.amp = {0.002, 0.12, 0.1, 0.08};
  patch.filter = {0.001, 0.09, 0, 0.05};
  const std::vector<int>& chord = ChordAt(bar);
  constexpr std::array<int, 16> kOrder{1, 3, 2, 4, 3, 1, 4, 2, 1, 3, 2, 4, 2, 3, 4, 3};
  for (int step = 0; step < 16; ++step) {
    if (step % 8 == 5 || (step * 3 + bar) % 7 == 0) continue;  // it breathes
    const int pitch = chord[static_cast<std::size_t>(kOrder[static_cast<std::size_t>(step)])] + 12;
    session_.Note(Strip::Arp, bar, step, patch,
                  {static_cast<double>(pitch), session_.Steps(0.7), step % 4 == 0 ? 0.55 : 0.4,
                   step % 2 == 0 ? -0.4 : 0.4});
  }
}

void Harbour::Lead(int bar) {
  if (!(In(bar, 20, 28) || In(bar, 36, 52))) return;
  Patch patch{.saw = 0.7,
              .sine = 0.4,
              .unison = 2,
              .detune_cents = 9,
              .width = 0.3,
              .cutoff_hz = 2200,
              .sweep_octaves = 0.7,
              .vibrato_cents = 14};
  patch.amp = {0.02, 0.4, 0.7, 0.18};
  patch.filter = {0.02, 0.5, 0.4, 0.2};
  struct Tone {
    double step, pitch, steps;
  };
  static const std::array<std::vector<Tone>, 8> kTune{{{{0, 76, 5}, {6, 74, 3}, {10, 72, 5}},
                                                       {{0, 71, 3}, {4, 72, 3}, {8, 67, 7}},
                                                       {{0, 72, 5}, {6, 76, 3}, {10, 77, 5}},
                                                       {{0, 76, 3}, {4, 72, 3}, {8, 69, 7}},
                                                       {{0, 79, 5}, {6, 76, 3}, {10, 74, 5}},
                                                       {{0, 76, 3}, {4, 71, 3}, {8, 67, 7}},
                                                       {{0, 74, 5}, {6, 71, 3}, {10, 69, 5}},
                                                       {{0, 67, 3}, {4, 69, 3}, {8, 71, 7}}}};
  for (const Tone& tone : kTune[static_cast<std::size_t>(bar % 8)]) {
    session_.Note(Strip::Lead, bar, tone.step, patch, {tone.pitch, session_.Steps(tone.steps), 0.45, 0.08});
  }
}

/// What leads from one part to the next.
void Harbour::Turns() {
  Random& dice = session_.Dice();
  for (const int bar : {8, 16, 36, 44}) Crash(session_.On(Strip::Effects), session_.At(bar, 0), 0.5, dice);
  Riser(session_.On(Strip::Effects), session_.At(32, 0), session_.At(36, 0) - session_.At(32, 0), 0.8, dice);
  for (int step = 0; step < 16; ++step) {
    Snare(session_.On(Strip::Drums), session_.At(35, step), 0.15 + 0.03 * step, dice, 210);
    if (step % 2 == 0) Snare(session_.On(Strip::Drums), session_.At(34, step), 0.1 + 0.01 * step, dice, 200);
  }
  session_.Sweep(Strip::Chords, 0, 8, 350, 9000);
  session_.Sweep(Strip::Chords, 32, 4, 500, 9000);
  session_.Sweep(Strip::Pad, 28, 8, 700, 9000);
}

Song Harbour::Make() {
  Desk();
  for (int bar = 0; bar < kBars; ++bar) {
    Beat(bar);
    Bass(bar);
    Stabs(bar);
    Pad(bar);
    Arpeggio(bar);
    Lead(bar);
  }
  Turns();
  Song song;
  song.file_name = "Lumen and Tide - Neon Harbour.mp3";
  song.tags.artist = "Lumen & Tide";
  song.tags.title = "Neon Harbour";
  song.tags.album = "Quay Lights";
  song.tags.genre = "House";
  song.tags.year = "2024";
  song.tags.bpm = "124";
  song.sound = session_.Mix(
      {.head_seconds = 0.35, .tail_seconds = 1.6, .reverb_seconds = 1.9, .echo_steps = 3, .lufs = -10.0});
  return song;
}

}  // namespace

Song MakeHarbour() {
  return Harbour().Make();
}

}  // namespace tools::composer
