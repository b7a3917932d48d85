// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPointer>
#include <QWidget>
#include <vector>

#include "app/settings/Preferences.h"
#include "ui/widgets/Look.h"

class QDialog;
class QGridLayout;

namespace support {
class Settings;
}  // namespace support

namespace ui {

class ColourButton;
class QuietCombo;

/// The colours of the light console's channels, 16 or 32, and the button that keeps them.
class ColourPanel final : public QWidget {
  Q_OBJECT

 public:
  ColourPanel(support::Settings& settings, const Look& look, QWidget* parent = nullptr);

  [[nodiscard]] std::vector<app::StoredColour> Colours() const;

 Q_SIGNALS:
  /// The colours are to be kept as they are shown.
  void KeepWanted();

 private:
  void MakeButtons();
  void ChangeSize(int channels);
  void AskForColour(ColourButton& button);

  support::Settings& settings_;
  Look look_;
  QuietCombo* size_;
  QGridLayout* grid_;
  std::vector<ColourButton*> buttons_;
  QPointer<QDialog> dialog_;
};

}  // namespace ui
