// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QWheelEvent>
#include <fstream>

#include "app/lights/StagedShow.h"
#include "dmx/testing/ShowMaker.h"
#include "ui/forms/ConsolePage.h"
#include "ui/forms/FaderBank.h"
#include "ui/forms/MessageBox.h"
#include "ui/tests/Booth.h"
#include "ui/widgets/ChannelFader.h"
#include "ui/widgets/FixtureLine.h"
#include "ui/widgets/LightPreview.h"
#include "ui/widgets/WireStrip.h"

namespace ui::testing {
namespace {

namespace fs = std::filesystem;

/// The page of the light console, with the output on.
class ConsoleTest : public Booth {
 protected:
  ~ConsoleTest() override { fs::remove_all(folder); }

  void OpenConsole() {
    Open();
    Press(Qt::Key_4, Qt::ControlModifier);
    Lights().TurnOutput(app::LightStation::Output::On);
    Settle();
    wire.TakeCalls();
  }
  app::LightStation& Lights() { return station->Lights(); }
  ChannelFader& Fader(int place) { return Find<ChannelFader>(("Fader" + std::to_string(place)).c_str()); }
  void Type(ChannelFader& fader, const char* keys) {
    fader.setFocus();
    QTest::keyClicks(&fader, QLatin1String(keys));
    Settle();
  }
  void Tap(ChannelFader& fader, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(&fader, key, modifiers);
    Settle();
  }
  /// By the newest box.
  QString Told() {
    const auto boxes = window->findChildren<MessageBox*>(QStringLiteral("MessageBox"));
    return boxes.empty() ? QString() : boxes.back()->Text();
  }
  /// Two pars on channels 1 to 4 and 41 to 44.
  static dmx::DMXname TwoPars() {
    dmx::DMXname fixtures;
    for (const int start : {1, 41}) {
      dmx::DMXfilename& par = fixtures.Add();
      par.Filename = "C:\\DMXlibrary\\Par.dmx";
      par.StartChannel = static_cast<std::int16_t>(start);
      par.Channels.Add().function = dmx::ChannelFunction::Dimmer;
      for (const char* label : {"Red", "Green", "Blue"}) {
        par.Channels.Add() = {dmx::ChannelFunction::Color, label, {}};
      }
    }
    return fixtures;
  }
  /// Up over two seconds, held for two.
  void TakeShow(const char* name, int level) {
    dmx::Scenes scenes;
    dmx::testing::AddScene(scenes, 1, {dmx::testing::StepWith("00:02.0", "00:02.0", {level})}).SceneName =
        "Blue";
    const std::vector<int> channels{1};
    Lights().TakePlan(std::make_shared<const dmx::ShowPlan>(dmx::ShowPlan::Make(scenes, channels).Value()),
                      TwoPars(), name, {"Blue"});
    Settle();
  }
};

TEST_F(ConsoleTest, AHandMovesItsChannelByEveryMeans) {
  OpenConsole();
  ChannelFader& fader = Fader(5);
  const struct {
    const char* what;
    std::function<void()> move;
    int level;
  } cases[] = {
      {"three digits", [&] { Type(fader, "128"); }, 128},
      {"two digits and Enter", [&] { Type(fader, "64\r"); }, 64},
      {"more than there is", [&] { Type(fader, "999"); }, 255},
      {"Home", [&] { Tap(fader, Qt::Key_Home); }, 0},
      {"up", [&] { Tap(fader, Qt::Key_Up); }, 1},
      {"page up", [&] { Tap(fader, Qt::Key_PageUp); }, 26},
      {"End", [&] { Tap(fader, Qt::Key_End); }, 255},
      {"double click on top", [&] { QTest::mouseDClick(&fader, Qt::LeftButton); }, 0},
      {"double click at the bottom", [&] { QTest::mouseDClick(&fader, Qt::LeftButton); }, 255},
  };
  for (const auto& step : cases) {
    step.move();
    QTest::mouseRelease(&fader, Qt::LeftButton);
    Settle();
    EXPECT_EQ(wire.Level(5), step.level) << step.what;
    EXPECT_EQ(fader.value(), step.level) << step.what;
  }
}

TEST_F(ConsoleTest, DigitsThatAreNotConfirmedMoveNothing) {
  OpenConsole();
  Type(Fader(1), "25");
  EXPECT_EQ(Fader(1).ValueText(), QStringLiteral("25_"));
  Tap(Fader(1), Qt::Key_Escape);
  Type(Fader(1), "7");
  Fader(2).setFocus();
  Settle();
  EXPECT_EQ(Fader(1).ValueText(), QStringLiteral("0"));
  EXPECT_EQ(wire.TakeCalls(), std::vector<std::string>{});
}

TEST_F(ConsoleTest, DraggingGoesOnFromWhereTheFaderStands) {
  OpenConsole();
  ChannelFader& fader = Fader(1);
  Type(fader, "100");
  const QPoint place = fader.rect().center();
  QTest::mousePress(&fader, Qt::LeftButton, {}, place);
  Settle();
  EXPECT_EQ(wire.Level(1), 100);
  QTest::mouseMove(&fader, place - QPoint(0, 20));
  Settle();
  EXPECT_GT(wire.Level(1), 100);
  Lights().MoveFader(1, 3);  // somebody else has a hand on it
  Settle();
  EXPECT_NE(fader.value(), 3);
  QTest::mouseRelease(&fader, Qt::LeftButton, {}, place);
  Advance(600ms);
  EXPECT_EQ(fader.value(), 3);
}

TEST_F(ConsoleTest, PagesReachTheLastChannelWithSixteenAndThirtyTwo) {
  for (const char* size : {"16", "32"}) {
    settings.Set("TLVG", "Setup", "ConsoleSize", size);
    OpenConsole();
    const int faders = std::stoi(size);
    EXPECT_EQ(Fader(32).isVisible(), faders == 32);
    for (int page = 1; page < 512 / faders; ++page) Click("FadersOn");
    EXPECT_FALSE(Find<QPushButton>("FadersOn").isEnabled());
    EXPECT_EQ(TextOf("FaderRange"), QStringLiteral("Channels %1 to 512").arg(512 - faders + 1));
    Type(Fader(faders), "200");
    EXPECT_EQ(wire.Level(512), 200);
    Tap(Fader(1), Qt::Key_PageUp, Qt::ControlModifier);
    EXPECT_EQ(Fader(1).Channel(), 512 - 2 * faders + 1);
  }
}

TEST_F(ConsoleTest, ArrowsGoFromFaderToFaderAndToTheNextPage) {
  OpenConsole();
  Fader(31).setFocus();
  Tap(Fader(31), Qt::Key_Right);
  EXPECT_TRUE(Fader(32).hasFocus());
  Tap(Fader(32), Qt::Key_Right);
  EXPECT_TRUE(Fader(1).hasFocus());
  EXPECT_EQ(Fader(1).Channel(), 33);
  Tap(Fader(1), Qt::Key_Left);
  EXPECT_EQ(Fader(32).Channel(), 32);
  EXPECT_TRUE(Fader(32).hasFocus());
}

TEST_F(ConsoleTest, FadersSayWhatTheyAreForAndFixturesAreFound) {
  OpenConsole();
  Lights().TakePatch(TwoPars());
  Settle();
  EXPECT_EQ(Fader(1).accessibleName(), QStringLiteral("Channel 1: Par 1, Dimmer"));
  EXPECT_EQ(Fader(3).Purpose(), QStringLiteral("Green"));
  EXPECT_EQ(Fader(5).accessibleName(), QStringLiteral("Channel 5"));
  Choose("FixtureChoice", 1);
  EXPECT_EQ(Fader(1).Channel(), 41);
  ASSERT_EQ(Find<FixtureLine>("FixtureLine").Shown().size(), 1U);
  const auto& mark = Find<FixtureLine>("FixtureLine").Shown().front();
  EXPECT_EQ(mark.name, QStringLiteral("Par 2"));
  EXPECT_EQ(mark.right, Fader(4).x() + Fader(4).width());
}

TEST_F(ConsoleTest, AClickOnTheWireBringsThatChannel) {
  OpenConsole();
  auto& strip = Find<WireStrip>("WireStrip");
  QTest::mouseClick(&strip, Qt::LeftButton, {}, strip.CellOf(300).center());
  EXPECT_EQ(Fader(1).Channel(), 289);
}

TEST_F(ConsoleTest, ColoursAreThoseOfTheSettingsAsSoonAsThePageIsSeen) {
  OpenConsole();
  EXPECT_EQ(Fader(2).Colour(), QColor(255, 100, 0));
  Press(Qt::Key_8, Qt::ControlModifier);
  settings.Set("TLVG", "Channels", "Color2", "255");
  Press(Qt::Key_4, Qt::ControlModifier);
  EXPECT_EQ(Fader(2).Colour(), QColor(255, 0, 0));
}

TEST_F(ConsoleTest, APatchedChannelHasTheColourOfWhatItDoes) {
  OpenConsole();
  Lights().TakePatch(TwoPars());
  Settle();
  EXPECT_EQ(Fader(2).Colour(), QColor(255, 0, 0)) << "red";
  EXPECT_EQ(Fader(4).Colour(), QColor(0, 0, 255)) << "blue";
  EXPECT_NE(Fader(1).Colour(), QColor(255, 0, 0)) << "a dimmer is no colour of the settings";
  EXPECT_EQ(Fader(5).Colour(), QColor(200, 255, 0)) << "nobody has it";
  Click("FadersOn");
  EXPECT_EQ(Fader(10).Channel(), 42);
  EXPECT_EQ(Fader(10).Colour(), QColor(255, 0, 0));
  Lights().TakePatch({});
  Settle();
  EXPECT_EQ(Fader(10).Colour(), QColor(0, 255, 255));
}

TEST_F(ConsoleTest, TheStageStandsAboveTheFadersAndBringsTheOnesOfALight) {
  OpenConsole();
  auto& stage = Find<LightPreview>("Stage");
  EXPECT_FALSE(stage.isVisible());
  Lights().TakePatch(TwoPars());
  Settle();
  ASSERT_TRUE(stage.isVisible());
  for (const int channel : {41, 42}) Lights().MoveFader(channel, 255);
  Settle();
  const QPoint second(stage.width() * 3 / 4, stage.height() / 3);
  EXPECT_GT(stage.grab().toImage().pixelColor(second).red(), 100) << "a red light";
  QTest::mouseClick(&stage, Qt::LeftButton, {}, second);
  EXPECT_EQ(Fader(1).Channel(), 41);
}

TEST_F(ConsoleTest, TheSwitchOpensAndClosesTheInterface) {
  OpenConsole();
  Click("K8062");
  EXPECT_EQ(wire.TakeCalls(), std::vector<std::string>{"StopDevice"});
  EXPECT_TRUE(TextOf("OutputStatus").startsWith(QStringLiteral("Output off")));
  EXPECT_EQ(Find<QPushButton>("K8062").text(), QStringLiteral("K8062 off"));
  EXPECT_FALSE(Find<QLabel>("BoxState").isVisible());
  Click("K8062");
  EXPECT_EQ(Find<QPushButton>("K8062").text(), QStringLiteral("K8062 on"));
  EXPECT_EQ(wire.TakeCalls(), (std::vector<std::string>{"StartDevice", "SetChannelCount 512"}));
  wire.status = {
      dmx::DmxInterfaceStatus::State::Searching, 0, {}, 0, "None.", {support::Sentence::NoBox, {}}};
  Settle();
  EXPECT_EQ(TextOf("OutputStatus"), QStringLiteral("No K8062 is plugged in."));
  EXPECT_EQ(TextOf("BoxState"), QStringLiteral("not found"));
  wire.status = {dmx::DmxInterfaceStatus::State::Sending, 14, {}, 0, "", {}};
  Settle();
  EXPECT_EQ(TextOf("BoxState"), QStringLiteral("found"));
  for (int i = 0; i < 30; ++i) {
    wire.status.frames += 2;
    Advance(100ms);
  }
  EXPECT_EQ(TextOf("OutputStatus"), QStringLiteral("lamps told 20 times a second"));
  EXPECT_EQ(TextOf("BoxState"), QStringLiteral("sending"));
  Lights().TurnOutput(app::LightStation::Output::Off);
  Settle();
  EXPECT_EQ(Find<QPushButton>("K8062").text(), QStringLiteral("K8062 off"));
  EXPECT_EQ(TextOf("BoxState"), QStringLiteral("sending")) << "as when an editor has started it";
}

TEST_F(ConsoleTest, LampsBehindTheNetworkAreChosenAndKept) {
  OpenConsole();
  ASSERT_EQ(net_lamps.wishes.size(), 1U) << "as stored, at the start";
  Click("NetLamps");
  EXPECT_FALSE(Find<QLineEdit>("NetAddress").isEnabled());
  Choose("NetProtocol", 2);
  Find<QSpinBox>("NetUniverse").setValue(70'000);
  auto& address = Find<QLineEdit>("NetAddress");
  QTest::keyClicks(&address, QStringLiteral(" 192.168.1.20 "));
  QTest::keyClick(&address, Qt::Key_Return);
  const dmx::NetWish& wish = net_lamps.wishes.back();
  EXPECT_EQ(wish.protocol, dmx::NetWish::Protocol::Sacn);
  EXPECT_EQ(wish.universe, 63'999);
  EXPECT_EQ(wish.address, "192.168.1.20");
  EXPECT_NE(wish.source, decltype(wish.source){});
  Choose("NetProtocol", 1);
  EXPECT_EQ(net_lamps.wishes.back().universe, 32'767) << "the last one there is";
  EXPECT_EQ(net_lamps.wishes.back().source, net_lamps.wishes.front().source) << "kept for ever";
  Find<QWidget>("NetLampsBox").close();
  EXPECT_TRUE(Find<QPushButton>("NetLamps").isChecked());
  EXPECT_TRUE(Find<QPushButton>("K8062").text().startsWith(QStringLiteral("DMX")));
}

TEST_F(ConsoleTest, EveryPageTellsWhetherTheLampsAreReached) {
  OpenConsole();
  Press(Qt::Key_1, Qt::ControlModifier);
  wire.status = {
      dmx::DmxInterfaceStatus::State::Searching, 0, {}, 0, "None.", {support::Sentence::NoBox, {}}};
  Settle();
  EXPECT_EQ(TextOf("DmxState"), QStringLiteral("DMX: no box"));
  EXPECT_EQ(Find<QLabel>("DmxState").toolTip(), QStringLiteral("No K8062 is plugged in."));
  wire.status = {dmx::DmxInterfaceStatus::State::Sending, 14, {}, 0, "", {}};
  Settle();
  EXPECT_EQ(TextOf("DmxState"), QStringLiteral("DMX"));
  Press(Qt::Key_B, Qt::ControlModifier);
  EXPECT_EQ(TextOf("DmxState"), QStringLiteral("DMX: blackout"));
  Lights().TurnOutput(app::LightStation::Output::Off);
  Settle();
  EXPECT_FALSE(Find<QLabel>("DmxState").isVisible());
}

TEST_F(ConsoleTest, BlackoutAndMasterDarkenTheWireAndNoFader) {
  OpenConsole();
  Type(Fader(1), "200");
  Press(Qt::Key_1, Qt::ControlModifier);
  Press(Qt::Key_B, Qt::ControlModifier);
  EXPECT_EQ(wire.Level(1), 0) << "from every page";
  Press(Qt::Key_4, Qt::ControlModifier);
  EXPECT_EQ(Fader(1).value(), 200);
  EXPECT_TRUE(Find<QPushButton>("Blackout").isChecked());
  Click("Blackout");
  EXPECT_EQ(wire.Level(1), 200);
  Find<QSlider>("GrandMaster").setValue(128);
  Settle();
  EXPECT_EQ(wire.Level(1), 100);
  EXPECT_EQ(TextOf("GrandMasterValue"), QStringLiteral("50 %"));
  Click("AllDown");
  EXPECT_EQ(Fader(1).value(), 0);
}

TEST_F(ConsoleTest, TheStrobeGuardIsLiftedOnlyAfterAQuestion) {
  OpenConsole();
  Click("StrobeGuard");
  EXPECT_TRUE(Lights().View().flash_guard);
  QTest::keyClick(&Find<MessageBox>("StrobeGuardBox"), Qt::Key_Escape);
  Settle();
  EXPECT_TRUE(Lights().View().flash_guard);
  Click("StrobeGuard");
  Click("StrobeGuardBoxYes");
  EXPECT_FALSE(Lights().View().flash_guard);
  EXPECT_FALSE(Find<QPushButton>("StrobeGuard").isChecked());
  Click("StrobeGuard");
  EXPECT_TRUE(Lights().View().flash_guard);
}

TEST_F(ConsoleTest, TheShowPlayerPlaysHoldsSeeksAndStops) {
  OpenConsole();
  TakeShow("Dance", 200);
  Click("ShowPlay");
  Advance(1000ms);
  EXPECT_NEAR(Fader(1).value(), 104, 8);
  EXPECT_EQ(TextOf("ShowPlace"), QStringLiteral("Scene 1 of 1: Blue, step 1"));
  Click("ShowPause");
  const int held = wire.Level(1);
  Advance(500ms);
  EXPECT_EQ(wire.Level(1), held);
  Click("ShowPause");
  Find<QSlider>("ShowPosition").setValue(7500);
  Settle();
  EXPECT_EQ(wire.Level(1), 200);
  EXPECT_EQ(TextOf("ShowTime"), QStringLiteral("00:03.0 / 00:04.0"));
  Click("ShowStop");
  EXPECT_EQ(wire.Level(1), 200);
  EXPECT_FALSE(Find<QPushButton>("ShowStop").isEnabled());
}

TEST_F(ConsoleTest, AShowChosenWhileAnotherPlaysBeginsWithPlay) {
  OpenConsole();
  TakeShow("One", 200);
  Click("ShowPlay");
  TakeShow("Two", 50);
  EXPECT_TRUE(TextOf("ShowPlace").startsWith(QStringLiteral("Next: Two")));
  Advance(500ms);
  Click("ShowPlay");
  Advance(2200ms);
  EXPECT_EQ(wire.Level(1), 50);
}

TEST_F(ConsoleTest, ShowsOfTheFolderAreOffered) {
  fs::create_directories(folder / "DMXShows");
  std::ofstream(folder / "DMXShows" / "Good.SHW")
      << "1\r\nGone.dmx\r\n1\r\n3\r\n1\r\n1\r\nScene\r\n1\r\n0\r\n";
  std::ofstream(folder / "DMXShows" / "Bad.SHW") << "many\r\n";
  OpenConsole();
  workers.RunAll();
  Settle();
  Choose("ShowList", 1);
  EXPECT_EQ(Lights().View().show.show->name, "Good");
  EXPECT_TRUE(Told().contains(QStringLiteral("Gone.dmx"))) << Told().toStdString();
  Choose("ShowList", 0);
  EXPECT_EQ(Find<QComboBox>("ShowList").currentText(), QStringLiteral("Good")) << "the other one is not open";
  EXPECT_TRUE(Told().startsWith(QStringLiteral("Bad.SHW cannot be opened:"))) << Told().toStdString();
}

TEST_F(ConsoleTest, ButtonsAskForTheEditors) {
  OpenConsole();
  auto& page = Find<ConsolePage>("ConsolePage");
  QSignalSpy library(&page, &ConsolePage::LibraryWanted);
  QSignalSpy editor(&page, &ConsolePage::ShowEditorWanted);
  Click("LibraryButton");
  Click("DMXButton");
  EXPECT_EQ(library.count(), 1);
  EXPECT_EQ(editor.count(), 1);
}

}  // namespace
}  // namespace ui::testing
