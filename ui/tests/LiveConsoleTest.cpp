// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSlider>
#include <set>

#include "app/lights/LightStation.h"
#include "app/lights/LiveLightStation.h"
#include "dmx/testing/Rig.h"
#include "ui/forms/DMX.h"
#include "ui/forms/Editors.h"
#include "ui/tests/EditorBooth.h"
#include "ui/widgets/ColourButton.h"

namespace ui::testing {
namespace {

/// The live console of the main window; every press of a hand counts.
class LiveConsoleTest : public EditorBooth {
 protected:
  void Hit(const char* control) {
    ++clicks;
    auto& widget = Find<QWidget>(control);
    ASSERT_TRUE(widget.isVisible() && widget.isEnabled()) << control;
    QTest::mouseClick(&widget, Qt::LeftButton);
    Settle();
  }
  void OpenLive(int pars, int heads) {
    Press(Qt::Key_4, Qt::ControlModifier);
    station->Lights().TurnOutput(app::LightStation::Output::On);
    dmx::DMXname rig;
    for (int par = 0; par < pars; ++par) dmx::testing::AddRgbPar(rig, 1 + 3 * par);
    for (int head = 0; head < heads; ++head) dmx::testing::AddHead(rig, 101 + 6 * head);
    station->Lights().TakePatch(rig);
    Settle();
    Hit("LiveView");
  }
  void ChooseInLibrary(const char* name) {
    auto& list = In<QListWidget>("LibraryList");
    const auto found = list.findItems(QLatin1String(name), Qt::MatchExactly);
    ClickAt(*list.viewport(), list.visualItemRect(found.at(0)).center());
  }
};

TEST_F(LiveConsoleTest, FourParsAndTwoHeadsAreLitToATrackInUnderTwentyClicks) {
  LoadAndPlay(1, 1);
  station->Lights().TurnOutput(app::LightStation::Output::On);
  Press(Qt::Key_4, Qt::ControlModifier);
  ++clicks;
  Hit("LiveView");
  Hit("LiveShowEditor");
  Work();
  editor = window->OpenEditors().ShowEditor();
  ChooseInLibrary("Par");
  for (int par = 0; par < 4; ++par) Click("PatchFixture");
  ChooseInLibrary("Head");
  for (int head = 0; head < 2; ++head) Click("PatchFixture");
  QApplication::setActiveWindow(window.get());
  Hit("Group0On");
  Hit("LiveColour5");
  Hit("EffectCircle");
  EXPECT_LT(clicks, 20);
  for (int par = 0; par < 4; ++par) {
    EXPECT_EQ(wire.Level(3 * par + 1), 0);
    EXPECT_EQ(wire.Level(3 * par + 3), 255);
  }
  for (const int dimmer : {15, 19}) EXPECT_EQ(wire.Level(dimmer), 255);
  std::set<int> pans;
  for (int i = 0; i < 40; ++i) {
    Settle();
    pans.insert(wire.Level(13));
  }
  EXPECT_GT(pans.size(), 20U);
  EXPECT_EQ(Find<QPushButton>("Group0Owner").text(), QStringLiteral("hand"));
  Hit("ReleaseAll");
  EXPECT_EQ(wire.Level(3), 0);
  EXPECT_EQ(Find<QPushButton>("Group0Owner").text(), QStringLiteral("effect"));
}

TEST_F(LiveConsoleTest, AGroupIsMadeOfTheFixturesThatAreTouchedAndSteeredAsOne) {
  OpenLive(3, 0);
  Hit("Group1Name");
  Hit("Group3Name");
  Find<QLineEdit>("GroupName").setText(QStringLiteral("Sides"));
  Settle();
  Hit("KeepGroup");
  Hit("Group1Name");  // a group stands before the fixtures
  EXPECT_EQ(Find<QPushButton>("Group1Name").text(), QStringLiteral("Sides"));
  Hit("LiveColour0");
  auto& level = Find<QSlider>("Group1Level");
  level.setFocus();
  QTest::keyClick(&level, Qt::Key_Home);
  QTest::keyClick(&level, Qt::Key_PageUp);
  Settle();
  EXPECT_EQ(wire.Level(1), 26);
  EXPECT_EQ(wire.Level(4), 0);
  EXPECT_EQ(wire.Level(7), 26);
  EXPECT_EQ(Find<QPushButton>("Group3Owner").text(), QStringLiteral("–"));
  Hit("Group1Owner");
  EXPECT_EQ(wire.Level(7), 0);
  station->Lights().TakePatch({});
  Settle();
  EXPECT_FALSE(Find<QWidget>("KeepGroup").isVisible());
  dmx::DMXname rig;
  dmx::testing::AddRgbPar(rig, 1);
  station->Lights().TakePatch(rig);
  Settle();
  EXPECT_EQ(Find<QPushButton>("Group1Name").text(), QStringLiteral("Sides !")) << "one of it is gone";
}

TEST_F(LiveConsoleTest, AHeldButtonLastsAsLongAsTheHandOrItsLatch) {
  OpenLive(1, 1);
  Hit("Group0On");
  auto& blinder = Find<QWidget>("HoldBlinder");
  Hit("LiveColour0");
  QTest::mousePress(&blinder, Qt::LeftButton);
  Settle();
  EXPECT_EQ(wire.Level(2), 255);
  QTest::mouseRelease(&blinder, Qt::LeftButton);
  Settle();
  EXPECT_EQ(wire.Level(2), 0);
  Hit("HoldBlinderLatch");
  EXPECT_EQ(wire.Level(2), 255);
  Press(Qt::Key_V, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(wire.Level(2), 255) << "another view is no hand that lets go of a latch";
  Press(Qt::Key_V, Qt::ControlModifier | Qt::ShiftModifier);
  Hit("HoldBlinderLatch");
  EXPECT_EQ(wire.Level(2), 0);
}

}  // namespace
}  // namespace ui::testing
