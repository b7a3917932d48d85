// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

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

TEST(Effect, LiesBeforeTheTapAndTheVolume) {
  SoundStage stage;
  FakeFile file = ToneFile(kRate, 0);
  file.sample = [](std::int64_t, int) { return std::int16_t{16384}; };
  stage.files.Add("level.mp3", file);
  const auto pool = std::make_shared<PcmStorePool>(stage.files, nullptr, stage.workers, stage.time);
  auto stream = std::make_shared<Stream>(1, pool->Get("level.mp3", DecoderKind::General).Value(), 1, 0);
  stage.workers.RunAll();
  StreamFeed feed(stream, stage.stretchers, *pool, kRate);
  RenderCore core(kRate, SpeakerMap(StereoOutput("any").speakers), stage.time);
  core.Attach(*stream);
  Halving halving;
  stream->SetEffect(&halving);
  stream->SetVolume(0.5F);
  stream->Ask(Stream::Transport::Play);
  feed.Pump(0);
  std::vector<float> out(2000);
  core.Render(out);
  EXPECT_EQ(out.back(), 0.125F);
  EXPECT_EQ(stream->log.Newest()->left_peak, 0.25F);
}

}  // namespace
}  // namespace engine::testing
