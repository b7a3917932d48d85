// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/sound/DeckView.h"
#include "ui/forms/DeckDrops.h"
#include "ui/models/SentEcho.h"
#include "ui/widgets/Look.h"

class QHBoxLayout;
class QLabel;
class QPushButton;

namespace app {
class Deck;
class EffectStation;
}  // namespace app

namespace support {
class Settings;
}  // namespace support

namespace ui {

class CueTools;
class ElidedLabel;
class Fader;
class RunningWave;
class TransportButton;
class TempoTools;
class ToneStrip;
class WaveOverview;

/// One mixing deck: what is on it, where it stands, and the hands on it.
class DeckPanel final : public DeckDrops {
  Q_OBJECT

 public:
  DeckPanel(app::Deck& deck, app::EffectStation& effects, const support::Settings& settings, const Look& look,
            QWidget* parent = nullptr);

  /// Changes what differs from the last view, nothing else.
  void Show(const app::DeckView& view, support::TimePoint now);

  // What the buttons and the keys do.
  void PlayOrPause();
  void ToStart();
  void Stop();
  /// At the place that is heard.
  void SetMixPoint(app::MixPoint which);
  [[nodiscard]] TempoTools& Tools() { return *tools_; }
  [[nodiscard]] CueTools& Cues() { return *cues_; }
  [[nodiscard]] ToneStrip& Tone() { return *tone_; }
  [[nodiscard]] QSize minimumSizeHint() const override;

 Q_SIGNALS:
  /// A sentence for the status line.
  void Told(const QString& sentence);

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  /// Where the deck is low, the waves have the pads' second row.
  void FoldPads();
  QHBoxLayout* MakeTitleRow();
  QHBoxLayout* MakeTransportRow();
  QWidget* MakeTempo();
  QWidget* MakeTimes();
  void NameParts();
  void GuardWaves();
  void ShowTrack(const app::DeckView& view);
  void ShowState(const app::DeckView& view);
  void ShowTimes(const app::DeckView& view);
  void ShowTempo(const app::DeckView& view, support::TimePoint now);
  void SetTempo(float percent);
  [[nodiscard]] bool Loaded() const;

  const int deck_;
  app::Deck& commands_;
  const support::Settings& settings_;
  Look look_;
  app::DeckView view_;
  SentEcho echo_;
  support::TimePoint now_{};

  ElidedLabel* title_;
  ElidedLabel* artist_;
  QLabel* bpm_;
  QLabel* state_;
  TempoTools* tools_;
  CueTools* cues_;
  ToneStrip* tone_;
  WaveOverview* overview_;
  RunningWave* running_;
  TransportButton* to_start_;
  TransportButton* play_;
  TransportButton* stop_;
  Fader* tempo_;
  QLabel* tempo_value_;
  QPushButton* tempo_reset_;
  QLabel* remaining_;
  QLabel* elapsed_;
};

}  // namespace ui
