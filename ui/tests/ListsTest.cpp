// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <QFileDialog>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QSlider>
#include <QTableView>
#include <fstream>

#include "ui/models/TrackModel.h"
#include "ui/tests/Booth.h"
#include "ui/widgets/TrackGrid.h"

namespace ui::testing {
namespace {

/// Searching and sorting the catalogue, and the files of playlists.
class ListsTest : public Booth {
 protected:
  void SetUp() override { Open(); }
  ~ListsTest() override { std::filesystem::remove_all(folder); }

  void Work() {
    for (int i = 0; i < 3; ++i) {
      workers.RunAll();
      Settle();
    }
  }
  void Type(const char* text, const char* field = "Search") {
    auto& line = Find<QLineEdit>(field);
    line.clear();
    QTest::keyClicks(&line, QLatin1String(text));
    Work();
  }
  /// First letters of the titles that are shown.
  std::string Shown(const char* grid = "Catalogue") {
    const auto& view = Find<QTableView>(grid);
    std::string letters;
    for (int row = 0; row < view.model()->rowCount(); ++row) {
      letters += view.model()->index(row, TrackModel::Title).data().toString().toStdString()[0];
    }
    return letters;
  }
  void ClickHead(int column) {
    auto& head = *Find<QTableView>("Catalogue").horizontalHeader();
    const QPoint place(head.sectionViewportPosition(column) + head.sectionSize(column) / 2,
                       head.height() / 2);
    QTest::mouseClick(head.viewport(), Qt::LeftButton, Qt::NoModifier, place);
    Work();
  }
};

TEST_F(ListsTest, TypingNarrowsTheListAndEscapeShowsAllAgain) {
  const std::string all = Shown();
  EXPECT_EQ(all.size(), 4u);
  Press(Qt::Key_F, Qt::ControlModifier);
  ASSERT_TRUE(Find<QLineEdit>("Search").hasFocus());
  Type("second");
  EXPECT_EQ(Shown(), "S");
  EXPECT_EQ(TextOf("SearchCount"), QStringLiteral("1 found"));
  EXPECT_EQ(TextOf("TrackCount"), QStringLiteral("4 tracks")) << "which counts the catalogue";
  Type("no such thing");
  EXPECT_EQ(Shown(), "");
  QTest::keyClick(&Find<QLineEdit>("Search"), Qt::Key_Escape);
  Work();
  EXPECT_EQ(Shown(), all);
}

TEST_F(ListsTest, EnterGoesToTheFirstRowAndTheDeckGetsThatOne) {
  Type("second");
  QTest::keyClick(&Find<QLineEdit>("Search"), Qt::Key_Return);
  auto& grid = Find<TrackGrid>("Catalogue");
  EXPECT_TRUE(grid.hasFocus());
  EXPECT_EQ(grid.ChosenRows(), std::vector<int>{2}) << "the row of the table, not of the screen";
  QTest::keyClick(&grid, Qt::Key_Return);
  Settle();
  EXPECT_EQ(Deck(1).title, "Second Wind");
}

TEST_F(ListsTest, WhatIsDraggedAndWhatIsLeftOutOfSightStayWhatTheyAre) {
  Find<TrackGrid>("Catalogue").ChooseRow(3);
  Type("first");
  EXPECT_TRUE(Find<TrackGrid>("Catalogue").ChosenRows().empty()) << "a row out of sight is not chosen";
  DropRows("Catalogue", {1}, "PlayListView1");
  EXPECT_EQ(Playlist(1).Cell(1, catalogue::track::kTitle), "First Light");
  Type("third");
  DropRows("Catalogue", {1}, "PlayListView1");
  EXPECT_EQ(Playlist(1).Cell(2, catalogue::track::kTitle), "Third Time");
}

TEST_F(ListsTest, AValueThatIsFilledInIsPaintedAtOnceAndNothingElseIs) {
  Work();
  QSignalSpy painted(Find<QTableView>("Catalogue").model(), &QAbstractItemModel::dataChanged);
  Settle();
  EXPECT_EQ(painted.count(), 0);
  Music().SetCell(2, catalogue::track::kBpm, "99.00");
  Settle();
  EXPECT_EQ(painted.count(), 1);
}

TEST_F(ListsTest, AHeadSortsUpThenDownThenAsTheRowsStand) {
  const std::string all = Shown();
  std::string sorted = all;
  std::sort(sorted.begin(), sorted.end());
  ClickHead(TrackModel::Title);
  EXPECT_EQ(Shown(), sorted);
  ClickHead(TrackModel::Title);
  EXPECT_EQ(Shown(), "TSFf") << "the one without a title stays at the end";
  ClickHead(TrackModel::Title);
  EXPECT_EQ(Shown(), all);
}

TEST_F(ListsTest, AnOrderSurvivesASearchAndARowThatGoes) {
  ClickHead(TrackModel::Title);
  Type("i");
  const std::string found = Shown();
  EXPECT_TRUE(std::is_sorted(found.begin(), found.end()));
  EXPECT_GT(found.size(), 1u);
  Music().RemoveRow(2);
  Settle();
  Work();
  EXPECT_EQ(Shown().size(), found.size() - 1);
}

TEST_F(ListsTest, APlaylistIsOpenedThroughItsDialogWithTheGivenFilters) {
  std::filesystem::create_directories(folder);
  std::ofstream(folder / "a.tpl") << "Ann\tSong\t03:20\t/x.mp3\t\t\t\t\t\t\t\t\t\r\n";
  Click("Playlist1Open");
  auto* menu = window->findChild<QMenu*>(QStringLiteral("Playlist1Menu"));
  ASSERT_NE(menu, nullptr);
  menu->actions().front()->trigger();
  menu->close();
  auto* dialog = window->findChild<QFileDialog*>(QStringLiteral("Playlist1OpenDialog"));
  ASSERT_NE(dialog, nullptr);
  EXPECT_EQ(dialog->nameFilters().size(), 9);
  EXPECT_EQ(dialog->nameFilters().at(6), QStringLiteral("Tolven's PlayList (*TPL)"));
  Q_EMIT dialog->fileSelected(QString::fromStdString((folder / "a.tpl").string()));
  dialog->close();
  Work();
  EXPECT_EQ(TextOf("Playlist1Count"), QStringLiteral("1 track, 03:20"));
}

TEST_F(ListsTest, APlaylistIsSavedUnderTheNameThatWasChosen) {
  DropRows("Catalogue", {1}, "PlayListView2");
  Click("Playlist2Save");
  auto* dialog = window->findChild<QFileDialog*>(QStringLiteral("Playlist2SaveDialog"));
  ASSERT_NE(dialog, nullptr);
  EXPECT_EQ(dialog->defaultSuffix(), QStringLiteral("tpl"));
  Q_EMIT dialog->fileSelected(QStringLiteral("/lists/*.tpl"));
  Work();
  EXPECT_EQ(files.Content("/lists/*.tpl"), std::nullopt) << "the pattern is no name";
  Q_EMIT dialog->fileSelected(QStringLiteral("/lists/a.tpl"));
  dialog->close();
  Work();
  EXPECT_NE(files.Content("/lists/a.tpl"), std::nullopt);
}

TEST_F(ListsTest, WhatWasPlayedTonightIsMarked) {
  LoadAndPlay(1, 1);
  Advance(31s);
  Work();
  Click("deck1Stop");
  ChooseRow(2);
  Press(Qt::Key_F1, Qt::ControlModifier);
  Settle();
  auto& grid = Find<QTableView>("Catalogue");
  const auto role = [&](int row) {
    return grid.model()
        ->index(row - 1, TrackModel::Title)
        .data(Qt::AccessibleTextRole)
        .toString()
        .toStdString();
  };
  EXPECT_NE(role(1).find("already played"), std::string::npos);
  EXPECT_EQ(role(3).find("already played"), std::string::npos);
}

TEST_F(ListsTest, WhatComesOntoADeckIsBroughtIntoSightUnlessAHandIsAtTheList) {
  auto& table = Playlist(1);
  for (int row = 1; row <= 90; ++row) {
    table.AppendFrom(Music(), row % 30 == 0 ? row / 30 : 4);
  }
  Settle();
  auto& grid = Find<QTableView>("PlayListView1");
  const auto in_sight = [&](int row) {
    const QRect place = grid.visualRect(grid.model()->index(row - 1, TrackModel::Title));
    return grid.viewport()->rect().contains(place.center());
  };
  EXPECT_TRUE(in_sight(1) && !in_sight(60));
  station->Decks()[2].Load(table, 60);
  Settle();
  EXPECT_TRUE(in_sight(60));
  grid.setFocus();
  station->Decks()[1].Load(table, 30);
  Settle();
  EXPECT_FALSE(in_sight(30)) << "somebody is busy with it";
}

TEST_F(ListsTest, TheAutomixButtonAndTheCrossfaderFollowTheMixer) {
  Click("Automix");
  Settle();
  EXPECT_TRUE(Find<QPushButton>("Automix").isChecked());
  EXPECT_EQ(TextOf("AutomixNext"), QStringLiteral("waits for a track"));
  EXPECT_EQ(settings.Get(support::kApplication, "Settings", "Automix", ""), "True");
  DropRows("Catalogue", {2}, "PlayListView1");
  LoadAndPlay(1, 1);
  Advance(171s);
  Work();
  Advance(12s);
  EXPECT_EQ(Deck(2).title, "Second Wind");
  EXPECT_EQ(Find<QSlider>("Crossfader").value(), 100);
  EXPECT_EQ(Deck(2).state, State::Playing);
}

TEST_F(ListsTest, ARowWhoseFileIsGoneIsMarkedInEveryListOnceItIsLoadedAndTheDeckSaysSo) {
  const auto shown = [this](const char* grid, int role) {
    return Find<QTableView>(grid).model()->index(0, 0).data(role).toString();
  };
  std::filesystem::create_directories(folder);
  const std::string file = (folder / "lost.mp3").string();
  std::ofstream(file) << "x";
  Music().Clear();
  AddTrack(file, "Anna", "Lost");
  DropRow(1, "PlayListView1");
  LoadAndPlay(1, 1);
  Work();
  EXPECT_EQ(shown("PlayListView1", TrackModel::kMarkRole), QString());
  std::filesystem::remove(file);
  engine.RemoveFile(file);
  DoubleClickRow(1);
  Work();
  EXPECT_EQ(Deck(2).state, State::Empty) << "it does not wait for what will not come";
  EXPECT_FALSE(Deck(2).message.empty());
  EXPECT_EQ(Deck(1).state, State::Playing);
  EXPECT_EQ(shown("PlayListView1", TrackModel::kMarkRole), QStringLiteral("!"));
  EXPECT_EQ(shown("Catalogue", Qt::DisplayRole), QStringLiteral("1")) << "the deck that still plays it";
  Click("deck1Stop");
  DropRow(1, "deck1");
  Work();
  EXPECT_EQ(Deck(1).state, State::Empty);
  EXPECT_EQ(shown("Catalogue", Qt::DisplayRole), QStringLiteral("!")) << "no deck has it";
  std::ofstream(file) << "x";
  clock.Advance(2min);
  station->Collections().Missing().LookAgain();
  Work();
  EXPECT_EQ(shown("PlayListView1", TrackModel::kMarkRole), QString()) << "it came back";
}

TEST_F(ListsTest, AFolderIsAddedWithABarAndCanBeStopped) {
  for (const char* name : {"a.mp3", "b.mp3", "deep/c.wav"}) {
    std::filesystem::create_directories((folder / name).parent_path());
    std::ofstream(folder / name) << "x";
  }
  tags.AcceptAnyFile();
  const auto url = QUrl::fromLocalFile(QString::fromStdString(folder.string()));
  BeginDroppingFiles({url}, "MusicPage");
  EXPECT_TRUE(Find<QProgressBar>("AddBar").isVisible());
  workers.RunOne();
  Settle();
  Click("AddStop");
  Work();
  const int stopped = Music().Rows();
  EXPECT_LT(stopped, 7);
  EXPECT_TRUE(TextOf("AddProgress").contains(QStringLiteral("Stopped")));
  EXPECT_FALSE(Find<QProgressBar>("AddBar").isVisible());
  DropFiles({url}, "MusicPage");
  EXPECT_EQ(Music().Rows(), 7);
}

TEST_F(ListsTest, AFolderIsChosenInItsDialog) {
  std::filesystem::create_directories(folder / "album");
  std::ofstream(folder / "album" / "a.m4a") << "x";
  tags.AcceptAnyFile();
  ChooseInMenu("MusicAdd", "MusicAddFolder");
  auto& dialog = Find<QFileDialog>("AddFolderDialog");
  EXPECT_EQ(dialog.fileMode(), QFileDialog::Directory);
  dialog.setDirectory(QString::fromStdString(folder.string()));
  dialog.selectFile(QStringLiteral("album"));
  QMetaObject::invokeMethod(&dialog, "accept");
  Work();
  EXPECT_EQ(Music().Rows(), 5);
}

TEST_F(ListsTest, FilesAndPlaylistsComeWhereTheyAreDropped) {
  std::filesystem::create_directories(folder / "album");
  std::ofstream(folder / "album" / "1.mp3") << "x";
  std::ofstream(folder / "l.m3u") << "m.mp3\n";
  std::ofstream(folder / "t.tpl") << "A\tT\t01:00\tt.mp3\t\t\t\t\t\t\t\t\t\r\n";
  tags.AcceptAnyFile();
  DropRows("Catalogue", {1, 2}, "PlayListView1");
  const auto url = [this](const char* name) {
    return QUrl::fromLocalFile(QString::fromStdString((folder / name).string()));
  };
  DropFiles({url("l.m3u"), url("album"), url("t.tpl")}, "PlayListView1", 2);
  std::string all;
  for (int row = 1; row <= Playlist(1).Rows(); ++row) {
    all +=
        std::filesystem::path(Playlist(1).Cell(row, catalogue::track::kFilename)).filename().string() + " ";
  }
  EXPECT_EQ(all, "one.mp3 m.mp3 1.mp3 t.mp3 two.ogg ");
}

TEST_F(ListsTest, ASearchReadsTheMixingTagsOfTheRowsItShows) {
  catalogue::FileTags found;
  found.user_items = {{"EMP", "170.000"}};
  tags.AcceptAnyFile(found);
  Work();
  EXPECT_EQ(tags.Reads(), 0) << "nobody searches";
  Type("second");
  Work();
  EXPECT_EQ(Music().Cell(2, catalogue::track::kEndMixPoint), "170.000");
  EXPECT_EQ(tags.Reads(), 1);
}

}  // namespace
}  // namespace ui::testing
