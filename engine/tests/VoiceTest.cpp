// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "engine/RenderCore.h"
#include "engine/StreamFeed.h"
#include "engine/testing/SoundStage.h"

namespace engine::testing {
namespace {

/// A stream whose lanes the test fills itself.
class HandFedLanes : public ::testing::Test {
 protected:
  void SetUp() override {
    stage.files.Add("any.mp3", ToneFile(kRate, 200));
    const auto pool = std::make_shared<PcmStorePool>(stage.files, nullptr, stage.workers, stage.time);
    stream = std::make_shared<Stream>(1, pool->Get("any.mp3", DecoderKind::General).Value(), 1, 0);
    core.Attach(*stream);
    stream->Ask(Stream::Transport::Play);
  }
  /// Twenty blocks from one source frame on; a sample tells its frame.
  void Offer(std::size_t lane, double source, bool aligned) {
    stream->lanes[lane].Clear(1, {aligned ? LaneEntry::When::Aligned : LaneEntry::When::AtOnce});
    for (int i = 0; i < 20; ++i, source += kLaneBlockFrames) {
      LaneBlock& block = *stream->lanes[lane].Back();
      block.source = source;
      block.ratio = 1;
      block.frames = kLaneBlockFrames;
      block.last = false;
      for (std::size_t k = 0; k < block.samples.size(); ++k) {
        block.samples[k] = static_cast<float>(source + static_cast<double>(k / 2)) / 8192;
      }
      stream->lanes[lane].Append();
    }
    stream->hand_over = Stream::HandOver::Ready;
  }
  void Render(int frames) {
    std::vector<float> out(static_cast<std::size_t>(2 * frames));
    core.Render(out);
    for (std::size_t i = 0; i < out.size(); i += 2) heard.push_back(out[i] * 8192);
  }

  SoundStage stage;
  std::shared_ptr<Stream> stream;
  RenderCore core{kRate, SpeakerMap(StereoOutput("any").speakers), stage.time};
  std::vector<float> heard;
};

TEST_F(HandFedLanes, AnAlignedSegmentThatComesLateIsJoinedWhereTheSoundIs) {
  Offer(0, 0, false);
  Render(1000);
  Offer(1, 500, true);
  Render(800);
  EXPECT_EQ(stream->log.Newest()->lane, 1U);
  EXPECT_NEAR(heard.back(), 1799 - core.LookAhead(), 1.01);
}

TEST_F(HandFedLanes, AnAlignedSegmentThatComesEarlyWaitsForItsFrame) {
  Offer(0, 0, false);
  Render(100);
  Offer(1, 1000, true);
  Render(850);
  EXPECT_EQ(stream->log.Newest()->lane, 0U);
  Render(400);
  EXPECT_EQ(stream->log.Newest()->lane, 1U);
  EXPECT_NEAR(heard.back(), 1349 - core.LookAhead(), 0.01);
}

/// A file whose feeder and callback run against each other as fast as they can.
TEST(FeederAndCallback, AgreeOnASegmentThatIsTakenBackWhileItIsLookedAt) {
  SoundStage stage;
  stage.files.Add("any.mp3", ToneFile(60 * kRate, 200));
  const auto pool = std::make_shared<PcmStorePool>(stage.files, nullptr, stage.workers, stage.time);
  const auto stream = std::make_shared<Stream>(1, pool->Get("any.mp3", DecoderKind::General).Value(), 1, 0);
  stage.workers.RunAll();
  RenderCore core{kRate, SpeakerMap(StereoOutput("any").speakers), stage.time};
  core.Attach(*stream);
  stream->Ask(Stream::Transport::Play);
  StreamFeed feed(stream, stage.stretchers, *pool, kRate);
  std::atomic<bool> over = false;
  std::thread callback([&] {
    std::vector<float> out(2 * 32);
    while (!over) core.Render(out);
  });
  constexpr int kOrders = 4000;
  for (int i = 1; i <= kOrders; ++i) {
    // Plain and stretched sound in turn go on from each other; now and then another place is asked for.
    stream->SetTempo({.speed = i % 2 == 0 ? 1 : 1.04});
    if (i % 7 == 0) stream->Seek(i % 50 * kRate);
    feed.Pump(core.Frames());
  }
  stream->SetTempo({});
  stream->Seek(10 * kRate);
  const auto reached = [&] {
    const auto newest = stream->log.Newest();
    return newest && newest->source >= 10 * kRate && newest->source < 12 * kRate;
  };
  for (int i = 0; i < 100'000 && !reached(); ++i) feed.Pump(core.Frames());
  EXPECT_TRUE(reached());
  over = true;
  callback.join();
}

}  // namespace
}  // namespace engine::testing
