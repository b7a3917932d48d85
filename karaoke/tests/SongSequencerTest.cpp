// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "karaoke/SongSequencer.h"

#include <gtest/gtest.h>

#include "karaoke/Karaoke.h"
#include "karaoke/MciErrors.h"
#include "karaoke/testing/FakeSongOutput.h"
#include "karaoke/testing/MidiBytes.h"
#include "karaoke/testing/RecordingSynthesiser.h"

namespace karaoke {
namespace {

using testing::FileBytes;
using testing::TrackBytes;
using testing::UsualHead;

/// A song of ten seconds, played by Karaoke through its commands.
class SongSequencerTest : public ::testing::Test {
 protected:
  SongSequencerTest() {
    Offer();
    karaoke_.TakeSong("a.kar", {});
  }
  void Offer() {
    const std::string bytes = FileBytes({UsualHead().Event(480, {0x90, 60, 100}).End(9120)});
    sequencer_.Offer("a.kar", SongSound::Open(bytes, {}, synthesisers_, "", 44100).Value());
  }
  std::uint32_t Send(std::uint32_t command, std::uint32_t flags, MciParameters parameters) {
    return sequencer_.mciSendCommandA(1, command, flags, parameters);
  }

  testing::RecordingSynthesisers synthesisers_;
  testing::FakeSongOutput output_;
  SongSequencer sequencer_{output_};
  Karaoke karaoke_{sequencer_};
};

TEST_F(SongSequencerTest, ASongIsPlayedPausedPlacedAndClosed) {
  ASSERT_TRUE(karaoke_.KarOpenDevice());
  EXPECT_EQ(karaoke_.MusicLength(), "00:10");
  EXPECT_TRUE(karaoke_.Velocity(2) && karaoke_.Play());
  output_.Advance(1.5);
  EXPECT_EQ(karaoke_.Position(), 3000U);
  EXPECT_TRUE(karaoke_.IsPlaying());
  EXPECT_TRUE(karaoke_.Pause());
  EXPECT_FALSE(karaoke_.IsPlaying());
  EXPECT_TRUE(karaoke_.SetPosition(7000) && karaoke_.Play());
  EXPECT_EQ(karaoke_.Position(), 7000U);
  EXPECT_TRUE(karaoke_.SeekEnd());
  EXPECT_EQ(karaoke_.Position(), 10'000U);
  EXPECT_TRUE(karaoke_.IsPlaying());  // it still rings
  output_.Advance(2);
  EXPECT_FALSE(karaoke_.IsPlaying());
  EXPECT_EQ(karaoke_.Position(), 10'000U);
  EXPECT_TRUE(karaoke_.SeekIni());
  EXPECT_EQ(karaoke_.Position(), 0U);
  EXPECT_TRUE(karaoke_.CloseDevice());
  EXPECT_EQ(output_.loaded, nullptr);
  EXPECT_FALSE(karaoke_.KarOpenDevice());
  Offer();
  EXPECT_TRUE(karaoke_.KarOpenDevice());
}

TEST_F(SongSequencerTest, TheVolumeHoldsFromSongToSong) {
  EXPECT_TRUE(karaoke_.SetMusicVolume(0x7FFF'3FFF));
  ASSERT_TRUE(karaoke_.KarOpenDevice());
  EXPECT_NEAR(output_.volume, 0.5, 0.001);
  EXPECT_EQ(karaoke_.GetMusicVolume(), 0x7FFF'3FFFU);
}

TEST_F(SongSequencerTest, WhatCannotBeIsRefusedByItsNumber) {
  output_.refuses = true;
  EXPECT_EQ(karaoke_.KarOpenDevice().Failure().text, "Device is Not Ready.");
  output_.refuses = false;
  ASSERT_TRUE(karaoke_.KarOpenDevice());  // the offer still stands
  EXPECT_EQ(Send(kMciOpen, 0, {"sequencer", "a.kar"}), mci_error::kDeviceOpen);
  EXPECT_EQ(Send(kMciOpen, 0, {"waveaudio", "a.kar"}), mci_error::kInvalidDeviceName);
  EXPECT_EQ(Send(kMciSet, 0, {.time_format = 2}), mci_error::kBadTimeFormat);
  EXPECT_EQ(Send(kMciStatus, 256, {.item = 99}), mci_error::kUnsupportedFunction);
  EXPECT_EQ(Send(kMciStatus, 2, {.item = 1}), mci_error::kMissingParameter);
  EXPECT_EQ(Send(kMciSeek, 8, {.to = 10'001}), mci_error::kOutOfRange);
  EXPECT_EQ(Send(kMciSeek, 0, {}), mci_error::kMissingParameter);
  EXPECT_EQ(Send(9999, 0, {}), mci_error::kUnrecognizedCommand);
  EXPECT_EQ(sequencer_.SetSpeed(7, 1), mci_error::kInvalidDeviceId);
  karaoke_.TakeSong("other.kar", {});
  EXPECT_EQ(karaoke_.KarOpenDevice().Failure().text, "File Not Found.");
}

}  // namespace
}  // namespace karaoke
