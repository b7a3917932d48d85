// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>

#include "app/Workstation.h"
#include "ui/widgets/Look.h"
#include "ui/widgets/Surface.h"

class QLabel;
class QPushButton;

namespace ui {

class ElidedLabel;

/// The line on top: time of day, outputs, the newest message, health of the sound.
class StatusLine final : public Surface {
  Q_OBJECT

 public:
  explicit StatusLine(const Look& look, QWidget* parent = nullptr);

  void Show(const app::WorkstationView& view, const std::vector<std::string>& devices,
            support::TimePoint now);
  /// Whether the lamps are reached, while the DMX output is on.
  void ShowLights(const app::LightView& lights);
  /// A message of the window's own; the newest one is shown, whoever has it.
  void Tell(const QString& message);
  [[nodiscard]] QString Message() const;

 Q_SIGNALS:
  /// The output shall go back to its own device.
  void ReturnWanted(int output);

 private:
  QPushButton* MakeReturn(int output);
  void ShowHealth(const decks::EngineHealth& health, support::TimePoint now);

  Look look_;
  QLabel* clock_;
  std::array<ElidedLabel*, 3> outputs_;
  std::array<QPushButton*, 3> returns_;  ///< there only while they can do something
  ElidedLabel* message_;
  QLabel* unsaved_;  ///< there only while something is not on the disk
  QLabel* lights_;
  QLabel* load_;
  QLabel* late_;
  std::string notice_;
  bool fresh_ = false;
  support::TimePoint told_at_{};
  std::uint64_t late_blocks_ = 0;
  support::TimePoint late_at_{};
  bool was_late_ = false;
};

}  // namespace ui
