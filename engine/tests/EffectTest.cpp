// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "engine/RenderCore.h"
#include "engine/StreamFeed.h"
#include "engine/testing/SoundStage.h"

namespace engine::testing {
namespace {

class Halving final : public StreamEffect {
 public:
  void Process(std::span<float> stereo) noexcept override {
    for (float& sample : stereo) sample *= 0.5F;
  }
};

class Effect : public ::testing::Test {
 protected:
  Effect() {
    FakeFile file = ToneFile(kRate, 0);
    file.sample = [](std::int64_t, int) { return std::int16_t{16384}; };
    stage.files.Add("level.mp3", file);
    stream = std::make_shared<Stream>(1, pool->Get("level.mp3", DecoderKind::General).Value(), 1, 0);
    stage.workers.RunAll();
    core.Attach(*stream);
    stream->Ask(Stream::Transport::Play);
  }
  std::vector<float> Render(StreamEffect& effect) {
    stream->SetEffect(&effect);
    StreamFeed feed(stream, stage.stretchers, *pool, kRate);
    feed.Pump(0);
    std::vector<float> out(2000);
    core.Render(out);
    return out;
  }
  SoundStage stage;
  std::shared_ptr<PcmStorePool> pool =
      std::make_shared<PcmStorePool>(stage.files, nullptr, stage.workers, stage.time);
  std::shared_ptr<Stream> stream;
  RenderCore core{kRate, SpeakerMap(StereoOutput("any").speakers), stage.time};
};

TEST_F(Effect, LiesBeforeTheTapAndTheVolume) {
  Halving halving;
  stream->SetVolume(0.5F);
  EXPECT_EQ(Render(halving).back(), 0.125F);
  EXPECT_EQ(stream->log.Newest()->left_peak, 0.25F);
}

TEST_F(Effect, LiesBeforeTheGainThatIsRampedWhilePlaying) {
  Halving halving;
  stream->SetGain(3);
  EXPECT_EQ(Render(halving).back(), 0.75F);
  EXPECT_EQ(stream->log.Newest()->left_peak, 0.25F);
  stream->SetGain(1);
  std::vector<float> out(2000);
  core.Render(out);
  EXPECT_EQ(out.back(), 0.25F);
  for (std::size_t i = 2; i < out.size(); ++i) ASSERT_LT(std::abs(out[i] - out[i - 2]), 0.01F);
}

#if defined(__SSE2__)
TEST_F(Effect, ThatDiesAwayComesToAnEnd) {
  struct Echo final : StreamEffect {
    void Process(std::span<float> stereo) noexcept override {
      for (std::size_t i = 0; i < stereo.size(); ++i) tail = tail * 0.5F;
    }
    volatile float tail = 1;
  } echo;
  Render(echo);
  EXPECT_EQ(echo.tail, 0);
  volatile float here = std::numeric_limits<float>::min();
  here = here / 2;
  EXPECT_GT(here, 0) << "the thread that rendered reckons on as before";
}
#endif

TEST_F(Effect, ThatMakesNoNumbersIsSilencedCountedAndBegunAnew) {
  struct Stubborn final : StreamEffect {
    void Process(std::span<float> stereo) noexcept override {
      if (blocks++ == 2) stereo[5] = std::numeric_limits<float>::infinity();
    }
    void Reset() noexcept override { ++resets; }
    int blocks = 0, resets = 0;
  } effect;
  const auto out = Render(effect);
  EXPECT_TRUE(std::all_of(out.begin(), out.end(), [](float s) { return std::abs(s) <= 1; }));
  EXPECT_EQ(out.back(), 0.5F);
  EXPECT_EQ(core.BadSamples(), 1U);
  EXPECT_EQ(effect.resets, 2) << "at its start and after the fault";
}

}  // namespace
}  // namespace engine::testing
