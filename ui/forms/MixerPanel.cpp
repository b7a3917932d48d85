// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/MixerPanel.h"

#include <QGridLayout>
#include <QLabel>
#include <cmath>

#include "app/Decks.h"
#include "app/EqualiserStation.h"
#include "app/OutputStation.h"
#include "app/WorkstationView.h"
#include "app/lists/ListStation.h"
#include "app/sound/DeckStation.h"
#include "ui/forms/AutomixLine.h"
#include "ui/forms/HeadphoneStrip.h"
#include "ui/models/DeckChoice.h"
#include "ui/models/EqText.h"
#include "ui/models/KeyMap.h"
#include "ui/strings/DeskWords.h"
#include "ui/widgets/EqGraph.h"
#include "ui/widgets/Fader.h"
#include "ui/widgets/Kit.h"
#include "ui/widgets/LevelMeter.h"
#include "ui/widgets/ListenButton.h"
#include "ui/widgets/MasterMeter.h"

namespace ui {
namespace {

constexpr int kSoftest = 99;      ///< of the master slider
constexpr float kQuietest = -60;  ///< dB, below this the read-out shows none

/// Of the master slider, 0 (loudest) to 99.
QString PercentOf(int slider) {
  return QString::number(std::lround((kSoftest - slider) * 100.0 / kSoftest)) + QStringLiteral(" %");
}

QString PeakText(float db) {
  if (db < kQuietest) return QStringLiteral("−∞ dB");
  const int rounded = static_cast<int>(std::lround(db));
  return (rounded < 0 ? QStringLiteral("−%1 dB") : QStringLiteral("%1 dB")).arg(std::abs(rounded));
}

/// "−11.2"
QString LoudnessText(support::Decibels value) {
  if (value.value < kQuietest) return QStringLiteral("−∞");
  const QString number = QString::number(std::abs(double(value.value)), 'f', 1);
  return (value.value < -0.05F ? QStringLiteral("−%1") : QStringLiteral("%1")).arg(number);
}

}  // namespace

MixerPanel::MixerPanel(const Stations& stations, MixerState& state, const Look& look, QWidget* parent)
    : Surface(look.skin.panel, parent),
      decks_(stations.decks),
      sliders_(stations.sliders),
      outputs_(stations.outputs),
      lists_(stations.lists),
      state_(state),
      look_(look),
      crossfader_moves_(stations.lists.View().moves) {
  SetStripe(look.skin.line);
  setObjectName(QStringLiteral("Mixer"));
  for (const int deck : {1, 2}) channels_[deck == 1 ? 0 : 1] = MakeChannel(deck);
  MakeMaster();
  MakeEqualiser();
  headphones_ = new HeadphoneStrip(stations.headphones, look);
  automix_ = new AutomixLine({}, stations.lists, AutomixLine::Form::Narrow, look);
  FillColumn(
      *this, 0.7, 0.4,
      {{MakeChannels(), 5}, {equaliser_, 2}, MakeCrossfader(), Row(0.4, {headphones_, {automix_, 1}})});
  ShowVolumes();
}

MixerPanel::Channel MixerPanel::MakeChannel(int deck) {
  const QColor& accent = look_.skin.Deck(deck);
  Channel channel{new Fader(Qt::Vertical, look_.skin, accent), new QLabel, new LevelMeter(look_.skin),
                  new QLabel, MakeListen(deck)};
  const std::size_t place = deck == 1 ? 0 : 1;
  channel.fader->setRange(0, 100);
  channel.fader->setPageStep(10);
  channel.fader->setValue(state_.faders[place]);
  for (QLabel* label : {channel.volume, channel.peak}) label->setAlignment(Qt::AlignCenter);
  SetWidest(*channel.volume, QStringLiteral("100 %"));
  SetWidest(*channel.peak, QStringLiteral("−48 dB"));
  SetTextColour(*channel.peak, look_.skin.dim);
  connect(channel.fader, &QSlider::valueChanged, this, [this, place](int value) {
    state_.faders[place] = value;
    SendVolumes();
  });
  const auto& say = look_.say;
  Name(*channel.fader, DeckName(deck, "Volume"), say(Say::Volume).arg(deck), say(Say::VolumeTip));
  Name(*channel.volume, DeckName(deck, "VolumeValue"));
  Name(*channel.meter, DeckName(deck, "Level"), say(Say::Level).arg(deck), say(Say::LevelTip));
  Name(*channel.peak, DeckName(deck, "Peak"));
  return channel;
}

ListenButton* MixerPanel::MakeListen(int deck) {
  const auto& say = look_.say;
  auto* listen = new ListenButton(say(Say::Cue).arg(deck), look_.skin, look_.skin.Deck(deck));
  listen->SetLevel(state_.listen[deck == 1 ? 0 : 1]);
  Name(*listen, DeckName(deck, "Cue"), say(Say::CueName).arg(deck), CueTip(deck));
  connect(listen, &ListenButton::clicked, this, [this, deck] { SendListening(deck); });
  connect(listen, &ListenButton::LevelMoved, this, [this, deck](int level) {
    state_.listen[deck == 1 ? 0 : 1] = level;
    if (channels_[deck == 1 ? 0 : 1].cue->isChecked()) SendListening(deck);
    Q_EMIT ListenLevelMoved(level);
  });
  return listen;
}

QString MixerPanel::CueTip(int deck) const {
  return look_.say(Say::KeyHint).arg(look_.say(Say::CueTip), KeyText(KeyOf(Command::Listen, deck)));
}

void MixerPanel::SendListening(int deck) {
  const std::size_t place = deck == 1 ? 0 : 1;
  decks_[deck].Adjust(&app::DeckStation::SetPreVolume,
                      channels_[place].cue->isChecked() ? state_.listen[place] : 0);
}

void MixerPanel::Listen(int deck) {
  channels_[deck == 1 ? 0 : 1].cue->click();
}

void MixerPanel::MakeEqualiser() {
  equaliser_ = new EqGraph(EqGraph::Captions::Inside, look_.skin);
  Name(*equaliser_, "EqMixer", look_.say.Of(Say::EqInMixer));
  connect(equaliser_, &EqGraph::GainWanted, this,
          [this](int band, int gain) { sliders_.Set(band + 1, gain); });
}

void MixerPanel::MakeMaster() {
  const auto& say = look_.say;
  master_ = new Fader(Qt::Vertical, look_.skin, look_.skin.text);
  master_->setRange(0, kSoftest);
  master_->setPageStep(10);
  master_->setInvertedAppearance(true);
  master_->setInvertedControls(true);
  Name(*master_, "MainVolume", say.Of(Say::MainVolume));
  connect(master_, &QSlider::valueChanged, this, [this](int value) {
    master_echo_.Sent(float(value), now_);
    outputs_.SetMainVolume(value);
    SetText(*master_value_, PercentOf(value));
  });
  master_head_ = new QLabel(say(Say::MainVolumeHead));
  Name(*master_head_, "MainVolumeHead");
  master_value_ = Reading("MainVolumeValue", Qt::AlignLeft | Qt::AlignVCenter, "100 %");
  loudness_ = Reading("MasterLoudness", Qt::AlignCenter, "−48.0");
  loudness_->setToolTip(say(DeskWord::MasterLoudnessTip));
  SetTextColour(*loudness_, look_.skin.dim);
  for (QLabel* label : {master_head_, master_value_}) label->setAlignment(Qt::AlignCenter);
  master_meter_ = new MasterMeter(look_.skin);
  Name(*master_meter_, "MasterMeter", say(DeskWord::MasterMeter));
}

void MixerPanel::ShowMeter(const app::WorkstationView& view, support::TimePoint now) {
  const decks::MasterReading& master = view.master;
  master_meter_->Show(master, now);
  SetText(*loudness_, LoudnessText(master.short_term));
  const QString tip = look_.say(DeskWord::MasterMeterTip)
                          .arg(LoudnessText(master.momentary), LoudnessText(master.short_term),
                               LoudnessText(master_meter_->Peak()), LoudnessText(master.reduction));
  if (master_meter_->underMouse() || master_meter_->toolTip().isEmpty()) master_meter_->setToolTip(tip);
}

void MixerPanel::ShowMaster(const app::WorkstationView& view, support::TimePoint now) {
  now_ = now;
  master_->setEnabled(view.has_mixer);
  SetText(*master_value_, view.has_mixer ? PercentOf(master_->value()) : QStringLiteral("–"));
  SetTextColour(*master_head_, view.has_mixer ? look_.skin.text : look_.skin.dim);
  const QString tip = look_.say(view.has_mixer ? Say::MainVolumeTip : Say::MainVolumeNone);
  if (master_->toolTip() != tip) master_->setToolTip(tip);
  if (master_->isSliderDown() || !master_echo_.Believe(float(view.main_volume), now)) return;
  if (master_->value() == view.main_volume) return;
  const QSignalBlocker quiet(master_);
  master_->setValue(view.main_volume);
}

QGridLayout* MixerPanel::MakeChannels() {
  auto* grid = new QGridLayout;
  SetSpacingEm(*grid, 0, 0.4);
  const auto& [first, second] = channels_;
  grid->addWidget(first.cue, 0, 0, 1, 2);
  grid->addLayout(Column(0, {master_head_, loudness_}), 0, 2);
  grid->addWidget(second.cue, 0, 3, 1, 2);
  grid->addWidget(first.fader, 1, 0, Qt::AlignHCenter);
  grid->addWidget(first.meter, 1, 1, Qt::AlignHCenter);
  grid->addLayout(Row(0, {master_, master_meter_}), 1, 2);
  grid->addWidget(second.meter, 1, 3, Qt::AlignHCenter);
  grid->addWidget(second.fader, 1, 4, Qt::AlignHCenter);
  grid->addWidget(first.volume, 2, 0);
  grid->addWidget(first.peak, 2, 1);
  grid->addWidget(master_value_, 2, 2);
  grid->addWidget(second.peak, 2, 3);
  grid->addWidget(second.volume, 2, 4);
  grid->setRowStretch(1, 1);
  for (int column = 0; column < 5; ++column) grid->setColumnStretch(column, 1);
  return grid;
}

QWidget* MixerPanel::MakeCrossfader() {
  crossfader_ = new Fader(Qt::Horizontal, look_.skin, look_.skin.text);
  crossfader_->setRange(-100, 100);
  crossfader_->setPageStep(20);
  crossfader_->SetRest(0);
  crossfader_->setValue(state_.crossfader);
  connect(crossfader_, &QSlider::valueChanged, this, [this](int value) {
    state_.crossfader = value;
    SendMixer(app::MovedByHand::Crossfader);
  });
  Name(*crossfader_, "Crossfader", look_.say.Of(Say::Crossfader));
  auto* box = new QWidget;
  FillRow(*box, 0, 0.2, {MakeEnd(1), {crossfader_, 1}, MakeEnd(2)});
  return box;
}

QLabel* MixerPanel::MakeEnd(int deck) {
  auto* label = new QLabel(QString::number(deck));
  Name(*label, DeckName(deck, "End"), look_.say(Say::Deck).arg(deck));
  SetFontEm(*label, 1.2, Weight::Bold);
  SetTextColour(*label, look_.skin.Deck(deck));
  return label;
}

void MixerPanel::ShowAutomix(const app::ListView& lists) {
  automix_->Show(lists);
  if (lists.moves == crossfader_moves_ || crossfader_->isSliderDown()) return;
  crossfader_moves_ = lists.moves;
  state_.crossfader = lists.crossfader;
  const QSignalBlocker quiet(crossfader_);
  crossfader_->setValue(lists.crossfader);
}

void MixerPanel::SendVolumes() {
  SendMixer(app::MovedByHand::Other);
}

void MixerPanel::SendMixer(app::MovedByHand moved) {
  lists_.MoveMixer({state_.faders, state_.crossfader, state_.curve}, moved);
  ShowVolumes();
}

void MixerPanel::ShowVolumes() {
  for (std::size_t place = 0; place < channels_.size(); ++place) {
    SetText(*channels_[place].volume, QString::number(state_.faders[place]) + QStringLiteral(" %"));
  }
}

void MixerPanel::MoveCrossfader(int steps) {
  crossfader_->setValue(crossfader_->value() + steps);
}

void MixerPanel::MoveFader(int deck, int level) {
  channels_[deck == 1 ? 0 : 1].fader->setValue(level);
}

void MixerPanel::SetCurve(decks::CrossfaderCurve curve) {
  state_.curve = curve;
  SendVolumes();
}

void MixerPanel::Show(const app::WorkstationView& view, support::TimePoint now) {
  ShowMaster(view, now);
  ShowMeter(view, now);
  headphones_->Show(view, now);
  ShowAutomix(lists_.View());
  equaliser_->Show(ShownSliders(sliders_.Sliders()), CurvesOf(view));
  for (const int deck : {1, 2}) {
    const std::size_t place = deck == 1 ? 0 : 1;
    Channel& channel = channels_[place];
    channel.meter->Show(view.decks[place].left_db, view.decks[place].right_db, now);
    const QString peak = PeakText(channel.meter->Peak());
    SetText(*channel.peak, peak);
    ShowCue(deck, view);
  }
}

void MixerPanel::ShowCue(int deck, const app::WorkstationView& view) {
  const std::size_t place = deck == 1 ? 0 : 1;
  const app::DeckView& shown = view.decks[place];
  ListenButton& cue = *channels_[place].cue;
  const bool device = view.outputs[2].device != 0;
  const DeckState state = shown.loaded_state;
  cue.setEnabled(device && state != DeckState::Empty);
  if (!cue.isDown()) {
    cue.setChecked(shown.pre_volume > 0 && (state == DeckState::Playing || shown.listening));
  }
  const QString tip = device ? CueTip(deck) : look_.say(Say::CueNoDevice);
  if (cue.toolTip() != tip) cue.setToolTip(tip);
}

}  // namespace ui
