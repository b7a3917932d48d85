// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
// A stream in the head-phones at the place of the one in the hall.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <tuple>
#include <utility>

#include "engine/testing/SoundStage.h"

namespace engine::testing {
namespace {

/// Hall and head-phones play a ramp whose sample tells its place, so that the distance is read off what
/// comes out of the two outputs at one moment.
class HallAndPhones {
 public:
  HallAndPhones(support::Duration hall, support::Duration phones, double millionths = 0) {
    latency_ = {hall, phones};
    clock_ = {1, 1 + millionths * 1e-6};
    stage.outputs.SetLatency("main", hall);
    stage.outputs.SetLatency("phones", phones);
    stage.outputs.SetClock("phones", millionths);
    stage.files.Add("ramp.mp3", RampFile(250 * kRate));
    stage.engine->BASS_SetConfig(decks::kConfigUpdatePeriod, 10);
    main = stage.Load("ramp.mp3", 1);
    cue = stage.Load("ramp.mp3", 2);
    stage.engine->Follow(cue, main);
  }
  void Play() {
    stage.engine->BASS_ChannelPlay(main, false);
    stage.engine->BASS_ChannelPlay(cue, false);
  }
  void Seek(double seconds) {
    const support::BytePosition place{static_cast<std::int64_t>(seconds * kRate) * 4};
    stage.engine->BASS_ChannelSetPosition(main, place);
    stage.engine->BASS_ChannelSetPosition(cue, place);
  }
  void Pause() {
    stage.engine->BASS_ChannelPause(main);
    stage.engine->BASS_ChannelPause(cue);
  }
  void SetTempo(float percent) {
    stage.engine->BASS_FX_TempoSet(main, percent, decks::kTempoUnchanged, decks::kTempoUnchanged);
    stage.engine->BASS_FX_TempoSet(cue, percent, decks::kTempoUnchanged, decks::kTempoUnchanged);
  }
  /// The engine's own word for it, ms by which the head-phones are ahead.
  double Told() {
    const auto hall = stage.engine->Heard(main).frame.value;
    return 1000.0 * static_cast<double>(stage.engine->Heard(cue).frame.value - hall) / kRate;
  }
  /// The same, by the samples at the two loudspeakers.
  double Heard() {
    constexpr double kRampEnd = 25'000;
    const auto hall = AtLoudspeaker("main", 0);
    const auto phones = AtLoudspeaker("phones", 1);
    if (!hall || !phones) return Told();
    return 1000 * std::remainder(*phones - *hall, kRampEnd) / kRate;
  }
  /// The largest distance within that time, looked at every 7 ms.
  double Furthest(support::Duration within) {
    double furthest = 0;
    for (support::Duration gone{}; gone < within; gone += 7ms) {
      stage.Advance(7ms);
      furthest = std::max(furthest, std::abs(Heard()));
    }
    return furthest;
  }

  SoundStage stage;
  decks::StreamHandle main = 0;
  decks::StreamHandle cue = 0;

 private:
  /// The place that the sample tells; nothing where the ramp begins anew.
  std::optional<double> AtLoudspeaker(const std::string& id, std::size_t device) {
    const double seconds =
        std::chrono::duration<double>(stage.time.Now().time_since_epoch() - latency_[device]).count();
    const auto& given = stage.Given(id);
    const auto frame = static_cast<std::size_t>(std::max(0.0, seconds * kRate * clock_[device] + 1e-3));
    if (2 * frame + 2 >= given.size()) return std::nullopt;
    const double place = 32768 * static_cast<double>(given[2 * frame]);
    const double next = 32768 * static_cast<double>(given[2 * frame + 2]);
    return std::abs(next - place - 1) < 0.2 ? std::optional(place) : std::nullopt;
  }
  std::array<support::Duration, 2> latency_;
  std::array<double, 2> clock_;
};

using Latencies = std::tuple<int, int, bool>;  // and whether the feeder may be kept waiting
class Follow : public ::testing::TestWithParam<Latencies>, public HallAndPhones {
 protected:
  Follow()
      : HallAndPhones(std::chrono::milliseconds(std::get<0>(GetParam())),
                      std::chrono::milliseconds(std::get<1>(GetParam())), 200) {
    if (std::get<2>(GetParam())) stage.MakeBusy();
  }
};

TEST_P(Follow, AtTheHallsPlaceAfterEachAct) {
  stage.Advance(1s);
  Play();
  stage.Advance(500ms);
  EXPECT_LT(Furthest(2s), 1) << "played";
  Seek(60);
  stage.Advance(500ms);
  EXPECT_LT(Furthest(2s), 1) << "placed";
  Pause();
  stage.Advance(1s);
  Play();
  stage.Advance(500ms);
  EXPECT_LT(Furthest(2s), 1) << "resumed";
  // Who goes over to another lane is exact at once; a stretcher that goes on is off by what it held back.
  const double near = std::get<2>(GetParam()) ? 1.2 : 1;
  for (const float percent : {4.0F, -8.0F, 0.0F}) {
    SetTempo(percent);
    stage.Advance(4s);
    EXPECT_LT(Furthest(1s), near) << "tempo " << percent;
  }
  Seek(10);
  stage.Advance(50ms);
  Seek(20);
  stage.Advance(700ms);
  EXPECT_LT(Furthest(1s), 1) << "placed twice";
  EXPECT_EQ(stage.engine->Health().late_blocks, 0U);
}

TEST_P(Follow, LateInTheMiddleOfATrack) {
  stage.engine->BASS_ChannelPlay(main, false);
  stage.Advance(3s);
  stage.engine->BASS_ChannelPlay(cue, false);
  stage.Advance(500ms);
  EXPECT_LT(Furthest(2s), 1);
}

INSTANTIATE_TEST_SUITE_P(Outputs, Follow,
                         ::testing::Values(Latencies{60, 180, false}, Latencies{180, 60, false},
                                           Latencies{20, 300, false}, Latencies{300, 20, false},
                                           Latencies{60, 60, false}, Latencies{60, 180, true},
                                           Latencies{300, 20, true}));

TEST(Following, StaysThereHoweverTheClocksDiffer) {
  HallAndPhones on(60ms, 180ms, 500);
  on.Play();
  on.stage.Advance(1s);
  double furthest = 0;
  double told = 0;
  for (int second = 0; second < 180; ++second) {
    on.stage.Advance(1s);
    furthest = std::max(furthest, std::abs(on.Heard()));
    told = std::max(told, std::abs(on.Told()));
  }
  EXPECT_LT(furthest, 1);
  EXPECT_LT(told, 1);
}

TEST(Following, NeverBendsTheHall) {
  HallAndPhones alone(60ms, 180ms);
  HallAndPhones led(60ms, 180ms, 200);
  alone.stage.engine->BASS_ChannelPlay(alone.main, false);
  led.Play();
  for (HallAndPhones* one : {&alone, &led}) {
    one->stage.Advance(1s);
    one->Seek(40);
    one->stage.Advance(3s);
  }
  EXPECT_EQ(led.stage.Given("main"), alone.stage.Given("main"));
}

TEST(Following, IsHeardAloneBeforeTheHallPlaysAndThenGoesThere) {
  HallAndPhones on(180ms, 60ms);
  on.stage.engine->BASS_ChannelSetPosition(on.cue, {4 * 30 * kRate});
  on.stage.engine->BASS_ChannelPlay(on.cue, false);
  on.stage.Advance(1s);
  EXPECT_NEAR(static_cast<double>(on.stage.engine->Heard(on.cue).frame.value), 30.9 * kRate, 0.1 * kRate);
  EXPECT_EQ(on.stage.Last("main", 0), 0);
  on.stage.engine->BASS_ChannelPlay(on.main, false);
  on.stage.Advance(600ms);
  EXPECT_LT(on.Furthest(1s), 1);
}

TEST(Following, GoesOnAloneWhereTheLeaderWasFreed) {
  HallAndPhones on(60ms, 180ms, 200);
  on.Play();
  on.stage.Advance(2s);
  on.stage.engine->BASS_StreamFree(on.main);
  const auto before = on.stage.engine->Heard(on.cue).frame.value;
  on.stage.Advance(2s);
  EXPECT_NEAR(static_cast<double>(on.stage.engine->Heard(on.cue).frame.value - before), 2 * kRate, 30);
}

TEST(Following, HearsOnWhereTheHallsOutputIsLostAndIsWithItOnTheNextOne) {
  HallAndPhones on(60ms, 180ms, 200);
  on.Play();
  on.stage.Advance(2s);
  const std::size_t given = on.stage.Given("phones").size();
  on.stage.outputs.Remove("main");
  on.stage.Advance(3s);
  const auto& phones = on.stage.Given("phones");
  std::size_t silent = 0, longest = 0;
  for (std::size_t i = given; i < phones.size(); i += 2) {
    silent = phones[i] == 0 ? silent + 1 : 0;
    longest = std::max(longest, silent);
  }
  EXPECT_LT(longest, static_cast<std::size_t>(kRate / 100)) << "frames";
  double furthest = 0;
  for (int look = 0; look < 100; ++look) {
    on.stage.Advance(7ms);
    furthest = std::max(furthest, std::abs(on.Told()));
  }
  EXPECT_LT(furthest, 1);
}

TEST(Following, SoundsAsLoudAsItsTrackWasMade) {
  HallAndPhones on(60ms, 180ms);
  on.Play();
  on.stage.engine->SetGain(on.main, {-20});
  on.stage.Advance(1s);
  const auto phones = on.stage.Channel("phones", 0);
  const float loudest = *std::max_element(phones.end() - kRate / 2, phones.end());
  EXPECT_NEAR(loudest, 0.1F * 25'000 / 32768, 0.01);
}

TEST(Following, OnTheSameOutputIsExact) {
  SoundStage stage;
  stage.files.Add("ramp.mp3", RampFile(100 * kRate));
  const auto main = stage.Load("ramp.mp3");
  const auto cue = stage.Load("ramp.mp3");
  stage.engine->Follow(cue, main);
  stage.engine->BASS_ChannelPlay(main, false);
  stage.Advance(1s);
  stage.engine->BASS_ChannelPlay(cue, false);
  stage.Advance(1s);
  EXPECT_EQ(stage.engine->Heard(cue).frame.value, stage.engine->Heard(main).frame.value);
}

TEST(Following, OnTheSameOutputTempoIsMovedInTheSameMoment) {
  for (const bool busy : {false, true}) {
    SoundStage stage;
    if (busy) stage.MakeBusy();
    stage.files.Add("ramp.mp3", RampFile(100 * kRate));
    const auto main = stage.Load("ramp.mp3"), cue = stage.Load("ramp.mp3");
    stage.engine->Follow(cue, main);
    for (const auto stream : {main, cue}) stage.engine->BASS_ChannelPlay(stream, false);
    for (const float percent : {4.0F, 6.0F, -3.0F}) {
      stage.Advance(3s);
      stage.engine->BASS_FX_TempoSet(main, percent, decks::kTempoUnchanged, decks::kTempoUnchanged);
    }
    stage.Advance(1s);
    EXPECT_NEAR(static_cast<double>(stage.engine->Heard(cue).frame.value),
                static_cast<double>(stage.engine->Heard(main).frame.value), 0.001 * kRate)
        << busy;
  }
}

TEST(Following, OnTheSameOutputItHasTheNewestTempoHoweverSoonThatCame) {
  SoundStage stage;
  stage.files.Add("ramp.mp3", RampFile(250 * kRate));
  const auto main = stage.Load("ramp.mp3"), cue = stage.Load("ramp.mp3");
  stage.engine->Follow(cue, main);
  for (const auto stream : {main, cue}) stage.engine->BASS_ChannelPlay(stream, false);
  const auto move = [&](float percent, support::Duration then) {
    stage.engine->BASS_FX_TempoSet(main, percent, decks::kTempoUnchanged, decks::kTempoUnchanged);
    stage.Advance(then);
  };
  stage.Advance(3s);
  // The first of the two is still on offer when the second one comes: forward, and there and back.
  for (const bool busy : {false, true}) {
    if (busy) stage.MakeBusy();
    for (const auto& [first, second] :
         {std::pair{4.0F, 0.0F}, {2.0F, 4.0F}, {6.0F, 4.0F}, {0.0F, 4.0F}, {4.0F, 0.0F}}) {
      move(first, 20ms);
      move(second, 6s);
      for (int look = 0; look < 10; ++look) {
        stage.Advance(130ms);
        EXPECT_NEAR(static_cast<double>(stage.engine->Heard(cue).frame.value),
                    static_cast<double>(stage.engine->Heard(main).frame.value), 0.001 * kRate)
            << first << " " << second << " " << busy;
      }
    }
  }
}

}  // namespace
}  // namespace engine::testing
