// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/sound/DeckView.h"
#include "ui/forms/DeckDrops.h"
#include "ui/widgets/Look.h"

class QLabel;

namespace app {
class Deck;
}  // namespace app

namespace support {
class Settings;
}  // namespace support

namespace ui {

class ElidedLabel;
class Fader;
class LevelBar;
class LevelMeter;
class TransportButton;
class WaveOverview;

/// A mixing deck in one line: play, title, wave, times, tempo, level and fader.
class CompactDeck final : public DeckDrops {
  Q_OBJECT

 public:
  CompactDeck(app::Deck& deck, const support::Settings& settings, const Look& look,
              QWidget* parent = nullptr);

  /// Changes what differs from the last view, nothing else. The level is that of the whole form's meter.
  void Show(const app::DeckView& view, int fader, const LevelMeter& level);

 Q_SIGNALS:
  void PlayWanted();
  void FaderMoved(int level);
  /// A sentence for the status line.
  void Told(const QString& sentence);

 private:
  void MakeParts();
  void NameParts();
  void GuardWave(const support::Settings& settings);
  void ShowTitle(const app::DeckView& view);
  void ShowTimes(const app::DeckView& view);

  const int deck_;
  app::Deck& commands_;
  Look look_;
  app::DeckView view_;
  TransportButton* play_;
  ElidedLabel* title_;
  WaveOverview* wave_;
  QLabel* remaining_;
  QLabel* elapsed_;
  QLabel* bpm_;
  LevelBar* level_;
  Fader* fader_;
};

}  // namespace ui
