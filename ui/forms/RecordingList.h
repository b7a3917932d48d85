// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "app/recording/KeptRecordings.h"
#include "ui/widgets/Look.h"

class QLabel;
class QPushButton;
class QTableWidget;

namespace app {
class RecordingStation;
struct RecordingView;
}  // namespace app

namespace ui {

/// A recording, or a place in it, that is to be played.
struct RecordedPlace {
  std::string file;  ///< native path
  std::string artist;
  std::string title;
  std::chrono::microseconds place{0};
};

/// The recordings of the folder with their tracks, that which goes on first, and what can be done with them.
class RecordingList final : public QWidget {
  Q_OBJECT

 public:
  RecordingList(app::RecordingStation& station, const Look& look, QWidget* parent = nullptr);

  void Show(const app::RecordingView& view);

 Q_SIGNALS:
  void LoadWanted(int deck, ui::RecordedPlace place);
  /// On the deck that is free.
  void PlayWanted(ui::RecordedPlace place);

 private:
  void Fill(const app::RecordingView& view);
  void AddRecording(const app::KeptRecording& recording, const QString& name);
  void AddRow(const QString& begins, const QString& name, RecordedPlace place, bool heads);
  [[nodiscard]] const RecordedPlace* Chosen() const;
  void ShowFolder();
  QPushButton* MakeLoad(int deck);

  app::RecordingStation& station_;
  Look look_;
  QTableWidget* table_;
  QLabel* empty_;
  std::vector<QPushButton*> needs_choice_;
  std::vector<RecordedPlace> rows_;
  std::uint64_t looks_ = 0;
  bool running_ = false;
  std::string path_;
  std::shared_ptr<const std::vector<app::RecordedTrack>> tracks_;
};

}  // namespace ui
