// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
// The rack of effects by its knobs, lamps and pads.

#include <QComboBox>
#include <QLabel>
#include <QPushButton>

#include "ui/models/EffectText.h"
#include "ui/tests/Booth.h"
#include "ui/widgets/Knob.h"

namespace ui::testing {
namespace {

using decks::EffectSettings;

class EffectsRackTest : public Booth {
 protected:
  EffectsRackTest() {
    Open();
    LoadAndPlay(1, 1);
    Press(Qt::Key_6, Qt::ControlModifier);
  }
  /// As the engine was told for the newest stream of deck 1.
  [[nodiscard]] EffectSettings Heard() { return effects.Effects(effects.told.rbegin()->first); }
  [[nodiscard]] std::string Stored(const char* key) {
    return settings.Get(support::kApplication, "Player1", key, "(none)");
  }
  void Drag(const char* knob, int up) {
    auto& turned = Find<Knob>(knob);
    const QPoint from = turned.rect().center();
    QTest::mousePress(&turned, Qt::LeftButton, {}, from);
    QTest::mouseMove(&turned, from - QPoint(0, up));
    QTest::mouseRelease(&turned, Qt::LeftButton, {}, from - QPoint(0, up));
    Settle();
  }
};

TEST_F(EffectsRackTest, AHandOnItIsHeardStoredAndShown) {
  Click("deck1Echo");
  Drag("deck1TurnEchoLevel", 60);
  const int slider = Find<Knob>("deck1TurnEchoLevel").value();
  EXPECT_GT(slider, 30);
  EXPECT_TRUE(Heard().echo.on);
  EXPECT_FLOAT_EQ(Heard().echo.level, float(slider) / 100);
  EXPECT_EQ(Stored("Echo"), "True");
  EXPECT_EQ(Stored("EchoLevel"), std::to_string(slider));
  EXPECT_EQ(TextOf("deck1ValueEchoLevel"), QString::number(slider) + QStringLiteral(" %"));
  QTest::mouseDClick(&Find<Knob>("deck1TurnEchoLevel"), Qt::LeftButton, {}, {10, 10});
  Settle();
  EXPECT_FLOAT_EQ(Heard().echo.level, 0.3F) << "a double click takes it back";
  Open();
  EXPECT_TRUE(Find<QPushButton>("deck1Echo").isChecked()) << "in a window that is made anew";
  EXPECT_FALSE(Find<QPushButton>("deck2Echo").isChecked());
}

TEST_F(EffectsRackTest, APadHoldsAnEffectForAsLongAsItIsPressed) {
  auto& pad = Find<QPushButton>("deck1HoldReverb");
  QTest::mousePress(&pad, Qt::LeftButton);
  Settle();
  EXPECT_TRUE(Heard().reverb.on);
  EXPECT_TRUE(pad.isChecked()) << "it is lit";
  EXPECT_FALSE(Find<QPushButton>("deck1Reverb").isChecked());
  QTest::mouseRelease(&pad, Qt::LeftButton);
  Settle();
  EXPECT_FALSE(Heard().reverb.on);
  EXPECT_FALSE(pad.isChecked());
  QTest::mousePress(&pad, Qt::LeftButton);
  Settle();
  Press(Qt::Key_1, Qt::ControlModifier);
  EXPECT_FALSE(Heard().reverb.on) << "another page lets go of it";
  EXPECT_EQ(Stored("Reverb"), "(none)");
}

TEST_F(EffectsRackTest, ATimeByTheBeatTakesTheKnobOutOfForce) {
  const QString free = TextOf("deck1ValueEchoDelay");
  Choose("deck1BeatsEcho", 2);
  const double beat = 60 / Deck(1).playing_bpm;
  EXPECT_NEAR(double(Heard().echo.seconds), beat / 2, 1e-3);
  EXPECT_EQ(TextOf("deck1ValueEchoDelay"), EffectText(app::EffectKnob::Unit::Seconds, beat / 2));
  EXPECT_EQ(Find<QComboBox>("deck1BeatsEcho").currentText(), QStringLiteral("1/2 beat"));
  Choose("deck1BeatsEcho", 0);
  EXPECT_EQ(TextOf("deck1ValueEchoDelay"), free);
}

TEST_F(EffectsRackTest, TheFilterStandsOnTheDeckToo) {
  Press(Qt::Key_1, Qt::ControlModifier);
  Drag("deck1Filter", -40);
  const int slider = Find<Knob>("deck1Filter").value();
  EXPECT_LT(slider, app::kMiddleFilter);
  EXPECT_LT(Heard().filter.position, -0.1F);
  EXPECT_EQ(Find<Knob>("deck1TurnFilter").value(), slider) << "and is the rack's";
  EXPECT_EQ(Find<Knob>("deck2Filter").value(), app::kMiddleFilter);
  QTest::mouseDClick(&Find<Knob>("deck1Filter"), Qt::LeftButton, {}, {10, 10});
  Settle();
  EXPECT_EQ(Heard().filter.position, 0);
}

TEST_F(EffectsRackTest, EqualiserAndMixingStandBehindTheSecondButton) {
  EXPECT_FALSE(Find<QWidget>("EqualiserPage").isVisible());
  Click("EffectsMixing");
  EXPECT_TRUE(Find<QWidget>("EqualiserPage").isVisible());
  EXPECT_FALSE(Find<QPushButton>("EffectsRack").isChecked());
  Click("EffectsRack");
  EXPECT_TRUE(Find<Knob>("deck2TurnEchoLevel").isVisible());
  EXPECT_TRUE(Find<QPushButton>("EffectsRack").isChecked());
}

TEST(EffectTextTest, SaysWhatAKnobMeans) {
  using Unit = app::EffectKnob::Unit;
  const auto text = [](Unit unit, double value) { return EffectText(unit, value).toStdString(); };
  EXPECT_EQ(text(Unit::Seconds, 0.3751), "375 ms");
  EXPECT_EQ(text(Unit::Seconds, 1.83), "1.8 s");
  EXPECT_EQ(text(Unit::Hertz, 999.6), "1.0 kHz");
  EXPECT_EQ(text(Unit::Hertz, 20'000), "20 kHz");
  EXPECT_EQ(text(Unit::Turns, 0.25), "0.25 Hz");
  EXPECT_EQ(text(Unit::Position, -0.42), "−42");
  EXPECT_EQ(text(Unit::Position, 0), "0");
  EXPECT_EQ(BeatText(3), QStringLiteral("3/4"));
  EXPECT_EQ(BeatText(16), QStringLiteral("4"));
}

}  // namespace
}  // namespace ui::testing
