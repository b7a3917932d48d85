// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <optional>
#include <string>

#include "app/sound/DeckView.h"
#include "app/sound/GainQueries.h"
#include "ui/models/KeyMap.h"
#include "ui/widgets/Look.h"

class QLabel;
class QMenu;
class QPushButton;

namespace app {
class Deck;
}  // namespace app

namespace ui {

/// A deck's row of tools for tempo and beats: nudging, sync, key lock, pitch, tapping, the beat grid.
class TempoTools final : public QWidget {
  Q_OBJECT

 public:
  TempoTools(app::Deck& deck, const Look& look, QWidget* parent = nullptr);

  void Show(const app::DeckView& view);
  /// The gain of the track, to be put where it is read; this keeps it up to date.
  [[nodiscard]] QLabel& Gain() { return *gain_; }

  // What the buttons and the keys do.
  void Tap();
  void ToggleSync();
  void ToggleKeyLock();
  /// While a key or a button is held: −1 slower, 1 faster; 0 lets go.
  void Nudge(int direction);

 Q_SIGNALS:
  /// A sentence for the status line.
  void Told(const QString& sentence);

 private:
  enum class Kind { Plain, Lamp };
  struct Words {
    const char* name;
    Say caption;
    Say spoken;
    Say tip;
  };

  QPushButton* MakeButton(const Words& words, Kind kind = Kind::Plain);
  QPushButton* MakeNudge(const Words& words, Command key, int direction);
  void AddKey(QPushButton& button, Command command);
  QMenu* MakeBeats();
  QPushButton* MakeGain();
  void QueryGain();
  void TakeGain(const app::GainAnswer& answer);
  void ShowGain();
  void MovePitch(float semitones);
  [[nodiscard]] bool Loaded() const;

  const int deck_;
  app::Deck& commands_;
  Look look_;
  app::DeckView view_;
  QPushButton* back_;
  QPushButton* on_;
  QPushButton* sync_;
  QPushButton* key_lock_;
  QPushButton* tap_;
  QPushButton* beats_;
  QPushButton* earlier_;
  QPushButton* later_;
  QLabel* gain_;
  QPushButton* ask_gain_;
  std::string gain_of_;  ///< file that mp3gain was asked about; empty: none
  std::optional<app::GainAnswer> answer_;
  std::string answered_;  ///< file that the answer is about
  QLabel* pitch_;
};

}  // namespace ui
