// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPointer>
#include <QWidget>
#include <string>
#include <vector>

#include "ui/strings/SongWords.h"
#include "ui/widgets/Look.h"

class QDialog;
class QGridLayout;
class QLabel;
class QPushButton;

namespace app {
class SongStation;
}  // namespace app

namespace support {
class Settings;
}  // namespace support

namespace ui {

class ColourButton;
class QuietCombo;

/// How the words look: ready for the stage, or with colours, font and ball of one's own; how they are sung,
/// and what is behind them. Each choice is stored at once.
class LyricLookPanel final : public QWidget {
  Q_OBJECT

 public:
  LyricLookPanel(app::SongStation& songs, support::Settings& settings, const Look& look,
                 QWidget* parent = nullptr);

 Q_SIGNALS:
  void Changed();

 private:
  [[nodiscard]] QGridLayout* MakeColours();
  [[nodiscard]] QWidget* MakeOwn();
  [[nodiscard]] QGridLayout* MakeRest();
  void UseOwn(bool own);
  void AskForColour(ColourButton& button, const std::string& key);
  void AskForFont();
  void AskForPicture(const std::string& key, SongWord title, SongWord kind, const QString& masks,
                     const QString& suffix);
  void Store(const std::string& key, const std::string& value);
  void ShowNames();

  app::SongStation& songs_;
  support::Settings& settings_;
  Look look_;
  QWidget* own_ = nullptr;  ///< what acts on a look of one's own alone
  QPushButton* font_ = nullptr;
  QPushButton* no_picture_ = nullptr;
  QPointer<QDialog> dialog_;
};

}  // namespace ui
