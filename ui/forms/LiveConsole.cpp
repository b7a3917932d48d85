// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/LiveConsole.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

#include "app/lights/StagedShow.h"
#include "ui/forms/LiveColumn.h"
#include "ui/forms/LiveEffects.h"
#include "ui/forms/LiveGroups.h"
#include "ui/forms/LivePalette.h"
#include "ui/strings/LiveWords.h"
#include "ui/strings/Say.h"
#include "ui/widgets/HoldButton.h"
#include "ui/widgets/Kit.h"

namespace ui {

LiveConsole::LiveConsole(app::LiveLightStation& live, const Look& look, QWidget* parent)
    : QWidget(parent), live_(live), look_(look) {
  setObjectName(QStringLiteral("LiveConsole"));
  groups_ = new LiveGroups(live, look);
  palette_ = new LivePalette(look);
  effects_ = new LiveEffects(live, look);
  connect(groups_, &LiveGroups::TargetsChanged, this, &LiveConsole::Steer);
  connect(palette_, &LivePalette::LookWanted, this,
          [this](const dmx::LiveLook& wanted) { live_.Ask(groups_->Targets(), wanted); });
  empty_ = MakeEmpty();
  steering_ = new QWidget;
  FillColumn(
      *steering_, 0, 0.5,
      {{Row(0.8, {{groups_, 1}, {Column(0.5, {palette_, effects_, Part::Room()}), 1}}), 1}, MakeHolds()});
  FillColumn(*this, 0, 0, {{empty_, 1}, {steering_, 1}});
  steering_->hide();
}

QWidget* LiveConsole::MakeEmpty() {
  auto* empty = new QWidget;
  auto* why = new QLabel(look_.say(LiveWord::NothingPatched));
  why->setWordWrap(true);
  why->setAlignment(Qt::AlignCenter);
  Name(*why, "LiveNothing");
  auto* editor =
      PlainButton("LiveShowEditor", look_.say.Of(Say::ShowEditor), [this] { Q_EMIT ShowEditorWanted(); });
  SetHeightEm(*editor, LiveColumn::kButtonEms);
  FillColumn(*empty, 1, 0.8, {Part::Room(), why, {editor, 0, Qt::AlignHCenter}, Part::Room()});
  return empty;
}

QHBoxLayout* LiveConsole::MakeHolds() {
  struct HoldText {
    const char* name;
    LiveWord word;
  };
  constexpr std::array<HoldText, app::kLightHolds> kTexts{{{"HoldBlackout", LiveWord::HoldBlackout},
                                                           {"HoldBlinder", LiveWord::HoldBlinder},
                                                           {"HoldStrobe", LiveWord::HoldStrobe},
                                                           {"HoldFreeze", LiveWord::HoldFreeze}}};
  const auto& say = look_.say;
  auto* row = new QHBoxLayout;
  SetSpacingEm(*row, 0, 0.3);
  for (std::size_t what = 0; what < kTexts.size(); ++what) {
    auto* hold = new HoldButton(say(kTexts[what].word));
    Name(*hold, kTexts[what].name, say.Of(kTexts[what].word));
    SetKind(*hold, "plain");
    SetHeightEm(*hold, LiveColumn::kButtonEms);
    connect(hold, &HoldButton::Held, this, [this, what](bool held) {
      pressed_[what] = held;
      Hold(what);
    });
    latches_[what] = Lamp(
        QLatin1String(kTexts[what].name) + QStringLiteral("Latch"),
        {QStringLiteral("●"), say(LiveWord::Latch).arg(say(kTexts[what].word)), say.Tip(LiveWord::Latch)},
        [this, what](bool) { Hold(what); });
    SetHeightEm(*latches_[what], LiveColumn::kButtonEms);
    row->addWidget(hold, 3);
    row->addWidget(latches_[what], 1);
  }
  auto* release = PlainButton("ReleaseAll", say.Of(LiveWord::ReleaseAll), [this] { live_.LetAllGo(); });
  SetHeightEm(*release, LiveColumn::kButtonEms);
  row->addWidget(release, 3);
  return row;
}

void LiveConsole::Hold(std::size_t what) {
  live_.Hold(static_cast<app::LightHold>(what), pressed_[what] || latches_[what]->isChecked());
}

void LiveConsole::ChooseFixture(int position) {
  groups_->ChooseFixture(position);
}

void LiveConsole::Steer() {
  const app::LiveView& view = live_.View();
  const dmx::DMXname nobody;
  const dmx::DMXname& fixtures = view.patch == nullptr ? nobody : view.patch->fixtures;
  palette_->ShowFor(fixtures, groups_->Targets());
  effects_->ShowFor(fixtures, groups_->Targets());
}

void LiveConsole::Show() {
  const app::LiveView& view = live_.View();
  const bool any = view.patch != nullptr && view.patch->fixtures.count() > 0;
  if (steering_->isVisibleTo(this) != any) {
    steering_->setVisible(any);
    empty_->setVisible(!any);
  }
  groups_->Show(view);
  effects_->Show(view);
  // A window that is made anew finds what was latched in the one before.
  for (std::size_t what = 0; what < latches_.size() && !shown_; ++what)
    latches_[what]->setChecked(view.held[what]);
  shown_ = true;
}

}  // namespace ui
