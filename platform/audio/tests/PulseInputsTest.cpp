// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/audio/PulseInputs.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

#include "platform/audio/PulseDevices.h"
#include "platform/audio/testing/RampSource.h"
#include "platform/audio/testing/SoundServer.h"
#include "support/Sentences.h"

namespace platform::audio::testing {
namespace {

using namespace std::chrono_literals;

/// Keeps what was recorded. It locks, so it is for tests of the inputs alone.
class Tape final : public engine::CaptureSink {
 public:
  void Capture(std::span<const float> interleaved) noexcept override {
    const std::lock_guard<std::mutex> lock(mutex_);
    samples_.insert(samples_.end(), interleaved.begin(), interleaved.end());
    largest_ = std::max(largest_, interleaved.size());
    came_.notify_all();
  }
  bool Await(std::size_t samples) {
    std::unique_lock<std::mutex> lock(mutex_);
    return came_.wait_for(lock, 20s, [&] { return samples_.size() >= samples; });
  }
  /// Waits for one that is not silent.
  bool AwaitSound() {
    std::unique_lock<std::mutex> lock(mutex_);
    return came_.wait_for(lock, 20s, [&] {
      return std::any_of(samples_.begin(), samples_.end(), [](float sample) { return sample != 0; });
    });
  }
  std::size_t Size() {
    const std::lock_guard<std::mutex> lock(mutex_);
    return samples_.size();
  }
  std::size_t Largest() {
    const std::lock_guard<std::mutex> lock(mutex_);
    return largest_;
  }

 private:
  std::mutex mutex_;
  std::condition_variable came_;
  std::vector<float> samples_;
  std::size_t largest_ = 0;
};

class PulseMicrophones : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(server.Running());
    ASSERT_TRUE(server.AddMicrophone("desk", "talker"));
  }
  engine::InputDeviceInfo Find(const std::string& id) {
    for (const auto& info : inputs.List()) {
      if (info.id == id) return info;
    }
    return {};
  }
  template <class Done>
  static bool Eventually(const Done& done) {
    const auto until = std::chrono::steady_clock::now() + 20s;
    while (!done() && std::chrono::steady_clock::now() < until) std::this_thread::yield();
    return done();
  }

  SoundServer server{{{"hall", "Hall"}, {"talker", "Talker"}}};
  Tape tape;
  std::atomic<int> changes{0};
  PulseInputs inputs{server.Address()};
};

TEST_F(PulseMicrophones, TellWhatTheyAreMadeOf) {
  EXPECT_EQ(Find("hall.monitor").monitor_of, "hall");
  const auto desk = Find("desk");
  EXPECT_EQ(desk.name, "desk");
  EXPECT_EQ(desk.monitor_of, "talker") << "through the source that it is made of";
  EXPECT_EQ(desk.channels, 2);
  EXPECT_EQ(desk.sample_rate, 44100);
  EXPECT_FALSE(desk.muted);
}

TEST_F(PulseMicrophones, RecordWhatIsPlayedThereInSmallBlocks) {
  PulseDevices outputs(server.Address());
  RampSource ramp(2);
  auto input = inputs.Open({"desk", 5}, tape);
  ASSERT_TRUE(input) << input.Failure().text;
  const auto talker = outputs.Open({"talker", 44100, 40, 20, false}, ramp);
  ASSERT_TRUE(talker);
  EXPECT_TRUE(tape.AwaitSound());
  EXPECT_TRUE(tape.Await(2 * 44100));
  EXPECT_LE(tape.Largest(), 2U * 44100 / 10);
  EXPECT_LT(input.Value()->Behind(), 500ms);
  std::move(input).Value().reset();
  const std::size_t size = tape.Size();
  EXPECT_TRUE(ramp.AwaitFrames(ramp.Frames() + 4410));
  EXPECT_EQ(tape.Size(), size) << "closed, it records no more";
}

TEST_F(PulseMicrophones, OneThatIsPulledIsLostAndToldAndBack) {
  inputs.OnChange([this] { ++changes; });
  auto input = inputs.Open({"desk", 5}, tape);
  ASSERT_TRUE(input);
  EXPECT_TRUE(tape.Await(4410));
  changes = 0;
  ASSERT_TRUE(server.RemoveMicrophone("desk"));
  EXPECT_TRUE(Eventually([&] { return input.Value()->Lost() && changes > 0; }));
  EXPECT_FALSE(inputs.Open({"desk", 5}, tape));
  ASSERT_TRUE(server.AddMicrophone("desk", "talker"));
  EXPECT_TRUE(inputs.Open({"desk", 5}, tape));
}

TEST_F(PulseMicrophones, OneThatIsMutedIsTold) {
  inputs.OnChange([this] { ++changes; });
  ASSERT_FALSE(Find("desk").muted);
  changes = 0;
  ASSERT_TRUE(server.MuteMicrophone("desk", true));
  EXPECT_TRUE(Eventually([&] { return changes > 0; }));
  EXPECT_TRUE(Find("desk").muted);
}

TEST_F(PulseMicrophones, AServerThatGoesTakesThemAlong) {
  const auto input = inputs.Open({"desk", 5}, tape);
  ASSERT_TRUE(input);
  server.Kill();
  EXPECT_TRUE(Eventually([&] { return input.Value()->Lost(); }));
  EXPECT_TRUE(inputs.List().empty());
  EXPECT_EQ(inputs.Open({"desk", 5}, tape).Failure().saying.sentence, support::Sentence::InputMissing);
}

TEST_F(PulseMicrophones, AServerThatHangsIsLost) {
  const auto input = inputs.Open({"desk", 5}, tape);
  ASSERT_TRUE(input);
  server.Freeze();
  EXPECT_TRUE(Eventually([&] { return input.Value()->Lost(); }));
  server.Continue();
}

}  // namespace
}  // namespace platform::audio::testing
