// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <fstream>

#include "ui/forms/DMX.h"
#include "ui/forms/Library.h"
#include "ui/tests/EditorBooth.h"

namespace ui::testing {
namespace {

/// Both editors beside an installed library of two makers.
class FixtureBrowserTest : public EditorBooth {
 protected:
  FixtureBrowserTest() {
    std::filesystem::create_directories(folder / "packs");
    Put("packs/sun.qxf", "Acme|Sun 250|Short:Dimmer|Full:Dimmer,Pan,Fog");
    Put("packs/moon.qxf", "Moonlight|Half|One:Dimmer,Prism");
    Put("packs/bad.qxf", "no fixture");
  }
  void Put(const char* name, const char* text) const {
    std::ofstream(folder / name, std::ios::binary) << text;
  }
  void OpenEditor(Qt::Key key) {
    Press(key, Qt::ControlModifier | Qt::ShiftModifier);
    const Editors& editors = window->OpenEditors();
    editor = key == Qt::Key_D ? static_cast<EditorWindow*>(editors.ShowEditor())
                              : static_cast<EditorWindow*>(editors.FixtureEditor());
    Work();
  }
  /// A key counts as a click does.
  void Type(const char* text) {
    clicks += static_cast<int>(std::string_view(text).size());
    QTest::keyClicks(&In<QLineEdit>("FixtureSearch"), QLatin1String(text));
    Settle();
  }
  void Enter() {
    ++clicks;
    QTest::keyClick(&In<QLineEdit>("FixtureSearch"), Qt::Key_Return);
    Work();
  }
  QStringList Rows() {
    QStringList rows;
    const auto& list = In<QListWidget>("FixtureRows");
    for (int row = 0; row < list.count(); ++row) rows += list.item(row)->text();
    return rows;
  }
  const dmx::Show& Show() { return window->OpenEditors().ShowEditor()->Show(); }
};

TEST_F(FixtureBrowserTest, AFixtureOutOfTheLibraryIsPatchedInUnderSixClicksAndLetters) {
  OpenEditor(Qt::Key_D);
  Click("PatchFixture");
  clicks = 0;
  Click("BrowseFixtures");
  Work();
  EXPECT_EQ(Rows().size(), 3);
  Type("ful");
  ASSERT_EQ(Rows(), QStringList{QStringLiteral("Acme  Sun 250  (Full)  –  3 channels")});
  Enter();
  EXPECT_LT(clicks, 6);
  EXPECT_FALSE(In<QWidget>("FixtureBrowser").isVisible());
  ASSERT_EQ(Show().fixtures.count(), 2);
  const int first = Show().fixtures.Item(1)->Channels.count();
  EXPECT_EQ(Show().fixtures.Item(2)->StartChannel, first + 1) << "the next free place";
  EXPECT_EQ(Show().fixtures.Item(2)->Channels.count(), 3);
  EXPECT_NE(Saved("DMXlibrary/Acme Sun 250 (Full).dmx"), "");
  EXPECT_EQ(Asked(), QString()) << "nothing was lost";
}

TEST_F(FixtureBrowserTest, WhatCannotBeReadIsToldBesideWhatCan) {
  OpenEditor(Qt::Key_D);
  Click("BrowseFixtures");
  Work();
  EXPECT_EQ(In<QLabel>("FixtureState").text(), QStringLiteral("3 modes of 2 fixtures · 1 file left out"));
  Put("packs/moon.qxf", "broken since");
  Type("half");
  Enter();
  EXPECT_TRUE(Asked().startsWith(QStringLiteral("This is no fixture of a library")));
  EXPECT_TRUE(In<QWidget>("FixtureBrowser").isVisible());
  EXPECT_EQ(Show().fixtures.count(), 0);
  Type("xyz");
  EXPECT_FALSE(In<QPushButton>("FixtureTake").isEnabled());
  QTest::keyClick(&In<QLineEdit>("FixtureSearch"), Qt::Key_Escape);
  EXPECT_FALSE(In<QWidget>("FixtureBrowser").isVisible());
}

TEST_F(FixtureBrowserTest, TheFixtureEditorMakesTheFileAndTheArrowsChooseTheMode) {
  OpenEditor(Qt::Key_L);
  Click("BrowseFixtures");
  Work();
  Type("sun");
  QTest::keyClick(&In<QLineEdit>("FixtureSearch"), Qt::Key_Down);
  EXPECT_EQ(In<QListWidget>("FixtureRows").currentRow(), 1);
  Enter();
  EXPECT_NE(Saved("DMXlibrary/Acme Sun 250 (Short).dmx"), "");
}

}  // namespace
}  // namespace ui::testing
