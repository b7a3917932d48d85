// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <thread>
#include <vector>

#include "engine/NullDevice.h"
#include "engine/SoundEngine.h"
#include "engine/testing/FakeDecoders.h"
#include "engine/testing/FakeStretchers.h"
#include "engine/testing/SoundStage.h"

namespace engine::testing {
namespace {

/// No sound system at all.
class NoOutputs final : public OutputDevices {
 public:
  std::vector<OutputDeviceInfo> List() override { return {}; }
  support::Result<std::unique_ptr<OutputDevice>> Open(const OutputRequest&, RenderSource&) override {
    return support::Error{support::ErrorCode::Unavailable, "There is no sound system."};
  }
  void OnChange(std::function<void()> changed) override { changed_ = std::move(changed); }

 private:
  std::function<void()> changed_;
};

/// The engine as it runs in the program: a feeder's thread, workers, and an output that pulls by the clock.
class RealThreads : public ::testing::Test {
 protected:
  void SetUp() override {
    files.Add("tone.mp3", ToneFile(30 * kRate, 200));
    ASSERT_TRUE(engine.BASS_Init(0, kRate, 0));
  }
  decks::StreamHandle Load() {
    const auto decoder = engine.BASS_StreamCreateFile(false, "tone.mp3", 0, 0, decks::kStreamDecode);
    return engine.BASS_FX_TempoCreate(decoder, decks::kTempoFreeSource);
  }
  void WaitForFrame(decks::StreamHandle stream, std::int64_t frame) {
    while (engine.Heard(stream).frame.value < frame) std::this_thread::yield();
  }

  FakeDecoders files;
  FakeStretchers stretchers;
  NoOutputs outputs;
  support::SteadyClock clock;
  support::ThreadPool workers{2};
  SoundEngine engine{{outputs, files, stretchers, workers, clock}, SoundEngine::Feeding::OwnThread};
};

TEST_F(RealThreads, PlayPlaceAndFreeWhileTheOutputPulls) {
  const auto stream = Load();
  ASSERT_TRUE(engine.BASS_ChannelPlay(stream, false));
  WaitForFrame(stream, 2000);
  engine.BASS_ChannelSetPosition(stream, {4 * 5 * kRate});
  WaitForFrame(stream, 5 * kRate);
  engine.BASS_FX_TempoSet(stream, 4, decks::kTempoUnchanged, decks::kTempoUnchanged);
  WaitForFrame(stream, 5 * kRate + 8000);
  engine.BASS_ChannelPause(stream);
  engine.BASS_ChannelPlay(stream, false);
  engine.BASS_StreamFree(stream);
  const auto next = Load();
  engine.BASS_ChannelPlay(next, false);
  WaitForFrame(next, 1000);
  EXPECT_GT(engine.Health().callbacks, 0U);
}

TEST_F(RealThreads, ScanAFileFromWorkersWhileItPlays) {
  const auto stream = Load();
  engine.BASS_ChannelPlay(stream, false);
  std::vector<std::future<std::int64_t>> scans;
  for (int i = 0; i < 3; ++i) {
    scans.push_back(std::async(std::launch::async, [this] {
      const auto decoder = engine.BASS_StreamCreateFile(false, "tone.mp3", 0, 0, decks::kStreamDecode);
      std::vector<std::int16_t> buffer(10'000);
      std::int64_t bytes = 0;
      while (engine.BASS_ChannelIsActive(decoder))
        bytes += engine.BASS_ChannelGetData(decoder, buffer, 20'000);
      engine.BASS_StreamFree(decoder);
      return bytes;
    }));
  }
  for (int i = 0; i < 20; ++i) engine.BASS_StreamFree(Load());
  for (auto& scan : scans) EXPECT_EQ(scan.get(), 4 * 30 * kRate);
  WaitForFrame(stream, 2000);
  EXPECT_EQ(files.Opened(), 1);
}

TEST_F(RealThreads, PreparedFilesAreReportedOnceEach) {
  std::atomic<int> done = 0;
  for (int i = 0; i < 5; ++i) {
    engine.Prepare(i == 4 ? "missing.mp3" : "tone.mp3", [&](support::Result<void>) { ++done; });
  }
  while (done < 5) std::this_thread::yield();
  EXPECT_LE(files.Opened(), 5);
}

TEST_F(RealThreads, EndInTheMiddleOfEverything) {
  const auto stream = Load();
  engine.BASS_ChannelPlay(stream, false);
  WaitForFrame(stream, 500);
  std::atomic<int> done = 0;
  engine.Prepare("tone.mp3", [&](support::Result<void>) { ++done; });
  engine.BASS_Free();
  EXPECT_FALSE(engine.Heard(stream).playing);
  while (done < 1) std::this_thread::yield();
}

}  // namespace
}  // namespace engine::testing
