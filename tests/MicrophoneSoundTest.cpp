// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <functional>
#include <memory>
#include <thread>
#include <vector>

#include "engine/HallMicrophone.h"
#include "engine/SoundEngine.h"
#include "engine/testing/FakeDecoders.h"
#include "engine/testing/FakeStretchers.h"
#include "engine/testing/SpokenHall.h"
#include "platform/audio/PulseDevices.h"
#include "platform/audio/PulseInputs.h"
#include "platform/audio/testing/MonitorRecorder.h"
#include "platform/audio/testing/SoundServer.h"
#include "support/Executor.h"
#include "support/Sentences.h"

namespace {

using namespace std::chrono_literals;
using engine::testing::Syllables;
using engine::testing::ToneLevel;
using platform::audio::testing::MonitorRecorder;
using platform::audio::testing::SoundServer;

constexpr double kMusicHz = 3000;

/// A mouth before the microphone: it speaks while it is told to.
class Mouth final : public engine::RenderSource {
 public:
  void Render(std::span<float> interleaved) noexcept override {
    for (std::size_t i = 0; i < interleaved.size(); i += 2, ++frame_) {
      const float voice = speaks ? Syllables(static_cast<double>(frame_) / 44100, 0, 1000) : 0;
      interleaved[i] = interleaved[i + 1] = voice;
    }
  }
  std::atomic<bool> speaks{false};

 private:
  std::int64_t frame_ = 0;
};

/// The engine and the microphone on a real sound server, as the program puts them together.
class HallOnAServer : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(server.Running());
    ASSERT_TRUE(server.AddMicrophone("desk", "talker"));
    files.Add("music.mp3", engine::testing::ToneFile(120 * 44100, kMusicHz, 0.25));
    engine.BASS_SetConfig(decks::kConfigUpdatePeriod, 20);
    engine.BASS_SetConfig(decks::kConfigBuffer, 60);
    ASSERT_TRUE(engine.BASS_Init(1, 44100, 0) && engine.BASS_SetDevice(1));
    const auto decoder = engine.BASS_StreamCreateFile(false, "music.mp3", 0, 0, decks::kStreamDecode);
    engine.BASS_ChannelPlay(engine.BASS_FX_TempoCreate(decoder, decks::kTempoFreeSource), false);
    auto opened = talker_outputs.Open({"talker", 44100, 40, 20, false}, mouth);
    ASSERT_TRUE(opened);
    talker = std::move(opened).Value();
    wish.device = "desk";
    wish.hall = {{1, 0}};
    wish.duck.depth = 12;
  }
  void TearDown() override { microphone->Close(); }

  bool Eventually(const std::function<bool(const decks::MicrophoneState&)>& done) {
    const auto until = std::chrono::steady_clock::now() + 20s;
    while (std::chrono::steady_clock::now() < until) {
      microphone->Watch();
      if (done(microphone->Now())) return true;
      std::this_thread::yield();
    }
    return false;
  }
  void Ask() { microphone->Ask(wish); }
  /// In the last tenths of a second that were heard in the hall.
  double Heard(const MonitorRecorder& ear, double hertz, std::size_t frames = 8820) {
    std::vector<float> newest;
    for (const std::int16_t sample : ear.Channel(0)) newest.push_back(static_cast<float>(sample) / 32768);
    return newest.size() < frames ? 0 : ToneLevel(newest, newest.size() - frames, frames, hertz);
  }

  SoundServer server{{{"hall", "Hall"}, {"talker", "Talker"}}};
  support::SteadyClock clock;
  Mouth mouth;
  engine::testing::FakeDecoders files;
  engine::testing::FakeStretchers stretchers;
  platform::audio::PulseDevices outputs{server.Address()};
  platform::audio::PulseDevices talker_outputs{server.Address()};
  platform::audio::PulseInputs inputs{server.Address()};
  support::ThreadPool workers{2};
  engine::SoundEngine engine{{outputs, files, stretchers, workers, clock},
                             engine::SoundEngine::Feeding::OwnThread};
  std::unique_ptr<engine::OutputDevice> talker;
  std::shared_ptr<engine::HallMicrophone> microphone =
      std::make_shared<engine::HallMicrophone>(inputs, engine.Devices(), workers, clock);
  decks::MicrophoneWish wish;
};

TEST_F(HallOnAServer, IsSpokenToWhileTheMusicMakesWay) {
  const MonitorRecorder ear(server.Address(), "hall", 2);
  EXPECT_TRUE(Eventually([&](const auto&) { return Heard(ear, kMusicHz) > 0.2; })) << "music";
  wish.on = true;
  Ask();
  mouth.speaks = true;
  EXPECT_TRUE(Eventually([](const auto& now) { return now.open && now.gate_open && now.ducking > 11.9F; }));
  EXPECT_TRUE(Eventually([&](const auto&) {
    const double music = Heard(ear, kMusicHz);
    return music > 0.04 && music < 0.08 && Heard(ear, 150) > 0.05;
  })) << "the voice above the music, which is 12 dB down; music "
      << Heard(ear, kMusicHz) << " voice " << Heard(ear, 150);
  const auto now = microphone->Now();
  EXPECT_GT(now.latency, 5ms);
  EXPECT_LT(now.latency, 150ms);
  RecordProperty("latency_ms", static_cast<int>(now.latency.count() / 1000));
  mouth.speaks = false;
  EXPECT_TRUE(Eventually([](const auto& state) { return state.ducking == 0; }));
  wish.on = false;
  Ask();
  EXPECT_TRUE(Eventually([](const auto& state) { return !state.open; }));
  EXPECT_TRUE(Eventually([&](const auto&) { return Heard(ear, kMusicHz) > 0.24 && Heard(ear, 150) < 0.01; }));
}

TEST_F(HallOnAServer, MissesItsMicrophoneAndFindsItAgain) {
  wish.on = true;
  Ask();
  EXPECT_TRUE(Eventually([](const auto& now) { return now.open; }));
  ASSERT_TRUE(server.RemoveMicrophone("desk"));
  EXPECT_TRUE(Eventually(
      [](const auto& now) { return !now.open && now.trouble.sentence == support::Sentence::InputGone; }));
  ASSERT_TRUE(server.AddMicrophone("desk", "talker"));
  EXPECT_TRUE(Eventually([](const auto& now) { return now.open && now.trouble == support::Saying{}; }));
}

TEST_F(HallOnAServer, RefusesToHearItself) {
  ASSERT_TRUE(server.AddMicrophone("echo", "hall"));
  for (const char* device : {"hall.monitor", "echo"}) {
    wish.device = device;
    wish.on = true;
    Ask();
    EXPECT_TRUE(Eventually([](const auto& now) {
      return now.trouble.sentence == support::Sentence::InputLoop && !now.open;
    })) << device;
  }
}

}  // namespace
