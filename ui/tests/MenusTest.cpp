// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <QContextMenuEvent>
#include <QMenu>
#include <QTableView>

#include "app/lights/LightStation.h"
#include "app/songs/SongStation.h"
#include "dmx/testing/ShowMaker.h"
#include "ui/tests/Booth.h"
#include "ui/widgets/WaveOverview.h"

namespace ui::testing {
namespace {

/// What a right click and the Menu key offer.
class MenusTest : public Booth {
 protected:
  void Work() {
    workers.RunAll();
    Settle();
  }
  void AskOnRow(const char* name, int row) {
    auto& grid = Find<QTableView>(name);
    AskForMenu(*grid.viewport(), grid.visualRect(grid.model()->index(row - 1, 1)).center());
  }
  [[nodiscard]] static QMenu* Shown() { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); }
  [[nodiscard]] static bool Offers(const char* entry) {
    const auto* action = Shown() == nullptr ? nullptr : Shown()->findChild<QAction*>(QLatin1String(entry));
    return action != nullptr && action->isEnabled();
  }
};

TEST_F(MenusTest, ARowOfTheCatalogueGoesWhereItsMenuSays) {
  Open();
  AskOnRow("Catalogue", 2);
  EXPECT_TRUE(Offers("RowsToDeck1") && Offers("RowsListen") && Offers("RowsAnalyse") &&
              Offers("MusicRemoveRows"));
  ChooseEntry("RowsToDeck2");
  EXPECT_EQ(Deck(2).title, "Second Wind");
  Click("deck2Play");
  AskOnRow("Catalogue", 1);
  EXPECT_FALSE(Offers("RowsToDeck2")) << "what is heard is not loaded over";
  ChooseEntry("RowsToPlaylist3");
  ASSERT_EQ(Playlist(3).Rows(), 1);
  EXPECT_EQ(Playlist(3).Cell(1, catalogue::track::kTitle), "First Light") << "the row under the pointer";
}

TEST_F(MenusTest, TheMenuKeyOpensTheMenuOfTheRowsThatHaveTheKeys) {
  Open();
  DropRow(2, "PlayListView1");
  DropRow(3, "PlayListView1");
  auto& grid = Find<QTableView>("PlayListView1");
  grid.setFocus();
  // Not by selectRow, which toggles where another case pressed Ctrl last.
  grid.selectionModel()->setCurrentIndex(grid.model()->index(1, 0),
                                         QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  const QPoint place = grid.visualRect(grid.currentIndex()).center();
  QContextMenuEvent asked(QContextMenuEvent::Keyboard, place, grid.viewport()->mapToGlobal(place));
  QApplication::sendEvent(grid.viewport(), &asked);
  EXPECT_FALSE(Offers("RowsToPlaylist1"));
  ChooseEntry("Playlist1RemoveRows");
  ASSERT_EQ(Playlist(1).Rows(), 1);
  EXPECT_EQ(Playlist(1).Cell(1, catalogue::track::kTitle), "Second Wind");
}

TEST_F(MenusTest, OnAWaveThePlaceUnderThePointerIsGoneToAndMarked) {
  Open();
  LoadAndPlay(1, 1);
  Work();
  Advance(200ms);
  auto& wave = Find<WaveOverview>("deck1Overview");
  AskForMenu(wave, wave.rect().center());
  ChooseEntry("deck1GoHere");
  const double middle = std::chrono::duration<double>(Deck(1).length).count() / 2;
  const auto seconds = [](auto time) { return std::chrono::duration<double>(time).count(); };
  EXPECT_NEAR(seconds(Deck(1).position), middle, 1) << "however it is guarded from stray clicks";
  AskForMenu(wave, QPoint(wave.width() / 4, 60));
  EXPECT_FALSE(Offers("deck1PointsAsFound"));
  ChooseEntry("deck1StartHere");
  EXPECT_NEAR(seconds(Deck(1).start_mix_point), middle / 2, 1);
  auto& running = Find<QWidget>("deck1Wave");
  AskForMenu(running, running.rect().center());
  ChooseEntry("deck1PointsAsFound");
  EXPECT_FALSE(Deck(1).moved.start);
  Press(Qt::Key_F11, Qt::ControlModifier);
  auto& slim = Find<WaveOverview>("deck1SmallWave");
  AskForMenu(slim, QPoint(slim.width() * 3 / 4, 10));
  ChooseEntry("deck1EndHere");
  EXPECT_NEAR(seconds(Deck(1).end_mix_point), middle * 1.5, 1);
}

TEST_F(MenusTest, ASongIsPlayedFromItsMenu) {
  std::filesystem::create_directories(folder);
  const std::string_view cells[] = {"Anna", "Counting", "", "Pop", "00:10", "gone.kar"};
  Karaoke().AddRow(cells);
  Open();
  Press(Qt::Key_3, Qt::ControlModifier);
  AskOnRow("KaraokeGrid", 1);
  EXPECT_TRUE(Offers("SongsRemoveRows"));
  ChooseEntry("PlaySong");
  const auto& song = station->Songs().View();
  EXPECT_EQ(song.coming.empty() ? song.filename : song.coming, "gone.kar");
}

TEST_F(MenusTest, ALampOnTheStageIsLitAndPutOutFromItsMenu) {
  Open();
  dmx::Scenes scenes;
  dmx::testing::AddScene(scenes, 1, {dmx::testing::StepWith("00:02.0", "00:02.0", {0})}).SceneName = "Dark";
  dmx::DMXname pars;
  for (const int start : {1, 11}) {
    dmx::DMXfilename& par = pars.Add();
    par.Filename = "C:\\DMXlibrary\\Par.dmx";
    par.StartChannel = static_cast<std::int16_t>(start);
    par.Channels.Add().function = dmx::ChannelFunction::Pan;
    par.Channels.Add().function = dmx::ChannelFunction::Dimmer;
  }
  const std::vector<int> channels{1};
  station->Lights().TakePlan(
      std::make_shared<const dmx::ShowPlan>(dmx::ShowPlan::Make(scenes, channels).Value()), pars, "Party",
      {"Dark"});
  Work();
  Press(Qt::Key_4, Qt::ControlModifier);
  const auto level = [this](int channel) {
    return int(station->Lights().View().levels[static_cast<std::size_t>(channel - 1)]);
  };
  auto& stage = Find<QWidget>("Stage");
  const QPoint second(stage.width() * 3 / 4, stage.height() / 2);
  AskForMenu(stage, second);
  ChooseEntry("FixtureFull");
  EXPECT_EQ(level(12), 255);
  EXPECT_EQ(level(11), 0) << "a head is not turned";
  EXPECT_EQ(level(2), 0) << "nor another one lit";
  AskForMenu(stage, second);
  ChooseEntry("FixtureDark");
  EXPECT_EQ(level(12), 0);
}

}  // namespace
}  // namespace ui::testing
