// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later

// A song on the real engine, recorded, and the singers' window, grabbed: is a word sung on the screen when
// its note is heard?
#include <gtest/gtest.h>

#include <QApplication>
#include <QImage>
#include <algorithm>
#include <cmath>
#include <fstream>

#include "app/testing/AllParts.h"
#include "catalogue/testing/FakeTagReader.h"
#include "engine/testing/SoundStage.h"
#include "karaoke/testing/MidiBytes.h"
#include "platform/midi/FluidSynthesisers.h"
#include "support/testing/MemoryFiles.h"
#include "support/testing/MemorySettings.h"
#include "support/testing/TemporaryFolder.h"
#include "ui/forms/frmKaraoke.h"

namespace {

using namespace std::chrono_literals;
using engine::testing::kRate;
using engine::testing::SoundStage;

constexpr auto kFrame = 17ms;
constexpr auto kSoundPeriod = 20ms;  ///< the most that an output takes at once
constexpr QSize kScreen(1920, 1080);
constexpr int kWords = 12;

/// Words are bars of five blocks, so that their edges in the picture are the words' own; each begins with a
/// stick.
std::string SongOfBars(unsigned lead) {
  karaoke::testing::TrackBytes track = karaoke::testing::UsualHead().Name("Words").Text(0, "@TBars");
  for (int i = 0; i < kWords; ++i) {
    track.Tempo(i == 0 ? lead : 140, i % 2 == 0 ? 483'871 : 516'129);
    track.Event(0, {0x99, 37, 127}).Text(0, std::string(i % 4 == 0 ? "/" : "") + "█████ ");
    track.Event(100, {0x89, 37, 0});
  }
  return karaoke::testing::FileBytes({track.End(960)});
}

class SungEdgeTest : public ::testing::Test {
 protected:
  /// lead: ticks of 500 / 480 ms before the first word.
  void Begin(unsigned lead) {
    const auto song = folder_.Path() / "bars.kar";
    std::ofstream(song, std::ios::binary) << SongOfBars(lead);
    app::Ports ports{*stage_.engine, *stage_.engine, tags_, settings_, files_, workers_, stage_.time};
    ports.synthesisers = &synthesisers_;
    station_ = std::make_unique<app::Workstation>(ports, support::ProgramFolder(folder_.Path()),
                                                  app::Workstation::Conducting::ByHand);
    station_->StartUp();
    station_->Tick();  // the output opens at time 0, where its recording begins
    Run(100ms);
    singers_ = std::make_unique<ui::frmKaraoke>(station_->Settings(), main_);
    singers_->ShowOn(ui::frmKaraoke::kInWindow);
    singers_->resize(kScreen);
    ui::SceneLook look;
    look.lyric.font_name = "Verdana";
    look.lyric.font_bold = true;
    look.lyric.fill = {0xFF0000, 0x0000FF, 0x00FF00};  // blue, red when sung
    look.lyric.outline = 0xFFFFFF;
    singers_->SetLook(look);
    station_->Songs().Play({song.string(), "", ""});
  }
  void TearDown() override {
    singers_.reset();
    station_->ShutDown();
  }
  /// The evening goes on; the window stands still.
  void Run(support::Duration time) {
    for (auto gone = 0ms; gone < time; gone += 10ms) {
      workers_.RunAll();
      stage_.Advance(10ms);
      station_->Tick();
    }
  }
  /// One row of pixels through the middle of a line.
  [[nodiscard]] std::vector<QRgb> Row(int line) {
    const QImage image = singers_->grab().toImage().convertToFormat(QImage::Format_RGB32);
    const int y = static_cast<int>(image.height() * (line % 2 == 0 ? 0.31 : 0.735));
    const auto* row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
    return {row, row + image.width()};
  }
  /// Whether the left edge of a word, 0 to 3, is sung in a row.
  [[nodiscard]] static bool IsSung(const std::vector<QRgb>& row, int word) {
    const QRgb black = qRgb(0, 0, 0), red = qRgb(255, 0, 0), blue = qRgb(0, 0, 255);
    int words = -1;
    bool inside = false;
    for (const QRgb pixel : row) {
      if (!inside && pixel != black) ++words;
      inside = pixel != black;
      if (words == word && (pixel == red || pixel == blue)) return pixel == red;
    }
    return false;
  }
  /// Plays the song and looks at each frame of the screen: when each word was first seen sung.
  [[nodiscard]] std::vector<double> WatchWords() {
    std::vector<double> seen(kWords, 0);
    auto next_frame = stage_.time.Now();
    while (stage_.time.Now() < support::TimePoint(12s)) {
      stage_.Advance(1ms);
      if (++milliseconds_ % 10 == 0) station_->Tick();
      workers_.RunAll();
      if (stage_.time.Now() < next_frame) continue;
      next_frame += kFrame;
      singers_->Show(station_->Songs().View(), stage_.time.Now());
      const auto word = static_cast<std::size_t>(std::find(seen.begin(), seen.end(), 0.0) - seen.begin());
      if (word == seen.size()) break;
      if (stage_.time.Now() < support::TimePoint(3s)) continue;
      const int line = static_cast<int>(word) / 4;
      if (IsSung(Row(line), static_cast<int>(word) % 4)) seen[word] = Seconds(stage_.time.Now());
    }
    return seen;
  }
  [[nodiscard]] static double Seconds(support::TimePoint time) {
    return std::chrono::duration<double>(time.time_since_epoch()).count();
  }
  /// When each stick comes out of the loudspeaker.
  [[nodiscard]] std::vector<double> Onsets() {
    const std::vector<float> left = stage_.Channel("main", 0);
    std::vector<double> onsets;
    for (std::size_t i = 400; i < left.size(); ++i) {
      if (left[i] < *std::max_element(left.data() + i - 400, left.data() + i) + 0.01F) continue;
      onsets.push_back(static_cast<double>(i) / kRate +
                       std::chrono::duration<double>(SoundStage::kLatency).count());
      i += kRate / 10;
    }
    return onsets;
  }

  support::testing::TemporaryFolder folder_;
  SoundStage stage_;
  catalogue::testing::FakeTagReader tags_;
  support::testing::MemorySettings settings_;
  support::testing::MemoryFiles files_;
  support::testing::ManualExecutor workers_;
  platform::midi::FluidSynthesisers synthesisers_;
  QWidget main_;
  std::unique_ptr<app::Workstation> station_;
  std::unique_ptr<ui::frmKaraoke> singers_;
  int milliseconds_ = 0;
};

TEST_F(SungEdgeTest, AWordIsSungOnTheScreenWhenItsNoteIsHeard) {
  Begin(4000);
  const std::vector<double> seen = WatchWords();
  const std::vector<double> heard = Onsets();
  ASSERT_GE(heard.size(), static_cast<std::size_t>(kWords));
  const double most = std::chrono::duration<double>(kFrame + kSoundPeriod).count();
  double widest = 0;
  for (std::size_t word = 0; word < seen.size(); ++word) {
    widest = std::max(widest, std::abs(seen[word] - heard[word]));
    EXPECT_LE(std::abs(seen[word] - heard[word]), most) << word << " seen at " << seen[word];
  }
  RecordProperty("widest_ms", static_cast<int>(widest * 1000));
}

TEST_F(SungEdgeTest, AfterTenSecondsWithoutAFrameTheSongPlaysOnAndTheNextFrameIsRight) {
  Begin(9000);
  Run(500ms);
  singers_->Show(station_->Songs().View(), stage_.time.Now());
  static_cast<void>(Row(0));
  Run(10s);
  const std::vector<double> heard = Onsets();
  ASSERT_GT(heard.size(), 3U);
  singers_->Show(station_->Songs().View(), stage_.time.Now());
  const auto now = static_cast<std::size_t>(
      std::upper_bound(heard.begin(), heard.end(), Seconds(stage_.time.Now())) - heard.begin() - 1);
  EXPECT_TRUE(IsSung(Row(static_cast<int>(now) / 4), static_cast<int>(now) % 4))
      << now << " at " << Seconds(stage_.time.Now());
}

}  // namespace

int main(int count, char** arguments) {
  ::testing::InitGoogleTest(&count, arguments);
  const QApplication application(count, arguments);
  return RUN_ALL_TESTS();
}
