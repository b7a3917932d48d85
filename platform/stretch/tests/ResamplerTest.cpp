// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

#include "platform/stretch/LibraryStretcherFactory.h"
#include "platform/stretch/tests/HeapCount.h"

namespace platform::stretch {
namespace {

using Samples = std::vector<float>;

/// A resampler between a source that is a function of time and a listener.
class ResamplerTest : public ::testing::Test {
 protected:
  void Make(double ratio) { resampler_ = LibraryStretcherFactory().MakeResampler(ratio); }

  /// Feeds a sine (in turns a source frame) and its double in the right channel; the output's left channel.
  Samples Hear(double turns_a_frame, std::size_t wanted, std::size_t block = 256) {
    Samples left_out(wanted), right_out(wanted), left(block), right(block);
    std::size_t made = 0;
    while (made < wanted) {
      for (std::size_t i = 0; i < block; ++i) {
        const double n = static_cast<double>(fed_ + i);
        left[i] = static_cast<float>(0.4 * std::sin(2 * std::numbers::pi * turns_a_frame * n));
        right[i] = 2 * left[i];
      }
      const std::size_t room = std::min(block, wanted - made);
      const auto progress =
          resampler_->Process(left, right, {left_out.data() + made, room}, {right_out.data() + made, room});
      fed_ += static_cast<std::size_t>(progress.used);
      made += static_cast<std::size_t>(progress.made);
    }
    for (std::size_t n = 0; n < made; ++n) EXPECT_NEAR(right_out[n], 2 * left_out[n], 1e-5);
    return left_out;
  }

  std::unique_ptr<engine::Resampler> resampler_;
  std::size_t fed_ = 0;
};

TEST_F(ResamplerTest, OutputFrameNIsTheSoundAtNTimesTheRatio) {
  for (const double ratio : {0.5, 44100 / 48000.0, 1.0, 1.04, 48000 / 44100.0, 2.0, 192000 / 44100.0}) {
    Make(ratio);
    fed_ = 0;
    const Samples heard = Hear(0.02, 20'000);
    for (std::size_t n = 200; n < heard.size(); ++n) {
      const double expected = 0.4 * std::sin(2 * std::numbers::pi * 0.02 * ratio * static_cast<double>(n));
      ASSERT_NEAR(heard[n], expected, 2e-5) << "ratio " << ratio << " frame " << n;
    }
  }
}

TEST_F(ResamplerTest, KeepsTheHighestNotesAndLetsNoneFoldBack) {
  Make(44100 / 48000.0);
  const Samples high = Hear(19000 / 44100.0, 8000);
  EXPECT_NEAR(*std::max_element(high.begin() + 1000, high.end()), 0.4, 0.005);
  Make(2);
  const Samples beyond = Hear(15000 / 44100.0, 8000);  // above what half the rate can carry
  EXPECT_LT(*std::max_element(beyond.begin() + 1000, beyond.end()), 1e-4);
}

TEST_F(ResamplerTest, ARatioThatMovesLeavesNoStep) {
  Make(1);
  double position = 0;
  float largest_error = 0;
  for (int block = 0; block < 600; ++block) {
    const double ratio = 1 + 0.5 * std::sin(block * 0.05);
    resampler_->SetRatio(ratio);
    for (const float sample : Hear(0.01, 100)) {
      const auto expected = static_cast<float>(0.4 * std::sin(2 * std::numbers::pi * 0.01 * position));
      if (block > 5) largest_error = std::max(largest_error, std::abs(sample - expected));
      position += ratio;
    }
  }
  EXPECT_LT(largest_error, 5e-5F);
}

TEST_F(ResamplerTest, BlockSizesDoNotMatter) {
  Make(1.3);
  const Samples large = Hear(0.03, 3000, 1024);
  for (const std::size_t block : {1U, 7U, 333U}) {
    Make(1.3);
    fed_ = 0;
    EXPECT_EQ(Hear(0.03, 3000, block), large);
  }
}

TEST_F(ResamplerTest, AfterAResetItIsAsNew) {
  Make(1.1);
  const Samples first = Hear(0.03, 3000);
  resampler_->Reset();
  fed_ = 0;
  EXPECT_EQ(Hear(0.03, 3000), first);
}

TEST_F(ResamplerTest, AWildRatioNeitherHangsNorReadsBeyond) {
  for (const double ratio : {0.0, -3.0, 1e-9, 57.0, 255.0, 1e9}) {
    Make(ratio);
    const Samples source(5000, 0.25F);
    Samples left(64), right(64);
    int made = 0;
    for (int i = 0; i < 20; ++i) made = resampler_->Process(source, source, left, right).made;
    ASSERT_GT(made, 0);
    EXPECT_NEAR(left[static_cast<std::size_t>(made - 1)], 0.25F, 0.01F) << ratio;
  }
}

#if DJ_HEAP_IS_COUNTED
TEST_F(ResamplerTest, UsesNoHeapAfterItIsMade) {
  Make(44100 / 48000.0);
  const Samples source(512, 0.25F);
  Samples left(441), right(441);
  const long before = HeapCalls();
  for (int i = 0; i < 1000; ++i) {
    resampler_->SetRatio(0.9 + i * 0.001);
    resampler_->Process(source, source, left, right);
  }
  EXPECT_EQ(HeapCalls() - before, 0);
}
#endif

}  // namespace
}  // namespace platform::stretch
