// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/OrganSidePanel.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStackedWidget>
#include <algorithm>
#include <cmath>
#include <utility>

#include "ui/strings/OrganWords.h"
#include "ui/widgets/ElidedLabel.h"
#include "ui/widgets/Fader.h"
#include "ui/widgets/Kit.h"
#include "ui/widgets/OutputLamps.h"
#include "ui/widgets/PatternGrid.h"

namespace ui {
namespace {

using lightorgan::DacMode;
using lightorgan::IoMode;
using lightorgan::LightOrgan;
using lightorgan::LightOrganView;
using lightorgan::Side;

constexpr int kFirstDacMode = static_cast<int>(DacMode::Lo);
constexpr int kThresholdAtFirst = 55;
constexpr int kPage[] = {0, 0, 0, 1, 2, 3, 0, 1, 0};  ///< what each mode lets a hand do

std::size_t Place(int output) {
  return static_cast<std::size_t>(output - 1);
}

OrganWord Offset(OrganWord first, int by) {
  return static_cast<OrganWord>(static_cast<int>(first) + by);
}

/// Side by side, all of one width, in line with the lamps.
QHBoxLayout* Columns(QWidget& page) {
  auto* columns = new QHBoxLayout(&page);
  SetSpacingEm(*columns, 0, 0);
  return columns;
}

}  // namespace

OrganSidePanel::OrganSidePanel(Side side, app::OrganStation& station, const Look& look, QWidget* parent)
    : QWidget(parent), side_(side), station_(station), look_(look) {
  const auto& say = look_.say;
  Name(*this, Io() ? QStringLiteral("OrganIO") : QStringLiteral("OrganDAC"),
       say(Io() ? OrganWord::IoName : OrganWord::DacName));
  lamps_ = new OutputLamps(look.skin);
  Name(*lamps_, Io() ? QStringLiteral("pctK8000") : QStringLiteral("DacLamps"),
       say(Io() ? OrganWord::IoName : OrganWord::DacName), say(OrganWord::LampsTip));
  pattern_ = new PatternGrid(side, look.skin);
  Name(*pattern_, Io() ? QStringLiteral("PatternIO") : QStringLiteral("PatternDAC"),
       say(Io() ? OrganWord::Pp : OrganWord::DacPp), say(OrganWord::PatternTip));
  stack_ = new QStackedWidget;
  stack_->addWidget(MakeSliders());
  stack_->addWidget(pattern_);
  if (Io()) {
    stack_->addWidget(MakeButtons());
    stack_->addWidget(MakeBeat());
  }
  auto* modes = new QHBoxLayout;
  SetSpacingEm(*modes, 0, 0.3);
  MakeModes(*modes);
  auto* running = new QHBoxLayout;
  SetSpacingEm(*running, 0, 0.5);
  MakeRunning(*running);
  FillColumn(*this, 0, 0.4, {modes, {lamps_, 2}, {stack_, 3}, running});
}

void OrganSidePanel::MakeModes(QHBoxLayout& row) {
  auto* head = Heading(look_.say(Io() ? OrganWord::Io : OrganWord::Dac));
  head->setToolTip(look_.say.Tip(Io() ? OrganWord::Io : OrganWord::Dac));
  row.addWidget(head);
  const int first = Io() ? 0 : kFirstDacMode;
  const int end = Io() ? kFirstDacMode : lightorgan::kModeButtons;
  for (int mode = first; mode < end; ++mode) {
    const QString caption = look_.say(Offset(OrganWord::Mono, mode));
    auto* button = new QPushButton(caption);
    SetKind(*button, "lamp1");
    button->setCheckable(true);
    Name(*button, QStringLiteral("cmdK8000%1").arg(mode), caption,
         look_.say(Offset(OrganWord::MonoTip, mode)));
    connect(button, &QPushButton::clicked, this, [this, mode] {
      mode_echo_.Sent(float(mode), now_);
      Send(&LightOrgan::cmdK8000, mode);
      for (QPushButton* other : modes_) {
        if (other != nullptr) other->setChecked(other == modes_[static_cast<std::size_t>(mode)]);
      }
    });
    modes_[static_cast<std::size_t>(mode)] = button;
    row.addWidget(button);
  }
  state_ = Sentence(Io() ? QStringLiteral("StateIO") : QStringLiteral("StateDAC"));
  state_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  SetTextColour(*state_, look_.skin.dim);
  row.addWidget(state_, 1);
}

LevelFader OrganSidePanel::MakeFader(const QString& name, Qt::Orientation orientation, int highest) {
  LevelFader made = LevelFader::Make(name, orientation, 0, highest, look_.skin);
  made.fader->setPageStep(std::max(1, highest / 10));
  return made;
}

void OrganSidePanel::Send(Command command, int value) {
  station_.Ask([command, value](LightOrgan& organ) { (organ.*command)(value); });
}

QWidget* OrganSidePanel::MakeSliders() {
  auto* page = new QWidget;
  auto* columns = Columns(*page);
  const OutputCommand command = Io() ? &LightOrgan::IOScroller : &LightOrgan::DacScroller;
  for (int output = 1; output <= lightorgan::kMostOutputs; ++output) {
    LevelFader& made = sliders_[Place(output)];
    const QString name =
        (Io() ? QStringLiteral("IOScroller%1") : QStringLiteral("DacScroller%1")).arg(output);
    made = MakeFader(name, Qt::Vertical, Io() ? 100 : 255);
    if (Io()) made.fader->SetRest(kThresholdAtFirst);
    made.fader->setAccessibleName(look_.say(Io() ? OrganWord::Level : OrganWord::Value).arg(output));
    made.fader->setToolTip(look_.say(Io() ? OrganWord::LevelTip : OrganWord::ValueTip).arg(output));
    made.value->setAlignment(Qt::AlignCenter);
    SetTextColour(*made.value, look_.skin.dim);
    made.OnMoved(now_, [this, command, output](int value) {
      station_.Ask([command, output, value](LightOrgan& organ) { (organ.*command)(output, value); });
    });
    auto* column = new QWidget;
    column->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Expanding);
    auto* rows = new QVBoxLayout(column);
    SetSpacingEm(*rows, 0, 0.1);
    rows->addWidget(made.fader, 1, Qt::AlignHCenter);
    rows->addWidget(made.value);
    columns->addWidget(column, 1);
    columns_[Place(output)] = column;
  }
  return page;
}

QWidget* OrganSidePanel::MakeButtons() {
  auto* page = new QWidget;
  auto* columns = Columns(*page);
  for (int output = 1; output <= lightorgan::kMostOutputs; ++output) {
    auto* button = new QPushButton(QString::number(output));
    SetKind(*button, "lamp2");
    button->setCheckable(true);
    button->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Expanding);
    Name(*button, QStringLiteral("btnOn%1").arg(output), look_.say(OrganWord::Button).arg(output),
         look_.say(OrganWord::ButtonTip).arg(output));
    connect(button, &QPushButton::clicked, this, [this, output](bool on) {
      button_echoes_[Place(output)].Sent(on ? 1.0F : 0.0F, now_);
      Send(&LightOrgan::btnOn, output);
    });
    buttons_[Place(output)] = button;
    columns->addWidget(button, 1);
  }
  return page;
}

QWidget* OrganSidePanel::MakeBeat() {
  beat_ = Sentence("BeatState");
  beat_->setAlignment(Qt::AlignCenter);
  SetFontEm(*beat_, 1.2);
  auto* page = new QWidget;
  FillColumn(*page, 0, 0, {beat_});
  return page;
}

void OrganSidePanel::MakeRunning(QHBoxLayout& row) {
  const auto& say = look_.say;
  const auto add = [&](LevelFader& moved, OrganWord word, OrganWord tip, int stretch) {
    auto* caption = new QLabel(say(word));
    SetTextColour(*caption, look_.skin.dim);
    moved.fader->setAccessibleName(say(word));
    moved.fader->setToolTip(say(tip));
    moved.value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    row.addWidget(caption);
    row.addWidget(moved.value);
    row.addWidget(moved.fader, stretch);
  };
  speed_ = MakeFader(Io() ? QStringLiteral("ScrollerIO") : QStringLiteral("ScrollerDAC"), Qt::Horizontal,
                     lightorgan::kFastest);
  SetWidest(*speed_.value, QStringLiteral("100"));
  speed_.OnMoved(
      now_, [this](int speed) { Send(Io() ? &LightOrgan::ScrollerIO : &LightOrgan::ScrollerDAC, speed); });
  bank_ = MakeFader(Io() ? QStringLiteral("ScrollerPatternIO") : QStringLiteral("ScrollerPatternDAC"),
                    Qt::Horizontal, 1);
  SetWidest(*bank_.value, QStringLiteral("000 "));
  SetHighestBank(1);
  bank_.OnMoved(now_, [this](int bank) {
    Send(Io() ? &LightOrgan::ScrollerPatternIO : &LightOrgan::ScrollerPatternDAC, bank);
  });
  add(speed_, OrganWord::Speed, OrganWord::SpeedTip, 1);
  add(bank_, OrganWord::Bank, OrganWord::BankTip, 1);
}

void OrganSidePanel::SetHighestBank(int bank) {
  const QSignalBlocker quiet(bank_.fader);
  bank_.fader->setRange(1, std::max({1, bank, bank_.fader->value()}));
  bank_.fader->setPageStep(std::max(1, bank / 10));
}

int OrganSidePanel::ModeOf(const LightOrganView& lamps) const {
  return Io() ? static_cast<int>(lamps.io_mode) : static_cast<int>(lamps.dac_mode);
}

void OrganSidePanel::Show(const app::OrganView& view, support::TimePoint now) {
  now_ = now;
  ShowModes(view.lamps);
  ShowLamps(view.lamps);
  ShowOutputs(view.lamps);
  ShowRunning(view);
}

void OrganSidePanel::ShowModes(const LightOrganView& lamps) {
  const int mode = ModeOf(lamps);
  stack_->setCurrentIndex(kPage[mode]);
  if (!mode_echo_.Believe(float(mode), now_)) return;
  for (std::size_t i = 0; i < modes_.size(); ++i) {
    if (modes_[i] != nullptr) modes_[i]->setChecked(static_cast<int>(i) == mode);
  }
}

void OrganSidePanel::ShowLamps(const LightOrganView& lamps) {
  const lightorgan::SideView& side = Io() ? lamps.io : lamps.dac;
  const bool bands = Io() ? lightorgan::FollowsSpectrum(lamps.io_mode) : lamps.dac_mode == DacMode::Lo;
  std::vector<OutputLamps::Led> leds(static_cast<std::size_t>(lightorgan::OutputsOf(lamps.size)));
  for (std::size_t i = 0; i < leds.size(); ++i) {
    leds[i].light = Io() ? (lamps.leds[i] ? 1.0F : 0.0F) : float(std::clamp(lamps.values[i], 0, 255)) / 255;
    if (!bands) continue;
    leds[i].level = side.bands[i];
    if (Io()) leds[i].mark = float(side.sliders[i]) / 100;
  }
  lamps_->Show(std::move(leds));
}

void OrganSidePanel::ShowOutputs(const LightOrganView& lamps) {
  const lightorgan::SideView& side = Io() ? lamps.io : lamps.dac;
  const int outputs = lightorgan::OutputsOf(lamps.size);
  for (int output = 1; output <= lightorgan::kMostOutputs; ++output) {
    const std::size_t i = Place(output);
    columns_[i]->setVisible(output <= outputs);
    Follow(sliders_[i], side.sliders[i], QString::number(sliders_[i].fader->value()));
    if (!Io()) continue;
    buttons_[i]->setVisible(output <= outputs);
    const bool on = lamps.buttons[i];
    if (button_echoes_[i].Believe(on ? 1.0F : 0.0F, now_)) buttons_[i]->setChecked(on);
  }
}

void OrganSidePanel::ShowRunning(const app::OrganView& view) {
  const LightOrganView& lamps = view.lamps;
  const lightorgan::SideView& side = Io() ? lamps.io : lamps.dac;
  const bool plays = Io() ? lamps.io_mode == IoMode::Pp : lamps.dac_mode == DacMode::Pp;
  const bool timed = Io() ? !lightorgan::SpeedSection(lamps.io_mode).empty()
                          : !lightorgan::SpeedSection(lamps.dac_mode).empty();
  speed_.fader->setEnabled(timed);
  bank_.fader->setEnabled(plays);
  if (side.bank > bank_.fader->maximum()) bank_.fader->setMaximum(side.bank);
  Follow(speed_, side.speed, timed ? QString::number(speed_.fader->value()) : QString());
  Follow(bank_, side.bank, QString::number(bank_.fader->value()) + QLatin1Char(' '));
  if (plays) pattern_->Show(side.table, side.row);
  const QString state = StateText(view);
  const bool beat = Io() && lamps.io_mode == IoMode::Beat;
  if (state_->text() != state || beat) state_->Show(beat ? QString() : state);
  if (beat) beat_->Show(state);
}

void OrganSidePanel::Follow(LevelFader& moved, int reported, const QString& text) {
  SetText(*moved.value, text);
  moved.Follow(reported, now_);
}

QString OrganSidePanel::StateText(const app::OrganView& view) const {
  const auto& say = look_.say;
  const LightOrganView& lamps = view.lamps;
  if (Io() && lamps.io_mode == IoMode::Beat) {
    if (view.from == app::HeardFrom::Nothing || lamps.beat_from == lightorgan::BeatFrom::Nothing)
      return say(OrganWord::BeatNothing);
    const bool sound = lamps.beat_from == lightorgan::BeatFrom::Sound;
    const QString tempo = QString::number(view.bpm, 'f', 1);
    if (view.from == app::HeardFrom::Song)
      return sound ? say(OrganWord::SongSound) : say(OrganWord::SongGrid).arg(tempo);
    const int deck = app::DeckOf(view.from);
    return sound ? say(OrganWord::BeatSound).arg(deck) : say(OrganWord::BeatGrid).arg(deck).arg(tempo);
  }
  const lightorgan::SideView& side = Io() ? lamps.io : lamps.dac;
  const bool plays = Io() ? lamps.io_mode == IoMode::Pp : lamps.dac_mode == DacMode::Pp;
  if (!plays || side.table == nullptr) return {};
  if (pattern_->Rows() == 0) return say(OrganWord::BankEmpty).arg(side.bank);
  return say(OrganWord::Step).arg(std::max(1, side.row)).arg(pattern_->Rows());
}

}  // namespace ui
