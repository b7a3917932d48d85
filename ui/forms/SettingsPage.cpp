// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/SettingsPage.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QScrollArea>
#include <QVBoxLayout>
#include <algorithm>

#include "app/OutputStation.h"
#include "app/WorkstationView.h"
#include "app/lights/OrganStation.h"
#include "app/settings/OutputSettings.h"
#include "lightorgan/LightOrgan.h"
#include "lightorgan/Outputs.h"
#include "support/Languages.h"
#include "ui/forms/ApplyPanel.h"
#include "ui/forms/ColourPanel.h"
#include "ui/forms/MicrophonePanel.h"
#include "ui/forms/TagsPanel.h"
#include "ui/models/OutputText.h"
#include "ui/strings/EveningWords.h"
#include "ui/strings/OrganWords.h"
#include "ui/widgets/Kit.h"
#include "ui/widgets/QuietCombo.h"

namespace ui {

SettingsPage::SettingsPage(app::Workstation& workstation, Choices choices, const Look& look, QWidget* parent)
    : Surface(look.skin.panel, parent), workstation_(workstation), look_(look) {
  Name(*this, "SettingsPage", look.say(Say::Settings));
  auto* colours = new ColourPanel(workstation.Settings(), look);
  connect(colours, &ColourPanel::KeepWanted, this, [this, colours] {
    workstation_.ApplyButton().Press({app::ApplyMode::ChannelColours, {}, colours->Colours()});
  });
  apply_ = new ApplyPanel(workstation, look);
  connect(apply_, &ApplyPanel::Scanned, this, &SettingsPage::Scanned);
  microphone_ = new MicrophonePanel(workstation.Microphone(), look);
  auto* all = new Surface(look.skin.panel);
  FillColumn(*all, 0.8, 0.8,
             {{Row(2.5, {{Column(0.3, {MakeOutputs(), Part::Room(),
                                       new TagsPanel(workstation.Settings(), look), Part::Room(2)}),
                          4},
                         {apply_, 4},
                         {Column(1, {MakeWindow(choices), {colours, 1}}), 3}}),
               1},
              microphone_});
  // A small window shows a part of it.
  auto* area = new QScrollArea;
  Name(*area, "SettingsArea", look.say.Of(Say::Settings));
  area->setFrameShape(QFrame::NoFrame);
  area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  area->setWidgetResizable(true);
  area->setFocusPolicy(Qt::NoFocus);
  area->setWidget(all);
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->addWidget(area);
}

QGridLayout* SettingsPage::MakeOutputs() {
  auto* grid = new QGridLayout;
  SetSpacingEm(*grid, 0, 0.25);
  grid->addWidget(Heading(look_.say(Say::Outputs)), 0, 0, 1, 3);
  grid->addWidget(Caption(look_.say(Say::Device), look_.skin.dim), 1, 1);
  grid->addWidget(Caption(look_.say(Say::Pair), look_.skin.dim), 1, 2);
  for (int output = 1; output <= 3; ++output) MakeOutput(output, *grid);
  QLabel* hint = Caption(look_.say(Say::OutputsHint), look_.skin.dim);
  hint->setWordWrap(true);
  grid->addWidget(hint, 5, 0, 1, 3);
  priority_ = Caption({}, look_.skin.dim);
  priority_->setWordWrap(true);
  Name(*priority_, "SoundPriority");
  grid->addWidget(priority_, 6, 0, 1, 3);
  shared_ = Caption({}, look_.skin.warning);
  shared_->setWordWrap(true);
  Name(*shared_, "HeadphonesHeard");
  shared_->hide();
  grid->addWidget(shared_, 7, 0, 1, 3);
  grid->setRowStretch(8, 1);
  grid->setColumnStretch(1, 2);
  grid->setColumnStretch(2, 1);
  return grid;
}

void SettingsPage::MakeOutput(int output, QGridLayout& grid) {
  const auto& say = look_.say;
  const QString name = output == 3 ? say(Say::OutputHeadphones) : say(Say::OutputDeck).arg(output);
  Output& controls = outputs_[static_cast<std::size_t>(output - 1)];
  controls.device = new QuietCombo(look_.skin);
  controls.pair = new QuietCombo(look_.skin);
  for (int pair = 0; pair <= 4; ++pair) controls.pair->addItem(PairText(pair, say), pair);
  FillDevices(output, 0);
  Name(*controls.device, QStringLiteral("Device%1").arg(output),
       name + QStringLiteral(": ") + say(Say::Device), say(Say::DeviceTip));
  Name(*controls.pair, QStringLiteral("Speaker%1").arg(output), name + QStringLiteral(": ") + say(Say::Pair),
       say(Say::PairTip));
  for (QuietCombo* list : {controls.device, controls.pair}) {
    connect(list, &QComboBox::activated, this, [this, output] { Send(output); });
  }
  grid.addWidget(Caption(name, output < 3 ? look_.skin.Deck(output) : look_.skin.text), output + 1, 0);
  grid.addWidget(controls.device, output + 1, 1);
  grid.addWidget(controls.pair, output + 1, 2);
}

void SettingsPage::FillDevices(int output, int present) {
  QuietCombo& list = *outputs_[static_cast<std::size_t>(output - 1)].device;
  const auto& names = workstation_.Outputs().DeviceNames();
  const int devices = static_cast<int>(names.size());
  list.clear();
  for (int device = 0; device <= devices; ++device) {
    list.addItem(DeviceText(device, names, look_.say), device);
  }
  if (present > devices) list.addItem(DeviceText(present, names, look_.say), present);
  if (output == 2) list.addItem(look_.say(Say::OutputAsDeck1), kAsDeck1);
}

QGridLayout* SettingsPage::MakeWindow(Choices choices) {
  const auto& say = look_.say;
  language_ = new QuietCombo(look_.skin);
  for (const auto& language : support::kLanguages) language_->addItem(QString::fromUtf8(language.name));
  language_->setCurrentIndex(static_cast<int>(choices.language));
  Name(*language_, "Language", say.Of(Say::Language));
  skin_ = Choice(look_.skin, "Skin", say.Of(Say::Skin), {say(Say::SkinDark), say(Say::SkinLight)},
                 static_cast<int>(choices.skin));
  density_ =
      Choice(look_.skin, "Density", say.Of(Say::Density),
             {say(Say::DensityComfortable), say(Say::DensityCompact)}, static_cast<int>(choices.density));
  for (QuietCombo* list : {language_, skin_, density_}) {
    connect(list, &QComboBox::activated, this, [this] {
      Q_EMIT ChoicesChanged({static_cast<Strings::Language>(language_->currentIndex()),
                             static_cast<Skin::Name>(skin_->currentIndex()),
                             static_cast<Skin::Density>(density_->currentIndex())});
    });
  }
  auto* grid = new QGridLayout;
  SetSpacingEm(*grid, 0, 0.5);
  grid->addWidget(Heading(say(Say::Window)), 0, 0, 1, 4);
  grid->addWidget(Caption(say(Say::Language), look_.skin.text), 1, 0);
  grid->addWidget(language_, 1, 1);
  grid->addWidget(Caption(say(Say::Skin), look_.skin.text), 1, 2);
  grid->addWidget(skin_, 1, 3);
  grid->addWidget(Caption(say(Say::Density), look_.skin.text), 2, 0);
  grid->addWidget(density_, 2, 1);
  grid->addWidget(PlainButton("OpenHelp", say.Of(Say::OpenHelp),
                              [this] {
                                workstation_.ApplyButton().Press({app::ApplyMode::Help, {}, {}});
                              }),
                  2, 2, 1, 2);
  boards_ = Choice(
      look_.skin, "SetupIoBoardSize", say.Of(OrganWord::BoardSize),
      {say(OrganWord::OneBoard), say(OrganWord::TwoBoards)}, 0, [this](int choice) {
        workstation_.Organ().Ask([choice](lightorgan::LightOrgan& organ) {
          organ.SetIoBoardSize(choice == 1 ? lightorgan::IoBoardSize::Two : lightorgan::IoBoardSize::One);
        });
      });
  grid->addWidget(Caption(say(OrganWord::BoardSize), look_.skin.text), 3, 0);
  grid->addWidget(boards_, 3, 1, 1, 3);
  grid->addWidget(
      Check("Resume", say.Of(EveningWord::Resume), workstation_.Settings().Flag("Settings", "Resume"),
            [this](bool on) { workstation_.Settings().SetFlag("Settings", "Resume", on); }),
      4, 0, 1, 4);
  grid->setColumnStretch(1, 1);
  grid->setColumnStretch(3, 1);
  return grid;
}

void SettingsPage::Send(int output) {
  const Output& controls = outputs_[static_cast<std::size_t>(output - 1)];
  const int device = controls.device->currentData().toInt();
  if (device == kAsDeck1) return workstation_.Outputs().Share();
  workstation_.Outputs().Set(output, {device, controls.pair->currentData().toInt()});
}

void SettingsPage::Show(const app::WorkstationView& view, support::TimePoint now) {
  for (int output = 1; output <= 3; ++output) {
    ShowOutput(output, view.outputs[static_cast<std::size_t>(output - 1)]);
  }
  const int deck = app::DeckOnHeadphones(view.outputs);
  if (deck != 0) SetText(*shared_, look_.say(Say::HeadphonesHeard).arg(deck));
  if (shared_->isHidden() != (deck == 0)) shared_->setVisible(deck != 0);
  ShowPriority(workstation_.Outputs().Priority());
  apply_->Show();
  microphone_->Show(now);
  const auto size = workstation_.Organ().View().lamps.size;
  const int boards = size == lightorgan::IoBoardSize::Two ? 1 : 0;
  if (boards_->currentIndex() != boards && !boards_->view()->isVisible()) boards_->setCurrentIndex(boards);
}

void SettingsPage::ShowPriority(app::SoundPriority::Level level) {
  using Level = app::SoundPriority::Level;
  const bool known = level != Level::Asked;
  if (priority_->isVisibleTo(this) != known) priority_->setVisible(known);
  if (!known) return;
  const bool best = level == Level::RealTime;
  SetText(*priority_, look_.say(best                     ? Say::PriorityRealTime
                                : level == Level::Raised ? Say::PriorityRaised
                                                         : Say::PriorityNormal));
  SetTextColour(*priority_, best ? look_.skin.dim : look_.skin.warning);
}

void SettingsPage::ShowOutput(int number, const app::OutputView& view) {
  Output& output = outputs_[static_cast<std::size_t>(number - 1)];
  const bool as_deck1 = number == 2 && !workstation_.Outputs().HasOwn();
  const int fewest = static_cast<int>(workstation_.Outputs().DeviceNames().size()) + (number == 2 ? 1 : 0);
  if (output.device->count() > fewest && output.shown == view && output.as_deck1 == as_deck1) return;
  output.shown = view;
  output.as_deck1 = as_deck1;
  FillDevices(number, view.device);
  const int shown = output.device->findData(as_deck1 ? kAsDeck1 : view.device);
  output.device->setCurrentIndex(std::max(0, shown));
  output.pair->setCurrentIndex(view.speaker >= 1 && view.speaker <= 4 ? view.speaker : 0);
  output.pair->setEnabled(view.device != 0 && !as_deck1);
}

}  // namespace ui
