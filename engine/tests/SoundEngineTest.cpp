// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/SoundEngine.h"

#include "decks/testing/EngineContract.h"
#include "engine/testing/SoundStage.h"

namespace decks::testing {
namespace {

struct Real {
  Real() {
    stage.outputs.SetBlocks({441});
    stage.outputs.SetLatency(5ms);
    stage.outputs.SetBroken("other", true);
  }
  AudioEngine& Calls() { return *stage.engine; }
  SoundControl& Control() { return *stage.engine; }
  void Advance(support::Duration time) { stage.Advance(time); }
  void AddFile(const std::string& path, const ToneFile& file) {
    stage.files.Add(path, {.format = {file.sample_rate, file.channels},
                           .frames = file.frames,
                           .estimate = file.frames,
                           .sample = [file](auto frame, int c) { return SampleOf(file, frame, c); }});
  }
  [[nodiscard]] bool Sounds(const char* output, std::size_t channel, std::size_t channels) {
    const std::vector<float> given = stage.Channel(output, channel, channels);
    const auto newest = given.end() - std::min<std::ptrdiff_t>(100, std::ssize(given));
    return std::any_of(newest, given.end(), [](float sample) { return sample != 0; });
  }
  SoundingAt Where(StreamHandle /*stream*/) {
    if (Sounds("main", 0, 2)) return {1, 0};
    int pair = 0;
    int pairs = 0;
    for (int i = 1; i <= 4; ++i) {
      if (!Sounds("wide", static_cast<std::size_t>(2 * i - 1), 8)) continue;
      pair = i;
      ++pairs;
    }
    return {pairs == 0 ? -1 : 2, pairs == 4 ? 0 : pair};
  }
  engine::testing::SoundStage stage{{engine::testing::StereoOutput("main", true),
                                     engine::testing::EightChannelOutput("wide"),
                                     engine::testing::StereoOutput("other")}};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Real, EveryEngine, Real);

}  // namespace
}  // namespace decks::testing
