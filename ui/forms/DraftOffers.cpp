// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/DraftOffers.h"

#include <QPushButton>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

#include "ui/forms/DMX.h"
#include "ui/forms/Editors.h"
#include "ui/forms/Library.h"
#include "ui/forms/MessageBox.h"
#include "ui/strings/BankWords.h"
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

std::optional<std::pair<Side, IoBoardSize>> BanksOf(std::string_view origin) {
  for (const Side side : {Side::Io, Side::Dac}) {
    for (const IoBoardSize size : {IoBoardSize::One, IoBoardSize::Two}) {
      if (lightorgan::BankFileName(side, size) == origin) return std::pair(side, size);
    }
  }
  return std::nullopt;
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
  owner_ = &owner;
  say_ = std::move(say);
  workstation_.Drafts().Find([this](const app::Drafts::Draft& draft) {
    if (draft.kind == Kind::Banks && !BanksOf(draft.origin)) return workstation_.Drafts().Refused(draft);
    Offer(draft);
  });
}

void DraftOffers::Offer(const app::Drafts::Draft& draft) {
  const Strings& say = say_();
  const QString name = QStringLiteral("DraftBox%1%2")
                           .arg(static_cast<int>(draft.kind))
                           .arg(draft.aside ? QStringLiteral("Aside") : QString());
  const std::string file = PathOf(Decode(draft.origin)).filename().string();
  const QString question = say(QuestionOf(draft.kind)).arg(Decode(file)).simplified();
  Ask({name, question, say(EveningWord::DraftDrop), say(EveningWord::DraftOpen)},
      [this, draft](std::optional<bool> open) {
        if (!open) return workstation_.Drafts().SetAside(draft);
        if (!*open) return workstation_.Drafts().Refused(draft);
        Restore(draft);
      });
}

void DraftOffers::Ask(const Question& question, std::function<void(std::optional<bool> yes)> answer) {
  auto* box = new MessageBox(question.name, question.text, *owner_);
  const auto said = std::make_shared<std::optional<bool>>();
  const QPushButton* no = box->AddButton(question.name + QStringLiteral("No"), question.no);
  const QPushButton* yes = box->AddButton(question.name + QStringLiteral("Yes"), question.yes);
  QObject::connect(no, &QPushButton::clicked, owner_, [said] { *said = false; });
  QObject::connect(yes, &QPushButton::clicked, owner_, [said] { *said = true; });
  // However it is closed, but not when the window goes; later, because a button closes the box first.
  QObject::connect(
      box, &QDialog::finished, owner_, [said, answer = std::move(answer)] { answer(*said); },
      Qt::QueuedConnection);
  box->ShowOverLists(*owner_);
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
  // A hand was faster: whoever made that says whether it goes.
  if (banks_.book.Changed()) return AskForBanks(draft);
  const auto file = BanksOf(draft.origin);
  if (!file) return;
  banks_.book = lightorgan::BankBook(file->first, file->second, lightorgan::ParseBanks(draft.text));
  banks_.book.MarkChanged();
  workstation_.Drafts().Restored(draft);
  open_banks_();
}

void DraftOffers::AskForBanks(const app::Drafts::Draft& draft) {
  const Strings& say = say_();
  Ask({QStringLiteral("DraftOverBanks"), say(BankWord::BankAskLeave), say(Say::DialogCancel),
       say(BankWord::BankLeave)},
      [this, draft](std::optional<bool> leave) {
        if (!leave.value_or(false)) return workstation_.Drafts().SetAside(draft);
        banks_.book.Kept();
        RestoreBanks(draft);
      });
}

void DraftOffers::KeepBanks() {
  constexpr auto kEvery = std::chrono::seconds(1);
  const lightorgan::BankBook& book = banks_.book;
  if (!book.Changed()) {
    if (std::exchange(has_draft_, false)) workstation_.Drafts().Drop(Kind::Banks);
    return;
  }
  const support::TimePoint now = clock_.Now();
  const bool kept = has_draft_ && !workstation_.Drafts().Failed(Kind::Banks);
  if (now < next_draft_ || (kept && drafted_ == book.Banks())) return;
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
