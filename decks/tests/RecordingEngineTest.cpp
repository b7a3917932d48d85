// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "decks/testing/RecordingEngine.h"

#include "decks/testing/EngineContract.h"
#include "support/testing/FakeClock.h"

namespace decks::testing {
namespace {

struct Recorded {
  Recorded() {
    for (const char* name : {"Main", "Wide", "Broken"}) engine.AddDevice(name);
    engine.BreakDevice(3);
  }
  AudioEngine& Calls() { return engine; }
  SoundControl& Control() { return engine; }
  void Advance(support::Duration time) { clock.Advance(time); }
  void AddFile(const std::string& path, const ToneFile& file) {
    FakeFile made{static_cast<double>(file.frames) / file.sample_rate, file.sample_rate, file.channels,
                  file.left, file.right};
    for (int i = 0; i < std::min(file.frames, 1000) * file.channels; ++i) {
      made.samples.push_back(SampleOf(file, i / file.channels, i % file.channels));
    }
    engine.AddFile(path, made);
  }
  SoundingAt Where(StreamHandle stream) {
    return {engine.DeviceOf(stream).value_or(-1), static_cast<int>(engine.SpeakerOf(stream) >> 24)};
  }
  support::testing::FakeClock clock;
  RecordingEngine engine{clock};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Recorded, EveryEngine, Recorded);

}  // namespace
}  // namespace decks::testing
