// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <fstream>

#include "app/WorkstationView.h"
#include "app/tests/Evening.h"
#include "karaoke/testing/DiscBytes.h"
#include "karaoke/testing/FakeDiscImages.h"
#include "karaoke/testing/MidiBytes.h"
#include "karaoke/testing/RecordingSynthesiser.h"
#include "support/testing/TemporaryFolder.h"

namespace app {
namespace {

using namespace std::chrono_literals;

/// An evening with a disc image beside a.mp3, b.mp3 and d.mp3, as many seconds long as 1, 2 and 4.
class DiscsTest : public testing::Evening {
 protected:
  DiscsTest() {
    engine_.AddFile("d.mp3", {.seconds = 100});
    int seconds = 1;
    for (const char* song : {"a.mp3", "b.mp3", "d.mp3"}) {
      beside_.beside[song] = karaoke::testing::DiscBytes().Clear(3).Until(seconds).Content();
      seconds *= 2;
    }
    images_ = &beside_;
    const auto song = karaoke::testing::UsualHead().Text(480, "/la").Event(0, {0x90, 60, 100}).End(48000);
    std::ofstream(songs_.Path() / "a.kar", std::ios::binary) << karaoke::testing::FileBytes({song});
    StartUp(&synthesisers_);
  }
  [[nodiscard]] const SongView& Singing() { return station_->Songs().View(); }
  /// The song whose picture the singers see.
  [[nodiscard]] std::string Shown() {
    Settle();
    const auto& image = Singing().disc.image;
    if (image == nullptr) return "";
    return image->Length() == 1s ? "a.mp3" : image->Length() == 2s ? "b.mp3" : "d.mp3";
  }
  void Sing(const std::string& song) {
    station_->Songs().Play({song.ends_with("kar") ? (songs_.Path() / song).string() : song, "", ""});
    Answer();
  }
  void Answer() {
    Settle();
    workers_.RunAll();
    Settle();
  }
  void PlayOn(int deck, const std::string& song) {
    Load(deck, song);
    Play(deck);
    Answer();
  }
  [[nodiscard]] std::chrono::microseconds Heard() { return Singing().disc.place.HeardAt(clock_.Now()); }

  karaoke::testing::FakeDiscImages beside_;
  karaoke::testing::RecordingSynthesisers synthesisers_;
  support::testing::TemporaryFolder songs_;
};

TEST_F(DiscsTest, ThePictureFollowsWhatIsHeardOfItsSong) {
  Sing("a.mp3");
  EXPECT_EQ(Shown(), "a.mp3");
  Advance(2s);
  EXPECT_EQ(Heard(), 2s);
  clock_.Advance(30ms);
  EXPECT_EQ(Heard(), 2030ms) << "the window tells time between two ticks";
  station_->Songs().SetTempo(10);
  Settle();
  station_->Songs().Seek(50s);
  Settle();
  clock_.Advance(50ms);
  EXPECT_EQ(Heard(), 50055ms);
  station_->Songs().Pause();
  EXPECT_EQ(Shown(), "a.mp3");
  clock_.Advance(50ms);
  EXPECT_EQ(Singing().disc.place.speed, 0);
}

TEST_F(DiscsTest, TheDeckThatPlaysAndTheThirdDeckGoFirst) {
  Load(2, "b.mp3");
  Answer();
  EXPECT_EQ(Shown(), "") << "nothing plays yet";
  Play(2);
  EXPECT_EQ(Shown(), "b.mp3");
  PlayOn(1, "a.mp3");
  EXPECT_EQ(Shown(), "b.mp3") << "the picture does not jump in a mix";
  station_->Decks()[2].Do(&DeckStation::Stop);
  EXPECT_EQ(Shown(), "a.mp3");
  Sing("d.mp3");
  EXPECT_EQ(Shown(), "d.mp3");
  station_->Songs().Pause();
  EXPECT_EQ(Shown(), "a.mp3");
  station_->Decks()[1].Do(&DeckStation::Stop);
  EXPECT_EQ(Shown(), "d.mp3") << "what stands on the third deck is better than nothing";
  station_->Songs().Stop();
  EXPECT_EQ(Shown(), "") << "its title card tells who is next";
  PlayOn(4, "a.mp3");
  EXPECT_EQ(Shown(), "") << "that deck is in the head-phones alone";
}

TEST_F(DiscsTest, AMidiSongThatPlaysGoesBefore) {
  PlayOn(1, "a.mp3");
  Sing("a.kar");
  EXPECT_EQ(Singing().state, SongView::State::Playing);
  EXPECT_EQ(Shown(), "");
  station_->Songs().Pause();
  EXPECT_EQ(Shown(), "a.mp3");
}

TEST_F(DiscsTest, ThePictureOfASongThatWentIsNotShown) {
  Load(1, "a.mp3");
  Play(1);
  Load(1, "c.flac");
  Play(1);
  Answer();
  EXPECT_EQ(Deck(1).filename, "c.flac");
  EXPECT_EQ(Shown(), "");
  EXPECT_EQ(beside_.asked, 2);
}

TEST_F(DiscsTest, ThePictureStaysWhileTheNextSongIsMadeReady) {
  Sing("a.mp3");
  Advance(2s);
  engine_.HoldPreparing();
  for (const char* next : {"b.mp3", "missing.mp3", "d.mp3"}) {
    Sing(next);
    EXPECT_EQ(Shown(), "a.mp3") << next;
    EXPECT_EQ(Singing().disc.place.speed, 1) << next;
    if (std::string(next) == "d.mp3") break;
    engine_.RemoveFile(next);
    while (engine_.FinishPreparing()) Settle();
    EXPECT_EQ(Shown(), "a.mp3") << "it cannot be played";
  }
  const int asked = beside_.asked;
  while (engine_.FinishPreparing()) Settle();
  EXPECT_EQ(Shown(), "d.mp3") << "its picture was ready";
  EXPECT_EQ(beside_.asked, asked);
}

TEST_F(DiscsTest, AnImageThatCannotBeShownIsToldAndTheSongPlays) {
  beside_.beside["a.mp3"] = std::vector<std::uint8_t>(48);
  beside_.beside["b.mp3"] = std::vector<std::uint8_t>(karaoke::kLongestDiscImage + 1);
  PlayOn(1, "a.mp3");
  EXPECT_EQ(station_->View().notice, say_(support::Sentence::DiscImageWithoutGraphics, {"a.mp3"}));
  PlayOn(2, "b.mp3");
  EXPECT_EQ(station_->View().notice, say_(support::Sentence::DiscImageTooLong, {"b.mp3"}));
  EXPECT_EQ(Deck(2).state, testing::State::Playing);
  PlayOn(2, "c.flac");
  EXPECT_EQ(station_->View().notice, say_(support::Sentence::DiscImageTooLong, {"b.mp3"}))
      << "most songs have none";
}

TEST_F(DiscsTest, AnImageThatComesAfterTheEndHarmsNothing) {
  Load(1, "a.mp3");
  Settle();
  station_->ShutDown();
  workers_.RunAll();
  EXPECT_EQ(beside_.asked, 0);
}

}  // namespace
}  // namespace app
