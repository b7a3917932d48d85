// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/testing/SpokenHall.h"

#include <cmath>
#include <complex>
#include <numbers>
#include <utility>

namespace engine::testing {

float Syllables(double seconds, double from, double to, double level) {
  if (seconds < from || seconds >= to) return 0;
  const double into = std::fmod(seconds - from, 0.2);
  if (into > 0.12) return 0;
  const double swell = std::sin(std::numbers::pi * into / 0.12);
  const double phase = 2 * std::numbers::pi * 150 * seconds;
  return static_cast<float>(level * swell *
                            (std::sin(phase) + 0.5 * std::sin(3 * phase) + 0.25 * std::sin(5 * phase)));
}

SpokenHall::SpokenHall(std::vector<InputDeviceInfo> microphones, std::vector<OutputDeviceInfo> outputs)
    : stage(std::move(outputs)),
      inputs(stage.time, std::move(microphones)),
      microphone(std::make_shared<HallMicrophone>(inputs, stage.engine->Devices(), workers, stage.time)) {
  stage.outputs.SetLatency({});
  stage.outputs.BeforeBlock([this] {
    inputs.CatchUp();
    stage.engine->Pump();
    stage.workers.RunAll();
    stage.looking.RunAll();
    microphone->Watch();
    workers.RunAll();
  });
  stage.engine->BASS_Init(1, kRate, 0);
  wish.hall = {{1, 0}};
}

decks::StreamHandle SpokenHall::PlayMusic(double hertz, double level) {
  stage.files.Add("music.mp3", ToneFile(60 * kRate, hertz, level));
  const auto stream = stage.Load("music.mp3");
  stage.engine->BASS_ChannelPlay(stream, false);
  return stream;
}

void SpokenHall::SpeakPlainly() {
  wish.voice.low_cut = 0;
  wish.voice.gate = decks::GateMode::Off;
  wish.voice.compress = false;
  wish.duck.on = false;
}

double ToneLevel(const std::vector<float>& samples, std::size_t from, std::size_t count, double hertz) {
  std::complex<double> sum;
  for (std::size_t i = from; i < from + count && i < samples.size(); ++i) {
    sum += static_cast<double>(samples[i]) *
           std::polar(1.0, -2 * std::numbers::pi * hertz * static_cast<double>(i) / kRate);
  }
  return 2 * std::abs(sum) / static_cast<double>(count);
}

}  // namespace engine::testing
