// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <QDesktopServices>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QTextBrowser>
#include <QUrl>
#include <fstream>

#include "app/recording/RecordedTracks.h"
#include "ui/forms/MessageBox.h"
#include "ui/tests/Booth.h"
#include "ui/widgets/LevelMeter.h"

namespace ui::testing {
namespace {

/// The page, the button on the strip, and what was recorded in a real folder.
class RecordingTest : public Booth {
 protected:
  RecordingTest() { std::filesystem::create_directories(Folder()); }
  ~RecordingTest() override { std::filesystem::remove_all(folder); }
  [[nodiscard]] std::filesystem::path Folder() const { return folder / "Recordings"; }
  void OpenPage() {
    Open();
    Press(Qt::Key_7, Qt::ControlModifier);
    Work();
  }
  /// Workers and conductor hand on to each other.
  void Work() {
    for (int i = 0; i < 3; ++i) {
      workers.RunAll();
      Settle();
    }
  }
  void ClickAndWork(const char* button) {
    Click(button);
    Work();
  }
  [[nodiscard]] QString Caption(const char* button) { return Find<QPushButton>(button).text(); }
  /// A recording of two tracks that the engine can play.
  std::string MakeRecording() {
    const auto path = Folder() / "2026-11-21 20.05.00.flac";
    std::ofstream(path) << "x";
    std::ofstream(Folder() / "2026-11-21 20.05.00.cue") << app::CueSheet(
        "x", "2026", {{0s, "Anna", "One", path.string()}, {20s, "Bo", "Two", path.string()}});
    engine.AddFile(path.string());
    return path.string();
  }
  void ChooseRecorded(int row) { Find<QTableWidget>("RecordingList").selectRow(row); }
  [[nodiscard]] QString Listed(int row, int column) {
    const auto* item = Find<QTableWidget>("RecordingList").item(row, column);
    return item == nullptr ? QString() : item->text();
  }
};

TEST_F(RecordingTest, TheButtonBeginsAndEndsAndStripAndPageShowIt) {
  OpenPage();
  LoadAndPlay(1, 1);
  EXPECT_FALSE(Find<QPushButton>("Record").isChecked());
  ClickAndWork("Record");
  EXPECT_EQ(recorder.starts, 1U);
  recorder.progress.length = recorder.progress.heard = 754s;
  recorder.progress.bytes = 12'340'000;
  recorder.progress.left_peak = 0.5F;
  recorder.progress.room = 3 * 3600s;
  Settle();
  EXPECT_TRUE(Find<QPushButton>("Record").isChecked());
  EXPECT_EQ(Caption("Record"), QStringLiteral("\u25CF 0:12:34"));
  EXPECT_EQ(Caption("RecordButton"), QStringLiteral("Stop recording"));
  EXPECT_EQ(TextOf("RecordedTime"), QStringLiteral("0:12:34"));
  EXPECT_EQ(TextOf("RecordedSize"), QStringLiteral("12.3 MB"));
  EXPECT_EQ(TextOf("RecordingState"), QStringLiteral("Room for about 3 hours more."));
  EXPECT_NEAR(Find<LevelMeter>("RecordedLevel").Shown()[0], -6, 0.2);
  EXPECT_TRUE(Listed(0, 1).endsWith(QStringLiteral("(being recorded)")));
  EXPECT_EQ(Listed(1, 1).trimmed(), QStringLiteral("Anna Vogel - First Light"));
  ClickAndWork("RecordButton");
  EXPECT_FALSE(recorder.progress.recording);
  EXPECT_FALSE(Find<QPushButton>("Record").isChecked());
  EXPECT_EQ(Caption("RecordButton"), QStringLiteral("Record"));
}

TEST_F(RecordingTest, AKeyBeginsAndEndsItFromEveryPage) {
  Open();
  Press(Qt::Key_R, Qt::ControlModifier);
  Work();
  EXPECT_TRUE(Find<QPushButton>("Record").isChecked());
  Press(Qt::Key_R, Qt::ControlModifier);
  Work();
  EXPECT_FALSE(Find<QPushButton>("Record").isChecked());
  EXPECT_EQ(recorder.starts, 1U);
}

TEST_F(RecordingTest, ARecordingIsLoadedWhereTheTrackThatIsChosenBegins) {
  const std::string path = MakeRecording();
  OpenPage();
  EXPECT_FALSE(Find<QPushButton>("RecordingToDeck2").isEnabled());
  EXPECT_EQ(Listed(0, 1), QStringLiteral("2026-11-21 20.05.00"));
  EXPECT_EQ(Listed(2, 0), QStringLiteral("0:00:20"));
  ChooseRecorded(2);
  ClickAndWork("RecordingToDeck2");
  EXPECT_EQ(Deck(2).filename, path);
  EXPECT_EQ(Deck(2).title, "Two");
  EXPECT_EQ(Deck(2).state, State::Stopped);
  EXPECT_NEAR(std::chrono::duration<double>(Deck(2).position).count(), 20, 0.1);
  ClickAndWork("RecordingPlay");
  EXPECT_EQ(Deck(1).state, State::Playing) << "the free deck";
  EXPECT_NEAR(std::chrono::duration<double>(Deck(1).position).count(), 20, 1);
  ChooseRecorded(0);
  ClickAndWork("RecordingToDeck1");
  EXPECT_EQ(Deck(1).title, "Two") << "a deck that is heard is not loaded over";
}

TEST_F(RecordingTest, ClosingAsksOnceWhileItGoesOnWhateverPlays) {
  Open();
  LoadAndPlay(1, 1);
  ClickAndWork("Record");
  window->close();
  Settle();
  const auto* box = window->findChild<MessageBox*>(QStringLiteral("LeaveBox"));
  ASSERT_NE(box, nullptr);
  EXPECT_EQ(box->Text(),
            QStringLiteral("The evening is being recorded. Close all the same? The recording is kept."));
  Click("LeaveBoxNo");
  EXPECT_TRUE(window->isVisible());
  EXPECT_TRUE(recorder.progress.recording);
  window->close();
  Settle();
  Click("LeaveBoxYes");
  EXPECT_FALSE(window->isVisible());
  EXPECT_TRUE(station->ShutDown());
  EXPECT_FALSE(recorder.progress.recording);
}

TEST_F(RecordingTest, TheChoicesAreKept) {
  OpenPage();
  Choose("RecordingFormat", 6);
  Choose("RecordingBitRate", 5);
  Choose("RecordingFiles", 1);
  auto& name = Find<QLineEdit>("RecordingName");
  name.setFocus();
  QTest::keyClicks(&name, QStringLiteral("Ball"));
  QTest::keyClick(&name, Qt::Key_Return);
  ClickAndWork("RecordButton");
  EXPECT_EQ(recorder.wish.bit_rate, 320'000);
  const std::string path = recorder.wish.file.path;
  EXPECT_NE(path.find("/Ball "), std::string::npos) << path;
  EXPECT_TRUE(path.ends_with(".mp3")) << path;
  Choose("RecordingFormat", 3);
  EXPECT_EQ(settings.Get("TLVG", "Recording", "Bits", ""), "24");
}

TEST_F(RecordingTest, WhyItEndedStandsOnThePage) {
  OpenPage();
  ClickAndWork("Record");
  recorder.progress.recording = false;
  recorder.progress.failure =
      support::Failed(support::ErrorCode::Unavailable, support::Sentence::RecordingDiskLow);
  Work();
  EXPECT_TRUE(TextOf("RecordingState").contains(QStringLiteral("before its disk is full")));
  EXPECT_TRUE(TextOf("RecordingState").contains(QStringLiteral("folder on another disk")))
      << "and what to do";
}

TEST_F(RecordingTest, SaysThatASecondOutputIsNotRecordedAsLongAsThereIsOne) {
  OpenPage();
  auto& only = Find<QLabel>("RecordsOnlyDeck1");
  EXPECT_FALSE(only.isVisible());
  station->Outputs().Set(2, {2, 0});
  Work();
  EXPECT_TRUE(only.isVisible());
  station->Outputs().Set(2, {1, 2});
  Work();
  EXPECT_TRUE(only.isVisible()) << "another pair of the same device";
  station->Outputs().Set(2, {1, 1});
  Work();
  EXPECT_FALSE(only.isVisible()) << "the front pair is one of all, and the one that is recorded";
  station->Outputs().Set(2, {2, 0});
  Work();
  EXPECT_TRUE(only.isVisible());
  station->Outputs().Share();
  Work();
  EXPECT_FALSE(only.isVisible());
}

TEST_F(RecordingTest, ItsFolderIsShown) {
  MakeRecording();
  OpenPage();
  QTextBrowser opened;
  QDesktopServices::setUrlHandler(QStringLiteral("file"), &opened, "setSource");
  Click("RecordingShowFolder");
  QDesktopServices::unsetUrlHandler(QStringLiteral("file"));
  EXPECT_EQ(std::filesystem::path(opened.source().toLocalFile().toStdString()), Folder());
}

}  // namespace
}  // namespace ui::testing
