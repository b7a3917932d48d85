// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <QComboBox>
#include <QFileDialog>
#include <QItemSelectionModel>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSlider>
#include <QTableView>

#include "app/WorkstationView.h"
#include "ui/tests/Booth.h"

namespace ui::testing {
namespace {

QUrl File(const char* path) {
  return QUrl::fromLocalFile(QString::fromUtf8(path));
}

class frmMainTest : public Booth {
 protected:
  frmMainTest() { Open(); }
};

// Loading

TEST_F(frmMainTest, ADoubleClickLoadsTheFirstFreeDeckAndThenTheOther) {
  DoubleClickRow(1);
  EXPECT_EQ(Deck(1).filename, "one.mp3");
  EXPECT_EQ(TextOf("deck1Title"), QStringLiteral("First Light"));
  EXPECT_EQ(TextOf("deck1Artist"), QStringLiteral("Anna Vogel"));
  DoubleClickRow(2);
  EXPECT_EQ(Deck(1).filename, "one.mp3");
  EXPECT_EQ(Deck(2).filename, "two.ogg");
}

TEST_F(frmMainTest, EnterLoadsTheRowUnderTheCursor) {
  ChooseRow(2);
  QTest::keyClick(&Find<QTableView>("Catalogue"), Qt::Key_Return);
  Settle();
  EXPECT_EQ(Deck(1).filename, "two.ogg");
}

TEST_F(frmMainTest, NoWayOfLoadingEndsWhatPlays) {
  LoadAndPlay(1, 1);
  LoadAndPlay(2, 2);
  DoubleClickRow(3);
  EXPECT_TRUE(TextOf("Message").startsWith(QStringLiteral("Both decks are playing")));
  Press(Qt::Key_F4);
  EXPECT_TRUE(TextOf("Message").startsWith(QStringLiteral("Deck 1 is playing")));
  DropRow(3, "deck2");
  EXPECT_TRUE(TextOf("Message").startsWith(QStringLiteral("Deck 2 is playing")));
  Click("LoadOnDeck1");
  EXPECT_EQ(Deck(1).filename, "one.mp3");
  EXPECT_EQ(Deck(2).filename, "two.ogg");
  EXPECT_EQ(Deck(1).state, State::Playing);
}

TEST_F(frmMainTest, KeysButtonsAndDragsLoadANamedDeck) {
  ChooseRow(3);
  Press(Qt::Key_F8);
  EXPECT_EQ(Deck(2).filename, "three.flac");
  DropRow(1, "deck2");
  EXPECT_EQ(Deck(2).filename, "one.mp3");
  ChooseRow(2);
  Click("LoadOnDeck2");
  EXPECT_EQ(Deck(2).filename, "two.ogg");
  EXPECT_EQ(Deck(1).state, State::Empty);
}

TEST_F(frmMainTest, WhatTheKeysWouldLoadIsSeenFromTheStart) {
  QApplication::setActiveWindow(window.get());
  auto& grid = Find<QTableView>("Catalogue");
  ASSERT_TRUE(grid.hasFocus());
  EXPECT_TRUE(grid.selectionModel()->isRowSelected(0));
  Press(Qt::Key_F4);
  EXPECT_EQ(Deck(1).filename, "one.mp3");
}

TEST_F(frmMainTest, WithoutAChosenRowLoadingSaysSo) {
  Music().Clear();
  Settle();
  Press(Qt::Key_F4);
  EXPECT_EQ(TextOf("Message"), QStringLiteral("No track is chosen."));
}

TEST_F(frmMainTest, AFileThatCannotBePlayedIsToldInTheTitleArea) {
  const std::string_view cells[] = {"Nobody", "Broken", "03:00", "broken.mp3"};
  Music().AddRow(cells);
  Settle();
  DropRow(5, "deck1");
  EXPECT_EQ(Deck(1).state, State::Empty);
  EXPECT_FALSE(Deck(1).message.empty());
  EXPECT_EQ(TextOf("deck1Artist"), QString::fromStdString(Deck(1).message));
  EXPECT_FALSE(Find<QPushButton>("deck1Play").isEnabled());
}

// Playing

TEST_F(frmMainTest, PlayPauseAndStopFollowTheirButtons) {
  LoadAndPlay(1, 1);
  EXPECT_EQ(Deck(1).state, State::Playing);
  EXPECT_EQ(Find<QPushButton>("deck1Play").accessibleName(), QStringLiteral("Pause deck 1"));
  Click("deck1Play");
  EXPECT_EQ(Deck(1).state, State::Paused);
  EXPECT_EQ(TextOf("deck1State"), QStringLiteral("Paused"));
  Click("deck1Play");
  EXPECT_EQ(Deck(1).state, State::Playing);
  Click("deck1Stop");
  EXPECT_EQ(Deck(1).state, State::Stopped);
}

TEST_F(frmMainTest, TheFunctionKeysPlayBothDecks) {
  DoubleClickRow(1);
  DoubleClickRow(2);
  Press(Qt::Key_F5);
  EXPECT_EQ(Deck(1).state, State::Stopped);
  EXPECT_EQ(Deck(2).state, State::Playing);
  Press(Qt::Key_F1);
  EXPECT_EQ(Deck(1).state, State::Playing);
  Press(Qt::Key_F3);
  EXPECT_EQ(Deck(1).state, State::Stopped);
  Advance(10s);
  Press(Qt::Key_F6);
  EXPECT_LT(Deck(2).position, 1s);
}

TEST_F(frmMainTest, AKeyThatIsHeldDownActsOnce) {
  LoadAndPlay(1, 1);
  for (int i = 0; i < 4; ++i) {
    QTest::simulateEvent(window.get(), true, Qt::Key_F1, Qt::NoModifier, {}, i > 0);
    Settle();
  }
  EXPECT_EQ(Deck(1).state, State::Paused);
}

TEST_F(frmMainTest, TheDecksStayInReachWhileFilesAreLookedFor) {
  DoubleClickRow(1);
  ChooseInMenu("MusicAdd", "MusicAddFiles");
  auto& dialog = Find<QFileDialog>("AddFilesDialog");
  EXPECT_FALSE(dialog.isModal());
  QTest::keyClick(&dialog, Qt::Key_F1);
  Settle();
  EXPECT_EQ(Deck(1).state, State::Playing);
  Click("deck1Stop");
  EXPECT_EQ(Deck(1).state, State::Stopped);
}

TEST_F(frmMainTest, TimesCountAsHeard) {
  LoadAndPlay(1, 1);
  Advance(50s);
  EXPECT_EQ(TextOf("deck1Remaining"), QStringLiteral("−02:09"));
  EXPECT_EQ(TextOf("deck1Elapsed"), QStringLiteral("00:50 / 03:00"));
  EXPECT_NEAR(Find<QSlider>("deck1Overview").value(), 50'000, 200);
}

TEST_F(frmMainTest, AClickInTheOverviewSeeks) {
  DropRow(1, "deck2");
  auto& overview = Find<QSlider>("deck2Overview");
  QTest::mouseClick(&overview, Qt::LeftButton, {}, QPoint(overview.width() / 2, 10));
  Settle();
  EXPECT_NEAR(double(Deck(2).position / 1ms), 90'000, 500);
  Click("deck2ToStart");
  EXPECT_LT(Deck(2).position, 1s);
}

TEST_F(frmMainTest, APlayedOutDeckPlaysAgainFromItsStart) {
  LoadAndPlay(1, 1);
  Advance(181s);
  EXPECT_EQ(TextOf("deck1State"), QStringLiteral("Ended"));
  Click("deck1Play");
  EXPECT_EQ(Deck(1).state, State::Playing);
  EXPECT_LT(Deck(1).position, 1s);
}

TEST_F(frmMainTest, TheTempoSliderMovesTempoAndBpmAndReturns) {
  LoadAndPlay(1, 1);
  Find<QSlider>("deck1Tempo").setValue(500);
  Settle();
  EXPECT_FLOAT_EQ(Deck(1).tempo_percent, 5);
  EXPECT_EQ(TextOf("deck1TempoValue"), QStringLiteral("+5.00 %"));
  EXPECT_EQ(TextOf("deck1Bpm"), QStringLiteral("134.40 BPM"));
  Click("deck1TempoReset");
  EXPECT_FLOAT_EQ(Deck(1).tempo_percent, 0);
  EXPECT_EQ(Find<QSlider>("deck1Tempo").value(), 0);
}

TEST_F(frmMainTest, ATempoThatSomethingElseSetMovesTheSlider) {
  LoadAndPlay(1, 1);
  station->Decks()[1].SetTempo(-3);
  Settle();
  EXPECT_EQ(Find<QSlider>("deck1Tempo").value(), -300);
  EXPECT_FLOAT_EQ(Deck(1).tempo_percent, -3);
}

// Mixer

TEST_F(frmMainTest, FadersAndCrossfaderGiveTheVolumes) {
  Find<QSlider>("deck1Volume").setValue(60);
  Settle();
  EXPECT_EQ(Deck(1).volume, 60);
  EXPECT_EQ(TextOf("deck1VolumeValue"), QStringLiteral("60 %"));
  Find<QSlider>("Crossfader").setValue(50);
  Settle();
  EXPECT_EQ(Deck(1).volume, 30);
  EXPECT_EQ(Deck(2).volume, 100);
  Choose("CrossfaderCurve", 1);
  EXPECT_EQ(Deck(1).volume, 60);
}

TEST_F(frmMainTest, TheCurveIsKept) {
  Choose("CrossfaderCurve", 2);
  EXPECT_EQ(settings.Get("TLVG", "Mixer", "CrossfaderCurve", ""), "2");
  window.reset();
  station->Decks()[1].Adjust(&app::DeckStation::SetVolume, 100);
  Open();
  EXPECT_EQ(Find<QComboBox>("CrossfaderCurve").currentIndex(), 2);
  EXPECT_EQ(Deck(1).volume, 71) << "what the mixer shows is what the decks have";
}

TEST_F(frmMainTest, KeysMoveTheCrossfader) {
  Press(Qt::Key_Left, Qt::ControlModifier);
  EXPECT_EQ(Find<QSlider>("Crossfader").value(), -5);
  EXPECT_EQ(Deck(2).volume, 95);
}

TEST_F(frmMainTest, TheMeterShowsWhatThePlayingDeckGives) {
  LoadAndPlay(1, 1);
  EXPECT_EQ(TextOf("deck1Peak"), QStringLiteral("−6 dB"));
  EXPECT_EQ(TextOf("deck2Peak"), QStringLiteral("−∞ dB"));
}

TEST_F(frmMainTest, ListeningNeedsADeviceAndAPlayingDeck) {
  LoadAndPlay(1, 1);
  EXPECT_FALSE(Find<QPushButton>("deck1Cue").isEnabled());
  Choose("Device3", 2);
  EXPECT_TRUE(Find<QPushButton>("deck1Cue").isEnabled());
  EXPECT_FALSE(Find<QPushButton>("deck2Cue").isEnabled());
  Click("deck1Cue");
  EXPECT_EQ(Deck(1).pre_volume, 80);
  Click("deck1Cue");
  EXPECT_EQ(Deck(1).pre_volume, 0);
}

// Catalogue

TEST_F(frmMainTest, DroppedFilesAreAddedAndTheRefusedOnesListed) {
  tags.AddFile("/m/new.mp3");
  DropFiles({File("/m/new.mp3"), File("/m/letter.txt")}, "MusicPage");
  EXPECT_EQ(Music().Rows(), 5);
  EXPECT_EQ(TextOf("TrackCount"), QStringLiteral("5 tracks"));
  EXPECT_EQ(TextOf("AddProgress"), QStringLiteral("1 track added."));
  EXPECT_TRUE(Find<QPlainTextEdit>("Refused").isVisible());
  EXPECT_TRUE(Find<QPlainTextEdit>("Refused").toPlainText().contains(QStringLiteral("letter.txt")));
  Click("RefusedClose");
  EXPECT_FALSE(Find<QPlainTextEdit>("Refused").isVisible());
}

TEST_F(frmMainTest, AFileThatIsThereAlreadyIsNoSecondRowAndLoadsAllTheSame) {
  tags.AddFile("/m/new.mp3");
  engine.AddFile("/m/new.mp3");
  DropFiles({File("/m/new.mp3")}, "MusicPage");
  DropFiles({File("/m/new.mp3")}, "deck1");
  EXPECT_EQ(Music().Rows(), 5);
  EXPECT_EQ(TextOf("AddProgress"), QStringLiteral("No track added. 1 was in the list already."));
  EXPECT_EQ(Deck(1).filename, "/m/new.mp3");
}

TEST_F(frmMainTest, WhileFilesAreAnalysedTheirNumberIsTold) {
  tags.AddFile("/m/a.mp3");
  BeginDroppingFiles({File("/m/a.mp3"), File("/m/b.mp3"), File("/m/c.mp3")}, "MusicPage");
  EXPECT_TRUE(TextOf("AddProgress").endsWith(QStringLiteral(" of 3…")));
}

TEST_F(frmMainTest, AFileDroppedOnADeckIsAddedAndLoaded) {
  tags.AddFile("/m/new.mp3");
  engine.AddFile("/m/new.mp3");
  DropFiles({File("/m/new.mp3")}, "deck2");
  EXPECT_EQ(Deck(2).filename, "/m/new.mp3");
  EXPECT_EQ(Music().Rows(), 5);
}

TEST_F(frmMainTest, AFileDroppedOnAPlayingDeckIsAddedOnly) {
  tags.AddFile("/m/new.mp3");
  LoadAndPlay(1, 1);
  DropFiles({File("/m/new.mp3")}, "deck1");
  EXPECT_EQ(Deck(1).filename, "one.mp3");
  EXPECT_EQ(Deck(1).state, State::Playing);
  EXPECT_EQ(Music().Rows(), 5);
}

TEST_F(frmMainTest, WhatIsNoLocalFileIsNotTaken) {
  DropFiles({QUrl(QStringLiteral("https://example.org/a.mp3"))}, "MusicPage");
  DropFiles({QUrl(QStringLiteral("https://example.org/a.mp3"))}, "deck1");
  EXPECT_EQ(Music().Rows(), 4);
  EXPECT_EQ(Deck(1).state, State::Empty);
}

TEST_F(frmMainTest, AnEmptyCatalogueTellsHowToFillIt) {
  Music().Clear();
  Settle();
  EXPECT_TRUE(Find<QLabel>("EmptyCatalogue").isVisible());
  EXPECT_FALSE(Find<QTableView>("Catalogue").isVisible());
}

// Settings and status

TEST_F(frmMainTest, AnOutputIsChosenWhileMusicPlays) {
  LoadAndPlay(2, 1);
  Press(Qt::Key_8, Qt::ControlModifier);
  Choose("Device2", 2);
  Choose("Speaker2", 2);
  const app::OutputView output = station->View().outputs[1];
  EXPECT_EQ(output.device, 2);
  EXPECT_EQ(output.speaker, 2);
  EXPECT_EQ(TextOf("Output2"), QStringLiteral("Deck 2: USB card, Rear"));
  EXPECT_EQ(Deck(2).state, State::Playing);
}

TEST_F(frmMainTest, ALostDeviceIsToldOnTheStatusLine) {
  engine.PostDeviceEvent({decks::DeviceEvent::Kind::Replaced, 1, "The card is gone."});
  Settle();
  EXPECT_EQ(TextOf("Message"), QStringLiteral("The card is gone."));
}

TEST_F(frmMainTest, NewsPassesAndAWarningStandsUntilItWasSeen) {
  engine.PostDeviceEvent({decks::DeviceEvent::Kind::Lost, 1, "The card is gone."});
  Advance(40s);
  EXPECT_EQ(TextOf("Message"), QStringLiteral("The card is gone."));
  Music().Clear();
  Press(Qt::Key_F4);
  EXPECT_EQ(TextOf("Message"), QStringLiteral("No track is chosen."));
  EXPECT_FALSE(Find<QWidget>("MessageSeen").isVisible()) << "it is about the warning";
  Advance(6s);
  EXPECT_EQ(TextOf("Message"), QStringLiteral("The card is gone."));
  Choose("Language", 1);
  EXPECT_EQ(TextOf("Message"), QStringLiteral("The card is gone.")) << "made anew, not seen yet";
  Click("MessageSeen");
  EXPECT_EQ(TextOf("Message"), QString());
  EXPECT_FALSE(Find<QWidget>("MessageSeen").isVisible());
  Choose("Language", 0);
  EXPECT_EQ(TextOf("Message"), QString());
  Press(Qt::Key_F4);
  Advance(29s);
  EXPECT_EQ(TextOf("Message"), QStringLiteral("No track is chosen."));
  Advance(2s);
  EXPECT_EQ(TextOf("Message"), QString());
}

TEST_F(frmMainTest, AMessageGoesAsSoonAsItIsNoLongerTrue) {
  LoadAndPlay(1, 1);
  Press(Qt::Key_F4);
  EXPECT_TRUE(TextOf("Message").startsWith(QStringLiteral("Deck 1 is playing")));
  Click("deck1Stop");
  Press(Qt::Key_F4);
  EXPECT_EQ(TextOf("Message"), QString());
  engine.PostDeviceEvent({decks::DeviceEvent::Kind::Lost, 1, "The card is gone."});
  Settle();
  engine.PostDeviceEvent({decks::DeviceEvent::Kind::Returned, 1, "Playing is back."});
  Settle();
  EXPECT_EQ(TextOf("Message"), QStringLiteral("Playing is back."));
  Advance(31s);
  EXPECT_EQ(TextOf("Message"), QString());
}

TEST_F(frmMainTest, AClickOnAWarningHasSeenIt) {
  engine.PostDeviceEvent({decks::DeviceEvent::Kind::Lost, 1, "The card is gone."});
  Settle();
  QTest::mouseClick(&Find<QLabel>("Message"), Qt::LeftButton);
  Settle();
  EXPECT_EQ(TextOf("Message"), QString());
  engine.PostDeviceEvent({decks::DeviceEvent::Kind::Lost, 1, "The card is gone."});
  Settle();
  EXPECT_EQ(TextOf("Message"), QStringLiteral("The card is gone.")) << "again";
}

TEST_F(frmMainTest, AnotherLanguageSendsTheDecksNothing) {
  LoadAndPlay(1, 1);
  station->Decks()[1].Adjust(&app::DeckStation::SetVolume, 33);
  station->Decks()[1].SetTempo(2.5F);
  Settle();
  Choose("Language", 1);
  Settle();
  EXPECT_EQ(Deck(1).volume, 33);
  EXPECT_FLOAT_EQ(Deck(1).tempo_percent, 2.5F);
}

TEST_F(frmMainTest, TheLanguageChangesAtOnceAndIsKept) {
  LoadAndPlay(1, 1);
  Find<QSlider>("deck1Volume").setValue(70);
  Press(Qt::Key_8, Qt::ControlModifier);
  Choose("Language", 1);
  Settle();
  EXPECT_EQ(TextOf("deck1State"), QStringLiteral("Speelt"));
  EXPECT_EQ(settings.Get("TLVG", "Language", "Current", ""), "1");
  EXPECT_EQ(Find<QSlider>("deck1Volume").value(), 70);
  EXPECT_EQ(Deck(1).volume, 70);
  EXPECT_TRUE(Find<QWidget>("SettingsPage").isVisible());
  Choose("Language", 2);
  Settle();
  EXPECT_EQ(TextOf("deck1State"), QStringLiteral("Läuft"));
  EXPECT_EQ(settings.Get("TLVG", "Language", "Current", ""), "2");
  EXPECT_EQ(Find<QComboBox>("Language").currentText(), QStringLiteral("Deutsch"));
  EXPECT_TRUE(Find<QWidget>("Page1").toolTip().endsWith(QStringLiteral("(Strg+1)"))) << "Qt names the keys";
}

TEST_F(frmMainTest, AChoiceOfColoursOrLanguageIsKeptAndNothingElse) {
  const std::size_t before = settings.Sets().size();
  Choose("Skin", 1);
  Choose("Language", 1);
  Choose("Skin", 0);
  const auto sets = settings.Sets();
  EXPECT_EQ(std::vector(sets.begin() + static_cast<std::ptrdiff_t>(before), sets.end()),
            (std::vector<std::string>{"TLVG/Skin/Name=1", "TLVG/Language/Current=1", "TLVG/Skin/Name=0"}));
}

TEST_F(frmMainTest, AnotherPageGivesTheKeyboardToItsListOrItsButton) {
  const char* const focused[] = {"Catalogue", "PlayListView3", "KaraokeGrid", "Page4",
                                 "Page5",     "Page6",         "Page7",       "Page8"};
  for (int page = 7; page >= 0; --page) {
    Press(static_cast<Qt::Key>(Qt::Key_1 + page), Qt::ControlModifier);
    EXPECT_EQ(window->focusWidget()->objectName().toStdString(), focused[page]);
  }
}

TEST_F(frmMainTest, PagesFollowTheirButtonsAndKeys) {
  Click("Page8");
  EXPECT_TRUE(Find<QWidget>("SettingsPage").isVisible());
  Press(Qt::Key_1, Qt::ControlModifier);
  EXPECT_TRUE(Find<QWidget>("MusicPage").isVisible());
}

TEST_F(frmMainTest, TheCaptionBeginsWithTheNameOfTheProgram) {
  EXPECT_EQ(window->windowTitle(), QStringLiteral("dj TOLVEN workstation"));
  Choose("Language", 1);
  EXPECT_EQ(window->windowTitle(), QStringLiteral("dj TOLVEN werkplek"));
}

TEST_F(frmMainTest, AClosedWindowLeavesAnAddingWorkstationAlone) {
  tags.AddFile("/m/new.mp3");
  BeginDroppingFiles({File("/m/new.mp3")}, "MusicPage");
  window.reset();
  workers.RunAll();
  station->PumpWindow();
  EXPECT_EQ(Music().Rows(), 5);
}

}  // namespace
}  // namespace ui::testing
