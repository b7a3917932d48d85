// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/LiveColumn.h"

#include <QPushButton>
#include <QSignalBlocker>
#include <algorithm>
#include <cmath>

#include "ui/strings/LiveWords.h"
#include "ui/widgets/Fader.h"
#include "ui/widgets/Kit.h"

namespace ui {
namespace {

constexpr int kFull = 100;

LiveWord WordOf(app::LiveFixture::Owner owner) {
  constexpr LiveWord kOwners[] = {LiveWord::OwnerNobody, LiveWord::OwnerShow, LiveWord::OwnerEffect,
                                  LiveWord::OwnerHand, LiveWord::OwnerHold};
  return kOwners[static_cast<std::size_t>(owner)];
}

}  // namespace

LiveColumn::LiveColumn(const Group& group, const QString& key, const Look& look, QWidget* parent)
    : QWidget(parent), group_(group), look_(look) {
  const auto& say = look.say;
  setObjectName(key);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
  const QString gone = group.missing > 0 ? say.Count(LiveWord::MembersGone, group.missing) : QString();
  name_ = Lamp(key + QStringLiteral("Name"),
               {{},
                say(LiveWord::GroupChoice).arg(group.name),
                gone.isEmpty() ? say.Tip(LiveWord::GroupChoice) : gone},
               [this](bool) { Q_EMIT Chosen(); });
  SetHeightEm(*name_, kButtonEms);
  level_ = new Fader(Qt::Vertical, look.skin, look.skin.decks[1]);
  level_->setRange(0, kFull);
  level_->setPageStep(10);
  Name(*level_, key + QStringLiteral("Level"), say(LiveWord::GroupLevel).arg(group.name),
       say.Tip(LiveWord::GroupLevel));
  connect(level_, &QSlider::valueChanged, this,
          [this](int value) { Q_EMIT LightWanted(double(value) / kFull); });
  on_ = Lamp(key + QStringLiteral("On"),
             {say(LiveWord::GroupOn), group.name + QLatin1Char(' ') + say(LiveWord::GroupOn),
              say.Tip(LiveWord::GroupOn)},
             [this](bool on) {
               if (!on) last_ = std::max(double(level_->value()) / kFull, 0.05);
               Q_EMIT LightWanted(on ? last_ : 0);
             });
  SetHeightEm(*on_, kButtonEms);
  owner_ = PlainButton(
      key + QStringLiteral("Owner"),
      {say(LiveWord::OwnerNobody), say(LiveWord::GiveBack).arg(group.name), say.Tip(LiveWord::GiveBack)},
      [this] { Q_EMIT LetGoWanted(); });
  SetHeightEm(*owner_, kButtonEms);
  FillColumn(*this, 0, 0.25, {name_, {level_, 1, Qt::AlignHCenter}, on_, owner_});
  for (QWidget* part :
       {static_cast<QWidget*>(level_), static_cast<QWidget*>(on_), static_cast<QWidget*>(owner_)})
    part->setEnabled(!group.fixtures.empty());
}

void LiveColumn::Show(std::span<const app::LiveFixture> fixtures, bool chosen) {
  double light = 0;
  auto owner = app::LiveFixture::Owner::Nobody;
  for (const int position : group_.fixtures) {
    if (position < 1 || position > std::ssize(fixtures)) continue;
    const app::LiveFixture& fixture = fixtures[static_cast<std::size_t>(position - 1)];
    light = std::max(light, fixture.hand.light.value_or(fixture.light));
    owner = std::max(owner, fixture.owner);
  }
  QString name = group_.missing > 0 ? group_.name + QStringLiteral(" !") : group_.name;
  name = name_->fontMetrics().elidedText(name, Qt::ElideMiddle, width() - Em(*this, 0.8));
  if (name_->text() != name) name_->setText(name);
  name_->setChecked(chosen);
  if (!level_->isSliderDown()) {
    const QSignalBlocker quiet(level_);
    level_->setValue(static_cast<int>(std::lround(light * kFull)));
  }
  on_->setChecked(light > 0);
  const QString text = look_.say(WordOf(owner));
  if (owner_->text() != text) owner_->setText(text);
}

}  // namespace ui
