// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QFileDialog>
#include <QListWidget>
#include <QPainter>
#include <QPlainTextEdit>
#include <QScreen>
#include <QSlider>
#include <QTableView>
#include <fstream>

#include "karaoke/testing/MidiBytes.h"
#include "support/testing/TemporaryFolder.h"
#include "ui/forms/frmKaraoke.h"
#include "ui/models/TrackModel.h"
#include "ui/tests/Booth.h"
#include "ui/widgets/ColourButton.h"
#include "ui/widgets/ElidedLabel.h"
#include "ui/widgets/LyricSurface.h"
#include "ui/widgets/QtDrawing.h"

namespace ui::testing {
namespace {

using karaoke::testing::TrackBytes;
using Song = app::SongView::State;

/// How many pixels have a colour.
int CountIn(const QImage& image, const QColor& colour) {
  int count = 0;
  for (int y = 0; y < image.height(); ++y) {
    const auto* row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
    count += static_cast<int>(std::count(row, row + image.width(), colour.rgb()));
  }
  return count;
}

/// The window with a song of two lines and a bad one in the karaoke table. "one two three four" is sung from
/// 5 s on, a word every half second, then "five six seven eight".
class KaraokeTest : public Booth {
 protected:
  void OpenBooth(QSize size = {1366, 768}) {
    settings.Set("TLVG", "Karaoke", "Look", look);
    TrackBytes track = karaoke::testing::UsualHead().Name("Words").Text(0, "@TCounting").Text(0, "@TAnna");
    const char* words[] = {"/one ", "two ", "three ", "four", "/five ", "six ", "seven ", "eight"};
    for (int i = 0; i < 8; ++i) track.Text(i == 0 ? 4800 : 480, words[i]);
    std::ofstream(songs.Path() / "good.kar", std::ios::binary)
        << karaoke::testing::FileBytes({track.End(960)});
    std::ofstream(songs.Path() / "bad.kar") << "nothing";
    for (const char* name : {"good.kar", "bad.kar"}) {
      const std::string path = (songs.Path() / name).string();
      const std::string_view cells[] = {"Anna", name, "", "Pop", "00:10", path};
      Karaoke().AddRow(cells);
    }
    Open(size);
    Click("Page3");
  }
  void PlayRow(int row) {
    auto& grid = Find<QTableView>("KaraokeGrid");
    const QPoint cell = grid.visualRect(grid.model()->index(row - 1, 1)).center();
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, cell);
    QTest::mouseDClick(grid.viewport(), Qt::LeftButton, {}, cell);
    Settle();
    workers.RunAll();
    Settle();
  }
  void SeekTo(std::chrono::milliseconds place) {
    station->Songs().Seek(place);
    Settle();
  }
  [[nodiscard]] const app::SongView& Singing() { return station->Songs().View(); }
  [[nodiscard]] frmKaraoke& Singers() {
    for (QWidget* widget : QApplication::topLevelWidgets()) {
      if (auto* found = qobject_cast<frmKaraoke*>(widget)) return *found;
    }
    throw std::runtime_error("no singers' window");
  }
  [[nodiscard]] LyricSurface& Words() { return Find<LyricSurface>("pctKaraoke"); }
  /// How many pixels of the words' picture have a colour.
  [[nodiscard]] int Count(QWidget& widget, const QColor& colour) {
    return CountIn(widget.grab().toImage().convertToFormat(QImage::Format_RGB32), colour);
  }
  [[nodiscard]] std::string Stored(const char* key) { return settings.Get("TLVG", "Karaoke", key, "(none)"); }
  void MoveSlider(const char* name, int value) {
    Find<QSlider>(name).setValue(value);
    Settle();
  }

  support::testing::TemporaryFolder songs;
  std::string look = "described";
};

const QColor kBlue(0, 0, 255), kRed(255, 0, 0), kGreen(0, 255, 0);

TEST_F(KaraokeTest, ADoubleClickPlaysAndTheWordsAreShown) {
  OpenBooth();
  PlayRow(1);
  EXPECT_EQ(Singing().state, Song::Playing);
  EXPECT_EQ(Find<ElidedLabel>("SongTitle").text(), QStringLiteral("Anna – good.kar"));
  Advance(6200ms);
  EXPECT_GT(Count(Words(), kRed), 50) << "two words are sung";
  EXPECT_GT(Count(Words(), kBlue), 50) << "two are to come";
  EXPECT_GT(Count(Words(), kGreen), 50) << "the next line waits";
}

TEST_F(KaraokeTest, DroppedSongsAreAddedChosenAndTheRefusedOnesListed) {
  OpenBooth();
  const std::string zip = (songs.Path() / "Ben - Packed.zip").string();
  tags.AddFile(zip);
  DropFiles({QUrl::fromLocalFile(QStringLiteral("/m/letter.txt")),
             QUrl::fromLocalFile(QString::fromStdString(zip))},
            "KaraokePage");
  EXPECT_EQ(Karaoke().Rows(), 3);
  EXPECT_EQ(TextOf("KaraokeCount"), QStringLiteral("3 songs"));
  EXPECT_EQ(Find<QTableView>("KaraokeGrid").currentIndex().row(), 2);
  EXPECT_TRUE(Find<QWidget>("KaraokeKept").isVisible());
  EXPECT_TRUE(Find<QPlainTextEdit>("KaraokeKept").toPlainText().contains(QStringLiteral("letter.txt")));
}

TEST_F(KaraokeTest, AFolderOfSongsIsTakenWholeAndASongLeavesTheListWithoutItsFile) {
  OpenBooth();
  std::filesystem::create_directories(songs.Path() / "box");
  for (const char* name : {"box/Ben.zip", "box/Disc.CDG", "box/Disc.MP3", "box/list.txt"}) {
    std::ofstream(songs.Path() / name) << "x";
    tags.AddFile((songs.Path() / name).string());
  }
  DropFiles({QUrl::fromLocalFile(QString::fromStdString((songs.Path() / "box").string()))}, "KaraokePage");
  EXPECT_EQ(Karaoke().Rows(), 4);
  auto& grid = Find<QTableView>("KaraokeGrid");
  grid.setFocus();
  grid.selectRow(0);
  QTest::keyClick(&grid, Qt::Key_Delete);
  Settle();
  EXPECT_EQ(Karaoke().Rows(), 3);
  EXPECT_TRUE(std::filesystem::exists(songs.Path() / "good.kar"));
  Press(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(Karaoke().Cell(1, catalogue::karaoke::kTitle), "good.kar");
}

TEST_F(KaraokeTest, WhatWasSungIsMarked) {
  OpenBooth();
  const auto mark = [this] {
    return Find<QTableView>("KaraokeGrid").model()->index(0, 0).data(TrackModel::kMarkRole).toString();
  };
  EXPECT_EQ(mark(), QString());
  PlayRow(1);
  Advance(6s);
  EXPECT_EQ(mark(), QStringLiteral("✓"));
}

TEST_F(KaraokeTest, ABadFileIsTold) {
  OpenBooth();
  PlayRow(1);
  PlayRow(2);
  EXPECT_TRUE(Find<QWidget>("KaraokeKept").isVisible());
  EXPECT_EQ(Singing().state, Song::Playing);
}

TEST_F(KaraokeTest, AWindowThatStoodStillShowsTheRightWordsInItsNextFrame) {
  OpenBooth({1920, 1080});
  PlayRow(1);
  Advance(1s);
  for (int tick = 0; tick < 1000; ++tick) {  // 10 s without a frame
    clock.Advance(6ms);
    station->Tick();
  }
  window->ShowFrame();
  EXPECT_NEAR(double(Words().ShownTime().count()), 7.1e6, 0.2e6);
  const auto frame = Singing().words->show.At(Words().ShownTime());
  EXPECT_EQ(frame.current, 1U);
  EXPECT_EQ(Count(Words(), kGreen), 0) << "the second line is the last one";
  EXPECT_GT(Count(Words(), kBlue), 50);
}

TEST_F(KaraokeTest, WhatIsSungOnlyGrows) {
  OpenBooth();
  PlayRow(1);
  SeekTo(5100ms);
  int before = 0;
  for (int frame = 0; frame < 80; ++frame) {
    Advance(20ms);
    const int sung = Count(Words(), kRed);
    EXPECT_GE(sung, before) << Words().ShownTime().count();
    before = sung;
  }
  EXPECT_GT(before, 3 * Count(Words(), kBlue));
}

TEST_F(KaraokeTest, LinesAreDrawnAheadOfNeed) {
  OpenBooth();
  PlayRow(1);
  for (int i = 0; i < 100; ++i) {
    QTest::qWait(2);
    window->ShowFrame();
  }
  const int late = Words().Scene().DrawnLate();
  for (const auto place : {5200ms, 7300ms, 8900ms}) {
    SeekTo(place);
    static_cast<void>(Words().grab());
  }
  EXPECT_EQ(Words().Scene().DrawnLate(), late);
}

TEST_F(KaraokeTest, WordByWordOnlyTheWordIsRed) {
  settings.Set("TLVG", "Karaoke", "Style", "1");
  OpenBooth();
  PlayRow(1);
  SeekTo(5600ms);
  const int second = Count(Words(), kRed);
  SeekTo(6990ms);
  EXPECT_GT(second, 20);
  EXPECT_LT(Count(Words(), kRed), 3 * second);
}

TEST_F(KaraokeTest, TheSingersWishesReachTheSong) {
  OpenBooth();
  PlayRow(1);
  MoveSlider("SongKey", -4);
  MoveSlider("SongTempo", 12);
  MoveSlider("SongVolume", 35);
  EXPECT_EQ(Singing().semitones, -4);
  EXPECT_EQ(Singing().percent, 12);
  EXPECT_EQ(Singing().volume, 35);
  EXPECT_EQ(TextOf("SongKeyValue"), QStringLiteral("−4"));
  Click("SongPlay");
  EXPECT_EQ(Singing().state, Song::Paused);
  Click("SongStop");
  EXPECT_EQ(Singing().position, 0s);
}

TEST_F(KaraokeTest, TheSingersWindowOpensWhereItIsWantedAndEscapePutsItAway) {
  OpenBooth();
  EXPECT_FALSE(Singers().isVisible());
  auto& list = Find<QComboBox>("SingersScreen");
  ASSERT_EQ(list.count(), 3);
  Choose("SingersScreen", 1);
  EXPECT_TRUE(Singers().isFullScreen());
  EXPECT_EQ(Stored("Screen"), Singers().Screens().front().name.toStdString());
  QTest::keyClick(&Singers(), Qt::Key_Escape);
  EXPECT_FALSE(Singers().isVisible());
  EXPECT_EQ(list.currentIndex(), 0);
  Choose("SingersScreen", 2);
  EXPECT_TRUE(Singers().isVisible() && !Singers().isFullScreen());
  QTest::mouseDClick(&Singers(), Qt::LeftButton);
  EXPECT_EQ(Stored("Screen"), "");
}

TEST_F(KaraokeTest, AScreenThatIsNotThereIsKeptAndNeverReplacedByTheDecks) {
  settings.Set("TLVG", "Karaoke", "Screen", "HDMI-7");
  OpenBooth();
  EXPECT_FALSE(Singers().isVisible());
  EXPECT_EQ(Find<QComboBox>("SingersScreen").currentText(), QStringLiteral("HDMI-7 (not connected)"));
  EXPECT_EQ(Stored("Screen"), "HDMI-7");
}

TEST_F(KaraokeTest, AStoredScreenThatHoldsTheDecksIsNotCoveredAtTheStart) {
  settings.Set("TLVG", "Karaoke", "Screen", "#1");  // as screens without a name are called
  OpenBooth();
  EXPECT_FALSE(Singers().isVisible());
}

TEST_F(KaraokeTest, AColourIsStoredAndSeenAtOnce) {
  OpenBooth();
  PlayRow(1);
  SeekTo(5100ms);
  Click("SongPart2");
  QTest::mouseClick(&Find<ColourButton>("CurrentText"), Qt::LeftButton);
  auto& dialog = Find<QDialog>("ColourDialog");
  QTest::mouseClick(dialog.findChild<ColourButton*>(QStringLiteral("Colourffffff")), Qt::LeftButton);
  Settle();
  EXPECT_EQ(Stored("CurrentText"), "16777215");
  EXPECT_EQ(Count(Words(), kBlue), 0);
}

TEST_F(KaraokeTest, TheFontAndItsWeightAreStored) {
  OpenBooth();
  Click("SongPart2");
  Click("LyricFont");
  auto& dialog = Find<QDialog>("FontDialog");
  dialog.findChild<QCheckBox*>(QStringLiteral("FontBold"))->click();
  auto* families = dialog.findChild<QListWidget*>(QStringLiteral("FontFamilies"));
  families->setCurrentRow(families->count() - 1);
  Settle();
  EXPECT_EQ(Stored("FontBold"), "False");
  EXPECT_EQ(Stored("FontName"), families->currentItem()->text().toStdString());
}

TEST_F(KaraokeTest, TheDialogOfTheBallAsksForTransparentPictures) {
  OpenBooth();
  Click("SongPart2");
  Click("BouncingBall");
  auto& dialog = Find<QFileDialog>("PictureDialog");
  EXPECT_EQ(dialog.nameFilters(), QStringList(QStringLiteral("Transparent Pictures (*.ico *.gif)")));
  EXPECT_EQ(dialog.defaultSuffix(), QStringLiteral("ico"));
  Q_EMIT dialog.urlSelected(QUrl::fromLocalFile(QStringLiteral("/pictures/dog.gif")));
  EXPECT_EQ(Stored("BouncingBall"), "/pictures/dog.gif");
}

TEST_F(KaraokeTest, TheTwoReadersOfTheBackgroundKeepTheirOwnDefaults) {
  OpenBooth();
  EXPECT_EQ(Find<ColourButton>("BackGround").Colour(), QColor(Qt::white));
  EXPECT_EQ(Words().grab().toImage().pixelColor(2, 2), QColor(Qt::black));
}

TEST_F(KaraokeTest, TheStagesLookIsThereUntilOneOfTheUsersOwnIsChosen) {
  look = "";
  OpenBooth();
  PlayRow(1);
  SeekTo(5600ms);
  const karaoke::LyricLook stage = karaoke::StageLook();
  const auto seen = [&](karaoke::Colour colour) { return Count(Words(), ColourOf(colour)); };
  for (const karaoke::Colour colour : stage.fill) EXPECT_GT(seen(colour), 50);
  EXPECT_EQ(seen(0xFF0000) + seen(0x0000FF) + seen(0x00FF00), 0);
  Click("SongPart2");
  EXPECT_FALSE(Find<QWidget>("CurrentText").isVisible()) << "it acts on the other look";
  Choose("LyricLookChoice", 1);
  EXPECT_EQ(Stored("Look"), "described");
  EXPECT_TRUE(Find<QWidget>("CurrentText").isVisible());
  EXPECT_GT(Count(Words(), kBlue), 50);
  EXPECT_EQ(seen(stage.fill[0]), 0);
  Choose("LyricLookChoice", 0);
  EXPECT_EQ(Stored("Look"), "stage");
  EXPECT_GT(seen(stage.fill[0]), 50);
}

TEST_F(KaraokeTest, TheLettersOfASongAreChosenAndItsTitleIsReadInThemToo) {
  OpenBooth();
  const std::string path = (songs.Path() / "c.kar").string();
  const std::string title = "\xcf\xee\xe4";  // three letters of Cyrillic
  std::ofstream(path, std::ios::binary) << karaoke::testing::FileBytes(
      {karaoke::testing::UsualHead().Name("Words").Text(480, title).End(9600)});
  const std::string_view cells[] = {"", title, "", "", "00:10", path};
  Karaoke().AddRow(cells);
  Settle();
  PlayRow(3);
  EXPECT_EQ(Find<ElidedLabel>("SongTitle").text(), QStringLiteral("Ïîä"));
  auto& list = Find<QComboBox>("SongCoding");
  EXPECT_EQ(list.currentIndex(), 0);
  Choose("SongCoding", list.findData(QByteArray("windows-1251")));
  EXPECT_EQ(Find<ElidedLabel>("SongTitle").text(), QStringLiteral("Под"));
  EXPECT_EQ(list.currentData().toByteArray(), QByteArray("windows-1251"));
  Choose("SongCoding", 0);
  EXPECT_EQ(Find<ElidedLabel>("SongTitle").text(), QStringLiteral("Ïîä"));
  EXPECT_EQ(Singing().state, Song::Playing);
  std::ofstream(path, std::ios::binary)
      << karaoke::testing::FileBytes({karaoke::testing::UsualHead().Event(480, {0x90, 60, 1}).End()});
  PlayRow(3);
  EXPECT_FALSE(list.isEnabled()) << "there is nothing to read";
}

TEST_F(KaraokeTest, ALookIsShownOnSampleWordsWhileNothingPlays) {
  OpenBooth();
  Click("SongPart2");
  EXPECT_GT(Count(Words(), kGreen), 50);
  Click("SongPart1");
  EXPECT_EQ(Count(Words(), kGreen), 0);
}

/// The adapter takes the calls and leaves the surface as it was.
TEST(QtDrawingTest, DrawTextPaintsFillAndOutlineAndLeavesNothingBehind) {
  QImage image(300, 120, QImage::Format_RGB32);
  image.fill(Qt::black);
  QPainter painter(&image);
  QtDrawingSystem system(QApplication::palette());
  QtDrawingSurface surface(painter, system);
  karaoke::CTextOutlineEx text(system);
  text.Filled(true);
  text.PenWidth(4);
  text.FillColor(0x0000FF);
  text.OutlineColor(0xFF0000);
  text.Font(karaoke::FontObject{"DejaVu Sans", 48, true, false});
  text.UseExistingObjects(false);
  text.hdc(&surface);
  text.DrawText("HIH", 20, 10);
  EXPECT_GT(CountIn(image, QColor(255, 0, 0)), 500);
  EXPECT_GT(CountIn(image, QColor(0, 0, 255)), 500);
  EXPECT_EQ(surface.Objects(), 0U);
  EXPECT_EQ(system.Fonts(), 0U);
}

TEST(QtDrawingTest, OutlineBehindShowsHalfThePen) {
  const auto outline = [](bool behind) {
    QImage image(200, 120, QImage::Format_RGB32);
    image.fill(Qt::black);
    QPainter painter(&image);
    QtDrawingSystem system(QApplication::palette());
    QtDrawingSurface surface(painter, system);
    karaoke::CTextOutlineEx text(system);
    text.Filled(true);
    text.OutlineBehind(behind);
    text.PenWidth(6);
    text.FillColor(0x0000FF);
    text.OutlineColor(0xFF0000);
    text.Font(karaoke::FontObject{"DejaVu Sans", 48, true, false});
    text.UseExistingObjects(false);
    text.hdc(&surface);
    text.DrawText("I", 40, 10);
    int wide = 0;
    for (int x = 0; x < image.width(); ++x) wide += image.pixelColor(x, 55) == QColor(0, 0, 255) ? 1 : 0;
    return wide;
  };
  EXPECT_NEAR(outline(true), outline(false) / 2, 1);
}

TEST(QtDrawingTest, ColoursGoThereAndBack) {
  EXPECT_EQ(ColourOf(0x00336699), QColor(0x99, 0x66, 0x33));
  EXPECT_EQ(ColourFrom(QColor(0x99, 0x66, 0x33)), 0x00336699U);
}

}  // namespace
}  // namespace ui::testing
