// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <array>

#include "tools/composer/Songs.h"
#include "tools/composer/studio/Session.h"

namespace tools::composer {
namespace {

// E minor, two bars each. The first pitch of a chord is its bass.
const std::array<std::vector<int>, 4> kBeaconsChords{
    {{40, 59, 64, 67, 71}, {36, 60, 64, 67, 72}, {43, 59, 62, 67, 74}, {38, 57, 62, 66, 69}}};

class Beacons {
 public:
  Song Make();

 private:
  static constexpr int kBars = 56;

  void Desk();
  void Beat(int bar);
  void Bass(int bar);
  void Sequence(int bar);
  void Pad(int bar);
  void Anthem(int bar);
  void Turns();

  static const std::vector<int>& ChordAt(int bar) {
    return kBeaconsChords[static_cast<std::size_t>(bar / 2 % 4)];
  }
  static bool In(int bar, int from, int to) { return bar >= from && bar < to; }

  Session session_{{128, 0}, kBars, 128};
};

void Beacons::Desk() {
  session_.Set(Strip::Drums, {0.60, 0.02, 0, 0});
  session_.Set(Strip::Hats, {0.30, 0.05, 0, 0});
  session_.Set(Strip::Bass, {0.58, 0, 0, 0.7});
  session_.Set(Strip::Chords, {0.26, 0.25, 0.30, 0.5});
  session_.Set(Strip::Pad, {0.42, 0.45, 0, 0.6});
  session_.Set(Strip::Arp, {0.32, 0.22, 0.40, 0.4});
  session_.Set(Strip::Lead, {0.44, 0.32, 0.30, 0.45});
  session_.Set(Strip::Effects, {0.32, 0.30, 0.1, 0});
}

void Beacons::Beat(int bar) {
  const bool breakdown = In(bar, 24, 32);
  Random& dice = session_.Dice();
  if (breakdown) return;
  for (const int step : Hits("x...x...x...x...")) session_.BassDrum(bar, step, 0.95, {50, 260, 0.035, 0.24});
  if (bar >= 4) {
    for (const int step : Hits("..x...x...x...x."))
      Hat(session_.On(Strip::Hats), session_.At(bar, step), 0.9, 0.16, dice);
  }
  if (bar >= 8) {
    for (int step = 0; step < 16; ++step) {
      Hat(session_.On(Strip::Hats), session_.At(bar, step), step % 4 == 0 ? 0.2 : 0.34, 0.03, dice,
          step % 2 == 0 ? -0.3 : 0.3);
    }
  }
  if (In(bar, 8, 50)) {
    for (const int step : Hits("....x.......x..."))
      Clap(session_.On(Strip::Drums), session_.At(bar, step), 0.7, dice);
  }
}

/// The rolling bass: between the drum's beats, on every sixteenth.
void Beacons::Bass(int bar) {
  if (!(In(bar, 4, 24) || In(bar, 32, 54))) return;
  Patch patch{
      .saw = 0.8, .sine = 0.6, .cutoff_hz = 190, .sweep_octaves = 1.9, .resonance = 1.3, .drive = 1.5};
  patch.amp = {0.002, 0.1, 0.5, 0.03};
  patch.filter = {0.001, 0.08, 0.1, 0.03};
  const double root = ChordAt(bar).front() - (ChordAt(bar).front() > 40 ? 12 : 0);
  for (const int step : Hits(".xxx.xxx.xxx.xxx")) {
    session_.Note(Strip::Bass, bar, step, patch,
                  {root + (step % 4 == 3 && bar % 2 == 1 ? 12 : 0), session_.Steps(0.8),
                   step % 4 == 2 ? 0.85 : 0.65, 0});
  }
}

void Beacons::Sequence(int bar) {
  if (bar >= 52) return;
  Patch patch{.saw = 0.8,
              .square = 0.2,
              .unison = 2,
              .detune_cents = 12,
              .width = 0.5,
              .cutoff_hz = 900,
              .sweep_octaves = 2.4,
              .resonance = 1.6};
  patch.amp = {0.002, 0.12, 0.15, 0.06};
  patch.filter = {0.001, 0.1, 0.05, 0.05};
  const std::vector<int>& chord = ChordAt(bar);
  constexpr std::array<int, 16> kOrder{1, 2, 4, 3, 1, 4, 2, 3, 4, 2, 1, 3, 4, 3, 2, 4};
  for (int step = 0; step < 16; ++step) {
    const int pitch =
        chord[static_cast<std::size_t>(kOrder[static_cast<std::size_t>(step)])] + (step % 3 == 2 ? 12 : 0);
    session_.Note(Strip::Arp, bar, step, patch,
                  {static_cast<double>(pitch), session_.Steps(0.7), step % 4 == 0 ? 0.5 : 0.36,
                   0.45 * (step % 2 == 0 ? -1 : 1)});
  }
}

void Beacons::Pad(int bar) {
  if (!In(bar, 12, 56) || bar % 2 != 0) return;
  Patch patch{.saw = 1, .unison = 7, .detune_cents = 26, .width = 1, .cutoff_hz = 2000, .sweep_octaves = 0.8};
  patch.amp = {0.4, 1, 0.9, 0.8};
  patch.filter = {1.2, 2, 0.6, 0.6};
  const std::vector<int> upper(ChordAt(bar).begin() + 1, ChordAt(bar).end());
  session_.Chord(Strip::Pad, bar, 0, patch, upper, session_.Steps(30), 0.22);
}

/// The tune of the break, and of what comes after it with more voices.
void Beacons::Anthem(int bar) {
  if (!In(bar, 24, 48)) return;
  const bool full = bar >= 32;
  Patch patch{.saw = 1,
              .unison = full ? 6 : 2,
              .detune_cents = full ? 24.0 : 8.0,
              .width = 0.7,
              .cutoff_hz = full ? 3600.0 : 1400.0,
              .sweep_octaves = 0.8,
              .vibrato_cents = 8};
  patch.amp = {0.01, 0.3, 0.7, 0.16};
  patch.filter = {0.01, 0.4, 0.4, 0.2};
  struct Tone {
    double step, pitch, steps;
  };
  static const std::array<std::vector<Tone>, 8> kTune{
      {{{0, 71, 3}, {3, 71, 3}, {6, 76, 4}, {10, 74, 2}, {12, 71, 4}},
       {{0, 67, 6}, {6, 69, 4}, {10, 71, 6}},
       {{0, 72, 3}, {3, 72, 3}, {6, 76, 4}, {10, 74, 2}, {12, 72, 4}},
       {{0, 67, 6}, {6, 69, 4}, {10, 72, 6}},
       {{0, 74, 3}, {3, 74, 3}, {6, 79, 4}, {10, 78, 2}, {12, 74, 4}},
       {{0, 71, 6}, {6, 74, 4}, {10, 76, 6}},
       {{0, 78, 3}, {3, 76, 3}, {6, 74, 4}, {10, 73, 2}, {12, 74, 4}},
       {{0, 69, 10}, {12, 66, 4}}}};
  for (const Tone& tone : kTune[static_cast<std::size_t>(bar % 8)]) {
    session_.Note(Strip::Lead, bar, tone.step, patch,
                  {tone.pitch, session_.Steps(tone.steps * 0.92), 0.42, 0});
    if (full)
      session_.Note(Strip::Lead, bar, tone.step, patch,
                    {tone.pitch + 12, session_.Steps(tone.steps * 0.9), 0.2, 0.2});
  }
}

void Beacons::Turns() {
  Random& dice = session_.Dice();
  for (const int bar : {8, 16, 32, 40, 48})
    Crash(session_.On(Strip::Effects), session_.At(bar, 0), 0.55, dice);
  Riser(session_.On(Strip::Effects), session_.At(28, 0), session_.At(32, 0) - session_.At(28, 0), 0.9, dice);
  Riser(session_.On(Strip::Effects), session_.At(14, 0), session_.At(16, 0) - session_.At(14, 0), 0.4, dice);
  for (int step = 0; step < 32; ++step) {
    const int bar = 30 + step / 16;
    if (bar == 30 && step % 2 == 1) continue;
    Snare(session_.On(Strip::Drums), session_.At(bar, step % 16), 0.1 + 0.015 * step, dice, 215);
  }
  session_.Sweep(Strip::Arp, 0, 16, 260, 7000);
  session_.Sweep(Strip::Arp, 24, 8, 400, 9000);
  session_.Sweep(Strip::Pad, 24, 8, 500, 9000);
  session_.Sweep(Strip::Arp, 48, 4, 7000, 500);
}

Song Beacons::Make() {
  Desk();
  for (int bar = 0; bar < kBars; ++bar) {
    Beat(bar);
    Bass(bar);
    Sequence(bar);
    Pad(bar);
    Anthem(bar);
  }
  Turns();
  Song song;
  song.file_name = "Aurora Vector - Signal Fires.wma";
  song.tags.artist = "Aurora Vector";
  song.tags.title = "Signal Fires";
  song.tags.album = "Beacons";
  song.tags.genre = "Trance";
  song.tags.year = "2025";
  song.tags.bpm = "128";
  song.sound = session_.Mix(
      {.head_seconds = 0.15, .tail_seconds = 1.2, .reverb_seconds = 2.2, .echo_steps = 3, .lufs = -9.8});
  return song;
}

}  // namespace

Song MakeBeacons() {
  return Beacons().Make();
}

}  // namespace tools::composer
