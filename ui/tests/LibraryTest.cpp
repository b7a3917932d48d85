// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSlider>
#include <QTableWidget>
#include <QTimer>
#include <fstream>

#include "dmx/FixtureFile.h"
#include "ui/forms/ChannelColumn.h"
#include "ui/forms/ConsolePage.h"
#include "ui/forms/Library.h"
#include "ui/tests/EditorBooth.h"

namespace ui::testing {
namespace {

/// The fixture editor under real events.
class LibraryTest : public EditorBooth {
 protected:
  LibraryTest() {
    Press(Qt::Key_L, Qt::ControlModifier | Qt::ShiftModifier);
    editor = window->OpenEditors().FixtureEditor();
  }

  void Type(const char* field, const char* text) {
    auto& edit = In<QLineEdit>(field);
    edit.setFocus();
    edit.selectAll();
    QTest::keyClicks(&edit, QLatin1String(text));
  }
  void StepUp(const char* button, int times) {
    for (int i = 0; i < times; ++i) Click(button);
  }
  void ChooseFunction(int channel, int index) {
    Click(("Function" + std::to_string(channel)).c_str());
    auto& menu = In<QMenu>("Functions");
    QTest::mouseClick(&menu, Qt::LeftButton, {}, menu.actionGeometry(menu.actions().at(index)).center());
    Settle();
  }
  /// A fixture that nothing is wrong with.
  void MakeDimmer(const char* name) {
    Type("Text1", name);
    Click("ChannelsUp");
    ChooseFunction(1, 3);
  }
};

TEST_F(LibraryTest, OpeningItTellsTheInterfaceHowManyChannelsThereAre) {
  EXPECT_EQ(Calls("SetChannelCount 512"), 1);
  EXPECT_EQ(Calls("StartDevice"), 0);
  Press(Qt::Key_L, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(window->OpenEditors().FixtureEditor(), editor) << "there is one";
}

TEST_F(LibraryTest, EachButtonStepsOnceAndGoesOnFromItsOwnTimerWhileItIsHeld) {
  const struct {
    const char* button;
    const char* label;
    const char* stepped;
    const char* held;
  } cases[] = {{"TiltUp", "TiltText", "Tilt Angle: 1°", "Tilt Angle: 3°"},
               {"TiltDown", "TiltText", "Tilt Angle: 2°", "Tilt Angle: 0°"},
               {"PanUp", "PanText", "Pan Angle: 1°", "Pan Angle: 3°"},
               {"PanDown", "PanText", "Pan Angle: 2°", "Pan Angle: 0°"},
               {"BeamUp", "BeamText", "Beam Angle: 1°", "Beam Angle: 3°"},
               {"BeamDown", "BeamText", "Beam Angle: 2°", "Beam Angle: 0°"},
               {"ChannelsUp", "ChannelsText", "Channels: 1", "Channels: 3"},
               {"ChannelsDown", "ChannelsText", "Channels: 2", "Channels: 0"}};
  int number = 0;
  for (const auto& one : cases) {
    auto& button = In<QPushButton>(one.button);
    auto& timer = In<QTimer>(("tmrCommand" + std::to_string(++number)).c_str());
    QTest::mousePress(&button, Qt::LeftButton);
    EXPECT_EQ(In<QLabel>(one.label).text(), QString::fromUtf8(one.stepped));
    EXPECT_TRUE(timer.isActive());
    for (int i = 0; i < 2; ++i) QMetaObject::invokeMethod(&timer, "timeout");
    EXPECT_EQ(In<QLabel>(one.label).text(), QString::fromUtf8(one.held));
    QTest::mouseRelease(&button, Qt::LeftButton);
    EXPECT_FALSE(timer.isActive());
  }
}

TEST_F(LibraryTest, LevelFieldsDropEveryKeyThatIsNotTheirs) {
  Click("ChannelsUp");
  for (const char* field : {"StartLevel", "EndLevel", "ThirdValue"}) {
    Type(field, "a1-2/ ,b+.3");
    EXPECT_EQ(In<QLineEdit>(field).text(), QStringLiteral("12,.3"));
    QTest::keyClick(&In<QLineEdit>(field), Qt::Key_Backspace);
    EXPECT_EQ(In<QLineEdit>(field).text(), QStringLiteral("12,."));
  }
}

TEST_F(LibraryTest, PresetsAreAddedEachFromWhereTheLastOneEnds) {
  MakeDimmer("D");
  Type("PresetName", "Low");
  Type("EndLevel", "99");
  Type("ThirdValue", "2.5");
  Click("AddPreset");
  Type("PresetName", "High");
  Click("AddPreset");
  auto& list = In<QTableWidget>("PresetList");
  ASSERT_EQ(list.rowCount(), 2);
  EXPECT_EQ(list.item(0, 2)->text(), QStringLiteral("0 --> 99"));
  EXPECT_EQ(list.item(0, 5)->text(), QStringLiteral("2.5"));
  EXPECT_EQ(list.item(1, 2)->text(), QStringLiteral("100 --> 255"));
  Type("StartLevel", "99");
  Click("AddPreset");
  EXPECT_TRUE(
      In<QPlainTextEdit>("Problems")
          .toPlainText()
          .startsWith(QStringLiteral("Channel 1: The DMX level for Preset 1 is overlapping with Preset 3!")));
}

TEST_F(LibraryTest, SlidersSendToTheLampThatIsTried) {
  station->Lights().TurnOutput(app::LightStation::Output::On);
  StepUp("ChannelsUp", 3);
  Type("StartChannel", "510");
  EXPECT_EQ(In<QLabel>("Counter3").text(), QStringLiteral("DMX 512"));
  auto& slider = In<QSlider>("Slider3");
  slider.setFocus();
  QTest::keyClick(&slider, Qt::Key_End);
  Settle();
  EXPECT_EQ(wire.Level(512), 255);
  station->Lights().MoveFader(511, 7);
  Advance(1s);
  EXPECT_EQ(In<QSlider>("Slider2").value(), 7) << "whoever moved it";
  Click("ShowSliders");
  EXPECT_FALSE(slider.isVisible());
  EXPECT_EQ(In<QPushButton>("ShowSliders").text(), QStringLiteral("Show Sliders"));
}

TEST_F(LibraryTest, OnlyTheChannelsThatAreSeenHaveColumnsAndTheKeyboardReachesAll) {
  AddFixture("Wall.dmx", std::vector<std::pair<dmx::ChannelFunction, const char*>>(
                             512, {dmx::ChannelFunction::Dimmer, "Pixel"}));
  editor->Flow().Open(folder / "DMXlibrary" / "Wall.dmx");
  Work();
  EXPECT_LT(editor->findChildren<ChannelColumn*>().size(), 40);
  In<QPushButton>("Choose1").setFocus();
  for (int stop = 0; stop < 4 * 60; ++stop) QTest::keyClick(editor->focusWidget(), Qt::Key_Tab);
  EXPECT_EQ(editor->focusWidget()->objectName(), QStringLiteral("Choose61"));
  EXPECT_FALSE(editor->focusWidget()->visibleRegion().isEmpty()) << "it was brought into view";
  QTest::keyClick(editor->focusWidget(), Qt::Key_Backtab);
  EXPECT_EQ(editor->focusWidget()->objectName(), QStringLiteral("Label60"));
  QTest::keyClicks(editor->focusWidget(), QStringLiteral("!"));
  In<QScrollArea>("ChannelArea").horizontalScrollBar()->setValue(1'000'000);
  EXPECT_EQ(In<QLabel>("Counter512").text(), QStringLiteral("DMX 512"));
  EXPECT_EQ(editor->focusWidget()->objectName(), QStringLiteral("Label60")) << "it is still typed in";
  EXPECT_EQ(In<QLineEdit>("Label60").text(), QStringLiteral("!"));
  EXPECT_EQ(In<QLineEdit>("Label512").text(), QStringLiteral("Pixel"));
  EXPECT_LT(editor->findChildren<ChannelColumn*>().size(), 40);
}

TEST_F(LibraryTest, UndoAndRedoReachTheFixtureFromEveryField) {
  Type("Text1", "Spot");
  StepUp("ChannelsUp", 2);
  Type("Label2", "Iris");
  QTest::keyClick(&In<QLineEdit>("Label2"), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(In<QLineEdit>("Label2").text(), QString());
  for (int i = 0; i < 2; ++i) QTest::keyClick(&In<QLineEdit>("Text1"), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(In<QLabel>("ChannelsText").text(), QStringLiteral("Channels: 0"));
  Click("Undo");
  EXPECT_EQ(In<QLineEdit>("Text1").text(), QString());
  EXPECT_FALSE(In<QPushButton>("Undo").isEnabled());
  for (int i = 0; i < 4; ++i) QTest::keyClick(&In<QLineEdit>("Text1"), Qt::Key_Y, Qt::ControlModifier);
  EXPECT_EQ(In<QLineEdit>("Label2").text(), QStringLiteral("Iris"));
}

TEST_F(LibraryTest, AFixtureWithoutANameIsNotSaved) {
  Click("Save");
  EXPECT_EQ(Asked(), QStringLiteral("You must give a name for this Fixture!"));
  EXPECT_EQ(editor->findChild<QFileDialog*>(), nullptr);
}

TEST_F(LibraryTest, ErrorsAreMendedOrSavedAsTheyStand) {
  Type("Text1", "Blind");
  for (const char* answer : {"LibraryMendYes", "LibraryMendNo"}) {
    Click("Save");
    EXPECT_EQ(Asked(), QStringLiteral(
                           "Following errors occurred:\r\n\r\nThis Fixture doesn't show any light! You must "
                           "have a Shutter and/or a Dimmer.\r\nIn order to make a correct show you have to "
                           "solve these problems.\r\nDo you want to make this changes?"));
    Click(answer);
    EXPECT_EQ(editor->findChild<QFileDialog*>() != nullptr, std::string(answer) == "LibraryMendNo");
  }
  auto& dialog = In<QFileDialog>("SaveDialog");
  EXPECT_EQ(dialog.nameFilters(), QStringList{QStringLiteral("DMX Files (*.dmx)")});
  EXPECT_EQ(dialog.defaultSuffix(), QStringLiteral("dmx"));
  EXPECT_FALSE(dialog.isModal());
  ChooseFile("Blind");
  EXPECT_EQ(dmx::ReadFixture(Saved("DMXlibrary/Blind.dmx")).Value().fixture.name, "Blind");
  EXPECT_FALSE(editor->Changed());
}

TEST_F(LibraryTest, NewSavesFirstWhenThatIsWantedAndElseThrowsAway) {
  MakeDimmer("One");
  Click("btnNew");
  EXPECT_EQ(Asked(), QStringLiteral("Save the changes?"));
  Click("LibrarySaveFirstYes");
  ChooseFile("One");
  EXPECT_EQ(dmx::ReadFixture(Saved("DMXlibrary/One.dmx")).Value().fixture.channels.count(), 1);
  EXPECT_EQ(In<QLineEdit>("Text1").text(), QString());
  EXPECT_EQ(In<QLabel>("ChannelsText").text(), QStringLiteral("Channels: 0"));
  Type("Text1", "Two");
  Click("btnNew");
  Click("LibrarySaveFirstCancel");
  EXPECT_EQ(In<QLineEdit>("Text1").text(), QStringLiteral("Two"));
  Click("btnNew");
  Click("LibrarySaveFirstNo");
  EXPECT_EQ(In<QLineEdit>("Text1").text(), QString());
  EXPECT_EQ(Saved("DMXlibrary/Two.dmx"), "");
}

TEST_F(LibraryTest, AFileThatStandsThereIsReplacedOnlyAfterAQuestion) {
  MakeDimmer("Par");
  Click("Save");
  ChooseFile("Par");
  EXPECT_TRUE(Asked().contains(QStringLiteral("Par.dmx")));
  Click("ReplaceNo");
  EXPECT_EQ(Saved("DMXlibrary/Par.dmx"), "");
  Click("Save");
  ChooseFile("Par");
  Click("ReplaceYes");
  Work();
  Type("Text1", "Par 2");
  Click("Save");
  ChooseFile("");
  EXPECT_TRUE(Saved("DMXlibrary/Par.dmx").starts_with("Par 2\r\n")) << "its own file is nothing to ask about";
}

TEST_F(LibraryTest, WhatCannotBeWrittenOrReadIsSaidAndChangesNothing) {
  MakeDimmer("Full");
  files.SetFull(true);
  Click("Save");
  ChooseFile("Full");
  EXPECT_TRUE(Asked().contains(QStringLiteral("cannot be written")));
  EXPECT_TRUE(editor->Changed());
  std::ofstream(folder / "DMXlibrary" / "bad.dmx") << "Bad\r\n1\r\n0\r\n0\r\n0\r\nmany\r\n";
  Click("Open");
  Click("LibrarySaveFirstNo");
  ChooseFile("bad.dmx");
  EXPECT_FALSE(Asked().isEmpty());
  EXPECT_EQ(In<QLineEdit>("Text1").text(), QStringLiteral("Full"));
}

TEST_F(LibraryTest, AFileThatEndsEarlyShowsWhatWasReadAndSaysSo) {
  std::ofstream(folder / "DMXlibrary" / "short.dmx") << "Short\r\n2\r\n30\r\n400\r\n";
  Click("Open");
  ChooseFile("short.dmx");
  EXPECT_TRUE(Asked().startsWith(QStringLiteral("The file ends early.")));
  EXPECT_EQ(In<QLineEdit>("Text1").text(), QStringLiteral("Short"));
  EXPECT_EQ(In<QLabel>("PanText").text(), QStringLiteral("Pan Angle: 360°"));
  EXPECT_TRUE(editor->Changed());
  Click("MessageClose");
  Click("Save");
  Click("LibraryMendNo");
  ChooseFile("short.dmx");
  EXPECT_TRUE(Asked().contains(QStringLiteral("short.dmx")))
      << "the damaged file is not written over unasked";
  EXPECT_EQ(Saved("DMXlibrary/short.dmx"), "");
}

TEST_F(LibraryTest, AValueThatWasBroughtIntoBoundsIsAChange) {
  std::ofstream(folder / "DMXlibrary" / "wide.dmx") << "Wide\r\n2\r\n30\r\n400\r\n0\r\n0\r\n";
  Click("Open");
  ChooseFile("wide.dmx");
  EXPECT_TRUE(editor->Changed());
}

TEST_F(LibraryTest, ItOpensOnTheLibraryAndHasNothingToSayOfAnEmptyFixture) {
  Work();
  auto& list = In<QListWidget>("FixtureList");
  ASSERT_EQ(list.count(), 3);
  EXPECT_TRUE(list.hasFocus());
  EXPECT_FALSE(In<QPlainTextEdit>("Problems").isVisible());
  ClickAt(*list.viewport(),
          list.visualItemRect(list.findItems(QStringLiteral("Par"), Qt::MatchExactly).at(0)).center());
  Work();
  EXPECT_EQ(In<QLineEdit>("Text1").text(), QStringLiteral("Par.dmx"));
  Type("Text1", "Mine");
  ClickAt(*list.viewport(), list.visualItemRect(list.item(0)).center());
  EXPECT_EQ(Asked(), QStringLiteral("Save the changes?"));
}

TEST_F(LibraryTest, ClosingTheMainWindowAsksForWhatIsNotSavedWhileTheMusicGoesOn) {
  LoadAndPlay(1, 1);
  Type("Text1", "Kept");
  window->close();
  Booth::Click("LeaveBoxYes");
  EXPECT_TRUE(window->isVisible());
  EXPECT_EQ(Asked(), QStringLiteral("Save the changes?"));
  Advance(1s);
  EXPECT_EQ(Deck(1).state, State::Playing);
  Click("LibrarySaveFirstCancel");
  EXPECT_TRUE(window->isVisible());
  window->close();
  Booth::Click("LeaveBoxYes");
  Click("LibrarySaveFirstNo");
  EXPECT_FALSE(window->isVisible());
  editor = nullptr;
}

TEST_F(LibraryTest, AChangeOfLanguageKeepsTheFixture) {
  MakeDimmer("Kept");
  Press(Qt::Key_8, Qt::ControlModifier);
  Choose("Language", 1);
  EXPECT_EQ(In<QLineEdit>("Text1").text(), QStringLiteral("Kept"));
  EXPECT_EQ(In<QPushButton>("btnNew").text(), QStringLiteral("Nieuw"));
  EXPECT_TRUE(In<QPushButton>("Undo").isEnabled());
}

TEST_F(LibraryTest, AnUnchangedEditorClosesWithoutAQuestionAndOpensAnew) {
  editor->close();
  Settle();
  EXPECT_EQ(window->OpenEditors().FixtureEditor(), nullptr);
  Q_EMIT window->findChild<ConsolePage*>()->LibraryWanted();
  Settle();
  EXPECT_EQ(Calls("SetChannelCount 512"), 2);
}

}  // namespace
}  // namespace ui::testing
