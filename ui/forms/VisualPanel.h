// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <optional>

#include "app/ports/HeardSound.h"
#include "support/Clock.h"
#include "ui/widgets/Look.h"

namespace app {
class Visuals;
struct WorkstationView;
}  // namespace app

namespace support {
class Settings;
}  // namespace support

namespace ui {

class QuietCombo;
class VisualSurface;

/// The visualiser that was chosen, beside the list of all of them, at the rate of its own.
class VisualPanel final : public QWidget {
  Q_OBJECT

 public:
  VisualPanel(app::Visuals& visuals, support::Settings& settings, const Look& look,
              QWidget* parent = nullptr);

  void Show(const app::WorkstationView& view, support::TimePoint now);

 private:
  void Fill();
  void Choose();
  void FillRates();
  /// Without a picture its place is empty, and how often it is drawn is nothing to choose.
  void ShowWhatActs();

  app::Visuals& visuals_;
  support::Settings& settings_;
  const Look look_;
  QuietCombo* names_;
  QuietCombo* rates_;  ///< frames a second
  VisualSurface* surface_;
  std::string chosen_;
  app::HeardFrom colour_of_ = app::HeardFrom::Nothing;  ///< what was heard last
  std::optional<support::TimePoint> next_;
};

}  // namespace ui
