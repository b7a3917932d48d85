// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSlider>
#include <QTableView>
#include <fstream>

#include "ui/tests/Booth.h"
#include "ui/widgets/OutputLamps.h"
#include "ui/widgets/PatternGrid.h"

namespace ui::testing {
namespace {

class OrganPageTest : public Booth {
 protected:
  OrganPageTest() {
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "BankIO16.txt", std::ios::binary) << "[1]\r\n1:0:1\r\n0:1\r\n[2]\r\n1\r\n0:1\r\n";
    std::ofstream(folder / "BankDAC16.txt", std::ios::binary) << "[1]\r\n255:64;9;8\r\n[2]\r\n7\r\n";
    Open();
    Press(Qt::Key_5, Qt::ControlModifier);
    Work();
  }
  ~OrganPageTest() override { std::filesystem::remove_all(folder); }

  /// Workers, conductor and window come to rest.
  void Work() {
    for (int i = 0; i < 3; ++i) {
      workers.RunAll();
      Settle();
    }
  }
  void Push(const char* button) {
    Click(button);
    Work();
  }
  [[nodiscard]] const lightorgan::LightOrganView& Lamps() { return station->Organ().View().lamps; }
  std::string Stored(const char* section, const char* key) { return settings.Get("TLVG", section, key, ""); }
  /// Lamps that are lit in the picture, "1 3".
  std::string Lit(const char* picture = "pctK8000") {
    std::string lit;
    const auto& leds = Find<OutputLamps>(picture).Leds();
    for (std::size_t i = 0; i < leds.size(); ++i) {
      if (leds[i].light > 0) lit += (lit.empty() ? "" : " ") + std::to_string(i + 1);
    }
    return lit;
  }
  bool Shown(const char* name) { return Find<QWidget>(name).isVisible(); }
};

TEST_F(OrganPageTest, EachModeIsOneButtonAndShowsWhatAHandCanDo) {
  const struct {
    const char* button;
    const char* section;
    const char* word;
    const char* shown;
    const char* hidden;
  } kModes[] = {{"cmdK80000", "IO", "Mono", "IOScroller1", "btnOn1"},
                {"cmdK80001", "IO", "Stereo", "IOScroller8", "PatternIO"},
                {"cmdK80002", "IO", "LO", "IOScroller8", "IOScroller9"},
                {"cmdK80003", "IO", "PP", "PatternIO", "IOScroller1"},
                {"cmdK80004", "IO", "CONSTANT", "btnOn8", "btnOn9"},
                {"cmdK80005", "IO", "Beat", "BeatState", "btnOn1"},
                {"cmdK80006", "DAC", "LO", "DacScroller1", "PatternDAC"},
                {"cmdK80007", "DAC", "PP", "PatternDAC", "DacScroller1"},
                {"cmdK80008", "DAC", "CONSTANT", "DacScroller8", "DacScroller9"}};
  const int decks = Find<QWidget>("deck1").height();
  for (const auto& mode : kModes) {
    Push(mode.button);
    EXPECT_EQ(Find<QWidget>("deck1").height(), decks) << "a page takes no room from the decks";
    EXPECT_EQ(Stored("Effects", mode.section), mode.word);
    EXPECT_TRUE(Find<QPushButton>(mode.button).isChecked()) << mode.word;
    EXPECT_TRUE(Shown(mode.shown)) << mode.shown;
    EXPECT_FALSE(Shown(mode.hidden)) << mode.hidden;
  }
}

TEST_F(OrganPageTest, AButtonOfConstantModeLightsItsLampAndStaysDown) {
  Click("btnOn3");
  Click("btnOn8");
  EXPECT_EQ(Lit(), "3 8");
  EXPECT_TRUE(Find<QPushButton>("btnOn3").isChecked());
  Click("btnOn3");
  EXPECT_EQ(Lit(), "8");
}

TEST_F(OrganPageTest, SlidersMoveTheOrganAndFollowIt) {
  Push("cmdK80002");
  Find<QSlider>("IOScroller2").setValue(80);
  Find<QSlider>("ScrollerIO").setValue(40);
  Find<QSlider>("DacScroller8").setValue(200);
  Settle();
  EXPECT_EQ(Stored("IOLO", "2"), "80");
  EXPECT_EQ(Stored("IOLO", "Timer"), "40");
  EXPECT_EQ(Lit("DacLamps"), "8");
  station->Organ().Ask([](lightorgan::LightOrgan& organ) { organ.IOScroller(2, 10); });
  Advance(600ms);
  EXPECT_EQ(Find<QSlider>("IOScroller2").value(), 10);
}

TEST_F(OrganPageTest, LampsAndBarsFollowTheDeckThatPlays) {
  LoadAndPlay(1, 1);
  Push("cmdK80000");
  Advance(400ms);
  EXPECT_EQ(Lit(), "3 4");
  EXPECT_GT(Find<OutputLamps>("pctK8000").Leds()[2].level, 0.5F);
  Push("cmdK80005");
  EXPECT_NE(TextOf("BeatState").indexOf(QStringLiteral("deck 1")), -1);
}

TEST_F(OrganPageTest, ABankPlaysItsRowsAndItsSelectorKnowsHowManyThereAre) {
  Push("cmdK80003");
  EXPECT_EQ(Find<QSlider>("ScrollerPatternIO").maximum(), 2);
  EXPECT_EQ(TextOf("ScrollerPatternIOValue"), QStringLiteral("1 "));
  Find<QSlider>("ScrollerIO").setValue(100);
  Advance(20ms);
  const auto& grid = Find<PatternGrid>("PatternIO");
  EXPECT_EQ(grid.Rows(), 2);
  const int row = grid.Row();
  EXPECT_EQ(Lit(), row == 1 ? "1 3" : "2");
  Find<QSlider>("ScrollerPatternIO").setValue(2);
  Work();
  EXPECT_EQ(grid.Rows(), 1) << "the last step of the last bank is never played";
  EXPECT_EQ(Stored("Banks", "CurrentBank"), "2");
}

TEST_F(OrganPageTest, TwoBoardsShowSixteenOfEverything) {
  Choose("IoBoardSize", 1);
  Work();
  EXPECT_EQ(Stored("Setup", "IoBoardSize"), "32");
  EXPECT_EQ(Find<OutputLamps>("pctK8000").Leds().size(), 16U);
  EXPECT_TRUE(Shown("btnOn16"));
  EXPECT_TRUE(Shown("DacScroller16"));
}

TEST_F(OrganPageTest, TheSettingsPageHoldsTheNumberOfBoardsToo) {
  Choose("SetupIoBoardSize", 1);
  Work();
  EXPECT_EQ(Find<QComboBox>("IoBoardSize").currentIndex(), 1);
}

TEST_F(OrganPageTest, BoardsThatCannotBeOpenedAreToldOnThePage) {
  Push("UseK8000");
  EXPECT_EQ(Stored("Setup", "UseK8000"), "True");
  EXPECT_TRUE(TextOf("BoardState").startsWith(QStringLiteral("No IO board could be opened")));
  Click("MessageClose");
  Push("UseK8000");
  EXPECT_EQ(TextOf("BoardState"), QStringLiteral("Off: lamps on screen only."));
}

TEST_F(OrganPageTest, TheFlashGuardIsLiftedAfterAQuestionOnlyAndSaysWhenItHolds) {
  Click("FlashGuard");
  EXPECT_TRUE(Find<QPushButton>("FlashGuard").isChecked());
  Click("GuardBoxNo");
  EXPECT_FALSE(Lamps().guard_lifted);
  Push("UseK8000");  // only what goes to boards is guarded
  Click("MessageClose");
  for (int i = 0; i < 12; ++i) Click("btnOn1");
  EXPECT_EQ(TextOf("FlashGuardHolds"), QStringLiteral("Holds back"));
  Click("FlashGuard");
  Click("GuardBoxYes");
  EXPECT_TRUE(Lamps().guard_lifted);
  EXPECT_FALSE(Find<QPushButton>("FlashGuard").isChecked());
  EXPECT_EQ(TextOf("FlashGuardHolds"), QString());
  Click("FlashGuard");
  EXPECT_FALSE(Lamps().guard_lifted);
}

TEST_F(OrganPageTest, AMemoryIsKeptRecalledAndForgotten) {
  Push("cmdK80002");
  QTest::keyClicks(&Find<QLineEdit>("MemoryName"), QStringLiteral("Waltz"));
  Push("MemoryRemember");
  Push("cmdK80005");
  auto& list = Find<QListWidget>("Memories");
  ASSERT_EQ(list.count(), 1);
  EXPECT_EQ(list.item(0)->text(), QStringLiteral("K80 Waltz"));
  EXPECT_FALSE(Find<QPushButton>("MemoryRecall").isEnabled());
  list.setCurrentRow(0);
  Push("MemoryRecall");
  EXPECT_EQ(Lamps().io_mode, lightorgan::IoMode::Lo);
  Click("MemoryForget");
  Push("MemoryBoxYes");
  EXPECT_EQ(list.count(), 0);
}

class BankEditorTest : public OrganPageTest {
 protected:
  BankEditorTest() { Push("EditBanks"); }
  QTableView& Steps() { return Find<QTableView>("BankSteps"); }
  QListWidget& Banks() { return Find<QListWidget>("BankList"); }
  void ClickCell(int step, int output) {
    const QRect cell = Steps().visualRect(Steps().model()->index(step - 1, output - 1));
    QTest::mouseClick(Steps().viewport(), Qt::LeftButton, {}, cell.center());
    Settle();
  }
  std::string File(const char* name) { return files.Content(folder / name).value_or("(not saved)"); }
};

TEST_F(BankEditorTest, TheEditorLiesWithinItsWindow) {
  const auto& editor = Find<QWidget>("BankEditor");
  EXPECT_TRUE(window->geometry().contains(editor.geometry()));
}

TEST_F(BankEditorTest, StepsAreToggledAddedMovedAndSaved) {
  EXPECT_EQ(Banks().count(), 2);
  EXPECT_FALSE(Find<QPushButton>("BankSave").isEnabled());
  ClickCell(2, 8);
  QTest::keyClick(&Steps(), Qt::Key_Space);
  QTest::keyClick(&Steps(), Qt::Key_Space);
  Click("StepCopy");
  Click("StepUp");
  Click("StepUp");
  EXPECT_EQ(Banks().item(0)->text(), QStringLiteral("Bank 1: 3 steps"));
  Click("BankCopy");
  Click("StepRemove");
  Click("StepAdd");
  Push("BankSave");
  EXPECT_EQ(File("BankIO16.txt"),
            "[1]\r\n0:1:0:0:0:0:0:1\r\n1:0:1\r\n0:1:0:0:0:0:0:1\r\n[2]\r\n1\r\n0:1\r\n"
            "[3]\r\n1:0:1\r\n0:0:0:0:0:0:0:0\r\n0:1:0:0:0:0:0:1\r\n");
  EXPECT_EQ(TextOf("BankMessage"), QStringLiteral("Saved."));
  EXPECT_EQ(Find<QSlider>("ScrollerPatternIO").maximum(), 2)
      << "counted in the file, which the test keeps apart";
}

TEST_F(BankEditorTest, ValuesOfADacStepAreTypedAndItsFurtherFieldsKept) {
  Choose("BankFile", 2);
  auto& model = *Steps().model();
  EXPECT_EQ(model.index(0, 8).data().toString(), QStringLiteral("9;8"));
  EXPECT_TRUE(model.setData(model.index(0, 1), QStringLiteral("300")));
  EXPECT_FALSE(model.setData(model.index(0, 0), QStringLiteral("bright")));
  Push("BankSave");
  EXPECT_EQ(File("BankDAC16.txt"), "[1]\r\n255:255;9;8\r\n[2]\r\n7\r\n");
}

TEST_F(BankEditorTest, WhatIsEditedPlaysAtOnceAndTheFilePlaysAgainWhenItIsClosed) {
  Push("BankPlay");
  Find<QSlider>("ScrollerIO").setValue(100);
  EXPECT_EQ(Lamps().io_mode, lightorgan::IoMode::Pp);
  for (const int output : {5, 6}) ClickCell(1, output);
  ASSERT_NE(Lamps().io.table, nullptr);
  EXPECT_EQ(Lamps().io.table->At(1, 6), 1);
  Click("BankClose");
  Click("BankLeaveBoxYes");
  Work();
  EXPECT_FALSE(Find<QWidget>("BankEditor").isVisible());
  EXPECT_EQ(Lamps().io.table->At(1, 6), 0);
  EXPECT_EQ(File("BankIO16.txt"), "(not saved)");
}

TEST_F(BankEditorTest, UnsavedChangesOutliveAQuestionThatIsDeclinedAndAChangeOfLanguage) {
  Push("BankNew");
  Click("BankClose");
  Click("BankLeaveBoxNo");
  EXPECT_EQ(Banks().count(), 3);
  QTest::keyClick(&Find<QComboBox>("BankFile"), Qt::Key_Down);
  Click("BankLeaveBoxNo");
  EXPECT_EQ(Find<QComboBox>("BankFile").currentIndex(), 0);
  Choose("Language", 1);
  Work();
  EXPECT_TRUE(Find<QWidget>("BankEditor").isVisible());
  EXPECT_EQ(Banks().item(2)->text(), QStringLiteral("Bank 3: 1 stap"));
}

TEST_F(BankEditorTest, TheWindowClosesOnlyWhenChangesAreSavedOrLetGo) {
  Push("BankNew");
  window->close();
  Click("BankLeaveBoxNo");
  EXPECT_TRUE(window->isVisible());
  window->close();
  Click("BankLeaveBoxYes");
  EXPECT_FALSE(window->isVisible());
}

TEST_F(BankEditorTest, AFileThatCannotBeSavedIsToldAndStaysUnsaved) {
  files.SetFull(true);
  Push("BankRemove");
  Push("BankSave");
  EXPECT_TRUE(TextOf("BankMessage").contains(QStringLiteral("BankIO16.txt")));
  EXPECT_TRUE(Find<QPushButton>("BankSave").isEnabled());
}

TEST_F(BankEditorTest, AFileForOtherBoardsIsNotPlayed) {
  Choose("BankFile", 1);
  EXPECT_EQ(Banks().count(), 0);
  Push("BankNew");
  EXPECT_FALSE(Find<QPushButton>("BankPlay").isEnabled());
  EXPECT_EQ(Steps().model()->columnCount(), 16);
}

}  // namespace
}  // namespace ui::testing
