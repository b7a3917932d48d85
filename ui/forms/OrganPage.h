// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPointer>
#include <optional>

#include "lightorgan/Outputs.h"
#include "support/Clock.h"
#include "ui/widgets/Look.h"
#include "ui/widgets/Surface.h"

namespace app {
class OrganStation;
}  // namespace app

namespace ui {

struct BankDraft;
class BankEditor;
class MessageBoxes;
class OrganBoardPanel;
class OrganSidePanel;

/// The page of the light organ: the switched outputs, the dimmed ones, and what both share.
class OrganPage final : public Surface {
  Q_OBJECT

 public:
  OrganPage(app::OrganStation& organ, MessageBoxes& boxes, BankDraft& draft, const Look& look,
            QWidget* parent = nullptr);
  ~OrganPage() override;

  void Show(support::TimePoint now);
  /// Shows the editor with the work that waits there, whatever it showed before.
  void ShowDraft();

 private:
  void OpenEditor();
  /// How far the bank selectors go.
  void CountBanks();

  app::OrganStation& station_;
  MessageBoxes& boxes_;
  BankDraft& draft_;
  Look look_;
  OrganSidePanel* io_;
  OrganSidePanel* dac_;
  OrganBoardPanel* boards_;
  QPointer<BankEditor> editor_;
  std::optional<lightorgan::IoBoardSize> counted_;  ///< the boards whose banks were counted
};

}  // namespace ui
