// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/models/SceneLooks.h"

#include <QImageReader>
#include <QStringList>

#include "app/songs/SongStation.h"
#include "support/Settings.h"

namespace ui {
namespace {

/// The largest picture of a file that holds several.
QImage ReadPicture(const std::filesystem::path& path) {
  QImageReader reader(QString::fromStdString(path.string()));
  reader.setAutoTransform(true);
  QImage largest;
  constexpr int kMostPictures = 32;
  for (int i = 0; i < kMostPictures; ++i) {
    const QImage image = reader.read();
    if (image.isNull()) break;
    if (image.width() > largest.width()) largest = image;
    if (reader.supportsAnimation() || !reader.jumpToNextImage()) break;
  }
  return largest;
}

}  // namespace

SceneLook ReadSceneLook(const app::SongStation& songs, const support::Settings& settings) {
  SceneLook look;
  look.lyric = songs.Look(karaoke::LookReader::Display);
  look.style = settings.Number("Karaoke", "Style") == 1 ? SungStyle::Word : SungStyle::Sweep;
  look.ball = ReadPicture(songs.Native(look.lyric.bouncing_ball));
  const std::string picture = settings.Text("Karaoke", "Picture");
  if (!picture.empty()) look.picture = ReadPicture(songs.Native(picture));
  return look;
}

std::shared_ptr<const app::SongWords> SampleWords(const QString& line, const QString& next) {
  karaoke::Lyric lyric;
  std::chrono::milliseconds at(5000);
  int number = 0;
  for (const QString& text : {line, next}) {
    for (const QString& word : text.split(QLatin1Char(' '))) {
      lyric.syllables.push_back({at, number, (word + QLatin1Char(' ')).toStdString()});
      at += std::chrono::milliseconds(500);
    }
    ++number;
  }
  return std::make_shared<const app::SongWords>(app::SongWords{"", "", karaoke::LyricShow(lyric)});
}

}  // namespace ui
