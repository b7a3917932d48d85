// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <vector>

#include "app/OutputView.h"
#include "app/Workstation.h"
#include "app/ports/SoundPriority.h"
#include "support/Clock.h"
#include "ui/widgets/Look.h"
#include "ui/widgets/Surface.h"

class QGridLayout;
class QLabel;
class QVBoxLayout;

namespace app {
struct WorkstationView;
}

namespace ui {

class ApplyPanel;
class MicrophonePanel;
class QuietCombo;

/// Where the decks and the headphones play, what is done to the collection, and how the window looks and
/// speaks.
class SettingsPage final : public Surface {
  Q_OBJECT

 public:
  /// Choices of the window itself; what they do is the main window's.
  struct Choices {
    Strings::Language language;
    Skin::Name skin;
    Skin::Density density;
  };

  SettingsPage(app::Workstation& workstation, Choices choices, const Look& look, QWidget* parent = nullptr);

  void Show(const app::WorkstationView& view, support::TimePoint now);

 Q_SIGNALS:
  void ChoicesChanged(ui::SettingsPage::Choices choices);
  /// A table may be another one.
  void Scanned();

 private:
  struct Output {
    QuietCombo* device;
    QuietCombo* pair;
    app::OutputView shown{-1, -1};
    bool as_deck1 = false;
  };

  QGridLayout* MakeOutputs();
  QGridLayout* MakeWindow(Choices choices);
  void MakeOutput(int output, QGridLayout& grid);
  void FillDevices(int output, int present);
  void Send(int output);
  void ShowOutput(int output, const app::OutputView& view);
  void ShowPriority(app::SoundPriority::Level level);
  /// What output 2 shows while it goes with deck 1: no device's number.
  static constexpr int kAsDeck1 = -1;

  app::Workstation& workstation_;
  Look look_;
  std::array<Output, 3> outputs_{};
  QLabel* priority_ = nullptr;
  QLabel* shared_ = nullptr;  ///< there only while the headphones are heard by all
  ApplyPanel* apply_ = nullptr;
  MicrophonePanel* microphone_ = nullptr;
  QuietCombo* language_ = nullptr;
  QuietCombo* boards_ = nullptr;  ///< how many
  QuietCombo* skin_ = nullptr;
  QuietCombo* density_ = nullptr;
};

}  // namespace ui
