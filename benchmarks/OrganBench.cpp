// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include "benchmarks/Bench.h"
#include "engine/VirtualOutputs.h"
#include "lightorgan/LightOrgan.h"
#include "lightorgan/testing/FakeMusic.h"
#include "platform/analysis/EburLoudnessMeters.h"
#include "platform/analysis/QmBeatTrackers.h"
#include "platform/codec/testing/MediaMaker.h"
#include "support/Settings.h"
#include "support/testing/MemorySettings.h"
#include "tests/testing/VirtualEvening.h"

namespace bench {
namespace {

using namespace std::chrono_literals;
using Wall = std::chrono::steady_clock;
using lightorgan::LightOrgan;

constexpr int kOrganRuns = 7;
constexpr auto kOrganLatency = 40ms;  ///< of the virtual output
constexpr auto kOrganPlayed = 300s;

/// Boards that note when all outputs of the first one were lit.
class FlashedBoards final : public lightorgan::IoBoards {
 public:
  explicit FlashedBoards(const support::Clock& clock) : clock_(clock) {}
  std::vector<double> flashes;  ///< in seconds on the clock

  void OpenDevice(std::function<void(std::int32_t)> done) override { done(0); }
  void CloseDevices() override {}
  void SetDigitalChannel(int, int) override {}
  void ClearDigitalChannel(int, int) override {}
  void OutputAllDigital(int, std::uint8_t channels) override {
    if (channels == 0xFF)
      flashes.push_back(std::chrono::duration<double>(clock_.Now().time_since_epoch()).count());
  }
  void OutputAnalogChannel(int, int, std::int32_t) override {}
  void ClearAllDigital(int) override {}
  void ClearAllAnalog(int) override {}

 private:
  const support::Clock& clock_;
};

Figure SpectrumTick() {
  engine::VirtualTime time;
  FlashedBoards boards(time);
  lightorgan::testing::FakeMusic music;
  lightorgan::testing::FakeBanks banks;
  support::testing::MemorySettings settings;
  settings.Set(support::kApplication, "Setup", "IoBoardSize", "32");
  settings.Set(support::kApplication, "Setup", "UseK8000", "True");
  support::Settings door(settings, support::ProgramFolder("/dj"));
  LightOrgan organ({boards, music, music, banks, door, time});
  organ.Start([] {});
  organ.cmdK8000(0);
  organ.ScrollerIO(lightorgan::kFastest);
  std::mt19937 random(1);
  std::vector<lightorgan::Bins> songs(64);
  for (auto& bins : songs) {
    for (std::size_t i = 1; i < bins.size(); ++i) {
      bins[i] = float(random() % 1000) / 5000 / std::sqrt(float(i));
    }
  }
  constexpr int kTicks = 20'000;
  std::vector<double> nanoseconds;
  for (int run = 0; run < kOrganRuns; ++run) {
    double spent = 0;
    for (int tick = 0; tick < kTicks; ++tick) {
      time.MoveTo(time.Now() + 20ms);
      music.mixed = songs[static_cast<std::size_t>(tick) % songs.size()];
      const auto begin = Wall::now();
      organ.Tick();
      spent += std::chrono::duration<double, std::nano>(Wall::now() - begin).count();
    }
    nanoseconds.push_back(spent / kTicks);
  }
  return {"light organ: one tick, 128 bins to 16 outputs", "ns", Median(nanoseconds), {}, ""};
}

Figure LateBank() {
  std::vector<lightorgan::Bank> banks;
  for (int number = 1; number <= 10'000; ++number) {
    banks.push_back({number, std::vector<lightorgan::BankStep>(8, {{0, 1, 0, 1, 0, 0, 1, 1}, {}})});
  }
  const std::string text = lightorgan::BankText(banks);
  std::vector<double> taken;
  for (int run = 0; run < kOrganRuns; ++run) {
    const auto begin = Wall::now();
    const auto table = lightorgan::LoadBank(text, lightorgan::Side::Io, 5'000, lightorgan::IoBoardSize::One);
    taken.push_back(std::chrono::duration<double, std::milli>(Wall::now() - begin).count());
    if (table.Rows() != 9) std::abort();
  }
  return {"light organ: bank 5,000 of a file of 10,000", "ms", Median(taken), {}, ""};
}

/// Lamps and clicks of an evening with analysis.
class OrganEvening {
 public:
  OrganEvening() {
    evening_.Settings().Set(support::kApplication, "Setup", "UseK8000", "True");
    evening_.Begin([this](app::Ports& ports) {
      ports.analysis = {&meters_, &trackers_};
      ports.boards = &boards_;
    });
    Station().Organ().Ask(
        [](LightOrgan& organ) { organ.cmdK8000(static_cast<int>(lightorgan::IoMode::Beat)); });
  }
  ~OrganEvening() { evening_.End(); }

  void Play(const std::string& path) {
    evening_.Load(1, path);
    for (int i = 0; i < 100 && Station().View().decks[0].grid == nullptr; ++i) evening_.Run(100ms);
    if (Station().View().decks[0].grid == nullptr) std::abort();
    Station().Decks()[1].SetKeyLock(decks::KeyLock::Off);
    Station().Decks()[1].Do(&app::DeckStation::Play);
  }
  void Run(std::chrono::milliseconds time) { evening_.Run(time); }
  void SetTempo(float percent) { Station().Decks()[1].SetTempo(percent); }

  /// From each click that was heard to the flash nearest to it, in ms.
  [[nodiscard]] std::vector<double> Distances() const {
    std::vector<double> distances;
    for (const double click : evening_.Onsets()) {
      double nearest = 1e9;
      for (const double flash : boards_.flashes) nearest = std::min(nearest, std::abs(flash - click) * 1000);
      distances.push_back(nearest);
    }
    return distances;
  }

 private:
  [[nodiscard]] app::Workstation& Station() { return evening_.Station(); }

  platform::analysis::EburLoudnessMeters meters_;
  platform::analysis::QmBeatTrackers trackers_;
  tests::testing::VirtualEvening evening_{kOrganLatency};
  FlashedBoards boards_{evening_.Clock()};
};

void MeasureLightAgainstSound(std::vector<Figure>& figures) {
  const platform::codec::testing::MediaMaker media;
  const std::string path = media.Write("clicks.wav", platform::codec::testing::Clicks(400s, 124));
  for (const bool changing : {false, true}) {
    OrganEvening evening;
    evening.Play(path);
    for (auto at = 0s; at < kOrganPlayed; at += 5s) {
      if (changing) evening.SetTempo(float(6 * std::sin(double(at.count()) / 20)));
      evening.Run(5s);
    }
    std::vector<double> distances = evening.Distances();
    distances.pop_back();  // perhaps rendered, but not heard yet
    double mean = 0;
    for (const double distance : distances) mean += distance / double(distances.size());
    const std::string what =
        std::string("light against sound, ") + (changing ? "tempo moved every 5 s" : "constant tempo") + ": ";
    figures.push_back({what + "clicks", "", double(distances.size()), {}, ""});
    figures.push_back({what + "mean", "ms", mean, {}, "below 5"});
    figures.push_back({what + "p99", "ms", Percentile(distances, 0.99), {}, "below 23"});
  }
}

}  // namespace

std::vector<Figure> MeasureOrgan() {
  std::vector<Figure> figures{SpectrumTick(), LateBank()};
  MeasureLightAgainstSound(figures);
  return figures;
}

}  // namespace bench
