// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/midi/FluidSynthesisers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <numbers>

#include "karaoke/SongSound.h"
#include "karaoke/testing/MidiBytes.h"

namespace platform::midi {
namespace {

constexpr int kRate = 44100;
using Samples = std::vector<float>;

double Level(const Samples& samples) {
  double sum = 0;
  for (const float sample : samples) sum += static_cast<double>(sample) * sample;
  return std::sqrt(sum / static_cast<double>(samples.size()));
}

/// How much of a frequency is in it.
double Share(const Samples& samples, double hertz) {
  double sine = 0, cosine = 0;
  for (std::size_t i = 0; i < samples.size(); ++i) {
    const double angle = 2 * std::numbers::pi * hertz * static_cast<double>(i) / kRate;
    sine += std::sin(angle) * samples[i];
    cosine += std::cos(angle) * samples[i];
  }
  return std::hypot(sine, cosine) / static_cast<double>(samples.size());
}

double Hertz(int key) {
  return 440 * std::exp2((key - 69) / 12.0);
}

class FluidSynthesisersTest : public ::testing::Test {
 protected:
  Samples Rendered(karaoke::Synthesiser& synthesiser, double seconds) {
    Samples left(static_cast<std::size_t>(seconds * kRate / 64) * 64), right(left.size());
    synthesiser.Render(left, right);
    return left;
  }
  FluidSynthesisers synthesisers_;
};

TEST_F(FluidSynthesisersTest, ANoteIsATone) {
  auto made = synthesisers_.Make("", kRate);
  ASSERT_TRUE(made) << made.Failure().text;
  karaoke::Synthesiser& synthesiser = *made.Value();
  synthesiser.Send({0xC0, 80, 0});  // a plain wave
  EXPECT_LT(Level(Rendered(synthesiser, 0.1)), 1e-4);
  synthesiser.Send({0x90, 69, 100});
  const Samples note = Rendered(synthesiser, 0.5);
  EXPECT_GT(Level(note), 0.005);
  EXPECT_GT(Share(note, Hertz(69)), 10 * Share(note, Hertz(70)));
  synthesiser.Send({0xE0, 0, 96});  // half way up of two semitones
  Rendered(synthesiser, 0.1);
  const Samples bent = Rendered(synthesiser, 0.5);
  EXPECT_GT(Share(bent, Hertz(70)), 10 * Share(bent, Hertz(69)));
  synthesiser.Send({0x80, 69, 0});
  Rendered(synthesiser, 3);
  EXPECT_LT(Level(Rendered(synthesiser, 0.1)), 1e-3);
  synthesiser.Send({0x90, 60, 100});
  Rendered(synthesiser, 0.2);
  synthesiser.Reset();
  EXPECT_LT(Level(Rendered(synthesiser, 0.1)), 1e-3);
}

TEST_F(FluidSynthesisersTest, NotesOfASongSoundWithinAMillisecondAndAHalf) {
  using karaoke::testing::TrackBytes;
  TrackBytes track = karaoke::testing::UsualHead();
  for (int i = 0; i < 20; ++i) track.Event(i == 0 ? 97 : 380, {0x99, 37, 127}).Event(100, {0x89, 37, 0});
  auto sound =
      karaoke::SongSound::Open(karaoke::testing::FileBytes({track.End(480)}), {}, synthesisers_, "", kRate);
  ASSERT_TRUE(sound);
  Samples left(static_cast<std::size_t>(kRate) * 11), right(left.size());
  sound.Value()->Voice(0).Begin(0);
  sound.Value()->Voice(0).Make(left, right);
  const auto events = sound.Value()->Events().events;
  for (const karaoke::SongEvent& event : sound.Value()->Events().events) {
    if (!event.message.IsNoteOn()) continue;
    const double due = std::chrono::duration<double>(event.at).count() * kRate;
    // A stick is loud from its first sample: the first frame that jumps out of what rings.
    const auto from = left.begin() + static_cast<std::ptrdiff_t>(due) - 200;
    const float before = *std::max_element(from - 400, from);
    const auto onset = std::find_if(from, from + 1000, [&](float s) { return s > before + 0.01F; });
    EXPECT_LT(std::abs(static_cast<double>(onset - left.begin()) - due), 0.0015 * kRate);
  }
}

TEST_F(FluidSynthesisersTest, SoundfontsAreListedOnceAndTheUnusableIsTold) {
  const std::filesystem::path folder = std::filesystem::path(::testing::TempDir()) / "soundfonts";
  std::filesystem::create_directories(folder);
  std::ofstream(folder / "b.SF2") << "RIFF but no soundfont";
  std::ofstream(folder / "a.txt") << "none";
  FluidSynthesisers there({folder, "/nowhere", folder});
  ASSERT_EQ(there.Soundfonts().size(), 1U);
  EXPECT_EQ(there.Soundfonts()[0].name, "b");
  EXPECT_NE(there.Make("", kRate).Failure().text.find("b.SF2\" cannot be used."), std::string::npos);
  EXPECT_EQ(FluidSynthesisers({"/nowhere"}).Make("", kRate).Failure().code, support::ErrorCode::NotFound);
  std::filesystem::remove_all(folder);
}

}  // namespace
}  // namespace platform::midi
