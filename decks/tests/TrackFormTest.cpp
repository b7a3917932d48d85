// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "decks/FormFinder.h"
#include "decks/KeyFinder.h"

namespace decks {
namespace {

constexpr double kFormRate = 22'050;
using Tones = std::vector<float>;

double Noise(unsigned& dice) {
  dice = dice * 1664525 + 1013904223;
  return static_cast<double>(dice >> 8) / (1 << 23) - 1;
}

/// A held tone with some overtones. note: as MIDI counts.
void Play(Tones& sound, double from, double seconds, double note, double level) {
  const double hertz = 440 * std::exp2((note - 69) / 12);
  const auto first = static_cast<std::size_t>(from * kFormRate);
  const auto count = static_cast<std::size_t>(seconds * kFormRate);
  for (std::size_t i = 0; i < count && first + i < sound.size(); ++i) {
    const double time = static_cast<double>(i) / kFormRate;
    double value = 0;
    for (const int part : {1, 2, 3, 4})
      value += std::sin(2 * std::numbers::pi * hertz * part * time) / (part * part);
    sound[first + i] += static_cast<float>(level * value * std::exp(-time));
  }
}

void Strike(Tones& sound, double from, double level, unsigned& dice) {
  const auto first = static_cast<std::size_t>(from * kFormRate);
  for (std::size_t i = 0; i < 2500 && first + i < sound.size(); ++i) {
    const double time = static_cast<double>(i) / kFormRate;
    sound[first + i] += static_cast<float>(level * Noise(dice) * std::exp(-40 * time));
  }
}

/// Four chords of the key, a bar each at 120, twice.
Tones Song(const music::MusicalKey& key, double cents, double drums) {
  Tones sound(static_cast<std::size_t>(16 * kFormRate));
  unsigned dice = 7;
  const std::array<int, 7> scale =
      key.minor ? std::array{0, 2, 3, 5, 7, 8, 10} : std::array{0, 2, 4, 5, 7, 9, 11};
  const std::array<int, 4> chords{0, 3, 4, 0};
  for (int bar = 0; bar < 8; ++bar) {
    for (int voice = 0; voice < 3; ++voice) {
      const auto degree = static_cast<std::size_t>(chords[static_cast<std::size_t>(bar % 4)] + 2 * voice);
      const int note = 48 + key.tonic + scale[degree % 7] + 12 * static_cast<int>(degree / 7);
      Play(sound, bar * 2.0, 1.95, note + cents / 100, 0.1);
    }
    Play(sound, bar * 2.0, 1.95,
         36 + key.tonic + scale[static_cast<std::size_t>(chords[static_cast<std::size_t>(bar % 4)])] +
             cents / 100,
         0.2);
    for (int half = 0; drums > 0 && half < 8; ++half) Strike(sound, bar * 2 + half * 0.25, drums, dice);
  }
  return sound;
}

std::optional<FoundKey> KeyOf(std::span<const float> sound) {
  KeyFinder finder(kFormRate);
  for (; !sound.empty(); sound = sound.subspan(std::min<std::size_t>(30'001, sound.size())))
    finder.Add(sound.first(std::min<std::size_t>(30'001, sound.size())));
  return finder.Finish();
}

TEST(KeyFinder, HearsTheKeyWithAndWithoutDrumsAndOutOfTune) {
  for (int number = 0; number < music::kMusicalKeys; number += 3) {
    const auto key = *music::KeyOfNumber(number);
    const double cents = number % 9 == 0 ? 0 : number % 9 == 3 ? 35 : -35;
    const auto found = KeyOf(Song(key, cents, number % 2 == 0 ? 0 : 0.4));
    ASSERT_TRUE(found) << NameOf(key);
    EXPECT_EQ(NameOf(found->key), NameOf(key)) << cents;
    EXPECT_GT(found->confidence, 0.1);
  }
}

/// Each syllable glides and has a pitch of its own, as speech does.
Tones Speech() {
  Tones sound(static_cast<std::size_t>(30 * kFormRate));
  unsigned dice = 3;
  double phase = 0;
  for (std::size_t i = 0; i < sound.size(); ++i) {
    const double time = static_cast<double>(i) / kFormRate;
    const double hertz =
        120 + 25 * std::sin(2.1 * time) + 30 * std::sin(7.7 * time) + 12 * std::sin(0.37 * time);
    phase += 2 * std::numbers::pi * hertz / kFormRate;
    double value = 0.1 * Noise(dice);
    for (int part = 1; part < 20; ++part) value += std::sin(part * phase) / part;
    sound[i] = static_cast<float>(0.1 * value * std::max(0.0, std::sin(2 * std::numbers::pi * 3.1 * time)));
  }
  return sound;
}

TEST(KeyFinder, ClaimsNothingOfWhatHasNoKey) {
  Tones silence(static_cast<std::size_t>(30 * kFormRate)), noise = silence, sine = silence, two = silence;
  unsigned dice = 5;
  for (float& sample : noise) sample = static_cast<float>(0.5 * Noise(dice));
  Play(sine, 0, 30, 69, 0.5);
  Play(two, 0, 30, 60, 0.3);
  Play(two, 0, 30, 67, 0.3);
  EXPECT_FALSE(KeyOf(silence));
  EXPECT_FALSE(KeyOf(noise));
  EXPECT_FALSE(KeyOf(sine));
  EXPECT_FALSE(KeyOf(two));
  EXPECT_FALSE(KeyOf(Speech()));
  EXPECT_FALSE(
      KeyOf(std::span<const float>(Song({0, false}, 0, 0)).first(static_cast<std::size_t>(kFormRate))));
  EXPECT_FALSE(KeyOf({}));
}

/// Beats at 120 whose bands follow from the part that they lie in: 16 bars of intro, drop, break, drop and
/// 8 of outro. first: the beat that begins a bar.
struct Parts {
  explicit Parts(int first) {
    unsigned dice = 11;
    const std::array<std::pair<double, double>, 5> levels{
        {{-6, 0}, {0, 0}, {-9, -3}, {0, 0}, {-6, -1}}};  // of the low bands and of the others
    for (int beat = 0; beat < 4 * 72 + first; ++beat) {
      const int bar = (beat + 4 - first) / 4 - 1;
      const auto part = static_cast<std::size_t>(std::clamp(bar / 16, 0, 4));
      const int chord = (bar + 8) % 4;
      BeatSound sound{};
      for (std::size_t band = 0; band < kFormBands; ++band) {
        const double level = band < 5 ? levels[part].first : levels[part].second;
        const double tone = band % 4 == static_cast<std::size_t>(chord) ? 0.6 : 0;
        sound[band] = static_cast<float>(level + tone + 0.1 * Noise(dice));
      }
      beats.push_back(sound);
    }
    grid = music::BeatGrid::Even({120}, 1, music::Seconds(0.1),
                                 music::Seconds(0.2 + 0.5 * static_cast<double>(beats.size())));
  }
  std::vector<BeatSound> beats;
  music::BeatGrid grid;
};

TEST(FormFinder, HearsBarsAndPartsWhereverTheGridBegins) {
  for (const int first : {0, 1, 2, 3}) {
    const Parts parts(first);
    const auto bars = FindBars(parts.beats);
    ASSERT_TRUE(bars);
    EXPECT_EQ(bars->beat, first);
    EXPECT_GE(bars->confidence, kSureOfBars);
    const music::Seconds length(400);
    const auto sections = FindSections(parts.beats, first, parts.grid, length);
    std::string kinds;
    for (const music::Section& section : sections) kinds += std::string(NameOf(section.kind)) + " ";
    EXPECT_EQ(kinds, "intro drop break drop outro ");
    ASSERT_EQ(sections.size(), 5U);
    EXPECT_EQ(sections.front().start.count(), 0);
    EXPECT_EQ(sections.back().end, length);
    for (std::size_t i = 1; i < sections.size(); ++i) {
      EXPECT_EQ(sections[i].start, sections[i - 1].end);
      EXPECT_NEAR(sections[i].start.count(), 0.1 + 0.5 * (first + 64.0 * static_cast<double>(i)), 1e-6);
    }
  }
}

TEST(FormFinder, DoesNotClaimBarsForASingleChange) {
  std::vector<BeatSound> beats(200);
  for (std::size_t i = 98; i < beats.size(); ++i) beats[i].fill(3);
  EXPECT_LT(FindBars(beats)->confidence, kSureOfBars);
}

TEST(FormFinder, ClaimsNothingOfBeatsThatAreAllAlike) {
  std::vector<BeatSound> alike(400);
  unsigned dice = 2;
  for (BeatSound& beat : alike) {
    for (float& band : beat) band = static_cast<float>(0.3 * Noise(dice));
  }
  const auto bars = FindBars(alike);
  EXPECT_TRUE(!bars || bars->confidence < kSureOfBars);
  EXPECT_FALSE(FindBars({}));
  EXPECT_TRUE(FindSections({}, 3, {}, music::Seconds(1)).empty());
}

TEST(FormFinder, HearsEachBeatInItsOwnPlace) {
  Tones sound(static_cast<std::size_t>(10 * kFormRate));
  for (int beat = 1; beat < 18; beat += 4) Play(sound, 0.25 + beat * 0.5, 0.2, 69, 0.5);
  FormFinder finder(kFormRate);
  finder.Add(sound);
  const auto beats =
      finder.BeatsOn(music::BeatGrid::Even({120}, 1, music::Seconds(0.25), music::Seconds(10)));
  ASSERT_GE(beats.size(), 18U);
  const auto loudest = [&](std::size_t beat) {
    return *std::max_element(beats[beat].begin(), beats[beat].end());
  };
  for (std::size_t beat = 1; beat < 18; beat += 4) {
    EXPECT_GT(loudest(beat), loudest((beat + 2) % 4) + 5) << beat;
  }
  EXPECT_TRUE(finder.BeatsOn({}).empty());
}

}  // namespace
}  // namespace decks
