// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
// The desk by its knobs and buttons: bands, trim, listening ahead, headphones, the hall's meter.

#include <QLabel>
#include <QPushButton>

#include "ui/tests/Booth.h"
#include "ui/widgets/Knob.h"
#include "ui/widgets/ListenButton.h"
#include "ui/widgets/MasterMeter.h"

namespace ui::testing {
namespace {

class DeskTest : public Booth {
 protected:
  /// Pixels up, by the hand.
  void Turn(Knob& knob, int up) {
    const QPoint from = knob.rect().center();
    QTest::mousePress(&knob, Qt::LeftButton, {}, from);
    QTest::mouseMove(&knob, from - QPoint(0, up));
    QTest::mouseRelease(&knob, Qt::LeftButton, {}, from - QPoint(0, up));
    Settle();
  }
  [[nodiscard]] std::string Stored(const char* section, const char* key) {
    return settings.Get(support::kApplication, section, key, "");
  }
  /// Headphones on a pair of an output; the decks are on the front pair of the first one.
  void PutHeadphones(int device, int pair) {
    station->Outputs().Set(1, {1, 1});
    station->Outputs().Set(3, {device, pair});
    for (int i = 0; i < 2; ++i) {
      workers.RunAll();
      Settle();
    }
  }
};

TEST_F(DeskTest, AKnobIsTurnedByTheHandByTheKeysAndTakenBackByADoubleClick) {
  Open();
  auto& bass = Find<Knob>("deck1Bass");
  Turn(bass, 20);
  EXPECT_GT(bass.value(), 0);
  EXPECT_EQ(Deck(1).tone[2], bass.value());
  EXPECT_EQ(Stored("Eq1", "Bass"), std::to_string(bass.value()));
  EXPECT_TRUE(bass.toolTip().contains(bass.accessibleDescription())) << "it says where it stands";
  QTest::mouseDClick(&bass, Qt::LeftButton, {}, bass.rect().center());
  Settle();
  EXPECT_EQ(Deck(1).tone[2], 0);
  bass.setFocus();
  QTest::keyClick(&bass, Qt::Key_Down);
  Settle();
  EXPECT_EQ(Deck(1).tone[2], -1);
  Turn(Find<Knob>("deck2Trim"), -30);
  EXPECT_LT(Deck(2).trim, app::kMiddleTrim);
  EXPECT_EQ(Deck(1).trim, app::kMiddleTrim);
}

TEST_F(DeskTest, ABandIsKilledByItsButtonAndByItsKey) {
  Open();
  LoadAndPlay(1, 1);
  Click("deck1KillBass");
  Settle();
  EXPECT_TRUE(Deck(1).killed[2]);
  EXPECT_TRUE(Find<QPushButton>("deck1KillBass").isChecked());
  Press(Qt::Key_F3, Qt::ControlModifier | Qt::ShiftModifier);
  Settle();
  EXPECT_FALSE(Deck(1).killed[2]);
  Press(Qt::Key_F5, Qt::ControlModifier | Qt::ShiftModifier);
  Settle();
  EXPECT_TRUE(Deck(2).killed[0]);
  EXPECT_FALSE(Deck(1).killed[0]);
}

TEST_F(DeskTest, KnobsStandWhereTheDeckIsSet) {
  Open();
  station->Decks()[2].SetTone(app::ToneBand::Mid, -7);
  station->Decks()[1].SetTrim(75);
  Settle();
  EXPECT_EQ(Find<Knob>("deck2Mid").value(), -7);
  EXPECT_EQ(Find<Knob>("deck1Trim").value(), 75);
  EXPECT_EQ(Find<Knob>("deck1Trim").accessibleDescription(), QStringLiteral("+6.0 dB"));
  Open();
  EXPECT_EQ(Find<Knob>("deck2Mid").value(), -7) << "in a window that is made anew";
}

TEST_F(DeskTest, AStoppedDeckIsListenedToByItsButton) {
  Open();
  PutHeadphones(2, 1);
  auto& cue = Find<ListenButton>("deck1Cue");
  EXPECT_FALSE(cue.isEnabled()) << "nothing is on the deck";
  DropRow(1, "deck1");
  Settle();
  ASSERT_TRUE(cue.isEnabled());
  Click("deck1Cue");
  Settle();
  EXPECT_TRUE(Deck(1).listening);
  EXPECT_TRUE(cue.isChecked());
  EXPECT_EQ(Deck(1).state, State::Stopped);
  Click("deck1Cue");
  Settle();
  EXPECT_FALSE(Deck(1).listening);
  Click("deck1Cue");
  Click("deck1Play");
  Settle();
  EXPECT_FALSE(cue.isChecked()) << "the start switches it off";
  EXPECT_EQ(Deck(1).state, State::Playing);
}

TEST_F(DeskTest, TheHallIsMixedIntoHeadphonesThatHaveAPairOrADeviceOfTheirOwn) {
  Open();
  auto& mix = Find<Knob>("HeadphoneMix");
  auto& split = Find<QPushButton>("HeadphoneSplit");
  auto& level = Find<Knob>("HeadphoneLevel");
  EXPECT_FALSE(level.isEnabled()) << "there are none";
  PutHeadphones(1, 1);
  EXPECT_FALSE(mix.isEnabled());
  EXPECT_FALSE(split.isEnabled());
  EXPECT_TRUE(mix.toolTip().contains(QStringLiteral("of their own")));
  EXPECT_TRUE(level.isEnabled());
  PutHeadphones(2, 1);
  EXPECT_TRUE(mix.isEnabled() && split.isEnabled()) << "another device";
  PutHeadphones(1, 2);
  ASSERT_TRUE(mix.isEnabled());
  Turn(mix, 40);
  EXPECT_GT(desk.lines.mix.programme, 0);
  EXPECT_EQ(Stored("Mixer", "HeadphoneMix"), std::to_string(mix.value()));
  Turn(level, -40);
  EXPECT_LT(desk.lines.mix.level, 1);
  Click("HeadphoneSplit");
  Settle();
  EXPECT_TRUE(desk.lines.mix.split);
  EXPECT_FALSE(mix.isEnabled()) << "each ear has its own, whole";
}

TEST_F(DeskTest, TheMeterShowsLoudnessPeakAndLimiter) {
  desk.reading = {{2.5F}, {-0.4F}, {-9}, {-11.2F}};
  Open();
  Settle();
  EXPECT_EQ(TextOf("MasterLoudness"), QStringLiteral("−11.2"));
  auto& meter = Find<MasterMeter>("MasterMeter");
  EXPECT_FLOAT_EQ(meter.Peak().value, -0.4F);
  desk.reading = {};
  Advance(1s);
  EXPECT_EQ(TextOf("MasterLoudness"), QStringLiteral("−∞"));
  EXPECT_FLOAT_EQ(meter.Peak().value, -0.4F) << "held for a while";
  Advance(4s);
  EXPECT_LT(meter.Peak().value, -90);
}

}  // namespace
}  // namespace ui::testing
