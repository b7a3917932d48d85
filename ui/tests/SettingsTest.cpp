// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <QComboBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSlider>
#include <QTableView>
#include <QTemporaryDir>
#include <QTextBrowser>
#include <fstream>

#include "app/WorkstationView.h"
#include "ui/forms/MessageBox.h"
#include "ui/tests/Booth.h"
#include "ui/widgets/VisualSurface.h"

namespace ui::testing {
namespace {

/// The settings page, the master volume and what the workstation shows through the window.
class SettingsTest : public Booth {
 protected:
  SettingsTest() {
    Open();
    RunWorkers();  // one of them opens the system's mixer
  }

  void Do(const char* act) {
    Press(Qt::Key_8, Qt::ControlModifier);
    Click(act);
  }
  void RunWorkers() {
    for (int i = 0; i < 3; ++i) {
      workers.RunAll();
      Settle();
    }
  }
  void MakeFile(const char* name) {
    std::ofstream(folder.filePath(QLatin1String(name)).toStdString()) << "sound";
    tags.AddFile(folder.filePath(QLatin1String(name)).toStdString());
  }
  std::string Stored(const char* section, const char* key) { return settings.Get("TLVG", section, key, ""); }

  QTemporaryDir folder;
};

TEST_F(SettingsTest, AScanFillsTheCatalogueAndSaysHowMany) {
  MakeFile("a.mp3");
  MakeFile("b.ogg");
  Find<QLineEdit>("Directory").setText(folder.path());
  Do("ReindexMusic");
  EXPECT_TRUE(Find<QWidget>("CancelScan").isVisible());
  RunWorkers();
  EXPECT_EQ(Music().Rows(), 6) << "those of other folders stay";
  EXPECT_EQ(TextOf("TrackCount"), QStringLiteral("6 tracks"));
  EXPECT_TRUE(TextOf("ScanProgress").startsWith(QStringLiteral("2 found.")));
  EXPECT_FALSE(Find<QWidget>("CancelScan").isVisible());
}

TEST_F(SettingsTest, AScanThatIsCancelledOrHasNoFolderChangesNothing) {
  MakeFile("a.mp3");
  Find<QLineEdit>("Directory").setText(folder.path());
  Do("ReindexMusic");
  Click("CancelScan");
  RunWorkers();
  EXPECT_TRUE(TextOf("ScanProgress").startsWith(QStringLiteral("Nothing was changed.")));
  Find<QLineEdit>("Directory").setText(QStringLiteral("/there/is/none"));
  Do("ReindexMusic");
  RunWorkers();
  EXPECT_TRUE(TextOf("ScanProgress").contains(QStringLiteral("/there/is/none")));
  EXPECT_EQ(Music().Rows(), 4);
}

TEST_F(SettingsTest, RowsGoOnlyWhereTheBoxIsAgreedTo) {
  MakeFile("a.mp3");
  const std::string lost = folder.filePath(QStringLiteral("lost.mp3")).toStdString();
  Music().AddRow(std::vector<std::string_view>{"", "Lost", "", lost});
  Find<QLineEdit>("Directory").setText(folder.path());
  for (const auto& [button, rows] : {std::pair{"QuestionNo", 6}, {"QuestionYes", 5}}) {
    Do("ReindexMusic");
    RunWorkers();
    EXPECT_TRUE(Find<MessageBox>("QuestionBox").Text().contains(QStringLiteral("lost.mp3")));
    Click(button);
    RunWorkers();
    EXPECT_EQ(Music().Rows(), rows) << button;
  }
}

TEST_F(SettingsTest, MoreFoldersAreAddedAndRemoved) {
  Press(Qt::Key_8, Qt::ControlModifier);
  EXPECT_FALSE(Find<QPushButton>("RemoveFolder").isEnabled());
  for (int twice = 0; twice < 2; ++twice) {
    Click("AddFolder");
    Q_EMIT Find<QFileDialog>("MoreFoldersDialog").fileSelected(folder.path());
  }
  auto& list = Find<QListWidget>("MoreFolders");
  EXPECT_EQ(list.count(), 1) << "each once";
  EXPECT_EQ(Stored("Settings", "Directory2"), folder.path().toStdString());
  list.setCurrentRow(0);
  Click("RemoveFolder");
  EXPECT_EQ(list.count(), 0);
  EXPECT_EQ(Stored("Settings", "Directory2"), "");
}

TEST_F(SettingsTest, AChosenFolderIsKeptAndAClosedDialogKeepsTheOldOne) {
  Do("BrowseDirectory");
  Find<QFileDialog>("DirectoryDialog").close();
  EXPECT_EQ(Stored("Settings", "Directory"), "");
  Do("BrowseDirectory");
  auto& dialog = Find<QFileDialog>("DirectoryDialog");
  EXPECT_FALSE(dialog.isModal());
  Q_EMIT dialog.fileSelected(folder.path());
  EXPECT_EQ(Stored("Settings", "Directory"), folder.path().toStdString());
  EXPECT_EQ(Find<QLineEdit>("Directory").text(), folder.path());
}

TEST_F(SettingsTest, RowsAndButtonsStandCloserWhereThatIsChosen) {
  const int row = Find<QTableView>("Catalogue").rowHeight(0);
  const int button = Find<QPushButton>("LoadOnDeck1").height();
  Choose("Density", 1);
  EXPECT_EQ(Stored("Skin", "Density"), "1");
  EXPECT_LE(Find<QTableView>("Catalogue").rowHeight(0), row - 5);
  EXPECT_LE(Find<QPushButton>("LoadOnDeck1").height(), button - 5);
  Choose("Density", 0);
  EXPECT_EQ(Find<QTableView>("Catalogue").rowHeight(0), row);
}

TEST_F(SettingsTest, ChannelColoursAreKeptForAsManyChannelsAsThereAre) {
  Choose("ConsoleSize", 0);
  EXPECT_FALSE(Find<QWidget>("Color17").isVisible());
  Do("KeepColours");
  EXPECT_EQ(Stored("Channels", "Color2"), "25855");
  EXPECT_EQ(Stored("Channels", "Color16"), "10748068");
  EXPECT_EQ(Stored("Channels", "Color17"), "");
  EXPECT_EQ(Stored("Setup", "ConsoleSize"), "16");
}

TEST_F(SettingsTest, OneTouchChoosesAColour) {
  Press(Qt::Key_8, Qt::ControlModifier);
  for (const char* field : {"Color2", "Colour00ff00"}) {
    QTest::mouseClick(&Find<QAbstractButton>(field), Qt::LeftButton);
    Settle();
  }
  Do("KeepColours");
  EXPECT_EQ(Stored("Channels", "Color2"), "65280");
}

TEST_F(SettingsTest, TheSecondDeckIsSentWithTheFirstAgain) {
  auto& device = Find<QComboBox>("Device2");
  EXPECT_EQ(device.currentText(), QStringLiteral("As deck 1"));
  EXPECT_FALSE(Find<QWidget>("Speaker2").isEnabled());
  Choose("Device2", 2);
  EXPECT_EQ(Stored("Preferences", "Outputs"), "2");
  EXPECT_EQ(station->View().outputs[1].device, 2);
  EXPECT_TRUE(Find<QWidget>("Speaker2").isEnabled());
  Choose("Device2", device.count() - 1);
  EXPECT_EQ(Stored("Preferences", "Outputs"), "1");
  EXPECT_EQ(station->View().outputs[1], station->View().outputs[0]);
  EXPECT_EQ(device.currentText(), QStringLiteral("As deck 1"));
}

TEST_F(SettingsTest, HeadphonesThatEverybodyHearsAreWarnedOfForAsLong) {
  Press(Qt::Key_8, Qt::ControlModifier);
  auto& warning = Find<QLabel>("HeadphonesHeard");
  EXPECT_FALSE(warning.isVisible());
  Choose("Device3", 1);
  EXPECT_TRUE(warning.isVisible());
  EXPECT_TRUE(warning.text().startsWith(QStringLiteral("Headphones and deck 1 share their loudspeakers")));
  EXPECT_TRUE(Find<QLabel>("Output3").toolTip().startsWith(warning.text()));
  Choose("Speaker1", 1);
  EXPECT_TRUE(warning.isVisible()) << "the headphones are all speakers";
  Choose("Speaker3", 2);
  EXPECT_FALSE(warning.isVisible());
  EXPECT_EQ(Find<QLabel>("Output3").toolTip(), QString());
}

TEST_F(SettingsTest, RangesAndRatesAreChosenAndActAtOnce) {
  Press(Qt::Key_6, Qt::ControlModifier);
  Choose("BPMPercent", 0);
  EXPECT_EQ(Stored("Settings", "BPMPercent"), "2");
  EXPECT_EQ(station->Lists().View().automix.most_percent, 2);
  Choose("GainRange", 0);
  EXPECT_EQ(Stored("Settings", "GainRange"), "3");
  EXPECT_FLOAT_EQ(station->Lists().View().automix.gain_range.value, 3);
  EXPECT_EQ(Find<QComboBox>("Resolution").currentText(), QStringLiteral("25 /s"));
  Choose("Resolution", 7);
  EXPECT_EQ(Stored("Visualisation", "Resolution"), "60");
  EXPECT_EQ(station->Visuals().Rate(), 60);
}

TEST_F(SettingsTest, AVisualiserIsChosenKeptAndShowsTheDeckThatIsHeard) {
  auto& surface = Find<VisualSurface>("Visual");
  EXPECT_EQ(surface.Shown().values, std::vector<float>(app::BuiltInVisualisation::kBars));
  LoadAndPlay(1, 1);
  Advance(1s);
  EXPECT_GT(surface.Shown().values.at(5), 0.8F) << "1 kHz, 6 dB below full scale";
  Click("deck1Stop");
  Advance(100ms);
  EXPECT_GT(surface.Shown().values.at(5), 0.5F) << "bars fall, they do not vanish";
  Advance(2s);
  EXPECT_EQ(surface.Shown().values.at(5), 0);
  Choose("Visualisers", 2);
  EXPECT_EQ(surface.Shown().kind, app::Picture::Kind::Line);
  EXPECT_EQ(Stored("Visualisation", "Name"), "Wave");
  Choose("Visualisers", 0);
  EXPECT_EQ(surface.Shown().kind, app::Picture::Kind::Empty);
  EXPECT_FALSE(surface.isVisible()) << "no box without a picture";
  EXPECT_FALSE(Find<QComboBox>("Resolution").isEnabled()) << "nothing is drawn";
  Choose("Visualisers", 1);
  Advance(100ms);
  EXPECT_TRUE(surface.isVisible());
}

TEST_F(SettingsTest, TheManualOpensInAWindowOfItsOwnAndSaysWhereItShouldBe) {
  Do("OpenHelp");
  auto& manual = Find<QTextBrowser>("Manual");
  EXPECT_TRUE(manual.isWindow());
  EXPECT_TRUE(manual.toPlainText().contains(QStringLiteral("introduction.htm")));
  QTest::keyClick(&manual, Qt::Key_Escape);
  Settle();
  EXPECT_EQ(window->findChild<QTextBrowser*>(QStringLiteral("Manual")), nullptr);
}

TEST_F(SettingsTest, TheKeysReachDecksAndPagesWhileTheManualIsRead) {
  DoubleClickRow(1);
  Press(Qt::Key_F12);
  auto& manual = Find<QTextBrowser>("Manual");
  QTest::keyClick(&manual, Qt::Key_F1);
  QTest::keyClick(&manual, Qt::Key_8, Qt::ControlModifier);
  Settle();
  EXPECT_EQ(Deck(1).state, State::Playing);
  EXPECT_TRUE(Find<QWidget>("SettingsPage").isVisible());
}

TEST_F(SettingsTest, TheMainVolumeRestsWithoutASystemFollowsItAndMovesIt) {
  auto& slider = Find<QSlider>("MainVolume");
  EXPECT_FALSE(slider.isEnabled());
  mixer.Move(100);
  Settle();
  EXPECT_TRUE(slider.isEnabled());
  EXPECT_EQ(slider.value(), 0) << "0 is loudest";
  EXPECT_EQ(TextOf("MainVolumeValue"), QStringLiteral("100 %"));
  slider.setFocus();
  QTest::keyClick(&slider, Qt::Key_PageDown);
  Settle();
  EXPECT_EQ(slider.value(), 10) << "down is softer";
  EXPECT_EQ(mixer.Volume(), 90);
  mixer.Move(0);
  Settle();
  EXPECT_EQ(slider.value(), 99);
  EXPECT_EQ(TextOf("MainVolumeValue"), QStringLiteral("0 %"));
}

}  // namespace

namespace {

class BrokenDeviceTest : public Booth {};

TEST_F(BrokenDeviceTest, ADeviceThatCannotBeOpenedIsToldInABoxThatBlocksNothing) {
  engine.BreakDevice(2);
  settings.Set("TLVG", "Preferences", "Outputs", "2");
  settings.Set("TLVG", "Devices", "Device2", "2");
  station = std::make_unique<app::Workstation>(
      app::Ports{engine, engine, tags, settings, files, workers, clock}, support::ProgramFolder("folder"),
      app::Workstation::Conducting::ByHand);
  station->StartUp();
  Open();
  workers.RunAll();
  Settle();
  auto* box = window->findChild<MessageBox*>(QStringLiteral("MessageBox"));
  ASSERT_NE(box, nullptr);
  EXPECT_FALSE(box->isModal());
  EXPECT_TRUE(box->Text().contains(QStringLiteral("USB card")));
  window.reset();
}

}  // namespace
}  // namespace ui::testing
