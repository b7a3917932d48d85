// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <cmath>
#include <vector>

#include "decks/ports/BeatTracker.h"
#include "decks/ports/LoudnessMeter.h"

namespace decks::testing {

/// Loudness as the plain mean power of all samples, the peak as the loudest sample.
class FakeLoudnessMeters final : public LoudnessMeters {
 public:
  [[nodiscard]] std::unique_ptr<LoudnessMeter> Make(int sample_rate, int channels) override {
    if (sample_rate <= 0 || channels <= 0) return nullptr;
    return std::make_unique<Meter>();
  }

 private:
  class Meter final : public LoudnessMeter {
   public:
    void Add(std::span<const std::int16_t> samples) override {
      for (const std::int16_t sample : samples) {
        const double value = sample / 32768.0;
        power_ += value * value;
        peak_ = std::max(peak_, std::abs(value));
      }
      count_ += static_cast<double>(samples.size());
    }
    music::Loudness Finish() override {
      if (power_ == 0) return {false, {}, {-120}};
      const auto decibels = [](double ratio) { return static_cast<float>(10 * std::log10(ratio)); };
      return {true, {decibels(power_ / count_)}, {decibels(peak_ * peak_)}};
    }

   private:
    double power_ = 0, peak_ = 0, count_ = 0;
  };
};

/// Hears a beat wherever sound comes after at least a tenth of a second without.
class FakeBeatTrackers final : public BeatTrackers {
 public:
  [[nodiscard]] std::unique_ptr<BeatTracker> Make(double sample_rate) override {
    if (!(sample_rate >= kLowestRate && sample_rate <= kHighestRate)) return nullptr;
    return std::make_unique<Tracker>(sample_rate);
  }

 private:
  class Tracker final : public BeatTracker {
   public:
    explicit Tracker(double sample_rate) : rate_(sample_rate) {}
    void Add(std::span<const float> samples) override {
      for (const float sample : samples) {
        const auto step = static_cast<std::size_t>(count_++ / rate_ / kStep);
        heard_.onsets.resize(step + 1);
        if (std::abs(sample) < 0.01F) continue;
        if (count_ - last_ > rate_ / 10) {
          heard_.beats.emplace_back(count_ / rate_);
          heard_.onsets[step] = 1;
        }
        last_ = count_;
      }
    }
    TrackedBeats Finish() override {
      heard_.onset_step = music::Seconds(kStep);
      heard_.onset_start = 0.5 * heard_.onset_step;
      return heard_;
    }

   private:
    static constexpr double kStep = 0.01;
    double rate_;
    double count_ = 0;
    double last_ = -1e9;
    TrackedBeats heard_;
  };
};

}  // namespace decks::testing
