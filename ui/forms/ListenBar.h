// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

#include "app/sound/DeckView.h"
#include "ui/models/MixerState.h"
#include "ui/widgets/Look.h"

class QLabel;

namespace app {

struct WorkstationView;
class Deck;
}  // namespace app

namespace catalogue {
class track_table;
}  // namespace catalogue

namespace ui {

class ElidedLabel;
class ListenButton;
class WaveOverview;

/// Listening to a row of a list in the headphones, on deck 4: the button that starts it, and a bar with the
/// track to look about in, which is there only while somebody listens.
///
/// Law: it ends as soon as another row is chosen.
class ListenBar final : public QWidget {
  Q_OBJECT

 public:
  /// The state outlives the bar.
  static constexpr int kDeck = 4;

  ListenBar(app::Deck& deck, MixerState& state, const Look& look, QWidget* parent = nullptr);

  /// Whoever lays out the bar gives it a place.
  [[nodiscard]] ListenButton& Button() { return *button_; }
  /// Starts with the row, or ends when it is this one that is heard.
  void Toggle(const catalogue::track_table& table, int row);
  void End();
  void SeekBy(std::chrono::microseconds step);
  [[nodiscard]] bool Listening() const { return !file_.empty(); }
  /// File of the row that is listened to; empty without one.
  [[nodiscard]] const std::string& File() const { return file_; }

  void Show(const app::WorkstationView& view);

 Q_SIGNALS:
  void Pressed();
  /// Nothing is heard, and why.
  void Unheard(const QString& sentence);
  void LevelMoved(int level);

 private:
  [[nodiscard]] QString ButtonTip() const;
  void ShowButton();

  app::Deck& commands_;
  MixerState& state_;
  Look look_;
  ListenButton* button_;
  ElidedLabel* title_;
  WaveOverview* overview_;
  QLabel* time_;
  std::string file_;
  bool has_output_ = false;
  bool begun_ = false;  ///< the deck holds the file
  app::DeckView deck_;
};

}  // namespace ui
