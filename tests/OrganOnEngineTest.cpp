// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
// The light organ of the whole workstation on the real engine, its boards against the sound of a file or a
// song.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <fstream>
#include <string>
#include <vector>

#include "karaoke/testing/MidiBytes.h"
#include "lightorgan/testing/RecordingBoards.h"
#include "platform/codec/testing/MediaMaker.h"
#include "platform/midi/FluidSynthesisers.h"
#include "support/testing/TemporaryFolder.h"
#include "tests/testing/VirtualEvening.h"

namespace {

using namespace std::chrono_literals;
using lightorgan::LightOrgan;
using platform::codec::testing::Clicks;
using platform::codec::testing::MediaMaker;
using platform::codec::testing::Noise;
using platform::codec::testing::Silence;
using platform::codec::testing::Sound;
using platform::codec::testing::Sweep;
using tests::testing::VirtualEvening;

class OrganOnEngine : public testing::Test {
 protected:
  OrganOnEngine() {
    evening_.Settings().Set(support::kApplication, "Setup", "UseK8000", "True");
    evening_.Begin([this](app::Ports& ports) {
      ports.boards = &boards_;
      ports.synthesisers = &synthesisers_;
    });
  }
  ~OrganOnEngine() override { evening_.End(); }

  void Choose(int mode_button) {
    evening_.Station().Organ().Ask([mode_button](LightOrgan& organ) { organ.cmdK8000(mode_button); });
  }
  void Play(const Sound& sound, int mode_button) {
    evening_.Load(1, media_.Write("a.wav", sound));
    Choose(mode_button);
    Run(200ms);
    evening_.Station().Decks()[1].Do(&app::DeckStation::Play);
  }
  void Sing(const std::string& song_bytes, int mode_button) {
    const auto song = songs_.Path() / "a.kar";
    std::ofstream(song, std::ios::binary) << song_bytes;
    Choose(mode_button);
    evening_.Station().Songs().Play({song.string(), "", ""});
  }
  /// Counts what goes on.
  void Run(std::chrono::milliseconds time) {
    evening_.Run(time, [this] {
      now_ += 1;
      for (std::size_t i = 0; i < lit_.size(); ++i) {
        if (boards_.lit[i] && !lit_[i]) {
          rises_[i].push_back(now_);
          if (i == 0) flashes_.push_back(evening_.Now());
        }
        lit_[i] = boards_.lit[i];
      }
    });
  }

  MediaMaker media_;
  support::testing::TemporaryFolder songs_;
  platform::midi::FluidSynthesisers synthesisers_;
  lightorgan::testing::RecordingBoards boards_;
  VirtualEvening evening_{60ms};
  int now_ = 0;  ///< in ticks
  std::array<bool, 8> lit_{};
  std::array<std::vector<int>, 8> rises_;
  std::vector<double> flashes_;  ///< of the first output, in seconds on the clock
};

TEST_F(OrganOnEngine, AClickTrackWithoutAGridGivesExactlyItsBeatsAndSilenceNone) {
  Play(Clicks(10s, 120) + Silence(3s), 5);
  Run(13s);
  ASSERT_EQ(rises_[0].size(), 20U);
  for (std::size_t i = 1; i < rises_[0].size(); ++i) EXPECT_NEAR(rises_[0][i] - rises_[0][i - 1], 50, 2);
  EXPECT_TRUE(boards_.lit.none());
}

TEST_F(OrganOnEngine, ASweepLightsTheOutputsInTheirOrder) {
  Play(Sweep(8s, 120, 20'000, 0.5), 0);
  Run(8s);
  for (std::size_t i = 0; i < rises_.size(); ++i) ASSERT_FALSE(rises_[i].empty()) << "output " << i + 1;
  for (std::size_t i = 1; i < rises_.size(); ++i) EXPECT_GE(rises_[i][0], rises_[i - 1][0]) << i + 1;
  EXPECT_GT(rises_[7][0] - rises_[0][0], 400);
}

TEST_F(OrganOnEngine, SilenceEndsDarkWithoutFlicker) {
  Sound bursts;
  for (int burst = 0; burst < 8; ++burst) bursts += Noise(150ms, 0.3) + Silence(250ms);
  for (const int button : {0, 1, 2}) {
    for (auto& rises : rises_) rises.clear();
    Play(bursts + Silence(4s), button);
    Run(4s);
    EXPECT_GE(rises_[4].size(), 6U) << button;
    for (auto& rises : rises_) rises.clear();
    EXPECT_TRUE(boards_.lit.none()) << button;
    Run(2s);
    for (const auto& rises : rises_) EXPECT_TRUE(rises.empty()) << button;
    evening_.Station().Decks()[1].Do(&app::DeckStation::Stop);
    Run(100ms);
  }
}

/// A stick on every quarter note; the tempo is another one from the ninth on.
std::string Drums(int beats) {
  karaoke::testing::TrackBytes track = karaoke::testing::UsualHead();
  for (int i = 0; i < beats; ++i) {
    track.Tempo(i == 0 ? 480 : 380, i < 8 ? 500'000 : 400'000);
    track.Event(0, {0x99, 37, 127}).Event(100, {0x89, 37, 0});
  }
  return karaoke::testing::FileBytes({track.End(380)});
}

TEST_F(OrganOnEngine, AKaraokeSongFlashesTheLampsOnTheBeatsThatAreHeardAndLeavesThemDark) {
  Sing(Drums(20), 5);
  Run(4s);
  evening_.Station().Songs().SetTempo(10);
  Run(6s);
  const std::vector<double>& beats = evening_.Onsets();
  ASSERT_EQ(beats.size(), 20U);
  for (std::size_t i = 1; i < beats.size(); ++i) {  // the first one makes the song audible
    double nearest = 1;
    for (const double flash : flashes_) nearest = std::min(nearest, std::abs(flash - beats[i]));
    EXPECT_LT(nearest, 0.016) << "beat " << i;
  }
  EXPECT_LE(flashes_.size(), beats.size() + 1) << "the song ends on a beat";
  Run(4s);
  flashes_.clear();
  EXPECT_TRUE(boards_.lit.none());
  Run(5s);
  EXPECT_TRUE(flashes_.empty());
}

TEST_F(OrganOnEngine, AKaraokeSongIsInTheSpectrumUntilItIsPaused) {
  Sing(Drums(40), 0);
  Run(3s);
  std::size_t lamps = 0;
  for (const auto& rises : rises_) lamps = std::max(lamps, rises.size());
  EXPECT_GE(lamps, 3U);
  evening_.Station().Songs().Pause();
  Run(1s);
  EXPECT_TRUE(boards_.lit.none());
  EXPECT_EQ(evening_.Station().View().sound.from, app::HeardFrom::Nothing);
}

}  // namespace
