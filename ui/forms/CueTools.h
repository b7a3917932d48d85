// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <array>
#include <functional>

#include "app/sound/DeckView.h"
#include "music/Cues.h"
#include "ui/models/KeyMap.h"
#include "ui/strings/CueWords.h"
#include "ui/widgets/Look.h"

class QPushButton;

namespace app {
class Deck;
}  // namespace app

namespace ui {

/// A deck's cue, eight pads, and what loops and jumps: two rows, or folded into one that shows either of
/// them. Keys do the same, whatever form the deck has.
class CueTools final : public QWidget {
  Q_OBJECT

 public:
  CueTools(app::Deck& deck, const Look& look, QWidget* parent = nullptr);

  void Show(const app::DeckView& view);
  void Fold(bool folds);
  /// Lines of the window that folding saves, or has saved.
  [[nodiscard]] int Foldable() const;
  [[nodiscard]] bool Folded() const { return folded_; }
  /// What a key or a button does; what lasts as long as it is held, until it is let go.
  void Do(CueAct act, bool down);
  void Pad(int slot, bool down, bool deletes);
  /// The key is taken; what was held is let go whatever the modifiers are then.
  bool TakeKey(int key, Qt::KeyboardModifiers modifiers, bool down, bool repeated);
  /// Nothing is held any more.
  void LetGo();

 private:
  QPushButton* Make(const char* name, CueWord caption, const QString& spoken, CueWord tip, CueAct act,
                    const char* kind);
  QWidget* MakePads();
  QWidget* MakeLoops();
  void ShowRows();
  void AskAtPad(int slot, const QPoint& place);
  void AddMenu(QPushButton& button, CueWord less, std::function<void(int)> chosen, CueWord more);
  void ShowPads(const app::CuesView& cues);
  [[nodiscard]] bool Loaded() const;
  [[nodiscard]] QString CallPad(int slot) const;

  static constexpr int kNothingHeld = -1, kCueHeld = music::kHotCues;

  const int deck_;
  app::Deck& commands_;
  Look look_;
  app::DeckView view_;
  QPushButton* cue_ = nullptr;
  QWidget* pad_row_ = nullptr;
  QWidget* loop_row_ = nullptr;
  QPushButton* other_ = nullptr;  ///< there while it is folded
  bool folded_ = false;
  bool shows_loops_ = false;  ///< while it is folded
  std::array<QPushButton*, music::kHotCues> pads_{};
  std::array<int, music::kHotCues> colours_{};
  QPushButton* in_ = nullptr;
  QPushButton* out_ = nullptr;
  QPushButton* halve_ = nullptr;
  QPushButton* loop_ = nullptr;
  QPushButton* double_ = nullptr;
  QPushButton* again_ = nullptr;
  QPushButton* back_ = nullptr;
  QPushButton* on_ = nullptr;
  QPushButton* quantise_ = nullptr;
  QPushButton* slip_ = nullptr;
  int held_ = kNothingHeld;
  int held_key_ = 0;
};

}  // namespace ui
