// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "app/lights/LightStation.h"
#include "app/lights/LiveLightStation.h"
#include "app/lights/StagedShow.h"
#include "app/tests/Evening.h"
#include "dmx/testing/RecordingDmxInterface.h"
#include "dmx/testing/Rig.h"
#include "dmx/testing/ShowMaker.h"

namespace app {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using Owner = LiveFixture::Owner;

constexpr dmx::MixedColour kRed{255, 0, 0};

/// Two pars on channels 1 and 4 and a head on 11, with a box on the wire.
class LiveLightTest : public testing::Evening {
 protected:
  LiveLightTest() {
    folder_ = fs::path(::testing::TempDir()) / "live-lights";
    fs::remove_all(folder_);
    fs::create_directories(folder_);
    dmx_ = &wire_;
    Store("Setup", "UseK8062", "True");
  }
  ~LiveLightTest() override {
    station_.reset();
    fs::remove_all(folder_);
  }
  void Begin() {
    StartUp();
    Patch({1, 4}, 11);
  }
  void Patch(const std::vector<int>& pars, int head) {
    dmx::DMXname rig;
    for (const int start : pars) dmx::testing::AddRgbPar(rig, start);
    dmx::testing::AddHead(rig, head);
    station_->Lights().TakePatch(rig);
    Settle();
  }
  void Ask(std::vector<int> fixtures, std::optional<double> light, std::optional<dmx::MixedColour> colour) {
    dmx::LiveLook look;
    look.light = light;
    look.colour = colour;
    Live().Ask(std::move(fixtures), look);
    Settle();
  }
  void Start(dmx::EffectKind kind, std::vector<int> fixtures, double beats = 1) {
    dmx::LightEffect effect;
    effect.kind = kind;
    effect.rate.value = beats;
    effect.fixtures = std::move(fixtures);
    Live().Start(effect);
    Settle();
  }
  void Hold(LightHold what, bool held) {
    Live().Hold(what, held);
    Settle();
  }
  /// Of channels on the wire, "255 0 0".
  [[nodiscard]] std::string Wire(std::vector<int> channels) {
    std::string levels;
    for (const int channel : channels)
      levels += (levels.empty() ? "" : " ") + std::to_string(wire_.Level(channel));
    return levels;
  }
  [[nodiscard]] Owner OwnerOf(int fixture) {
    return Live().View().fixtures.at(static_cast<std::size_t>(fixture - 1)).owner;
  }
  LiveLightStation& Live() { return station_->LiveLights(); }

  dmx::testing::RecordingDmxInterface wire_;
};

TEST_F(LiveLightTest, AHandKeepsItsFixturesFromTheShowUntilItLetsGo) {
  Begin();
  dmx::Scenes scenes;
  dmx::testing::AddScene(scenes, 1,
                         {dmx::testing::StepWith("00:00.0", "00:05.0", {10, 20, 30}),
                          dmx::testing::StepWith("00:00.0", "00:05.0", {40, 50, 60})});
  const auto patch = station_->Lights().View().patch;
  station_->Lights().TakePlan(
      std::make_shared<const dmx::ShowPlan>(dmx::ShowPlan::Make(scenes, std::vector{1, 2, 3}).Value()),
      patch->fixtures, "Dance");
  station_->Lights().PlayShow();
  Settle();
  Advance(100ms);
  EXPECT_EQ(Wire({1, 2, 3}), "10 20 30");
  EXPECT_EQ(OwnerOf(1), Owner::Show);
  Ask({1, 3}, 1, kRed);
  EXPECT_EQ(Wire({1, 2, 3, 13, 14, 15}), "255 0 0 255 200 10");
  EXPECT_EQ(OwnerOf(1), Owner::Hand);
  for (int i = 0; i < 60; ++i) Advance(100ms);
  EXPECT_EQ(Wire({1, 2, 3}), "255 0 0") << "the show went on below";
  Live().LetGo({1});
  Settle();
  EXPECT_EQ(Wire({1, 2, 3, 13}), "40 50 60 255");
  station_->Lights().TakeInHand({{2, 99}});
  Settle();
  EXPECT_EQ(OwnerOf(1), Owner::Hand) << "a raw fader is a hand";
  Live().LetAllGo();
  Settle();
  EXPECT_EQ(Wire({1, 2, 3, 13, 14}), "40 50 60 0 0");
}

TEST_F(LiveLightTest, AHoldGivesBackWhatRanBeneathAndStaysInsideTheGuard) {
  Begin();
  Ask({1, 2, 3}, 0.5, kRed);
  const std::vector<int> seen{1, 2, 3, 13, 14, 15};
  const std::string before = Wire(seen);
  for (const LightHold what :
       {LightHold::Blackout, LightHold::Blinder, LightHold::Strobe, LightHold::Freeze}) {
    Hold(what, true);
    if (what == LightHold::Blackout) {
      EXPECT_EQ(wire_.Level(13), 0);
    }
    if (what == LightHold::Blinder) {
      EXPECT_EQ(Wire(seen), "255 255 255 255 200 0");
    }
    int flashes = 0;
    for (int tick = 0; tick < 1000; ++tick) {
      const int was = wire_.Level(13);
      Advance(10ms);
      flashes += was == 0 && wire_.Level(13) > 0;
      EXPECT_FALSE(wire_.Level(14) >= 10 && wire_.Level(14) < 200) << "the shutter's own strobe";
    }
    if (what == LightHold::Strobe) {
      EXPECT_GE(flashes, 30) << "in ten seconds";
      EXPECT_LE(flashes, 40);
    } else {
      EXPECT_EQ(flashes, 0);
    }
    Hold(what, false);
    EXPECT_EQ(Wire(seen), before) << static_cast<int>(what);
  }
  station_->Lights().SetBlackout(dmx::OutputStage::Blackout::On);
  Hold(LightHold::Blackout, true);
  Hold(LightHold::Blackout, false);
  EXPECT_EQ(wire_.Level(13), 0) << "it was dark before";
}

TEST_F(LiveLightTest, AChaseFollowsTheDeckThatIsHeardThroughASeek) {
  Begin();
  Load(1, "a.mp3");
  Play(1);
  for (int tap = 0; tap < 5; ++tap) {
    station_->Decks()[1].Tap();
    for (int i = 0; i < 50; ++i) Advance(10ms);
  }
  Ask({1, 2}, 1, kRed);
  Start(dmx::EffectKind::Chase, {1, 2});
  const auto follows = [&] {
    const double beat = Deck(1).grid->BeatAt(Deck(1).position);
    const bool odd = std::abs(std::fmod(std::floor(beat), 2)) > 0.5;
    return Wire({1, 4}) == (odd ? "0 255" : "255 0");
  };
  ASSERT_TRUE(Live().View().music);
  int wrong = 0;
  for (int tick = 0; tick < 300; ++tick) {
    if (tick == 100) station_->Decks()[1].Do(&DeckStation::Seek, std::chrono::microseconds(40s));
    Advance(10ms);
    // The flash guard may hold the step for a moment behind the jump.
    const bool jumped = tick >= 100 && tick < 130;
    if (!jumped) wrong += !follows();
  }
  EXPECT_EQ(wrong, 0);
  EXPECT_EQ(OwnerOf(1), Owner::Effect);
  Ask({1, 2}, 0.5, {});
  EXPECT_EQ(wire_.Level(1) + wire_.Level(4), 128) << "the hand says how bright";
  Live().End({1, 2}, dmx::EffectSubject::Light);
  Settle();
  EXPECT_EQ(Wire({1, 4}), "128 128") << "and has the fixtures back";
}

TEST_F(LiveLightTest, FixturesKeepTheirLightWhenThePatchChanges) {
  Begin();
  Ask({2, 3}, 1, kRed);
  Start(dmx::EffectKind::Pulse, {1, 3}, 4);
  Patch({4}, 11);  // the first par is gone
  EXPECT_EQ(Wire({1, 4}), "0 255");
  ASSERT_EQ(Live().View().effects.size(), 1U);
  EXPECT_EQ(Live().View().effects[0].fixtures, std::vector{2});
  Live().LetGo({1});
  Settle();
  EXPECT_EQ(wire_.Level(4), 0);
  Ask({0, 9, -1}, 1, {});
  Start(dmx::EffectKind::Circle, {7});
  Advance(10ms);
}

TEST_F(LiveLightTest, SavedGroupsComeBackAndADamagedFileIsSetAside) {
  Begin();
  Live().KeepGroup({"Front", {{"Par.dmx", 1}}});
  Live().KeepGroup({"", {{"Par.dmx", 1}}});
  workers_.RunAll();
  const fs::path path = folder_ / "tlv.lightgroups";
  std::string text = files_.Content(path).value();
  station_.reset();
  std::ofstream(path, std::ios::binary) << text;
  StartUp();
  ASSERT_EQ(Live().Groups().size(), 1U);
  station_.reset();
  text[text.size() / 2] ^= 1;
  std::ofstream(path, std::ios::binary) << text;
  StartUp();
  EXPECT_TRUE(Live().Groups().empty());
  EXPECT_NE(station_->View().notice.find("tlv.lightgroups"), std::string::npos);
  Live().KeepGroup({"New", {{"Par.dmx", 1}}});
  workers_.RunAll();
  EXPECT_TRUE(fs::exists(folder_ / "tlv.lightgroups.damaged-1"));
}

}  // namespace
}  // namespace app
