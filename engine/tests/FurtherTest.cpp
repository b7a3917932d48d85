// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
// The feeder may be kept waiting by other programs: it makes more ahead, and a hand is heard no later for it.

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

#include "engine/testing/SoundStage.h"

namespace engine::testing {
namespace {

/// A deck at 4 % more, which has played for a while.
class BusyDeck {
 public:
  explicit BusyDeck(bool busy) {
    if (busy) stage.MakeBusy();
    stage.files.Add("ramp.mp3", RampFile(60 * kRate));
    deck = stage.Load("ramp.mp3");
    SetTempo(4);
    stage.engine->BASS_ChannelPlay(deck, false);
    stage.Advance(2500ms);
  }
  void SetTempo(float percent, float semitones = decks::kTempoUnchanged) {
    stage.engine->BASS_FX_TempoSet(deck, percent, decks::kTempoUnchanged, semitones);
  }
  void Seek(double seconds) {
    stage.engine->BASS_ChannelSetPosition(deck, {4 * static_cast<std::int64_t>(seconds * kRate)});
  }
  /// So often no sound was ready while the feeder stood still for that long.
  std::uint64_t LateWithin(support::Duration standstill) {
    const auto before = stage.engine->Health().late_blocks;
    stage.StopFeeding();
    stage.Advance(standstill);
    stage.GoOnFeeding();
    stage.Advance(100ms);
    return stage.engine->Health().late_blocks - before;
  }
  /// Frames at the output from the act until the ramp goes on otherwise than before.
  std::size_t UntilHeard(const std::function<void()>& act) {
    const std::size_t before = stage.Channel("main", 0).size();
    act();
    stage.Advance(1s);
    const auto heard = stage.Channel("main", 0);
    const float step = heard[before] - heard[before - 1];
    for (std::size_t i = before; i < heard.size(); ++i) {
      if (std::abs(heard[i] - heard[i - 1] - step) > step / 100) return i - before;
    }
    return heard.size();
  }

  SoundStage stage;
  decks::StreamHandle deck = 0;
};

TEST(FurtherAhead, PlaysOnWhileTheFeederGetsNoTurn) {
  EXPECT_EQ(BusyDeck(false).LateWithin(240ms), 1U);
  BusyDeck busy(true);
  EXPECT_EQ(busy.LateWithin(240ms), 0U);
  EXPECT_EQ(busy.LateWithin(240ms), 0U);
}

TEST(FurtherAhead, ADeckThatStoodOrWasMovedPlaysOnToo) {
  BusyDeck busy(true);
  busy.stage.engine->BASS_ChannelPause(busy.deck);
  busy.stage.Advance(1s);
  busy.stage.engine->BASS_ChannelPlay(busy.deck, false);
  busy.stage.Advance(1s);
  EXPECT_EQ(busy.LateWithin(240ms), 0U);
  busy.Seek(30);
  busy.stage.Advance(200ms);
  EXPECT_EQ(busy.LateWithin(240ms), 0U);
  busy.SetTempo(6);
  busy.stage.Advance(2500ms);
  EXPECT_EQ(busy.LateWithin(240ms), 0U);
}

TEST(FurtherAhead, AHandIsHeardAsSoonAsEver) {
  using Act = std::function<void(BusyDeck&)>;
  const std::pair<const char*, Act> acts[] = {{"a nudge", [](BusyDeck& deck) { deck.SetTempo(5); }},
                                              {"no tempo", [](BusyDeck& deck) { deck.SetTempo(0); }},
                                              {"a seek", [](BusyDeck& deck) { deck.Seek(30.123); }}};
  for (const auto& [name, act] : acts) {
    SCOPED_TRACE(name);
    BusyDeck idle(false), busy(true);
    const std::size_t usual = idle.UntilHeard([&, &act = act] { act(idle); });
    EXPECT_LT(usual, kRate * 70 / 1000U);
    EXPECT_LE(busy.UntilHeard([&, &act = act] { act(busy); }), usual + kLaneBlockFrames);
    EXPECT_LE(busy.UntilHeard([&] { busy.SetTempo(7); }), usual + kRate * 61 / 1000) << "and the next one";
  }
}

TEST(FurtherAhead, AHandAtWorkAndATimedTempoLeaveNoStep) {
  SoundStage stage;
  stage.MakeBusy();
  stage.files.Add("tone.mp3", ToneFile(40 * kRate, 150, 0.5));
  const auto deck = stage.Load("tone.mp3");
  stage.engine->BASS_FX_TempoSet(deck, 2, decks::kTempoUnchanged, decks::kTempoUnchanged);
  stage.engine->BASS_ChannelPlay(deck, false);
  for (int round = 0; round < 3; ++round) {
    stage.Advance(3s);
    for (int move = 1; move < 8; ++move) {
      stage.engine->BASS_FX_TempoSet(deck, static_cast<float>(round + move), decks::kTempoUnchanged,
                                     decks::kTempoUnchanged);
      stage.Advance(17ms);
    }
    stage.Advance(3s);
    const std::int64_t at = stage.engine->NextFrame(deck).value + kRate / 5;
    stage.engine->Schedule({decks::ScheduledCommand::Kind::Tempo, deck, {at}, 2, 5ms});
  }
  stage.Advance(1s);
  EXPECT_LT(Roughness(stage.Channel("main", 0)), 1.3F * ToneRoughness(150 * 1.09, 0.5) + 2e-4F);
  EXPECT_EQ(stage.engine->Health().late_blocks, 0U);
}

}  // namespace
}  // namespace engine::testing
