// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/usb/K8062Interface.h"

#include <gtest/gtest.h>

#include "dmx/OutputStage.h"
#include "dmx/ShowPlayer.h"
#include "dmx/testing/ShowMaker.h"
#include "platform/usb/testing/EmulatedK8062.h"
#include "support/testing/FakeClock.h"

namespace platform::usb {
namespace {

using namespace std::chrono_literals;
using State = dmx::DmxInterfaceStatus::State;
using testing::EmulatedK8062;
using testing::K8062Decoder;

/// The real adapter at an emulated bus, behind the output stage and the faders.
class K8062InterfaceTest : public ::testing::Test {
 protected:
  void Start() {
    stage_.StartDevice();
    stage_.SetChannelCount(512);
  }
  void Move(int channel, int level) { universe_.MoveFader(channel, static_cast<dmx::DmxLevel>(level)); }
  /// The box comes to show what the faders show.
  [[nodiscard]] bool BoxShowsFaders() {
    return bus_.WaitUntil([&](const K8062Decoder& box) { return box.Shown() == universe_.Levels(); });
  }
  [[nodiscard]] bool MorePackets(int packets = 50) {
    const int before = bus_.Box().Packets();
    return bus_.WaitUntil([&](const K8062Decoder& box) { return box.Packets() >= before + packets; });
  }
  /// The interface is gone, and with it all it had to send.
  void Quit() { wire_.reset(); }

  EmulatedK8062 bus_;
  std::unique_ptr<K8062Interface> wire_ = std::make_unique<K8062Interface>();
  dmx::OutputStage stage_{*wire_};
  dmx::Universe universe_{stage_};
};

TEST_F(K8062InterfaceTest, AnEveningFromTheFirstFaderToTheDarkFrame) {
  bus_.Plug();
  Start();
  Move(1, 255);
  Move(512, 3);
  EXPECT_TRUE(BoxShowsFaders());
  EXPECT_EQ(wire_->Status().state, State::Sending);

  dmx::Scenes scenes;
  std::vector<int> bright(dmx::kUniverseChannels);
  for (std::size_t i = 0; i < bright.size(); ++i) bright[i] = static_cast<int>(i * 7 % 256);
  dmx::testing::AddScene(scenes, 2,
                         {dmx::testing::StepWith("00:02.0", "00:01.0", bright),
                          dmx::testing::StepWith("00:00.0", "00:01.0", {1, 2, 3})});
  std::vector<int> channels(dmx::kUniverseChannels);
  for (std::size_t i = 0; i < channels.size(); ++i) channels[i] = static_cast<int>(i) + 1;
  auto plan = dmx::ShowPlan::Make(scenes, channels);
  ASSERT_TRUE(plan.Ok());
  support::testing::FakeClock clock;
  dmx::ShowPlayer player(universe_);
  player.Play(std::make_shared<dmx::ShowPlan>(std::move(plan).Value()), dmx::ShowPlayer::Repeat::Once,
              clock.Now());
  for (int part = 0; player.Now() == dmx::ShowPlayer::State::Playing; ++part) {
    for (int i = 0; i < 70; ++i) {
      clock.Advance(10ms);
      player.Tick(clock.Now());
    }
    ASSERT_TRUE(BoxShowsFaders()) << part;
  }
  EXPECT_EQ(bus_.Box().Shown()[1], 2);

  stage_.StopDevice();
  Quit();
  EXPECT_EQ(bus_.Box().Shown(), K8062Decoder::Frame());
  EXPECT_EQ(bus_.Box().ShownChannels(), 512);
  EXPECT_EQ(bus_.Box().Faults(), std::vector<std::string>());
}

TEST_F(K8062InterfaceTest, ABoxThatIsPulledInMidFrameIsFoundAgainWithTheFramesAsTheyAreThen) {
  bus_.Plug();
  Start();
  for (int channel = 1; channel <= 100; ++channel) Move(channel, 100);
  ASSERT_TRUE(BoxShowsFaders());
  bus_.PullAfter(7);
  ASSERT_TRUE(MorePackets(7));
  bus_.Unplug();
  Move(50, 0);
  Move(51, 255);
  bus_.Plug();
  EXPECT_TRUE(BoxShowsFaders());
  EXPECT_EQ(wire_->Status().state, State::Sending);
}

TEST_F(K8062InterfaceTest, ABoxThatIsPluggedInLaterIsFoundByItself) {
  Start();
  Move(10, 77);
  bus_.Plug();
  EXPECT_TRUE(BoxShowsFaders());
  EXPECT_TRUE(MorePackets());  // and goes on, though no fader moves
}

TEST_F(K8062InterfaceTest, AnErrorOfOneTransferIsOvercome) {
  bus_.Plug();
  Start();
  ASSERT_TRUE(MorePackets());
  bus_.FailOnce();
  Move(5, 55);
  EXPECT_TRUE(BoxShowsFaders());
}

TEST_F(K8062InterfaceTest, ADriverOfTheSystemsIsPutAsideAndComesBack) {
  bus_.BindDriver();
  bus_.Plug();
  Start();
  Move(1, 1);
  EXPECT_TRUE(BoxShowsFaders());
  Quit();
  EXPECT_EQ(bus_.DriversDetached(), 1);
  EXPECT_EQ(bus_.DriversAttached(), 1);
}

TEST_F(K8062InterfaceTest, ABoxWithTheUpgradedFirmwareIsFoundAndSpokenToInItsOwnPackets) {
  bus_.Plug(EmulatedK8062::Board::UpgradedK8062);
  Start();
  for (const int channel : {1, 30, 62}) Move(channel, channel);
  ASSERT_TRUE(BoxShowsFaders());
  ASSERT_TRUE(bus_.WaitUntil([](const K8062Decoder& box) { return box.ShownChannels() == 62; }));
  EXPECT_EQ(bus_.Box().WidestShown(), 512);
  Move(200, 20);
  Move(512, 255);
  EXPECT_TRUE(BoxShowsFaders());
  ASSERT_TRUE(MorePackets());
  EXPECT_LE(wire_->Status().packets_per_frame, 7);
  Quit();
  EXPECT_EQ(bus_.Box().Shown(), K8062Decoder::Frame());
  EXPECT_EQ(bus_.Box().Faults(), std::vector<std::string>());
}

TEST_F(K8062InterfaceTest, AnIoBoardWithTheSameNumberIsLeftAlone) {
  bus_.Plug(EmulatedK8062::Board::K8061);
  Start();
  while (wire_->Status().text.empty() && bus_.Box().Packets() == 0) std::this_thread::yield();
  EXPECT_EQ(wire_->Status().text, "No K8062 is plugged in.");
  EXPECT_EQ(bus_.Box().Packets(), 0);
}

TEST_F(K8062InterfaceTest, StartsTwiceStopsTwiceAndStartsAgain) {
  bus_.Plug();
  Start();
  Start();
  Move(3, 30);
  ASSERT_TRUE(BoxShowsFaders());
  stage_.StopDevice();
  stage_.StopDevice();
  ASSERT_TRUE(bus_.WaitUntil([](const K8062Decoder& box) { return box.Shown() == K8062Decoder::Frame(); }));
  while (wire_->Status().state != State::Stopped) std::this_thread::yield();
  const int packets = bus_.Box().Packets();
  Start();
  universe_.Resend();
  EXPECT_TRUE(BoxShowsFaders());
  EXPECT_GT(bus_.Box().Packets(), packets);
}

TEST_F(K8062InterfaceTest, AStopAndAStartInOneBreathLeaveNoLampBehind) {
  bus_.Plug();
  Start();
  Move(400, 40);
  ASSERT_TRUE(BoxShowsFaders());
  stage_.StopDevice();
  Start();
  EXPECT_TRUE(bus_.WaitUntil([](const K8062Decoder& box) { return box.Shown() == K8062Decoder::Frame(); }));
}

TEST_F(K8062InterfaceTest, TellsEveryLampOnceAndThenOnlyTheChannelsInUse) {
  bus_.Plug();
  Start();
  Move(20, 1);
  ASSERT_TRUE(bus_.WaitUntil([](const K8062Decoder& box) { return box.ShownChannels() == 27; }));
  EXPECT_EQ(bus_.Box().WidestShown(), 512);
  stage_.SetChannelCount(0);
  Move(40, 1);
  ASSERT_TRUE(MorePackets());
  EXPECT_EQ(bus_.Box().Shown(), K8062Decoder::Frame());
}

TEST_F(K8062InterfaceTest, TellsHowLongAFrameTakes) {
  bus_.Plug();
  Start();
  for (int channel = 1; channel <= 27; ++channel) Move(channel, channel);
  ASSERT_TRUE(BoxShowsFaders());
  ASSERT_TRUE(MorePackets());
  const dmx::DmxInterfaceStatus status = wire_->Status();
  EXPECT_EQ(status.packets_per_frame, 4);
  EXPECT_GT(status.frame_interval, 0us);
  EXPECT_GT(status.frames, 3u);
}

}  // namespace
}  // namespace platform::usb
