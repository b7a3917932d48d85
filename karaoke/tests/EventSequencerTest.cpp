// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "karaoke/EventSequencer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "karaoke/SongSound.h"
#include "karaoke/testing/MidiBytes.h"
#include "karaoke/testing/RecordingSynthesiser.h"

namespace karaoke {
namespace {

using testing::Bytes;
using ::testing::ElementsAre;
using testing::FileBytes;
using ::testing::IsEmpty;
using testing::TrackBytes;
using testing::UsualHead;

constexpr int kRate = 44100;

/// A song on two recording synthesisers; the first voice plays.
class EventSequencerTest : public ::testing::Test {
 protected:
  void Load(const std::vector<TrackBytes>& tracks, int division = 480) {
    const std::string bytes = FileBytes(tracks, division);
    song_ = ReadSong(bytes);
    auto sound = SongSound::Open(bytes, song_.syllables, synthesisers_, "", kRate);
    ASSERT_TRUE(sound);
    sound_ = std::move(sound).Value();
    sound_->Voice(0).Begin(0);
  }
  void Play(std::int64_t frames, std::size_t voice = 0) {
    std::vector<float> left(static_cast<std::size_t>(frames)), right(left.size());
    sound_->Voice(voice).Make(left, right);
  }
  [[nodiscard]] testing::RecordingSynthesiser& Synthesiser(std::size_t voice = 0) {
    return *synthesisers_.all[voice];
  }
  /// "on 60" and "off 60" a note.
  [[nodiscard]] std::vector<std::string> Notes() {
    std::vector<std::string> notes;
    for (const auto& sent : Synthesiser().sent) {
      if (sent.message.Kind() > 0x90) continue;
      notes.push_back((sent.message.IsNoteOn() ? "on " : "off ") + std::to_string(sent.message.data1));
    }
    return notes;
  }

  testing::RecordingSynthesisers synthesisers_;
  Song song_;
  std::shared_ptr<SongSound> sound_;
};

/// Everything that a song may send, in no sense at all.
TrackBytes NoisyTrack(int seed, int events) {
  std::mt19937 random(static_cast<unsigned>(seed));
  const auto pick = [&](int below) { return static_cast<int>(random() % static_cast<unsigned>(below)); };
  TrackBytes track;
  constexpr int kControllers[] = {0, 1, 6, 7, 10, 11, 32, 64, 100, 101, 120, 121, 123};
  for (int i = 0; i < events; ++i) {
    const int channel = pick(16);
    const std::uint32_t delta = static_cast<std::uint32_t>(pick(60));
    switch (pick(8)) {
      case 0:
        track.Event(delta, {0xC0 | channel, pick(128)});
        break;
      case 1:
        track.Event(delta, {0xE0 | channel, pick(128), pick(128)});
        break;
      case 2:
        track.Event(delta, {0xB0 | channel, kControllers[pick(13)], pick(128)});
        break;
      case 3:
        track.Event(delta, {0xD0 | channel, pick(128)});
        break;
      case 4:
        track.Meta(delta, 0x51, Bytes({6, pick(256), pick(256)}));
        break;
      default:
        track.Event(delta, {0x90 | channel, 50 + pick(20), pick(2) * 100});
        break;
    }
  }
  return track.End();
}

TEST_F(EventSequencerTest, EventsSoundWithinHalfAGridOfTheirTimeThroughSixHundredTempos) {
  TrackBytes track = UsualHead();
  for (int i = 0; i < 600; ++i) {
    track.Tempo(i == 0 ? 0 : 480, i % 2 == 0 ? 483'871 : 516'129).Event(0, {0x90, 60, 100});
  }
  Load({track.End(480)});
  Play(kRate * 301);
  ASSERT_EQ(Synthesiser().sent.size(), 600U);
  for (std::size_t i = 0; i < 600; ++i) {
    const Microseconds at = sound_->Events().tempo.TimeOf(static_cast<std::int64_t>(i) * 480);
    const double due = std::chrono::duration<double>(at).count() * kRate;
    EXPECT_LE(std::abs(static_cast<double>(Synthesiser().sent[i].frame) - due), 32.5) << i;
  }
}

TEST_F(EventSequencerTest, AfterASeekAllIsAsIfTheSongHadBeenPlayedUpToThere) {
  for (int seed = 1; seed <= 5; ++seed) {
    synthesisers_.all.clear();
    Load({UsualHead(), NoisyTrack(seed, 2000)});
    for (int place = 0; place < 30; ++place) {
      Play(kRate / 2 + 11 * place);
      sound_->Voice(1).Begin(Synthesiser().frame - 32);  // where the last block looked to
      EXPECT_EQ(Synthesiser(1).state, Synthesiser(0).state) << "song " << seed << " place " << place;
    }
  }
}

TEST_F(EventSequencerTest, ANoteEndsInTheKeyItBeganIn) {
  Load({UsualHead()
            .Event(0, {0x90, 60, 100})
            .Event(0, {0x99, 36, 100})
            .Event(480, {0x80, 60, 0})
            .Event(0, {0x90, 60, 100})
            .Event(480, {0x90, 60, 0})
            .End()});
  Play(kRate / 4);
  sound_->Wishes().semitones = 3;
  Play(kRate / 2);
  sound_->Wishes().semitones = -2;
  Play(kRate);
  EXPECT_THAT(Notes(), ElementsAre("on 60", "on 36", "off 60", "on 63", "off 63"));
}

TEST_F(EventSequencerTest, KeysBeyondTheKeyboardGoOnAnOctaveAwayAndDrumsStay) {
  const std::string rhythm = Bytes({0xF0, 10, 0x41, 0x10, 0x42, 0x12, 0x40, 0x11, 0x15, 2, 0, 0xF7});
  Load({UsualHead()
            .Event(0, {0x91, 125, 9})
            .Event(0, {0xB2, 0, 127})
            .Event(0, {0x92, 40, 9})
            .Event(0, {0x90, 41, 9})
            .Raw(Bytes({0}) + rhythm)
            .Event(0, {0x90, 42, 9})});
  sound_->Wishes().semitones = 5;
  Play(64);
  EXPECT_THAT(Notes(), ElementsAre("on 118", "on 40", "on 46", "on 42"));
}

TEST_F(EventSequencerTest, SpeedMovesEventsAndNothingElse) {
  Load({UsualHead().Event(960, {0x90, 60, 100})});
  sound_->Voice(0).SetSpeed(2);
  Play(kRate);
  ASSERT_EQ(Notes().size(), 1U);
  EXPECT_NEAR(static_cast<double>(Synthesiser().sent[0].frame), kRate / 2, 33);
}

TEST_F(EventSequencerTest, TheSungChannelIsFoundAndTurnedDownAtOnce) {
  TrackBytes melody = TrackBytes().Event(0, {0xB3, 7, 90});
  TrackBytes chords = TrackBytes();
  TrackBytes words = TrackBytes().Name("Words");
  for (int i = 0; i < 8; ++i) {
    melody.Event(480, {0x93, 60, 100});
    chords.Event(i == 0 ? 200 : 480, {0x94, 40, 100}).Event(0, {0x94, 44, 100});
    words.Text(480, "la ");
  }
  Load({UsualHead(), chords, melody, words});
  ASSERT_TRUE(sound_->HasMelody());
  Play(64);
  sound_->Wishes().melody_level = 0.5F;
  Play(64);
  EXPECT_EQ(Synthesiser().sent.back().message, (ChannelMessage{0xB3, 7, 45}));
  sound_->Voice(1).Begin(kRate);
  Play(64, 1);
  EXPECT_EQ((Synthesiser(1).state.settings[{0xB3, 7}]), 45);
}

TEST_F(EventSequencerTest, OneSynthesiserThatIsMissingIsToldAndNothingIsLeft) {
  const std::string bytes = FileBytes({UsualHead()});
  for (int makes = 0; makes < 2; ++makes) {
    synthesisers_.makes_left = makes;
    EXPECT_EQ(SongSound::Open(bytes, {}, synthesisers_, "x", kRate).Failure().text,
              "There is no soundfont \"x\".");
  }
  synthesisers_.makes_left = 2;
  EXPECT_FALSE(SongSound::Open("MThd", {}, synthesisers_, "", kRate));
}

}  // namespace
}  // namespace karaoke
