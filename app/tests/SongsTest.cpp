// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <fstream>

#include "app/tests/Evening.h"
#include "catalogue/testing/MemorySideStore.h"
#include "karaoke/testing/FakeCodePages.h"
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
    code_pages_ = &pages_;
    side_store_ = &store_;
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
  karaoke::testing::FakeCodePages pages_;
  catalogue::testing::MemorySideStore store_;
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
  SongStation& songs = station_->Songs();
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

TEST_F(SongsTest, WhateverStandsThereStaysUntilTheNextOneSounds) {
  const struct {
    const char* there;
    void (SongStation::*then)();
    Song state;
  } rows[] = {{"a.kar", nullptr, Song::Playing},
              {"a.mp3", nullptr, Song::Playing},
              {"a.kar", &SongStation::Pause, Song::Paused},
              {"a.mp3", &SongStation::Pause, Song::Paused},
              {"a.kar", &SongStation::Stop, Song::Stopped},
              {"a.mp3", &SongStation::Stop, Song::Stopped}};
  for (const auto& row : rows) {
    PlaySong(row.there);
    Advance(3s);
    if (row.then != nullptr) (station_->Songs().*row.then)();
    Settle();
    workers_.RunAll();
    Settle();
    const auto place = Singing().position;
    for (const char* bad : {"bad.kar", "missing.mp3", "not-there.kar"}) {
      const std::uint64_t failures = Singing().failures;
      PlaySong(bad);
      EXPECT_EQ(Singing().failures, failures + 1) << row.there << bad;
      EXPECT_EQ(Singing().state, row.state) << row.there << bad;
      EXPECT_EQ(Singing().position, place) << row.there << bad;
      EXPECT_EQ(Name(), row.there) << bad;
      EXPECT_NE(Singing().words, nullptr);
    }
    station_->Songs().Resume();
    Settle();
    EXPECT_EQ(Singing().state, Song::Playing) << row.there;
  }
}

TEST_F(SongsTest, ASongOnTheDeckIsSungOnWhileWishesCome) {
  PlaySong("a.mp3");
  Advance(5s);
  engine_.HoldPreparing();
  for (const char* wish : {"b.mp3", "b.MID", "b.mp3"}) {
    Wish(wish);
    Advance(100ms);
    EXPECT_EQ(Name(), "a.mp3") << wish;
    EXPECT_EQ(Singing().state, Song::Playing) << "while it waits for " << wish;
    EXPECT_EQ(Singing().speed, 1);
    EXPECT_NE(Singing().coming, "");
  }
  EXPECT_EQ(Singing().position, 5300ms);
  Wish("bad.kar");
  workers_.RunAll();
  Settle();
  EXPECT_EQ(Singing().failures, 1U);
  EXPECT_EQ(Name(), "a.mp3");
  EXPECT_EQ(Deck(3).state, testing::State::Playing) << "the wish before is not loaded either";
}

TEST_F(SongsTest, AWishThatComesAsTheOneBeforeBeginsLeavesOneSongSounding) {
  PlaySong("a.kar");
  engine_.HoldPreparing();
  Wish("b.mp3");
  ASSERT_TRUE(engine_.FinishPreparing());
  Wish("b.MID");
  EXPECT_EQ(Name(), "b.mp3") << "it began before it was overtaken";
  workers_.RunAll();
  Settle();
  EXPECT_EQ(Name(), "b.MID");
  EXPECT_EQ(Deck(3).state, testing::State::Empty);
  EXPECT_EQ(engine_.Streams(), 1);
}

TEST_F(SongsTest, TheEngineRefusingTheNextSongStopsNothing) {
  for (const char* there : {"a.kar", "a.mp3"}) {
    PlaySong(there);
    Advance(1s);
    Wish("b.MID");
    workers_.RunAll();
    engine_.FailCall(1);
    Settle();
    engine_.FailCall(0);
    EXPECT_EQ(Name(), there);
    EXPECT_EQ(Singing().state, Song::Playing) << there;
  }
  EXPECT_EQ(Singing().failures, 2U);
}

TEST_F(SongsTest, ASongBeginsInItsOwnKeyOrInTheOneWishedForIt) {
  const char* const songs[] = {"a.kar", "a.mp3", "b.mp3", "b.MID", "a.kar", "b.mp3"};
  const auto heard = [this] { return std::pair(Singing().semitones, Singing().percent); };
  for (const char* song : songs) {
    PlaySong(song);
    EXPECT_EQ(heard(), std::pair(0, 0.0)) << song;
    if (Deck(3).state == testing::State::Playing) {
      EXPECT_EQ(std::pair(Deck(3).pitch, Deck(3).tempo_percent), std::pair(0.0F, 0.0F)) << song;
    }
    station_->Songs().SetKey(-4);
    station_->Songs().SetTempo(20);
    Settle();
  }
  engine_.HoldPreparing();
  for (const char* song : {"a.mp3", "b.MID"}) {
    Wish(song);
    station_->Songs().SetKey(3);
    station_->Songs().SetTempo(-5);
    Settle();
    EXPECT_EQ(heard(), std::pair(3, -5.0)) << "what it will begin with";
    EXPECT_EQ(Deck(3).pitch, Name().ends_with("mp3") ? -4 : 0) << "not the singer who sings";
    while (engine_.FinishPreparing()) Settle();
    workers_.RunAll();
    Settle();
    EXPECT_EQ(Name(), song);
    EXPECT_EQ(heard(), std::pair(3, -5.0)) << song;
    station_->Songs().SetKey(-4);
    Settle();
  }
}

TEST_F(SongsTest, ANewSongIsNotHeardInTheOldKeyForAMoment) {
  PlaySong("a.mp3");
  station_->Songs().SetKey(-4);
  Settle();
  engine_.ClearLog();
  PlaySong("b.mp3");
  const auto log = engine_.Log();
  EXPECT_TRUE(std::none_of(log.begin(), log.end(),
                           [](const std::string& line) { return line.find("-4") != std::string::npos; }));
}

TEST_F(SongsTest, WordsAreShownOfFilesWithoutATempoOrASignature) {
  const TrackBytes words = TrackBytes().Name("Words").Event(480, {0x90, 60, 100}).Text(0, "/la").End(960);
  const TrackBytes lyrics = TrackBytes().Event(480, {0x90, 60, 100}).Meta(0, 5, "la").End(960);
  for (const TrackBytes& track : {words, lyrics}) {
    std::ofstream(songs_.Path() / "c.kar", std::ios::binary) << karaoke::testing::FileBytes({track});
    PlaySong("c.kar");
    EXPECT_EQ(Singing().words->show.Lines().size(), 1U);
    EXPECT_EQ(Singing().note, "");
    EXPECT_TRUE(Singing().has_melody) << "the notes under the words";
  }
}

TEST_F(SongsTest, LettersAreGuessedAndWhatAHandChoseStaysWithTheFile) {
  const TrackBytes track =
      TrackBytes().Name("Words").Event(0, {0x90, 60, 100}).Text(480, karaoke::testing::kRussianWords).End();
  for (const char* name : {"c.kar", "d.kar"}) {
    std::ofstream(songs_.Path() / name, std::ios::binary) << karaoke::testing::FileBytes({track});
  }
  const std::string path = (songs_.Path() / "c.kar").string();
  PlaySong("c.kar");
  EXPECT_EQ(Singing().words->coding, "WINDOWS-1251");
  const auto before = Singing().words;
  station_->Songs().SetCoding(path, "KOI8-R");
  Settle();
  EXPECT_EQ(Singing().words->coding, "KOI8-R");
  EXPECT_NE(Singing().words, before) << "what the window draws from never changes";
  EXPECT_EQ(Singing().state, Song::Playing);
  workers_.RunAll();
  PlaySong("d.kar");
  station_->Songs().SetCoding(path, "Big5");  // the window was late: another song is there
  Settle();
  EXPECT_EQ(Singing().words->coding, "WINDOWS-1251");
  station_->Songs().SetCoding(path, "KOI8-R");
  Settle();
  workers_.RunAll();
  PlaySong("c.kar");
  EXPECT_EQ(Singing().words->coding, "KOI8-R");
  EXPECT_TRUE(Singing().words->chosen_coding);
  station_->Songs().SetCoding(path, "");
  Settle();
  workers_.RunAll();
  PlaySong("c.kar");
  EXPECT_EQ(Singing().words->coding, "WINDOWS-1251");
  EXPECT_FALSE(Singing().words->chosen_coding);
}

TEST_F(SongsTest, ASongFollowsDeckOneToAnotherOutputWhereItIsHeard) {
  PlaySong("a.kar");
  Advance(3s);
  station_->Outputs().Set(1, {2, 0});
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
