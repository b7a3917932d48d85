// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <fstream>

#include "app/tests/Evening.h"
#include "karaoke/testing/MidiBytes.h"
#include "karaoke/testing/RecordingSynthesiser.h"
#include "support/testing/TemporaryFolder.h"

namespace app {
namespace {

using namespace std::chrono_literals;
using karaoke::testing::TrackBytes;
using Song = SongView::State;

/// An evening with songs of ten seconds: a word every half second, with a note of channel 1 under it.
class SongsTest : public testing::Evening {
 protected:
  SongsTest() {
    TrackBytes track = karaoke::testing::UsualHead().Name("Words").Text(0, "@TLittle song").Text(0, "@TAnna");
    for (int i = 0; i < 20; ++i) {
      track.Event(i == 0 ? 0 : 380, {0x90, 60, 100})
          .Text(0, i % 4 == 0 ? "/la " : "lo ")
          .Event(100, {0x80, 60, 0});
    }
    const std::string bytes = karaoke::testing::FileBytes({track.End(380)});
    for (const char* name : {"a.kar", "b.MID"})
      std::ofstream(songs_.Path() / name, std::ios::binary) << bytes;
    std::ofstream(songs_.Path() / "bad.kar") << "this is a shopping list";
    StartUp(&synthesisers_);
    engine_.ClearLog();
  }
  [[nodiscard]] const SongView& Singing() { return station_->Songs().View(); }
  void Wish(const std::string& name) {
    station_->Songs().Play({name.ends_with("mp3") ? name : (songs_.Path() / name).string(), "", ""});
    Settle();
  }
  void PlaySong(const std::string& name) {
    Wish(name);
    workers_.RunAll();
    Settle();
  }
  [[nodiscard]] std::string Name() { return std::filesystem::path(Singing().filename).filename().string(); }
  [[nodiscard]] bool Called(const std::string& line) {
    const auto log = engine_.Log();
    return std::find(log.begin(), log.end(), line) != log.end();
  }

  support::testing::TemporaryFolder songs_;
  karaoke::testing::RecordingSynthesisers synthesisers_;
};

TEST_F(SongsTest, ASongPlaysAndItsWordsFollowWhatIsHeard) {
  PlaySong("a.kar");
  Advance(2600ms);
  EXPECT_EQ(Singing().state, Song::Playing);
  EXPECT_EQ(Singing().position, 2600ms);
  EXPECT_EQ(Singing().length, 10s);
  EXPECT_EQ(Singing().words->title, "Little song");
  EXPECT_EQ(Singing().words->artist, "Anna");
  const karaoke::LyricFrame frame = Singing().words->show.At(Singing().HeardAt(clock_.Now() + 20ms));
  EXPECT_EQ(frame.current, 1U);
  EXPECT_EQ(frame.syllable, 1U);
}

TEST_F(SongsTest, PauseSeekAndStopAreThoseOfAPlayer) {
  PlaySong("a.kar");
  Advance(2s);
  station_->Songs().Pause();
  Settle();
  Advance(5s);
  EXPECT_EQ(Singing().state, Song::Paused);
  EXPECT_EQ(Singing().position, 2s);
  station_->Songs().Seek(7s);
  Settle();
  EXPECT_EQ(Singing().position, 7s);
  station_->Songs().Resume();
  Advance(1s);
  station_->Tick();
  EXPECT_EQ(Singing().state, Song::Playing);
  station_->Songs().Stop();
  Settle();
  EXPECT_EQ(Singing().state, Song::Stopped);
  EXPECT_EQ(Singing().position, 0s);
}

TEST_F(SongsTest, ASongThatHasEndedBeginsAgain) {
  PlaySong("a.kar");
  Advance(13s);
  EXPECT_EQ(Singing().state, Song::Ended);
  station_->Songs().Resume();
  Settle();
  Advance(1s);
  EXPECT_EQ(Singing().state, Song::Playing);
  EXPECT_EQ(Singing().position, 1s);
}

TEST_F(SongsTest, ABadFileIsToldOfAndTheEveningGoesOn) {
  PlaySong("a.kar");
  for (const char* bad : {"bad.kar", "not-there.kar"}) {
    PlaySong(bad);
    EXPECT_NE(Singing().failure.find(bad), std::string::npos) << Singing().failure;
    EXPECT_EQ(Name(), "a.kar");
    EXPECT_EQ(Singing().state, Song::Playing);
  }
  EXPECT_EQ(Singing().failures, 2U);
  EXPECT_EQ(Singing().failure,
            say_(support::Sentence::SongNotPlayed,
                 {(songs_.Path() / "not-there.kar").string(),
                  say_(support::Sentence::SongMissing, {(songs_.Path() / "not-there.kar").string()})}));
}

TEST_F(SongsTest, TheNewestWishWinsWhicheverIsReadyFirst) {
  Wish("a.kar");
  Wish("b.MID");
  workers_.RunAll();
  Settle();
  EXPECT_EQ(Name(), "b.MID");
  EXPECT_EQ(engine_.Streams(), 1);
}

TEST_F(SongsTest, WhatPlaysGoesOnUntilTheNextIsReady) {
  PlaySong("a.kar");
  Advance(1s);
  Wish("b.MID");
  Advance(1s);
  EXPECT_EQ(Name(), "a.kar");
  EXPECT_EQ(Singing().position, 2s);
  EXPECT_NE(Singing().coming, "");
  workers_.RunAll();
  Settle();
  EXPECT_EQ(Name(), "b.MID");
  EXPECT_EQ(Singing().coming, "");
}

TEST_F(SongsTest, VolumeKeyTempoAndMelodyAreTheSingers) {
  PlaySong("a.kar");
  SongDesk& songs = station_->Songs();
  songs.SetVolume(40);
  songs.SetKey(-3);
  songs.SetTempo(10);
  songs.SetMelody(25);
  Settle();
  EXPECT_EQ(engine_.VolumeOf(1), 40);
  EXPECT_FLOAT_EQ(engine_.TempoOf(1), 10);
  EXPECT_EQ(engine_.SemitonesOf(1), 0) << "keys are changed by other notes, not by stretching";
  EXPECT_TRUE(Singing().has_melody);
  Advance(1s);
  EXPECT_EQ(Singing().position, 1100ms);
  PlaySong("b.MID");
  EXPECT_EQ(Singing().semitones, 0);
  EXPECT_EQ(Singing().percent, 0);
  EXPECT_EQ(Singing().volume, 40);
  EXPECT_EQ(Singing().melody, 25);
  EXPECT_EQ(engine_.VolumeOf(2), 40);
  EXPECT_EQ(Stored("Karaoke", "Volume"), "40");
}

TEST_F(SongsTest, AnAudioFileOfTheTablePlaysOnTheThirdDeck) {
  PlaySong("a.kar");
  PlaySong("a.mp3");
  EXPECT_EQ(Deck(3).state, testing::State::Playing);
  EXPECT_EQ(Name(), "a.mp3");
  EXPECT_TRUE(Singing().words->show.Lines().empty());
  station_->Songs().SetKey(2);
  station_->Songs().SetTempo(-10);
  station_->Songs().Seek(30s);
  Settle();
  Advance(2s);
  EXPECT_EQ(Singing().position, 31800ms);
  EXPECT_EQ(Deck(3).pitch, 2);
  PlaySong("b.MID");
  EXPECT_EQ(Deck(3).state, testing::State::Empty);
  EXPECT_EQ(Name(), "b.MID");
}

TEST_F(SongsTest, AnAudioFileThatCannotBePlayedLeavesTheSongAlone) {
  PlaySong("a.kar");
  PlaySong("missing.mp3");
  EXPECT_EQ(Name(), "a.kar");
  EXPECT_EQ(Singing().state, Song::Playing);
  EXPECT_NE(Singing().failure.find("missing.mp3"), std::string::npos) << Singing().failure;
}

TEST_F(SongsTest, ASongFollowsDeckOneToAnotherOutputWhereItIsHeard) {
  PlaySong("a.kar");
  Advance(3s);
  station_->SetOutput(1, {2, 0});
  for (int i = 0; i < 2; ++i) {  // the device is opened, then the song made ready
    Settle();
    workers_.RunAll();
  }
  Settle();
  EXPECT_EQ(engine_.DeviceOf(2), 2);
  EXPECT_EQ(Singing().position, 3s);
  EXPECT_EQ(Singing().state, Song::Playing);
}

TEST_F(SongsTest, ASongThatTheEngineRefusesIsToldOfAtAnyCall) {
  for (int call = 1; call <= 4; ++call) {
    engine_.FailCall(call);
    PlaySong("a.kar");
    EXPECT_TRUE(Singing().failures > 0 || Singing().state == Song::Playing || Singing().state == Song::Ended);
    engine_.FailCall(0);
    PlaySong("b.MID");
    EXPECT_EQ(Singing().state, Song::Playing) << call;
  }
}

TEST_F(SongsTest, ShutdownEndsTheSongBeforeTheEngineIsFreed) {
  PlaySong("a.kar");
  station_->ShutDown();
  const auto log = engine_.Log();
  const auto freed = std::find(log.begin(), log.end(), "BASS_StreamFree 1");
  EXPECT_LT(freed, std::find(log.begin(), log.end(), "BASS_Free"));
  EXPECT_EQ(engine_.Streams(), 0);
}

TEST_F(SongsTest, SoundfontsAreListedAndTheChoiceHoldsForTheNextSong) {
  ASSERT_EQ(station_->Songs().Soundfonts().size(), 1U);
  station_->Songs().SetSoundfont("/mine.sf2");
  synthesisers_.makes_left = 0;
  PlaySong("a.kar");
  EXPECT_NE(Singing().failure.find("/mine.sf2"), std::string::npos) << Singing().failure;
}

TEST_F(SongsTest, WhatWasSungStandsInTheHistoryOfTheEvening) {
  PlaySong("a.kar");
  for (int second = 0; second < 4; ++second) Advance(1s);
  const std::string file = (songs_.Path() / "a.kar").string();
  EXPECT_FALSE(station_->Lists().WasPlayed(file));
  for (int second = 0; second < 3; ++second) Advance(1s);
  workers_.RunAll();
  station_->PumpWindow();
  EXPECT_TRUE(station_->Lists().WasPlayed(file)) << "half of its ten seconds";
  const auto history = files_.Content(folder_ / "History" / (EveningOf(LocalTimeNow()) + ".tpl"));
  ASSERT_TRUE(history);
  EXPECT_TRUE(history->starts_with("Anna\tLittle song\t00:")) << *history;
}

}  // namespace
}  // namespace app
