// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <chrono>
#include <cmath>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "benchmarks/Bench.h"
#include "engine/HallMicrophone.h"
#include "engine/testing/SpokenHall.h"
#include "platform/audio/PulseDevices.h"
#include "platform/audio/PulseInputs.h"
#include "platform/audio/testing/SoundServer.h"

namespace bench {
namespace {

using namespace std::chrono_literals;
using engine::testing::SpokenHall;
using platform::audio::testing::SoundServer;

constexpr int kSpokenRate = 44100;
constexpr int kSpokenSeconds = 20;
constexpr double kSpokenMusic = 5000;  // Hz

/// From the moment at which the gate opens until the music stands at its depth, on a virtual clock.
double DuckingAttack() {
  SpokenHall hall;
  hall.wish.duck = {true, 12, 50ms, 400ms, 600ms};
  hall.PlayMusic(kSpokenMusic);
  hall.Switch(true);
  hall.inputs.Hear([](double at) { return engine::testing::Syllables(at, 2, 100); });
  hall.Advance(2s);
  std::optional<double> opened;
  for (int step = 0; step < 500; ++step) {
    hall.Advance(1ms);
    if (!opened && hall.Now().gate_open) opened = hall.Seconds();
    if (hall.Now().ducking > 11.99F) return 1000 * (hall.Seconds() - opened.value_or(hall.Seconds()));
  }
  return -1;
}

/// As the microphone tells it, with devices of 5 ms, on a virtual clock.
double VirtualLatency() {
  SpokenHall hall;
  hall.inputs.SetClock(200);
  hall.inputs.Hear([](double at) { return engine::testing::Syllables(at, 0, 1000); });
  hall.Switch(true);
  double longest = 0;
  for (int second = 0; second < 120; ++second) {
    hall.Advance(1s);
    if (second > 2)
      longest = std::max(longest, std::chrono::duration<double, std::milli>(hall.Now().latency).count());
  }
  return longest;
}

/// As the microphone tells it on a real sound server of its own.
std::vector<double> ServerLatencies() {
  SoundServer server({{"hall", "Hall"}, {"talker", "Talker"}});
  if (!server.AddMicrophone("desk", "talker")) return {};
  support::SteadyClock clock;
  platform::audio::PulseDevices outputs(server.Address());
  platform::audio::PulseInputs inputs(server.Address());
  engine::testing::FakeDecoders files;
  engine::testing::FakeStretchers stretchers;
  support::ThreadPool workers(2);
  engine::SoundEngine sound({outputs, files, stretchers, workers, clock},
                            engine::SoundEngine::Feeding::OwnThread);
  sound.BASS_SetConfig(decks::kConfigUpdatePeriod, 20);
  sound.BASS_SetConfig(decks::kConfigBuffer, 60);
  sound.BASS_Init(1, kSpokenRate, 0);
  const auto microphone = std::make_shared<engine::HallMicrophone>(inputs, sound.Devices(), workers, clock);
  decks::MicrophoneWish wish;
  wish.device = "desk";
  wish.on = true;
  wish.hall = {{1, 0}};
  microphone->Ask(wish);
  std::vector<double> latencies;
  for (int tick = 0; tick < 1000; ++tick) {
    std::this_thread::sleep_for(10ms);
    microphone->Watch();
    const auto now = microphone->Now();
    if (tick > 300 && now.latency > 0us) {
      latencies.push_back(std::chrono::duration<double, std::milli>(now.latency).count());
    }
  }
  microphone->Close();
  return latencies;
}

/// Per cent of a core for the voice and the music's gain on one output.
double VoiceCpu() {
  const auto run = [](bool on) {
    SpokenHall hall;
    hall.inputs.Hear([](double at) { return std::fmod(at, 0.01) < 0.005 ? 0.2F : -0.2F; });
    hall.PlayMusic();
    hall.Switch(on);
    hall.Advance(1s);
    const double begin = ThreadCpuSeconds();
    hall.Advance(std::chrono::seconds(kSpokenSeconds));
    return ThreadCpuSeconds() - begin;
  };
  return 100 * (run(true) - run(false)) / kSpokenSeconds;
}

}  // namespace

std::vector<Figure> MeasureMicrophone() {
  const std::vector<double> server = ServerLatencies();
  std::vector<Figure> figures = {
      {"microphone to ear, devices of 5 ms 200 ppm apart, longest of two minutes",
       "ms",
       VirtualLatency(),
       {},
       "at most 25"},
      {"music down by 12 dB after the gate has opened, attack 50 ms",
       "ms",
       DuckingAttack(),
       {},
       "at most 60"},
      {"voice and ducking, CPU of an output with its microphone", "% of a core", VoiceCpu(), {}, ""},
  };
  if (!server.empty()) {
    figures.push_back({"microphone to ear, real sound server, p50", "ms", Percentile(server, 0.5), {}, ""});
    figures.push_back({"microphone to ear, real sound server, p99", "ms", Percentile(server, 0.99), {}, ""});
  }
  return figures;
}

}  // namespace bench
