// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <QComboBox>
#include <QInputDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTableWidget>
#include <fstream>

#include "app/singers/SingerStation.h"
#include "app/songs/SongStation.h"
#include "karaoke/testing/MidiBytes.h"
#include "support/testing/TemporaryFolder.h"
#include "ui/tests/Booth.h"
#include "ui/widgets/NextUpCard.h"

namespace ui::testing {
namespace {

/// The karaoke page with three songs of ten seconds.
class SingersTest : public Booth {
 protected:
  SingersTest() {
    karaoke::testing::TrackBytes track = karaoke::testing::UsualHead().Name("Words").Text(0, "@TLittle song");
    const std::string bytes = karaoke::testing::FileBytes({track.Text(9600, "/la").End(0)});
    for (const char* name : {"one", "two", "three"}) {
      const std::string path = (songs_.Path() / (std::string(name) + ".kar")).string();
      std::ofstream(path, std::ios::binary) << bytes;
      const std::string_view cells[] = {"Anna", name, "", "Pop", "03:10", path};
      Karaoke().AddRow(cells);
    }
  }
  void OpenBooth(QSize size = {1366, 768}) {
    Open(size);
    Click("Page3");
  }
  void AddSinger(const char* name) {
    Press(Qt::Key_G, Qt::ControlModifier);
    QTest::keyClicks(QApplication::focusWidget(), QLatin1String(name));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    Settle();
  }
  void DoubleClickSong(int row) {
    auto& grid = Find<QTableView>("KaraokeGrid");
    const QPoint cell = grid.visualRect(grid.model()->index(row - 1, 1)).center();
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, cell);
    QTest::mouseDClick(grid.viewport(), Qt::LeftButton, {}, cell);
    Work();
  }
  void Work() {
    Settle();
    workers.RunAll();
    Settle();
  }
  void ChooseSinger(int row) {
    auto& table = Find<QTableWidget>("SingersList");
    QTest::mouseClick(table.viewport(), Qt::LeftButton, {},
                      table.visualRect(table.model()->index(row, 1)).center());
  }
  [[nodiscard]] std::string Cell(int row, int column) {
    const QTableWidgetItem* item = Find<QTableWidget>("SingersList").item(row, column);
    return item == nullptr ? "(none)" : item->text().toStdString();
  }
  [[nodiscard]] std::string Names() {
    std::string names;
    auto& table = Find<QTableWidget>("SingersList");
    for (int row = 0; row < table.rowCount(); ++row) names += Cell(row, 0) + Cell(row, 1) + " ";
    return names;
  }
  [[nodiscard]] const singers::Rotation& Rotation() { return *station->Singers().View().sheet->turns; }

  support::testing::TemporaryFolder songs_;
};

TEST_F(SingersTest, ANameAndADoubleClickQueueASongAndNextBringsItOnStage) {
  OpenBooth();
  EXPECT_FALSE(Find<QTableWidget>("SingersList").isVisible()) << "nobody sings: the songs have the room";
  AddSinger("Anna");
  DoubleClickSong(1);
  EXPECT_EQ(station->Songs().View().state, app::SongView::State::Empty) << "it waits for its turn";
  AddSinger("Ben");
  DoubleClickSong(2);
  DoubleClickSong(3);
  AddSinger("Cleo");
  EXPECT_EQ(Names(), "1Anna 2Ben 3Cleo ");
  EXPECT_EQ(Cell(1, 2), "Anna – two (+1)");
  EXPECT_NE(Cell(1, 3), "");
  Press(Qt::Key_Return, Qt::ControlModifier);
  Work();
  EXPECT_EQ(Names(), "▶Anna 1Ben 2Cleo 3Anna ");
  EXPECT_EQ(station->Songs().View().state, app::SongView::State::Playing);
  Advance(2s);
  Click("NextSinger");
  Work();
  EXPECT_EQ(Cell(0, 1), "Ben");
  EXPECT_EQ(Cell(0, 2), "Anna – two");
}

TEST_F(SingersTest, KeyTempoAndPartnerAreTheWishes) {
  OpenBooth();
  AddSinger("Anna");
  DoubleClickSong(1);
  Choose("WishKey", 12 - 3);
  Choose("WishTempo", 20 + 5);
  auto& partner = Find<QLineEdit>("WishPartner");
  partner.setFocus();
  QTest::keyClicks(&partner, QStringLiteral("Ben"));
  QTest::keyClick(&partner, Qt::Key_Return);
  Settle();
  const singers::Wish& wish = Rotation().Singers()[0].wishes[0];
  EXPECT_EQ(wish.semitones, -3);
  EXPECT_EQ(wish.percent, 5);
  EXPECT_EQ(wish.partner, "Ben");
  EXPECT_EQ(Cell(0, 2), "Anna – one (key −3) with Ben");
  Click("NextSinger");
  Work();
  EXPECT_EQ(station->Songs().View().semitones, -3);
  EXPECT_EQ(station->Songs().View().percent, 5);
}

TEST_F(SingersTest, TheHostMovesHoldsSkipsAndBringsBack) {
  OpenBooth();
  for (const char* name : {"Anna", "Ben", "Cleo"}) {
    AddSinger(name);
    DoubleClickSong(1);
  }
  ChooseSinger(2);
  Click("SingerUp");
  Settle();
  EXPECT_EQ(Names(), "1Anna 2Cleo 3Ben ");
  Click("SingerDown");
  Settle();
  EXPECT_EQ(Names(), "1Anna 2Ben 3Cleo ");
  ChooseSinger(0);
  Click("HoldSinger");
  Settle();
  EXPECT_EQ(Cell(0, 3), "away");
  Click("NextSinger");
  Work();
  EXPECT_EQ(Names(), "▶Ben 1Anna 2Cleo 3Ben ");
  ChooseSinger(2);
  Click("SingerUp");
  Settle();
  EXPECT_EQ(Names(), "▶Ben 1Cleo 2Anna 3Ben ") << "while somebody is on stage, too";
  Click("SkipSinger");
  Settle();
  Click("RemoveSinger");
  Settle();
  EXPECT_EQ(Rotation().FindName("Cleo"), nullptr);
  EXPECT_FALSE(Find<QPushButton>("RemoveSinger").isEnabled());
  Click("BringSingerBack");
  Settle();
  EXPECT_NE(Rotation().FindName("Cleo"), nullptr);
  Choose("SingersRule", 2);
  Settle();
  EXPECT_EQ(Rotation().Rule(), singers::Rule::FirstCome);
}

TEST_F(SingersTest, TheMenuPutsASongFirstTakesOneOffAndRenames) {
  OpenBooth();
  AddSinger("Anna");
  DoubleClickSong(1);
  DoubleClickSong(2);
  auto& table = Find<QTableWidget>("SingersList");
  const QPoint place = table.visualRect(table.model()->index(0, 1)).center();
  AskForMenu(*table.viewport(), place);
  ChooseEntry("WishFirst1");
  Settle();
  EXPECT_EQ(Cell(0, 2), "Anna – two (+1)");
  AskForMenu(*table.viewport(), place);
  ChooseEntry("Withdraw0");
  Settle();
  EXPECT_EQ(Cell(0, 2), "Anna – one");
  AskForMenu(*table.viewport(), place);
  ChooseEntry("RenameSinger");
  auto& dialog = Find<QInputDialog>("SingerNameDialog");
  dialog.setTextValue(QStringLiteral("Hanna"));
  dialog.accept();
  Settle();
  EXPECT_EQ(Cell(0, 1), "Hanna");
}

TEST_F(SingersTest, ADoubleClickThrowsNobodyOffTheStage) {
  OpenBooth();
  AddSinger("Anna");
  DoubleClickSong(1);
  Click("NextSinger");
  Work();
  const std::string file = station->Songs().View().filename;
  ChooseSinger(1);
  EXPECT_FALSE(Find<QPushButton>("SkipSinger").isEnabled())
      << "her turn to come is not the one that she sings";
  Find<QTableWidget>("SingersList").clearSelection();
  DoubleClickSong(2);
  EXPECT_EQ(station->Songs().View().filename, file);
  EXPECT_EQ(station->Songs().View().state, app::SongView::State::Playing);
  ChooseSinger(0);
  Settle();
  Click("SkipSinger");
  Settle();
  EXPECT_NE(station->Songs().View().state, app::SongView::State::Playing);
}

TEST_F(SingersTest, APartnerThatIsBeingWrittenGoesWithTheSongThatBegins) {
  OpenBooth();
  AddSinger("Anna");
  DoubleClickSong(1);
  DoubleClickSong(2);
  auto& partner = Find<QLineEdit>("WishPartner");
  partner.setFocus();
  QTest::keyClicks(&partner, QStringLiteral("Ben"));
  Press(Qt::Key_Return, Qt::ControlModifier);
  Work();
  EXPECT_EQ(Rotation().OnStage()->wish.partner, "Ben");
  EXPECT_EQ(Rotation().Singers()[0].wishes[0].partner, "");
  EXPECT_EQ(partner.text(), QString()) << "the field is about the next song";
}

TEST_F(SingersTest, ANameThatIsThereIsChosenAndNotDoubled) {
  OpenBooth();
  AddSinger("Anna");
  AddSinger("Ben");
  AddSinger("ANNA");
  DoubleClickSong(1);
  EXPECT_EQ(Rotation().Singers().size(), 2U);
  EXPECT_EQ(Rotation().FindName("Anna")->wishes.size(), 1U);
}

TEST_F(SingersTest, WithASingerChosenTheMenuOfSongsStillPlaysAtOnce) {
  OpenBooth();
  AddSinger("Anna");
  auto& grid = Find<QTableView>("KaraokeGrid");
  grid.selectRow(0);
  AskForMenu(*grid.viewport(), grid.visualRect(grid.model()->index(0, 1)).center());
  ChooseEntry("PlaySong");
  Work();
  EXPECT_EQ(station->Songs().View().state, app::SongView::State::Playing);
  EXPECT_TRUE(Rotation().Singers()[0].wishes.empty());
}

TEST_F(SingersTest, TheGuestsSeeWhoIsNextBetweenSongsAndBelowTheWords) {
  OpenBooth();
  AddSinger("Anna");
  DoubleClickSong(1);
  AddSinger("Ben");
  DoubleClickSong(2);
  auto* screen = window->findChild<QComboBox*>(QStringLiteral("SingersScreen"));
  screen->setCurrentIndex(screen->count() - 1);
  Q_EMIT screen->activated(screen->count() - 1);
  Settle();
  NextUpCard* card = nullptr;
  for (QWidget* widget : QApplication::topLevelWidgets())
    if (auto* found = widget->findChild<NextUpCard*>()) card = found;
  ASSERT_NE(card, nullptr);
  EXPECT_EQ(card->Shown(), NextUpCard::Form::Card);
  ASSERT_EQ(card->What().next.size(), 2U);
  EXPECT_EQ(card->What().next[0].name, QStringLiteral("Anna"));
  Click("NextSinger");
  Work();
  EXPECT_EQ(card->Shown(), NextUpCard::Form::Strip);
  EXPECT_EQ(card->What().next[0].name, QStringLiteral("Ben"));
  EXPECT_GE(card->geometry().top(), card->parentWidget()->height() * 9 / 10) << "words end above it";
  Advance(12s);
  EXPECT_EQ(card->Shown(), NextUpCard::Form::Card);
  EXPECT_TRUE(card->What().thanks.contains(QStringLiteral("Anna")));
  Click("SingersOnScreen");
  Settle();
  EXPECT_EQ(card->Shown(), NextUpCard::Form::Hidden);
}

TEST_F(SingersTest, FindingLooksForSongsWhereSongsAre) {
  OpenBooth();
  Press(Qt::Key_F, Qt::ControlModifier);
  EXPECT_EQ(QApplication::focusWidget(), &Find<QLineEdit>("KaraokeSearch"));
}

}  // namespace
}  // namespace ui::testing
