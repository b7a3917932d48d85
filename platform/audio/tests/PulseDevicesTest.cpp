// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/audio/PulseDevices.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "platform/audio/testing/MonitorRecorder.h"
#include "platform/audio/testing/RampSource.h"
#include "platform/audio/testing/SoundServer.h"

namespace platform::audio {
namespace {

using engine::OutputDevice;
using engine::OutputDeviceInfo;
using engine::OutputRequest;
using engine::Speaker;
using std::chrono::milliseconds;
using std::chrono::seconds;
using std::chrono::steady_clock;
using testing::kEightChannels;
using testing::MonitorRecorder;
using testing::RampReport;
using testing::RampSource;
using testing::ReadRamp;
using testing::SinkSpec;
using testing::SoundServer;

const SinkSpec kMain{"main", "Main out \xC3\xA9"};
const SinkSpec kPhones{"phones", "Head-phones"};
const SinkSpec kMulti{"multi8", "Surround", kEightChannels};

/// Counts what OnChange tells, and waits for something to become true with it.
class Changes {
 public:
  std::function<void()> Counter() {
    return [this] {
      const std::lock_guard<std::mutex> lock(mutex_);
      ++count_;
      came_.notify_all();
    };
  }
  bool Await(const std::function<bool()>& condition, milliseconds limit = seconds(20)) {
    std::unique_lock<std::mutex> lock(mutex_);
    return came_.wait_for(lock, limit, condition);
  }
  bool AwaitMoreThan(int count) {
    return Await([this, count] { return count_ > count; });
  }
  [[nodiscard]] int Count() {
    const std::lock_guard<std::mutex> lock(mutex_);
    return count_;
  }

 private:
  std::mutex mutex_;
  std::condition_variable came_;
  int count_ = 0;
};

class PulseOutputs : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(server_.Running()) << "the pulseaudio program is needed";
    devices_.OnChange(changes_.Counter());
  }

  std::unique_ptr<OutputDevice> Open(const std::string& id, engine::RenderSource& source) {
    auto opened = devices_.Open({.id = id}, source);
    EXPECT_TRUE(opened.Ok()) << opened.Failure().text;
    return opened ? std::move(opened).Value() : nullptr;
  }
  std::vector<std::string> ListedIds() {
    std::vector<std::string> ids;
    for (const OutputDeviceInfo& info : devices_.List()) ids.push_back(info.id);
    return ids;
  }

  SoundServer server_{{kMain, kPhones, kMulti}};
  Changes changes_;
  PulseDevices devices_{server_.Address()};
};

TEST_F(PulseOutputs, AreListedWithNamesAndSpeakersTheDefaultFirst) {
  ASSERT_TRUE(server_.MakeDefault("multi8"));
  const std::vector<OutputDeviceInfo> list = devices_.List();
  ASSERT_EQ(list.size(), 3U);
  EXPECT_EQ(list[0].id, "multi8");
  EXPECT_TRUE(list[0].is_default);
  EXPECT_THAT(
      list[0].speakers,
      ::testing::ElementsAre(Speaker::FrontLeft, Speaker::FrontRight, Speaker::RearLeft, Speaker::RearRight,
                             Speaker::FrontCentre, Speaker::Lfe, Speaker::SideLeft, Speaker::SideRight));
  EXPECT_EQ(list[1].name, "Main out \xC3\xA9");
  EXPECT_FALSE(list[1].is_default);
  EXPECT_THAT(list[2].speakers, ::testing::ElementsAre(Speaker::FrontLeft, Speaker::FrontRight));
}

class PulseChannels : public PulseOutputs, public ::testing::WithParamInterface<std::pair<SinkSpec, int>> {};

TEST_P(PulseChannels, CarryEveryFrameOfEveryChannelInOrder) {
  const auto& [sink, channels] = GetParam();
  MonitorRecorder recorder(server_.Address(), sink.name, channels);
  RampSource ramp(channels);
  const auto device = Open(sink.name, ramp);
  ASSERT_TRUE(recorder.AwaitSound(44100));
  const RampReport heard = ReadRamp(recorder.Samples(), channels);
  EXPECT_EQ(heard.first, 1) << "the start was cut off";
  EXPECT_EQ(heard.jumps, 0U);
  EXPECT_EQ(heard.misplaced, 0U);
  EXPECT_LE(ramp.LargestBlock(), 882U);
}

INSTANTIATE_TEST_SUITE_P(Sinks, PulseChannels, ::testing::Values(std::pair(kMain, 2), std::pair(kMulti, 8)),
                         [](const auto& sink) { return sink.param.first.name; });

TEST_F(PulseOutputs, PlayThreeAtOnceEachItsOwnSound) {
  MonitorRecorder main_recorder(server_.Address(), "main", 2);
  MonitorRecorder multi_recorder(server_.Address(), "multi8", 8);
  RampSource main_ramp(2);
  RampSource phones_ramp(2);
  RampSource multi_ramp(8);
  const auto main = Open("main", main_ramp);
  const auto phones = Open("phones", phones_ramp);
  const auto multi = Open("multi8", multi_ramp);
  EXPECT_TRUE(phones_ramp.AwaitFrames(22050));
  ASSERT_TRUE(main_recorder.AwaitSound(22050));
  ASSERT_TRUE(multi_recorder.AwaitSound(22050));
  EXPECT_EQ(ReadRamp(main_recorder.Samples(), 2).jumps, 0U);
  EXPECT_EQ(ReadRamp(multi_recorder.Samples(), 8).misplaced, 0U);
}

TEST_F(PulseOutputs, AnEmptyIdOpensTheDefault) {
  RampSource ramp(2);
  EXPECT_EQ(Open("", ramp)->Info().id, "main");
}

TEST_F(PulseOutputs, ARemovedSinkLosesItsOwnDeviceOnly) {
  RampSource main_ramp(2);
  RampSource phones_ramp(2);
  const auto main = Open("main", main_ramp);
  const auto phones = Open("phones", phones_ramp);
  ASSERT_TRUE(phones_ramp.AwaitFrames(4410));
  ASSERT_TRUE(server_.RemoveSink("phones"));
  EXPECT_TRUE(changes_.Await([&] { return phones->Lost(); }));
  const std::int64_t pulled = phones_ramp.Frames();
  EXPECT_TRUE(main_ramp.AwaitFrames(main_ramp.Frames() + 8820));
  EXPECT_FALSE(main->Lost());
  EXPECT_EQ(phones_ramp.Frames(), pulled) << "a lost device pulls no more";
  EXPECT_THAT(ListedIds(), ::testing::ElementsAre("main", "multi8"));
}

TEST_F(PulseOutputs, ADefaultThatTheServerMovesElsewhereIsLost) {
  RampSource ramp(2);
  const auto device = Open("", ramp);
  ASSERT_TRUE(ramp.AwaitFrames(4410));
  ASSERT_TRUE(server_.RemoveSink("main"));
  EXPECT_TRUE(changes_.Await([&] { return device->Lost(); }));
}

TEST_F(PulseOutputs, AKilledServerLosesAllAndIsFoundAgain) {
  RampSource main_ramp(2);
  RampSource multi_ramp(8);
  auto main = Open("main", main_ramp);
  auto multi = Open("multi8", multi_ramp);
  ASSERT_TRUE(main_ramp.AwaitFrames(4410));
  server_.Kill();
  EXPECT_TRUE(changes_.Await([&] { return main->Lost() && multi->Lost(); }));
  EXPECT_TRUE(devices_.List().empty());
  ASSERT_TRUE(server_.Start());
  EXPECT_EQ(devices_.List().size(), 3U);
  RampSource again(2);
  main = Open("main", again);
  EXPECT_TRUE(again.AwaitFrames(4410));
}

TEST_F(PulseOutputs, AServerThatComesBackIsToldWithoutAsking) {
  EXPECT_EQ(devices_.List().size(), 3U);
  server_.Stop();
  EXPECT_TRUE(changes_.AwaitMoreThan(0));
  const int gone = changes_.Count();
  ASSERT_TRUE(server_.Start());
  EXPECT_TRUE(changes_.AwaitMoreThan(gone));
  EXPECT_EQ(devices_.List().size(), 3U);
}

TEST_F(PulseOutputs, ANewSinkAndANewDefaultAreTold) {
  EXPECT_EQ(devices_.List().size(), 3U);
  ASSERT_TRUE(server_.AddSink({"usb", "A card"}));
  EXPECT_TRUE(changes_.AwaitMoreThan(0));
  const int before = changes_.Count();
  ASSERT_TRUE(server_.MakeDefault("usb"));
  EXPECT_TRUE(changes_.AwaitMoreThan(before));
  EXPECT_EQ(ListedIds().front(), "usb");
}

TEST_F(PulseOutputs, AServerThatHangsLosesTheDeviceAndHoldsNobodyUp) {
  RampSource ramp(2);
  auto device = Open("main", ramp);
  ASSERT_TRUE(ramp.AwaitFrames(4410));
  server_.Freeze();
  EXPECT_TRUE(changes_.Await([&] { return device->Lost(); }));
  EXPECT_TRUE(devices_.List().empty());
  device.reset();
  EXPECT_FALSE(devices_.Open({.id = "main"}, ramp).Ok());
  server_.Continue();
  EXPECT_EQ(devices_.List().size(), 3U);
}

TEST_F(PulseOutputs, ASuspendedSinkLosesItsDeviceSoonAndTakesNoneUntilItResumes) {
  RampSource ramp(2);
  const auto device = Open("main", ramp);
  ASSERT_TRUE(ramp.AwaitFrames(4410));
  ASSERT_TRUE(server_.SuspendSink("main"));
  const auto begin = steady_clock::now();
  EXPECT_TRUE(changes_.Await([&] { return device->Lost(); }));
  EXPECT_LT(steady_clock::now() - begin, milliseconds(1500));
  EXPECT_TRUE(devices_.List().front().suspended);
  EXPECT_FALSE(devices_.Open({.id = "main"}, ramp).Ok());
  ASSERT_TRUE(server_.ResumeSink("main"));
  EXPECT_FALSE(devices_.List().front().suspended);
  EXPECT_NE(Open("main", ramp), nullptr);
}

TEST_F(PulseOutputs, AStreamThatTheUserMovesIsFollowed) {
  RampSource ramp(2);
  const auto device = Open("main", ramp);
  ASSERT_TRUE(ramp.AwaitFrames(4410));
  EXPECT_EQ(device->MovedTo(), "");
  ASSERT_TRUE(server_.MoveStream("main", "phones"));
  MonitorRecorder phones(server_.Address(), "phones", 2);
  EXPECT_TRUE(phones.AwaitSound(22050));
  EXPECT_EQ(device->MovedTo(), "phones");
  EXPECT_FALSE(device->Lost());
  ASSERT_TRUE(server_.MoveStream("phones", "main"));
  MonitorRecorder main(server_.Address(), "main", 2);
  EXPECT_TRUE(main.AwaitSound(22050));
  EXPECT_EQ(device->MovedTo(), "");
}

TEST_F(PulseOutputs, ANewDefaultTakesNoStreamAlong) {
  RampSource ramp(2);
  const auto device = Open("main", ramp);
  ASSERT_TRUE(ramp.AwaitFrames(4410));
  ASSERT_TRUE(server_.MakeDefault("phones"));
  MonitorRecorder main(server_.Address(), "main", 2);
  EXPECT_TRUE(main.AwaitSound(44100));
  EXPECT_EQ(device->MovedTo(), "");
  EXPECT_FALSE(device->Lost());
}

TEST_F(PulseOutputs, HeadphonesAreMovedByNobody) {
  RampSource ramp(2);
  auto opened = devices_.Open({.id = "phones", .stays = true}, ramp);
  ASSERT_TRUE(opened.Ok() && ramp.AwaitFrames(4410));
  MonitorRecorder main(server_.Address(), "main", 2);
  EXPECT_FALSE(server_.MoveStream("phones", "main"));
  ASSERT_TRUE(server_.RemoveSink("phones"));
  EXPECT_TRUE(changes_.Await([&] { return opened.Value()->Lost(); }));
  EXPECT_FALSE(main.AwaitSound(1, seconds(1))) << "not even for a moment";
}

TEST_F(PulseOutputs, PlayedGrowsAndStaysBehindWhatWasRendered) {
  RampSource ramp(2);
  const auto device = Open("main", ramp);
  engine::PlayedMark last = device->Played();
  int behind = 0;
  for (std::int64_t wanted = 882; wanted <= 88200; wanted += 882) {
    ASSERT_TRUE(ramp.AwaitFrames(wanted));
    const engine::PlayedMark mark = device->Played();
    ASSERT_GE(mark.frames, last.frames);
    ASSERT_GE(mark.at, last.at);
    ASSERT_LE(mark.frames, ramp.Frames());
    behind += mark.frames + 882 < ramp.Frames() ? 1 : 0;
    last = mark;
  }
  EXPECT_GT(behind, 50) << "what was rendered before the newest block is not heard yet either";
  EXPECT_GT(last.frames, 44100) << "a second is more than any buffer";
}

TEST_F(PulseOutputs, OpenAndCloseFiftyTimesAndPullNothingAfterwards) {
  RampSource ramp(2);
  for (int i = 0; i < 50; ++i) {
    auto device = Open(i % 2 == 0 ? "main" : "phones", ramp);
    ASSERT_NE(device, nullptr);
    device.reset();
    const std::int64_t pulled = ramp.Frames();
    EXPECT_EQ(devices_.List().size(), 3U);
    ASSERT_EQ(ramp.Frames(), pulled);
  }
}

TEST_F(PulseOutputs, ADeviceMayOutliveTheList) {
  RampSource ramp(2);
  auto devices = std::make_unique<PulseDevices>(server_.Address());
  auto device = std::move(devices->Open({.id = "phones"}, ramp)).Value();
  devices.reset();
  EXPECT_TRUE(ramp.AwaitFrames(8820));
  server_.Kill();
}

TEST_F(PulseOutputs, AnUnknownDeviceIsRefusedWithASentence) {
  RampSource ramp(2);
  const auto opened = devices_.Open({.id = "gone"}, ramp);
  ASSERT_FALSE(opened.Ok());
  EXPECT_EQ(opened.Failure().code, support::ErrorCode::NotFound);
  EXPECT_EQ(opened.Failure().text, "The sound output gone is not there.");
}

TEST_F(PulseOutputs, AFormatThatNoDeviceHasIsRefused) {
  RampSource ramp(2);
  EXPECT_FALSE(devices_.Open({.id = "main", .sample_rate = 0}, ramp).Ok());
  EXPECT_FALSE(devices_.Open({.id = "main", .sample_rate = 10'000'000}, ramp).Ok());
}

TEST(PulseWithoutAServer, ListsNothingAtOnceAndRefusesToOpen) {
  PulseDevices devices("unix:/nonexistent/native");
  RampSource ramp(2);
  const auto start = steady_clock::now();
  EXPECT_TRUE(devices.List().empty());
  const auto opened = devices.Open({}, ramp);
  EXPECT_LT(steady_clock::now() - start, seconds(1));
  ASSERT_FALSE(opened.Ok());
  EXPECT_EQ(opened.Failure().code, support::ErrorCode::Unavailable);
}

}  // namespace
}  // namespace platform::audio
