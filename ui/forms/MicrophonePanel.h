// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <functional>
#include <optional>
#include <vector>

#include "decks/ports/Microphone.h"
#include "support/Clock.h"
#include "ui/strings/MicrophoneWords.h"
#include "ui/widgets/Look.h"

class QCheckBox;
class QLabel;
class QLayout;
class QPushButton;

namespace app {
class MicrophoneStation;
struct MicrophoneView;
}  // namespace app

namespace ui {

class Knob;
class LevelMeter;
class QuietCombo;

/// How the microphone is set up: its input, what is done to the voice, and how the music makes way for it.
///
/// A hand's choice acts and is kept at once; what is shown follows the view again as soon as the hand rests.
class MicrophonePanel final : public QWidget {
  Q_OBJECT

 public:
  MicrophonePanel(app::MicrophoneStation& station, const Look& look, QWidget* parent = nullptr);
  ~MicrophonePanel() override;

  void Show(support::TimePoint now);

 protected:
  void hideEvent(QHideEvent* event) override;

 private:
  /// A knob, and what it turns at, in steps.
  struct Dial {
    Knob* knob;
    QLabel* value;
    std::function<int()> read;
    std::function<QString()> text;
  };
  struct Range {
    int lowest, highest, rest;
  };
  using Write = std::function<void(int)>;
  using Text = std::function<QString()>;

  QLayout* MakeInput();
  QLayout* MakeVoice();
  QLayout* MakeDuck();
  /// Of one of the numbers of the voice, in whole units.
  Dial& AddVoice(const char* name, MicrophoneWord word, Range range, float decks::VoiceSettings::*number,
                 Text text);
  Dial& AddTime(const char* name, MicrophoneWord word, Range range,
                std::chrono::milliseconds decks::DuckSettings::*time, int step);
  Dial& AddDial(const char* name, MicrophoneWord word, Range range, std::function<int()> read, Write write,
                Text text);
  [[nodiscard]] QLayout* Cell(const Dial& dial, MicrophoneWord word) const;
  void SendVoice();
  void SendDuck();
  void Touch() { touched_ = now_; }
  void ShowInputs(const app::MicrophoneView& view);
  void ShowChannels(const app::MicrophoneView& view);
  void ShowChoices(const app::MicrophoneView& view);
  [[nodiscard]] QString StateText(const app::MicrophoneView& view) const;

  app::MicrophoneStation& station_;
  Look look_;
  decks::VoiceSettings voice_;
  decks::DuckSettings duck_;
  support::TimePoint now_{};
  std::optional<support::TimePoint> touched_;  ///< by a hand
  bool looked_ = false;
  QuietCombo* device_ = nullptr;
  QuietCombo* channel_ = nullptr;
  QPushButton* check_ = nullptr;
  QCheckBox* swift_ = nullptr;
  QLabel* state_ = nullptr;
  QLabel* turned_down_ = nullptr;
  LevelMeter* meter_ = nullptr;
  QuietCombo* gate_ = nullptr;
  Knob* gate_level_ = nullptr;
  QCheckBox* compressor_ = nullptr;
  QCheckBox* ducks_ = nullptr;
  std::vector<Knob*> of_compressor_, of_duck_;
  std::vector<Dial> dials_;
};

}  // namespace ui
