// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include <QComboBox>
#include <QPainter>
#include <random>

#include "karaoke/testing/DiscBytes.h"
#include "ui/forms/frmKaraoke.h"
#include "ui/tests/Booth.h"
#include "ui/widgets/DiscScene.h"
#include "ui/widgets/LyricSurface.h"

namespace ui::testing {
namespace {

using karaoke::DiscPicture;
using karaoke::testing::DiscBytes;

constexpr std::array<int, 8> kPaints{0x000, 0xF00, 0x0F0, 0x00F, 0xFF0, 0xF0F, 0x0FF, 0xFFF};
constexpr QSize kDisplays[] = {{200, 150},  {289, 500},   {400, 300},  {1280, 720},
                               {1366, 768}, {1920, 1080}, {2560, 1440}};

std::shared_ptr<const karaoke::DiscImage> Disc(const DiscBytes& bytes) {
  return karaoke::DiscImage::Read(bytes.Content(), "song.mp3").Value();
}

/// Blue ground, then a tile in every tenth of a second, some colours, and a move now and then.
std::shared_ptr<const karaoke::DiscImage> BusyDisc() {
  std::mt19937 dice(5);
  const auto number = [&dice](unsigned most) { return static_cast<int>(dice() % most); };
  DiscBytes bytes;
  bytes.Colours(0, kPaints).Clear(3);
  for (int tenth = 1; tenth < 100; ++tenth) {
    bytes.Until(tenth / 10.0);
    DiscBytes::Tile tile;
    for (std::uint8_t& row : tile) row = static_cast<std::uint8_t>(number(64));
    bytes.Draw(number(18), number(50), number(8), number(8), tile);
    if (tenth % 20 == 0) bytes.ScrollRound({DiscBytes::Move::Back, number(6)}, {DiscBytes::Move::Forward, 3});
    if (tenth % 30 == 0) bytes.Colours(0, {0x123, 0xF00, 0x0F0, 0x00F, 0xFF0, 0xF0F, 0x0FF, 0xFFF});
    if (tenth == 70) bytes.Clear(5);
  }
  return Disc(bytes.Until(10));
}

void PaintPart(DiscScene& scene, QImage& display, const QRect& part) {
  QPainter painter(&display);
  painter.setClipRect(part);
  scene.Paint(painter, part);
}

QImage WholeDisplay(const std::shared_ptr<const karaoke::DiscImage>& disc, QSize size,
                    std::chrono::milliseconds time) {
  DiscScene scene;
  scene.SetSize(size);
  scene.SetImage(disc);
  QImage display(size, QImage::Format_RGB32);
  display.fill(Qt::magenta);
  PaintPart(scene, display, scene.MoveTo(time));
  return display;
}

TEST(DiscSceneTest, APointIsASquareInTheMiddleOfItsGround) {
  const auto disc = Disc(DiscBytes().Colours(0, kPaints).Clear(3).Draw(1, 1, 1, 2, {0x20}).Until(1));
  for (const QSize size : kDisplays) {
    DiscScene scene;
    scene.SetSize(size);
    const QRect place = scene.Place();
    EXPECT_NEAR(place.width(), place.height() * 1.5, 1) << size.width();
    EXPECT_LE(std::abs(place.center().x() - (size.width() - 1) / 2), 1);
    EXPECT_TRUE(place.width() > size.width() * 0.85 || place.height() > size.height() * 0.85);
    const QImage display = WholeDisplay(disc, size, 500ms);
    EXPECT_EQ(display.pixel(0, 0), qRgb(0, 0, 255));
    EXPECT_EQ(display.pixel(size.width() - 1, size.height() - 1), qRgb(0, 0, 255));
    if (place.width() < 3 * DiscPicture::kSeenWidth) continue;
    const double point = static_cast<double>(place.width()) / DiscPicture::kSeenWidth;
    const auto at = [&](double x, double y) {
      return display.pixel(place.x() + static_cast<int>(x * point), place.y() + static_cast<int>(y * point));
    };
    EXPECT_EQ(at(0.5, 0.5), qRgb(0, 255, 0)) << size.width();
    EXPECT_EQ(at(1.5, 0.5), qRgb(255, 0, 0)) << size.width();
    EXPECT_EQ(at(0.5, 1.5), qRgb(255, 0, 0)) << size.width();
    EXPECT_EQ(at(5.5, 11.5), qRgb(255, 0, 0)) << size.width();
    EXPECT_EQ(at(6.5, 11.5), qRgb(0, 0, 255)) << size.width();
  }
}

TEST(DiscSceneTest, WhatIsPaintedAgainIsAllThatChanged) {
  const auto disc = BusyDisc();
  for (const QSize size : kDisplays) {
    DiscScene scene;
    scene.SetSize(size);
    scene.SetImage(disc);
    QImage display(size, QImage::Format_RGB32);
    double painted = 0;
    for (auto time = 0ms; time < 10s; time += 50ms) {
      const QRect part = scene.MoveTo(time);
      painted += static_cast<double>(part.width()) * part.height() / (size.width() * size.height());
      if (!part.isEmpty()) PaintPart(scene, display, part);
      if (time.count() % 1000 == 950) {
        EXPECT_EQ(display, WholeDisplay(disc, size, time)) << size.width() << " " << time.count();
      }
    }
    EXPECT_LT(painted, 30) << "of 200 frames most show one tile more, or nothing new";
  }
}

TEST(DiscSceneTest, WhereNothingChangesNothingIsPainted) {
  DiscScene scene;
  scene.SetSize({1920, 1080});
  scene.SetImage(Disc(DiscBytes().Colours(0, kPaints).Clear(3).Until(1).Clear(3).Until(2)));
  EXPECT_EQ(scene.MoveTo(500ms), QRect(0, 0, 1920, 1080));
  EXPECT_TRUE(scene.MoveTo(900ms).isEmpty());
  EXPECT_TRUE(scene.MoveTo(1900ms).isEmpty()) << "cleared once more";
}

/// The window with two songs in the karaoke table; beside the first lies a disc of ten seconds that changes
/// its colour each second.
class DiscTest : public Booth {
 protected:
  void OpenBooth(QSize size = {1366, 768}) {
    DiscBytes bytes;
    bytes.Colours(0, kPaints);
    for (int second = 0; second < 10; ++second) bytes.Clear(second % 7 + 1).Until(second + 1);
    images.beside["one.mp3"] = bytes.Content();
    Open(size);
    Click("Page3");
  }
  void Sing(const std::string& song) {
    station->Songs().Play({song, "Anna", "Counting"});
    Settle();
    workers.RunAll();
    Settle();
  }
  [[nodiscard]] static QColor MiddleOf(QWidget& widget) {
    return widget.grab().toImage().pixelColor(widget.rect().center());
  }
  [[nodiscard]] LyricSurface& Words() { return Find<LyricSurface>("pctKaraoke"); }
  [[nodiscard]] static frmKaraoke& Singers() {
    for (QWidget* widget : QApplication::topLevelWidgets()) {
      if (auto* found = qobject_cast<frmKaraoke*>(widget)) return *found;
    }
    throw std::runtime_error("no singers' window");
  }
  [[nodiscard]] static QColor ColourOfSecond(int second) {
    const int paint = kPaints[static_cast<std::size_t>(second % 7 + 1)];
    return {(paint >> 8) * 17, (paint >> 4 & 15) * 17, (paint & 15) * 17};
  }
};

TEST_F(DiscTest, TheSingersAndTheirPreviewSeeTheDiscOfTheSong) {
  OpenBooth();
  Choose("SingersScreen", 2);
  Sing("one.mp3");
  for (const auto& [place, second] : {std::pair(2500ms, 2), std::pair(8500ms, 8), std::pair(1500ms, 1)}) {
    station->Songs().Seek(place);
    Settle();
    EXPECT_EQ(MiddleOf(Words()), ColourOfSecond(second));
    EXPECT_EQ(MiddleOf(Singers()), ColourOfSecond(second));
  }
}

TEST_F(DiscTest, ASongWithoutADiscShowsItsTitleCardAgain) {
  OpenBooth();
  Sing("one.mp3");
  EXPECT_TRUE(Words().Disc().HasImage());
  Sing("two.ogg");
  EXPECT_FALSE(Words().Disc().HasImage());
  const QImage card = Words().grab().toImage();
  EXPECT_EQ(card.pixelColor(card.rect().bottomLeft()), Words().Scene().Ground()) << "where the curtain ends";
}

TEST_F(DiscTest, AWindowThatStoodStillShowsTheRightPictureInItsNextFrame) {
  OpenBooth({1920, 1080});
  Sing("one.mp3");
  station->Songs().Seek(200ms);
  Settle();
  for (int tick = 0; tick < 800; ++tick) {  // 8 s without a frame
    clock.Advance(10ms);
    station->Tick();
  }
  window->ShowFrame();
  EXPECT_NEAR(double(Words().ShownTime().count()), 8.26e6, 0.1e6);
  EXPECT_EQ(MiddleOf(Words()), ColourOfSecond(8));
}

}  // namespace
}  // namespace ui::testing
