// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/analysis/QmBeatTrackers.h"

#include <dsp/onsets/DetectionFunction.h>
#include <dsp/tempotracking/TempoTrackV2.h>

#include <algorithm>
#include <cmath>
#include <span>

namespace platform::analysis {
namespace {

/// The step that the tempo tracker was made for, in seconds.
constexpr double kStep = 512.0 / 44'100;
/// A frame answers most to strokes at its very beginning (measured with clicks and with drums).
constexpr double kAnswer = -0.2;
/// The first steps are a start from silence, which is no beat.
constexpr std::size_t kUnheardSteps = 2;
/// Fewer give no beats: about two seconds.
constexpr std::size_t kFewestSteps = 170;

/// An even number of samples close to kStep whose factors are 2, 3 and 5, as quick transforms need.
std::size_t StepFor(double sample_rate) {
  const auto wanted = static_cast<long>(std::lround(sample_rate * kStep));
  const auto quick = [](long n) {
    for (const long factor : {2, 3, 5}) {
      while (n % factor == 0) n /= factor;
    }
    return n == 1;
  };
  for (long off = 0;; ++off) {
    for (const long n : {wanted - off, wanted + off}) {
      if (n >= 2 && n % 2 == 0 && quick(n)) return static_cast<std::size_t>(n);
    }
  }
}

DFConfig ConfigFor(std::size_t step) {
  DFConfig config{};
  config.stepSize = static_cast<unsigned>(step);
  config.frameLength = static_cast<unsigned>(2 * step);
  config.DFType = DF_COMPLEXSD;
  config.dbRise = 3;
  config.adaptiveWhitening = false;
  config.whiteningRelaxCoeff = -1;
  config.whiteningFloor = -1;
  return config;
}

class QmBeatTracker final : public decks::BeatTracker {
 public:
  explicit QmBeatTracker(double sample_rate)
      : sample_rate_(sample_rate), step_(StepFor(sample_rate)), detection_(ConfigFor(step_)) {}

  void Add(std::span<const float> samples) override {
    line_.insert(line_.end(), samples.begin(), samples.end());
    std::size_t from = 0;
    for (; from + 2 * step_ <= line_.size(); from += step_) {
      const double onset = detection_.processTimeDomain(line_.data() + from);
      onsets_.push_back(std::isfinite(onset) ? std::max(0.0, onset) : 0);
    }
    line_.erase(line_.begin(), line_.begin() + static_cast<std::ptrdiff_t>(from));
  }

  decks::TrackedBeats Finish() override {
    decks::TrackedBeats heard;
    const music::Seconds step(static_cast<double>(step_) / sample_rate_);
    heard.onset_step = step;
    heard.onset_start = kAnswer * step;
    for (std::size_t i = 0; i < std::min(kUnheardSteps, onsets_.size()); ++i) onsets_[i] = 0;
    heard.onsets.assign(onsets_.begin(), onsets_.end());
    for (const double beat : TrackBeats()) heard.beats.push_back(heard.onset_start + beat * step);
    return heard;
  }

 private:
  [[nodiscard]] std::vector<double> TrackBeats() const {
    if (onsets_.size() < kFewestSteps) return {};
    if (std::none_of(onsets_.begin(), onsets_.end(), [](double onset) { return onset > 0; })) return {};
    TempoTrackV2 tracker(static_cast<float>(sample_rate_), step_);
    std::vector<double> periods(onsets_.size() / 128 + 1);
    periods.assign(onsets_.size(), 0);
    std::vector<double> tempi;
    tracker.calculateBeatPeriod(onsets_, periods, tempi);
    std::vector<double> beats;
    tracker.calculateBeats(onsets_, periods, beats);
    return beats;
  }

  const double sample_rate_;
  const std::size_t step_;
  DetectionFunction detection_;
  std::vector<double> line_;
  std::vector<double> onsets_;
};

}  // namespace

std::unique_ptr<decks::BeatTracker> QmBeatTrackers::Make(double sample_rate) {
  if (!(sample_rate >= kLowestRate && sample_rate <= kHighestRate)) return nullptr;
  return std::make_unique<QmBeatTracker>(sample_rate);
}

}  // namespace platform::analysis
