// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>

#include "app/testing/FakeMixer.h"
#include "platform/audio/PulseMixer.h"
#include "platform/audio/testing/SoundServer.h"

namespace platform::audio {
namespace {

using testing::SoundServer;

/// What a mixer told last, and a wait for it.
class Told {
 public:
  app::SystemMixer::Changed Taker() {
    return [this](int percent) {
      const std::lock_guard<std::mutex> lock(mutex_);
      last_ = percent;
      came_.notify_all();
    };
  }
  bool Await(int percent) {
    std::unique_lock<std::mutex> lock(mutex_);
    return came_.wait_for(lock, std::chrono::seconds(20), [&] { return last_ == percent; });
  }

 private:
  std::mutex mutex_;
  std::condition_variable came_;
  int last_ = -1;
};

/// A mixer and the system behind it.
class MixerRig {
 public:
  virtual ~MixerRig() = default;
  virtual app::SystemMixer& Mixer() = 0;
  /// As another program would.
  virtual void Move(int percent) = 0;
  virtual int SystemVolume() = 0;
};

class FakeRig final : public MixerRig {
 public:
  app::SystemMixer& Mixer() override { return mixer_; }
  void Move(int percent) override { mixer_.Move(percent); }
  int SystemVolume() override { return mixer_.Volume(); }

 private:
  app::testing::FakeMixer mixer_;
};

class PulseRig final : public MixerRig {
 public:
  app::SystemMixer& Mixer() override { return mixer_; }
  void Move(int percent) override { ASSERT_TRUE(server_.SetVolume("main", percent, percent)); }
  int SystemVolume() override { return server_.Volumes("main").at(0); }

 private:
  SoundServer server_{std::vector<testing::SinkSpec>{{"main", "Main"}}};
  PulseMixer mixer_{server_.Address()};
};

using MakeRig = std::unique_ptr<MixerRig> (*)();
struct NamedRig {
  const char* name;
  MakeRig make;
};
class MixerContract : public ::testing::TestWithParam<NamedRig> {
 protected:
  Told told_;  // outlives the rig, which calls it
  std::unique_ptr<MixerRig> rig_ = GetParam().make();
};
INSTANTIATE_TEST_SUITE_P(
    Mixers, MixerContract,
    ::testing::Values(NamedRig{"Fake", [] { return std::unique_ptr<MixerRig>(new FakeRig); }},
                      NamedRig{"Pulse", [] { return std::unique_ptr<MixerRig>(new PulseRig); }}),
    [](const auto& instance) { return std::string(instance.param.name); });

TEST_P(MixerContract, TellsTheVolumeOnceItIsOpen) {
  rig_->Move(40);
  rig_->Mixer().Open(told_.Taker());
  EXPECT_TRUE(told_.Await(40));
}

TEST_P(MixerContract, TellsWhenSomebodyElseMovesIt) {
  rig_->Move(40);
  rig_->Mixer().Open(told_.Taker());
  ASSERT_TRUE(told_.Await(40));
  rig_->Move(70);
  EXPECT_TRUE(told_.Await(70));
}

TEST_P(MixerContract, MovesTheSystemsVolumeWithinItsEnds) {
  rig_->Move(40);
  rig_->Mixer().Open(told_.Taker());
  ASSERT_TRUE(told_.Await(40));
  for (const auto& [asked, got] : {std::pair{25, 25}, {-5, 0}, {300, 100}}) {
    rig_->Mixer().SetVolume(asked);
    rig_->Move(rig_->SystemVolume());  // a round trip through the system, by another program
    EXPECT_TRUE(told_.Await(got)) << asked;
    EXPECT_EQ(rig_->SystemVolume(), got);
  }
}

TEST_P(MixerContract, BeforeItIsOpenNothingIsMoved) {
  rig_->Move(40);
  rig_->Mixer().SetVolume(90);
  EXPECT_EQ(rig_->SystemVolume(), 40);
}

TEST(PulseMixerTest, KeepsTheBalance) {
  Told told;
  SoundServer server(std::vector<testing::SinkSpec>{{"main", "Main"}});
  ASSERT_TRUE(server.SetVolume("main", 80, 40));
  PulseMixer mixer(server.Address());
  mixer.Open(told.Taker());
  ASSERT_TRUE(told.Await(80));
  mixer.SetVolume(50);
  ASSERT_TRUE(told.Await(50));
  EXPECT_EQ(server.Volumes("main"), (std::vector<int>{50, 25}));
}

TEST(PulseMixerTest, MovesTheChosenOutputAndTheUsualOneWhereThatIsGone) {
  Told told;
  SoundServer server(std::vector<testing::SinkSpec>{{"main", "Main"}, {"booth", "Booth"}});
  ASSERT_TRUE(server.MakeDefault("main"));
  ASSERT_TRUE(server.SetVolume("booth", 60, 60));
  PulseMixer mixer(server.Address());
  mixer.Choose("Booth");
  mixer.Open(told.Taker());
  ASSERT_TRUE(told.Await(60));
  mixer.SetVolume(35);
  ASSERT_TRUE(told.Await(35));
  EXPECT_EQ(server.Volumes("booth").at(0), 35);
  EXPECT_EQ(server.Volumes("main").at(0), 100);
  mixer.Choose("Gone");
  ASSERT_TRUE(told.Await(100));
  mixer.SetVolume(80);
  ASSERT_TRUE(told.Await(80));
  EXPECT_EQ(server.Volumes("main").at(0), 80);
  EXPECT_EQ(server.Volumes("booth").at(0), 35);
}

TEST(PulseMixerTest, FindsAServerThatComesLaterAndAnotherDefault) {
  Told told;
  SoundServer server(std::vector<testing::SinkSpec>{{"main", "Main"}, {"other", "Other"}});
  server.Kill();
  PulseMixer mixer(server.Address());
  mixer.Open(told.Taker());
  mixer.SetVolume(10);
  ASSERT_TRUE(server.Start());
  EXPECT_TRUE(told.Await(100));
  ASSERT_TRUE(server.SetVolume("other", 30, 30));
  ASSERT_TRUE(server.MakeDefault("other"));
  EXPECT_TRUE(told.Await(30));
}

}  // namespace
}  // namespace platform::audio
