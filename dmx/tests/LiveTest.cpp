// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <map>

#include "dmx/LightEffects.h"
#include "dmx/LightGroups.h"
#include "dmx/LightLayers.h"
#include "dmx/LiveLook.h"
#include "dmx/testing/RecordingDmxInterface.h"
#include "dmx/testing/Rig.h"

namespace dmx {
namespace {

/// Channel 1 dims, channel 2 turns a wheel.
struct Layers {
  Layers() {
    ChannelSet dimmers;
    dimmers.set(0);
    layers.SetDimmers(dimmers);
  }
  testing::RecordingDmxInterface wire;
  Universe faders{wire};
  LightLayers layers{faders};
};

using Do = std::function<void(LightLayers&)>;

Do Show(int channel, int level) {
  return [=](LightLayers& on) { on.Beneath().MoveFader(channel, static_cast<DmxLevel>(level)); };
}
Do Hand(int channel, int level) {
  return [=](LightLayers& on) { on.TakeInHand(channel, static_cast<DmxLevel>(level)); };
}
Do Effect(int channel, int level) {
  return [=](LightLayers& on) { on.SetEffect(channel, static_cast<DmxLevel>(level)); };
}
Do Hold(int channel, int level) {
  return [=](LightLayers& on) { on.SetHold(channel, static_cast<DmxLevel>(level)); };
}
void LetGo(LightLayers& on) {
  on.LetAllGo();
}
void Unhold(LightLayers& on) {
  on.SetHold(1, std::nullopt);
}
void End(LightLayers& on) {
  on.SetEffect(1, std::nullopt);
  on.SetEffect(2, std::nullopt);
}
void Freeze(LightLayers& on) {
  on.SetFreeze(LightLayers::Freeze::On);
}
void Thaw(LightLayers& on) {
  on.SetFreeze(LightLayers::Freeze::Off);
}

struct MergeCase {
  const char* what;
  std::vector<Do> done;
  int dimmer;
  int wheel;
  LightOwner owner;  ///< of the dimmer
};
const MergeCase kMerges[] = {
    {"nobody", {}, 0, 0, LightOwner::Beneath},
    {"a show", {Show(1, 90), Show(2, 90)}, 90, 90, LightOwner::Beneath},
    {"a weaker effect", {Show(1, 90), Effect(1, 40)}, 90, 0, LightOwner::Beneath},
    {"a stronger effect", {Show(1, 90), Effect(1, 140)}, 140, 0, LightOwner::Effect},
    {"an effect after the show", {Show(2, 90), Effect(2, 40)}, 0, 40, LightOwner::Beneath},
    {"the show after the effect", {Effect(2, 40), Show(2, 90)}, 0, 90, LightOwner::Beneath},
    {"an effect that goes on takes nothing back",
     {Effect(2, 40), Show(2, 90), Effect(2, 50)},
     0,
     90,
     LightOwner::Beneath},
    {"a hand at the bottom", {Show(1, 90), Effect(1, 140), Hand(1, 0)}, 0, 0, LightOwner::Hand},
    {"what goes on below a hand",
     {Hand(1, 10), Show(1, 90), Hand(2, 5), Effect(2, 7)},
     10,
     5,
     LightOwner::Hand},
    {"a hand that lets go",
     {Hand(1, 10), Show(1, 90), Hand(2, 5), Effect(2, 7), LetGo},
     90,
     7,
     LightOwner::Beneath},
    {"an effect that ends",
     {Show(1, 90), Show(2, 80), Effect(1, 140), Effect(2, 40), End},
     90,
     80,
     LightOwner::Beneath},
    {"a hold", {Hand(1, 10), Hold(1, 255)}, 255, 0, LightOwner::Hold},
    {"a hold that ends", {Hand(1, 10), Hold(1, 255), Hand(1, 20), Unhold}, 20, 0, LightOwner::Hand},
    {"a freeze", {Show(1, 90), Freeze, Show(1, 20), Hand(2, 50)}, 90, 0, LightOwner::Beneath},
    {"a hold on ice", {Show(1, 90), Freeze, Hold(1, 255), Show(1, 20), Unhold}, 90, 0, LightOwner::Beneath},
    {"a freeze beside a hold", {Show(1, 90), Hold(1, 255), Freeze, Unhold}, 90, 0, LightOwner::Beneath},
    {"a thaw", {Show(1, 90), Freeze, Show(1, 20), Hand(2, 50), Thaw}, 20, 50, LightOwner::Beneath},
    {"channels that are none",
     {Hand(0, 9), Hand(513, 9), Effect(-1, 9), Hold(600, 9)},
     0,
     0,
     LightOwner::Beneath},
};

TEST(LightLayersTest, WhoHasAChannelFollowsFromWhoAskedAndWhen) {
  for (const MergeCase& test : kMerges) {
    Layers on;
    for (const Do& act : test.done) act(on.layers);
    EXPECT_EQ(on.faders.Level(1), test.dimmer) << test.what;
    EXPECT_EQ(on.faders.Level(2), test.wheel) << test.what;
    EXPECT_EQ(on.layers.OwnerOf(1), test.owner) << test.what;
  }
}

std::map<int, int> MovesOf(const DMXname& fixtures, int position, const LiveLook& look) {
  std::vector<FaderMove> moves;
  AddMoves(moves, *fixtures.Item(position), look);
  std::map<int, int> levels;
  for (const FaderMove& move : moves) levels[move.channel] = move.level;
  return levels;
}

LiveLook Look(std::optional<double> light, std::optional<MixedColour> colour) {
  LiveLook look;
  look.light = light;
  look.colour = colour;
  return look;
}

TEST(LiveLookTest, AColourIsMixedOrTheNearestOfAWheelOrNone) {
  using Levels = std::map<int, int>;
  DMXname rig;
  testing::AddRgbPar(rig, 1);
  testing::AddHead(rig, 11);
  rig.Add().StartChannel = 21;
  rig.Item(3)->Channels.Add().function = ChannelFunction::Dimmer;
  testing::AddRgbPar(rig, 511);  // its blue lies beyond the universe
  constexpr MixedColour kPink{255, 0, 100};
  const struct {
    const char* what;
    int fixture;
    LiveLook look;
    Levels levels;
  } cases[] = {
      {"mixed at half light", 1, Look(0.5, kPink), {{1, 128}, {2, 0}, {3, 50}}},
      {"light alone is white", 1, Look(1, {}), {{1, 255}, {2, 255}, {3, 255}}},
      {"nearest on the wheel", 2, Look({}, kPink), {{15, 10}}},
      {"light opens the shutter", 2, Look(0.5, {}), {{13, 128}, {14, 200}}},
      {"dark is the dimmer's", 2, Look(0, {}), {{13, 0}, {14, 200}}},
      {"no colour at all", 3, Look(1, kPink), {{21, 255}}},
      {"cut by the universe", 4, Look({}, kPink), {{511, 255}, {512, 0}}},
  };
  for (const auto& test : cases) EXPECT_EQ(MovesOf(rig, test.fixture, test.look), test.levels) << test.what;
  EXPECT_EQ(PaletteOf(rig, std::vector{1, 2}).size(), kMixedColours) << "the wheel has nothing besides";
  EXPECT_EQ(PaletteOf(rig, std::vector{2}).size(), 3U);
  EXPECT_EQ(PaletteOf(rig, std::vector{3, 99}).size(), 0U);
  EXPECT_EQ(GobosOf(rig, std::vector{1, 2}), (std::vector<std::string>{"Open", "Stars"}));
}

LightEffect EffectOf(EffectKind kind, double beats, std::size_t count = 4) {
  LightEffect effect;
  effect.kind = kind;
  effect.rate.value = beats;
  for (std::size_t i = 1; i <= count; ++i) effect.fixtures.push_back(static_cast<int>(i));
  return effect;
}

std::string Lit(const LightEffect& effect, double beat) {
  const double rounds = RoundsAt(effect, MusicPlace{beat, 120}, 0, Flashing::Guarded);
  std::string lit;
  for (std::size_t place = 0; place < effect.fixtures.size(); ++place)
    lit += LookAt(effect, place, rounds, {}).light.value() > 0 ? '*' : '.';
  return lit;
}

TEST(LightEffectsTest, AChaseStandsWhereTheMusicIs) {
  const LightEffect chase = EffectOf(EffectKind::Chase, 1);
  const struct {
    double beat;
    const char* lit;
  } cases[] = {{0, "*..."},   {0.99, "*..."}, {1, ".*.."},    {3.5, "...*"}, {4, "*..."},
               {102, "..*."}, {102, "..*."},  {-0.5, "...*"}, {-4, "*..."},  {1e15, "*..."}};
  for (const auto& test : cases) EXPECT_EQ(Lit(chase, test.beat), test.lit) << test.beat;
  EXPECT_EQ(Lit(EffectOf(EffectKind::Chase, 4), 9), "..*.") << "every fourth beat";
  EXPECT_EQ(Lit(EffectOf(EffectKind::Chase, 1, 1), 1), ".") << "one that goes alone";
}

TEST(LightEffectsTest, NoMusicNoTempoAndEveryTempoStayWithinTheLimits) {
  for (const double tempo : {0.0, 20.0, 120.0, 400.0, 1e9, std::nan("")}) {
    for (const double beats : kEffectBeats) {
      for (std::size_t kind = 0; kind < kEffectKinds; ++kind) {
        LightEffect effect = EffectOf(static_cast<EffectKind>(kind), beats);
        effect.size = 1;
        const double pace = std::isfinite(tempo) && tempo > 0 ? std::min(tempo, 400.0) / 60 : 2;
        double flashes = 0, fastest = 0, was = 0.5;
        bool lit = false;
        for (int step = 0; step <= 1000; ++step) {
          const double seconds = step / 100.0;
          const double rounds =
              RoundsAt(effect, MusicPlace{seconds * pace, tempo}, seconds, Flashing::Guarded);
          const LiveLook look = LookAt(effect, 0, rounds, {});
          if (look.light) flashes += *look.light > 0.5 && !lit;
          lit = look.light.value_or(0) > 0.5;
          const double pan = look.pan.value_or(0.5);
          if (step > 0) fastest = std::max(fastest, std::abs(pan - was) * 100);
          was = pan;
          EXPECT_TRUE(pan >= 0 && pan <= 1);
        }
        EXPECT_LE(flashes, 40) << kind << " " << beats << " " << tempo;
        EXPECT_LE(fastest, 0.71) << kind << " " << beats << " " << tempo;
      }
    }
  }
  const LightEffect pulse = EffectOf(EffectKind::Pulse, 1);
  EXPECT_EQ(RoundsAt(pulse, std::nullopt, 3, Flashing::Guarded), 6) << "120 a minute by the clock";
}

TEST(LightEffectsTest, AShortLoopFlashesNoFasterThanTheGuardLets) {
  LightEffect pulse;
  pulse.kind = EffectKind::Pulse;
  pulse.rate = {EffectRate::Unit::Beats, 1};
  pulse.fixtures = {1};
  for (const Flashing flashing : {Flashing::Guarded, Flashing::Free}) {
    FlashGate gate;
    int rises = 0;
    double before = 0;
    for (double seconds = 0; seconds < 10; seconds += 0.01) {
      // An eighth of a beat around a beat, over and over.
      const double beat = 0.94 + std::fmod(seconds * 128 / 60, 0.125);
      const double rounds = RoundsAt(pulse, MusicPlace{beat, 128}, seconds, flashing);
      const double light = *LookAt(pulse, 0, gate.Pass(rounds, seconds, flashing), {}).light;
      if (light > before + 0.5) ++rises;
      before = light;
    }
    const bool guarded = flashing == Flashing::Guarded;
    EXPECT_TRUE(guarded ? rises <= 40 : rises > 100) << rises;
  }
}

TEST(LightGroupsTest, GroupsComeBackAndWhatIsNotPatchedIsCounted) {
  DMXname rig;
  testing::AddRgbPar(rig, 1);
  testing::AddHead(rig, 11);
  const std::vector<LightGroup> groups{MakeGroup("Front = 1", rig, std::vector{2, 1}),
                                       {"Gone", {{"Old.dmx", 7}}}};
  const std::string text = LightGroupsText(groups);
  ASSERT_EQ(ParseLightGroups(text), groups);
  EXPECT_EQ(Find(groups[0], rig).positions, (std::vector{2, 1}));
  EXPECT_EQ(Find(groups[1], rig).missing, 1);
  EXPECT_FALSE(ParseLightGroups(text.substr(0, text.size() - 9)));
  EXPECT_FALSE(ParseLightGroups("dj TOLVEN light groups 2" + text.substr(24)));
  EXPECT_TRUE(ParseLightGroupLines("[group]\nname=x\nstart=3\n[group]\nfile=a\nstart=1\n").empty());
}

}  // namespace
}  // namespace dmx
