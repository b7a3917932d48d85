// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "decks/GridFit.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <span>

#include "decks/Rhythm.h"

namespace decks {
namespace {

using music::Seconds;

constexpr std::size_t kFewestBeats = 8;
/// The tempi that people mix by, in beats a second.
constexpr double kSlowest = 78.0 / 60;
constexpr double kFastest = 186.0 / 60;
/// Enough to find a tempo in; the rest of a track only sharpens it.
constexpr Seconds kEnough{120};
/// Stretches over which the phase of an even grid has to stay the same.
constexpr int kStretch = 12;

double Median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

struct Pulse {
  double frequency = 0;
  double strength = 0;
};

Pulse Best(const Rhythm& rhythm, const Rhythm::Stretch& stretch, double around, double reach, double step) {
  Pulse best{around, rhythm.PulseAt(around, stretch)};
  for (double f = around - reach; f <= around + reach; f += step) {
    const double strength = rhythm.PulseAt(f, stretch);
    if (strength > best.strength) best = {f, strength};
  }
  return best;
}

double LengthOf(const Rhythm::Stretch& stretch) {
  return static_cast<double>(stretch.to - stretch.from) / music::Wave::kColumnsASecond;
}

/// The strongest pulse near a frequency, in the middle of the track.
Pulse Near(const Rhythm& rhythm, double frequency) {
  const auto stretch = rhythm.Middle(kEnough);
  const double step = 0.2 / LengthOf(stretch);
  const Pulse coarse = Best(rhythm, stretch, frequency, 0.03 * frequency, step);
  return Best(rhythm, stretch, coarse.frequency, step, step / 8);
}

/// The same pulse, as exact as the whole track allows.
Pulse Sharpened(const Rhythm& rhythm, Pulse pulse) {
  double length = LengthOf(rhythm.Middle(kEnough));
  const double whole = LengthOf(rhythm.Whole());
  for (;; length = std::min(whole, 2 * length)) {
    const auto stretch = rhythm.Middle(Seconds(length));
    pulse = Best(rhythm, stretch, pulse.frequency, 0.04 / length, 0.01 / length);
    if (length >= whole) break;
  }
  return Best(rhythm, rhythm.Whole(), pulse.frequency, 0.01 / whole, 0.002 / whole);
}

/// The tracker's tempo, or one at a ratio of small numbers to it that answers much better.
Pulse Strongest(const Rhythm& rhythm, double tracked) {
  // A faster pulse takes more of whatever there is, as triplets do.
  constexpr double kBetterWhenSlower = 1.25;
  constexpr double kBetterWhenFaster = 1.9;
  const Pulse own = Near(rhythm, tracked);
  Pulse best = own;
  for (const double ratio : {3.0 / 2, 2.0 / 3, 4.0 / 3, 3.0 / 4}) {
    if (tracked * ratio < kSlowest || tracked * ratio > kFastest) continue;
    const Pulse other = Near(rhythm, tracked * ratio);
    const double needed = own.strength * (ratio > 1 ? kBetterWhenFaster : kBetterWhenSlower);
    if (other.strength > std::max(needed, best.strength)) best = other;
  }
  return best;
}

/// Chooses between a slow tempo and its double, where both are ones that people mix by.
///
/// The high strokes of a slow beat are stronger at its halves than between them; where they are as strong at
/// all quarters, and exact, they are the halves of a fast beat. And a slow beat that nothing answers to, as
/// in bars of three, is none.
bool IsDouble(const Rhythm& rhythm, double slow) {
  const auto stretch = rhythm.Middle(kEnough);
  const auto share = [&](Rhythm::Band band, double multiple) {
    return rhythm.Share(band, multiple * slow, stretch);
  };
  constexpr double kClear = 0.3;
  constexpr double kEvenly = 0.75;
  const double exact = share(Rhythm::kHigh, 8);
  const double strokes = share(Rhythm::kHigh, 4) + share(Rhythm::kHigh, 2);
  constexpr double kDrum = 0.5;
  if (strokes < kClear || share(Rhythm::kLow, 1) > kDrum) return false;
  if (exact > kClear && exact > kEvenly * strokes) return true;
  double answer = share(Rhythm::kHigh, 1);
  for (const Rhythm::Band band : {Rhythm::kLow, Rhythm::kMid}) answer += share(band, 1) + share(band, 0.5);
  constexpr double kNothing = 0.18;
  return answer < kNothing;
}

/// At the level of the metre that people count.
double Counted(const Rhythm& rhythm, double frequency) {
  while (frequency > kFastest) frequency /= 2;
  while (frequency < kSlowest) frequency *= 2;
  if (2 * frequency <= kFastest) return IsDouble(rhythm, frequency) ? 2 * frequency : frequency;
  if (frequency / 2 >= kSlowest) return IsDouble(rhythm, frequency / 2) ? frequency : frequency / 2;
  return frequency;
}

/// How the pulse of a stretch of the track agrees with the whole, beside the best that it could give.
struct Agreement {
  double along = 0;
  double possible = 0;
};

Agreement AgreementOf(const Rhythm& rhythm, double frequency, const Rhythm::Stretch& part) {
  Agreement agreement;
  const double length = std::max(1.0, LengthOf(part));
  for (const Rhythm::Band band : {Rhythm::kLow, Rhythm::kMid, Rhythm::kHigh}) {
    for (const int multiple : {1, 2}) {
      const auto whole = rhythm.At(band, multiple * frequency, rhythm.Whole());
      if (std::abs(whole) == 0) continue;
      const auto at = rhythm.At(band, multiple * frequency, part);
      agreement.along += (at * std::conj(whole)).real() / std::abs(whole);
      double best = std::abs(at);
      for (const double off : {-3, -2, -1, 1, 2, 3}) {
        best = std::max(best, rhythm.Share(band, multiple * (frequency + off * 0.4 / length), part));
      }
      agreement.possible += best;
    }
  }
  return agreement;
}

/// 1 when every stretch of the track has the pulse of the whole, about 0 when they have any.
double Steadiness(const Rhythm& rhythm, double frequency) {
  const std::size_t all = rhythm.Whole().to;
  constexpr auto kStep = static_cast<std::size_t>(kStretch * music::Wave::kColumnsASecond);
  Agreement sum;
  for (std::size_t from = 0; from < all; from += kStep) {
    const Agreement part = AgreementOf(rhythm, frequency, {from, std::min(all, from + kStep)});
    sum.along += part.along;
    sum.possible += part.possible;
  }
  return sum.possible > 0 ? std::max(0.0, sum.along / sum.possible) : 0;
}

/// What there is of a pulse in the stretches of the track, near its frequency: about 1 by chance alone.
double EvidenceOf(const Rhythm& rhythm, double frequency) {
  constexpr auto kStep = static_cast<std::size_t>(kStretch * music::Wave::kColumnsASecond);
  const std::size_t all = rhythm.Whole().to;
  double sum = 0;
  int found = 0;
  for (std::size_t from = 0; from + kStep / 2 < all; from += kStep) {
    const Rhythm::Stretch part{from, std::min(all, from + kStep)};
    for (const Rhythm::Band band : {Rhythm::kLow, Rhythm::kMid, Rhythm::kHigh}) {
      for (const int multiple : {1, 2}) {
        double best = 0;
        for (const int off : {-3, -2, -1, 0, 1, 2, 3}) {
          const double near = frequency + off * 0.4 / kStretch;
          best = std::max(best, rhythm.Evidence(band, multiple * near, part));
        }
        sum += best;
        found += best > 0 ? 1 : 0;  // a band that is silent says nothing
      }
    }
  }
  return found > 0 ? sum / found : 0;
}

/// Tones, noise, speech and silence have no beats, whatever a tracker makes of them. Measured with a hundred
/// songs of nine styles and fifty of those: a held tone lives by less than 7, songs by more than 18; a slow
/// swell has an evidence of 1.4, the softest ballad 1.9.
bool HasPulse(const Rhythm& rhythm, double frequency) {
  constexpr double kLively = 10;
  constexpr double kEvident = 1.65;
  return rhythm.Liveliness() > kLively && EvidenceOf(rhythm, frequency) > kEvident;
}

/// The tracked beats are where the strokes are. Strokes at random come to 1.1, as a tracker looks for them;
/// drums whose tempo wanders to 7.
bool AreStruck(const Rhythm& rhythm, const std::vector<Seconds>& beats) {
  constexpr double kStruck = 1.5;
  double sum = 0;
  for (const Rhythm::Band band : {Rhythm::kLow, Rhythm::kMid, Rhythm::kHigh}) {
    sum += rhythm.EvidenceAlong(band, beats);
  }
  return sum > kStruck;
}

/// Where in the beat, in beats from time 0, the beat itself lies: where the drums hit hardest, the low ones
/// most of all. Strokes that fall on one beat of four count more than those that fall a little on all.
double PhaseOf(const Rhythm& rhythm, double frequency) {
  constexpr double kWeights[] = {2, 1, 0.3};
  constexpr int kBeats = 4;
  constexpr int kPlaces = Rhythm::kPlaces / kBeats;
  std::array<double, kPlaces> score{};
  std::array<double, kPlaces> sum{};
  for (const Rhythm::Band band : {Rhythm::kLow, Rhythm::kMid, Rhythm::kHigh}) {
    const auto folded = rhythm.Folded(band, frequency / kBeats);
    const auto at = [&](int place) {
      return std::max(0.0, folded[static_cast<std::size_t>((place + Rhythm::kPlaces) % Rhythm::kPlaces)]);
    };
    for (int i = 0; i < Rhythm::kPlaces; ++i) {
      const double smooth = (at(i - 1) + 2 * at(i) + at(i + 1)) / 4;
      const auto place = static_cast<std::size_t>(i % kPlaces);
      score[place] += kWeights[band] * smooth * smooth;
      sum[place] += kWeights[band] * at(i);
    }
  }
  const auto highest = std::max_element(score.begin(), score.end()) - score.begin();
  const int best = static_cast<int>(highest);
  double moment = 0;
  double weight = 1e-9;
  for (int i = -2; i <= 2; ++i) {
    const double value = sum[static_cast<std::size_t>((best + i + kPlaces) % kPlaces)];
    moment += i * value;
    weight += value;
  }
  return (best + 0.5 + moment / weight) / kPlaces;
}

/// The tracked beats at the level of the metre that was chosen.
music::BeatGrid AsTracked(const TrackedBeats& heard, double levels, double steady) {
  const music::BeatGrid grid({}, steady, heard.beats);
  constexpr double kNear = 0.1;
  const auto is = [&](double level) { return std::abs(levels / level - 1) < kNear; };
  if (is(2)) return grid.ScaledBy(music::BeatScale::Double);
  if (is(0.5)) return grid.ScaledBy(music::BeatScale::Half);
  if (is(1.5)) return grid.ScaledBy(music::BeatScale::ThreeHalves);
  return is(2.0 / 3) ? grid.ScaledBy(music::BeatScale::TwoThirds) : grid;
}

}  // namespace

music::BeatGrid FitGrid(const TrackedBeats& heard, const music::Wave& wave, Seconds length) {
  if (heard.beats.size() < kFewestBeats) return {};
  std::vector<double> gaps;
  for (std::size_t i = 1; i < heard.beats.size(); ++i) {
    gaps.push_back((heard.beats[i] - heard.beats[i - 1]).count());
  }
  const double tracked = 1 / std::max(Median(std::move(gaps)), music::BeatGrid::kShortestBeat.count());
  const Rhythm rhythm(wave);
  Pulse pulse = Strongest(rhythm, tracked);
  pulse.frequency = Counted(rhythm, pulse.frequency);
  pulse = Sharpened(rhythm, pulse);
  if (!HasPulse(rhythm, pulse.frequency)) return {};
  const double steady = Steadiness(rhythm, pulse.frequency);
  constexpr double kEven = 0.5;
  if (steady < kEven) {
    if (!AreStruck(rhythm, heard.beats)) return {};
    return AsTracked(heard, pulse.frequency / tracked, steady);
  }
  const Seconds phase(PhaseOf(rhythm, pulse.frequency) / pulse.frequency);
  return music::BeatGrid::Even({60 * pulse.frequency}, steady, phase, length);
}

}  // namespace decks
