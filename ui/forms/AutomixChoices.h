// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

#include "app/lists/ListStation.h"
#include "ui/widgets/Look.h"

class QCheckBox;

namespace ui {

class QuietCombo;

/// How the automatic mixer mixes: where the next track begins, how long the crossfader takes, whether tempos
/// and levels are matched and how far. Several of them may be there at a time.
class AutomixChoices final : public QWidget {
  Q_OBJECT

 public:
  /// Object names begin with the prefix. Stacked: one choice below the other, each with a caption.
  enum class Form { Lines, Stacked };
  AutomixChoices(const QString& prefix, app::ListStation& lists, Form form, const Look& look,
                 QWidget* parent = nullptr);

  /// Takes over what was chosen elsewhere.
  void Show(const app::MixWishes& wishes);

 private:
  [[nodiscard]] QuietCombo* MakePlace();
  [[nodiscard]] QuietCombo* MakeNumbers(const char* name, AnyWord word, const QString& text,
                                        void (app::ListStation::*choose)(int));
  [[nodiscard]] QCheckBox* MakeMatch(const char* name, AnyWord caption,
                                     void (app::ListStation::*choose)(bool));

  const QString prefix_;
  app::ListStation& lists_;
  Look look_;
  app::MixWishes shown_;
  QuietCombo* place_;
  QuietCombo* time_;
  QCheckBox* tempo_;
  QuietCombo* tempo_reach_;
  QCheckBox* gain_;
  QuietCombo* gain_range_;
};

}  // namespace ui
