// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <numbers>
#include <vector>

#include "platform/stretch/LibraryStretcherFactory.h"
#include "platform/stretch/tests/HeapCount.h"

namespace platform::stretch {
namespace {

using engine::StretchQuality;

constexpr int kRate = 44100;
using Wave = std::vector<float>;

Wave Sine(double frequency, double seconds, double level = 0.5) {
  Wave wave(static_cast<std::size_t>(seconds * kRate));
  for (std::size_t n = 0; n < wave.size(); ++n) {
    wave[n] = static_cast<float>(level *
                                 std::sin(2 * std::numbers::pi * frequency * static_cast<double>(n) / kRate));
  }
  return wave;
}

/// A click every half second, the first at frame 4410.
Wave ClickTrack(double seconds) {
  Wave wave(static_cast<std::size_t>(seconds * kRate));
  for (std::size_t click = 4410; click + 300 < wave.size(); click += kRate / 2) {
    for (std::size_t j = 0; j < 300; ++j) {
      const auto since = static_cast<double>(j);
      wave[click + j] = static_cast<float>(0.9 * std::cos(since * 0.15) * std::exp(-since / 60));
    }
  }
  return wave;
}

std::size_t LoudestBetween(const Wave& wave, double from, double to) {
  const auto at = [&](double n) {
    return wave.begin() + std::clamp<std::ptrdiff_t>(static_cast<std::ptrdiff_t>(n), 0, std::ssize(wave));
  };
  const auto quieter = [](float a, float b) { return std::abs(a) < std::abs(b); };
  return static_cast<std::size_t>(std::max_element(at(from), at(to), quieter) - wave.begin());
}

/// What a sine of that frequency does not explain, sample by sample: a click stands out.
double LargestSurprise(const Wave& wave, double frequency) {
  const double c = 2 * std::cos(2 * std::numbers::pi * frequency / kRate);
  double largest = 0;
  for (std::size_t n = 2; n < wave.size(); ++n) {
    largest = std::max(largest, std::abs(wave[n] - c * wave[n - 1] + wave[n - 2]));
  }
  return largest;
}

double FrequencyOf(const Wave& wave) {
  std::vector<double> crossings;
  for (std::size_t n = 1; n < wave.size(); ++n) {
    if (wave[n - 1] < 0 && wave[n] >= 0) {
      crossings.push_back(static_cast<double>(n) - wave[n] / (wave[n] - wave[n - 1]));
    }
  }
  if (crossings.size() < 2) return 0;
  return kRate * static_cast<double>(crossings.size() - 1) / (crossings.back() - crossings.front());
}

/// Pulls sound through a stretcher as the engine does: pad, feed what is wanted, drop the delay.
class Pull {
 public:
  Pull(engine::Stretcher& stretcher, const Wave& source) : stretcher_(stretcher), source_(source) { Start(); }

  void Start() {
    drop_ = stretcher_.StartDelay();
    pad_ = stretcher_.StartPad();
    from_ = 0;
  }

  /// The next frames; fewer at the end of the source.
  Wave Frames(std::size_t wanted) {
    Wave out(wanted), right(wanted);
    std::size_t got = 0;
    while (got < wanted) {
      const std::span<float> rest_left(out.data() + got, wanted - got),
          rest_right(right.data() + got, wanted - got);
      if (stretcher_.Available() == 0 && !Feed()) break;
      auto taken = static_cast<std::size_t>(stretcher_.Take(rest_left, rest_right));
      const std::size_t dropped = std::min<std::size_t>(taken, static_cast<std::size_t>(drop_));
      drop_ -= static_cast<int>(dropped);
      std::copy(rest_left.begin() + static_cast<std::ptrdiff_t>(dropped),
                rest_left.begin() + static_cast<std::ptrdiff_t>(taken), rest_left.begin());
      got += taken - dropped;
    }
    out.resize(got);
    return out;
  }

  int LargestWanted() const { return largest_wanted_; }
  std::size_t Fed() const { return from_; }

 private:
  bool Feed() {
    const int wanted = stretcher_.Wanted();
    largest_wanted_ = std::max(largest_wanted_, wanted);
    if (pad_ > 0) {
      const std::size_t count = static_cast<std::size_t>(std::min({pad_, wanted, 4096}));
      stretcher_.Put({silence_.data(), count}, {silence_.data(), count});
      pad_ -= static_cast<int>(count);
      return true;
    }
    const std::size_t count = std::min(static_cast<std::size_t>(wanted), source_.size() - from_);
    stretcher_.Put({source_.data() + from_, count}, {source_.data() + from_, count});
    from_ += count;
    return count > 0;
  }

  engine::Stretcher& stretcher_;
  const Wave& source_;
  Wave silence_ = Wave(4096);
  int pad_ = 0, drop_ = 0, largest_wanted_ = 0;
  std::size_t from_ = 0;
};

class EveryStretcher : public ::testing::TestWithParam<StretchQuality> {
 protected:
  bool Best() const { return GetParam() == StretchQuality::Best; }

  LibraryStretcherFactory factory_;
  std::unique_ptr<engine::Stretcher> stretcher_ = factory_.MakeStretcher(GetParam(), kRate);
};

TEST_P(EveryStretcher, AClickComesOutWhereTheTempoPutsIt) {
  const Wave clicks = ClickTrack(12);
  for (const double tempo : {0.92, 1.0, 1.04, 1.08, 1.5}) {
    const auto stretcher = factory_.MakeStretcher(GetParam(), kRate);
    stretcher->SetTempo(tempo);
    const Wave out = Pull(*stretcher, clicks).Frames(static_cast<std::size_t>(6.5 * kRate));
    const double tolerance = (Best() || tempo < 1.2 ? 0.006 : 0.014) * kRate;
    for (double click = 4410; click / tempo < 6 * kRate; click += kRate / 2) {
      const double expected = click / tempo;
      const std::size_t heard = LoudestBetween(out, expected - 3000, expected + 3000);
      if (!Best() && std::abs(out[heard]) < 0.2) continue;  // the simple one may swallow a click whole
      EXPECT_NEAR(static_cast<double>(heard), expected, tolerance) << "tempo " << tempo;
    }
  }
}

TEST_P(EveryStretcher, TheTempoIsKeptOverTime) {
  const Wave sine = Sine(440, 30);
  stretcher_->SetTempo(1.08);
  Pull pull(*stretcher_, sine);
  const std::size_t out = pull.Frames(20 * kRate).size();
  EXPECT_NEAR(static_cast<double>(pull.Fed()), static_cast<double>(out) * 1.08, 8000);
}

TEST_P(EveryStretcher, ATempoThatMovesMakesNoClickAndKeepsThePitch) {
  const Wave sine = Sine(440, 12);
  Pull pull(*stretcher_, sine);
  Wave heard;
  for (int block = 0; block < 400; ++block) {
    stretcher_->SetTempo(1 + 0.08 * std::sin(block * 0.05));
    const Wave next = pull.Frames(882);
    heard.insert(heard.end(), next.begin(), next.end());
  }
  const Wave settled(heard.begin() + kRate / 2, heard.end());
  EXPECT_LT(LargestSurprise(settled, 440), 0.002);
  EXPECT_NEAR(FrequencyOf(settled), 440, 1);
}

TEST_P(EveryStretcher, ThePitchMovesBySemitonesAndTheTempoStays) {
  const Wave sine = Sine(440, 12);
  for (const double semitones : {-5.0, -1.0, 3.0, 12.0}) {
    const auto stretcher = factory_.MakeStretcher(GetParam(), kRate);
    stretcher->SetPitch(semitones);
    Pull pull(*stretcher, sine);
    const Wave heard = pull.Frames(6 * kRate);
    const double expected = 440 * std::exp2(semitones / 12);
    EXPECT_NEAR(FrequencyOf(Wave(heard.begin() + kRate, heard.end())), expected, expected * 0.004);
    EXPECT_NEAR(static_cast<double>(pull.Fed()), 6 * kRate, 8000);
  }
}

TEST_P(EveryStretcher, AfterAResetItIsAsNew) {
  const Wave noise_then = Sine(1000, 2, 0.9);
  Pull(*stretcher_, noise_then).Frames(kRate);
  stretcher_->Reset();
  const Wave clicks = ClickTrack(4);
  const Wave again = Pull(*stretcher_, clicks).Frames(2 * kRate);
  const auto fresh = factory_.MakeStretcher(GetParam(), kRate);
  const Wave first = Pull(*fresh, clicks).Frames(2 * kRate);
  for (std::size_t n = 0; n < first.size(); ++n) ASSERT_NEAR(again[n], first[n], 1e-4) << n;
}

TEST_P(EveryStretcher, NeverWantsMoreThanAThousandFramesOrSoAtOnce) {
  const Wave sine = Sine(440, 10);
  stretcher_->SetTempo(2);
  Pull pull(*stretcher_, sine);
  pull.Frames(2 * kRate);
  EXPECT_LE(pull.LargestWanted(), 1024);
}

#if DJ_HEAP_IS_COUNTED
TEST_P(EveryStretcher, UsesNoHeapWhileTheTempoMoves) {
  const Wave sine = Sine(440, 12);
  Pull pull(*stretcher_, sine);
  Wave left(882), right(882);
  pull.Frames(2 * kRate);
  std::size_t from = pull.Fed();
  const long before = HeapCalls();
  for (int block = 0; block < 300; ++block) {
    stretcher_->SetTempo(1 + 0.16 * std::sin(block * 0.05));
    while (stretcher_->Available() == 0) {
      const auto wanted = static_cast<std::size_t>(stretcher_->Wanted());
      stretcher_->Put({sine.data() + from, wanted}, {sine.data() + from, wanted});
      from += wanted;
    }
    stretcher_->Take(left, right);
  }
  EXPECT_EQ(HeapCalls() - before, 0);
}
#endif

INSTANTIATE_TEST_SUITE_P(, EveryStretcher, ::testing::Values(StretchQuality::Best, StretchQuality::LowPower),
                         [](const auto& test) {
                           return test.param == StretchQuality::Best ? "Best" : "LowPower";
                         });

}  // namespace
}  // namespace platform::stretch
