// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QTableView>

#include "support/Languages.h"
#include "ui/forms/BatchBar.h"
#include "ui/strings/ScanWords.h"
#include "ui/tests/Booth.h"

namespace ui::testing {
namespace {

/// Analysing many tracks, and how file names are read.
class BatchBarTest : public Booth {
 protected:
  void RunWorkers() {
    for (int i = 0; i < 8; ++i) {  // what one file came to begins the next
      workers.RunAll();
      Settle();
    }
  }
  void AnalyseAll() {
    Press(Qt::Key_8, Qt::ControlModifier);
    Click("AnalyseAll");
    Press(Qt::Key_1, Qt::ControlModifier);
    Settle();
  }
  /// Its files are asked for by a worker.
  void LetItBegin() {
    while (station->Collections().Batch().Progress().state == app::BatchProgress::State::Idle &&
           workers.RunOne())
      Settle();
  }
  [[nodiscard]] bool Seen(const char* name) { return Find<QWidget>(name).isVisible(); }
};

TEST_F(BatchBarTest, TheLineIsThereWhileTracksAreAnalysedAndCanWait) {
  Open();
  RunWorkers();
  EXPECT_FALSE(Seen("AnalyseProgress"));
  Find<QAbstractItemView>("Catalogue").selectAll();
  Settle();
  EXPECT_EQ(TextOf("AnalyseProgress"), QStringLiteral("4 tracks chosen"));
  Click("Analyse");
  LetItBegin();
  EXPECT_TRUE(Seen("AnalysePause"));
  EXPECT_TRUE(TextOf("AnalyseProgress").startsWith(QStringLiteral("0 of 4 analysed")));
  Click("AnalysePause");
  Settle();
  EXPECT_TRUE(Seen("AnalyseGoOn"));
  EXPECT_FALSE(Seen("AnalysePause"));
  EXPECT_EQ(TextOf("AnalyseProgress"), QStringLiteral("Paused: 0 of 4 analysed"));
  Click("AnalyseGoOn");
  RunWorkers();
  EXPECT_FALSE(Seen("AnalysePause"));
  EXPECT_EQ(station->Collections().Batch().Progress().done, 4);
}

TEST_F(BatchBarTest, TheSettingsShowHowFarTheWholeCollectionIs) {
  Open();
  RunWorkers();
  Press(Qt::Key_8, Qt::ControlModifier);
  EXPECT_FALSE(Seen("AllAnalyseProgress"));
  Click("AnalyseAll");
  LetItBegin();
  EXPECT_TRUE(TextOf("AllAnalyseProgress").startsWith(QStringLiteral("0 of 4 analysed")));
  Click("AllAnalysePause");
  EXPECT_EQ(TextOf("AllAnalyseProgress"), QStringLiteral("Paused: 0 of 4 analysed"));
  Click("AllAnalyseGoOn");
  RunWorkers();
  EXPECT_FALSE(Seen("AllAnalysePause"));
  EXPECT_EQ(station->Collections().Batch().Progress().done, 4);
}

TEST_F(BatchBarTest, ATrackThatWasNotAnalysedSaysSoWithTheWayToIt) {
  Open();
  auto& grid = Find<QTableView>("Catalogue");
  const auto tempo = [&grid](int row, int role) {
    for (int column = 0; column < grid.model()->columnCount(); ++column) {
      if (grid.model()->headerData(column, Qt::Horizontal).toString() == QStringLiteral("BPM"))
        return grid.model()->index(row - 1, column).data(role).toString();
    }
    return QString();
  };
  EXPECT_EQ(tempo(1, Qt::DisplayRole), QStringLiteral("128.0"));
  EXPECT_EQ(tempo(3, Qt::DisplayRole), QStringLiteral("?"));
  EXPECT_TRUE(tempo(3, Qt::ToolTipRole).contains(QStringLiteral("press Analyse")));
  ChooseRow(1);
  Settle();
  EXPECT_FALSE(Seen("Analyse"));
  ChooseRow(3);
  Settle();
  EXPECT_EQ(TextOf("AnalyseProgress"), Strings(Strings::Language::English)(ScanWord::NotAnalysed));
  Music().SetCell(3, catalogue::track::kStartMixPoint, "0.100");
  Settle();
  EXPECT_EQ(tempo(3, Qt::DisplayRole), QString()) << "it was, and has none";
  EXPECT_FALSE(Seen("Analyse"));
}

TEST_F(BatchBarTest, WhatWasLeftOutIsListedAtTheEnd) {
  AddTrack("/gone/x.mp3", "A", "X");
  engine.RemoveFile("/gone/x.mp3");
  Open();
  RunWorkers();
  AnalyseAll();
  RunWorkers();
  EXPECT_TRUE(Seen("AnalyseLeftOut"));
}

TEST_F(BatchBarTest, TimeIsToldInMinutesWhereItIsLong) {
  const Strings say(Strings::Language::English);
  EXPECT_EQ(TimeLeftText(std::chrono::seconds(0), say), QStringLiteral("1 s left"));
  EXPECT_EQ(TimeLeftText(std::chrono::seconds(89), say), QStringLiteral("89 s left"));
  EXPECT_EQ(TimeLeftText(std::chrono::seconds(151), say), QStringLiteral("3 min left"));
}

TEST_F(BatchBarTest, NamesOfFilesShowWhatTheyGiveAndAreStoredAtOnce) {
  Open();
  Press(Qt::Key_8, Qt::ControlModifier);
  const auto example = [this] { return TextOf("NameExample"); };
  const auto stored = [this](const char* key) { return settings.Get("TLVG", "Tags", key, ""); };
  EXPECT_TRUE(example().contains(QStringLiteral("artist \"Nora Vale\", title \"Night Train\"")));
  Choose("FileFormat", 1);
  EXPECT_EQ(stored("FileFormat"), "1");
  EXPECT_TRUE(example().contains(QStringLiteral("artist \"Night Train\"")));
  QTest::mouseClick(&Find<QCheckBox>("UseArtist"), Qt::LeftButton, {}, QPoint(8, 8));
  EXPECT_EQ(stored("UseArtist"), "False");
  EXPECT_TRUE(example().contains(QStringLiteral("no artist, title \"Nora Vale\"")));
  auto& separator = Find<QLineEdit>("SplitCharacter");
  separator.selectAll();
  QTest::keyClicks(&separator, QStringLiteral("_"));
  EXPECT_EQ(stored("SplitCharacter"), "_");
  EXPECT_TRUE(example().contains(QStringLiteral("title \"Nora Vale - Night Train\"")));
  QTest::mouseClick(&Find<QCheckBox>("UseSplit"), Qt::LeftButton, {}, QPoint(8, 8));
  EXPECT_FALSE(Find<QWidget>("FileFormat").isEnabled());
  QTest::mouseClick(&Find<QCheckBox>("Write"), Qt::LeftButton, {}, QPoint(8, 8));
  EXPECT_EQ(stored("Write"), "True");
}

}  // namespace
}  // namespace ui::testing
