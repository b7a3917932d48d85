// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "music/MusicalKey.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "music/SpectrumFeed.h"
#include "music/TrackForm.h"

namespace music {
namespace {

std::string Told(std::string_view text) {
  const auto key = ReadKey(text);
  return key ? NameOf(*key) : "";
}

TEST(MusicalKey, IsReadHoweverItIsSpelled) {
  const std::pair<const char*, const char*> table[] = {{"8A", "Am"},
                                                       {"08a", "Am"},
                                                       {"1m", "Am"},
                                                       {"8B", "C"},
                                                       {"1d", "C"},
                                                       {"12d", "F"},
                                                       {"2A", "Ebm"},
                                                       {"Am", "Am"},
                                                       {"A min", "Am"},
                                                       {"A minor", "Am"},
                                                       {"a", "Am"},
                                                       {"a-moll", "Am"},
                                                       {"A", "A"},
                                                       {"AMaj", "A"},
                                                       {"C dur", "C"},
                                                       {"G#m/Abm", "G#m"},
                                                       {"Abm", "G#m"},
                                                       {"Gb", "F#"},
                                                       {"F\u266F", "F#"},
                                                       {"F\uFF03m", "F#m"},
                                                       {"B\u266D minor", "Bbm"},
                                                       {"Bb", "Bb"},
                                                       {" Cb ", "B"},
                                                       {"F sharp minor", "F#m"},
                                                       {"8A - 128", "Am"},
                                                       {"A\xE2\x99\xAD\xE2", "Ab"}};
  for (const auto& [text, name] : table) EXPECT_EQ(Told(text), name) << text;
  for (const char* none :
       {"", "o", "H", "0A", "13A", "8C", "8", "8AB", "Always", "A1", "Amen", "m", "120", "#"})
    EXPECT_EQ(Told(none), "") << none;
}

TEST(MusicalKey, StandsOnBothWheelsAndComesBackFromThem) {
  const std::tuple<const char*, const char*, const char*> table[] = {
      {"C", "8B", "1d"},   {"Am", "8A", "1m"}, {"F#m", "11A", "4m"},
      {"Ebm", "2A", "7m"}, {"F", "7B", "12d"}, {"E", "12B", "5d"}};
  for (const auto& [name, camelot, open] : table) {
    EXPECT_EQ(WheelNameOf(*ReadKey(name), KeyNotation::Camelot), camelot);
    EXPECT_EQ(WheelNameOf(*ReadKey(name), KeyNotation::OpenKey), open);
  }
  for (int number = 0; number < kMusicalKeys; ++number) {
    const MusicalKey key = *KeyOfNumber(number);
    EXPECT_EQ(NumberOf(key), number);
    EXPECT_EQ(ReadKey(NameOf(key)), key);
    EXPECT_EQ(ReadKey(WheelNameOf(key, KeyNotation::Camelot)), key);
    EXPECT_EQ(ReadKey(WheelNameOf(key, KeyNotation::OpenKey)), key);
    int fitting = 0;
    for (int other = 0; other < kMusicalKeys; ++other) fitting += Fits(key, *KeyOfNumber(other)) ? 1 : 0;
    EXPECT_EQ(fitting, 4) << NameOf(key);
  }
  EXPECT_FALSE(KeyOfNumber(24) || KeyOfNumber(-1));
}

TEST(MusicalKey, IsShiftedTheShortWayToTheOther) {
  const std::tuple<const char*, const char*, int> table[] = {{"Am", "Am", 0}, {"Am", "C", 0}, {"Am", "Bm", 2},
                                                             {"C", "Am", 0},  {"G", "C", 5},  {"Bb", "C", 2},
                                                             {"C", "F#", 6},  {"Am", "E", 4}, {"D", "C", -2}};
  for (const auto& [from, to, semitones] : table) {
    const MusicalKey own = *ReadKey(from), other = *ReadKey(to);
    EXPECT_EQ(SemitonesTo(own, other), semitones) << from << to;
    EXPECT_TRUE(Fits(Shifted(own, semitones), other)) << from << to;
  }
}

TEST(TrackForm, CountsBarsFromAnyOfTheirBeatsAlsoBeforeTheGrid) {
  const BeatGrid grid = BeatGrid::Even({120}, 1, Seconds(0.25), Seconds(10));
  for (const double bar : {0.75, 2.75, 8.7, -1.25}) {
    EXPECT_EQ(FirstBarBeat(grid, Seconds(bar)), 1) << bar;
  }
  const auto downbeats = DownbeatsOf(grid, Seconds(4.75));
  ASSERT_EQ(downbeats.size(), 5U);
  EXPECT_NEAR(downbeats[1].count(), 2.75, 1e-9);
  EXPECT_TRUE(DownbeatsOf({}, Seconds(1)).empty());
}

TEST(SpectrumFeed, GivesEachFrameItsOwnTones) {
  SpectrumFeed feed(256, 128);
  std::vector<float> samples(128 * 6 + 1);  // frames 0 to 3 hold bin 10, then there is silence
  for (std::size_t i = 0; i < 128 * 5; ++i)
    samples[i] = static_cast<float>(std::sin(2 * std::numbers::pi * 10 * static_cast<double>(i) / 256));
  std::vector<float> bins, others;
  const auto note = [&](std::span<const float> power) {
    bins.push_back(power[10]);
    others.push_back(power[40]);
  };
  feed.Add(std::span(samples).first(100), note);
  feed.Add(std::span(samples).subspan(100), note);
  ASSERT_EQ(bins.size(), 4U);
  for (std::size_t i = 0; i < 4; ++i) {
    EXPECT_NEAR(bins[i], 64 * 64, 1) << i;
    EXPECT_LT(others[i], 1e-3F) << i;
  }
}

}  // namespace
}  // namespace music
