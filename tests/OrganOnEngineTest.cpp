// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
// The light organ of the whole workstation on the real engine, its boards against the sound of a file.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "app/Workstation.h"
#include "catalogue/testing/FakeTagReader.h"
#include "engine/SoundEngine.h"
#include "engine/VirtualOutputs.h"
#include "engine/testing/SoundStage.h"
#include "lightorgan/testing/RecordingBoards.h"
#include "platform/codec/FfmpegDecoderFactory.h"
#include "platform/codec/testing/MediaMaker.h"
#include "platform/stretch/LibraryStretcherFactory.h"
#include "support/testing/ManualExecutor.h"
#include "support/testing/MemoryFiles.h"
#include "support/testing/MemorySettings.h"

namespace {

using namespace std::chrono_literals;
using lightorgan::LightOrgan;
using platform::codec::testing::Clicks;
using platform::codec::testing::MediaMaker;
using platform::codec::testing::Noise;
using platform::codec::testing::Silence;
using platform::codec::testing::Sound;
using platform::codec::testing::Sweep;

class OrganOnEngine : public testing::Test {
 protected:
  OrganOnEngine() {
    outputs_.BeforeBlock([this] {
      workers_.RunAll();
      engine_.Pump();
    });
    settings_.Set(support::kApplication, "Setup", "UseK8000", "True");
    station_.StartUp();
    Run(100ms);
  }
  ~OrganOnEngine() override { station_.ShutDown(); }

  void Play(const Sound& sound, int mode_button) {
    catalogue::track_table table(catalogue::TrackColumns());
    const std::string path = media_.Write("a.wav", sound);
    table.AddRow(std::vector<std::string_view>{"", "", "", path});
    station_.LoadDeck(1, table, 1);
    station_.Organ().Ask([mode_button](LightOrgan& organ) { organ.cmdK8000(mode_button); });
    Run(200ms);
    station_.Play(1);
  }
  void Run(std::chrono::milliseconds time) {
    for (auto at = 0ms; at < time; at += 10ms) {
      outputs_.Advance(10ms);
      workers_.RunAll();
      station_.Tick();
      Note();
    }
  }
  /// Counts what goes on.
  void Note() {
    now_ += 1;
    for (std::size_t i = 0; i < lit_.size(); ++i) {
      if (boards_.lit[i] && !lit_[i]) rises_[i].push_back(now_);
      lit_[i] = boards_.lit[i];
    }
  }

  MediaMaker media_;
  engine::VirtualTime time_;
  engine::VirtualOutputs outputs_{time_, {engine::testing::StereoOutput("main", true)}};
  platform::codec::FfmpegDecoderFactory decoders_;
  platform::stretch::LibraryStretcherFactory stretchers_;
  support::testing::ManualExecutor workers_;
  engine::SoundEngine engine_{{.outputs = outputs_,
                               .decoders = decoders_,
                               .stretchers = stretchers_,
                               .workers = workers_,
                               .clock = time_,
                               .memory = nullptr,
                               .make_silent = nullptr,
                               .thread_started = nullptr},
                              engine::SoundEngine::Feeding::ByHand};
  catalogue::testing::FakeTagReader tags_;
  support::testing::MemorySettings settings_;
  support::testing::MemoryFiles files_;
  lightorgan::testing::RecordingBoards boards_;
  app::Workstation station_{{.engine = engine_,
                             .sound = engine_,
                             .tags = tags_,
                             .settings = settings_,
                             .files = files_,
                             .workers = workers_,
                             .clock = time_,
                             .boards = &boards_},
                            support::ProgramFolder("/no/such/folder"),
                            app::Workstation::Conducting::ByHand};
  int now_ = 0;  ///< in ticks
  std::array<bool, 8> lit_{};
  std::array<std::vector<int>, 8> rises_;
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
    station_.Stop(1);
    Run(100ms);
  }
}

}  // namespace
