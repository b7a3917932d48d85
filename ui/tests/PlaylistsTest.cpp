// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <QItemSelectionModel>
#include <QLabel>
#include <QLineEdit>
#include <QTableView>

#include "ui/forms/MessageBox.h"
#include "ui/tests/Booth.h"

namespace ui::testing {
namespace {

/// Playlists, and what can be done with rows.
class PlaylistsTest : public Booth {
 protected:
  PlaylistsTest() { Open(); }

  /// Titles in a playlist, "First Light, Third Time".
  std::string List(int number) {
    std::string all;
    const catalogue::track_table& table = Playlist(number);
    for (int row = 1; row <= table.Rows(); ++row) {
      all += (row > 1 ? ", " : "") + std::string(table.Cell(row, catalogue::track::kTitle));
    }
    return all;
  }
  void PressIn(const char* grid, Qt::Key key) {
    QTest::keyClick(&Find<QTableView>(grid), key);
    Settle();
  }
  void Select(const char* grid, const std::vector<int>& rows) {
    auto& view = Find<QTableView>(grid);
    view.setFocus();
    view.clearSelection();
    for (const int row : rows) {
      view.selectionModel()->select(view.model()->index(row - 1, 0),
                                    QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }
    Settle();
  }
};

TEST_F(PlaylistsTest, RowsOfTheCatalogueAreCopiedWithAllTheirCells) {
  Music().SetCell(3, catalogue::track::kEndMixPoint, "170.500");
  DropRows("Catalogue", {1, 3}, "PlayListView1");
  EXPECT_EQ(List(1), "First Light, Third Time");
  EXPECT_EQ(Playlist(1).Cell(2, catalogue::track::kEndMixPoint), "170.500");
  EXPECT_EQ(Music().Rows(), 4);
  EXPECT_EQ(TextOf("Playlist1Count"), QStringLiteral("2 tracks, 06:00"));
}

TEST_F(PlaylistsTest, ADropBetweenTwoRowsGoesBetweenThem) {
  DropRows("Catalogue", {1, 2}, "PlayListView2");
  DropRows("Catalogue", {3}, "PlayListView2", 2);
  EXPECT_EQ(List(2), "First Light, Third Time, Second Wind");
}

TEST_F(PlaylistsTest, RowsMoveWithinTheirList) {
  DropRows("Catalogue", {1, 2, 3}, "PlayListView1");
  DropRows("PlayListView1", {3}, "PlayListView1", 1, Qt::MoveAction);
  EXPECT_EQ(List(1), "Third Time, First Light, Second Wind");
}

TEST_F(PlaylistsTest, BetweenListsRowsMoveAndWithTheCopyKeyTheyStay) {
  DropRows("Catalogue", {1, 2}, "PlayListView1");
  DropRows("PlayListView1", {1}, "PlayListView2", 0, Qt::MoveAction);
  EXPECT_EQ(List(1), "Second Wind");
  EXPECT_EQ(List(2), "First Light");
  DropRows("PlayListView2", {1}, "PlayListView1", 0, Qt::CopyAction);
  EXPECT_EQ(List(1), "Second Wind, First Light");
  EXPECT_EQ(List(2), "First Light");
}

TEST_F(PlaylistsTest, TheButtonOfThePageTakesRowsForTheThirdList) {
  DropRow(2, "Page2");
  EXPECT_EQ(List(3), "Second Wind");
  DropRow(2, "Page3");
  EXPECT_EQ(List(3), "Second Wind");
}

TEST_F(PlaylistsTest, FunctionKeysPutTheChosenRowsIntoTheLists) {
  Select("Catalogue", {2, 3});
  Press(Qt::Key_F9);
  Press(Qt::Key_F11);
  EXPECT_EQ(List(1), "Second Wind, Third Time");
  EXPECT_EQ(List(2), "");
  EXPECT_EQ(List(3), "Second Wind, Third Time");
}

TEST_F(PlaylistsTest, DeleteAndTheButtonTakeRowsOffTheListOnly) {
  DropRows("Catalogue", {1, 2, 3}, "PlayListView1");
  Select("PlayListView1", {1, 3});
  PressIn("PlayListView1", Qt::Key_Delete);
  EXPECT_EQ(List(1), "Second Wind");
  Click("Playlist1Remove");
  EXPECT_EQ(List(1), "");
  EXPECT_EQ(Music().Rows(), 4);
  EXPECT_TRUE(window->findChildren<MessageBox*>().isEmpty());
}

TEST_F(PlaylistsTest, RowsOfAListLoadDecksByEnterDragAndKey) {
  QApplication::setActiveWindow(window.get());
  DropRows("Catalogue", {2, 3}, "PlayListView2");
  Select("PlayListView2", {2});
  Press(Qt::Key_F4);
  EXPECT_EQ(Deck(1).filename, "three.flac");
  DropRows("PlayListView2", {1}, "deck2");
  EXPECT_EQ(Deck(2).filename, "two.ogg");
  Click("deck2Play");
  Find<QTableView>("PlayListView2").selectRow(0);
  PressIn("PlayListView2", Qt::Key_Return);
  EXPECT_EQ(Deck(1).filename, "two.ogg");
}

TEST_F(PlaylistsTest, FilesDroppedOnAListAreAddedToBoth) {
  tags.AddFile("/m/new.mp3");
  DropFiles({QUrl::fromLocalFile(QStringLiteral("/m/new.mp3"))}, "PlayListView2");
  EXPECT_EQ(Music().Rows(), 5);
  EXPECT_EQ(Playlist(2).Cell(1, catalogue::track::kFilename), "/m/new.mp3");
}

TEST_F(PlaylistsTest, DeletingTracksAsksFirstAndNoChangesNothing) {
  Select("Catalogue", {1, 2});
  ChooseInMenu("MusicRemove", "MusicDeleteFiles");
  ASSERT_NE(window->findChild<MessageBox*>(QStringLiteral("DeleteTracksBox")), nullptr);
  Click("DeleteTracksBoxNo");
  workers.RunAll();
  Settle();
  EXPECT_EQ(Music().Rows(), 4);
}

TEST_F(PlaylistsTest, EnterInTheQuestionChangesNothing) {
  Select("Catalogue", {1});
  ChooseInMenu("MusicRemove", "MusicDeleteFiles");
  auto* box = window->findChild<MessageBox*>(QStringLiteral("DeleteTracksBox"));
  QTest::keyClick(box, Qt::Key_Return);
  workers.RunAll();
  Settle();
  EXPECT_EQ(Music().Rows(), 4);
}

TEST_F(PlaylistsTest, TheDecksStayInReachWhileTheQuestionIsOpen) {
  LoadAndPlay(1, 1);
  Select("Catalogue", {2});
  ChooseInMenu("MusicRemove", "MusicDeleteFiles");
  EXPECT_FALSE(window->findChild<MessageBox*>(QStringLiteral("DeleteTracksBox"))->isModal());
  Click("deck1Stop");
  EXPECT_EQ(Deck(1).state, State::Stopped);
}

TEST_F(PlaylistsTest, WhatIsTakenOutOfAListComesBackAtItsPlaceTheNewestFirst) {
  DropRows("Catalogue", {1, 2, 3}, "PlayListView1");
  Select("PlayListView1", {2});
  PressIn("PlayListView1", Qt::Key_Delete);
  Select("Catalogue", {1, 3});
  PressIn("Catalogue", Qt::Key_Delete);
  EXPECT_EQ(Music().Rows(), 2);
  EXPECT_TRUE(window->findChildren<MessageBox*>().isEmpty());
  ChooseInMenu("MusicRemove", "MusicBringBack");
  EXPECT_EQ(Music().Rows(), 4);
  EXPECT_EQ(Music().Cell(3, catalogue::track::kTitle), "Third Time");
  EXPECT_EQ(List(1), "First Light, Third Time");
  Press(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(List(1), "First Light, Second Wind, Third Time");
  Press(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(Music().Rows(), 4);
}

TEST_F(PlaylistsTest, InTheSearchFieldTheKeyBringsBackLetters) {
  Select("Catalogue", {1});
  PressIn("Catalogue", Qt::Key_Delete);
  Press(Qt::Key_F, Qt::ControlModifier);
  auto& field = Find<QLineEdit>("Search");
  QTest::keyClicks(&field, QStringLiteral("wind"));
  QTest::keyClick(&field, Qt::Key_Z, Qt::ControlModifier);
  Settle();
  EXPECT_EQ(field.text(), QString());
  EXPECT_EQ(Music().Rows(), 3);
}

TEST_F(PlaylistsTest, ARowOfAnUnpluggedDiskIsNotCalledDeleted) {
  Select("Catalogue", {1, 2});
  ChooseInMenu("MusicRemove", "MusicDeleteFiles");
  const auto texts = Find<MessageBox>("DeleteTracksBox").findChildren<QLabel*>();
  EXPECT_TRUE(std::any_of(texts.begin(), texts.end(), [](const QLabel* text) {
    return text->text().startsWith(QLatin1String("Delete 2"));
  }));
  Click("DeleteTracksBoxYes");
  workers.RunAll();
  Settle();
  EXPECT_EQ(Music().Rows(), 4);
  EXPECT_TRUE(Find<QWidget>("Refused").isVisible());
  EXPECT_FALSE(Find<QWidget>("AddProgress").isVisible()) << "nothing was deleted";
}

}  // namespace
}  // namespace ui::testing
