// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/DraftOffers.h"

#include <QPushButton>
#include <utility>

#include "ui/forms/DMX.h"
#include "ui/forms/Editors.h"
#include "ui/forms/Library.h"
#include "ui/forms/MessageBox.h"
#include "ui/strings/Decode.h"
#include "ui/strings/EveningWords.h"

namespace ui {
namespace {

using lightorgan::IoBoardSize;
using lightorgan::Side;
using Kind = app::Drafts::Kind;

EveningWord QuestionOf(Kind kind) {
  return kind == Kind::Fixture ? EveningWord::DraftFixture
         : kind == Kind::Show  ? EveningWord::DraftShow
                               : EveningWord::DraftBanks;
}

}  // namespace

DraftOffers::DraftOffers(app::Workstation& workstation, const support::Clock& clock, Editors& editors,
                         BankDraft& banks, std::function<void()> open_banks)
    : workstation_(workstation),
      clock_(clock),
      editors_(editors),
      banks_(banks),
      open_banks_(std::move(open_banks)) {}

void DraftOffers::Begin(QWidget& owner, std::function<const Strings&()> say) {
  workstation_.Drafts().Find(
      [this, &owner, say = std::move(say)](const app::Drafts::Draft& draft) { Offer(draft, owner, say()); });
}

void DraftOffers::Offer(const app::Drafts::Draft& draft, QWidget& owner, const Strings& say) {
  const QString name = QStringLiteral("DraftBox%1").arg(static_cast<int>(draft.kind));
  const std::string file = PathOf(Decode(draft.origin)).filename().string();
  auto* box = new MessageBox(name, say(QuestionOf(draft.kind)).arg(Decode(file)).simplified(), owner);
  QObject::connect(box->AddButton(name + QStringLiteral("No"), say(EveningWord::DraftDrop)),
                   &QPushButton::clicked, &owner, [this, kind = draft.kind] {
                     workstation_.Drafts().Answered(kind);
                     workstation_.Drafts().Drop(kind);
                   });
  QObject::connect(box->AddButton(name + QStringLiteral("Yes"), say(EveningWord::DraftOpen)),
                   &QPushButton::clicked, &owner, [this, draft] {
                     workstation_.Drafts().Answered(draft.kind);
                     Restore(draft);
                   });
  box->ShowOverLists(owner);
}

void DraftOffers::Restore(const app::Drafts::Draft& draft) {
  switch (draft.kind) {
    case Kind::Fixture:
      editors_.OpenLibrary();
      return editors_.FixtureEditor()->Restore(draft);
    case Kind::Show:
      editors_.OpenShowEditor();
      return editors_.ShowEditor()->Restore(draft);
    case Kind::Banks:
      return RestoreBanks(draft);
  }
}

void DraftOffers::RestoreBanks(const app::Drafts::Draft& draft) {
  if (banks_.book.Changed()) return open_banks_();  // a hand was faster, and its work goes before
  for (const Side side : {Side::Io, Side::Dac}) {
    for (const IoBoardSize size : {IoBoardSize::One, IoBoardSize::Two}) {
      if (lightorgan::BankFileName(side, size) != draft.origin) continue;
      banks_.book = lightorgan::BankBook(side, size, lightorgan::ParseBanks(draft.text));
      banks_.book.MarkChanged();
    }
  }
  open_banks_();
}

void DraftOffers::KeepBanks() {
  constexpr auto kEvery = std::chrono::seconds(1);
  const lightorgan::BankBook& book = banks_.book;
  if (!book.Changed()) {
    if (std::exchange(has_draft_, false)) workstation_.Drafts().Drop(Kind::Banks);
    return;
  }
  const support::TimePoint now = clock_.Now();
  if (now < next_draft_ || (has_draft_ && drafted_ == book.Banks())) return;
  const std::string origin(lightorgan::BankFileName(book.WhichSide(), book.Size()));
  if (!workstation_.Drafts().Keep(Kind::Banks, origin,
                                  [banks = book.Banks()] { return lightorgan::BankText(banks); })) {
    return;
  }
  drafted_ = book.Banks();
  has_draft_ = true;
  next_draft_ = now + kEvery;
}

}  // namespace ui
