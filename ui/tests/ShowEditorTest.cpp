// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSlider>
#include <QTableWidget>
#include <fstream>

#include "dmx/ShowFile.h"
#include "dmx/testing/ShowMaker.h"
#include "ui/forms/DMX.h"
#include "ui/forms/MessageBox.h"
#include "ui/tests/EditorBooth.h"
#include "ui/widgets/Pad.h"

namespace ui::testing {
namespace {

/// The show editor under real events. Its library: Head with four channels, Par with three, Spot with one.
class ShowEditorTest : public EditorBooth {
 protected:
  ShowEditorTest() { OpenEditor(); }

  void OpenEditor() {
    Press(Qt::Key_D, Qt::ControlModifier | Qt::ShiftModifier);
    editor = window->OpenEditors().ShowEditor();
    Work();
  }
  const dmx::Show& Show() { return window->OpenEditors().ShowEditor()->Show(); }
  void ChooseFixture(const char* name) {
    auto& list = In<QListWidget>("LibraryList");
    const auto found = list.findItems(QLatin1String(name), Qt::MatchExactly);
    ClickAt(*list.viewport(), list.visualItemRect(found.at(0)).center());
  }
  void ChooseRow(const char* table, int row, Qt::KeyboardModifiers modifiers = {}) {
    auto& list = In<QTableWidget>(table);
    ClickAt(*list.viewport(), list.visualItemRect(list.item(row - 1, 0)).center(), modifiers);
  }
  void PatchAt(const char* name, const char* start) {
    ChooseFixture(name);
    auto& field = In<QLineEdit>("PatchStart");
    field.selectAll();
    QTest::keyClicks(&field, QLatin1String(start));
    Click("PatchFixture");
  }
  /// A click into a pad, both from 0 to 1.
  void Point(const char* pad, double x, double y) {
    auto& field = In<Pad>(pad);
    const QPointF inside(x * (field.width() - 2 * Em(field, 0.5)), y * (field.height() - 2 * Em(field, 0.5)));
    ClickAt(field, (inside + QPointF(Em(field, 0.5), Em(field, 0.5))).toPoint());
  }
  void Pull(int channel, Qt::Key key) {
    auto& fader = In<QSlider>(("Fader" + std::to_string(channel)).c_str());
    fader.setFocus();
    QTest::keyClick(&fader, key);
    Settle();
  }
  void TypeInto(const char* table, int row, int column, const char* text) {
    auto& list = In<QTableWidget>(table);
    list.editItem(list.item(row - 1, column));
    auto* edit = list.viewport()->findChild<QLineEdit*>();
    edit->selectAll();
    QTest::keyClicks(edit, QLatin1String(text));
    QTest::keyClick(edit, Qt::Key_Return);
    Settle();
  }
  std::vector<int> Levels(int scene, int step) {
    std::vector<int> levels;
    for (const dmx::Sliders& record : Show().scenes.Item(scene)->Steps.Item(step)->SceneChannel)
      levels.push_back(record.ChannelValue);
    return levels;
  }
  void Put(const char* name, const dmx::Show& show) {
    std::ofstream(folder / "DMXShows" / name, std::ios::binary) << dmx::ShowText(show);
  }
  void OpenShow(const char* name) {
    Click("Open");
    ChooseFile(name);
  }
  using V = std::vector<int>;
  /// Every channel that the fixtures of the show hold.
  V PatchedChannels() {
    V channels;
    for (const dmx::DMXfilename& fixture : Show().fixtures) {
      for (int i = 0; i < fixture.Channels.count(); ++i) channels.push_back(fixture.StartChannel + i);
    }
    return channels;
  }
};

TEST_F(ShowEditorTest, OpeningItStartsTheInterfaceWhateverTheSwitchSays) {
  const auto calls = wire.TakeCalls();
  const std::vector<std::string> expected{"StartDevice", "SetChannelCount 512"};
  EXPECT_NE(std::search(calls.begin(), calls.end(), expected.begin(), expected.end()), calls.end());
}

TEST_F(ShowEditorTest, AShowIsMadeFromNothingAndReadBackAsItWasMade) {
  clicks = 0;
  ChooseFixture("Par");
  Click("PatchFixture");
  Click("PatchFixture");
  ChooseFixture("Head");
  Click("PatchFixture");
  ChooseFixture("Spot");
  Click("PatchFixture");
  ChooseRow("PatchList", 1);
  ChooseRow("PatchList", 2, Qt::ControlModifier);
  Point("Colour1", 0, 0.5);  // both pars
  Click("AddScene");
  Point("Colour1", 0, 0);
  Click("AddScene");
  Point("Direction3", 1, 0);
  Pull(9, Qt::Key_End);
  Click("AddScene");
  Pull(11, Qt::Key_End);
  Click("AddScene");
  Click("Save");
  ChooseFile("Evening");
  std::cout << "Clicks for a show of four fixtures and four scenes: " << clicks << '\n';
  EXPECT_LE(clicks, 18);
  EXPECT_FALSE(editor->Changed());
  const auto read = dmx::ReadShow(Saved("DMXShows/Evening.shw"));
  ASSERT_TRUE(read.Ok());
  EXPECT_EQ(read.Value().show.scenes, Show().scenes);
  ASSERT_EQ(read.Value().show.fixtures.count(), 4);
  EXPECT_EQ(read.Value().show.fixtures.Item(3)->Filename, "Head.dmx");
  EXPECT_EQ(read.Value().show.fixtures.Item(4)->StartChannel, 11);
  EXPECT_EQ(Levels(1, 1), (V{255, 0, 0, 255, 0, 0, 0, 0, 0, 0, 0}));
  EXPECT_EQ(Levels(2, 1), (V{255, 255, 255, 255, 255, 255, 0, 0, 0, 0, 0}));
  EXPECT_EQ(Levels(3, 1), (V{255, 255, 255, 255, 255, 255, 255, 0, 255, 0, 0}));
  EXPECT_EQ(Levels(4, 1), (V{255, 255, 255, 255, 255, 255, 255, 0, 255, 0, 255}));
  EXPECT_EQ(wire.Level(11), 255) << "every fader is on the wire";
  EXPECT_EQ(In<QLabel>("TotalLength").text(), QStringLiteral("Total length 00:16.0"));
}

TEST_F(ShowEditorTest, TheDirectionPadMovesFineChannelsWhereAFixtureHasThem) {
  using Function = dmx::ChannelFunction;
  AddFixture("Wash.dmx", {{Function::Pan, "Pan"}, {Function::Free, "Pan fine"}, {Function::Tilt, "Tilt"}});
  QEvent activated(QEvent::ActivationChange);
  QApplication::sendEvent(editor, &activated);
  Work();
  ChooseFixture("Wash");
  Click("PatchFixture");
  Point("Direction1", 0.3, 0.3);
  const double pan = (In<QSlider>("Fader1").value() * 256 + In<QSlider>("Fader2").value()) / 65535.0;
  const double tilt = In<QSlider>("Fader3").value() / 255.0;
  EXPECT_NEAR(pan, In<Pad>("Direction1").Place().x(), 1.0 / 65535);
  EXPECT_NEAR(tilt, In<Pad>("Direction1").Place().y(), 1.0 / 255);
  EXPECT_NE(In<QSlider>("Fader2").value(), 0);
  In<QSlider>("Fader2").setValue(0);
  Settle();
  EXPECT_EQ(In<Pad>("Direction1").Place().x(), In<QSlider>("Fader1").value() * 256 / 65535.0);
}

TEST_F(ShowEditorTest, WhatDoesNotFitIsRefusedInWords) {
  PatchAt("Par", "5");
  const struct {
    const char* start;
    const char* told;
  } cases[] = {{"4", "Channel 5 is already taken. Please choose another Start Channel"},
               {"511", "You are over the available 512 channels!"},
               {"0", "You are over the available 512 channels!"},
               {"9999", "You are over the available 512 channels!"}};
  for (const auto& one : cases) {
    PatchAt("Par", one.start);
    EXPECT_EQ(Asked(), QLatin1String(one.told)) << one.start;
    Click("MessageClose");
  }
  EXPECT_EQ(Show().fixtures.count(), 1);
  EXPECT_EQ(In<QLineEdit>("PatchStart").text(), QStringLiteral("1")) << "a free place is suggested";
}

TEST_F(ShowEditorTest, AShowWithoutAScene) {
  Click("PatchFixture");
  Click("Save");
  EXPECT_EQ(Asked(), QStringLiteral("You don't have any Scene"));
  EXPECT_EQ(editor->findChild<QFileDialog*>(), nullptr);
  EXPECT_FALSE(In<QWidget>("PlayFrom").isEnabled());
}

TEST_F(ShowEditorTest, TheDialogsAskForShowsInTheShowFolder) {
  Click("Open");
  auto& dialog = In<QFileDialog>("OpenDialog");
  EXPECT_EQ(dialog.nameFilters(), QStringList{QStringLiteral("DMX Show File (*.SHW)")});
  EXPECT_EQ(dialog.directory().dirName(), QStringLiteral("DMXShows"));
  dialog.close();
  EXPECT_EQ(Show(), dmx::Show{});
}

TEST_F(ShowEditorTest, AStepThatIsChosenStandsOnTheFadersAndIsRecordedAgain) {
  ChooseFixture("Spot");
  Click("PatchFixture");
  Click("AddScene");
  Pull(1, Qt::Key_End);
  Click("AddStep");
  ChooseRow("Steps", 1);
  EXPECT_EQ(wire.Level(1), 0);
  ChooseRow("Steps", 2);
  EXPECT_EQ(wire.Level(1), 255);
  Pull(1, Qt::Key_PageDown);
  Click("RecordStep");
  EXPECT_EQ(Levels(1, 2), V{wire.Level(1)});
  EXPECT_LT(wire.Level(1), 255);
  Click("StepUp");
  Click("CopyStep");
  Click("RemoveStep");
  EXPECT_EQ(Show().scenes.Item(1)->Steps.count(), 2);
  Click("CopyScene");
  Click("SceneUp");
  EXPECT_EQ(Show().scenes.Item(1)->SceneName, "Scene 1 (copy)");
  QTest::keyClick(editor, Qt::Key_Z, Qt::ControlModifier);
  QTest::keyClick(editor, Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(Show().scenes.count(), 1);
}

TEST_F(ShowEditorTest, NamesLoopsAndTimesAreTypedIntoTheLists) {
  Click("AddScene");
  Click("AddStep");
  TypeInto("Scenes", 1, 0, "Dance");
  TypeInto("Scenes", 1, 1, "3");
  ChooseRow("Steps", 1);
  ChooseRow("Steps", 2, Qt::ShiftModifier);
  TypeInto("Steps", 2, 1, "2.5");
  TypeInto("Steps", 2, 2, "1:00");
  TypeInto("Steps", 2, 2, "soon");
  const dmx::Scene& scene = *Show().scenes.Item(1);
  EXPECT_EQ(scene.SceneName, "Dance");
  EXPECT_EQ(scene.Loops, 3);
  for (const dmx::SceneStep& step : scene.Steps) EXPECT_EQ(step.FadeTime + step.WaitTime, "00:02.501:00.0");
  EXPECT_EQ(In<QTableWidget>("Scenes").item(0, 2)->text(), QStringLiteral("02:05.0"));
  EXPECT_EQ(In<QTableWidget>("Steps").item(1, 2)->text(), QStringLiteral("01:00.0")) << "no time is no time";
}

TEST_F(ShowEditorTest, AShowIsPlayedFromTheChosenStepOn) {
  ChooseFixture("Spot");
  Click("PatchFixture");
  Click("AddScene");
  Pull(1, Qt::Key_End);
  Click("AddScene");
  Click("PlayFrom");
  Advance(1500ms);
  EXPECT_EQ(station->Lights().View().show.place.scene, 2);
  EXPECT_EQ(wire.Level(1), 255);
  EXPECT_TRUE(In<QLabel>("Playing").text().startsWith(QStringLiteral("Scene 2, step 1")));
  ChooseRow("Scenes", 1);
  EXPECT_EQ(wire.Level(1), 255) << "while it plays, no look is shown";
  Click("StopPlay");
  EXPECT_EQ(station->Lights().View().show.state, dmx::ShowPlayer::State::Stopped);
}

TEST_F(ShowEditorTest, AMissingFixtureIsNamedKeptAndLocated) {
  dmx::Show show;
  show.fixtures.Add({"Gone.dmx", 1, 3, {}});
  show.fixtures.Add({"Spot.dmx", 4, 1, {}});
  dmx::SceneStep& step = show.scenes.Add().Steps.Add();
  for (const int level : {1, 2, 3, 4})
    step.SceneChannel.Add().ChannelValue = static_cast<std::int16_t>(level);
  Put("Old.SHW", show);
  OpenShow("Old.SHW");
  EXPECT_TRUE(Asked().contains(QStringLiteral("Gone.dmx")));
  EXPECT_EQ(Levels(1, 1), (V{1, 2, 3, 4}));
  EXPECT_FALSE(editor->Changed());
  Click("MessageClose");
  EXPECT_TRUE(In<QWidget>("LocateFixture").isVisible()) << "the missing one is chosen";
  Click("LocateFixture");
  ChooseFile("Par.dmx");
  EXPECT_TRUE(Show().fixtures.Item(1)->Filename.ends_with("\\DMXlibrary\\Par.dmx"));
  EXPECT_EQ(Levels(1, 1), (V{1, 2, 3, 4}));
  EXPECT_TRUE(editor->Changed());
  EXPECT_FALSE(In<QWidget>("LocateFixture").isVisible());
}

TEST_F(ShowEditorTest, AFixtureFromElsewhereIsBroughtIntoTheLibrary) {
  dmx::Show show;
  show.fixtures.Add({"Gone.dmx", 1, 3, {}});
  show.scenes.Add();
  Put("Old.SHW", show);
  std::filesystem::create_directories(folder / "stick");
  std::filesystem::copy(folder / "DMXlibrary" / "Par.dmx", folder / "stick" / "Fine.dmx");
  OpenShow("Old.SHW");
  Click("MessageClose");
  Click("LocateFixture");
  ChooseFile((folder / "stick" / "Fine.dmx").string());
  EXPECT_NE(Saved("DMXlibrary/Fine.dmx"), "");
  EXPECT_TRUE(Show().fixtures.Item(1)->Filename.ends_with("\\DMXlibrary\\Fine.dmx"));
}

TEST_F(ShowEditorTest, AFixtureThatHasNoPlaceIsReportedTakenOutAndKeptForTheFile) {
  dmx::Show show;
  show.fixtures.Add({"Par.dmx", 1, 3, {}});
  show.fixtures.Add({"Spot.dmx", 2, 1, {}});
  show.scenes.Add().Steps.Add() = dmx::testing::StepWith("00:00.0", "00:01.0", {1, 2, 3, 200});
  Put("Clash.SHW", show);
  OpenShow("Clash.SHW");
  EXPECT_TRUE(
      Asked().startsWith(QStringLiteral("Channel 2 is already taken. Please choose another Start Channel")));
  EXPECT_TRUE(Asked().contains(QStringLiteral("Spot.dmx")));
  EXPECT_EQ(Show().fixtures.count(), 1);
  EXPECT_FALSE(editor->Changed()) << "the file is what it was";
  Click("MessageClose");
  ChooseRow("PatchList", 2);
  In<QLineEdit>("PatchStart").setText(QStringLiteral("9"));
  Click("MoveFixture");
  EXPECT_EQ(Show().fixtures.count(), 2);
  EXPECT_EQ(PatchedChannels(), (V{1, 2, 3, 9}));
  Click("Undo");
  ChooseRow("PatchList", 2);
  Click("RemoveFixture");
  EXPECT_TRUE(Asked().contains(QStringLiteral("Spot")));
  EXPECT_EQ(Show().aside.size(), 1U) << "until it was agreed to";
  Click("DropYes");
  EXPECT_EQ(Levels(1, 1), (V{1, 2, 3}));
}

TEST_F(ShowEditorTest, AFixtureWhoseFileHasGrownIsRepairedAfterAQuestion) {
  dmx::Show show;
  show.fixtures.Add({"Par.dmx", 1, 2, {}});
  show.fixtures.Add({"Spot.dmx", 9, 1, {}});
  show.scenes.Add().Steps.Add() = dmx::testing::StepWith("00:00.0", "00:01.0", {1, 2, 90});
  Put("Old.SHW", show);
  OpenShow("Old.SHW");
  EXPECT_TRUE(
      Asked().contains(QStringLiteral("levels for 2 channels of \"Par.dmx\", whose file now describes 3")));
  Click("MessageClose");
  EXPECT_EQ(wire.Level(9), 90) << "no level has moved to another lamp";
  EXPECT_FALSE(editor->Changed());
  ChooseRow("PatchList", 2);
  EXPECT_FALSE(In<QWidget>("RepairFixture").isVisible());
  ChooseRow("PatchList", 1);
  Click("RepairFixture");
  EXPECT_EQ(Show().fixtures.Item(1)->NumberOf, 2);
  Click("RepairYes");
  EXPECT_EQ(Show().fixtures.Item(1)->NumberOf, 3);
  EXPECT_EQ(Levels(1, 1), (V{1, 2, 0, 90}));
  EXPECT_TRUE(editor->Changed());
}

TEST_F(ShowEditorTest, WhileLampsAreLiveAShowIsLookedAtBlindAndAHandIsSent) {
  dmx::Show show;
  show.fixtures.Add({"Spot.dmx", 1, 1, {}});
  show.fixtures.Add({"Spot.dmx", 2, 1, {}});
  dmx::Steps& steps = show.scenes.Add().Steps;
  steps.Add() = dmx::testing::StepWith("00:00.0", "00:01.0", {10, 100});
  steps.Add() = dmx::testing::StepWith("00:00.0", "00:01.0", {20, 200});
  Put("Live.SHW", show);
  wire.status.state = dmx::DmxInterfaceStatus::State::Sending;
  Settle();
  EXPECT_TRUE(In<QPushButton>("Blind").isChecked());
  wire.TakeCalls();
  OpenShow("Live.SHW");
  ChooseRow("Steps", 2);
  Advance(1s);
  EXPECT_EQ(In<QSlider>("Fader2").value(), 200);
  EXPECT_EQ(wire.TakeCalls(), std::vector<std::string>());
  Pull(2, Qt::Key_End);
  EXPECT_EQ(wire.TakeCalls(), std::vector<std::string>{"SetData 2 255"});
  Click("RecordStep");
  EXPECT_EQ(Levels(1, 2), (V{20, 255}));
  Click("Blind");
  Advance(1s);
  EXPECT_EQ(In<QSlider>("Fader1").value(), 0) << "faders show the lamps again";
  EXPECT_EQ(wire.TakeCalls(), std::vector<std::string>()) << "and none has moved";
  ChooseRow("Steps", 1);
  EXPECT_EQ(wire.Level(2), 100);
}

TEST_F(ShowEditorTest, ANewShowForgetsTheLookThatWasOnlyShown) {
  dmx::Show show;
  show.fixtures.Add({"Spot.dmx", 1, 1, {}});
  show.scenes.Add().Steps.Add() = dmx::testing::StepWith("00:00.0", "00:01.0", {100});
  Put("Look.SHW", show);
  wire.status.state = dmx::DmxInterfaceStatus::State::Sending;
  Settle();
  OpenShow("Look.SHW");
  EXPECT_EQ(In<QSlider>("Fader1").value(), 100);
  Click("btnNew");
  ChooseFixture("Spot");
  Click("PatchFixture");
  Advance(1s);
  EXPECT_EQ(In<QSlider>("Fader1").value(), 0) << "the lamp is dark";
}

TEST_F(ShowEditorTest, AFixtureWhoseFileEndsEarlyIsMarkedInBothLists) {
  std::ofstream(folder / "DMXlibrary" / "Torn.dmx") << "Torn\r\n3\r\n0\r\n0\r\n0\r\n2\r\nChannel1\r\n3\r\n";
  QEvent activated(QEvent::ActivationChange);
  QApplication::sendEvent(editor, &activated);
  Work();
  ChooseFixture("Torn");
  EXPECT_TRUE(In<QListWidget>("LibraryList").currentItem()->toolTip().contains(QStringLiteral("ends early")));
  Click("PatchFixture");
  const QTableWidgetItem* row = In<QTableWidget>("PatchList").item(0, 2);
  EXPECT_TRUE(row->text().contains(QStringLiteral("⚠")));
  EXPECT_TRUE(row->toolTip().contains(QStringLiteral("ends early")));
}

TEST_F(ShowEditorTest, AValueThatWasBroughtIntoBoundsIsAChange) {
  std::ofstream(folder / "DMXShows" / "loud.SHW", std::ios::binary)
      << "0\r\n1\r\n1\r\nLoud\r\n1\r\n1\r\n1\r\n00:00.0\r\n00:00.0\r\n300\r\nFalse\r\n0\r\n0\r\n\r\n";
  OpenShow("loud.SHW");
  EXPECT_FALSE(Asked().isEmpty());
  EXPECT_TRUE(editor->Changed());
}

TEST_F(ShowEditorTest, AShowFromElsewhereIsSavedAmongTheShows) {
  dmx::Show show;
  show.scenes.Add();
  std::filesystem::create_directories(folder / "stick");
  std::ofstream(folder / "stick" / "Guest.SHW", std::ios::binary) << dmx::ShowText(show);
  OpenShow((folder / "stick" / "Guest.SHW").string().c_str());
  Click("Save");
  EXPECT_EQ(In<QFileDialog>("SaveDialog").directory().dirName(), QStringLiteral("DMXShows"));
  ChooseFile("");
  EXPECT_NE(Saved("DMXShows/Guest.SHW"), "");
}

TEST_F(ShowEditorTest, ADamagedShowOpensAsANewOneAndAnUnreadableOneNotAtAll) {
  std::ofstream(folder / "DMXShows" / "half.SHW") << "1\r\nPar.dmx\r\n1\r\n3\r\n1\r\n1\r\nHalf\r\n2\r\n";
  std::ofstream(folder / "DMXShows" / "bad.SHW") << "some\r\n";
  OpenShow("half.SHW");
  EXPECT_TRUE(Asked().startsWith(QStringLiteral("The file ends early.")));
  EXPECT_EQ(Show().scenes.Item(1)->SceneName, "Half");
  EXPECT_TRUE(editor->Changed());
  Click("MessageClose");
  const dmx::Show before = Show();
  Click("Open");
  Click("DMXSaveFirstNo");
  ChooseFile("bad.SHW");
  EXPECT_FALSE(Asked().isEmpty());
  EXPECT_EQ(Show(), before);
}

TEST_F(ShowEditorTest, FixturesAreMovedAndRemovedWithTheirLevels) {
  ChooseFixture("Spot");
  Click("PatchFixture");
  Pull(1, Qt::Key_End);
  Click("AddScene");
  ChooseRow("PatchList", 1);
  In<QLineEdit>("PatchStart").setText(QStringLiteral("100"));
  Click("MoveFixture");
  EXPECT_EQ(Show().fixtures.Item(1)->StartChannel, 100);
  EXPECT_EQ(Levels(1, 1), V{255});
  Pull(100, Qt::Key_End);
  EXPECT_EQ(wire.Level(100), 255);
  ChooseRow("PatchList", 1);
  Click("RemoveFixture");
  EXPECT_EQ(Levels(1, 1), V{});
}

}  // namespace
}  // namespace ui::testing
