// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <array>
#include <optional>
#include <vector>

#include "engine/PcmStorePool.h"
#include "engine/StreamFeed.h"
#include "engine/testing/FakeDecoders.h"
#include "engine/testing/SoundStage.h"
#include "support/testing/FakeClock.h"
#include "support/testing/ManualExecutor.h"

namespace engine::testing {
namespace {

/// Blocks from the heap that count how they are used.
class CountingMemory final : public SampleMemory {
 public:
  std::unique_ptr<SampleBlock> Allocate(std::size_t samples) override {
    if (allocated++ >= room) return nullptr;
    return std::make_unique<Block>(samples);
  }
  void Warm(SampleBlock& /*block*/) override { ++warmed; }

  int allocated = 0;
  int warmed = 0;
  int room = 1 << 20;

 private:
  class Block final : public SampleBlock {
   public:
    explicit Block(std::size_t samples) : samples_(samples) {}
    std::span<std::int16_t> Samples() noexcept override { return samples_; }

   private:
    std::vector<std::int16_t> samples_;
  };
};

class Store : public ::testing::Test {
 protected:
  std::shared_ptr<PcmStorePool> MakePool() {
    return std::make_shared<PcmStorePool>(files, &memory, workers, clock);
  }
  /// What Prepare reported; nothing while it has not.
  std::optional<support::Result<void>> Prepare(const std::string& path) {
    std::optional<support::Result<void>> result;
    pool->Prepare(path, DecoderKind::General, [&](support::Result<void> done) { result = std::move(done); });
    workers.RunOne();
    return result;
  }

  FakeDecoders files;
  CountingMemory memory;
  support::testing::ManualExecutor workers;
  support::testing::FakeClock clock;
  std::shared_ptr<PcmStorePool> pool = MakePool();
};

TEST_F(Store, ReadsEveryFrameAtItsPlaceAcrossItsChunks) {
  constexpr std::int64_t kFrames = 3 * PcmStore::kChunkFrames + 777;
  files.Add("ramp", RampFile(kFrames));
  const auto store = pool->Get("ramp", DecoderKind::General).Value();
  store->DecodeUpTo(kFrames + 1);
  ASSERT_TRUE(store->Complete());
  EXPECT_EQ(store->Length(), kFrames);
  for (const std::int64_t frame : std::array<std::int64_t, 5>{0, 65'535, 65'536, 131'000, kFrames - 5}) {
    std::array<std::int16_t, 10> samples{};
    ASSERT_EQ(store->Read(frame, samples), 5);
    for (std::int64_t i = 0; i < 5; ++i) {
      EXPECT_EQ(samples[static_cast<std::size_t>(2 * i)], (frame + i) % 25'000);
    }
  }
  std::array<std::int16_t, 10> samples{};
  EXPECT_EQ(store->Read(kFrames - 2, samples), 2);
  EXPECT_EQ(store->Read(kFrames + 2, samples), 0);
}

TEST_F(Store, ShowsTheHeadersLengthUntilItKnowsTheExactOne) {
  FakeFile file = RampFile(100'000);
  file.estimate = 123'456;
  files.Add("ramp", file);
  const auto store = pool->Get("ramp", DecoderKind::General).Value();
  EXPECT_EQ(store->Length(), 123'456);
  workers.RunAll();
  EXPECT_EQ(store->Length(), 100'000);
}

TEST_F(Store, IsOneForAllWhoAskForTheFile) {
  files.Add("ramp", RampFile(100'000));
  const auto first = pool->Get("ramp", DecoderKind::General).Value();
  const auto second = pool->Get("ramp", DecoderKind::General).Value();
  EXPECT_EQ(first, second);
  EXPECT_EQ(files.Opened(), 1);
}

TEST_F(Store, IsPreparedWhenItsFirstSecondIsThere) {
  files.Add("ramp", RampFile(1'000'000));
  const auto result = Prepare("ramp");
  ASSERT_TRUE(result.has_value());
  EXPECT_TRUE(result->Ok());
  const std::int64_t reads = files.Reads();
  const auto store = pool->Get("ramp", DecoderKind::General).Value();
  EXPECT_GE(store->Ready(), 44'100);
  EXPECT_LT(store->Ready(), 100'000);
  EXPECT_EQ(files.Reads(), reads);
}

TEST_F(Store, IsKeptTenSecondsForThoseWhoPreparedIt) {
  files.Add("ramp", RampFile(100'000));
  Prepare("ramp");
  clock.Advance(9s);
  pool->DropOld();
  EXPECT_TRUE(pool->Get("ramp", DecoderKind::General).Ok());
  EXPECT_EQ(files.Opened(), 1);
  clock.Advance(2s);
  pool->DropOld();
  workers.RunAll();
  EXPECT_TRUE(pool->Get("ramp", DecoderKind::General).Ok());
  EXPECT_EQ(files.Opened(), 2);
}

TEST_F(Store, IsDecodedNoFurtherWhenNobodyHoldsIt) {
  files.Add("ramp", RampFile(10'000'000));
  auto store = pool->Get("ramp", DecoderKind::General).Value();
  workers.RunOne();
  workers.RunOne();
  const std::int64_t reads = files.Reads();
  store.reset();
  workers.RunAll();
  EXPECT_EQ(files.Reads(), reads);
}

TEST_F(Store, FailsWithTheDecodersSentence) {
  const auto result = Prepare("missing.mp3");
  ASSERT_TRUE(result.has_value() && !result->Ok());
  EXPECT_EQ(result->Failure().text, "missing.mp3 does not exist.");
}

TEST_F(Store, OfNoFramesAtAllIsAFailureWithASentence) {
  files.Add("folder/empty.mp3", RampFile(0));
  const auto result = Prepare("folder/empty.mp3");
  ASSERT_TRUE(result.has_value() && !result->Ok());
  EXPECT_EQ(result->Failure().text, "empty.mp3 holds no sound.");
  FakeFile broken = RampFile(1000);
  broken.fails_at = 0;
  files.Add("broken.mp3", broken);
  EXPECT_EQ(Prepare("broken.mp3")->Failure().text, "The file is damaged.");
}

TEST_F(Store, KeepsWhatCameBeforeADamage) {
  FakeFile file = RampFile(200'000);
  file.fails_at = 90'000;
  files.Add("ramp", file);
  const auto store = pool->Get("ramp", DecoderKind::General).Value();
  workers.RunAll();
  EXPECT_TRUE(store->Complete());
  EXPECT_EQ(store->Length(), 90'000);
  EXPECT_EQ(store->Failure()->text, "The file is damaged.");
}

TEST_F(Store, RefusesRatesAndChannelsThatCannotBe) {
  for (const PcmFormat format :
       {PcmFormat{0, 2}, PcmFormat{44100, 0}, PcmFormat{44100, 9}, PcmFormat{-5, 2}}) {
    FakeFile file = RampFile(1000);
    file.format = format;
    files.Add("odd", file);
    EXPECT_FALSE(pool->Get("odd", DecoderKind::General).Ok());
  }
}

TEST_F(Store, TakesItsMemoryElsewhereBeyondHalfAnHour) {
  constexpr std::int64_t kRateHere = 1000;
  FakeFile file = RampFile(31 * 60 * kRateHere + 5 * PcmStore::kChunkFrames, kRateHere);
  files.Add("long", file);
  const auto store = pool->Get("long", DecoderKind::General).Value();
  workers.RunAll();
  EXPECT_GT(memory.allocated, 3);
  EXPECT_FALSE(store->IsPaged(20 * 60 * kRateHere));
  const std::int64_t late = 31 * 60 * kRateHere + PcmStore::kChunkFrames;
  EXPECT_TRUE(store->IsPaged(late));
  std::array<std::int16_t, 2> samples{};
  store->Read(late, samples);
  EXPECT_EQ(samples[0], late % 25'000);
  pool->WarmAhead(store, late);
  workers.RunAll();
  EXPECT_GT(memory.warmed, 0);
}

TEST_F(Store, KeepsHalfAnHourInMemoryAndLessOfWideFiles) {
  EXPECT_EQ(PcmStore::FramesInMemory({44100, 2}), 30 * 60 * 44100);
  EXPECT_EQ(PcmStore::FramesInMemory({8000, 1}), 30 * 60 * 8000);
  EXPECT_EQ(PcmStore::FramesInMemory({192'000, 6}), 30 * 60 * 16000);
}

TEST_F(Store, IsWarmedBeforeASeekReadsIt) {
  constexpr int kRateHere = 1000;
  constexpr std::int64_t kLate = 31 * 60 * kRateHere;
  files.Add("long", RampFile(kLate + 5 * PcmStore::kChunkFrames, kRateHere));
  const auto stream = std::make_shared<Stream>(1, pool->Get("long", DecoderKind::General).Value(), 1, 0);
  workers.RunAll();
  stream->Seek(kLate);
  FakeStretchers stretchers;
  StreamFeed feed(stream, stretchers, *pool, kRateHere);
  feed.Pump(0);
  EXPECT_EQ(stream->lanes[0].Fed() + stream->lanes[1].Fed(), 0) << "the feeder does not wait for a disk";
  workers.RunAll();
  EXPECT_GT(memory.warmed, 0);
  feed.Pump(0);
  EXPECT_EQ(stream->hand_over, Stream::HandOver::Ready);
}

TEST_F(Store, IsWarmedAheadOfWhatPlays) {
  constexpr int kRateHere = 1000;
  constexpr std::int64_t kHeap = 30 * 60 * kRateHere;
  files.Add("long", RampFile(kHeap + 5 * PcmStore::kChunkFrames, kRateHere));
  const auto stream = std::make_shared<Stream>(1, pool->Get("long", DecoderKind::General).Value(), 1, 0);
  workers.RunAll();
  stream->Seek(kHeap);  // in the last chunk of the heap
  FakeStretchers stretchers;
  StreamFeed feed(stream, stretchers, *pool, kRateHere);
  feed.Pump(0);
  stream->hand_over = Stream::HandOver::Free;  // the callback took it
  feed.Pump(0);
  workers.RunAll();
  EXPECT_GT(memory.warmed, 0);
}

TEST_F(Store, TakesTheHeapWhenThereIsNoRoomElsewhere) {
  memory.room = 1;
  files.Add("long", RampFile(40 * 60 * 1000 + 3 * PcmStore::kChunkFrames, 1000));
  const auto store = pool->Get("long", DecoderKind::General).Value();
  workers.RunAll();
  EXPECT_EQ(store->Length(), 40 * 60 * 1000 + 3 * PcmStore::kChunkFrames);
}

class Decoders : public ::testing::Test {
 protected:
  void SetUp() override {
    stage.files.Add("ramp.mp3", RampFile(50'000));
    stage.StopWorkers();
    stage.engine->BASS_Init(1, kRate, 0);
  }
  decks::StreamHandle Open(const std::string& path) {
    return stage.engine->BASS_StreamCreateFile(false, path, 0, 0, decks::kStreamDecode);
  }
  std::vector<std::int16_t> Get(decks::StreamHandle decoder, std::uint32_t bytes) {
    std::vector<std::int16_t> buffer(bytes / 2);
    buffer.resize(stage.engine->BASS_ChannelGetData(decoder, buffer, bytes) / 2);
    return buffer;
  }

  SoundStage stage;
};

TEST_F(Decoders, GiveTheWholeFileInOrderWithoutAnyWorker) {
  const auto decoder = Open("ramp.mp3");
  std::int64_t frame = 0;
  while (stage.engine->BASS_ChannelIsActive(decoder)) {
    for (const std::int16_t sample : Get(decoder, 20'000)) {
      ASSERT_EQ(sample, (frame % 2 == 0 ? 1 : -1) * ((frame / 2) % 25'000));
      ++frame;
    }
  }
  EXPECT_EQ(frame, 100'000);
  EXPECT_EQ(stage.engine->BASS_ChannelGetPosition(decoder).value, 200'000);
}

TEST_F(Decoders, ReadOnFromWhereTheyWereSet) {
  const auto decoder = Open("ramp.mp3");
  EXPECT_TRUE(stage.engine->BASS_ChannelSetPosition(decoder, {4 * 40'000}));
  EXPECT_EQ(Get(decoder, 4).front(), 15'000);
  EXPECT_FALSE(stage.engine->BASS_ChannelSetPosition(decoder, {4 * 50'000}));
  EXPECT_FALSE(stage.engine->BASS_ChannelSetPosition(decoder, {-4}));
  EXPECT_EQ(Get(decoder, 4).front(), 15'001);
}

TEST_F(Decoders, NeverWriteBeyondTheBufferWhateverTheCountSays) {
  const auto decoder = Open("ramp.mp3");
  std::vector<std::int16_t> buffer(10);
  EXPECT_EQ(stage.engine->BASS_ChannelGetData(decoder, buffer, 1 << 20), 20U);
}

TEST_F(Decoders, ThatCannotBeMadeAreZeroAndEveryCallOnZeroDoesNothing) {
  EXPECT_EQ(Open("missing.mp3"), 0U);
  EXPECT_EQ(stage.engine->LastError().text, "missing.mp3 does not exist.");
  EXPECT_EQ(stage.engine->BASS_FX_TempoCreate(0, 0x10004), 0U);
  EXPECT_FALSE(stage.engine->BASS_ChannelPlay(0, false));
  EXPECT_EQ(stage.engine->BASS_ChannelGetLevel(0), 0U);
  EXPECT_FALSE(stage.engine->BASS_ChannelIsActive(0));
  stage.engine->BASS_ChannelPause(0);
  stage.engine->BASS_ChannelStop(0);
  stage.engine->BASS_StreamFree(0);
  stage.engine->BASS_FX_BPM_Free(0);
  EXPECT_EQ(Get(0, 100).size(), 0U);
}

}  // namespace
}  // namespace engine::testing
