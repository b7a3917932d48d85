// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "support/Clock.h"
#include "ui/forms/RecordingList.h"
#include "ui/widgets/Look.h"
#include "ui/widgets/Surface.h"

namespace app {
struct WorkstationView;
}

namespace ui {

class LevelMeter;
class RecordedWaveView;

/// What is recorded now and how, and what was recorded.
class RecordingPage final : public Surface {
  Q_OBJECT

 public:
  RecordingPage(app::RecordingStation& station, const Look& look, QWidget* parent = nullptr);

  void Show(const app::WorkstationView& decks, support::TimePoint now);

 Q_SIGNALS:
  /// Begin, or end what goes on.
  void Pressed();
  void LoadWanted(int deck, ui::RecordedPlace place);
  void PlayWanted(ui::RecordedPlace place);

 private:
  void ShowButton(const app::RecordingView& view);
  void ShowWave(const app::RecordingView& view);
  [[nodiscard]] QString StateText(const app::RecordingView& view) const;

  app::RecordingStation& station_;
  Look look_;
  QPushButton* record_;
  QLabel* time_;
  QLabel* size_;
  QLabel* state_;
  QLabel* only_;  ///< there only while deck 2 plays elsewhere
  LevelMeter* meter_;
  RecordedWaveView* wave_;
  RecordingList* list_;
  support::TimePoint looked_{};
  bool was_shown_ = false;
};

}  // namespace ui
