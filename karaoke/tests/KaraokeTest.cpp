// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "karaoke/Karaoke.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "karaoke/MciErrors.h"
#include "karaoke/testing/RecordingSequencer.h"

namespace karaoke {
namespace {

using ::testing::ElementsAre;

class KaraokeTest : public ::testing::Test {
 protected:
  KaraokeTest() { karaoke_.TakeSong("/songs/a.kar", {}); }
  void Open() {
    ASSERT_TRUE(karaoke_.KarOpenDevice());
    sequencer_.calls.clear();
  }

  testing::RecordingSequencer sequencer_;
  Karaoke karaoke_{sequencer_};
};

TEST_F(KaraokeTest, OpeningAsksForMillisecondsAndTheLength) {
  ASSERT_TRUE(karaoke_.KarOpenDevice());
  EXPECT_THAT(sequencer_.calls, ElementsAre("0 2051 8705 sequencer /songs/a.kar", "7 2061 17411 format 0",
                                            "7 2068 258 item 1"));
  EXPECT_EQ(karaoke_.MusicTimeLength(), 225'999U);
  EXPECT_EQ(karaoke_.MusicLength(), "03:45");
}

TEST_F(KaraokeTest, EachOperationIsOneCommand) {
  Open();
  EXPECT_TRUE(karaoke_.Play() && karaoke_.Pause() && karaoke_.StopPlay() && karaoke_.SeekIni() &&
              karaoke_.SeekEnd() && karaoke_.SetPosition(61'000) && karaoke_.CloseDevice());
  EXPECT_THAT(sequencer_.calls, ElementsAre("7 2054 1", "7 2057 0", "7 2056 0", "7 2055 256", "7 2055 512",
                                            "7 2055 8 to 61000", "7 2052 0"));
  EXPECT_EQ(karaoke_.Play().Failure().text, "Invalid Device ID.");
}

TEST_F(KaraokeTest, ASpeedHoldsForTheNextSong) {
  EXPECT_TRUE(karaoke_.Velocity(1.25));
  EXPECT_EQ(sequencer_.speed, 1);
  ASSERT_TRUE(karaoke_.KarOpenDevice());
  EXPECT_EQ(sequencer_.speed, 1.25);
  EXPECT_TRUE(karaoke_.Velocity(7));
  EXPECT_EQ(sequencer_.speed, 2);
}

TEST_F(KaraokeTest, ARefusedStepOfOpeningIsToldAndClosesTheDevice) {
  for (int call = 1; call <= 3; ++call) {
    sequencer_.calls.clear();
    sequencer_.refused_call = call;
    EXPECT_EQ(karaoke_.KarOpenDevice().Failure().text, "Device is Not Ready.");
    EXPECT_EQ(sequencer_.calls.back(), call == 1 ? "0 2051 8705 sequencer /songs/a.kar" : "7 2052 0");
    EXPECT_FALSE(karaoke_.Play());
  }
}

TEST_F(KaraokeTest, ErrorNumbersHaveTheirOldWords) {
  const struct {
    std::uint32_t number;
    const char* text;
  } rows[] = {{257, "Invalid Device ID."},
              {263, "Dispositivo de som inválido."},
              {265, "Device is Qlready Open."},
              {267, "Erro de comando."},
              {275, "File Not Found."},
              {296, "Arquivo inválido."},
              {301, "Erro ao ler o arquivo de som."},
              {310, "Error on Device Length."},
              {311, "Error on Device Length."},
              {340, "Seq Port Misc Error"},
              {1, "Internal Error."},
              {277, "Internal Error."},
              {21, "Last Error."},
              {320, "Unknown Error."},
              {99'999, "Unknown Error."}};
  for (const auto& row : rows) EXPECT_EQ(MciErrorText(row.number), row.text) << row.number;
}

TEST_F(KaraokeTest, TheVolumeIsTheSystems) {
  EXPECT_TRUE(karaoke_.SetMusicVolume(0x8000'4000));
  EXPECT_EQ(karaoke_.GetMusicVolume(), 0x8000'4000U);
  sequencer_.refused_call = 3;
  EXPECT_EQ(karaoke_.GetMusicVolume(), 0U);
}

}  // namespace
}  // namespace karaoke
