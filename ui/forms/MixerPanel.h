// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>

#include "app/lists/AutoMix.h"
#include "ui/models/MixerState.h"
#include "ui/models/SentEcho.h"
#include "ui/widgets/Look.h"
#include "ui/widgets/Surface.h"

class QGridLayout;
class QLabel;

namespace app {
class Decks;
class EqualiserStation;
class HeadphoneStation;
class ListStation;
class OutputStation;
struct ListView;
}  // namespace app

namespace ui {

class AutomixLine;
class EqGraph;
class Fader;
class HeadphoneStrip;
class LevelMeter;
class ListenButton;
class MasterMeter;

/// The strip between the decks: for each deck fader, meter and headphones, between them the master volume,
/// below them the equaliser and the crossfader.
class MixerPanel final : public Surface {
  Q_OBJECT

 public:
  /// The state outlives the panel, which a change of language makes anew.
  struct Stations {
    app::Decks& decks;
    app::EqualiserStation& sliders;
    app::OutputStation& outputs;
    app::ListStation& lists;
    app::HeadphoneStation& headphones;
  };
  MixerPanel(const Stations& stations, MixerState& state, const Look& look, QWidget* parent = nullptr);

  void Show(const app::WorkstationView& view, support::TimePoint now);
  /// Gives the decks the volumes that fader and crossfader make.
  void SendVolumes();
  /// Moves the crossfader by steps of a hundredth of its half travel.
  void MoveCrossfader(int steps);
  /// To 0 to 100.
  void MoveFader(int deck, int level);
  [[nodiscard]] const LevelMeter& Meter(int deck) const { return *channels_[deck == 1 ? 0 : 1].meter; }
  void SetCurve(decks::CrossfaderCurve curve);
  /// Switches a deck's headphones.
  void Listen(int deck);

 Q_SIGNALS:
  /// Of the headphones, by the hand.
  void ListenLevelMoved(int level);

 private:
  struct Channel {
    Fader* fader;
    QLabel* volume;
    LevelMeter* meter;
    QLabel* peak;
    ListenButton* cue;
  };

  QGridLayout* MakeChannels();
  Channel MakeChannel(int deck);
  void MakeMaster();
  void ShowMeter(const app::WorkstationView& view, support::TimePoint now);
  void ShowMaster(const app::WorkstationView& view, support::TimePoint now);
  void MakeEqualiser();
  ListenButton* MakeListen(int deck);
  [[nodiscard]] QString CueTip(int deck) const;
  void SendListening(int deck);
  QWidget* MakeCrossfader();
  void SendMixer(app::MovedByHand moved);
  /// What the automatic mixer does, and the crossfader where it has moved it.
  void ShowAutomix(const app::ListView& lists);
  /// The deck that is heard alone at this end of the crossfader.
  QLabel* MakeEnd(int deck);
  void ShowVolumes();
  void ShowCue(int deck, const app::WorkstationView& view);

  app::Decks& decks_;
  app::EqualiserStation& sliders_;
  app::OutputStation& outputs_;
  app::ListStation& lists_;
  MixerState& state_;
  Look look_;
  std::array<Channel, 2> channels_;
  Fader* master_;  ///< 0 is loudest
  QLabel* master_value_;
  QLabel* master_head_;
  QLabel* loudness_;
  MasterMeter* master_meter_;
  HeadphoneStrip* headphones_;
  SentEcho master_echo_;
  support::TimePoint now_{};
  Fader* crossfader_;
  AutomixLine* automix_;
  std::uint64_t crossfader_moves_;  ///< of the automatic mixer, shown so far
  EqGraph* equaliser_;
};

}  // namespace ui
