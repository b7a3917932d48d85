// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "engine/HallMicrophone.h"
#include "engine/testing/SoundStage.h"
#include "engine/testing/VirtualInputs.h"

namespace engine::testing {

/// A voice of syllables, each 120 ms long with 80 ms after it, from the time on, 150 Hz and what lies above.
[[nodiscard]] float Syllables(double seconds, double from, double to, double level = 0.3);

/// A stage whose outputs hold what they are told, with a microphone that speaks to output 1.
/// Threads: one.
class SpokenHall {
 public:
  explicit SpokenHall(std::vector<InputDeviceInfo> microphones = {Microphone("desk", true)},
                      std::vector<OutputDeviceInfo> outputs = {
                          StereoOutput("main", true), StereoOutput("phones"), StereoOutput("other")});
  ~SpokenHall() { microphone->Close(); }
  SpokenHall(const SpokenHall&) = delete;
  SpokenHall& operator=(const SpokenHall&) = delete;

  /// A tone of one minute on output 1.
  decks::StreamHandle PlayMusic(double hertz = 5000, double level = 0.25);
  void Ask() { microphone->Ask(wish); }
  void Switch(bool on) {
    wish.on = on;
    Ask();
  }
  void Advance(support::Duration by) { stage.Advance(by); }
  [[nodiscard]] decks::MicrophoneState Now() { return microphone->Now(); }
  [[nodiscard]] double Seconds() const {
    return std::chrono::duration<double>(stage.time.Now().time_since_epoch()).count();
  }
  /// Nothing is done to the voice, nor to the music.
  void SpeakPlainly();

  SoundStage stage;
  VirtualInputs inputs;
  support::testing::ManualExecutor workers;
  std::shared_ptr<HallMicrophone> microphone;  // with its own jobs
  decks::MicrophoneWish wish;
};

/// The level of a tone in a stretch of samples, 1 is full scale.
[[nodiscard]] double ToneLevel(const std::vector<float>& samples, std::size_t from, std::size_t count,
                               double hertz);

}  // namespace engine::testing
