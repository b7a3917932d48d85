// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>

#include "app/Notice.h"
#include "decks/ports/SoundControl.h"
#include "support/Clock.h"
#include "ui/widgets/Look.h"
#include "ui/widgets/Surface.h"

class QLabel;
class QPushButton;

namespace app {

struct WorkstationView;
struct LightView;
struct RecordingView;
}  // namespace app

namespace ui {

class ElidedLabel;

/// What was read of the workstation's notices; it outlives the line, which a change of language makes anew.
struct NoticesRead {
  std::uint64_t seen = 0;    ///< warnings up to this number
  std::uint64_t passed = 0;  ///< news up to this number
};

/// The line on top: time of day, outputs, the newest message, health of the sound.
///
/// News is bright for a while, then dim, then gone. Warnings stand until they were seen, which a click or the
/// button beside them says, or until they are no longer true; news that comes meanwhile is shown before them
/// for a few seconds.
class StatusLine final : public Surface {
  Q_OBJECT

 public:
  /// microphone: its button and level, which the line takes.
  StatusLine(NoticesRead& read, QWidget* microphone, const Look& look, QWidget* parent = nullptr);

  void Show(const app::WorkstationView& view, const std::vector<std::string>& devices,
            support::TimePoint now);
  /// Whether the lamps are reached, while the DMX output is on.
  void ShowLights(const app::LightView& lights);
  /// The button that cannot be missed while something is recorded.
  void ShowRecording(const app::RecordingView& recording);
  /// News of the window's own; the newest is shown, whoever has it.
  void Tell(const QString& message);
  /// What the window told last is no longer true.
  void Untell();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 Q_SIGNALS:
  /// The output shall go back to its own device.
  void ReturnWanted(int output);
  void RecordPressed();

 private:
  QPushButton* MakeReturn(int output);
  void ShowHealth(const decks::EngineHealth& health, support::TimePoint now);
  /// Both decks have one label while they play on one output.
  void ShowOutputs(const app::WorkstationView& view, const std::vector<std::string>& devices);
  void WarnOfHeadphones(const app::WorkstationView& view);
  void TakeNews(const std::vector<app::Notice>& notices, support::TimePoint now);
  void ShowMessage(const std::vector<app::Notice>& notices, support::TimePoint now);
  void MarkSeen();
  /// For the message, of whose line it gets this share at most.
  void MakeRoom(double share);
  /// At least, the gaps between them included; without the two figures.
  [[nodiscard]] int TakenByOthers() const;

  NoticesRead& read_;
  Look look_;
  QLabel* clock_;
  QPushButton* record_;
  std::array<ElidedLabel*, 3> outputs_;
  std::array<QPushButton*, 3> returns_;  ///< there only while they can do something
  ElidedLabel* message_;
  QLabel* unsaved_;    ///< there only while something is not on the disk
  QPushButton* seen_;  ///< there only while a warning is shown
  QLabel* lights_;
  QLabel* load_;  ///< it and the next only where there is room, or while they matter
  QLabel* late_;
  QString news_;                 ///< empty when it has passed
  std::uint64_t news_from_ = 0;  ///< number of the notice that it is; 0: the window's own
  bool fresh_ = false;
  support::TimePoint told_at_{};
  std::uint64_t newest_shown_ = 0;  ///< of the warnings
  std::uint64_t late_blocks_ = 0;
  support::TimePoint late_at_{};
  bool was_late_ = false;
  bool high_load_ = false;
};

}  // namespace ui
