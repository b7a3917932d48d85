// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <array>

#include "tools/composer/Songs.h"
#include "tools/composer/studio/Session.h"

namespace tools::composer {
namespace {

// D minor: one bar each, eight bars round. The first pitch of a chord is its bass.
const std::array<std::vector<int>, 8> kRollersChords{{{38, 60, 65, 69, 74},
                                                      {43, 59, 65, 69, 74},
                                                      {36, 58, 64, 67, 72},
                                                      {41, 57, 64, 69, 72},
                                                      {46, 58, 62, 65, 69},
                                                      {43, 58, 62, 65, 70},
                                                      {45, 57, 61, 67, 72},
                                                      {45, 57, 64, 67, 73}}};

class Rollers {
 public:
  Song Make();

 private:
  static constexpr int kBars = 50;

  void Desk();
  void Beat(int bar);
  void Bass(int bar);
  void Guitar(int bar);
  void Keys(int bar);
  void Strings(int bar);
  void Horns(int bar);

  static const std::vector<int>& ChordAt(int bar) {
    return kRollersChords[static_cast<std::size_t>(bar % 8)];
  }
  static bool In(int bar, int from, int to) { return bar >= from && bar < to; }

  Session session_{{118, 0.08}, kBars, 118};
};

void Rollers::Desk() {
  session_.Set(Strip::Drums, {0.62, 0.06, 0, 0});
  session_.Set(Strip::Hats, {0.30, 0.05, 0, 0});
  session_.Set(Strip::Bass, {0.72, 0.01, 0, 0.2});
  session_.Set(Strip::Chords, {0.62, 0.10, 0.08, 0});
  session_.Set(Strip::Pad, {0.38, 0.40, 0, 0.1});
  session_.Set(Strip::Arp, {0.34, 0.14, 0.10, 0});
  session_.Set(Strip::Lead, {0.40, 0.25, 0.12, 0});
  session_.Set(Strip::Effects, {0.28, 0.30, 0, 0});
}

void Rollers::Beat(int bar) {
  Random& dice = session_.Dice();
  const bool breakdown = In(bar, 26, 30);
  if (!breakdown) {
    for (const int step : Hits("x...x...x...x...")) session_.BassDrum(bar, step, 0.85, {54, 190, 0.03, 0.2});
  }
  if (bar >= 2) {
    for (const int step : Hits("..x...x...x...x."))
      Hat(session_.On(Strip::Hats), session_.At(bar, step), 0.75, 0.2, dice);
    for (const int step : Hits("xx.xxx.xxx.xxx.x")) {
      Hat(session_.On(Strip::Hats), session_.At(bar, step), 0.3 + 0.08 * dice.Next(), 0.03, dice, 0.3);
    }
  }
  if (bar >= 4 && !In(bar, 26, 28)) {
    for (const int step : Hits("....x.......x...")) {
      Snare(session_.On(Strip::Drums), session_.At(bar, step), 0.6, dice, 205);
      Clap(session_.On(Strip::Drums), session_.At(bar, step), 0.4, dice);
    }
    if (bar % 4 == 3) Snare(session_.On(Strip::Drums), session_.At(bar, 14), 0.3, dice, 215);
  }
  if (bar % 8 == 7) {
    constexpr std::array<double, 4> kToms{190, 160, 130, 105};
    for (std::size_t i = 0; i < kToms.size(); ++i) {
      Tom(session_.On(Strip::Drums), session_.At(bar, 12 + static_cast<double>(i)), 0.5, kToms[i],
          -0.4 + 0.27 * static_cast<double>(i));
    }
  }
  if (bar % 8 == 0 && bar > 0) Crash(session_.On(Strip::Effects), session_.At(bar, 0), 0.45, dice);
}

/// Octaves on the eighths, and a run to the next chord.
void Rollers::Bass(int bar) {
  if (bar < 4 || In(bar, 26, 28) || bar >= 48) return;
  Patch patch{.saw = 0.5,
              .square = 0.2,
              .sine = 0.9,
              .cutoff_hz = 260,
              .sweep_octaves = 2,
              .resonance = 0.9,
              .drive = 1.3};
  patch.amp = {0.003, 0.16, 0.55, 0.04};
  patch.filter = {0.001, 0.1, 0.15, 0.03};
  const int root = ChordAt(bar).front(), next = ChordAt(bar + 1).front();
  for (const int step : Hits("x.x.x.x.x.x.x...")) {
    const bool high = step % 4 == 2;
    session_.Note(
        Strip::Bass, bar, step, patch,
        {static_cast<double>(root + (high ? 12 : 0)), session_.Steps(high ? 1 : 1.7), high ? 0.62 : 0.78, 0});
  }
  const int way = next > root ? 1 : -1;
  session_.Note(Strip::Bass, bar, 14, patch,
                {static_cast<double>(next - 2 * way), session_.Steps(0.8), 0.6, 0});
  session_.Note(Strip::Bass, bar, 15, patch, {static_cast<double>(next - way), session_.Steps(0.8), 0.6, 0});
}

/// A scratched rhythm guitar: short plucked chords, some of them only damped strings.
void Rollers::Guitar(int bar) {
  if (bar >= 46) return;
  const std::vector<int>& chord = ChordAt(bar);
  for (const int step : Hits(bar % 2 == 0 ? "x.xx..x.xxx..xx." : "x.xx..xx.xx.x.x.")) {
    const bool damped = step % 4 == 1 || step % 8 == 3;
    for (std::size_t i = 2; i < chord.size(); ++i) {
      const double late = 0.04 * static_cast<double>(i);
      const double level = (damped ? 0.25 : 0.42) * (1 + 0.1 * session_.Dice().Next());
      Pluck(session_.On(Strip::Chords), session_.At(bar, step + late),
            {static_cast<double>(chord[i] + 12), session_.Steps(damped ? 0.25 : 0.75), level, -0.45},
            damped ? 0.4 : 0.9, session_.Dice());
    }
  }
}

void Rollers::Keys(int bar) {
  if (bar < 8 || bar >= 46) return;
  Patch patch{.saw = 0.4, .square = 0.5, .cutoff_hz = 900, .sweep_octaves = 2.4, .resonance = 2.0};
  patch.amp = {0.002, 0.14, 0.2, 0.05};
  patch.filter = {0.001, 0.09, 0.1, 0.03};
  const std::vector<int>& chord = ChordAt(bar);
  for (const int step : Hits("x..x...x..x.x..x")) {
    session_.Note(Strip::Arp, bar, step, patch,
                  {static_cast<double>(chord[step % 3 == 0 ? 1 : 2]), session_.Steps(0.7), 0.5, 0.4});
    session_.Note(Strip::Arp, bar, step, patch,
                  {static_cast<double>(chord[step % 2 == 0 ? 3 : 4]), session_.Steps(0.7), 0.4, 0.4});
  }
}

/// Strings: the chord lies, and on top a line that falls.
void Rollers::Strings(int bar) {
  if (!(In(bar, 12, 48))) return;
  Patch patch{.saw = 1,
              .unison = 5,
              .detune_cents = 18,
              .width = 0.8,
              .cutoff_hz = 2600,
              .sweep_octaves = 0.4,
              .vibrato_cents = 7};
  patch.amp = {0.09, 0.8, 0.85, 0.25};
  patch.filter = {0.2, 1, 0.7, 0.2};
  const std::vector<int>& chord = ChordAt(bar);
  session_.Chord(Strip::Pad, bar, 0, patch, {chord[3], chord[4]}, session_.Steps(14.5), 0.28);
  if (!(In(bar, 20, 28) || In(bar, 36, 44))) return;
  constexpr std::array<int, 8> kTop{81, 79, 77, 76, 74, 74, 73, 76};
  const double top = kTop[static_cast<std::size_t>(bar % 8)];
  session_.Note(Strip::Pad, bar, 0, patch, {top + 12, session_.Steps(6), 0.3, 0.1});
  session_.Note(Strip::Pad, bar, 8, patch,
                {top + 12 - (bar % 2 == 0 ? 2 : 1), session_.Steps(6.5), 0.26, 0.1});
}

/// Short answers of the brass.
void Rollers::Horns(int bar) {
  if (!(In(bar, 16, 26) || In(bar, 30, 46))) return;
  Patch patch{.saw = 0.9,
              .square = 0.2,
              .unison = 3,
              .detune_cents = 10,
              .width = 0.4,
              .cutoff_hz = 900,
              .sweep_octaves = 2,
              .resonance = 0.8};
  patch.amp = {0.025, 0.2, 0.7, 0.08};
  patch.filter = {0.03, 0.18, 0.5, 0.08};
  const std::vector<int>& chord = ChordAt(bar);
  const std::vector<int> upper{chord[2] + 12, chord[3] + 12, chord[4] + 12};
  for (const int step : Hits(bar % 4 == 1 ? "......x..x..x..." : bar % 4 == 3 ? "..x..x..x.x....." : "")) {
    session_.Chord(Strip::Lead, bar, step, patch, upper, session_.Steps(1.4), 0.32);
  }
}

Song Rollers::Make() {
  Desk();
  for (int bar = 0; bar < kBars; ++bar) {
    Beat(bar);
    Bass(bar);
    Guitar(bar);
    Keys(bar);
    Strings(bar);
    Horns(bar);
  }
  session_.Sweep(Strip::Chords, 26, 4, 400, 12000);
  Song song;
  song.file_name = "The Velvet Elevators - Roller Skate Sunday.ogg";
  song.tags.artist = "The Velvet Elevators";
  song.tags.title = "Roller Skate Sunday";
  song.tags.album = "Mezzanine Hits";
  song.tags.genre = "Disco";
  song.tags.year = "2023";
  song.tags.bpm = "118";
  song.sound = session_.Mix(
      {.head_seconds = 0.8, .tail_seconds = 0.9, .reverb_seconds = 1.4, .echo_steps = 3, .lufs = -10.5});
  return song;
}

}  // namespace

Song MakeRollers() {
  return Rollers().Make();
}

}  // namespace tools::composer
