// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
// The desk in the DJ's hand: bands, trim, listening ahead, what the head-phones hear.

#include "app/HeadphoneStation.h"
#include "app/sound/DeckTone.h"
#include "app/tests/Evening.h"

namespace app::testing {
namespace {

using namespace std::chrono_literals;
using decks::kKilled;
using decks::Tone;

class DeskTest : public Evening {
 protected:
  /// The newest stream that plays on a device; 0 for none.
  [[nodiscard]] decks::StreamHandle Newest(int device) {
    decks::StreamHandle newest = 0;
    for (decks::StreamHandle stream = 1; stream < 100; ++stream) {
      if (engine_.DeviceOf(stream) == device) newest = stream;
    }
    return newest;
  }
  /// Of deck 1, the only one that is loaded.
  [[nodiscard]] decks::StreamHandle Hall() { return Newest(1); }
  [[nodiscard]] decks::StreamHandle Phones() { return Newest(2); }
  [[nodiscard]] Tone Heard() { return desk_.ToneOf(Hall()); }
  app::Deck& One() { return station_->Decks()[1]; }
  /// Head-phones on the second device; with a pair their stream is kept.
  void WithHeadphones(const char* pair) {
    Store("Devices", "Device3", "2");
    Store("Speakers", "Speaker3", pair);
    Store("Speakerchoice", "Speaker3", pair == std::string_view("0") ? "False" : "True");
    StartUp();
    Load(1, "a.mp3");
  }
  void Listen(int level) {
    One().Adjust(&DeckStation::SetPreVolume, level);
    Settle();
  }
  [[nodiscard]] double Seconds(decks::StreamHandle stream) {
    return static_cast<double>(engine_.Heard(stream).frame.value) / 44100;
  }
};

TEST_F(DeskTest, ABandIsStoredAndHoldsForTheNextFileToo) {
  StartUp();
  One().SetTone(ToneBand::Bass, -6);
  Load(1, "a.mp3");
  EXPECT_EQ(Heard(), (Tone{{-6}, {0}, {0}}));
  One().SetTone(ToneBand::High, 4);
  One().SetTone(ToneBand::Mid, 99);
  Settle();
  EXPECT_EQ(Heard(), (Tone{{-6}, {12}, {4}}));
  EXPECT_EQ(Stored("Eq1", "Bass"), "-6");
  EXPECT_EQ(Stored("Eq1", "Mid"), "12");
  EXPECT_EQ(Stored("Eq1", "High"), "4");
  Load(1, "b.mp3");
  EXPECT_EQ(Heard(), (Tone{{-6}, {12}, {4}}));
  EXPECT_EQ(Deck(1).tone[PlaceOf(ToneBand::Mid)], 12);
  EXPECT_EQ(Deck(2).tone[PlaceOf(ToneBand::Mid)], 0) << "each deck has its own";
}

TEST_F(DeskTest, AKilledBandComesBackToWhereItWasTurnedMeanwhile) {
  StartUp();
  Load(1, "a.mp3");
  One().Kill(ToneBand::Bass, true);
  One().SetTone(ToneBand::Bass, 3);
  Settle();
  EXPECT_EQ(Heard(), (Tone{kKilled, {0}, {0}}));
  EXPECT_TRUE(Deck(1).killed[PlaceOf(ToneBand::Bass)]);
  One().Kill(ToneBand::Bass, false);
  Settle();
  EXPECT_EQ(Heard(), (Tone{{3}, {0}, {0}}));
}

TEST_F(DeskTest, StartUpBringsBackWhatWasStored) {
  Store("Eq1", "High", "-12");
  Store("Eq1", "Bass", "-900");
  Store("Eq1", "Mid", "loud");
  Store("Player1", "Gain", "75");
  Store("Player2", "Gain", "what");
  StartUp();
  Load(1, "a.mp3");
  EXPECT_EQ(Heard(), (Tone{{kLeastTone}, {0}, {-12}}));
  EXPECT_EQ(engine_.GainOf(Hall()).value, 6);
  EXPECT_EQ(Deck(2).trim, kMiddleTrim);
}

TEST_F(DeskTest, TheTrimAddsToTheTracksGainAndStaysForTheNext) {
  StartUp();
  Load(1, "a.mp3");
  Play(1);
  const float before = Deck(1).left_db;
  One().Do(&DeckStation::SetGain, support::Decibels{-5});
  One().SetTrim(100);
  Settle();
  EXPECT_EQ(engine_.GainOf(Hall()).value, 7);
  EXPECT_EQ(Deck(1).gain.value, -5) << "the track's own";
  EXPECT_NEAR(Deck(1).left_db, before + 7, 0.01F);
  EXPECT_EQ(Stored("Player1", "Gain"), "100");
  Load(1, "b.mp3");
  EXPECT_EQ(engine_.GainOf(Hall()).value, 12);
}

TEST_F(DeskTest, ADeckThatStandsIsHeardInTheHeadphonesAlone) {
  for (const char* pair : {"0", "2"}) {
    SCOPED_TRACE(pair);
    station_.reset();
    WithHeadphones(pair);
    One().Do(&DeckStation::Seek, std::chrono::microseconds(20s));
    Settle();
    Listen(70);
    EXPECT_TRUE(Deck(1).listening);
    Advance(5s);
    EXPECT_NEAR(Seconds(Phones()), 25, 0.1);
    EXPECT_EQ(engine_.VolumeOf(Phones()), 70);
    EXPECT_EQ(Deck(1).state, State::Stopped);
    EXPECT_EQ(Deck(1).position, 20s) << "the hall stands";
    Listen(0);
    Advance(1s);
    EXPECT_FALSE(engine_.Heard(Phones()).playing);
    Listen(50);
    Advance(1s);
    EXPECT_NEAR(Seconds(Phones()), 21, 0.1) << "again from where the deck stands";
    Play(1);
    Advance(1s);
    EXPECT_FALSE(Deck(1).listening);
    EXPECT_EQ(Deck(1).pre_volume, 0) << "each start begins unheard";
    EXPECT_NEAR(Seconds(Phones()), 21, 0.1) << "now with the hall";
  }
}

TEST_F(DeskTest, ListeningAheadEndsWithTheFileAndWithTheNextOne) {
  WithHeadphones("2");
  Listen(70);
  Advance(101s);
  EXPECT_FALSE(Deck(1).listening) << "it came to its end";
  EXPECT_EQ(Deck(1).pre_volume, 0);
  Listen(70);
  EXPECT_TRUE(Deck(1).listening);
  Load(1, "b.mp3");
  EXPECT_FALSE(Deck(1).listening);
  EXPECT_EQ(Deck(1).pre_volume, 0);
}

TEST_F(DeskTest, APausedDeckIsListenedToAndGoesOnWhereItWas) {
  WithHeadphones("2");
  Play(1);
  Advance(10s);
  One().Do(&DeckStation::Pause);
  Settle();
  Listen(60);
  Advance(5s);
  EXPECT_NEAR(Seconds(Phones()), 15, 0.1);
  EXPECT_EQ(Deck(1).position, 10s);
  One().Do(&DeckStation::Resume);
  Settle();
  Advance(1s);
  EXPECT_EQ(Deck(1).position, 11s);
  EXPECT_NEAR(Seconds(Phones()), 11, 0.1);
  EXPECT_EQ(engine_.VolumeOf(Phones()), 60) << "whoever listened goes on listening";
}

TEST_F(DeskTest, NothingIsListenedToWithoutHeadphones) {
  StartUp();
  Load(1, "a.mp3");
  Listen(70);
  EXPECT_FALSE(Deck(1).listening);
}

TEST_F(DeskTest, TheHeadphonesMixIsStoredAndTold) {
  Store("Devices", "Device3", "1");
  Store("Speakers", "Speaker1", "1");
  Store("Speakerchoice", "Speaker1", "True");
  Store("Speakers", "Speaker3", "2");
  Store("Speakerchoice", "Speaker3", "True");
  Store("Mixer", "HeadphoneMix", "25");
  StartUp();
  EXPECT_EQ(desk_.lines.mix, (decks::HeadphoneMix{0.25F, false, 1}));
  EXPECT_TRUE(station_->View().headphones.hear_hall);
  station_->Headphones().SetProgramme(130);
  station_->Headphones().SetSplit(true);
  station_->Headphones().SetLevel(40);
  Settle();
  EXPECT_EQ(desk_.lines.mix, (decks::HeadphoneMix{1, true, 0.4F}));
  EXPECT_EQ(station_->View().headphones.mix, desk_.lines.mix);
  EXPECT_EQ(Stored("Mixer", "HeadphoneMix"), "100");
  EXPECT_EQ(Stored("Mixer", "HeadphoneSplit"), "True");
  EXPECT_EQ(Stored("Mixer", "HeadphoneLevel"), "40");
  station_->Outputs().Set(3, {1, 1});
  Settle();
  workers_.RunAll();
  Settle();
  EXPECT_FALSE(station_->View().headphones.hear_hall) << "they are the hall";
}

TEST_F(DeskTest, TheMeterStandsInTheView) {
  desk_.reading = {{3}, {-0.5F}, {-9}, {-11}};
  StartUp();
  EXPECT_TRUE(station_->View().has_meter);
  EXPECT_EQ(station_->View().master.short_term.value, -11);
}

}  // namespace
}  // namespace app::testing
