// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>

#include "app/tests/Evening.h"

namespace app {
namespace {

class WavesTest : public testing::Evening {
 protected:
  [[nodiscard]] int Openings(const std::string& file) const {
    const auto log = engine_.Log();
    return static_cast<int>(
        std::count(log.begin(), log.end(), "BASS_StreamCreateFile 0 " + file + " 0 0x0 0x200000"));
  }
  void LetWorkersFinish() {
    workers_.RunAll();
    Settle();
  }
};

TEST_F(WavesTest, AWorkerMakesTheWaveOfALoadedFileWhileItPlays) {
  StartUp();
  Load(1, "a.mp3");
  Play(1);
  EXPECT_EQ(Deck(1).wave, nullptr);
  LetWorkersFinish();
  ASSERT_NE(Deck(1).wave, nullptr);
  EXPECT_EQ(Deck(1).wave->fine.size(), 15000U);
  EXPECT_EQ(Deck(1).wave->overview.front().highest, 63);
  EXPECT_EQ(Deck(1).state, testing::State::Playing);
}

TEST_F(WavesTest, AWaveIsMadeOnceAFile) {
  StartUp();
  Load(1, "a.mp3");
  LetWorkersFinish();
  const int openings = Openings("a.mp3");
  station_->Decks()[1].Do(&DeckStation::Stop);
  Settle();
  Load(2, "a.mp3");
  LetWorkersFinish();
  EXPECT_EQ(Openings("a.mp3"), openings + 2);  // the decks' own
  EXPECT_EQ(Deck(2).wave, Deck(1).wave);
}

TEST_F(WavesTest, AnotherFileEndsTheReadingOfTheOldOne) {
  StartUp();
  Load(1, "a.mp3");
  for (int job = 0; job < 3; ++job) workers_.RunOne();  // the first one looks whether the file is there
  const int streams = engine_.Streams();
  Load(1, "b.mp3");
  workers_.RunAll();
  EXPECT_EQ(engine_.Streams(), streams - 1);
  Settle();
  ASSERT_NE(Deck(1).wave, nullptr);
}

TEST_F(WavesTest, TheWaveOfTheOldFileGoesWithIt) {
  StartUp();
  Load(1, "a.mp3");
  LetWorkersFinish();
  Load(1, "b.mp3");
  EXPECT_EQ(Deck(1).wave, nullptr);
}

TEST_F(WavesTest, AFileThatCannotBeReadAgainHasAnEmptyWave) {
  StartUp();
  Load(1, "a.mp3");
  engine_.RemoveFile("a.mp3");
  LetWorkersFinish();
  ASSERT_NE(Deck(1).wave, nullptr);
  EXPECT_TRUE(Deck(1).wave->fine.empty());
}

TEST_F(WavesTest, NothingIsReadAfterShutDown) {
  StartUp();
  Load(1, "a.mp3");
  workers_.RunOne();
  workers_.RunOne();
  station_->ShutDown();
  const int calls = engine_.Calls();
  workers_.RunAll();
  EXPECT_EQ(engine_.Calls(), calls);
}

}  // namespace
}  // namespace app
