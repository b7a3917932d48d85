// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
// Loops, jumps and slip, read off what comes out: the sample of a ramp tells its frame.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "decks/testing/LoopsContract.h"
#include "engine/testing/SoundStage.h"

namespace decks::testing {
namespace {

struct RealLoops {
  RealLoops() { stage.files.Add("tone.mp3", engine::testing::ToneFile(20 * 44'100, 440)); }
  DeckLoops& Loops() { return stage.engine->Loops(); }
  StreamHandle Stream() {
    const StreamHandle stream = stage.Load("tone.mp3");
    stage.engine->BASS_ChannelPlay(stream, false);
    stage.Advance(std::chrono::milliseconds(100));
    return stream;
  }
  engine::testing::SoundStage stage;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Real, EveryDeckLoops, RealLoops);

}  // namespace
}  // namespace decks::testing

namespace engine::testing {
namespace {

struct Pace {
  const char* name;
  float tempo;
  float rate;  ///< Hz, 0 is the file's
  bool busy;
};

/// A deck in the hall, and in head-phones on another output.
class LoopingDeck {
 public:
  explicit LoopingDeck(const Pace& pace = {"", 0, 0, false}, FakeFile file = RampFile(120 * kRate)) {
    stage.outputs.SetBlocks({882, 137, 500, 1});
    if (pace.busy) stage.MakeBusy();
    stage.files.Add("file.mp3", std::move(file));
    deck = stage.Load("file.mp3", 1);
    phones = stage.Load("file.mp3", 2);
    stage.engine->Follow(phones, deck);
    for (const auto stream : {deck, phones}) {
      stage.engine->BASS_FX_TempoSet(stream, pace.tempo, pace.rate > 0 ? pace.rate : -1.0F,
                                     decks::kTempoUnchanged);
    }
    ratio = (1 + pace.tempo / 100) * (pace.rate > 0 ? pace.rate / kRate : 1);
  }
  void PlayFor(support::Duration time) {
    stage.engine->BASS_ChannelPlay(deck, false);
    stage.engine->BASS_ChannelPlay(phones, false);
    stage.Advance(time);
  }
  bool Loop(std::int64_t begin, std::int64_t end) {
    return stage.engine->Loops().SetLoop(deck, music::Loop{{begin}, {end}});
  }
  void Exit() { stage.engine->Loops().SetLoop(deck, std::nullopt); }
  void Jump(std::int64_t frames) { ASSERT_TRUE(stage.engine->Loops().JumpBy(deck, frames)); }
  /// The file's frame under the newest sample, which the ramp tells up to whole 25,000s.
  double Newest() { return 32'768.0 * stage.Last("main", 0); }
  std::vector<float> Given(std::size_t from = 0) {
    auto given = stage.Channel("main", 0);
    given.erase(given.begin(), given.begin() + static_cast<std::ptrdiff_t>(from));
    return given;
  }
  std::size_t GivenFrames() { return stage.Channel("main", 0).size(); }
  /// Places that the samples tell, and those that they should: where both were in the plain part of a turn.
  double FurthestFrom(const std::vector<float>& given, double place, const music::Loop& loop) const {
    constexpr double kTurn = 230;  // of the fade before the loop's end, and of what a library blurs
    double furthest = 0;
    for (const float sample : given) {
      const double expected = Folded(place, loop);
      place += ratio;
      const bool plain = expected > static_cast<double>(loop.begin.value) + 5 &&
                         expected < static_cast<double>(loop.end.value) - kTurn;
      if (plain) furthest = std::max(furthest, std::abs(32'768.0 * sample - expected));
    }
    return furthest;
  }

  SoundStage stage;
  decks::StreamHandle deck = 0, phones = 0;
  double ratio = 1;
};

constexpr Pace kPaces[] = {{"as it is", 0, 0, false},
                           {"resampled", 0, 45'864, false},
                           {"key lock", 4, 0, false},
                           {"key lock, made far ahead", 4, 0, true}};

class Loops : public ::testing::TestWithParam<Pace> {};

TEST_P(Loops, AThousandTurnsDriftByNoSample) {
  LoopingDeck deck(GetParam());
  deck.PlayFor(100ms);
  const music::Loop loop{{8'000}, {8'000 + 2'756}};  // 1/8 beat at 120
  ASSERT_TRUE(deck.Loop(8'000, 8'000 + 2'756));
  deck.stage.Advance(500ms);
  const auto before = static_cast<std::size_t>(deck.GivenFrames());
  const auto lead_in = deck.Given();
  const auto in = std::find_if(lead_in.begin(), lead_in.end(), [](float s) { return 32'768 * s > 9'000; });
  ASSERT_NE(in, lead_in.end());
  const double first = 32'768.0 * *in;
  deck.stage.Advance(std::chrono::milliseconds(static_cast<int>(1000 * 62.5 / deck.ratio)));
  auto given = deck.Given();
  given.erase(given.begin(), given.begin() + (in - lead_in.begin()));
  ASSERT_GT(static_cast<double>(given.size()) * deck.ratio, 1000.0 * 2'756);
  EXPECT_LE(deck.FurthestFrom(given, first, loop), 1.0);
  const auto heard = deck.stage.engine->Heard(deck.deck);
  EXPECT_TRUE(loop.Holds(heard.frame.value)) << heard.frame.value;
  EXPECT_EQ(deck.stage.engine->Health().late_blocks, 0U);
  EXPECT_GT(deck.GivenFrames(), before);
}

TEST_P(Loops, AreHeardAndLeftAtOnceInStep) {
  LoopingDeck deck(GetParam());
  deck.PlayFor(100ms);
  deck.stage.Advance(1600ms);
  // Its end has just passed: it turns at once, to where it would be.
  const std::size_t set = deck.GivenFrames();
  const double heard = static_cast<double>(deck.stage.engine->Heard(deck.deck).frame.value);
  const double place = deck.Newest() + 25'000 * std::round((heard - deck.Newest()) / 25'000);
  const auto begin = static_cast<std::int64_t>(place) - 12'000;
  ASSERT_TRUE(deck.Loop(begin, begin + 11'000));
  deck.stage.Advance(60ms);
  auto given = deck.Given(set);
  const auto turned = std::adjacent_find(given.begin(), given.end(), [&](float before, float after) {
    return std::abs(32'768.0 * (after - before) - deck.ratio) > 10;
  });
  EXPECT_LE(turned - given.begin(), kRate * 30 / 1000);  // a period, and what a lane is filled in
  EXPECT_LE(std::abs(std::remainder(
                deck.Newest() - (place + static_cast<double>(given.size()) * deck.ratio - 11'000), 25'000.0)),
            1.5);
  // It is left at once too, and goes on from its place in the loop.
  const std::size_t left = deck.GivenFrames();
  const double from = deck.Newest();
  deck.Exit();
  deck.stage.Advance(1s);
  const double gone = static_cast<double>(deck.GivenFrames() - left) * deck.ratio;
  EXPECT_LE(std::abs(std::remainder(deck.Newest() - from - gone, 25'000.0)), 1.5);
  EXPECT_EQ(deck.stage.engine->Health().late_blocks, 0U);
}

TEST_P(Loops, JumpsMoveALoopAndSlipComesBackWhereItWouldBe) {
  LoopingDeck deck(GetParam());
  deck.PlayFor(1s);
  decks::DeckLoops& loops = deck.stage.engine->Loops();
  const std::size_t begin = deck.GivenFrames();
  const double place = deck.Newest();
  const auto off = [&](std::int64_t moved) {
    const double gone = static_cast<double>(deck.GivenFrames() - begin) * deck.ratio;
    return std::abs(std::remainder(deck.Newest() - place - gone - static_cast<double>(moved), 25'000.0));
  };
  deck.Jump(11'025);
  deck.Jump(11'025);
  deck.stage.Advance(300ms);
  EXPECT_LE(off(22'050), 1.5) << "two at once are both made";
  deck.Jump(-22'050);
  deck.stage.Advance(100ms);
  EXPECT_LE(off(0), 2) << "and back";
  loops.SetSlip(deck.deck, true);
  const std::int64_t heard = deck.stage.engine->Heard(deck.deck).frame.value;
  ASSERT_TRUE(deck.Loop(heard, heard + 1'500));
  deck.stage.Advance(700ms);
  deck.Jump(44'100);
  EXPECT_EQ(loops.LoopState(deck.deck).loop, (music::Loop{{heard + 44'100}, {heard + 45'600}}));
  deck.stage.Advance(300ms);
  deck.stage.engine->BASS_ChannelSetPosition(deck.deck, {4 * 60 * kRate});
  EXPECT_FALSE(loops.LoopState(deck.deck).loop) << "a place outside ends it";
  deck.stage.Advance(300ms);
  loops.SlipBack(deck.deck);
  deck.stage.Advance(300ms);
  EXPECT_LE(off(0), 3) << "four ways, each to a whole frame";
}

TEST_P(Loops, TheTempoOfALoopMovesWithoutLosingIt) {
  LoopingDeck deck(GetParam());
  deck.PlayFor(100ms);
  ASSERT_TRUE(deck.Loop(8'000, 9'000));
  for (const float percent : {2.0F, 0.0F, -3.0F, 4.0F}) {
    deck.stage.engine->BASS_FX_TempoSet(deck.deck, percent, -1, decks::kTempoUnchanged);
    deck.stage.Advance(2500ms);
    const auto last = deck.Given(deck.GivenFrames() - 20'000);
    const auto [least, most] = std::minmax_element(last.begin(), last.end());
    EXPECT_GT(*least * 32'768, 7'700) << percent;
    EXPECT_LT(*most * 32'768, 9'001) << percent;
  }
  deck.stage.engine->BASS_ChannelPause(deck.deck);
  deck.stage.Advance(500ms);
  deck.stage.engine->BASS_FX_TempoSet(deck.deck, 1, -1, decks::kTempoUnchanged);
  deck.stage.Advance(100ms);
  const auto stood = deck.stage.engine->Heard(deck.deck).frame.value;
  EXPECT_TRUE((music::Loop{{8'000}, {9'000}}).Holds(stood)) << stood;
  deck.PlayFor(500ms);
  EXPECT_TRUE((music::Loop{{8'000}, {9'000}}).Holds(deck.stage.engine->Heard(deck.deck).frame.value));
  EXPECT_EQ(deck.stage.engine->Health().late_blocks, 0U);
}

TEST_P(Loops, NothingOfThemIsAStep) {
  LoopingDeck deck(GetParam(), ToneFile(120 * kRate, 150, 0.5));
  deck.PlayFor(1s);
  for (const std::int64_t length : {221, 700, 5'000, 20'001}) {
    const std::int64_t heard = deck.stage.engine->Heard(deck.deck).frame.value;
    ASSERT_TRUE(deck.Loop(heard - length / 2, heard - length / 2 + length));
    deck.stage.Advance(300ms);
    deck.Jump(3'333);
    deck.stage.Advance(200ms);
    deck.Exit();
    deck.stage.Advance(200ms);
  }
  // A turn of 2.5 ms, the shortest, bends a sound more than one of 5 ms does.
  EXPECT_LT(Roughness(deck.Given()), 6 * ToneRoughness(150 * deck.ratio, 0.5));
}

TEST_P(Loops, HeadPhonesStandWithTheHallInside) {
  for (const std::int64_t length : {650, 22'050}) {
    LoopingDeck deck(GetParam());
    deck.PlayFor(1500ms);
    ASSERT_TRUE(deck.Loop(70'000, 70'000 + length));
    deck.stage.Advance(3s);
    for (int look = 0; look < 50; ++look) {
      deck.stage.Advance(13ms);
      const auto hall = deck.stage.engine->Heard(deck.deck).frame.value;
      const auto phones = deck.stage.engine->Heard(deck.phones).frame.value;
      EXPECT_LE(std::abs(std::remainder(static_cast<double>(hall - phones), static_cast<double>(length))),
                kRate / 1000.0)
          << hall << " and " << phones;
    }
    deck.Exit();
    deck.stage.Advance(500ms);
    const auto hall = deck.stage.engine->Heard(deck.deck).frame.value;
    EXPECT_NEAR(static_cast<double>(deck.stage.engine->Heard(deck.phones).frame.value - hall), 0,
                kRate / 1000.0);
  }
}

INSTANTIATE_TEST_SUITE_P(Paces, Loops, ::testing::ValuesIn(kPaces));

TEST(LoopsOfADeck, ThatStandsTurnWhenItPlays) {
  LoopingDeck deck;
  deck.PlayFor(500ms);
  deck.stage.engine->BASS_ChannelPause(deck.deck);
  deck.stage.Advance(100ms);
  const auto stood = deck.stage.engine->Heard(deck.deck).frame.value;
  ASSERT_TRUE(deck.Loop(stood - 1'000, stood + 1'000));
  deck.stage.Advance(100ms);
  EXPECT_EQ(deck.stage.engine->Heard(deck.deck).frame.value, stood);
  deck.Jump(10'000);
  deck.stage.Advance(100ms);
  EXPECT_EQ(deck.stage.engine->Heard(deck.deck).frame.value, stood + 10'000);
  deck.PlayFor(500ms);
  EXPECT_TRUE((music::Loop{{stood + 9'000}, {stood + 11'000}})
                  .Holds(deck.stage.engine->Heard(deck.deck).frame.value));
}

TEST(LoopsOfADeck, JumpsCountWhatIsOnItsWay) {
  LoopingDeck deck({"", 0, 0, false}, RampFile(10 * kRate));
  decks::DeckLoops& loops = deck.stage.engine->Loops();
  deck.PlayFor(1s);
  deck.Jump(5 * kRate);
  EXPECT_FALSE(loops.JumpBy(deck.deck, 5 * kRate)) << "beyond the end, from where the first one leads";
  deck.stage.Advance(300ms);
  EXPECT_NEAR(static_cast<double>(deck.stage.engine->Heard(deck.deck).frame.value), 6.3 * kRate, 0.1 * kRate);
  deck.stage.engine->BASS_ChannelSetPosition(deck.deck, {4 * 2 * kRate});
  deck.Jump(kRate);
  deck.stage.Advance(300ms);
  const std::int64_t place = deck.stage.engine->Heard(deck.deck).frame.value;
  EXPECT_NEAR(static_cast<double>(place), 3.3 * kRate, 0.1 * kRate) << "a place, and a jump from it";
  ASSERT_TRUE(deck.Loop(place - 1'000, place + 10'000));
  deck.stage.Advance(300ms);
  deck.Jump(kRate);
  deck.Jump(kRate);
  const music::Loop twice{{place - 1'000 + 2 * kRate}, {place + 10'000 + 2 * kRate}};
  EXPECT_EQ(loops.LoopState(deck.deck).loop, twice);
  deck.stage.Advance(300ms);
  EXPECT_TRUE(twice.Holds(deck.stage.engine->Heard(deck.deck).frame.value));
}

TEST(LoopsOfADeck, AtTheEndOfTheFileKeepItFromEnding) {
  LoopingDeck deck({"", 0, 0, true}, RampFile(3 * kRate));
  deck.PlayFor(2600ms);
  ASSERT_TRUE(deck.Loop(3 * kRate - 10'000, 3 * kRate));
  deck.stage.Advance(5s);
  EXPECT_TRUE(deck.stage.engine->Heard(deck.deck).playing);
  deck.Exit();
  deck.stage.Advance(1s);
  EXPECT_TRUE(deck.stage.engine->Heard(deck.deck).ended);
}

}  // namespace
}  // namespace engine::testing
