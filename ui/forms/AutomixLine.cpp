// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/AutomixLine.h"

#include <QFrame>
#include <QLabel>
#include <QPushButton>

#include "app/lists/ListStation.h"
#include "ui/forms/AutomixChoices.h"
#include "ui/models/TimeText.h"
#include "ui/models/TrackText.h"
#include "ui/strings/ListWords.h"
#include "ui/widgets/ElidedLabel.h"
#include "ui/widgets/Kit.h"
#include "ui/widgets/Surface.h"

namespace ui {

AutomixLine::AutomixLine(const QString& prefix, app::ListStation& lists, Form form, const Look& look,
                         QWidget* parent)
    : QWidget(parent), lists_(lists), look_(look) {
  automix_ = Lamp(prefix + QStringLiteral("Automix"), look.say.Of(ListWord::Automix),
                  [this](bool on) { lists_.SetAutomix(on); });
  setup_ = MakeSetup(prefix);
  next_ = Sentence(prefix + QStringLiteral("AutomixNext"), look.skin.dim);
  in_ = Reading(prefix + QStringLiteral("AutomixIn"), Qt::AlignRight | Qt::AlignVCenter);
  in_->setToolTip(look.say.Tip(ListWord::AutomixIn));
  if (form == Form::Narrow) {
    FillColumn(*this, 0, 0.2, {Row(0.3, {automix_, setup_, Part::Room()}), Row(0.3, {{next_, 1}, in_})});
  } else {
    FillRow(*this, 0, 0.5, {automix_, setup_, {next_, 1}, in_});
  }
}

QPushButton* AutomixLine::MakeSetup(const QString& prefix) {
  const auto& say = look_.say;
  auto* box = new Surface(look_.skin.ground, this);
  box->SetStripe(look_.skin.dim);
  popup_ = box;
  popup_->setWindowFlag(Qt::Popup);
  Name(*popup_, prefix + QStringLiteral("AutomixSetupBox"), say(ListWord::AutomixSetup));
  choices_ =
      new AutomixChoices(prefix + QStringLiteral("Mixer"), lists_, AutomixChoices::Form::Stacked, look_);
  FillColumn(*popup_, 0.8, 0.5, {Heading(say(ListWord::Automix)), choices_});
  popup_->hide();
  return ToolButton(prefix + QStringLiteral("AutomixSetup"),
                    {say(ListWord::AutomixSetup) + QStringLiteral(" ▾"), say.Tip(ListWord::AutomixSetup),
                     say.Tip(ListWord::AutomixSetup)},
                    [this] { PopUpSetup(); });
}

void AutomixLine::PopUpSetup() {
  ShowBelow(*popup_, *setup_);
  choices_->setFocus();
}

void AutomixLine::Show(const app::ListView& lists) {
  if (!automix_->isDown()) automix_->setChecked(lists.automix.on);
  next_->Show(NextText(lists));
  SetText(*in_, InText(lists));
  if (popup_->isVisible()) choices_->Show(lists.automix);
}

QString AutomixLine::NextText(const app::ListView& lists) const {
  const auto& say = look_.say;
  if (!lists.automix.on) return {};
  if (!lists.coming.filename.empty())
    return say(ListWord::AutomixNext).arg(TitleText(lists.coming.title, lists.coming.filename));
  return lists.waits ? say(ListWord::AutomixWaits) : lists.at_the_end ? say(ListWord::AutomixEnd) : QString();
}

QString AutomixLine::InText(const app::ListView& lists) const {
  if (!lists.automix.on || !lists.coming.in) return {};
  if (lists.coming.in->count() == 0) return look_.say(ListWord::AutomixNow);
  return look_.say(ListWord::AutomixIn).arg(MinutesText(*lists.coming.in));
}

}  // namespace ui
