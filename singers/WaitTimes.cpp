// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "singers/WaitTimes.h"

#include <algorithm>
#include <cmath>

namespace singers {
namespace {

using std::chrono::microseconds;

constexpr int kFarthest = 500;  // turns that are looked ahead
constexpr microseconds kLongest = std::chrono::minutes(10);
// What is usual before the evening has shown it, and how many change-overs or turns that is worth.
constexpr double kUsualGap = 50;     // seconds
constexpr double kUsualSpread = 30;  // seconds
constexpr double kUsualWeight = 1;
constexpr double kUsualFallingOut = 0.06;
constexpr double kTurnsWeight = 12;
constexpr double kNineOfTen = 1.645;  // standard deviations either side of a normal distribution

double Seconds(microseconds time) {
  return std::chrono::duration<double>(time).count();
}

template <typename T>
void Remember(std::vector<T>& all, T newest) {
  if (all.size() >= Pace::kRemembered) all.erase(all.begin());
  all.push_back(newest);
}

/// The least count of so many trials that a binomial count does not pass with this probability.
int Quantile(int trials, double chance, double probability) {
  double exactly = std::pow(1 - chance, trials), up_to = exactly;
  int count = 0;
  while (up_to < probability && count < trials) {
    exactly *= (trials - count) * chance / ((count + 1) * (1 - chance));
    up_to += exactly;
    ++count;
  }
  return count;
}

/// The time until a turn, as a sum of what is before it.
class Sum {
 public:
  Sum(double rest, const Pace& pace)
      : whole_(rest), gap_(pace.ChangeOver()), falling_out_(pace.FallingOut()) {}

  void AddChangeOver() {
    ++gaps_;
    whole_ += gap_.mean;
    variance_ += gap_.spread * gap_.spread;
  }
  void AddSong(double length) {
    ++songs_;
    lengths_ += length;
    whole_ += length;
    AddChangeOver();
  }
  /// A turn that falls out takes its song and its change-over with it, so that the time has steps: the range
  /// goes from as many as may well fall out to as few, and leaves the many out where it would get too wide.
  [[nodiscard]] Wait Of(SingerId singer, int before) const {
    // The mean of the change-overs is not known better than it was measured, for all of them alike.
    const double doubt = gaps_ * gap_.doubt;
    const double noise = kNineOfTen * std::sqrt(variance_ + doubt * doubt);
    const double turn = songs_ == 0 ? 0 : lengths_ / songs_ + gap_.mean;
    // Songs that are broken off make times shorter, none makes them longer: the lower end reaches further.
    const double most = whole_ - Quantile(songs_, falling_out_, 0.05) * turn + noise;
    const double least = whole_ - Quantile(songs_, falling_out_, 0.97) * turn - noise;
    // Half as wide as the allowed share of the middle, which itself lies half a width below the upper end.
    const double widest = std::max(2 * kWidest * most / (1 + kWidest), kNarrow);
    return {singer, before, Whole(std::max(least, most - widest)), Whole(most)};
  }

 private:
  static constexpr double kWidest = 0.2;  ///< of the middle, to either side
  static constexpr double kNarrow = 240;  ///< seconds that a range may always have
  static std::chrono::seconds Whole(double seconds) {
    return std::chrono::seconds(static_cast<std::int64_t>(std::lround(std::max(seconds, 0.0))));
  }

  double whole_;  ///< seconds, when no turn falls out
  double variance_ = 0;
  double lengths_ = 0;
  int songs_ = 0;
  int gaps_ = 0;
  Pace::Usual gap_;
  double falling_out_;
};

}  // namespace

void Pace::AddChangeOver(microseconds gap) {
  if (gap.count() >= 0 && gap <= kLongest) Remember(gaps_, gap);
}

void Pace::AddTurn(bool sung) {
  Remember(turns_, sung);
}

Pace::Usual Pace::ChangeOver() const {
  double weight = kUsualWeight, sum = kUsualWeight * kUsualGap;
  for (const microseconds gap : gaps_) {
    sum += Seconds(gap);
    ++weight;
  }
  const double mean = sum / weight;
  double squares = kUsualWeight * (kUsualSpread * kUsualSpread + (kUsualGap - mean) * (kUsualGap - mean));
  for (const microseconds gap : gaps_) squares += (Seconds(gap) - mean) * (Seconds(gap) - mean);
  const double spread = std::sqrt(squares / weight);
  return {mean, spread, spread / std::sqrt(weight)};
}

double Pace::FallingOut() const {
  const auto sung = std::count(turns_.begin(), turns_.end(), true);
  const auto out = static_cast<double>(turns_.size()) - static_cast<double>(sung);
  return (out + kUsualFallingOut * kTurnsWeight) / (static_cast<double>(turns_.size()) + kTurnsWeight);
}

std::vector<Wait> WaitTimes(const Rotation& rotation, microseconds rest, const Pace& pace) {
  Rotation ahead = rotation;
  Sum sum(rotation.OnStage() ? Seconds(rest) : 0, pace);
  sum.AddChangeOver();
  ahead.End();
  std::vector<Wait> waits;
  const auto told = [&](SingerId singer) {
    return std::any_of(waits.begin(), waits.end(), [&](const Wait& wait) { return wait.singer == singer; });
  };
  // Nobody's first turn comes later than this; who has many wishes would go on alone.
  std::size_t ready = 0;
  for (const Singer& singer : ahead.Singers()) ready += !singer.held && !singer.wishes.empty() ? 1 : 0;
  for (int before = 0; waits.size() < ready && before < kFarthest && ahead.Begin(); ++before) {
    const Turn& turn = *ahead.OnStage();
    if (!told(turn.singer)) waits.push_back(sum.Of(turn.singer, before));
    sum.AddSong(Seconds(TimeOf(turn.wish)));
  }
  return waits;
}

}  // namespace singers
