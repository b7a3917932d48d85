// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
// What each effect does to an impulse, a tone and silence.

#include "engine/effects/EffectChain.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <numbers>
#include <random>
#include <vector>

namespace engine::testing {
namespace {

using Settings = decks::EffectSettings;
using Sound = std::vector<float>;

constexpr int kHertz = 48'000;

Sound Silence(double seconds) {
  return Sound(2 * static_cast<std::size_t>(seconds * kHertz));
}

Sound Tone(double hertz, double seconds, double left = 0.25, double right = 0.25) {
  Sound sound = Silence(seconds);
  for (std::size_t i = 0; i < sound.size(); ++i) {
    const double phase = 2 * std::numbers::pi * hertz * static_cast<double>(i / 2) / kHertz;
    sound[i] = static_cast<float>((i % 2 == 0 ? left : right) * std::sin(phase));
  }
  return sound;
}

Sound Impulse(double seconds, float level = 0.5F) {
  Sound sound = Silence(seconds);
  sound[0] = sound[1] = level;
  return sound;
}

/// Root mean square of one side between two times.
double Rms(const Sound& sound, double from, double to, std::size_t side = 0) {
  double sum = 0;
  const auto begin = static_cast<std::size_t>(from * kHertz), end = static_cast<std::size_t>(to * kHertz);
  for (std::size_t i = begin; i < end; ++i) {
    sum += static_cast<double>(sound[2 * i + side]) * static_cast<double>(sound[2 * i + side]);
  }
  return std::sqrt(sum / static_cast<double>(end - begin));
}

double Db(double ratio) {
  return 20 * std::log10(ratio + 1e-12);
}

/// The largest |second difference| of the left side: a step in a sound stands out in it.
float Bend(const Sound& sound) {
  float most = 0;
  for (std::size_t i = 4; i + 1 < sound.size(); i += 2) {
    most = std::max(most, std::abs(sound[i] - 2 * sound[i - 2] + sound[i - 4]));
  }
  return most;
}

class EffectChainTest : public ::testing::Test {
 protected:
  /// In the uneven pieces that a device asks for.
  Sound Through(Sound sound) {
    constexpr std::size_t kPieces[] = {128, 37, 1, 90};
    std::size_t piece = 0;
    for (std::size_t done = 0; done < sound.size();) {
      const std::size_t count = std::min(2 * kPieces[piece++ % 4], sound.size() - done);
      chain.Process(std::span(sound).subspan(done, count));
      done += count;
    }
    return sound;
  }
  Sound Through(const Settings& settings, const Sound& sound) {
    chain.Set(settings);
    return Through(sound);
  }
  /// Of a tone once it is settled, in dB.
  double Response(const Settings& settings, double hertz) {
    chain.Set(settings);
    Through(Tone(hertz, 0.5));
    return Db(Rms(Through(Tone(hertz, 0.5)), 0.25, 0.5) / (0.25 / std::sqrt(2.0)));
  }
  EffectChain chain{kHertz, {}};
};

Settings EchoOf(float level, float seconds) {
  Settings settings;
  settings.echo = {.on = true, .level = level, .seconds = seconds};
  return settings;
}

Settings FilterAt(float position, float q = 0.71F) {
  Settings settings;
  settings.filter = {.position = position, .q = q};
  return settings;
}

/// Every one of them, by its name in a failure.
struct Named {
  const char* name;
  std::function<void(Settings&)> on;
};
const Named kAll[] = {{"filter", [](Settings& s) { s.filter.position = -0.5F; }},
                      {"low pass",
                       [](Settings& s) {
                         s.low_pass = {true, 500, 2};
                       }},
                      {"flanger", [](Settings& s) { s.flanger.on = true; }},
                      {"echo",
                       [](Settings& s) {
                         s.echo = {true, 0.5F, 0.1F};
                       }},
                      {"echo3",
                       [](Settings& s) {
                         s.echo3 = {true, 0.8F, 0.5F, 0.1F};
                       }},
                      {"reverb",
                       [](Settings& s) {
                         s.reverb = {true, 0.5F, 0.4F};
                       }},
                      {"swap", [](Settings& s) { s.swap = true; }},
                      {"rotate", [](Settings& s) { s.rotate.on = true; }}};

TEST_F(EffectChainTest, WhatIsOffPassesBitForBitBeforeAndAfter) {
  const Sound sound = Tone(431, 0.3, 0.25, 0.125);
  EXPECT_EQ(Through(sound), sound);
  for (const Named& one : kAll) {
    Settings settings;
    one.on(settings);
    EXPECT_NE(Through(settings, sound), sound) << one.name;
    Through(Settings{}, Silence(8));
    EXPECT_FALSE(chain.Rings()) << one.name;
    EXPECT_EQ(Through(sound), sound) << one.name;
  }
  EXPECT_EQ(Through(FilterAt(0.019F), sound), sound) << "the middle is a little wide";
  Settings open;
  open.low_pass.on = true;
  EXPECT_EQ(Through(open, sound), sound) << "a low pass that is wide open";
}

TEST_F(EffectChainTest, AnEchoRepeatsAtItsTimeEachAsMuchSofterAsItsLevelSays) {
  const Sound out = Through(EchoOf(0.5F, 0.1F), Silence(0.1)), heard = Through(Impulse(1));
  const auto at = [&heard](int repeat) { return heard[static_cast<std::size_t>(2 * repeat * kHertz / 10)]; };
  EXPECT_NEAR(at(0), 0.5, 1e-6);
  EXPECT_NEAR(at(1), 0.25, 1e-5);
  EXPECT_NEAR(at(2), 0.125, 1e-5);
  EXPECT_NEAR(at(3), 0.0625, 1e-5);
  EXPECT_EQ(Rms(heard, 0.101, 0.199), 0) << "and is silent between them";
}

TEST_F(EffectChainTest, AnEchoAtFullLevelDiesAwayAllTheSame) {
  Through(EchoOf(1, 0.01F), Silence(0.1));
  const Sound heard = Through(Impulse(2));
  EXPECT_NEAR(heard[2 * 480], 0.5, 1e-5) << "the first repeat is whole";
  EXPECT_LT(Rms(heard, 1.8, 2), 1e-4);
}

TEST_F(EffectChainTest, RepeatsThatAddUpExactlyStayWithinBounds) {
  Through(EchoOf(1, 0.1F), Silence(0.1));
  Through(Tone(200, 4, 0.5, 0.05));  // twenty whole periods a repeat
  const Sound heard = Through(Tone(200, 1, 0.5, 0.05));
  const auto [least, most] = std::minmax_element(heard.begin(), heard.end());
  EXPECT_LT(std::max(*most, -*least), 2.01F);
  EXPECT_NEAR(Rms(heard, 0, 1, 1), 0.55 / std::sqrt(2.0), 0.01) << "what is softer is not touched";
}

TEST_F(EffectChainTest, TheThirdEchoMixesDryAndWetAndDiesAwayAtItsOwnPace) {
  Settings settings;
  settings.echo3 = {.on = true, .dry = 0.25F, .wet = 1, .seconds = 0.1F};
  Through(settings, Silence(0.1));
  const Sound heard = Through(Impulse(0.5, 0.8F));
  EXPECT_NEAR(heard[0], 0.2, 1e-6);
  EXPECT_NEAR(heard[2 * 4800], 0.8, 1e-5);
  EXPECT_NEAR(heard[4 * 4800], 0.32, 1e-5);
}

TEST_F(EffectChainTest, AReverbComesLateAndIsSixtyDecibelsDownAfterItsTime) {
  for (const float seconds : {0.5F, 2.0F, 6.0F}) {
    Settings settings;
    settings.reverb = {.on = true, .level = 1, .seconds = seconds};
    Through(settings, Silence(0.1));
    const double time = static_cast<double>(seconds);
    const Sound heard = Through(Impulse(time + 0.2));
    EXPECT_NEAR(heard[0], 0.5F, 1e-5);
    EXPECT_LT(Rms(heard, 0.001, 0.0099), 1e-5) << "before the room answers";
    // Between a tenth and six tenths of it, where the tail is dense: treble goes sooner, so it may be more.
    const double lost =
        Db(Rms(heard, 0.1 * time, 0.15 * time + 0.02) / Rms(heard, 0.6 * time, 0.65 * time + 0.02));
    EXPECT_NEAR(lost, 32, 7) << seconds;
    Through(Settings{}, Silence(12));
  }
}

TEST_F(EffectChainTest, AReverbIsAsLoudAsItsLevelAndReachesBothSides) {
  Settings settings;
  settings.reverb = {.on = true, .level = 0.5F, .seconds = 1.5F};
  Through(settings, Silence(0.1));
  const Sound half = Through(Impulse(1));
  Through(Settings{}, Silence(8));
  settings.reverb.level = 1;
  Through(settings, Silence(0.1));
  const Sound whole = Through(Impulse(1));
  EXPECT_NEAR(Db(Rms(whole, 0.1, 0.4) / Rms(half, 0.1, 0.4)), 6.02, 0.01);
  EXPECT_NEAR(Db(Rms(whole, 0.1, 0.4, 1) / Rms(whole, 0.1, 0.4, 0)), 0, 3);
  Through(Settings{}, Silence(8));
  Through(settings, Tone(440, 2));
  const double tone = Rms(Through(Tone(440, 1)), 0, 1) / (0.25 / std::sqrt(2.0));
  EXPECT_GT(Db(tone), 0.5);
  EXPECT_LT(Db(tone), 9) << "loud, and not past what the limiter takes";
}

TEST_F(EffectChainTest, AReverbIsAsLoudHoweverLongItRings) {
  // Noise with less and less treble, as music has.
  const auto noise = [](double seconds) {
    Sound sound = Silence(seconds);
    std::minstd_rand random(7);
    float low = 0;
    for (std::size_t i = 0; i < sound.size(); i += 2) {
      low += 0.1F * (std::uniform_real_distribution<float>(-1, 1)(random) - low);
      sound[i] = sound[i + 1] = low;
    }
    return sound;
  };
  for (const float seconds : {0.5F, 1.5F, 8.0F}) {
    Settings settings;
    settings.reverb = {.on = true, .level = 1, .seconds = seconds};
    Through(settings, Silence(0.1));
    const Sound dry = noise(12);
    Sound wet = Through(dry);
    for (std::size_t i = 0; i < wet.size(); ++i) wet[i] -= dry[i];
    EXPECT_NEAR(Db(Rms(wet, 8, 12) / Rms(dry, 8, 12)), 7, 1) << seconds;
    Through(Settings{}, Silence(12));
  }
}

TEST_F(EffectChainTest, TheFilterClosesFromAboveToTheLeftAndFromBelowToTheRight) {
  struct Case {
    float position;
    double hertz, least, most;
  };
  for (const Case& one : {Case{-1, 1000, -60, -40}, Case{-1, 30, -3, 1}, Case{-0.5F, 200, -0.5, 0.5},
                          Case{-0.5F, 8000, -60, -20}, Case{1, 1000, -60, -40}, Case{0.5F, 60, -60, -15},
                          Case{0.5F, 5000, -0.5, 0.5}, Case{-0.05F, 1000, -0.1, 0.1}}) {
    const double response = Response(FilterAt(one.position), one.hertz);
    EXPECT_GT(response, one.least) << one.position << " at " << one.hertz;
    EXPECT_LT(response, one.most) << one.position << " at " << one.hertz;
  }
  EXPECT_GT(Response(FilterAt(-0.5F, 4), 1095), 9) << "its edge whistles with a high Q";
}

TEST_F(EffectChainTest, TheLowPassIsThreeDecibelsDownAtItsEdgeAndAsHighAsItsResonance) {
  Settings settings;
  for (const double hertz : {100.0, 1000.0, 8000.0}) {
    settings.low_pass = {.on = true, .hertz = static_cast<float>(hertz), .q = 0.7071F};
    EXPECT_NEAR(Response(settings, hertz), -3, 0.1) << hertz;
    EXPECT_NEAR(Response(settings, hertz / 10), 0, 0.1) << hertz;
    settings.low_pass.q = 8;
    EXPECT_NEAR(Response(settings, hertz), Db(8), 0.3) << hertz;
  }
}

TEST_F(EffectChainTest, AFlangerCombsAndTheCombMovesAtItsSpeed) {
  Settings settings;
  settings.flanger = {.on = true, .hertz = 0.01F, .wet = 0.5F};
  // Half a millisecond late at the start of its turn: against itself at 1 kHz, with itself at 2.
  chain.Set(settings);
  const double notch = Rms(Through(Tone(1000, 0.2)), 0.1, 0.2);
  Through(Settings{}, Silence(1));
  chain.Set(settings);
  const double crest = Rms(Through(Tone(2000, 0.2)), 0.1, 0.2);
  EXPECT_GT(Db(crest / notch), 12);
  Through(Settings{}, Silence(1));
  settings.flanger.hertz = 2;
  chain.Set(settings);
  const Sound turning = Through(Tone(1000, 2));
  EXPECT_NEAR(Db(Rms(turning, 0.505, 0.515) / Rms(turning, 1.005, 1.015)), 0, 1) << "after a turn it is back";
  EXPECT_GT(Db(Rms(turning, 0.5, 1) / Rms(turning, 0.999, 1.004)), 3);
}

TEST_F(EffectChainTest, SwapExchangesTheSidesBitForBit) {
  Settings settings;
  settings.swap = true;
  Through(settings, Silence(0.1));
  EXPECT_EQ(Through(Tone(440, 0.1, 0.5, 0.125)), Tone(440, 0.1, 0.125, 0.5));
}

TEST_F(EffectChainTest, RotateSwingsTheMiddleFromSideToSideWithoutLosingPower) {
  Settings settings;
  settings.rotate = {.on = true, .hertz = 1, .depth = 1};
  const Sound heard = Through(settings, Tone(1000, 2));
  EXPECT_LT(Db(Rms(heard, 1.24, 1.26, 0)), -40) << "a quarter on, all of it is on the right";
  EXPECT_LT(Db(Rms(heard, 1.74, 1.76, 1)), -40) << "three quarters on, on the left";
  for (double from = 0.1; from < 1.9; from += 0.1) {
    EXPECT_NEAR(std::hypot(Rms(heard, from, from + 0.1, 0), Rms(heard, from, from + 0.1, 1)), 0.25, 0.001);
    double together = 0;
    for (auto i = static_cast<std::size_t>(2 * from * kHertz);
         i < static_cast<std::size_t>(2 * (from + 0.1) * kHertz); i += 2) {
      together += static_cast<double>(heard[i]) * static_cast<double>(heard[i + 1]);
    }
    EXPECT_GT(together, -1e-3) << "never against itself";
  }
}

TEST_F(EffectChainTest, SilenceStaysSilentUnderAllOfThem) {
  Settings settings;
  for (const Named& one : kAll) one.on(settings);
  EXPECT_EQ(Through(settings, Silence(1)), Silence(1));
}

TEST_F(EffectChainTest, WhatEchoesRingsOutWhenItIsSwitchedOffAndTakesNothingNew) {
  for (const char* name : {"echo", "echo3", "reverb"}) {
    Settings settings;
    std::find_if(std::begin(kAll), std::end(kAll), [&](const Named& one) {
      return one.name == std::string_view(name);
    })->on(settings);
    Through(settings, Tone(440, 1));
    const Sound heard = Through(Settings{}, Silence(0.3));
    EXPECT_GT(Rms(heard, 0.02, 0.1), 0.01) << name;
    EXPECT_TRUE(chain.Rings());
    Through(Silence(8));
    EXPECT_FALSE(chain.Rings()) << name;
  }
}

struct Sweep {
  const char* name;
  std::function<void(Settings&, float)> move;
  float loudest;  ///< of what goes in
};
/// A hand that throws a control from one end to the other in 50 ms, or switches it.
const Sweep kSweeps[] = {{"filter",
                          [](Settings& s, float at) {
                            s.filter = {2 * at - 1, 0.71F};
                          },
                          1.5F},
                         {"filter Q",
                          [](Settings& s, float at) {
                            s.filter = {-0.6F, 0.7F + 3.3F * at};
                          },
                          4},
                         {"low pass",
                          [](Settings& s, float at) {
                            s.low_pass = {true, 20 * std::pow(1000.0F, at), 2};
                          },
                          3},
                         {"low pass Q",
                          [](Settings& s, float at) {
                            s.low_pass = {true, 300, 0.5F + 9.5F * at};
                          },
                          10},
                         {"low pass switch",
                          [](Settings& s, float at) {
                            s.low_pass = {at > 0.5F, 150, 0.71F};
                          },
                          1.5F},
                         {"flanger wet",
                          [](Settings& s, float at) {
                            s.flanger = {true, 0.25F, at};
                          },
                          3},
                         {"flanger speed",
                          [](Settings& s, float at) {
                            s.flanger = {true, 0.02F + 5 * at, 0.5F};
                          },
                          3},
                         {"flanger switch",
                          [](Settings& s, float at) {
                            s.flanger = {at > 0.5F, 0.25F, 0.5F};
                          },
                          3},
                         {"echo level",
                          [](Settings& s, float at) {
                            s.echo = {true, at, 0.03F};
                          },
                          6},
                         {"echo time",
                          [](Settings& s, float at) {
                            s.echo = {true, 0.5F, 0.01F + 2 * at};
                          },
                          3},
                         {"echo switch",
                          [](Settings& s, float at) {
                            s.echo = {at > 0.5F, 0.7F, 0.05F};
                          },
                          4},
                         {"echo3",
                          [](Settings& s, float at) {
                            s.echo3 = {true, 1 - at, at, 0.01F + at};
                          },
                          3},
                         {"reverb",
                          [](Settings& s, float at) {
                            s.reverb = {true, at, 0.2F + 7.8F * at};
                          },
                          6},
                         {"swap", [](Settings& s, float at) { s.swap = at > 0.5F; }, 2},
                         {"rotate",
                          [](Settings& s, float at) {
                            s.rotate = {true, 0.05F + 2 * at, at};
                          },
                          1.5F},
                         {"rotate switch",
                          [](Settings& s, float at) {
                            s.rotate = {at > 0.5F, 2, 1};
                          },
                          1.5F}};

TEST_F(EffectChainTest, NoControlMakesAStepOfItsOwn) {
  constexpr double kTone = 200;
  const float own = Bend(Tone(kTone, 0.1));
  for (const Sweep& sweep : kSweeps) {
    Sound heard;
    Settings settings;
    const Sound tone = Tone(kTone, 1.5, 0.25, 0.05);
    const auto step = static_cast<std::size_t>(2 * kHertz / 100);
    for (std::size_t at = 0; at < tone.size(); at += step) {
      const auto part = static_cast<int>(at / step) % 15;  // there, back, and a rest of 50 ms
      sweep.move(settings, part < 5    ? static_cast<float>(part) / 4
                           : part < 10 ? static_cast<float>(9 - part) / 4
                                       : 0);
      const Sound some = Through(settings, Sound(tone.begin() + static_cast<std::ptrdiff_t>(at),
                                                 tone.begin() + static_cast<std::ptrdiff_t>(at + step)));
      heard.insert(heard.end(), some.begin(), some.end());
    }
    EXPECT_LT(Bend(heard), sweep.loudest * own + 0.0015F) << sweep.name;
    Through(Settings{}, Silence(20));
  }
}

}  // namespace
}  // namespace engine::testing
