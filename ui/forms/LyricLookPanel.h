// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPointer>
#include <QWidget>
#include <string>
#include <vector>

#include "app/Workstation.h"
#include "ui/strings/SongWords.h"
#include "ui/widgets/Look.h"

class QDialog;
class QGridLayout;
class QPushButton;

namespace ui {

class ColourButton;

/// How the words look: colours, font, ball, background. Each choice is stored at once.
class LyricLookPanel final : public QWidget {
  Q_OBJECT

 public:
  LyricLookPanel(app::Workstation& workstation, const Look& look, QWidget* parent = nullptr);

 Q_SIGNALS:
  void Changed();

 private:
  [[nodiscard]] QGridLayout* MakeColours();
  [[nodiscard]] QGridLayout* MakeRest();
  QPushButton* MakeButton(const char* name, SongWord caption, SongWord tip);
  void AskForColour(ColourButton& button, const std::string& key);
  void AskForFont();
  void AskForPicture(const std::string& key, SongWord title, SongWord kind, const QString& masks,
                     const QString& suffix);
  void Store(const std::string& key, const std::string& value);
  void ShowNames();

  app::Workstation& workstation_;
  Look look_;
  QPushButton* font_ = nullptr;
  QPushButton* no_picture_ = nullptr;
  QPointer<QDialog> dialog_;
};

}  // namespace ui
