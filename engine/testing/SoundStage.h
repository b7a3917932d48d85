// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "engine/SoundEngine.h"
#include "engine/VirtualOutputs.h"
#include "engine/testing/FakeDecoders.h"
#include "engine/testing/FakeStretchers.h"
#include "support/testing/ManualExecutor.h"

namespace engine::testing {

using namespace std::chrono_literals;

inline constexpr int kRate = 44100;

[[nodiscard]] OutputDeviceInfo StereoOutput(const std::string& id, bool is_default = false);
/// Front, rear, centre, LFE, side.
[[nodiscard]] OutputDeviceInfo EightChannelOutput(const std::string& id);

/// A whole engine on a virtual clock with made-up files, and a recording of every output.
///
/// Output 1 is "main", 2 is "phones", 3 is "other"; all are stereo unless others are given. Threads: one.
class SoundStage {
 public:
  explicit SoundStage(std::vector<OutputDeviceInfo> outputs = {
                          StereoOutput("main", true), StereoOutput("phones"), StereoOutput("other")});

  /// A playable stream of a file, ready to sound; 0 when that fails.
  decks::StreamHandle Load(const std::string& path, int device = 1, std::uint32_t speaker = 0);
  void Advance(support::Duration by) { outputs.Advance(by); }
  /// Everything that an output was given since it was first opened, interleaved.
  [[nodiscard]] const std::vector<float>& Given(const std::string& id) { return given_[id]; }
  /// One channel of it.
  [[nodiscard]] std::vector<float> Channel(const std::string& id, std::size_t channel,
                                           std::size_t channels = 2);
  /// The newest sample of one channel; 0 when the output was given nothing.
  [[nodiscard]] float Last(const std::string& id, std::size_t channel, std::size_t channels = 2);
  /// The sample that is heard now from the first channel of an output that was opened at time 0 and not lost.
  [[nodiscard]] float AtLoudspeaker(const std::string& id, std::size_t channels = 2);
  void StopFeeding() { feeding_ = false; }
  void GoOnFeeding() { feeding_ = true; }
  void StopWorkers() { working_ = false; }
  /// From a quarter of a second later on the feeder reckons with being kept waiting by other programs.
  void MakeBusy() { busy_ = true; }

  static constexpr support::Duration kLatency = 60ms;
  VirtualTime time;
  VirtualOutputs outputs;
  FakeDecoders files;
  FakeStretchers stretchers;
  support::testing::ManualExecutor workers;
  support::testing::ManualExecutor looking;  ///< for outputs
  std::unique_ptr<SoundEngine> engine;

 private:
  std::map<std::string, std::vector<float>> given_;
  bool feeding_ = true;
  bool working_ = true;
  bool busy_ = false;
};

/// The largest |second difference|: small for any smooth sound, large for a step in it.
[[nodiscard]] float Roughness(const std::vector<float>& samples);
/// That of a tone.
[[nodiscard]] float ToneRoughness(double hertz, double level, int sample_rate = 44100);
/// Index of the first sample that is not 0, or the size.
[[nodiscard]] std::size_t FirstSound(const std::vector<float>& samples);

}  // namespace engine::testing
