// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "app/sound/DeckView.h"
#include "ui/models/SentEcho.h"
#include "ui/widgets/Look.h"
#include "ui/widgets/Surface.h"

class QLabel;
class QPushButton;

namespace app {
class EffectStation;
}

namespace ui {

class Knob;
class QuietCombo;

/// One effect of a deck: its switch, its knobs, its lock to the beat, and a pad that holds it on.
class EffectUnit final : public Surface {
  Q_OBJECT

 public:
  EffectUnit(int deck, decks::EffectKind kind, app::EffectStation& effects, const Look& look,
             QWidget* parent = nullptr);
  ~EffectUnit() override;

  void Show(const app::DeckView& view, support::TimePoint now);
  /// How much of its row it is to have.
  [[nodiscard]] int Share() const;
  /// Where the chain goes through it, from its top.
  [[nodiscard]] int Middle() const;

 protected:
  void hideEvent(QHideEvent* event) override;

 private:
  struct Dial {
    app::EffectControl control;
    Knob* knob = nullptr;
    QLabel* value = nullptr;
    SentEcho echo;
  };

  [[nodiscard]] QWidget* MakeHead();
  [[nodiscard]] QWidget* MakeDial(std::size_t place);
  [[nodiscard]] QuietCombo* MakeLock();
  [[nodiscard]] QPushButton* MakePad();
  void Turn(std::size_t place, int slider);
  void Hold(bool held);
  void Tell(Dial& dial, const QString& meaning);
  /// What the knob that the beat replaces means now.
  [[nodiscard]] QString MeaningOf(const Dial& dial, const app::DeckView& view, bool& locked) const;

  const int deck_;
  const decks::EffectKind kind_;
  app::EffectStation& effects_;
  Look look_;
  QString name_;
  support::TimePoint now_{};
  QPushButton* lamp_ = nullptr;
  std::vector<Dial> dials_;
  QuietCombo* lock_ = nullptr;
  QPushButton* pad_ = nullptr;
  bool held_ = false;
};

}  // namespace ui
