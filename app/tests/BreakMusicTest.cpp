// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/lists/BreakMusic.h"

#include <gtest/gtest.h>

#include <cmath>

#include <memory>

#include "app/WorkstationView.h"
#include "support/testing/FakeClock.h"

namespace app {
namespace {

using namespace std::chrono_literals;
using DeckState = DeckView::State;

/// Two decks that do what they are told with the next tick, and the music between songs on them.
class BreakMusicTest : public ::testing::Test, public MixingDecks {
 protected:
  BreakMusicTest() {
    for (const char* file : {"a.mp3", "b.mp3"}) {
      const int row = list_->AddRow();
      list_->SetCell(row, catalogue::track::kFilename, file);
    }
    tables_.playlists[2] = list_;
    music_->Choose({.on = true});
  }
  DeckView& Deck(int deck) { return view_.decks[static_cast<std::size_t>(deck - 1)]; }
  void Go(std::chrono::milliseconds time) {
    for (; time > 0ms; time -= 10ms) {
      clock_.Advance(10ms);
      music_->Tick(view_, tables_, {}, mixer_, stage_, automix_);
    }
  }
  void Sing(std::chrono::milliseconds time) {
    stage_.song = true;
    Go(time);
    stage_.song = false;
  }

  void Load(int deck, const catalogue::track_table& playlist, int row) override {
    const std::string file(playlist.Cell(row, catalogue::track::kFilename));
    Deck(deck).filename = file;
    Deck(deck).state = file == broken_ ? DeckState::Empty : slow_ ? DeckState::Loading : DeckState::Stopped;
    Deck(deck).position = 0us;
    ++loads_;
  }
  void Play(int deck) override { Deck(deck).state = DeckState::Playing; }
  void Pause(int deck) override { Deck(deck).state = DeckState::Paused; }
  void Stop(int deck) override { Deck(deck).state = DeckState::Stopped; }
  void SetVolume(int deck, int volume) override {
    Deck(deck).volume = volume;
    loudest_ = std::max(loudest_, volume);
  }
  void Glide(int deck, double level, std::chrono::milliseconds) override {
    SetVolume(deck, static_cast<int>(std::lround(level)));
  }
  void Seek(int deck, std::chrono::microseconds place) override { Deck(deck).position = place; }
  void SetMixing(int, bool) override {}
  bool StartWith(int, int, std::chrono::microseconds) override { return false; }
  bool Started(int) override { return false; }
  void CancelStart(int) override {}
  std::chrono::microseconds MatchTempo(int, std::chrono::microseconds place, int) override { return place; }
  void SetGain(int, support::Decibels) override {}

  support::testing::FakeClock clock_;
  std::shared_ptr<catalogue::track_table> list_ =
      std::make_shared<catalogue::track_table>(catalogue::TrackColumns());
  ListTables tables_;
  WorkstationView view_;
  MixerHands mixer_;
  BreakStage stage_{.song = false, .singers = true};
  bool automix_ = false;
  std::string broken_;
  bool slow_ = false;
  int loads_ = 0;
  int loudest_ = 0;
  std::unique_ptr<BreakMusic> music_ = std::make_unique<BreakMusic>(*this, clock_);
};

TEST_F(BreakMusicTest, ComesUpBehindASongMakesWayForTheNextAndGoesOnWhereItStopped) {
  Go(5s);
  EXPECT_EQ(loads_, 0) << "nobody has sung yet";
  Sing(10s);
  Go(200ms);
  EXPECT_EQ(Deck(1).state, DeckState::Playing);
  EXPECT_LT(Deck(1).volume, 20) << "it rises";
  Go(2s);
  const int full = mixer_.VolumeOf(1);
  EXPECT_EQ(Deck(1).volume, full);
  Deck(1).position = 42s;
  Sing(600ms);
  EXPECT_NEAR(Deck(1).volume, full / 2, 8) << "and falls";
  Sing(10s);
  EXPECT_EQ(Deck(1).state, DeckState::Paused);
  EXPECT_EQ(Deck(1).volume, full) << "the deck is the hands' again";
  Go(2500ms);
  EXPECT_EQ(Deck(1).state, DeckState::Playing);
  EXPECT_EQ(Deck(1).position, 42s);
  EXPECT_EQ(loads_, 1);
}

TEST_F(BreakMusicTest, ASongThatDoesNotComeLeavesTheMusicOnAndAnEndedTrackHasANext) {
  Sing(1s);
  Go(3s);
  Sing(600ms);
  loudest_ = 0;
  Go(100ms);
  EXPECT_LT(loudest_, mixer_.VolumeOf(1) * 3 / 4) << "no leap";
  Go(2s);
  EXPECT_EQ(Deck(1).volume, mixer_.VolumeOf(1));
  for (const char* next : {"b.mp3", "a.mp3", "b.mp3"}) {
    Deck(1).state = DeckState::Ended;
    Go(500ms);
    EXPECT_EQ(Deck(1).state, DeckState::Playing);
    EXPECT_EQ(Deck(1).filename, next);
  }
}

TEST_F(BreakMusicTest, WaitsForTheApplauseAndPassesOverWhatCannotBePlayed) {
  music_->Choose({.on = true, .pause = 5s});
  broken_ = "a.mp3";
  Sing(1s);
  Go(4900ms);
  EXPECT_EQ(loads_, 0);
  Go(600ms);
  EXPECT_EQ(Deck(1).filename, "b.mp3");
  EXPECT_EQ(Deck(1).state, DeckState::Playing);
  list_->SetCell(2, catalogue::track::kFilename, "a.mp3");
  Deck(1).state = DeckState::Ended;
  Go(20s);
  EXPECT_LT(loads_, 8) << "a list of nothing that plays is not gone through for ever";
}

TEST_F(BreakMusicTest, TakesTheDeckThatIsFreeAndNoneThatAHandHasLoaded) {
  Deck(1).state = DeckState::Stopped;
  Deck(1).filename = "prepared.mp3";
  mixer_.crossfader = -100;
  Sing(1s);
  Go(3s);
  EXPECT_EQ(Deck(1).filename, "prepared.mp3");
  EXPECT_EQ(Deck(2).state, DeckState::Playing);
  EXPECT_EQ(Deck(2).volume, 100) << "heard, though the crossfader is at the other end";

  mixer_.faders[0] = 50;
  SetVolume(2, mixer_.VolumeOf(2));
  Go(100ms);
  EXPECT_EQ(Deck(2).volume, 100) << "another fader was moved";
  mixer_.crossfader = -90;
  Go(100ms);
  EXPECT_EQ(Deck(2).volume, mixer_.VolumeOf(2)) << "the crossfader was";

  Deck(2).state = DeckState::Stopped;
  Deck(2).filename = "prepared too.mp3";
  Sing(1s);
  Go(3s);
  EXPECT_EQ(Deck(2).filename, "prepared too.mp3");
}

TEST_F(BreakMusicTest, IsSilentWhereOthersPlayAndAHandEndsItUntilTheNextSongIsOver) {
  Deck(2).state = DeckState::Playing;
  Sing(1s);
  Go(3s);
  EXPECT_EQ(loads_, 0) << "music is there";
  Deck(2).state = DeckState::Ended;
  automix_ = true;
  Sing(1s);
  Go(3s);
  EXPECT_EQ(loads_, 0) << "the automatic mixer brings its own";
  automix_ = false;
  stage_.singers = false;
  Sing(1s);
  Go(3s);
  EXPECT_EQ(loads_, 0) << "a song of the host's own on a night without singers";
  stage_.singers = true;
  Sing(1s);
  Go(1s);
  ASSERT_EQ(Deck(1).state, DeckState::Playing);
  Deck(1).state = DeckState::Paused;
  Go(20s);
  EXPECT_EQ(Deck(1).state, DeckState::Paused) << "by hand";
  EXPECT_EQ(Deck(1).volume, mixer_.VolumeOf(1));
}

TEST_F(BreakMusicTest, GivesWayToAHandThatLoadsItsDeckOrPlaysTheOther) {
  slow_ = true;
  Sing(1s);
  Go(1s);
  ASSERT_EQ(Deck(1).state, DeckState::Loading);
  Deck(1).filename = "by hand.mp3";
  Go(5s);
  EXPECT_EQ(Deck(1).filename, "by hand.mp3");
  EXPECT_EQ(loads_, 1);

  slow_ = false;
  Deck(1).state = DeckState::Ended;
  Sing(1s);
  Go(3s);
  ASSERT_EQ(Deck(1).state, DeckState::Playing);
  Deck(2).state = DeckState::Playing;
  mixer_.crossfader = 100;
  Go(1s);
  Deck(1).state = DeckState::Ended;
  loudest_ = 0;
  Go(5s);
  EXPECT_EQ(loads_, 2) << "somebody plays";
  EXPECT_EQ(loudest_, 0);
}

TEST_F(BreakMusicTest, SwitchedOffItFallsSilentAndAfterAFallItIsStillItsOwn) {
  Sing(1s);
  Go(3s);
  ASSERT_EQ(Deck(1).state, DeckState::Playing);
  const BreakInHand left = music_->InHand();
  music_ = std::make_unique<BreakMusic>(*this, clock_);
  music_->Choose({.on = true});
  music_->GoOn(left, view_);
  Sing(2s);
  EXPECT_EQ(Deck(1).state, DeckState::Paused) << "not under the next singer";
  Go(3s);
  EXPECT_EQ(Deck(1).state, DeckState::Playing);
  EXPECT_EQ(loads_, 1);
  music_->Choose({.on = false});
  Go(2s);
  EXPECT_EQ(Deck(1).state, DeckState::Paused);
}

}  // namespace
}  // namespace app
