// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <chrono>
#include <functional>
#include <future>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "benchmarks/Bench.h"
#include "engine/SoundEngine.h"
#include "platform/audio/PulseDevices.h"
#include "platform/audio/testing/MonitorRecorder.h"
#include "platform/audio/testing/SoundServer.h"
#include "platform/codec/FfmpegDecoderFactory.h"
#include "platform/codec/testing/MediaMaker.h"
#include "platform/stretch/LibraryStretcherFactory.h"
#include "support/Executor.h"

namespace bench {
namespace {

using platform::audio::testing::MonitorRecorder;
using platform::audio::testing::SoundServer;
using platform::codec::testing::MediaMaker;
using platform::codec::testing::Seconds;
using platform::codec::testing::Tone;
using std::chrono::milliseconds;

constexpr int kTrials = 40;
constexpr double kQuiet = 0.05;  ///< level of the tone's first half; the second is twice as loud

/// A deck on a real sound server's output that leads nowhere, and an ear at its monitor.
class HeardDeck {
 public:
  explicit HeardDeck(const std::string& path) {
    std::promise<void> ready;
    engine_.Prepare(path, [&](const support::Result<void>&) { ready.set_value(); });
    ready.get_future().wait();
    engine_.BASS_SetConfig(decks::kConfigUpdatePeriod, 20);
    engine_.BASS_SetConfig(decks::kConfigBuffer, 60);
    engine_.BASS_Init(1, 44100, 0);
    engine_.BASS_SetDevice(1);
    const auto decoder = engine_.BASS_StreamCreateFile(false, path, 0, 0, decks::kStreamDecode);
    stream_ = engine_.BASS_FX_TempoCreate(decoder, decks::kTempoFreeSource);
    for (int i = 0; i < 5; ++i) engine_.BASS_FX_DSP_Set(stream_, decks::kPeakingEffect, 0);
    engine_.BASS_ChannelPlay(stream_, false);
  }
  void Volume(int volume) { engine_.BASS_ChannelSetAttributes(stream_, -1, volume, -101); }
  void Gain(float gain) {
    engine_.BASS_FX_DSP_SetParameters(stream_, decks::kPeakingEffect, {4, 44100, 2.5F, 0, 1000, gain});
  }
  void Seek(double seconds) {
    engine_.BASS_ChannelSetPosition(stream_, {4 * static_cast<std::int64_t>(seconds * 44100)});
  }
  [[nodiscard]] double Lag() { return 1000 * engine_.Heard(stream_).lag; }

  /// ms from the command until the sound is on the other side of the threshold, for each trial; on and off
  /// in turn, from off.
  std::vector<double> Trials(const std::function<void(bool on)>& command, double threshold) {
    const MonitorRecorder ear(server_.Address(), "hall", 2);
    std::this_thread::sleep_for(milliseconds(300));
    std::vector<double> times;
    for (int i = 0; i < kTrials; ++i) {
      const bool on = i % 2 == 0;
      const auto begin = std::chrono::steady_clock::now();
      command(on);
      while (Louder(ear, threshold) != on && std::chrono::steady_clock::now() - begin < milliseconds(900)) {
        std::this_thread::sleep_for(std::chrono::microseconds(500));
      }
      const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - begin;
      times.push_back(took.count());
      lags_.push_back(Lag());
      std::this_thread::sleep_for(milliseconds(120 + 7 * i % 20));
    }
    return times;
  }
  [[nodiscard]] const std::vector<double>& Lags() const { return lags_; }

 private:
  static bool Louder(const MonitorRecorder& ear, double threshold) {
    const auto samples = ear.Channel(0);
    const std::size_t count = std::min<std::size_t>(samples.size(), 90);  // two waves of the tone
    const auto last = samples.end() - static_cast<std::ptrdiff_t>(count);
    return std::any_of(last, samples.end(), [&](std::int16_t s) { return s > threshold * 32768; });
  }

  SoundServer server_{{{"hall", "Hall"}}};
  support::SteadyClock clock_;
  platform::audio::PulseDevices outputs_{server_.Address()};
  platform::codec::FfmpegDecoderFactory decoders_;
  platform::stretch::LibraryStretcherFactory stretchers_;
  support::ThreadPool workers_{2};
  engine::SoundEngine engine_{{outputs_, decoders_, stretchers_, workers_, clock_},
                              engine::SoundEngine::Feeding::OwnThread};
  decks::StreamHandle stream_ = 0;
  std::vector<double> lags_;
};

}  // namespace

std::vector<Figure> MeasureEar() {
  const MediaMaker media;
  const std::string path =
      media.Write("steps.wav", Tone(Seconds(120), {1000, kQuiet}) + Tone(Seconds(120), {1000, 2 * kQuiet}));
  HeardDeck deck(path);
  std::this_thread::sleep_for(milliseconds(500));
  std::vector<Figure> figures;
  const auto add = [&](const std::string& name, const std::vector<double>& times) {
    const double device = Median(deck.Lags()) + 20;
    figures.push_back({name + " to ear, p50, beside device latency and one period", "ms",
                       Percentile(times, 0.5), device, ""});
    figures.push_back({name + " to ear, p99", "ms", Percentile(times, 0.99), device, ""});
  };
  add("volume", deck.Trials([&](bool on) { deck.Volume(on ? 100 : 40); }, 0.75 * kQuiet));
  deck.Volume(100);
  add("equaliser", deck.Trials([&](bool on) { deck.Gain(on ? 12.0F : 0.0F); }, 1.5 * kQuiet));
  deck.Gain(0);
  add("seek", deck.Trials([&](bool on) { deck.Seek(on ? 130 : 10); }, 1.5 * kQuiet));
  figures[0].aim = figures[2].aim = "ratio at most 1";
  return figures;
}

}  // namespace bench
