// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QApplication>
#include <QPaintEvent>
#include <QSignalSpy>
#include <QTest>
#include <cmath>

#include "ui/widgets/Fader.h"
#include "ui/widgets/LevelMeter.h"
#include "ui/widgets/RunningWave.h"
#include "ui/widgets/WaveOverview.h"

namespace ui {
namespace {

using namespace std::chrono_literals;
using std::chrono::microseconds;

/// Adds up what a widget repaints.
class PaintWatch : public QObject {
 public:
  explicit PaintWatch(QWidget& widget) {
    widget.show();
    QApplication::processEvents();
    widget.installEventFilter(this);
  }
  int TakePixels() {
    QApplication::processEvents();
    return std::exchange(pixels_, 0);
  }

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Paint) {
      for (const QRect& part : static_cast<QPaintEvent*>(event)->region())
        pixels_ += part.width() * part.height();
    }
    return false;
  }

 private:
  int pixels_ = 0;
};

const Skin& Dark() {
  return SkinOf(Skin::Name::Dark);
}

class LevelMeterTest : public ::testing::Test {
 protected:
  LevelMeterTest() { meter.resize(60, 200); }
  void Show(float left, float right, std::chrono::milliseconds later) {
    now += later;
    meter.Show(left, right, now);
  }
  LevelMeter meter{Dark()};
  support::TimePoint now{};
};

TEST_F(LevelMeterTest, RisesAtOnceAndFallsFortyDecibelsASecond) {
  Show(-6, -20, 20ms);
  EXPECT_FLOAT_EQ(meter.Shown()[0], -6);
  EXPECT_FLOAT_EQ(meter.Shown()[1], -20);
  Show(-90, -90, 500ms);
  EXPECT_NEAR(meter.Shown()[0], -26, 0.01);
}

TEST_F(LevelMeterTest, HoldsThePeakAndThenLetsItFall) {
  Show(-3, -90, 20ms);
  for (int i = 0; i < 14; ++i) Show(-60, -90, 100ms);
  EXPECT_FLOAT_EQ(meter.Peak(), -3);
  for (int i = 0; i < 10; ++i) Show(-60, -90, 100ms);
  EXPECT_LT(meter.Peak(), -10);
}

TEST_F(LevelMeterTest, AReadingThatIsNoNumberIsSilence) {
  Show(NAN, -INFINITY, 20ms);
  EXPECT_FLOAT_EQ(meter.Peak(), -90);
}

TEST_F(LevelMeterTest, RepaintsNothingInSilenceAndOnlyTheChangedPartInMusic) {
  PaintWatch watch(meter);
  Show(-90, -90, 20ms);
  EXPECT_EQ(watch.TakePixels(), 0);
  Show(-20, -90, 20ms);
  watch.TakePixels();
  Show(-19, -90, 20ms);
  const int pixels = watch.TakePixels();
  EXPECT_GT(pixels, 0);
  EXPECT_LT(pixels, meter.width() * meter.height() / 10);
}

class WaveOverviewTest : public ::testing::Test {
 protected:
  WaveOverviewTest() {
    overview.resize(401, 60);
    overview.Show(0us, 200s);
  }
  double SoughtSeconds() {
    if (sought.isEmpty()) return -1;
    return double(sought.takeFirst().at(0).value<microseconds>().count()) / 1e6;
  }
  WaveOverview overview{Dark(), Qt::blue};
  QSignalSpy sought{&overview, &WaveOverview::SeekWanted};
};

TEST_F(WaveOverviewTest, AClickGoesToItsPlace) {
  QTest::mouseClick(&overview, Qt::LeftButton, {}, QPoint(100, 30));
  EXPECT_NEAR(SoughtSeconds(), 50, 0.6);
}

TEST_F(WaveOverviewTest, ADragGoesToWhereItEnds) {
  QTest::mousePress(&overview, Qt::LeftButton, {}, QPoint(100, 30));
  EXPECT_EQ(sought.size(), 0);
  QTest::mouseMove(&overview, QPoint(300, 30));
  QTest::mouseRelease(&overview, Qt::LeftButton, {}, QPoint(300, 30));
  EXPECT_NEAR(SoughtSeconds(), 150, 0.6);
}

TEST_F(WaveOverviewTest, KeysMoveByFiveSecondsAndStayInTheTrack) {
  overview.Show(60s, 200s);
  QTest::keyClick(&overview, Qt::Key_Right);
  EXPECT_DOUBLE_EQ(SoughtSeconds(), 65);
  QTest::keyClick(&overview, Qt::Key_Left);
  EXPECT_DOUBLE_EQ(SoughtSeconds(), 55);
  overview.Show(2s, 200s);
  QTest::keyClick(&overview, Qt::Key_Left);
  EXPECT_DOUBLE_EQ(SoughtSeconds(), 0);
}

TEST_F(WaveOverviewTest, WithoutATrackNothingCanBeSought) {
  overview.Show(0us, 0us);
  QTest::mouseClick(&overview, Qt::LeftButton, {}, QPoint(100, 30));
  QTest::keyClick(&overview, Qt::Key_Right);
  EXPECT_EQ(SoughtSeconds(), -1);
}

TEST_F(WaveOverviewTest, MovingOnRepaintsAFewColumnsOnly) {
  PaintWatch watch(overview);
  overview.Show(100s, 200s);
  watch.TakePixels();
  overview.Show(100s + 10ms, 200s);
  EXPECT_EQ(watch.TakePixels(), 0);
  overview.Show(101s, 200s);
  const int pixels = watch.TakePixels();
  EXPECT_GT(pixels, 0);
  EXPECT_LE(pixels, 10 * overview.height());
}

std::shared_ptr<const music::Wave> LoudFrom(int second, int seconds) {
  music::Wave wave;
  for (int i = 0; i < seconds * music::Wave::kColumnsASecond; ++i) {
    const bool loud = i >= second * music::Wave::kColumnsASecond;
    wave.fine.push_back(loud ? music::WaveColumn{-127, 127, 200, 100, 50} : music::WaveColumn{});
  }
  wave.overview.resize(200);
  return std::make_shared<const music::Wave>(wave);
}

class RunningWaveTest : public ::testing::Test {
 protected:
  RunningWaveTest() { running.resize(300, 80); }
  /// Colour so many pixels right of the place that is heard, a little below the top.
  QColor Right(int pixels) { return running.grab().toImage().pixelColor(100 + pixels, 8); }
  RunningWave running{Dark(), Qt::blue};
  QSignalSpy sought{&running, &RunningWave::SeekWanted};
};

TEST_F(RunningWaveTest, WhatIsLoudReachesTheMarkWhenItIsHeard) {
  const auto wave = LoudFrom(20, 40);
  running.Show(19s, 40s, wave);
  const QColor quiet = Right(5);
  EXPECT_EQ(Right(60), quiet);
  running.Show(20s, 40s, wave);
  EXPECT_NE(Right(5), quiet);
  EXPECT_EQ(Right(-5), quiet);
}

TEST_F(RunningWaveTest, MovingOnDrawsOnlyTheTilesThatCome) {
  const auto wave = LoudFrom(20, 40);
  running.Show(10s, 40s, wave);
  PaintWatch watch(running);
  const int before = running.TilesDrawn();
  for (int i = 1; i <= 50; ++i) {
    running.Show(10s + i * 20ms, 40s, wave);
    watch.TakePixels();
  }
  EXPECT_LE(running.TilesDrawn() - before, 1);
}

TEST_F(RunningWaveTest, EveryFourthBeatStandsOutWhereBarsAreKnown) {
  const auto grid = std::make_shared<const music::BeatGrid>(
      music::BeatGrid::Even({120}, 1, music::Seconds(0), music::Seconds(40)));
  running.Show(10s, 40s, LoudFrom(30, 40));
  const auto middle = [&] {  // of the widget, from the mark on
    const QImage image = running.grab().toImage();
    int strong = 0;
    for (int x = 102; x < 300; ++x) strong += image.pixelColor(x, 40) == Dark().warning ? 1 : 0;
    return strong;
  };
  running.ShowBeats(grid);
  EXPECT_EQ(middle(), 0);
  running.ShowBeats(grid, music::Seconds(4.5));
  const int bars = middle();
  EXPECT_GT(bars, 0);
  running.ShowBeats(std::make_shared<const music::BeatGrid>(grid->ScaledBy(music::BeatScale::Double)),
                    music::Seconds(4.5));
  EXPECT_GT(middle(), bars);
}

TEST_F(RunningWaveTest, ADragGoesToThePlaceUnderTheMark) {
  running.Show(20s, 40s, LoudFrom(20, 40));
  QTest::mousePress(&running, Qt::LeftButton, {}, QPoint(100, 30));
  QTest::mouseMove(&running, QPoint(20, 30));
  QTest::mouseRelease(&running, Qt::LeftButton, {}, QPoint(20, 30));
  ASSERT_EQ(sought.size(), 1);
  const double seconds = double(sought.at(0).at(0).value<microseconds>().count()) / 1e6;
  EXPECT_GT(seconds, 20.5);
  EXPECT_LT(seconds, 22);
}

TEST_F(RunningWaveTest, ATouchWithoutAMoveGoesNowhere) {
  running.Show(20s, 40s, LoudFrom(20, 40));
  QTest::mouseClick(&running, Qt::LeftButton, {}, QPoint(100, 30));
  EXPECT_EQ(sought.size(), 0);
}

TEST(WavePaint, OnePixelKeepsWhatSticksOutOfItsColumns) {
  const music::WaveColumn columns[] = {{-3, 90, 10, 0, 7}, {-80, 5, 2, 30, 0}};
  EXPECT_EQ(Together(columns), (music::WaveColumn{-80, 90, 10, 30, 7}));
  EXPECT_EQ(Together({}), music::WaveColumn{});
}

class FaderTest : public ::testing::Test {
 protected:
  FaderTest() {
    fader.resize(40, 220);
    fader.setRange(0, 100);
    fader.setValue(70);
  }
  Fader fader{Qt::Vertical, Dark(), Qt::blue};
};

TEST_F(FaderTest, ATouchAnywhereDoesNotMakeItJump) {
  QTest::mouseClick(&fader, Qt::LeftButton, {}, QPoint(20, 200));
  EXPECT_EQ(fader.value(), 70);
}

TEST_F(FaderTest, ADragMovesItByTheWayOfTheHand) {
  QTest::mousePress(&fader, Qt::LeftButton, {}, QPoint(20, 100));
  QTest::mouseMove(&fader, QPoint(20, 120));
  EXPECT_GT(fader.value(), 50);
  EXPECT_LT(fader.value(), 65);
  QTest::mouseMove(&fader, QPoint(20, 2000));
  EXPECT_EQ(fader.value(), 0);
  QTest::mouseRelease(&fader, Qt::LeftButton, {}, QPoint(20, 2000));
}

TEST_F(FaderTest, TurnedUpsideDownItStillFollowsTheHand) {
  fader.setInvertedAppearance(true);
  QTest::mousePress(&fader, Qt::LeftButton, {}, QPoint(20, 100));
  QTest::mouseMove(&fader, QPoint(20, 2000));
  EXPECT_EQ(fader.value(), 100);
  QTest::mouseRelease(&fader, Qt::LeftButton, {}, QPoint(20, 2000));
}

TEST_F(FaderTest, ADoubleClickReturnsToTheMarkWhereThereIsOne) {
  QTest::mouseDClick(&fader, Qt::LeftButton, {}, QPoint(20, 100));
  EXPECT_EQ(fader.value(), 70);
  fader.SetRest(50);
  QTest::mouseDClick(&fader, Qt::LeftButton, {}, QPoint(20, 100));
  EXPECT_EQ(fader.value(), 50);
}

}  // namespace
}  // namespace ui
