// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>

#include "decks/EqPresets.h"
#include "ui/widgets/Look.h"
#include "ui/widgets/Surface.h"

class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QVBoxLayout;

namespace app {
class EqualiserStation;
struct WorkstationView;
}  // namespace app

namespace ui {

class ElidedLabel;
class EqGraph;
class Fader;
class MessageBoxes;
class QuietCombo;

/// The equaliser at full size: the curve over its ten sliders, and the presets; beside them how decks are
/// mixed.
class EqualiserPage final : public Surface {
  Q_OBJECT

 public:
  EqualiserPage(app::EqualiserStation& sliders, MessageBoxes& boxes, QWidget* mixing, const Look& look,
                QWidget* parent = nullptr);

  void Show(const app::WorkstationView& view);

 private:
  struct Band {
    Fader* slider;
    QLabel* value;
  };

  QVBoxLayout* MakeBands();
  QVBoxLayout* MakePresets();
  Band MakeBand(int slider);
  [[nodiscard]] decks::EqBank Bank() const;
  [[nodiscard]] std::string ChosenName() const;

  void Apply(int preset);
  void Save();
  void SaveUnder(const std::string& name);
  void Delete();
  void Flatten();
  void Resend();
  void Tell(const support::Result<void>& result, const QString& success);
  /// When the presets are other ones.
  void ShowPresets();
  void ShowChoice();

  app::EqualiserStation& sliders_;
  MessageBoxes& boxes_;
  Look look_;
  EqGraph* graph_;
  std::array<Band, 10> bands_;
  QuietCombo* bank_;
  QuietCombo* select_;
  QListWidget* values_;
  QLabel* hint_;
  QLineEdit* name_;
  QPushButton* delete_;
  ElidedLabel* message_;
  std::vector<std::string> shown_;  ///< names and values as listed
};

}  // namespace ui
