// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
// Head-phones on another card than the hall: two crystals, two latencies, and one of them may die.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <string>

#include "engine/testing/SoundStage.h"
#include "engine/testing/SpokenHall.h"

namespace engine::testing {
namespace {

using decks::HeadphoneMix;

constexpr double kTone = 440;
constexpr double kSlow = 0.5;  // Hz: it tells places, as the tone tells clicks

FakeFile Music(double hertz, double level) {
  FakeFile file = ToneFile(120 * kRate, 0);
  file.sample = [hertz, level](std::int64_t frame, int channel) {
    const double turn = 2 * std::numbers::pi * hertz * static_cast<double>(frame) / kRate;
    return static_cast<std::int16_t>(std::lround(32'768 * level / (channel + 1) * std::sin(turn)));
  };
  return file;
}

/// Head-phones on "phones"; the hall on "main", and on "other" where that is wished.
struct TwoCards {
  struct Cards {
    std::chrono::milliseconds hall{60}, phones{60};
    double ppm = 0;  ///< of the hall's crystal against that of the head-phones
  };
  explicit TwoCards(const Cards& chosen, const OutputDeviceInfo& main = StereoOutput("main", true))
      : cards(chosen), stage({main, StereoOutput("phones"), StereoOutput("other")}) {
    stage.outputs.SetLatency("main", cards.hall);
    stage.outputs.SetLatency("other", cards.hall);
    stage.outputs.SetLatency("phones", cards.phones);
    stage.outputs.SetClock("main", cards.ppm);
    stage.files.Add("tone.mp3", Music(kTone, 0.4));
    stage.files.Add("slow.mp3", Music(kSlow, 0.4));
    stage.engine->BASS_Init(2, kRate, decks::kInitSpeakers);
    stage.engine->SetDeviceRole(2, decks::DeviceRole::Headphones);
  }
  decks::StreamHandle Play(const std::string& path, int device = 1) {
    const auto stream = stage.Load(path, device);
    stage.engine->BASS_ChannelPlay(stream, false);
    return stream;
  }
  void Mix(const HeadphoneMix& mix) {
    stage.engine->Desk().Direct({{decks::SpeakerPair{1, 0}, {hall2, 0}}, {2, 0}, mix});
  }
  /// As the conductor does: it looks every 10 ms.
  bool Advance(support::Duration time) {
    bool reaches = false;
    for (; time > 0ms; time -= 10ms) {
      stage.Advance(10ms);
      reaches = stage.engine->Desk().HallReachesHeadphones();
    }
    return reaches;
  }
  [[nodiscard]] std::vector<float> Phones(std::size_t ear, double from) {
    const auto all = stage.Channel("phones", ear);
    return {all.begin() + static_cast<std::ptrdiff_t>(from * kRate), all.end()};
  }
  /// What is in the ear at a time; both outputs were opened at time 0.
  [[nodiscard]] double Heard(const std::string& id, std::chrono::milliseconds latency, double ppm,
                             double at) {
    const double seconds = at - std::chrono::duration<double>(latency).count();
    return static_cast<double>(
        stage.Channel(id, 0).at(static_cast<std::size_t>(seconds * kRate * (1 + ppm * 1e-6))));
  }

  Cards cards;
  int hall2 = 1;
  SoundStage stage;
};

float Peak(const std::vector<float>& samples) {
  return std::abs(*std::max_element(samples.begin(), samples.end(),
                                    [](float a, float b) { return std::abs(a) < std::abs(b); }));
}

TEST(HallElsewhere, IsWholeInTheHeadphonesWhateverTheCrystalsAndTheLatencies) {
  const TwoCards::Cards all[] = {
      {60ms, 60ms, 0}, {20ms, 300ms, 200}, {300ms, 20ms, -200}, {300ms, 300ms, 200}};
  for (const auto& cards : all) {
    TwoCards desk(cards);
    desk.Play("tone.mp3");
    desk.Mix({.programme = 1});
    EXPECT_TRUE(desk.Advance(40s)) << cards.ppm;
    for (const std::size_t ear : {0U, 1U}) {
      const auto heard = desk.Phones(ear, 3);
      const double level = ear == 0 ? 0.4 : 0.2;
      EXPECT_NEAR(Peak(heard), level, 0.005 * level) << cards.ppm << " ear " << ear;
      EXPECT_LT(Roughness(heard), 1.1F * ToneRoughness(kTone, level)) << cards.ppm << " ear " << ear;
    }
  }
}

TEST(HallElsewhere, IsHeardInStepWithTheHallOrAsSoonAsItCan) {
  struct Case {
    TwoCards::Cards cards;
    double late;  ///< seconds, of the head-phones
  };
  // What passes from card to card needs a block of each and a little more.
  for (const Case& one :
       {Case{{300ms, 20ms, 200}, 0}, Case{{200ms, 60ms, -200}, 0}, Case{{20ms, 200ms, 0}, 0.205}}) {
    TwoCards desk(one.cards);
    desk.Play("slow.mp3");
    desk.Mix({.programme = 1});
    desk.Advance(30s);
    for (double at = 10; at < 28; at += 0.37) {
      const double hall = desk.Heard("main", one.cards.hall, one.cards.ppm, at - one.late);
      const double ears = desk.Heard("phones", one.cards.phones, 0, at);
      ASSERT_NEAR(ears, hall, one.late > 0 ? 0.04 : 0.005) << at;
    }
  }
}

TEST(HallElsewhere, IsMixedAndSplitAsOnOneCard) {
  TwoCards desk({});
  desk.stage.files.Add("cue.mp3", Music(1000, 0.1));
  desk.Play("tone.mp3");
  desk.Play("cue.mp3", 2);
  const auto level = [&](std::size_t ear, double hertz) {
    return ToneLevel(desk.stage.Channel("phones", ear), desk.stage.Channel("phones", ear).size() - kRate,
                     kRate, hertz);
  };
  const auto expect = [&](const HeadphoneMix& mix, std::array<double, 2> hall, std::array<double, 2> cue) {
    desk.Mix(mix);
    EXPECT_TRUE(desk.Advance(3s)) << "it could be heard";
    for (const std::size_t ear : {0U, 1U}) {
      EXPECT_NEAR(level(ear, kTone), hall[ear], 0.004) << mix.programme << " ear " << ear;
      EXPECT_NEAR(level(ear, 1000), cue[ear], 0.002) << mix.programme << " ear " << ear;
    }
  };
  const double half = std::sqrt(0.5);
  expect({}, {0, 0}, {0.1, 0.05});
  expect({.programme = 0.5F}, {0.4 * half, 0.2 * half}, {0.1 * half, 0.05 * half});
  expect({.programme = 1, .level = 0.5F}, {0.2, 0.1}, {0, 0});
  expect({.split = true}, {0, 0.3}, {0.075, 0});
  expect({}, {0, 0}, {0.1, 0.05});
  EXPECT_NEAR(desk.stage.Last("phones", 0), desk.stage.Last("phones", 1) * 2, 1e-4)
      << "and nothing of it left";
}

TEST(HallElsewhere, OneOfASingleLoudspeakerIsHeardWithBothEars) {
  TwoCards desk({}, {"main", "Output main", {Speaker::FrontCentre}, true});
  desk.Play("tone.mp3");
  desk.Mix({.programme = 1});
  EXPECT_TRUE(desk.Advance(4s));
  for (const std::size_t ear : {0U, 1U}) EXPECT_NEAR(Peak(desk.Phones(ear, 3)), 0.3, 0.003) << ear;
}

TEST(HallElsewhere, TwoHallsOnTwoCardsAreBothHeard) {
  TwoCards desk({});
  desk.hall2 = 3;
  desk.stage.files.Add("high.mp3", Music(1500, 0.2));
  desk.Play("tone.mp3");
  desk.Play("high.mp3", 3);
  desk.Mix({.programme = 1});
  EXPECT_TRUE(desk.Advance(4s));
  const auto heard = desk.Phones(0, 3);
  EXPECT_NEAR(ToneLevel(heard, 0, heard.size() / 441 * 441, kTone), 0.4, 0.004);
  EXPECT_NEAR(ToneLevel(heard, 0, heard.size() / 441 * 441, 1500), 0.2, 0.004);
}

TEST(HallElsewhere, ComesBackByItselfWhenTheHallsCardDiedAndCameBack) {
  TwoCards desk({60ms, 60ms, 200});
  desk.Play("tone.mp3");
  desk.Mix({.programme = 1});
  desk.Advance(5s);
  desk.stage.outputs.Remove("other");
  desk.stage.outputs.Remove("main");
  desk.Advance(5s);
  desk.stage.outputs.Add(StereoOutput("main", true));
  EXPECT_TRUE(desk.Advance(10s));
  for (const double from : {7.0, 12.0}) {
    const auto all = desk.Phones(0, from);
    const std::vector<float> heard(all.begin(), all.begin() + 2 * kRate);
    EXPECT_NEAR(Peak(heard), 0.4, 0.004) << from;
    EXPECT_LT(Roughness(heard), 1.1F * ToneRoughness(kTone, 0.4)) << from;
  }
  const auto left = desk.Phones(0, 3);
  float largest = 0;
  for (std::size_t i = 1; i < left.size(); ++i) largest = std::max(largest, std::abs(left[i] - left[i - 1]));
  EXPECT_LT(largest, 0.06F) << "nor does it click on the way";
}

TEST(HallElsewhere, DiesWithNobodyWhoListens) {
  TwoCards desk({});
  desk.Play("tone.mp3");
  desk.stage.engine->Desk().Direct({{decks::SpeakerPair{1, 0}, {1, 0}}, {3, 0}, {.programme = 1}});
  EXPECT_FALSE(desk.Advance(1s)) << "head-phones that are not open";
  desk.stage.engine->Desk().Direct({{decks::SpeakerPair{0, 0}, {0, 0}}, {2, 0}, {.programme = 1}});
  EXPECT_FALSE(desk.Advance(1s)) << "a hall without sound";
  EXPECT_EQ(desk.stage.Last("phones", 0), 0);
}

}  // namespace
}  // namespace engine::testing
