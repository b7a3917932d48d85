// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/MicrophonePanel.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QGridLayout>
#include <QSignalBlocker>
#include <algorithm>
#include <cmath>
#include <utility>

#include "app/sound/MicrophoneStation.h"
#include "ui/strings/Decode.h"
#include "ui/widgets/Kit.h"
#include "ui/widgets/Knob.h"
#include "ui/widgets/LevelMeter.h"
#include "ui/widgets/QuietCombo.h"

namespace ui {
namespace {

constexpr auto kHandRests = std::chrono::milliseconds(300);
constexpr int kNoLowCut = 79;  ///< Hz, below the lowest edge

QString DecibelText(float value) {
  const int whole = static_cast<int>(std::lround(value));
  const QString sign = whole < 0 ? QStringLiteral("−") : whole > 0 ? QStringLiteral("+") : QString();
  return sign + QString::number(std::abs(whole)) + QStringLiteral(" dB");
}

QString TimeText(std::chrono::milliseconds time) {
  if (time.count() < 1000) return QStringLiteral("%1 ms").arg(time.count());
  return QStringLiteral("%1 s").arg(double(time.count()) / 1000, 0, 'f', 1);
}

void SetChecked(QAbstractButton& button, bool checked) {
  const QSignalBlocker quiet(button);
  if (!button.isDown() && button.isChecked() != checked) button.setChecked(checked);
}

void SetItems(QuietCombo& list, const std::vector<std::pair<QString, QVariant>>& items,
              const QVariant& present) {
  if (list.view()->isVisible()) return;  // not under the hand
  bool same = list.count() == static_cast<int>(items.size());
  for (int i = 0; same && i < list.count(); ++i) {
    const auto& [text, data] = items[static_cast<std::size_t>(i)];
    same = list.itemText(i) == text && list.itemData(i) == data;
  }
  if (!same) list.clear();
  for (std::size_t i = 0; !same && i < items.size(); ++i) list.addItem(items[i].first, items[i].second);
  const int wanted = list.findData(present);
  if (list.currentIndex() != wanted) list.setCurrentIndex(wanted);
}

}  // namespace

MicrophonePanel::MicrophonePanel(app::MicrophoneStation& station, const Look& look, QWidget* parent)
    : QWidget(parent), station_(station), look_(look) {
  Name(*this, "MicrophonePanel", look.say(MicrophoneWord::Microphone));
  meter_ = new LevelMeter(look.skin);
  Name(*meter_, "MicrophoneMeter", look.say(MicrophoneWord::MeterSides),
       look.say(MicrophoneWord::MeterSides));
  FillRow(*this, 0, 1.5, {{MakeInput(), 4}, meter_, {MakeVoice(), 5}, {MakeDuck(), 3}});
  ShowChoices(station_.View());
}

MicrophonePanel::~MicrophonePanel() {
  if (check_->isChecked()) station_.Check(false);
}

QLayout* MicrophonePanel::MakeInput() {
  const auto& say = look_.say;
  device_ =
      Choice(look_.skin, "MicrophoneDevice", say.Of(MicrophoneWord::Microphone), {}, 0, [this](int row) {
        Touch();
        station_.Choose(device_->itemData(row).toByteArray().toStdString());
      });
  channel_ = Choice(look_.skin, "MicrophoneChannel", say.Of(MicrophoneWord::Channel), {}, 0, [this](int row) {
    Touch();
    station_.SetChannel(channel_->itemData(row).toInt());
  });
  check_ = Lamp("MicrophoneCheck", say.Of(MicrophoneWord::Check), [this](bool on) { station_.Check(on); });
  swift_ = Check("MicrophoneSwift", say.Of(MicrophoneWord::Swift), true, [this](bool on) {
    Touch();
    station_.SetSwift(on);
  });
  state_ = Reading("MicrophoneState");
  state_->setWordWrap(true);
  turned_down_ = Reading("MicrophoneTurnedDown");
  SetTextColour(*turned_down_, look_.skin.dim);
  auto* look_again = PlainButton("MicrophoneLookAgain", say.Of(MicrophoneWord::LookAgain),
                                 [this] { station_.LookForInputs(); });
  return Column(
      0.4, {Heading(say(MicrophoneWord::Microphone)), Row(0.4, {{device_, 1}, look_again}),
            Row(0.4, {Caption(say(MicrophoneWord::Channel), look_.skin.text), {channel_, 1}, check_}), swift_,
            state_, turned_down_, Part::Room()});
}

MicrophonePanel::Dial& MicrophonePanel::AddDial(const char* name, MicrophoneWord word, Range range,
                                                std::function<int()> read, Write write, Text text) {
  auto* knob = new Knob(range.lowest, range.highest, range.rest, look_.skin, look_.skin.text);
  Name(*knob, name, look_.say.Of(word));
  auto* value = new QLabel;
  value->setAlignment(Qt::AlignCenter);
  SetWidest(*value, QStringLiteral("−88 dB"));
  SetTextColour(*value, look_.skin.dim);
  connect(knob, &QSlider::valueChanged, this, [this, write = std::move(write)](int step) {
    Touch();
    write(step);
  });
  return dials_.emplace_back(Dial{knob, value, std::move(read), std::move(text)});
}

MicrophonePanel::Dial& MicrophonePanel::AddVoice(const char* name, MicrophoneWord word, Range range,
                                                 float decks::VoiceSettings::*number, Text text) {
  return AddDial(
      name, word, range, [this, number] { return static_cast<int>(std::lround(voice_.*number)); },
      [this, number](int step) {
        voice_.*number = static_cast<float>(step);
        SendVoice();
      },
      std::move(text));
}

MicrophonePanel::Dial& MicrophonePanel::AddTime(const char* name, MicrophoneWord word, Range range,
                                                std::chrono::milliseconds decks::DuckSettings::*time,
                                                int step) {
  return AddDial(
      name, word, range, [this, time, step] { return static_cast<int>((duck_.*time).count()) / step; },
      [this, time, step](int steps) {
        duck_.*time = std::chrono::milliseconds(steps * step);
        SendDuck();
      },
      [this, time] { return TimeText(duck_.*time); });
}

QLayout* MicrophonePanel::Cell(const Dial& dial, MicrophoneWord word) const {
  auto* caption = Caption(look_.say(word), look_.skin.text);
  caption->setAlignment(Qt::AlignCenter);
  return Column(0.1, {caption, {dial.knob, 0, Qt::AlignHCenter}, dial.value});
}

QLayout* MicrophonePanel::MakeVoice() {
  using Voice = decks::VoiceSettings;
  const auto& say = look_.say;
  const auto voice = [this](const char* name, MicrophoneWord word, Range range, float Voice::*number) {
    return Cell(AddVoice(name, word, range, number, [this, number] { return DecibelText(voice_.*number); }),
                word);
  };
  auto* tone = Row(0.4, {voice("MicrophoneGain", MicrophoneWord::Gain, {-20, 40, 0}, &Voice::gain),
                         Cell(AddDial(
                                  "MicrophoneLowCut", MicrophoneWord::LowCut, {kNoLowCut, 120, kNoLowCut},
                                  [this] { return std::max(kNoLowCut, int(std::lround(voice_.low_cut))); },
                                  [this](int hertz) {
                                    voice_.low_cut = hertz == kNoLowCut ? 0 : static_cast<float>(hertz);
                                    SendVoice();
                                  },
                                  [this] {
                                    return voice_.low_cut > 0
                                               ? QStringLiteral("%1 Hz").arg(std::lround(voice_.low_cut))
                                               : look_.say(MicrophoneWord::Off);
                                  }),
                              MicrophoneWord::LowCut),
                         voice("MicrophoneBass", MicrophoneWord::Bass, {-12, 12, 0}, &Voice::bass),
                         voice("MicrophoneMiddle", MicrophoneWord::Middle, {-12, 12, 0}, &Voice::middle),
                         voice("MicrophoneTreble", MicrophoneWord::Treble, {-12, 12, 0}, &Voice::treble)});
  gate_ = Choice(look_.skin, "MicrophoneGate", say.Of(MicrophoneWord::Gate),
                 {say(MicrophoneWord::Off), say(MicrophoneWord::GateLearns), say(MicrophoneWord::GateFixed)},
                 1, [this](int row) {
                   Touch();
                   voice_.gate = static_cast<decks::GateMode>(row);
                   SendVoice();
                 });
  compressor_ = Check("MicrophoneCompressor", say.Of(MicrophoneWord::Compressor), true, [this](bool on) {
    Touch();
    voice_.compress = on;
    SendVoice();
  });
  auto* gate_level =
      voice("MicrophoneGateLevel", MicrophoneWord::GateLevel, {-80, -10, -45}, &Voice::gate_level);
  gate_level_ = dials_.back().knob;
  const std::size_t first = dials_.size();
  auto* threshold = voice("MicrophoneThreshold", MicrophoneWord::Threshold, {-60, 0, -20}, &Voice::threshold);
  auto* ratio = Cell(AddVoice("MicrophoneRatio", MicrophoneWord::Ratio, {1, 20, 4}, &Voice::ratio,
                              [this] { return QStringLiteral("%1 : 1").arg(std::lround(voice_.ratio)); }),
                     MicrophoneWord::Ratio);
  auto* makeup = voice("MicrophoneMakeUp", MicrophoneWord::MakeUp, {0, 24, 6}, &Voice::makeup);
  for (std::size_t i = first; i < dials_.size(); ++i) of_compressor_.push_back(dials_[i].knob);
  auto* gate =
      Column(0.2, {Caption(say(MicrophoneWord::Gate), look_.skin.text), gate_, compressor_, Part::Room()});
  return Column(0.5, {tone, Row(0.4, {gate, gate_level, threshold, ratio, makeup}), Part::Room()});
}

QLayout* MicrophonePanel::MakeDuck() {
  using Duck = decks::DuckSettings;
  ducks_ = Check("MicrophoneDuck", look_.say.Of(MicrophoneWord::Duck), true, [this](bool on) {
    Touch();
    duck_.on = on;
    SendDuck();
  });
  const std::size_t first = dials_.size();
  auto* depth = Cell(AddDial(
                         "MicrophoneDuckDepth", MicrophoneWord::Depth, {0, 40, 12},
                         [this] { return static_cast<int>(std::lround(duck_.depth)); },
                         [this](int decibels) {
                           duck_.depth = static_cast<float>(decibels);
                           SendDuck();
                         },
                         [this] { return DecibelText(-duck_.depth); }),
                     MicrophoneWord::Depth);
  const auto time = [this](const char* name, MicrophoneWord word, Range range,
                           std::chrono::milliseconds Duck::*number,
                           int step) { return Cell(AddTime(name, word, range, number, step), word); };
  auto* attack = time("MicrophoneDuckAttack", MicrophoneWord::Attack, {1, 100, 5}, &Duck::attack, 10);
  auto* hold = time("MicrophoneDuckHold", MicrophoneWord::Hold, {0, 50, 4}, &Duck::hold, 100);
  auto* release = time("MicrophoneDuckRelease", MicrophoneWord::Release, {1, 100, 6}, &Duck::release, 100);
  for (std::size_t i = first; i < dials_.size(); ++i) of_duck_.push_back(dials_[i].knob);
  return Column(0.5, {ducks_, Row(0.4, {depth, attack, hold, release}), Part::Room()});
}

void MicrophonePanel::SendVoice() {
  station_.SetVoice(voice_);
}

void MicrophonePanel::SendDuck() {
  station_.SetDuck(duck_);
}

void MicrophonePanel::hideEvent(QHideEvent* event) {
  // Nothing listens unasked.
  if (check_->isChecked()) check_->click();
  QWidget::hideEvent(event);
}

void MicrophonePanel::Show(support::TimePoint now) {
  now_ = now;
  if (!isVisible()) {
    looked_ = false;
    return;
  }
  if (!std::exchange(looked_, true)) station_.LookForInputs();
  const app::MicrophoneView& view = station_.View();
  setEnabled(view.there);
  meter_->Show(view.now.input, view.now.level, now);
  SetText(*state_, StateText(view));
  SetTextColour(*state_, view.trouble.empty() && view.there ? look_.skin.dim : look_.skin.warning);
  SetText(*turned_down_, view.now.open ? look_.say(MicrophoneWord::TurnedDown)
                                             .arg(std::lround(view.now.reduction))
                                             .arg(std::lround(view.now.ducking))
                                       : QString());
  const bool turns =
      std::any_of(dials_.begin(), dials_.end(), [](const Dial& dial) { return dial.knob->isSliderDown(); });
  if (!turns && (!touched_ || now - *touched_ >= kHandRests)) ShowChoices(view);
  for (const Dial& dial : dials_) SetText(*dial.value, dial.text());
  gate_level_->setEnabled(voice_.gate == decks::GateMode::Fixed);
  for (Knob* knob : of_compressor_) knob->setEnabled(voice_.compress);
  for (Knob* knob : of_duck_) knob->setEnabled(duck_.on);
}

void MicrophonePanel::ShowChoices(const app::MicrophoneView& view) {
  voice_ = view.wish.voice;
  duck_ = view.wish.duck;
  ShowInputs(view);
  ShowChannels(view);
  SetChecked(*check_, view.wish.check);
  SetChecked(*swift_, view.wish.swift);
  SetChecked(*compressor_, voice_.compress);
  SetChecked(*ducks_, duck_.on);
  if (!gate_->view()->isVisible()) gate_->setCurrentIndex(static_cast<int>(voice_.gate));
  for (const Dial& dial : dials_) {
    const QSignalBlocker quiet(dial.knob);
    dial.knob->setValue(dial.read());
  }
}

void MicrophonePanel::ShowInputs(const app::MicrophoneView& view) {
  const auto& say = look_.say;
  const QByteArray chosen = QByteArray::fromStdString(view.wish.device);
  std::vector<std::pair<QString, QVariant>> items{{say(MicrophoneWord::DefaultInput), QByteArray("")}};
  for (const decks::InputInfo& info : *view.now.inputs) {
    const QString name = Decode(info.name);
    items.emplace_back(info.loop ? say(MicrophoneWord::PlaysHere).arg(name) : name,
                       QByteArray::fromStdString(info.id));
  }
  const bool listed = std::any_of(items.begin(), items.end(),
                                  [&](const auto& item) { return item.second.toByteArray() == chosen; });
  if (!listed) items.emplace_back(say(MicrophoneWord::NotThere).arg(Decode(view.device_name)), chosen);
  SetItems(*device_, items, chosen);
}

void MicrophonePanel::ShowChannels(const app::MicrophoneView& view) {
  const auto& inputs = *view.now.inputs;
  const std::string& wanted = view.wish.device.empty() ? view.now.device : view.wish.device;
  const auto found = std::find_if(inputs.begin(), inputs.end(), [&](const decks::InputInfo& info) {
    return wanted.empty() ? info.is_default : info.id == wanted;
  });
  const int channels = std::max(found == inputs.end() ? 1 : found->channels, view.wish.channel);
  std::vector<std::pair<QString, QVariant>> items;
  for (int channel = 1; channel <= channels; ++channel) {
    items.emplace_back(look_.say(MicrophoneWord::ChannelOf).arg(channel), channel);
  }
  items.emplace_back(look_.say(MicrophoneWord::AllChannels), 0);
  SetItems(*channel_, items, view.wish.channel);
}

QString MicrophonePanel::StateText(const app::MicrophoneView& view) const {
  const auto& say = look_.say;
  if (!view.there) return say(MicrophoneWord::NotPossible);
  if (!view.trouble.empty()) return Decode(view.trouble);
  const bool hall = view.wish.on || view.wish.talk_over;
  if (!hall && !view.wish.check) return say(MicrophoneWord::IsOff);
  if (!view.now.open) return say(MicrophoneWord::Opens);
  if (!hall) return say(MicrophoneWord::Listens);
  const auto latency = std::lround(double(view.now.latency.count()) / 1000);
  return latency > 0 ? say(MicrophoneWord::OnAirAfter).arg(latency) : say(MicrophoneWord::OnAir);
}

}  // namespace ui
