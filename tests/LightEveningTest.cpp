// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later

// The whole program with a K8062 at an emulated USB bus: the real window, driven by events on its widgets,
// the real adapter, and what the box makes of the packets.
#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QPushButton>
#include <QTest>
#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "dmx/ShowFile.h"
#include "dmx/ShowPlan.h"
#include "dmx/testing/ShowMaker.h"
#include "platform/usb/testing/EmulatedK8062.h"
#include "tests/testing/ProgramUser.h"

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using platform::usb::testing::EmulatedK8062;
using platform::usb::testing::K8062Decoder;
using SteadyClock = std::chrono::steady_clock;

constexpr int kLit = 24;  ///< channels of the show

/// For how long the window stands still; "30" is an evening's worst.
std::chrono::seconds BlockedTime() {
  const char* seconds = std::getenv("DJ_WINDOW_BLOCKED_SECONDS");
  return std::chrono::seconds(seconds == nullptr ? 3 : std::atoi(seconds));
}

/// Two looks that change places, a fade of a second and a rest of half a second each, a thousand times.
dmx::Scenes TwoLooks() {
  std::vector<int> first, second;
  for (int channel = 1; channel <= kLit; ++channel) {
    first.push_back(10 * channel);
    second.push_back(250 - 10 * channel);
  }
  dmx::Scenes scenes;
  dmx::testing::AddScene(scenes, 1000,
                         {dmx::testing::StepWith("00:01.0", "00:00.5", first),
                          dmx::testing::StepWith("00:01.0", "00:00.5", second)});
  return scenes;
}

/// What was at the lamps, and when.
struct Seen {
  SteadyClock::time_point when;
  K8062Decoder::Frame levels;
};

class LightEvening : public tests::testing::ProgramUser {
 protected:
  void SetUp() override {
    ProgramUser::SetUp();
    fs::create_directories(home_ / "DMXShows");
    dmx::Show show;
    show.scenes = TwoLooks();
    std::ofstream(home_ / "DMXShows" / "Evening.SHW", std::ios::binary) << dmx::ShowText(show);
    for (int channel = 1; channel <= kLit; ++channel) channels_.push_back(channel);
    auto plan = dmx::ShowPlan::Make(TwoLooks(), channels_);
    ASSERT_TRUE(plan);
    plan_ = std::make_unique<dmx::ShowPlan>(std::move(plan).Value());
    bus_.SetPace(2ms);
  }

  void Start() {
    StartWithoutServer();
    Click("Page4");
  }
  bool LampStandsAt(int channel, int level) {
    return Eventually([&] { return bus_.Box().Shown()[static_cast<std::size_t>(channel - 1)] == level; });
  }
  void OpenTheShow() {
    auto& shows = Find<QComboBox>("ShowList");
    ASSERT_TRUE(Eventually([&] { return shows.count() == 1; }));
    shows.setFocus();
    QTest::keyClick(&shows, Qt::Key_Down);
    ASSERT_TRUE(Eventually([&] { return Find("ShowPlay").isEnabled(); }));
  }
  void PlayTheShow() {
    Click("ShowPlay");
    played_ = SteadyClock::now();
  }
  /// Nothing of the window runs meanwhile.
  std::vector<Seen> WatchTheBoxWithTheWindowBlocked(std::chrono::milliseconds time) {
    std::vector<Seen> seen;
    const auto end = SteadyClock::now() + time;
    while (SteadyClock::now() < end) {
      const int frames = bus_.Box().FramesShown();
      if (!bus_.WaitUntil([&](const K8062Decoder& box) { return box.FramesShown() != frames; })) return seen;
      seen.push_back({SteadyClock::now(), bus_.Box().Shown()});
    }
    return seen;
  }
  /// What is seen was in the show not long ago. A machine that is busy is allowed to be late, not wrong.
  void ExpectTheShow(const std::vector<Seen>& seen) {
    constexpr auto kLate = 500ms, kEarly = 50ms, kStep = 10ms;
    std::size_t wrong = 0;
    for (const Seen& look : seen) {
      K8062Decoder::Frame lowest, highest{};
      lowest.fill(255);
      for (auto ago = kLate; ago >= -kEarly; ago -= kStep) {
        K8062Decoder::Frame levels{};
        const auto elapsed = std::chrono::duration_cast<dmx::ShowTime>(look.when - played_ - ago);
        plan_->LevelsAt(std::max(elapsed, dmx::ShowTime(0)), before_, levels);
        for (std::size_t i = 0; i < levels.size(); ++i) {
          lowest[i] = std::min(lowest[i], levels[i]);
          highest[i] = std::max(highest[i], levels[i]);
        }
      }
      for (std::size_t i = 0; i < kLit; ++i) {
        if (look.levels[i] < lowest[i] || look.levels[i] > highest[i]) ++wrong;
      }
    }
    EXPECT_EQ(wrong, 0U) << "of " << seen.size() * kLit << " levels";
  }
  /// How many levels a lamp went through.
  static std::size_t Steps(const std::vector<Seen>& seen, int channel) {
    std::set<int> levels;
    for (const Seen& look : seen) levels.insert(look.levels[static_cast<std::size_t>(channel - 1)]);
    return levels.size();
  }

  EmulatedK8062 bus_;
  std::vector<int> channels_;
  std::unique_ptr<dmx::ShowPlan> plan_;
  K8062Decoder::Frame before_{};  ///< where the faders stood when the show began
  SteadyClock::time_point played_;
};

TEST_F(LightEvening, StartFadersShowPulledPluggedAndTheLastFrameIsDark) {
  bus_.Plug();
  Start();
  Click("K8062");
  Find("Fader3").setFocus();
  QTest::keyClicks(&Find("Fader3"), QStringLiteral("123"));
  EXPECT_TRUE(LampStandsAt(3, 123));
  EXPECT_TRUE(Eventually([&] { return TextOf("OutputStatus").find("times a second") != std::string::npos; }));

  // What a hand has moved is the hand's, whatever a show does.
  Click("FadersRelease");
  EXPECT_TRUE(LampStandsAt(3, 0));
  OpenTheShow();
  PlayTheShow();
  QTest::qWait(700);
  bus_.PullAfter(2);  // in the middle of a frame
  QTest::qWait(300);
  bus_.Unplug();
  EXPECT_TRUE(Eventually([&] { return TextOf("OutputStatus") == "No K8062 is plugged in."; }));
  bus_.Plug();
  ASSERT_TRUE(Eventually([&] { return bus_.Box().FramesShown() > 3; }));
  const auto seen = WatchTheBoxWithTheWindowBlocked(1500ms);
  ExpectTheShow(seen);
  EXPECT_GT(Steps(seen, 24), 10U);

  program_.reset();
  EXPECT_EQ(bus_.Box().Shown(), K8062Decoder::Frame());
  EXPECT_EQ(bus_.Box().ShownChannels(), 512);
  EXPECT_EQ(bus_.Box().Faults(), std::vector<std::string>());
}

TEST_F(LightEvening, TheShowGoesOnAtTheBoxWhileTheWindowStandsStill) {
  bus_.Plug();
  Start();
  Click("K8062");
  OpenTheShow();
  PlayTheShow();
  const auto seen = WatchTheBoxWithTheWindowBlocked(BlockedTime());
  ExpectTheShow(seen);
  // Ten levels a second at the least, of those that a fade of a second goes through.
  EXPECT_GT(Steps(seen, 24), 20U);
  auto longest = SteadyClock::duration::zero();
  for (std::size_t i = 1; i < seen.size(); ++i) longest = std::max(longest, seen[i].when - seen[i - 1].when);
  EXPECT_LT(longest, 1s) << "a receiver would take the line for dead";
  RecordProperty("frames", static_cast<int>(seen.size()));
  RecordProperty("longest_ms", static_cast<int>(longest / 1ms));
}

TEST_F(LightEvening, TheSwitchIsRememberedAndABoxThatComesLaterIsFound) {
  Start();
  Click("K8062");
  program_.reset();
  Start();
  EXPECT_TRUE(Eventually([&] { return Find<QPushButton>("K8062").isChecked(); }));
  bus_.Plug();
  Find("Fader1").setFocus();
  QTest::keyClick(&Find("Fader1"), Qt::Key_End);
  EXPECT_TRUE(LampStandsAt(1, 255));
}

}  // namespace

int main(int argc, char* argv[]) {
  ::testing::InitGoogleTest(&argc, argv);
  QApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
