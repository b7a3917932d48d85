// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
// What is made in an editor survives the fall of the program.
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <filesystem>
#include <fstream>

#include "app/lights/Drafts.h"
#include "dmx/FixtureFile.h"
#include "ui/forms/DMX.h"
#include "ui/forms/Library.h"
#include "ui/forms/MessageBox.h"
#include "ui/tests/Booth.h"

namespace ui::testing {
namespace {

using Kind = app::Drafts::Kind;

class DraftsTest : public Booth {
 protected:
  DraftsTest() { std::filesystem::create_directories(folder); }
  ~DraftsTest() override { std::filesystem::remove_all(folder); }

  [[nodiscard]] std::filesystem::path FileOf(Kind kind) const {
    return folder / app::Drafts::kFiles[static_cast<std::size_t>(kind)].substr(1);
  }
  void Go(std::chrono::milliseconds time) {
    Advance(time);
    workers.RunAll();
    Settle();
  }
  /// As the last run left it on the disk.
  void Leave(Kind kind, const std::string& text) { std::ofstream(FileOf(kind), std::ios::binary) << text; }
  [[nodiscard]] std::string Kept(Kind kind) const { return files.Content(FileOf(kind)).value_or(""); }
  [[nodiscard]] QString Asked(Kind kind) {
    const auto* box =
        window->findChild<MessageBox*>(QStringLiteral("DraftBox%1").arg(static_cast<int>(kind)));
    return box == nullptr ? QString() : box->Text();
  }
  void TypeAName(const char* name) {
    auto& field = *window->OpenEditors().FixtureEditor()->findChild<QLineEdit*>(QStringLiteral("Text1"));
    field.setFocus();
    field.selectAll();
    QTest::keyClicks(&field, QLatin1String(name));
    QTest::keyClick(&field, Qt::Key_Return);
  }
  [[nodiscard]] std::filesystem::path AsideOf(Kind kind) const { return FileOf(kind) += app::Drafts::kAside; }
  void Answer(EditorWindow& editor, const char* answer) {
    QTest::mouseClick(editor.findChild<QWidget*>(editor.objectName() + QLatin1String(answer)),
                      Qt::LeftButton);
    Go(100ms);
  }
  /// Both editors with what is a draft on the disk.
  void OpenBoth() {
    Leave(Kind::Fixture, "\r\n" + Named("Moon"));
    Leave(Kind::Show, "\r\n" + dmx::ShowText({}));
    Open();
    Go(100ms);
    for (const char* box : {"DraftBox0Yes", "DraftBox1Yes"}) {
      Click(box);
      Go(100ms);
    }
    Go(1100ms);
  }
  [[nodiscard]] Library& Fixtures() { return *window->OpenEditors().FixtureEditor(); }
  [[nodiscard]] DMX& Shows() { return *window->OpenEditors().ShowEditor(); }
  static std::string Named(const char* name) {
    dmx::Fixture fixture;
    fixture.name = name;
    return dmx::FixtureText(fixture);
  }
};

TEST_F(DraftsTest, AFixtureIsOnTheDiskASecondAfterItWasChangedAndGoneOnceNobodyWantsIt) {
  Open();
  Press(Qt::Key_L, Qt::ControlModifier | Qt::ShiftModifier);
  Go(2s);
  EXPECT_EQ(Kept(Kind::Fixture), "") << "nothing was made yet";
  TypeAName("Moon");
  Go(1100ms);
  EXPECT_EQ(Kept(Kind::Fixture), "\r\n" + Named("Moon"));
  TypeAName("Moonflower");
  Go(1100ms);
  EXPECT_EQ(Kept(Kind::Fixture), "\r\n" + Named("Moonflower"));
  Leave(Kind::Fixture, Kept(Kind::Fixture));
  Library& editor = *window->OpenEditors().FixtureEditor();
  editor.close();
  QTest::mouseClick(editor.findChild<QWidget*>(editor.objectName() + QStringLiteral("SaveFirstNo")),
                    Qt::LeftButton);
  Go(100ms);
  EXPECT_FALSE(std::filesystem::exists(FileOf(Kind::Fixture)));
}

TEST_F(DraftsTest, WhatTheLastRunLeftIsOfferedAndOpensUnsavedUnderItsOwnName) {
  Leave(Kind::Fixture, (folder / "DMXlibrary" / "Moon.dmx").string() + "\r\n" + Named("Moonflower"));
  Open();
  Go(100ms);
  EXPECT_EQ(Asked(Kind::Fixture),
            QStringLiteral("The fixture Moon.dmx was not saved when the program ended. Open it as it was?"));
  EXPECT_EQ(Asked(Kind::Show), QString());
  Click("DraftBox0Yes");
  Go(100ms);
  const Library& editor = *window->OpenEditors().FixtureEditor();
  EXPECT_TRUE(editor.Changed());
  EXPECT_EQ(editor.findChild<QLineEdit*>(QStringLiteral("Text1"))->text(), QStringLiteral("Moonflower"));
  EXPECT_TRUE(editor.windowTitle().contains(QStringLiteral("Moon.dmx")));
  EXPECT_EQ(Kept(Kind::Fixture).substr(0, 5), folder.string().substr(0, 5)) << "and is a draft again";
}

TEST_F(DraftsTest, OneThatWaitsForItsAnswerIsNotOverwrittenAndOneThatIsRefusedGoes) {
  Leave(Kind::Fixture, "\r\n" + Named("Moonflower"));
  Open();
  Go(100ms);
  Press(Qt::Key_L, Qt::ControlModifier | Qt::ShiftModifier);
  Go(100ms);
  TypeAName("Sun");
  Go(3s);
  EXPECT_EQ(Kept(Kind::Fixture), "");
  EXPECT_TRUE(std::filesystem::exists(FileOf(Kind::Fixture)));
  Click("DraftBox0No");
  Go(1100ms);
  EXPECT_EQ(Kept(Kind::Fixture), "\r\n" + Named("Sun"));
}

TEST_F(DraftsTest, AShowAndBanksComeBackToo) {
  Leave(Kind::Show, "\r\n" + dmx::ShowText({}));
  Leave(Kind::Banks, "\\BankDAC16.txt\r\n[3]\r\n1;2;3;4;5;6;7;8\r\n");
  Open();
  Go(100ms);
  Click("DraftBox2Yes");
  Go(100ms);
  const auto* steps = window->findChild<QTableView*>(QStringLiteral("BankSteps"));
  EXPECT_NE(steps, nullptr);
  EXPECT_NE(Kept(Kind::Banks).find("[3]"), std::string::npos) << Kept(Kind::Banks);
  Click("DraftBox1Yes");
  Go(100ms);
  ASSERT_NE(window->OpenEditors().ShowEditor(), nullptr);
  EXPECT_TRUE(window->OpenEditors().ShowEditor()->Changed());
}

TEST_F(DraftsTest, WhatWasRefusedAtTheEndIsNotKeptAgain) {
  OpenBoth();
  for (const Kind kind : {Kind::Fixture, Kind::Show}) ASSERT_TRUE(files.Save(FileOf(kind), "none"));
  window->close();
  Answer(Fixtures(), "SaveFirstNo");
  Go(1100ms);
  Answer(Shows(), "SaveFirstNo");
  EXPECT_FALSE(window->isVisible());
  for (const Kind kind : {Kind::Fixture, Kind::Show}) {
    EXPECT_EQ(Kept(kind), "none") << "and not written anew";
    EXPECT_FALSE(std::filesystem::exists(FileOf(kind)));
  }
}

TEST_F(DraftsTest, OneThatIsWantedStaysUntilWhatStandsInItsEditorIsGivenUp) {
  Leave(Kind::Fixture, "\r\n" + Named("Moonflower"));
  Open();
  Go(100ms);
  Press(Qt::Key_L, Qt::ControlModifier | Qt::ShiftModifier);
  Go(100ms);
  TypeAName("Sun");
  Click("DraftBox0Yes");
  Go(100ms);
  Answer(Fixtures(), "SaveFirstCancel");
  Go(3s);
  EXPECT_TRUE(std::filesystem::exists(FileOf(Kind::Fixture)));
  EXPECT_EQ(Kept(Kind::Fixture), "") << "nothing went over it";
}

TEST_F(DraftsTest, OneThatNobodyAnswersStandsAsideAndIsOfferedAtTheNextStart) {
  Leave(Kind::Fixture, "\r\n" + Named("Moonflower"));
  Open();
  Go(100ms);
  Press(Qt::Key_L, Qt::ControlModifier | Qt::ShiftModifier);
  Go(100ms);
  Find<MessageBox>("DraftBox0").close();
  Go(100ms);
  EXPECT_FALSE(std::filesystem::exists(FileOf(Kind::Fixture)));
  TypeAName("Sun");
  Go(1100ms);
  EXPECT_EQ(Kept(Kind::Fixture), "\r\n" + Named("Sun")) << "this run is kept too";
  EXPECT_TRUE(std::filesystem::exists(AsideOf(Kind::Fixture)));
  Open();
  Go(100ms);
  Click("DraftBox0AsideYes");
  Go(100ms);
  EXPECT_EQ(Fixtures().findChild<QLineEdit*>(QStringLiteral("Text1"))->text(), QStringLiteral("Moonflower"));
  Go(1100ms);
  EXPECT_EQ(Kept(Kind::Fixture), "\r\n" + Named("Moonflower"));
  EXPECT_FALSE(std::filesystem::exists(AsideOf(Kind::Fixture))) << "and is an ordinary draft again";
}

TEST_F(DraftsTest, OneThatIsOlderThanItsFileHasNoNameToBeSavedUnder) {
  const auto file = folder / "Moon.dmx";
  Leave(Kind::Fixture, file.string() + "\r\n" + Named("Moonflower"));
  std::ofstream(file) << Named("Moon");
  std::filesystem::last_write_time(file, std::filesystem::last_write_time(FileOf(Kind::Fixture)) + 1min);
  Open();
  Go(100ms);
  EXPECT_TRUE(Asked(Kind::Fixture).contains(QStringLiteral("Moon.dmx")));
  Click("DraftBox0Yes");
  Go(1100ms);
  EXPECT_FALSE(Fixtures().windowTitle().contains(QStringLiteral("Moon.dmx")));
  EXPECT_EQ(Kept(Kind::Fixture), "\r\n" + Named("Moonflower"));
}

TEST_F(DraftsTest, OneThatCouldNotBeWrittenIsTriedAgain) {
  Open();
  Press(Qt::Key_L, Qt::ControlModifier | Qt::ShiftModifier);
  Go(100ms);
  files.SetFull(true);
  TypeAName("Moon");
  Go(3s);
  EXPECT_EQ(Kept(Kind::Fixture), "");
  files.SetFull(false);
  Go(1100ms);
  EXPECT_EQ(Kept(Kind::Fixture), "\r\n" + Named("Moon"));
}

TEST_F(DraftsTest, BanksAreSavedAsTheFileThatTheyAreOf) {
  Leave(Kind::Banks, "\\BankDAC16.txt\r\n[3]\r\n1;2;3;4;5;6;7;8\r\n");
  Open();
  Press(Qt::Key_5, Qt::ControlModifier);
  Click("EditBanks");
  Go(100ms);
  Click("BankClose");
  Go(100ms);
  Click("DraftBox2Yes");
  Go(100ms);
  EXPECT_EQ(Find<QComboBox>("BankFile").currentIndex(), 2);
  Click("BankSave");
  Go(100ms);
  EXPECT_TRUE(files.Content(folder / "BankDAC16.txt").has_value());
  EXPECT_FALSE(files.Content(folder / "BankIO16.txt").has_value());
}

TEST_F(DraftsTest, BanksThatAreLetGoAtTheEndAreNotOfferedAgain) {
  Leave(Kind::Banks, "\\BankDAC16.txt\r\n[3]\r\n1;2;3;4;5;6;7;8\r\n");
  Open();
  Go(100ms);
  Click("DraftBox2Yes");
  Go(1100ms);
  window->close();
  Find<QPushButton>("BankLeaveBoxYes").click();
  for (int i = 0; i < 3; ++i) QApplication::processEvents();
  EXPECT_FALSE(window->isVisible());
  workers.RunAll();
  EXPECT_FALSE(std::filesystem::exists(FileOf(Kind::Banks)));
}

TEST_F(DraftsTest, AFileThatIsNoDraftIsNotOffered) {
  Leave(Kind::Show, "");
  Leave(Kind::Banks, "no line end");
  Open();
  Go(100ms);
  EXPECT_EQ(Asked(Kind::Show), QString());
  EXPECT_EQ(Asked(Kind::Banks), QString());
  Leave(Kind::Banks, "\\NoBank.txt\r\n[3]\r\n1;2;3;4;5;6;7;8\r\n");
  Open();
  Go(100ms);
  Go(100ms);
  EXPECT_EQ(Asked(Kind::Banks), QString());
  EXPECT_FALSE(std::filesystem::exists(FileOf(Kind::Banks))) << "nor ever will be";
}

}  // namespace
}  // namespace ui::testing
