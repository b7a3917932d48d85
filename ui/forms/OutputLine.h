// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <cstdint>

#include "app/lights/LightStation.h"
#include "ui/widgets/Look.h"

class QLabel;
class QPushButton;

namespace ui {

class ElidedLabel;
class MessageBoxes;
class NetChoices;

/// The switch of the DMX output and how the box fares; blackout and strobe guard.
class OutputLine final : public QWidget {
  Q_OBJECT

 public:
  OutputLine(app::LightStation& lights, MessageBoxes& boxes, const Look& look, QWidget* parent = nullptr);

  void Show(const app::LightView& view, support::TimePoint now);

 private:
  void AskToLiftGuard();
  void Measure(const dmx::DmxInterfaceStatus& status, support::TimePoint now);
  [[nodiscard]] QString StatusText(const app::LightView& view) const;
  void ShowBox(const app::LightView& view);

  app::LightStation& lights_;
  MessageBoxes& boxes_;
  Look look_;
  QPushButton* output_;
  NetChoices* net_ = nullptr;  ///< null where nothing goes over a network
  QLabel* box_;
  ElidedLabel* status_;
  QPushButton* blackout_;
  QPushButton* guard_;
  std::uint64_t frames_ = 0;  ///< when the last second began
  support::TimePoint second_{};
  int rate_ = 0;  ///< frames of the last second; 0: not known yet
};

}  // namespace ui
