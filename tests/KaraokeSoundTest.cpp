// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "engine/testing/SoundStage.h"
#include "karaoke/SongSound.h"
#include "karaoke/testing/MidiBytes.h"
#include "platform/midi/FluidSynthesisers.h"

namespace {

using namespace std::chrono_literals;
using engine::testing::kRate;
using engine::testing::SoundStage;

/// A stick on every quarter note, whose tempo changes with each, played by the library on the real engine.
class KaraokeSoundTest : public ::testing::Test {
 protected:
  void SetUp() override {
    karaoke::testing::TrackBytes track = karaoke::testing::UsualHead();
    for (int i = 0; i < 40; ++i) {
      track.Tempo(380, i % 2 == 0 ? 483'871 : 516'129).Event(0, {0x99, 37, 127}).Event(100, {0x89, 37, 0});
    }
    auto sound = karaoke::SongSound::Open(karaoke::testing::FileBytes({track}), {}, synthesisers_, "", kRate);
    ASSERT_TRUE(sound) << sound.Failure().text;
    sound_ = std::move(sound).Value();
    stage_.engine->BASS_Init(1, kRate, 0);
    stream_ = stage_.engine->CreateGenerated(sound_, 1, 0);
    stage_.engine->BASS_ChannelPlay(stream_, false);
  }
  /// Goes on, and remembers the song's frame heard at each millisecond.
  void Listen(int milliseconds) {
    for (int i = 0; i < milliseconds; ++i) {
      stage_.Advance(1ms);
      heard_.push_back(stage_.engine->Heard(stream_).frame.value);
    }
  }
  /// For each stick in the recording: how far the heard clock is from the place where it is due, in ms.
  [[nodiscard]] std::vector<double> OnsetErrors() {
    const std::vector<float> left = stage_.Channel("main", 0);
    std::vector<double> errors;
    for (std::size_t i = kRate / 10; i < left.size(); ++i) {
      const float before = *std::max_element(left.data() + i - 400, left.data() + i);
      if (left[i] < before + 0.01F) continue;
      const auto latency = static_cast<std::size_t>(SoundStage::kLatency / 1ms);
      const std::size_t at = i * 1000 / kRate + latency;
      if (at >= heard_.size()) break;
      errors.push_back(DistanceToNote(heard_[at]));
      i += kRate / 10;
    }
    return errors;
  }
  [[nodiscard]] double DistanceToNote(std::int64_t frame) {
    double nearest = 1e9;
    for (const karaoke::SongEvent& event : sound_->Events().events) {
      if (!event.message.IsNoteOn()) continue;
      const double due = std::chrono::duration<double>(event.at).count() * kRate;
      nearest = std::min(nearest, std::abs(due - static_cast<double>(frame)) * 1000 / kRate);
    }
    return nearest;
  }

  platform::midi::FluidSynthesisers synthesisers_;
  std::shared_ptr<karaoke::SongSound> sound_;
  SoundStage stage_;
  decks::StreamHandle stream_ = 0;
  std::vector<std::int64_t> heard_;
};

TEST_F(KaraokeSoundTest, NotesSoundWhereTheHeardClockStands) {
  Listen(5000);
  ASSERT_TRUE(stage_.engine->BASS_ChannelSetPosition(stream_, {4 * 12 * kRate}));
  Listen(3000);
  stage_.engine->BASS_FX_TempoSet(stream_, -20, -1, decks::kTempoUnchanged);
  Listen(4000);
  const std::vector<double> errors = OnsetErrors();
  EXPECT_GE(errors.size(), 20U);
  constexpr double kGridAndMillisecondSteps = 1.5 + 1;
  EXPECT_LT(*std::max_element(errors.begin(), errors.end()), kGridAndMillisecondSteps);
}

}  // namespace
