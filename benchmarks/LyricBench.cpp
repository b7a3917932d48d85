// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
// Pictures of the singers' screen.
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <functional>
#include <memory>
#include <string>
#include <tuple>

#ifdef DJ_HAVE_LIBASS
#include <ass/ass.h>
#endif

#include "benchmarks/Bench.h"
#include "karaoke/testing/DiscBytes.h"
#include "karaoke/testing/MidiBytes.h"
#include "ui/widgets/DiscScene.h"
#include "ui/widgets/LyricScene.h"
#include "ui/widgets/QtDrawing.h"

namespace bench {
namespace {

using std::chrono::milliseconds;

constexpr const char* kSungLine[] = {"Twin", "kle, ", "twin", "kle, ", "lit", "tle ", "star"};
constexpr const char* kNextLine = "How I wonder what you are";
constexpr milliseconds kSungFrom{5000}, kSungUntil{8000};

std::shared_ptr<const app::SongWords> LyricWords() {
  karaoke::testing::TrackBytes track = karaoke::testing::UsualHead().Name("Words");
  bool first = true;
  for (const char* syllable : kSungLine) {
    track.Text(first ? 4800 : 480, std::string(first ? "/" : "") + syllable);
    first = false;
  }
  track.Text(480, std::string("/") + kNextLine);
  return std::make_shared<const app::SongWords>(app::SongWords{
      "", "", karaoke::LyricShow(karaoke::ReadLyric(karaoke::testing::FileBytes({track.End(480)})))});
}

/// Milliseconds a frame over the time in which the first line is sung.
double MedianFrame(const std::function<void(milliseconds)>& paint, milliseconds step) {
  std::vector<double> took;
  for (milliseconds at = kSungFrom; at < kSungUntil; at += step) {
    QElapsedTimer timer;
    timer.start();
    paint(at);
    took.push_back(static_cast<double>(timer.nsecsElapsed()) / 1e6);
  }
  return Median(took);
}

double SceneFrame(QSize size) {
  ui::LyricScene scene(karaoke::LyricDisplay::SingersWindow);
  ui::SceneLook look;
  look.lyric.font_name = "Verdana";
  look.lyric.font_bold = true;
  look.lyric.fill = {0xFF0000, 0x0000FF, 0x00FF00};
  look.lyric.outline = 0xFFFFFF;
  scene.SetLook(look);
  scene.SetSize(size);
  scene.SetWords(LyricWords());
  QImage image(size, QImage::Format_RGB32);
  const auto paint = [&](milliseconds at) {
    QPainter painter(&image);
    scene.Paint(painter, at);
  };
  paint(kSungFrom);  // the lines become pictures
  return MedianFrame(paint, milliseconds(17));
}

/// A disc on which every point changes in every frame, and each frame is painted whole.
double DiscFrame(QSize size) {
  karaoke::testing::DiscBytes bytes;
  bytes.Colours(0, {0x000, 0xF00, 0x0F0, 0x00F, 0xFF0, 0xF0F, 0x0FF, 0xFFF});
  for (int tile = 0; bytes.Packets() < 9 * 300; ++tile) {
    bytes.Draw(tile % 18, tile % 50, tile % 7, 7, {0x2A, 0x15, 0x3F});
    if (tile % 4 == 0) bytes.ScrollRound({karaoke::testing::DiscBytes::Move::Forward, tile % 5}, {});
  }
  ui::DiscScene scene;
  scene.SetSize(size);
  scene.SetImage(karaoke::DiscImage::Read(bytes.Content(), "bench").Value());
  QImage image(size, QImage::Format_RGB32);
  return MedianFrame(
      [&](milliseconds at) {
        QPainter painter(&image);
        static_cast<void>(scene.MoveTo(at));
        scene.Paint(painter, image.rect());
      },
      milliseconds(17));
}

/// The same picture by the drawing library: as colours, scaled in every frame.
double ScaledFrame(QSize size) {
  QImage disc(karaoke::DiscPicture::kSeenWidth, karaoke::DiscPicture::kSeenHeight, QImage::Format_RGB32);
  for (int y = 0; y < disc.height(); ++y) {
    for (int x = 0; x < disc.width(); ++x) disc.setPixel(x, y, qRgb(x * 37 % 256, y * 11 % 256, 90));
  }
  QImage image(size, QImage::Format_RGB32);
  const QSize seen = disc.size().scaled(size, Qt::KeepAspectRatio);
  const QRect place(QPoint((size.width() - seen.width()) / 2, (size.height() - seen.height()) / 2), seen);
  return MedianFrame(
      [&](milliseconds) {
        QPainter painter(&image);
        painter.fillRect(image.rect(), Qt::black);
        painter.drawImage(place, disc);
      },
      milliseconds(17));
}

/// The same two lines, drawn as paths in every frame.
double StrokedFrame(QSize size) {
  const ui::LyricCanvas canvas(size);
  karaoke::LyricLook look;
  look.fill = {0xFF0000, 0x0000FF, 0x00FF00};
  look.outline = 0xFFFFFF;
  const karaoke::FontObject font{"Verdana", static_cast<float>(canvas.height * 0.085 * 0.75), true, false};
  std::string line;
  for (const char* syllable : kSungLine) line += syllable;
  QImage image(size, QImage::Format_RGB32);
  const auto draw = [&](const std::string& text, karaoke::LyricRole role, double middle, QRectF part) {
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setClipRect(part);
    painter.scale(canvas.scale, canvas.scale);
    ui::QtDrawingSystem system(QGuiApplication::palette());
    ui::QtDrawingSurface surface(painter, system);
    karaoke::LyricPainter words(system);
    words.Look(look);
    words.Draw(role, karaoke::LyricDisplay::SingersWindow, surface, font, text, 60,
               static_cast<int>(canvas.height * middle));
  };
  return MedianFrame(
      [&](milliseconds at) {
        image.fill(Qt::black);
        const double edge = size.width() * static_cast<double>((at - kSungFrom).count()) / 3000;
        const double right = size.width() - edge;
        draw(line, karaoke::LyricRole::CurrentText, 0.26, QRectF(edge, 0, right, size.height()));
        draw(line, karaoke::LyricRole::CurrentWord, 0.26, QRectF(0, 0, edge, size.height()));
        draw(kNextLine, karaoke::LyricRole::NextText, 0.68, QRectF(QPointF(0, 0), size));
      },
      milliseconds(170));
}

#ifdef DJ_HAVE_LIBASS
void BlendAss(const ASS_Image& part, QImage& image) {
  const std::uint32_t colour = part.color;
  const std::uint32_t opaque = 255 - (colour & 0xFF);
  for (int y = 0; y < part.h; ++y) {
    auto* row = reinterpret_cast<QRgb*>(image.scanLine(part.dst_y + y)) + part.dst_x;
    const unsigned char* cover = part.bitmap + y * part.stride;
    for (int x = 0; x < part.w; ++x) {
      const std::uint32_t share = cover[x] * opaque / 255;
      if (share == 0) continue;
      const auto mix = [&](std::uint32_t from, std::uint32_t to) {
        return (from * (255 - share) + to * share) / 255;
      };
      const QRgb old = row[x];
      row[x] = 0xFF000000 | mix(old >> 16 & 0xFF, colour >> 24) << 16 |
               mix(old >> 8 & 0xFF, colour >> 16 & 0xFF) << 8 | mix(old & 0xFF, colour >> 8 & 0xFF);
    }
  }
}

std::optional<double> AssFrame(QSize size) {
  const std::unique_ptr<ASS_Library, decltype(&ass_library_done)> library(ass_library_init(),
                                                                          ass_library_done);
  ass_set_message_cb(
      library.get(), [](int, const char*, va_list, void*) {}, nullptr);
  const std::unique_ptr<ASS_Renderer, decltype(&ass_renderer_done)> renderer(ass_renderer_init(library.get()),
                                                                             ass_renderer_done);
  ass_set_frame_size(renderer.get(), size.width(), size.height());
  ass_set_fonts(renderer.get(), nullptr, "Verdana", ASS_FONTPROVIDER_AUTODETECT, nullptr, 1);
  std::string script =
      "[Script Info]\nScriptType: v4.00+\nPlayResX: 854\nPlayResY: 480\n[V4+ Styles]\nFormat: Name, "
      "Fontname, "
      "Fontsize, PrimaryColour, SecondaryColour, OutlineColour, BackColour, Bold, BorderStyle, Outline, "
      "Shadow, "
      "Alignment, MarginL, MarginR, MarginV\n"
      "Style: Sung,Verdana,48,&H000000FF,&H00FF0000,&H00FFFFFF,&H00000000,-1,1,1,0,8,10,10,120\n"
      "Style: Next,Verdana,48,&H0000FF00,&H0000FF00,&H00FFFFFF,&H00000000,-1,1,1,0,2,10,10,100\n[Events]\n"
      "Format: Layer, Start, End, Style, Text\nDialogue: 0,0:00:05.00,0:00:09.00,Sung,";
  for (const char* syllable : kSungLine) script += std::string("{\\kf50}") + syllable;
  script += std::string("\nDialogue: 0,0:00:05.00,0:00:09.00,Next,") + kNextLine + "\n";
  const std::unique_ptr<ASS_Track, decltype(&ass_free_track)> track(
      ass_read_memory(library.get(), script.data(), script.size(), nullptr), ass_free_track);
  if (track == nullptr) return std::nullopt;
  QImage image(size, QImage::Format_RGB32);
  const auto paint = [&](milliseconds at) {
    image.fill(Qt::black);
    int changed = 0;
    const ASS_Image* part = ass_render_frame(renderer.get(), track.get(), at.count(), &changed);
    for (; part != nullptr; part = part->next) BlendAss(*part, image);
  };
  paint(kSungFrom);
  return MedianFrame(paint, milliseconds(17));
}
#else
std::optional<double> AssFrame(QSize) {
  return std::nullopt;
}
#endif

}  // namespace

std::vector<Figure> MeasureLyrics() {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  int arguments = 1;
  char name[] = "measure";
  char* values[] = {name, nullptr};
  const QGuiApplication application(arguments, values);
  std::vector<Figure> figures;
  for (const auto& [size, called, aim] :
       {std::tuple(QSize(1920, 1080), "1080p", "under 1"), std::tuple(QSize(3840, 2160), "4K", "under 4")}) {
    const double ours = SceneFrame(size);
    const std::string what = std::string("a frame of the singers' screen at ") + called;
    figures.push_back({what + " (stroking the words in every frame)", "ms", ours, StrokedFrame(size), aim});
    const auto ass = AssFrame(size);
    figures.push_back({what + (ass ? " (libass and blending)" : " (libass: not installed)"), "ms", ours, ass,
                       "not slower"});
    figures.push_back({"a frame of disc graphics at " + std::string(called) + " (scaled by QPainter)", "ms",
                       DiscFrame(size), ScaledFrame(size), aim});
  }
  return figures;
}

}  // namespace bench
