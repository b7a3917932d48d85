// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
// What is made in an editor survives the fall of the program.
#include <QLineEdit>
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

TEST_F(DraftsTest, AFileThatIsNoDraftIsNotOffered) {
  Leave(Kind::Show, "");
  Leave(Kind::Banks, "no line end");
  Open();
  Go(100ms);
  EXPECT_EQ(Asked(Kind::Show), QString());
  EXPECT_EQ(Asked(Kind::Banks), QString());
}

}  // namespace
}  // namespace ui::testing
