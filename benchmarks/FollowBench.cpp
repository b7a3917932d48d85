// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>
#include <vector>

#include "benchmarks/Bench.h"
#include "decks/TempoSliders.h"
#include "decks/clsBassPlayer.h"
#include "engine/SoundEngine.h"
#include "engine/VirtualOutputs.h"
#include "engine/testing/FakeDecoders.h"
#include "platform/stretch/LibraryStretcherFactory.h"
#include "support/testing/ManualExecutor.h"

namespace bench {
namespace {

using namespace std::chrono_literals;

constexpr double kMillionths = 200;
constexpr int kDeviceRate = 44100;
constexpr std::int64_t kFrameBytes = 4;

/// A deck with the hall on one virtual output and the head-phones on another, whose clock is too fast.
class HallAndPhones {
 public:
  HallAndPhones(support::Duration hall, support::Duration phones) {
    outputs_.SetLatency("hall", hall);
    outputs_.SetLatency("phones", phones);
    outputs_.SetClock("phones", kMillionths);
    outputs_.BeforeBlock([this] {
      workers_.RunOne();
      engine_.Pump();
    });
    files_.Add("track.mp3", engine::testing::ToneFile(std::int64_t{40} * 60 * kDeviceRate, 200));
    for (const int device : {1, 2}) engine_.BASS_Init(device, kDeviceRate, 0);
    deck_.device(1);
    deck_.PreDevice(2);
    deck_.PreSpeaker(1);
    deck_.Filename("track.mp3");
    deck_.OpenFile();
    outputs_.Advance(1s);
  }
  ~HallAndPhones() { engine_.BASS_Free(); }

  [[nodiscard]] decks::clsBassPlayer& Deck() { return deck_; }
  void Advance(support::Duration by) { outputs_.Advance(by); }
  void SetTempo(double percent) {
    decks::TempoSliders sliders;
    sliders.percent = percent;
    for (const auto stream : {deck_.STRM(), deck_.PreSTRM()}) {
      decks::SetTempo(engine_, stream, sliders, 1, kDeviceRate);
    }
  }
  /// The largest distance within that time, in ms, looked at every 20 ms.
  double Furthest(support::Duration within) {
    double furthest = 0;
    for (support::Duration gone{}; gone < within; gone += 20ms) {
      outputs_.Advance(20ms);
      const auto hall = engine_.Heard(deck_.STRM()).frame.value;
      const auto phones = engine_.Heard(deck_.PreSTRM()).frame.value;
      furthest = std::max(furthest, std::abs(1000.0 * static_cast<double>(phones - hall) / kDeviceRate));
    }
    return furthest;
  }

 private:
  static engine::OutputDeviceInfo Stereo(const char* id) {
    return {id, id, {engine::Speaker::FrontLeft, engine::Speaker::FrontRight}, false};
  }
  engine::VirtualTime time_;
  engine::VirtualOutputs outputs_{time_, {Stereo("hall"), Stereo("phones")}};
  engine::testing::FakeDecoders files_;
  platform::stretch::LibraryStretcherFactory stretchers_;
  support::testing::ManualExecutor workers_;
  engine::SoundEngine engine_{{outputs_, files_, stretchers_, workers_, time_},
                              engine::SoundEngine::Feeding::ByHand};
  decks::MasterControls controls_;
  decks::clsBassPlayer deck_{engine_, controls_};
};

/// The largest distances after what a hand does to the place, and to the tempo.
std::pair<double, double> AfterActs(support::Duration hall, support::Duration phones) {
  HallAndPhones on(hall, phones);
  double place = 0;
  const auto settled = [&] {
    on.Advance(500ms);
    place = std::max(place, on.Furthest(2s));
  };
  on.Deck().Play();
  settled();
  on.Deck().StreamTime({600 * kDeviceRate * kFrameBytes});
  settled();
  on.Deck().PausePlay();
  on.Advance(1s);
  on.Deck().ResumePlay();
  settled();
  on.Deck().ClosePrelisten();
  on.Advance(1s);
  on.Deck().OpenPrelisten();
  on.Deck().PlayPrelisten();
  settled();
  double tempo = 0;
  for (const double percent : {4, -4, 0}) {
    on.SetTempo(percent);
    on.Advance(3s);
    tempo = std::max(tempo, on.Furthest(2s));
  }
  return {place, tempo};
}

}  // namespace

std::vector<Figure> MeasureFollowing() {
  double place = 0, tempo = 0;
  for (const auto& [hall, phones] : {std::pair{60ms, 180ms}, {180ms, 60ms}, {20ms, 300ms}, {300ms, 20ms}}) {
    const auto after = AfterActs(hall, phones);
    place = std::max(place, after.first);
    tempo = std::max(tempo, after.second);
  }
  HallAndPhones on(60ms, 180ms);
  on.Deck().Play();
  on.Advance(500ms);
  const double long_run = on.Furthest(30min);
  return {
      {"hall and head-phones, 20 to 300 ms of latency, clocks 200 ppm apart: distance within 30 minutes",
       "ms",
       long_run,
       {},
       "under 1"},
      {"the same, from half a second after play, seek, resume, late opening on", "ms", place, {}, "under 1"},
      {"the same, from three seconds after a change of tempo on", "ms", tempo, {}, "under 1"},
  };
}

}  // namespace bench
