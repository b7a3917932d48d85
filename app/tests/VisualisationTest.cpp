// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <cmath>
#include <numbers>

#include "app/WorkstationView.h"
#include "app/sound/BuiltInVisualisation.h"
#include "app/tests/Evening.h"

namespace app {
namespace {

/// A tone that was heard on deck 1.
HeardSound ToneOf(double hertz, double level) {
  HeardSound sound{.from = HeardFrom::Deck1};
  const auto at = [&](std::size_t i) {
    return static_cast<float>(level * std::sin(2 * std::numbers::pi * hertz / 44100 * double(i)));
  };
  for (std::size_t i = 0; i < sound.samples.size(); ++i) sound.samples[i] = at(i);
  sound.spectrum = music::SpectrumOf(std::span(sound.samples).last<music::kSpectrumFrames>());
  return sound;
}

class VisualisationContract : public ::testing::TestWithParam<const char*> {
 protected:
  VisualisationContract() {
    fake_.SetNames({"One", "Two"});
    if (std::string(GetParam()) == "BuiltIn") port_ = &built_in_;
  }
  testing::FakeVisualisation fake_;
  BuiltInVisualisation built_in_;
  Visualisation* port_ = &fake_;
};
INSTANTIATE_TEST_SUITE_P(Both, VisualisationContract, ::testing::Values("Fake", "BuiltIn"));

TEST_P(VisualisationContract, NamesAreThereWithoutAFolderAndTheSameEachTime) {
  const auto names = port_->BASS_VIS_FindPlugins("/no/such/folder");
  port_->BASS_VIS_SetConfig(4, 0);
  EXPECT_EQ(names.size(), 2U);
  EXPECT_EQ(port_->BASS_VIS_FindPlugins("/no/such/folder"), names);
}

TEST_P(VisualisationContract, EachNameHasAPictureOfOneSizeWithinItsBoundsAndOthersHaveNone) {
  for (const std::string& name : port_->BASS_VIS_FindPlugins("/no/such/folder")) {
    const Picture silent = port_->Show(name, {});
    EXPECT_NE(silent.kind, Picture::Kind::Empty);
    for (const HeardSound& sound : {ToneOf(40, 9), ToneOf(1000, 0.5), ToneOf(21000, 1)}) {
      const Picture picture = port_->Show(name, sound);
      EXPECT_EQ(picture.values.size(), silent.values.size());
      const auto [least, most] = std::minmax_element(picture.values.begin(), picture.values.end());
      EXPECT_GE(*least, picture.kind == Picture::Kind::Bars ? 0 : -1);
      EXPECT_LE(*most, 1);
    }
  }
  EXPECT_EQ(port_->Show("Nobody", ToneOf(1000, 1)).kind, Picture::Kind::Empty);
}

TEST(BuiltInVisualisation, AHigherToneLiftsABarFurtherToTheRightAndALouderOneLiftsItHigher) {
  BuiltInVisualisation visualisation;
  const auto bars = [&](double hertz, double level) {
    return visualisation.Show(BuiltInVisualisation::kSpectrum, ToneOf(hertz, level)).values;
  };
  std::ptrdiff_t before = -1;
  for (const double hertz : {200, 500, 1000, 2000, 5000, 12000, 19000}) {
    const auto heights = bars(hertz, 0.5);
    const auto highest = std::max_element(heights.begin(), heights.end()) - heights.begin();
    EXPECT_GT(highest, before) << hertz;
    before = highest;
  }
  EXPECT_NEAR(bars(1033.6, 1)[5], 1, 0.01);         // full scale
  EXPECT_NEAR(bars(1033.6, 0.0316)[5], 0.5, 0.01);  // half of the 60 dB
  EXPECT_EQ(bars(1033.6, 0)[5], 0);
}

TEST(BuiltInVisualisation, AWaveBeginsWhereItRisesThroughZero) {
  BuiltInVisualisation visualisation;
  for (const double hertz : {100, 440, 3000}) {
    const auto line = visualisation.Show(BuiltInVisualisation::kWave, ToneOf(hertz, 0.5)).values;
    EXPECT_GE(line[0], 0);
    EXPECT_LT(line[0], 0.5 * 2 * std::numbers::pi * hertz / 44100);
    EXPECT_GT(line[1], line[0]);
  }
}

class LoudestSourceTest : public testing::Evening {
 protected:
  LoudestSourceTest() {
    engine_.AddFile("loud.mp3", {.seconds = 100, .left_peak = 30000});
    engine_.AddFile("soft.mp3", {.seconds = 100, .left_peak = 8000});
    engine_.AddFile("silent.mp3", {.seconds = 100, .left_peak = 0, .right_peak = 0});
  }
  void PlayOn(int deck, const std::string& file) {
    Load(deck, file);
    Play(deck);
  }
  [[nodiscard]] HeardFrom Heard(std::chrono::milliseconds after = std::chrono::seconds(5)) {
    for (auto time = after; time.count() > 0; time -= std::chrono::milliseconds(10)) {
      Advance(std::chrono::milliseconds(10));
    }
    return station_->View().sound.from;
  }
};

TEST_F(LoudestSourceTest, IsTheLoudestThatPlaysBehindItsFader) {
  StartUp();
  EXPECT_EQ(Heard(), HeardFrom::Nothing);
  PlayOn(1, "silent.mp3");
  EXPECT_EQ(Heard(), HeardFrom::Nothing);
  PlayOn(2, "soft.mp3");
  EXPECT_EQ(Heard(), HeardFrom::Deck2);
  PlayOn(1, "loud.mp3");
  EXPECT_EQ(Heard(), HeardFrom::Deck1);
  station_->Decks()[1].Adjust(&DeckStation::SetVolume, 10);
  EXPECT_EQ(Heard(), HeardFrom::Deck2);
  station_->Decks()[2].Do(&DeckStation::Pause);
  EXPECT_EQ(Heard(std::chrono::milliseconds(20)), HeardFrom::Deck1);
  station_->Decks()[1].Adjust(&DeckStation::SetVolume, 0);
  EXPECT_EQ(Heard(std::chrono::milliseconds(20)), HeardFrom::Nothing);
  EXPECT_EQ(station_->View().sound.spectrum, music::Spectrum{});
}

TEST_F(LoudestSourceTest, StaysWithADeckUntilAnotherOneIsClearlyLouder) {
  StartUp();
  for (const int deck : {1, 2}) PlayOn(deck, "loud.mp3");
  station_->Decks()[1].Adjust(&DeckStation::SetVolume, 80);
  EXPECT_EQ(Heard(), HeardFrom::Deck1);
  station_->Decks()[1].Adjust(&DeckStation::SetVolume, 60);
  EXPECT_EQ(Heard(), HeardFrom::Deck2);
  station_->Decks()[1].Adjust(&DeckStation::SetVolume, 100);
  EXPECT_EQ(Heard(), HeardFrom::Deck2);
}

TEST_F(LoudestSourceTest, IsNeverTheDeckOfTheHeadPhones) {
  StartUp();
  PlayOn(4, "loud.mp3");
  EXPECT_EQ(Heard(), HeardFrom::Nothing);
}

TEST_F(LoudestSourceTest, ItsThousandHertzReachTheView) {
  StartUp();
  PlayOn(2, "loud.mp3");
  static_cast<void>(Heard());
  const auto& spectrum = station_->View().sound.spectrum;
  EXPECT_EQ(std::max_element(spectrum.begin(), spectrum.end()) - spectrum.begin(), 6);
  const auto& samples = station_->View().sound.samples;
  EXPECT_NEAR(*std::max_element(samples.begin(), samples.end()), (30'000 + 8192) / 2 / 32'768.0, 0.01)
      << "both sides together";
}

}  // namespace
}  // namespace app
