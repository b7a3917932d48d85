// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/OrganPage.h"

#include <QHBoxLayout>
#include <algorithm>

#include "app/lights/OrganStation.h"
#include "ui/forms/BankEditor.h"
#include "ui/forms/OrganBoardPanel.h"
#include "ui/forms/OrganSidePanel.h"
#include "ui/widgets/Kit.h"

namespace ui {

using lightorgan::Side;

OrganPage::OrganPage(app::OrganStation& organ, MessageBoxes& boxes, BankDraft& draft, const Look& look,
                     QWidget* parent)
    : Surface(look.skin.panel, parent), station_(organ), boxes_(boxes), draft_(draft), look_(look) {
  Name(*this, "OrganPage", look.say(Say::Organ));
  io_ = new OrganSidePanel(Side::Io, station_, look);
  dac_ = new OrganSidePanel(Side::Dac, station_, look);
  boards_ = new OrganBoardPanel(station_, boxes, look);
  connect(boards_, &OrganBoardPanel::EditorWanted, this, &OrganPage::OpenEditor);
  FillRow(*this, 0.8, 1.6, {{io_, 11}, {dac_, 10}, {boards_, 6}});
}

OrganPage::~OrganPage() {
  delete editor_;
}

void OrganPage::OpenEditor() {
  if (editor_.isNull()) {
    const auto& lamps = station_.View().lamps;
    editor_ = new BankEditor(station_, boxes_, draft_, look_, lamps.size, this);
    connect(editor_, &BankEditor::Saved, this, &OrganPage::CountBanks);
  }
  editor_->Open();
}

// Made anew, it asks the draft which file it is of.
void OrganPage::ShowDraft() {
  delete editor_;
  OpenEditor();
}

void OrganPage::CountBanks() {
  const lightorgan::IoBoardSize size = station_.View().lamps.size;
  for (const Side side : {Side::Io, Side::Dac}) {
    station_.ReadBanks(side, size, [page = QPointer(this), side](const auto& banks) {
      if (page.isNull() || !banks) return;
      int highest = 0;
      for (const lightorgan::Bank& bank : banks.Value()) highest = std::max(highest, bank.number);
      (side == Side::Io ? page->io_ : page->dac_)->SetHighestBank(highest);
    });
  }
}

void OrganPage::Show(support::TimePoint now) {
  const app::OrganView& view = station_.View();
  if (counted_ != view.lamps.size) {
    counted_ = view.lamps.size;
    CountBanks();
  }
  if (editor_.isNull() && draft_.open) OpenEditor();  // the window was made anew
  if (!editor_.isNull()) editor_->Show(view);
  if (!isVisible()) return;
  io_->Show(view, now);
  dac_->Show(view, now);
  boards_->Show(view, now);
}

}  // namespace ui
