// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/lists/MixPlan.h"

#include <algorithm>
#include <cmath>

namespace app {
namespace {

using std::chrono::microseconds;

microseconds Stretch(microseconds time, double speed) {
  return microseconds(std::llround(static_cast<double>(time.count()) * speed));
}

}  // namespace

microseconds Lasting(microseconds stretch, double speed) {
  return microseconds(std::llround(static_cast<double>(stretch.count()) / std::max(speed, 0.01)));
}

MixPlan PlanMix(const DeckView& playing, const MixWishes& wishes) {
  constexpr microseconds kJust{50'000};  // what the crossfader needs no time for
  const microseconds end = playing.length;
  microseconds place = end - Stretch(wishes.mix_time, playing.speed);
  microseconds sounds_until = end;
  if (wishes.at_mix_points && playing.has_mix_points && playing.end_mix_point > microseconds(0)) {
    place = std::min(playing.end_mix_point, end);
    sounds_until = std::min(end, playing.found.end.value_or(end));
  }
  // A file that is shorter than the mix is heard once before it goes.
  if (place <= playing.start_mix_point) place = end;
  if (playing.position > place) place = end;
  const microseconds left = Lasting(std::max(microseconds(0), sounds_until - place), playing.speed);
  const microseconds fade = std::min<microseconds>(left, wishes.mix_time);
  return {place, fade > kJust ? fade : microseconds(0)};
}

int NextRow(const catalogue::track_table& playlist, const Files& played, const Files& passed_over) {
  int next = 0;
  std::string name;
  playlist.VisitColumn(catalogue::track::kFilename, [&](int row, std::string_view file) {
    name = file;
    if (!name.empty() && !played.contains(name) && !passed_over.contains(name)) next = row;
    return next == 0;
  });
  return next;
}

int CrossfaderAt(int from, int to_deck, double share) {
  return static_cast<int>(std::lround(PlaceOfFade(from, to_deck, share)));
}

double PlaceOfFade(int from, int to_deck, double share) {
  const int end = to_deck == 1 ? -100 : 100;
  return from + (end - from) * std::clamp(share, 0.0, 1.0);
}

}  // namespace app
