// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <functional>
#include <optional>
#include <vector>

#include "app/Workstation.h"
#include "app/lights/Drafts.h"
#include "support/Clock.h"
#include "ui/models/BankModel.h"
#include "ui/strings/Strings.h"

class QWidget;

namespace ui {

class Editors;

/// Offers what was not saved when the last run fell, and keeps a draft of the pattern banks; the editors
/// keep their own.
class DraftOffers {
 public:
  /// open_banks: shows the editor of the banks, made anew for the file that they are of.
  DraftOffers(app::Workstation& workstation, const support::Clock& clock, Editors& editors, BankDraft& banks,
              std::function<void()> open_banks);

  /// Looks for drafts and asks for each, in a box over the owner. A box that is closed without an answer
  /// leaves its draft to the next start. say: whatever is spoken then, as long as this is there.
  void Begin(QWidget& owner, std::function<const Strings&()> say);
  /// With the main window's frame, and before it closes.
  void KeepBanks();

 private:
  void Offer(const app::Drafts::Draft& draft);
  struct Question {
    QString name, text, no, yes;
  };
  /// answer: without one where the box is closed otherwise.
  void Ask(const Question& question, std::function<void(std::optional<bool> yes)> answer);
  void Restore(const app::Drafts::Draft& draft);
  void RestoreBanks(const app::Drafts::Draft& draft);
  void AskForBanks(const app::Drafts::Draft& draft);

  app::Workstation& workstation_;
  const support::Clock& clock_;
  Editors& editors_;
  BankDraft& banks_;
  std::function<void()> open_banks_;
  QWidget* owner_ = nullptr;
  std::function<const Strings&()> say_;
  std::vector<lightorgan::Bank> drafted_;
  bool has_draft_ = false;
  support::TimePoint next_draft_{};
};

}  // namespace ui
