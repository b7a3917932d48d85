// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <string>
#include <vector>

#include "app/lights/LightStation.h"
#include "ui/widgets/Look.h"

class QFileDialog;
class QLabel;
class QPushButton;

namespace ui {

class ElidedLabel;
class Fader;
class MessageBoxes;
class QuietCombo;
class TransportButton;

/// The show player of the main window: which show, its transport, and where it is.
class ShowLine final : public QWidget {
  Q_OBJECT

 public:
  ShowLine(app::LightStation& lights, MessageBoxes& boxes, const Look& look, QWidget* parent = nullptr);

  void Show(const app::LightView& view);
  /// Looks which shows the folder has.
  void ListShows();

 private:
  void MakeChoice();
  void MakeTransport();
  void MakePlace();
  void FillShows(const std::vector<std::filesystem::path>& shows);
  void AskForShow();
  void Open(const std::string& path);
  void TellOpened(const std::string& path, const support::Result<app::ShowReport>& report);
  /// In a box, of many sentences only the first.
  void Tell(const QString& head, const std::vector<std::string>& sentences);
  void Play();
  void ShowChoice(const app::ShowView& show);
  void ShowPlace(const app::ShowView& show);

  app::LightStation& lights_;
  MessageBoxes& boxes_;
  Look look_;
  QuietCombo* shows_;
  QPushButton* open_;
  TransportButton* play_;
  TransportButton* pause_;
  TransportButton* stop_;
  QPushButton* repeat_;
  Fader* position_;
  QLabel* time_;
  ElidedLabel* place_;
  std::vector<std::filesystem::path> listed_;
  app::ShowView shown_;
};

}  // namespace ui
