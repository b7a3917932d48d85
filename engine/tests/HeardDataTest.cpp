// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <thread>

#include "engine/SampleTap.h"
#include "engine/testing/SoundStage.h"
#include "music/Spectrum.h"

namespace engine::testing {
namespace {

/// Not a whole number of periods in the latency of the output.
constexpr double kHertz = 1025;
constexpr int kBin = 6;  ///< of that at 44.1 kHz

class HeardData : public ::testing::Test {
 protected:
  HeardData() {
    FakeFile file = ToneFile(10 * kRate, kHertz);
    const auto tone = file.sample;
    file.sample = [tone](std::int64_t frame, int channel) {
      return channel == 0 && frame >= kRate ? tone(frame, 0) : std::int16_t{0};
    };
    stage_.files.Add("left after a second.mp3", file);
    stream_ = stage_.Load("left after a second.mp3");
  }

  [[nodiscard]] std::vector<float> Read(std::uint32_t what, std::size_t room = 4096) {
    std::vector<float> data(room);
    data.resize(stage_.engine->BASS_ChannelGetData(stream_, std::span<float>(data), what) / sizeof(float));
    return data;
  }
  [[nodiscard]] static std::ptrdiff_t PeakOf(const std::vector<float>& bins) {
    return std::max_element(bins.begin(), bins.end()) - bins.begin();
  }

  SoundStage stage_;
  decks::StreamHandle stream_ = 0;
};

TEST_F(HeardData, AToneOfAThousandHertzPeaksInItsBinWhenItIsHeardAndNotBefore) {
  stage_.engine->BASS_ChannelPlay(stream_, false);
  stage_.Advance(1s + SoundStage::kLatency * 2 / 3);  // rendered; the output still holds it
  EXPECT_LT(Read(decks::kDataFft256)[kBin], 0.01F);
  stage_.Advance(2 * SoundStage::kLatency);
  const auto bins = Read(decks::kDataFft256);
  ASSERT_EQ(bins.size(), music::kSpectrumBins);
  EXPECT_EQ(PeakOf(bins), kBin);
}

TEST_F(HeardData, EachSideHasASpectrumOfItsOwn) {
  stage_.engine->BASS_ChannelPlay(stream_, false);
  stage_.Advance(2s);
  const auto bins = Read(decks::kDataFft256 | decks::kDataFftIndividual);
  ASSERT_EQ(bins.size(), 2 * music::kSpectrumBins);
  EXPECT_GT(bins[2 * kBin], 0.1F);
  EXPECT_LT(bins[2 * kBin + 1], 1e-4F);
}

TEST_F(HeardData, TheSamplesEndWithWhatIsAtTheLoudspeaker) {
  stage_.engine->BASS_ChannelPlay(stream_, false);
  for (int i = 0; i < 8; ++i) {
    stage_.Advance(313ms);
    const auto samples = Read(decks::kDataFloat | 64);
    ASSERT_EQ(samples.size(), 16U);
    EXPECT_NEAR(samples[14], stage_.AtLoudspeaker("main"), 0.16) << "one frame of the tone apart at most";
  }
}

TEST_F(HeardData, VolumeDoesNotMatterAndAPauseIsSilent) {
  stage_.engine->BASS_ChannelSetAttributes(stream_, -1, 0, -101);
  stage_.engine->BASS_ChannelPlay(stream_, false);
  stage_.Advance(2s);
  EXPECT_EQ(PeakOf(Read(decks::kDataFft256)), kBin);
  stage_.engine->BASS_ChannelPause(stream_);
  stage_.Advance(200ms);
  EXPECT_EQ(Read(decks::kDataFft256), std::vector<float>(music::kSpectrumBins));
}

TEST_F(HeardData, NoRoomAndNoStreamGiveNothing) {
  EXPECT_TRUE(Read(decks::kDataFft256, music::kSpectrumBins - 1).empty());
  EXPECT_TRUE(Read(decks::kDataFft256 | decks::kDataFftIndividual, music::kSpectrumBins).empty());
  stream_ = 0;
  EXPECT_TRUE(Read(decks::kDataFloat | 64).empty());
}

TEST(SampleTap, GapsAndWhatIsOverwrittenAreSilent) {
  SampleTap tap;
  const std::array<float, 8> ones{1, 1, 1, 1, 1, 1, 1, 1};
  std::array<float, 16> read;
  tap.Write(100, ones);
  tap.Read(106, read);
  EXPECT_EQ(read, (std::array<float, 16>{0, 0, 0, 0, 1, 1, 1, 1, 1, 1, 1, 1, 0, 0, 0, 0}));
  tap.Write(110, ones);
  tap.Read(106, read);
  EXPECT_EQ(read, (std::array<float, 16>{}));
  tap.Write(114 + SampleTap::kFrames - 2, ones);
  tap.Read(114, read);
  EXPECT_EQ(read, (std::array<float, 16>{}));
}

TEST(SampleTap, AReaderNeverSeesAFrameThatItDidNotAskFor) {
  const auto tap = std::make_unique<SampleTap>();
  std::atomic<bool> done{false};
  std::jthread writer([&] {
    std::array<float, 64> frames;
    for (std::int64_t frame = 0; frame < 4'000'000; frame += 32) {
      for (std::size_t i = 0; i < 64; ++i) frames[i] = static_cast<float>(frame + std::int64_t(i / 2));
      tap->Write(frame, frames);
    }
    done = true;
  });
  std::array<float, 64> read;
  for (std::int64_t end = 32; !done; end += 20'011) {
    end %= 4'000'000;
    tap->Read(end, read);
    for (std::size_t i = 0; i < 64; ++i) {
      const auto asked = static_cast<float>(end - 32 + std::int64_t(i / 2));
      ASSERT_TRUE(read[i] == asked || read[i] == 0) << read[i] << " for " << asked;
    }
  }
}

}  // namespace
}  // namespace engine::testing
