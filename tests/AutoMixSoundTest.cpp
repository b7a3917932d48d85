// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
// The automatic mixer on the real engine and decoders: what the room hears around a mix point.

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <string>
#include <vector>

#include "app/testing/AllParts.h"
#include "catalogue/testing/FakeTagReader.h"
#include "decks/testing/FakeFinders.h"
#include "engine/SoundEngine.h"
#include "engine/VirtualOutputs.h"
#include "engine/testing/SoundStage.h"
#include "platform/codec/FfmpegDecoderFactory.h"
#include "platform/codec/testing/MediaMaker.h"
#include "platform/stretch/LibraryStretcherFactory.h"
#include "support/testing/ManualExecutor.h"
#include "support/testing/MemoryFiles.h"
#include "support/testing/MemorySettings.h"

namespace {

using namespace std::chrono_literals;
using engine::testing::StereoOutput;
using platform::codec::testing::MediaMaker;
using platform::codec::testing::Silence;
using platform::codec::testing::Sound;
using platform::codec::testing::Tone;

constexpr double kRate = 44100;

/// A workstation whose output is written down; the first track sounds on the left, the second on the right.
class MixedEvening : public ::testing::Test {
 protected:
  MixedEvening() {
    outputs_.Listen("hall", [this](std::span<const float> block) {
      heard_.insert(heard_.end(), block.begin(), block.end());
    });
    outputs_.BeforeBlock([this] {
      workers_.RunAll();
      engine_.Pump();
      const support::TimePoint now = time_.Now();
      if (station_ == nullptr || now < next_tick_) return;
      next_tick_ = now + 10ms;
      station_->Tick();
    });
    settings_.Set(support::kApplication, "Settings", "Automix", "True");
    settings_.Set(support::kApplication, "Mixer", "MixTime", "2");
    Open();
  }
  /// Again, with settings that were changed.
  void Open() {
    if (station_ != nullptr) station_->ShutDown();
    app::Ports ports{engine_, engine_, tags_, settings_, files_, workers_, time_};
    ports.analysis = {&meters_, &trackers_};
    station_ = std::make_unique<app::Workstation>(
        ports, support::ProgramFolder(std::filesystem::path(::testing::TempDir()) / "no-mixed-evening"),
        app::Workstation::Conducting::ByHand);
    station_->StartUp();
    Go(500ms);
  }
  ~MixedEvening() override {
    station_->ShutDown();
    outputs_.BeforeBlock(nullptr);
  }
  void Go(support::Duration time) {
    outputs_.Advance(time);
    station_->PumpWindow();
    station_->Lists().Follow();
  }
  void PlayFirstAndList(const std::string& first, const std::string& second,
                        const std::string& end_mix_point) {
    catalogue::track_table table(catalogue::TrackColumns());
    table.AddRow(
        std::vector<std::string_view>{"", "first", "", first, "", "", "", "", "", "", "", "", end_mix_point});
    station_->Collections().Playlist(2).AddRow(std::vector<std::string_view>{"", "second", "", second});
    station_->Lists().Follow();
    station_->Decks()[1].Load(table, 1);
    Go(300ms);
    station_->Decks()[1].Do(&app::DeckStation::Play);
    Go(100ms);
  }
  /// The loudest of a stretch in seconds.
  [[nodiscard]] double Peak(std::size_t side, double from, double to) const {
    float peak = 0;
    const auto end = std::min(static_cast<std::size_t>(to * kRate), heard_.size() / 2);
    for (auto i = static_cast<std::size_t>(from * kRate); i < end; ++i) {
      peak = std::max(peak, std::abs(heard_[2 * i + side]));
    }
    return peak;
  }
  /// First and last second at which a side sounds.
  [[nodiscard]] double First(std::size_t side) const {
    std::size_t i = 0;
    while (2 * i < heard_.size() && std::abs(heard_[2 * i + side]) < kAudible) ++i;
    return static_cast<double>(i) / kRate;
  }
  [[nodiscard]] double Last(std::size_t side) const {
    std::size_t i = heard_.size() / 2;
    while (i > 0 && std::abs(heard_[2 * (i - 1) + side]) < kAudible) --i;
    return static_cast<double>(i) / kRate;
  }
  /// The sound on one side alone.
  static Sound On(std::size_t side, Sound sound) {
    for (std::size_t i = 1 - side; i < sound.samples.size(); i += 2) sound.samples[i] = 0;
    return sound;
  }

  static constexpr std::size_t kLeft = 0, kRight = 1;
  static constexpr float kAudible = 0.002F;
  MediaMaker media_;
  engine::VirtualTime time_;
  engine::VirtualOutputs outputs_{time_, {StereoOutput("hall", true), StereoOutput("garden")}};
  platform::codec::FfmpegDecoderFactory decoders_;
  platform::stretch::LibraryStretcherFactory stretchers_;
  support::testing::ManualExecutor workers_;
  engine::SoundEngine engine_{{outputs_, decoders_, stretchers_, workers_, time_},
                              engine::SoundEngine::Feeding::ByHand};
  catalogue::testing::FakeTagReader tags_;
  support::testing::MemorySettings settings_;
  support::testing::MemoryFiles files_;
  decks::testing::FakeLoudnessMeters meters_;
  decks::testing::FakeBeatTrackers trackers_;
  std::vector<float> heard_;
  support::TimePoint next_tick_{};
  std::unique_ptr<app::Workstation> station_;
};

TEST_F(MixedEvening, OneTrackBeginsWhereTheOtherOnesSoundEnds) {
  const std::string first = media_.Write("first.wav", On(kLeft, Tone(6s, {400, 0.4})) + Silence(3s));
  const std::string second = media_.Write("second.wav", Silence(1500ms) + On(kRight, Tone(4s, {2000, 0.4})));
  PlayFirstAndList(first, second, "");
  Go(12s);
  const double gap = First(kRight) - Last(kLeft);
  RecordProperty("gap_in_microseconds", static_cast<int>(gap * 1e6));
  EXPECT_NEAR(gap, 0, 0.001);
  EXPECT_NEAR(Peak(kRight, First(kRight), First(kRight) + 0.01), 0.4, 0.01) << "at full level from its start";
  EXPECT_NEAR(Last(kRight) - First(kRight), 4.0, 0.001) << "and whole";
}

TEST_F(MixedEvening, AnEarlierMixPointMakesThemOverlapWhileTheCrossfaderGoesOver) {
  const std::string first = media_.Write("first.wav", On(kLeft, Tone(9s, {400, 0.3})));
  const std::string second = media_.Write("second.wav", Silence(1s) + On(kRight, Tone(6s, {2000, 0.3})));
  PlayFirstAndList(first, second, "5.000");
  Go(13s);
  const double begin = First(kRight), end = Last(kLeft);
  EXPECT_NEAR(begin - First(kLeft), 5.0, 0.05) << "the fader's first step is its first sound";
  EXPECT_NEAR(end - begin, 2.0, 0.05);
  EXPECT_NEAR(Peak(kRight, begin + 0.99, begin + 1.01), 0.3, 0.02) << "in the middle both are full";
  EXPECT_NEAR(Peak(kLeft, begin + 0.99, begin + 1.01), 0.3, 0.02);
  EXPECT_LT(Peak(kLeft, end - 0.1, end), 0.05) << "and it leaves softly";
}

TEST_F(MixedEvening, AFadeIsNoStaircase) {
  settings_.Set(support::kApplication, "Mixer", "MixTime", "8");
  Open();
  const std::string first = media_.Write("first.wav", On(kLeft, Tone(14s, {2000, 0.4})));
  const std::string second = media_.Write("second.wav", Silence(1s) + On(kRight, Tone(12s, {2000, 0.4})));
  PlayFirstAndList(first, second, "5.000");
  Go(15s);
  constexpr std::size_t kWindow = 441;  // whole periods
  const double end = Last(kLeft), begin = First(kRight);
  ASSERT_NEAR(end - begin, 8, 0.1);
  const auto level = [&](std::size_t side, std::size_t window) {
    double sum = 0;
    for (std::size_t i = window * kWindow; i < (window + 1) * kWindow; ++i)
      sum += heard_[2 * i + side] * heard_[2 * i + side];
    return std::sqrt(sum / kWindow);
  };
  double steepest = 0;
  for (auto at = static_cast<std::size_t>((begin + 0.1) * 100);
       at < static_cast<std::size_t>((end - 0.1) * 100); ++at) {
    for (const std::size_t side : {kLeft, kRight})
      steepest = std::max(steepest, std::abs(level(side, at + 1) - level(side, at)));
  }
  EXPECT_LT(steepest, 0.0009) << "one percent of full level is 0.0028";
}

TEST_F(MixedEvening, AFileThatIsNoneDelaysNothing) {
  const std::string first = media_.Write("first.wav", On(kLeft, Tone(6s, {400, 0.4})));
  const std::string second = media_.Write("second.wav", On(kRight, Tone(4s, {2000, 0.4})));
  station_->Collections().Playlist(2).AddRow(
      std::vector<std::string_view>{"", "gone", "", "/no/such/file.mp3"});
  PlayFirstAndList(first, second, "");
  Go(9s);
  EXPECT_NEAR(First(kRight) - Last(kLeft), 0, 0.001);
}

/// A short tone on every beat.
Sound Clicks(std::chrono::milliseconds length, double bpm, std::chrono::milliseconds first) {
  Sound sound = Silence(length);
  const auto frames = static_cast<double>(sound.samples.size() / 2);
  for (double at = static_cast<double>(first.count()) / 1000; at * kRate < frames - 2000; at += 60 / bpm) {
    const auto begin = static_cast<std::size_t>(std::lround(at * kRate));
    for (std::size_t i = 0; i < 1500; ++i) {
      const double value = 9000 * std::sin(2 * 3.14159265 * 1000 * static_cast<double>(i) / kRate);
      for (const std::size_t side : {0U, 1U}) {
        sound.samples[2 * (begin + i) + side] = static_cast<std::int16_t>(value);
      }
    }
  }
  return sound;
}

struct Latencies {
  support::Duration hall, garden;
};

/// Deck 1 plays in the hall, deck 2 in the garden, each as late as its output is.
class MixedEveningOnTwoOutputs : public MixedEvening, public ::testing::WithParamInterface<Latencies> {
 protected:
  MixedEveningOnTwoOutputs() {
    outputs_.SetLatency("hall", GetParam().hall);
    outputs_.SetLatency("garden", GetParam().garden);
    outputs_.Listen("garden", [this](std::span<const float> block) {
      garden_.insert(garden_.end(), block.begin(), block.end());
    });
    settings_.Set(support::kApplication, "Preferences", "Outputs", "2");
    settings_.Set(support::kApplication, "Devices", "Device1", "1");
    settings_.Set(support::kApplication, "Devices", "Device2", "2");
    station_->ShutDown();
    heard_.clear();
    Open();
  }
  /// When the last of the hall's track and the first of the garden's are at the ear, in seconds.
  [[nodiscard]] double EndInTheHall() const { return Last(kLeft) + Seconds(GetParam().hall); }
  [[nodiscard]] double BeginningInTheGarden() {
    heard_.swap(garden_);
    const double first = First(kRight);
    heard_.swap(garden_);
    return first + Seconds(GetParam().garden);
  }
  static double Seconds(support::Duration time) { return std::chrono::duration<double>(time).count(); }

  std::vector<float> garden_;
};

TEST_P(MixedEveningOnTwoOutputs, OneTrackBeginsWhereTheOtherOnesSoundIsHeardToEnd) {
  const std::string first = media_.Write("first.wav", On(kLeft, Tone(6s, {400, 0.4})) + Silence(3s));
  const std::string second = media_.Write("second.wav", On(kRight, Tone(4s, {2000, 0.4})));
  PlayFirstAndList(first, second, "");
  Go(12s);
  EXPECT_NEAR(BeginningInTheGarden() - EndInTheHall(), 0, 0.001);
}

INSTANTIATE_TEST_SUITE_P(Latencies, MixedEveningOnTwoOutputs,
                         ::testing::Values(Latencies{60ms, 20ms}, Latencies{180ms, 20ms},
                                           Latencies{300ms, 60ms}, Latencies{20ms, 60ms},
                                           Latencies{20ms, 180ms}, Latencies{60ms, 300ms},
                                           Latencies{20ms, 500ms}),
                         [](const auto& outputs) {
                           return std::to_string(outputs.param.hall / 1ms) + "To" +
                                  std::to_string(outputs.param.garden / 1ms);
                         });

class BeatsMixedEvening : public MixedEvening {
 protected:
  /// Seconds at which something begins on a side after a tenth without.
  [[nodiscard]] std::vector<double> Beats(std::size_t side, double from, double to) const {
    std::vector<double> beats;
    double last = -1;
    const auto end = std::min(static_cast<std::size_t>(to * kRate), heard_.size() / 2);
    for (auto i = static_cast<std::size_t>(from * kRate); i < end; ++i) {
      if (std::abs(heard_[2 * i + side]) < 0.01F) continue;
      const double now = static_cast<double>(i) / kRate;
      if (now - last > 0.1) beats.push_back(now);
      last = now;
    }
    return beats;
  }
};

TEST_F(BeatsMixedEvening, TheBeatsOfBothLieOnEachOtherDuringTheFade) {
  settings_.Set(support::kApplication, "Settings", "AutoBPM", "True");
  settings_.Set(support::kApplication, "Mixer", "MixTime", "8");
  Open();
  const std::string first = media_.Write("first.wav", On(kLeft, Clicks(40s, 120, 300ms)));
  const std::string second = media_.Write("second.wav", On(kRight, Clicks(40s, 125, 170ms)));
  PlayFirstAndList(first, second, "20.100");
  Go(50s);
  const double begin = First(kRight), end = Last(kLeft);
  ASSERT_NEAR(end - begin, 8, 1);
  const auto left = Beats(kLeft, begin, end - 0.5), right = Beats(kRight, begin + 0.5, end - 0.5);
  ASSERT_GE(right.size(), 12U);
  double worst = 0;
  for (const double beat : right) {
    double nearest = 1;
    for (const double other : left) nearest = std::min(nearest, std::abs(beat - other));
    worst = std::max(worst, nearest);
  }
  RecordProperty("worst_in_microseconds", static_cast<int>(worst * 1e6));
  EXPECT_LT(worst, 0.010);
  const auto later = Beats(kRight, end + 12, end + 20);
  ASSERT_GE(later.size(), 10U);
  EXPECT_NEAR((later.back() - later.front()) / static_cast<double>(later.size() - 1), 60.0 / 125, 0.001)
      << "it has its own tempo again";
}

TEST_F(MixedEvening, ALoudTrackAndASoftOneMeetAtOneLevel) {
  settings_.Set(support::kApplication, "Settings", "AutoGain", "True");
  Open();
  const std::string first = media_.Write("first.wav", On(kLeft, Tone(12s, {400, 0.5})));
  const std::string second = media_.Write("second.wav", On(kRight, Tone(8s, {400, 0.5 / 2.818})));
  PlayFirstAndList(first, second, "8.000");
  Go(17s);
  const double begin = First(kRight), end = Last(kLeft);
  const double before = Peak(kLeft, begin - 1, begin - 0.1), after = Peak(kRight, end + 0.1, end + 1);
  EXPECT_NEAR(20 * std::log10(after / before), 0, 1) << before << " " << after;
}

}  // namespace
