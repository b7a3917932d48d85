// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLabel>
#include <memory>
#include <string>

#include "app/songs/SongView.h"
#include "ui/strings/SongWords.h"
#include "ui/widgets/LevelFader.h"
#include "ui/widgets/Look.h"
#include "ui/widgets/Surface.h"

class QGridLayout;
class QHBoxLayout;
class QPushButton;
class QStackedWidget;

namespace app {
class SongStation;
}  // namespace app

namespace support {
class Settings;
}  // namespace support

namespace ui {

class ElidedLabel;
class Fader;
class LyricLookPanel;
class LyricSurface;
class QuietCombo;
class TransportButton;
class WaveOverview;
class frmKaraoke;

/// The song that plays: its words, its transport, the singer's wishes, and how and where the words are shown.
class SongPanel final : public Surface {
  Q_OBJECT

 public:
  /// singers outlives the panel.
  SongPanel(app::SongStation& songs, support::Settings& settings, frmKaraoke& singers, const Look& look,
            QWidget* parent = nullptr);

  void Show(const app::SongView& view, support::TimePoint now);

 Q_SIGNALS:
  /// A sentence about a song that could not be played.
  void Failed(const std::string& sentence);

 private:
  /// What a wish of the singer is called and how far it goes.
  struct Range {
    const char* name;
    SongWord word;
    int lowest;
    int highest;
    int page;
  };

  [[nodiscard]] QHBoxLayout* MakeTransport();
  [[nodiscard]] QWidget* MakeSong();
  [[nodiscard]] QHBoxLayout* MakeHead();
  void MakeLevel(QGridLayout& grid, LevelFader& level, const Range& range,
                 const std::function<void(int)>& send);
  QuietCombo* MakeList(QGridLayout& grid, const char* name, AnyWord word);
  void ShowPart(int part);
  void FillScreens();
  void FillSoundfonts();
  void ShowCoding(const app::SongView& view);
  void ShowLevels(const app::SongView& view, support::TimePoint now);
  void ShowValues();
  void PlayOrPause();
  void UseLook();

  app::SongStation& songs_;
  support::Settings& settings_;
  frmKaraoke& singers_;
  Look look_;
  LyricSurface* words_;
  TransportButton* play_;
  TransportButton* stop_;
  WaveOverview* place_;
  QLabel* time_;
  ElidedLabel* title_;
  ElidedLabel* note_;
  QPushButton* parts_[2]{};
  QStackedWidget* stack_;
  LevelFader volume_, key_, tempo_, melody_;
  QuietCombo* screen_ = nullptr;
  QuietCombo* soundfont_ = nullptr;
  QuietCombo* coding_ = nullptr;
  std::shared_ptr<const app::SongWords> coded_;  ///< that the list of codings is about
  LyricLookPanel* appearance_ = nullptr;
  std::size_t shown_soundfonts_ = 0;
  std::uint64_t shown_failures_ = 0;
  std::string file_;  ///< of the song that is there
  app::SongView::State state_ = app::SongView::State::Empty;
  support::TimePoint now_{};
};

}  // namespace ui
