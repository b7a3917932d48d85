// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
// A song that a synthesiser plays, as lamps and visualisers follow it beside the decks.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>

#include "app/WorkstationView.h"
#include "app/tests/Evening.h"
#include "karaoke/testing/MidiBytes.h"
#include "karaoke/testing/RecordingSynthesiser.h"
#include "lightorgan/testing/RecordingBoards.h"
#include "support/testing/TemporaryFolder.h"

namespace app {
namespace {

using namespace std::chrono_literals;

constexpr int kFull = 32767;

class HeardSongTest : public testing::Evening {
 protected:
  HeardSongTest() {
    // 150 beats a minute, and from the eighth one on 100.
    const auto song =
        karaoke::testing::TrackBytes().Signature(4, 2).Tempo(0, 400'000).Tempo(8 * 480, 600'000);
    WriteSong("a.kar", song);
    WriteSong("b.kar", song);
    engine_.AddFile("loud.mp3", {.seconds = 100, .left_peak = kFull, .right_peak = kFull});
    engine_.AddFile("soft.mp3", {.seconds = 100, .left_peak = kFull / 4, .right_peak = kFull / 4});
    boards_ = &lamps_;
    Store("Setup", "UseK8000", "True");
    StartUp(&synthesisers_);
  }
  ~HeardSongTest() override { station_.reset(); }  // before the boards, which it puts out
  void WriteSong(const char* name, karaoke::testing::TrackBytes track) {
    std::ofstream(songs_.Path() / name, std::ios::binary)
        << karaoke::testing::FileBytes({track.Event(480 * 12, {0x90, 60, 100}).End()});
  }
  void PlaySong(const char* name = "a.kar") {
    station_->Songs().Play({(songs_.Path() / name).string(), "", ""});
    Settle();
    workers_.RunAll();
    Settle();
  }
  void PlayDeck(int deck, const std::string& file) {
    Load(deck, file);
    Play(deck);
  }
  void Run(std::chrono::milliseconds time) {
    for (auto at = 0ms; at < time; at += 10ms) Advance(10ms);
  }
  [[nodiscard]] HeardFrom Heard(std::chrono::milliseconds after = 20ms) {
    Run(after);
    return station_->View().sound.from;
  }
  void Organ(lightorgan::IoMode mode) {
    station_->Organ().Ask([mode](lightorgan::LightOrgan& organ) { organ.cmdK8000(static_cast<int>(mode)); });
    Settle();
  }
  /// Where in the song, in ms, the lamps go on within a time.
  [[nodiscard]] std::vector<double> Flashes(std::chrono::milliseconds within) {
    std::vector<double> flashes;
    bool lit = lamps_.lit.any();
    for (auto at = 0ms; at < within; at += 10ms) {
      Advance(10ms);
      const bool now = lamps_.lit.any();
      if (now && !lit) flashes.push_back(double(station_->View().song.position.count()) / 1000);
      lit = now;
    }
    return flashes;
  }

  support::testing::TemporaryFolder songs_;
  karaoke::testing::RecordingSynthesisers synthesisers_;
  lightorgan::testing::RecordingBoards lamps_;
};

TEST_F(HeardSongTest, ASongThatPlaysAloneIsHeardUntilItStandsStill) {
  EXPECT_EQ(Heard(), HeardFrom::Nothing);
  SongStation& songs = station_->Songs();
  const struct {
    const char* what;
    std::function<void()> still;
    std::function<void()> again;
  } ways[] = {
      {"pause", [&] { songs.Pause(); }, [&] { songs.Resume(); }},
      {"stop", [&] { songs.Stop(); }, [&] { songs.Resume(); }},
      {"no volume", [&] { songs.SetVolume(0); }, [&] { songs.SetVolume(80); }},
      {"the end", [&] { Run(13s); }, [&] { songs.Resume(); }},
      {"another song", [&] { songs.Stop(); }, [&] { PlaySong("b.kar"); }},
  };
  PlaySong();
  EXPECT_EQ(Heard(), HeardFrom::Song);
  for (const auto& way : ways) {
    way.still();
    EXPECT_EQ(Heard(), HeardFrom::Nothing) << way.what;
    EXPECT_EQ(station_->View().sound.spectrum, music::Spectrum{}) << way.what;
    way.again();
    EXPECT_EQ(Heard(), HeardFrom::Song) << way.what;
    EXPECT_GT(*std::max_element(station_->View().sound.samples.begin(), station_->View().sound.samples.end()),
              0.37)
        << way.what;
  }
}

TEST_F(HeardSongTest, TheLouderOneOfDeckAndSongIsHeardBehindItsFader) {
  PlaySong();
  PlayDeck(1, "loud.mp3");
  EXPECT_EQ(Heard(100ms), HeardFrom::Deck1) << "twice as loud";
  for (const int volume : {70, 50, 40, 30, 10}) {
    station_->Decks()[1].Adjust(&DeckStation::SetVolume, volume);
    EXPECT_EQ(Heard(1s), volume >= 40 ? HeardFrom::Deck1 : HeardFrom::Song) << volume;
  }
  station_->Decks()[1].Adjust(&DeckStation::SetVolume, 60);
  EXPECT_EQ(Heard(1s), HeardFrom::Song) << "hardly louder";
  station_->Songs().SetVolume(20);
  EXPECT_EQ(Heard(1s), HeardFrom::Deck1);
  station_->Decks()[1].Do(&DeckStation::Pause);
  EXPECT_EQ(Heard(), HeardFrom::Song);
}

TEST_F(HeardSongTest, TheMasterVolumeSilencesNoLamps) {
  station_->Outputs().SetMainVolume(95);
  PlayDeck(1, "soft.mp3");
  EXPECT_EQ(Heard(), HeardFrom::Deck1);
  PlaySong();
  EXPECT_EQ(Heard(), HeardFrom::Song);
}

TEST_F(HeardSongTest, LampsFlashOnTheBeatsOfItsTempoMapAtTheTempoOfTheSinger) {
  Organ(lightorgan::IoMode::Beat);
  PlaySong();
  station_->Songs().SetTempo(-20);
  const std::vector<double> written = {400, 800, 1200, 1600, 2000, 2400, 2800, 3200, 3800, 4400, 5000};
  EXPECT_THAT(Flashes(6500ms), ::testing::Pointwise(::testing::DoubleNear(8), written));
  EXPECT_EQ(station_->Organ().View().from, HeardFrom::Song);
  EXPECT_NEAR(station_->Organ().View().bpm, 80, 1e-6);
  EXPECT_EQ(station_->Organ().View().lamps.beat_from, lightorgan::BeatFrom::Grid);
}

TEST_F(HeardSongTest, EachSideOfItHasItsOwnLamps) {
  Organ(lightorgan::IoMode::Stereo);
  PlaySong();
  Run(300ms);
  EXPECT_TRUE(lamps_.lit[2]) << "1 kHz of the left side";
  station_->Songs().Pause();
  Run(1s);
  EXPECT_TRUE(lamps_.lit.none());
}

TEST_F(HeardSongTest, ASongWithoutWordsIsToldOf) {
  const std::string tune =
      karaoke::testing::FileBytes({karaoke::testing::UsualHead().Event(480, {0x90, 60, 99})});
  const std::string sung =
      karaoke::testing::FileBytes({karaoke::testing::UsualHead().Name("Words").Text(9, "la")});
  constexpr std::size_t kBehindTheHeader = 14;
  const std::string stray = "NOTE" + karaoke::testing::Word32(2) + "@T";
  const struct {
    std::string bytes, note;
  } songs[] = {{tune, say_(support::Sentence::NoWords)},
               {std::string(tune).insert(kBehindTheHeader, stray), say_(support::Sentence::WordsInNoTrack)},
               {sung, ""}};
  for (const auto& song : songs) {
    std::ofstream(songs_.Path() / "c.kar", std::ios::binary) << song.bytes;
    PlaySong("c.kar");
    EXPECT_EQ(station_->Songs().View().note, song.note);
  }
}

}  // namespace
}  // namespace app
