// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later

// One evening from the first dropped folder to the next start, by events on the real window, with two sound
// outputs of a server of the test's own that are recorded.
//
// DJ_EVENING_PICTURES names a folder that gets a picture of the window after each step.
#include <gtest/gtest.h>

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <span>

#include "dmx/ShowFile.h"
#include "dmx/testing/ShowMaker.h"
#include "karaoke/testing/MidiBytes.h"
#include "platform/audio/testing/MonitorRecorder.h"
#include "platform/audio/testing/SoundServer.h"
#include "platform/codec/testing/Measure.h"
#include "platform/codec/testing/MediaMaker.h"
#include "tests/testing/ProgramUser.h"

namespace {

namespace fs = std::filesystem;
using platform::audio::testing::MonitorRecorder;
using platform::audio::testing::SoundServer;
using platform::codec::testing::LevelAt;
using platform::codec::testing::MediaMaker;
using platform::codec::testing::Seconds;
using platform::codec::testing::Tone;

/// What a track sounds like tells which one it is.
struct TestTrack {
  const char* path;
  double hertz;
};
constexpr TestTrack kTracks[] = {{"Music/Anna - One.flac", 500},
                                 {"Music/Ben - Two.flac", 700},
                                 {"Music/Live/Cora - Three.mp3", 900},
                                 {"Stick/Dora - Four.ogg", 1100},
                                 {"Stick/Emil - Five.wav", 1300}};
constexpr double kLevel = 0.3;

class Evening : public tests::testing::ProgramUser {
 protected:
  void SetUp() override {
    ProgramUser::SetUp();
    ASSERT_TRUE(server_.Running());
    for (const TestTrack& track : kTracks) {
      fs::create_directories((disk_ / track.path).parent_path());
      const fs::path made =
          media_.Write(fs::path(track.path).filename().string(), Tone(Seconds(20), {track.hertz, kLevel}));
      fs::rename(made, disk_ / track.path);
    }
    WriteTheSong();
    WriteTheShow();
  }

  void WriteTheSong() {
    karaoke::testing::TrackBytes song = karaoke::testing::UsualHead().Name("Words").Text(0, "@TCounting");
    for (const char* word : {"/one ", "two ", "three ", "four"}) song.Text(480, word);
    fs::create_directories(disk_ / "Songs");
    std::ofstream(disk_ / "Songs" / "Counting.kar", std::ios::binary)
        << karaoke::testing::FileBytes({song.End(9600)});
  }
  void WriteTheShow() {
    dmx::Show show;
    dmx::testing::AddScene(show.scenes, 100,
                           {dmx::testing::StepWith("00:01.0", "00:00.5", {10, 200}),
                            dmx::testing::StepWith("00:01.0", "00:00.5", {200, 10})});
    fs::create_directories(home_ / "DMXShows");
    std::ofstream(home_ / "DMXShows" / "Evening.SHW", std::ios::binary) << dmx::ShowText(show);
  }

  /// Of a track (from 0) in the newest third of a second.
  static bool Sounds(const MonitorRecorder& recorder, std::size_t track) {
    const auto samples = recorder.Samples();
    constexpr std::size_t kThird = 2 * 14'700;
    return samples.size() >= kThird &&
           LevelAt({std::span(samples).last(kThird), 2, 0}, kTracks[track].hertz, 44100) > kLevel / 4;
  }
  bool Heard(const MonitorRecorder& recorder, std::size_t track) {
    return Eventually([&] { return Sounds(recorder, track); });
  }
  /// Row (from 0) of a track in a grid that shows all of them.
  int RowOf(const char* grid, const char* word) {
    auto& model = *Grid(grid).model();
    for (int row = 0; row < model.rowCount(); ++row) {
      for (int column = 0; column < model.columnCount(); ++column) {
        if (model.index(row, column).data().toString().contains(QLatin1String(word))) return row;
      }
    }
    return -1;
  }
  /// Every cell that every list shows.
  std::vector<std::string> Lists() {
    std::vector<std::string> cells;
    for (const char* grid : {"Catalogue", "KaraokeGrid", "PlayListView1", "PlayListView2", "PlayListView3"}) {
      auto& model = *Grid(grid).model();
      for (int row = 0; row < model.rowCount(); ++row) {
        std::string line = std::string(grid) + ": ";
        // The first column of the catalogue is about this evening's decks.
        for (int column = grid == std::string("Catalogue") ? 1 : 0; column < model.columnCount(); ++column) {
          line += model.index(row, column).data().toString().toStdString() + " | ";
        }
        cells.push_back(line);
      }
    }
    return cells;
  }
  void Picture(const char* step) {
    const char* folder = std::getenv("DJ_EVENING_PICTURES");
    if (folder == nullptr) return;
    char name[64];
    std::snprintf(name, sizeof name, "%02d %s.png", ++pictures_, step);
    QTest::qWait(100);
    EXPECT_TRUE(Window().grab().save(QString::fromStdString((fs::path(folder) / name).string())));
  }

  void AddTheFolders() {
    DropFiles({disk_ / "Music"}, "Catalogue");
    ASSERT_TRUE(Eventually([&] { return Rows("Catalogue") == 3; })) << Rows("Catalogue");
    DropFiles({disk_ / "Stick"}, "Catalogue");
    ASSERT_TRUE(Eventually([&] { return Rows("Catalogue") == 5; })) << Rows("Catalogue");
    Click("Page3");
    DropFiles({disk_ / "Songs"}, "KaraokeGrid");
    ASSERT_TRUE(Eventually([&] { return Rows("KaraokeGrid") == 1; }));
    Click("Page1");
    Picture("folders");
  }
  void ChooseHeadphones() {
    Click("Page2");
    Choose("Device3", "Phones");
    Click("Page1");
  }
  void SearchLoadAndPlay() {
    auto& line = Find<QLineEdit>("Search");
    QTest::mouseClick(&line, Qt::LeftButton);
    QTest::keyClicks(&line, QStringLiteral("four"));
    ASSERT_TRUE(Eventually([&] { return Rows("Catalogue") == 1; }));
    Picture("search");
    QTest::keyClick(&line, Qt::Key_Return);
    QTest::keyClick(&Grid("Catalogue"), Qt::Key_Return);
    ASSERT_TRUE(Eventually([&] { return TextOf("deck1Elapsed") == "00:00 / 00:20"; }));
    QTest::mouseClick(&line, Qt::LeftButton);
    QTest::keyClick(&line, Qt::Key_Escape);
    ASSERT_TRUE(Eventually([&] { return Rows("Catalogue") == 5; }));
    Click("deck1Play");
    EXPECT_TRUE(Heard(hall_, 3));
    Picture("playing");
  }
  void ListenAhead() {
    ASSERT_TRUE(Eventually([&] { return Find("ListenRow").isEnabled(); })) << "no headphones";
    ClickRow("Catalogue", RowOf("Catalogue", "Five"));
    Click("ListenRow");
    EXPECT_TRUE(Heard(phones_, 4));
    EXPECT_FALSE(Sounds(hall_, 4)) << "the hall hears what was for the headphones alone";
    EXPECT_TRUE(Sounds(hall_, 3));
    Click("ListenRow");
  }
  void FillThePlaylistAndMix() {
    DropRows("Catalogue", {RowOf("Catalogue", "One"), RowOf("Catalogue", "Two")}, "PlayListView1");
    DropRows("Catalogue", {RowOf("Catalogue", "Three")}, "PlayListView2");
    DropRows("Catalogue", {RowOf("Catalogue", "Five")}, "PlayListView1");
    ASSERT_EQ(Rows("PlayListView1") + Rows("PlayListView2"), 4);
    Click("Automix");
    // What it loads is of a list, so none of them is the track that plays.
    ASSERT_TRUE(Eventually([&] { return Sounds(hall_, 0) || Sounds(hall_, 2); }, std::chrono::seconds(30)));
    Picture("automix");
    Click("Automix");
    Click("deck1Stop");
    Click("deck2Stop");
  }
  void PlayTheShow() {
    Click("Page4");
    auto& shows = Find<QComboBox>("ShowList");
    ASSERT_TRUE(Eventually([&] { return shows.count() > 0; }));
    shows.setFocus();
    QTest::keyClick(&shows, Qt::Key_Down);
    ASSERT_TRUE(Eventually([&] { return Find("ShowPlay").isEnabled(); }));
    Click("ShowPlay");
    EXPECT_TRUE(Eventually([&] { return Find<QSlider>("Fader1").value() > 100; })) << "no fader moves";
    Picture("show");
    Click("ShowStop");
  }
  void Sing() {
    Click("Page3");
    DoubleClickRow("KaraokeGrid", 0);
    EXPECT_TRUE(Eventually([&] { return TextOf("SongTime").starts_with("00:02"); })) << TextOf("SongTime");
    Picture("song");
    Click("SongStop");
  }
  void Quit() {
    QTest::qWait(500);  // what was stopped fades out first
    Window().close();
    EXPECT_FALSE(Window().isVisible());
    program_.reset();
  }

  fs::path Disk() {
    const fs::path folder = fs::path(::testing::TempDir()) / "evening-disk";
    fs::remove_all(folder);
    return folder;
  }

  SoundServer server_{{{"hall", "Hall"}, {"phones", "Phones"}}};
  MonitorRecorder hall_{server_.Address(), "hall", 2};
  MonitorRecorder phones_{server_.Address(), "phones", 2};
  MediaMaker media_;
  fs::path disk_ = Disk();
  int pictures_ = 0;
};

TEST_F(Evening, GoesFromTheFirstFolderToTheNextStartWithEveryListAsItWas) {
  Start(server_.Address());
  AddTheFolders();
  ChooseHeadphones();
  SearchLoadAndPlay();
  ListenAhead();
  FillThePlaylistAndMix();
  PlayTheShow();
  Sing();
  Click("Page1");
  const std::vector<std::string> before = Lists();
  ASSERT_EQ(before.size(), 10u);
  Quit();

  Start(server_.Address());
  EXPECT_TRUE(Eventually([&] { return Lists() == before; }));
  EXPECT_EQ(Lists(), before);
  Picture("next start");
  EXPECT_EQ(TextOf("deck1State"), TextOf("deck2State")) << "nothing was loaded by itself";
  Quit();
}

}  // namespace

int main(int argc, char* argv[]) {
  ::testing::InitGoogleTest(&argc, argv);
  QApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
