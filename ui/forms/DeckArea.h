// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <array>
#include <string>
#include <vector>

#include "support/Clock.h"
#include "ui/models/MixerState.h"
#include "ui/models/TrackRows.h"
#include "ui/widgets/Look.h"

namespace app {
class Workstation;
struct WorkstationView;
}  // namespace app

namespace ui {

class AutomixLine;
class CompactDeck;
class DeckPanel;
class Fader;
class MixerPanel;

/// The decks and the mixer between them, whole or in one line each, which leaves the page below all other
/// room.
///
/// Law: the whole form is always there, shown or not; keys act on it, and the lines show what it shows.
class DeckArea final : public QWidget {
  Q_OBJECT

 public:
  enum class Form { Whole, Compact };

  /// The state outlives the area.
  DeckArea(app::Workstation& workstation, MixerState& state, const Look& look, QWidget* parent = nullptr);

  [[nodiscard]] DeckPanel& Panel(int deck) { return *panels_[deck == 1 ? 0 : 1]; }
  [[nodiscard]] MixerPanel& Mixer() { return *mixer_; }
  void Show(const app::WorkstationView& view, support::TimePoint now);
  void Take(Form form);
  [[nodiscard]] Form Taken() const { return form_; }

 Q_SIGNALS:
  void RowsDropped(int deck, ui::TrackRows rows);
  void FilesDropped(int deck, std::vector<std::string> paths);
  /// A sentence for the status line.
  void Told(const QString& sentence);
  /// Of the headphones, by the hand.
  void ListenLevelMoved(int level);

 private:
  [[nodiscard]] QWidget* MakeWhole(const Look& look);
  [[nodiscard]] QWidget* MakeCompact(const Look& look);
  [[nodiscard]] QWidget* MakeSmallMixer(const Look& look);
  void ShowCompact(const app::WorkstationView& view);

  app::Workstation& workstation_;
  MixerState& state_;
  Form form_ = Form::Whole;
  QWidget* whole_;
  QWidget* compact_;
  std::array<DeckPanel*, 2> panels_{};
  MixerPanel* mixer_ = nullptr;
  std::array<CompactDeck*, 2> lines_{};
  Fader* crossfader_ = nullptr;
  AutomixLine* automix_ = nullptr;
};

}  // namespace ui
