// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QSlider>
#include <QTableView>
#include <functional>

#include "app/Decks.h"
#include "app/lists/ListStation.h"
#include "ui/tests/Booth.h"

namespace ui::testing {
namespace {

/// The decks over the pages, whole and in one line each.
class DeckAreaTest : public Booth {
 protected:
  void Page(int number) { Press(static_cast<Qt::Key>(Qt::Key_0 + number), Qt::ControlModifier); }
  void Toggle() { Press(Qt::Key_F11, Qt::ControlModifier); }
  [[nodiscard]] bool Whole() { return Find<QWidget>("deck1").isVisible(); }
  [[nodiscard]] bool Lines() { return Find<QWidget>("deck1Small").isVisible(); }
  [[nodiscard]] std::string Kept(const char* section, const char* key) {
    return settings.Get(support::kApplication, section, key, "");
  }
  [[nodiscard]] int HeightOf(const char* name) { return Find<QWidget>(name).height(); }
};

TEST_F(DeckAreaTest, EveryPageKeepsItsFormAndItsRowsGetTheRoom) {
  Open();
  EXPECT_TRUE(Whole() && !Lines()) << "over the music";
  const struct {
    int page;
    const char* part;
    const char* key;
  } kPages[] = {{2, "PlayListView3", "Playlist3"}, {3, "KaraokeGrid", "Karaoke"},
                {4, "FaderBank", "Console"},       {5, "OrganPage", "Organ"},
                {6, "EffectsPage", "Effects"},     {7, "RecordingPage", "Recording"},
                {8, "SettingsArea", "Settings"},   {1, "Catalogue", "Music"}};
  for (const auto& page : kPages) {
    SCOPED_TRACE(page.key);
    Page(page.page);
    const bool music = page.page == 1;
    EXPECT_EQ(Lines(), !music);
    EXPECT_EQ(Whole(), music);
    if (!music) Toggle();
    const int low = HeightOf(page.part);
    EXPECT_TRUE(Whole() && !Lines());
    EXPECT_EQ(Kept("CompactDecks", page.key), music ? "" : "False");
    Click("CompactDecks");
    EXPECT_TRUE(Lines() && !Whole());
    EXPECT_EQ(Kept("CompactDecks", page.key), "True");
    EXPECT_GE(HeightOf(page.part), low + 150);
  }
  Page(2);
  Toggle();
  Open();
  EXPECT_TRUE(Lines()) << "the music's own choice, at the next start";
  Page(2);
  EXPECT_TRUE(Whole());
}

TEST_F(DeckAreaTest, ALineShowsItsDeckAndAHandActsOnIt) {
  Open();
  Page(2);
  DropRow(1, "deck1Small");
  EXPECT_EQ(TextOf("deck1SmallTitle"), QStringLiteral("First Light — Anna Vogel"));
  Click("deck1SmallPlay");
  EXPECT_EQ(Deck(1).state, State::Playing);
  Advance(2s);
  EXPECT_EQ(TextOf("deck1SmallRemaining"), TextOf("deck1Remaining"));
  EXPECT_EQ(TextOf("deck1SmallBpm"), QStringLiteral("128.00 BPM"));
  Find<QSlider>("deck1SmallVolume").setValue(40);
  Settle();
  EXPECT_EQ(Deck(1).volume, 40);
  EXPECT_EQ(Find<QSlider>("deck1Volume").value(), 40) << "the whole form goes along";
  Find<QSlider>("SmallCrossfader").setValue(-100);
  Settle();
  EXPECT_EQ(Deck(2).volume, 0);
  EXPECT_EQ(Find<QSlider>("Crossfader").value(), -100);
  Toggle();
  Find<QSlider>("Crossfader").setValue(20);
  Toggle();
  EXPECT_EQ(Find<QSlider>("SmallCrossfader").value(), 20);
  Press(Qt::Key_F1);
  EXPECT_EQ(Deck(1).state, State::Paused) << "its keys act in both forms";
}

TEST_F(DeckAreaTest, AGuardedLineIsSoughtInByADoubleClick) {
  Open();
  Page(3);
  LoadAndPlay(1, 1);
  Advance(1s);
  auto& wave = Find<QWidget>("deck1SmallWave");
  QTest::mouseClick(&wave, Qt::LeftButton, {}, wave.rect().center());
  Settle();
  EXPECT_LT(Deck(1).position, 5s);
  EXPECT_TRUE(TextOf("Message").contains(QStringLiteral("deck 1"), Qt::CaseInsensitive));
  QTest::mouseDClick(&wave, Qt::LeftButton, {}, wave.rect().center());
  QTest::mouseRelease(&wave, Qt::LeftButton, {}, wave.rect().center());
  Settle();
  EXPECT_GT(Deck(1).position, 60s);
}

TEST_F(DeckAreaTest, TheKeysKeepTheirListWhenTheControlThatHadThemGoes) {
  Open();
  DropRow(1, "PlayListView1");
  ChooseRow(2);
  const std::function<void()> ways[] = {[this] { Toggle(); }, [this] { Page(3); }};
  for (const auto& hide : ways) {
    Page(1);
    if (!Whole()) Toggle();
    Find<QWidget>("deck1Volume").setFocus();
    hide();
    ASSERT_NE(window->focusWidget(), nullptr);
    EXPECT_TRUE(window->focusWidget()->isVisible());
    Press(Qt::Key_F8);
    EXPECT_EQ(Deck(2).title, "Second Wind");
    DropRow(1, "deck2Small");
  }
}

TEST_F(DeckAreaTest, WhatTheAutomaticMixerPlaysNextIsSaidInBothForms) {
  Open();
  DropRow(2, "PlayListView1");
  LoadAndPlay(1, 1);
  Click("Automix");
  Advance(1s);
  EXPECT_EQ(TextOf("AutomixNext"), QStringLiteral("Next: Second Wind"));
  EXPECT_TRUE(TextOf("AutomixIn").startsWith(QStringLiteral("in 0"))) << TextOf("AutomixIn").toStdString();
  Toggle();
  EXPECT_EQ(TextOf("SmallAutomixNext"), QStringLiteral("Next: Second Wind"));
  const QString before = TextOf("SmallAutomixIn");
  Advance(2s);
  EXPECT_LT(TextOf("SmallAutomixIn"), before);
  Click("SmallAutomix");
  EXPECT_EQ(TextOf("SmallAutomixNext"), QString());
  EXPECT_EQ(TextOf("SmallAutomixIn"), QString());
}

TEST_F(DeckAreaTest, HowItMixesIsChosenBesideItsButtonAndOnTheEffectsPage) {
  Open();
  Click("AutomixSetup");
  ASSERT_TRUE(Find<QWidget>("AutomixSetupBox").isVisible());
  Choose("MixerMixTime", 3);
  EXPECT_EQ(Kept("Mixer", "MixTime"), "6");
  EXPECT_EQ(station->Lists().View().automix.mix_time, 6s);
  QTest::mouseClick(&Find<QAbstractButton>("MixerAutoBPM"), Qt::LeftButton, {}, QPoint(5, 8));
  Settle();
  EXPECT_EQ(Kept("Settings", "AutoBPM"), "True");
  EXPECT_EQ(Find<QComboBox>("MixTime").currentText(), QStringLiteral("6 s"));
  EXPECT_TRUE(Find<QAbstractButton>("AutoBPM").isChecked());
  Find<QWidget>("AutomixSetupBox").close();
  Choose("MixPlace", 1);
  Click("AutomixSetup");
  EXPECT_EQ(Find<QComboBox>("MixerMixPlace").currentIndex(), 1);
}

}  // namespace
}  // namespace ui::testing
