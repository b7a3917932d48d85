// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/EffectUnit.h"

#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "app/EffectStation.h"
#include "ui/models/EffectText.h"
#include "ui/strings/EffectWords.h"
#include "ui/widgets/Kit.h"
#include "ui/widgets/Knob.h"
#include "ui/widgets/QuietCombo.h"

namespace ui {
namespace {

using app::EffectControl;
using decks::EffectKind;

constexpr double kHeadEms = 2.4;

struct Shape {
  EffectWord word;
  const char* name;
};

Shape ShapeOf(EffectKind kind) {
  switch (kind) {
    case EffectKind::Equaliser:
      return {EffectWord::UnitEqualiser, "Equalizer"};
    case EffectKind::Filter:
      return {EffectWord::UnitFilter, "Filter"};
    case EffectKind::LowPass:
      return {EffectWord::UnitLowPass, "LowPass"};
    case EffectKind::Flanger:
      return {EffectWord::UnitFlanger, "Flanger"};
    case EffectKind::Echo:
      return {EffectWord::UnitEcho, "Echo"};
    case EffectKind::Echo3:
      return {EffectWord::UnitEcho3, "Echo3"};
    case EffectKind::Reverb:
      return {EffectWord::UnitReverb, "Reverb"};
    case EffectKind::Swap:
      return {EffectWord::UnitSwap, "Swap"};
    case EffectKind::Rotate:
      break;
  }
  return {EffectWord::UnitRotate, "Rotate"};
}

EffectWord WordOf(EffectControl control) {
  switch (control) {
    case EffectControl::Filter:
      return EffectWord::KnobFilter;
    case EffectControl::FilterResonance:
    case EffectControl::LowPassResonance:
      return EffectWord::KnobResonance;
    case EffectControl::LowPassCut:
      return EffectWord::KnobCut;
    case EffectControl::FlangerSpeed:
    case EffectControl::RotateSpeed:
      return EffectWord::KnobSpeed;
    case EffectControl::FlangerWetdry:
      return EffectWord::KnobWetDry;
    case EffectControl::EchoLevel:
    case EffectControl::ReverbLevel:
      return EffectWord::KnobLevel;
    case EffectControl::EchoDelay:
    case EffectControl::Echo3Delay:
      return EffectWord::KnobTime;
    case EffectControl::Echo3DryMix:
      return EffectWord::KnobDry;
    case EffectControl::Echo3WetMix:
      return EffectWord::KnobWet;
    case EffectControl::ReverbDelay:
      return EffectWord::KnobDecay;
    case EffectControl::RotateDepth:
      break;
  }
  return EffectWord::KnobDepth;
}

/// What of an effect goes by the beat when it is locked.
double LockedMeaning(EffectControl control, const decks::EffectSettings& settings) {
  switch (control) {
    case EffectControl::FlangerSpeed:
      return double(settings.flanger.hertz);
    case EffectControl::EchoDelay:
      return double(settings.echo.seconds);
    case EffectControl::Echo3Delay:
      return double(settings.echo3.seconds);
    case EffectControl::RotateSpeed:
      return double(settings.rotate.hertz);
    default:
      return 0;
  }
}

}  // namespace

EffectUnit::EffectUnit(int deck, EffectKind kind, app::EffectStation& effects, const Look& look,
                       QWidget* parent)
    : Surface(look.skin.raised, parent), deck_(deck), kind_(kind), effects_(effects), look_(look) {
  name_ = look.say(ShapeOf(kind).word);
  for (const app::EffectKnob& knob : app::EffectKnobs()) {
    if (knob.of == kind) dials_.push_back({.control = knob.control, .echo = {}});
  }
  const bool plain = kind == EffectKind::Equaliser || kind == EffectKind::Filter;
  auto* dials = Row(0.2);
  for (std::size_t place = 0; place < dials_.size(); ++place) dials->addWidget(MakeDial(place), 1);
  auto* rows = new QVBoxLayout(this);
  SetSpacingEm(*rows, 0.35, 0.3);
  rows->addWidget(MakeHead());
  rows->addLayout(dials);
  if (!app::KeysOf(kind).beats.empty()) rows->addWidget(lock_ = MakeLock());
  if (plain) {
    rows->addStretch(1);
  } else {
    rows->addWidget(pad_ = MakePad(), 1);
  }
}

EffectUnit::~EffectUnit() {
  if (held_) effects_.Hold(deck_, kind_, false);
}

// A page that goes away under the finger lets go for it.
void EffectUnit::hideEvent(QHideEvent* event) {
  if (pad_ != nullptr) pad_->setDown(false);
  Hold(false);
  Surface::hideEvent(event);
}

int EffectUnit::Share() const {
  return std::max(3, static_cast<int>(2 * dials_.size()));
}

int EffectUnit::Middle() const {
  return Em(*this, 0.35 + kHeadEms / 2);
}

QWidget* EffectUnit::MakeHead() {
  const Shape shape = ShapeOf(kind_);
  const QString tip = look_.say.Tip(shape.word);
  const QString name = look_.say(EffectWord::UnitOn).arg(name_).arg(deck_);
  if (app::KeysOf(kind_).on.empty()) {
    auto* label = Caption(name_, look_.skin.text);
    label->setAlignment(Qt::AlignCenter);
    label->setToolTip(tip);
    SetHeightEm(*label, kHeadEms);
    return label;
  }
  lamp_ = Lamp(
      DeckName(deck_, shape.name), {name_, name, tip}, [this](bool on) { effects_.Switch(deck_, kind_, on); },
      deck_ == 1 ? "lamp1" : "lamp2");
  SetHeightEm(*lamp_, kHeadEms);
  return lamp_;
}

QWidget* EffectUnit::MakeDial(std::size_t place) {
  Dial& dial = dials_[place];
  const app::EffectKnob& knob = app::KnobOf(dial.control);
  const QString caption = look_.say(WordOf(dial.control));
  const QString key = QString::fromLatin1(knob.key.data(), static_cast<int>(knob.key.size()));
  dial.knob = new Knob(0, 100, knob.rest, look_.skin, look_.skin.Deck(deck_));
  Name(*dial.knob, DeckName(deck_, "Turn") + key,
       look_.say(EffectWord::KnobOf).arg(name_, caption, QString::number(deck_)), {});
  if (dial.control != EffectControl::Filter) dial.knob->FillFromLowest();
  connect(dial.knob, &QSlider::valueChanged, this, [this, place](int slider) { Turn(place, slider); });
  dial.value = new QLabel;
  dial.value->setAlignment(Qt::AlignCenter);
  Name(*dial.value, DeckName(deck_, "Value") + key);
  auto* label = Caption(caption, look_.skin.dim);
  label->setAlignment(Qt::AlignCenter);
  Tell(dial, EffectText(knob, knob.rest));
  auto* box = new QWidget;
  FillColumn(*box, 0, 0, {{dial.knob, 0, Qt::AlignHCenter}, label, dial.value});
  return box;
}

QuietCombo* EffectUnit::MakeLock() {
  QStringList lengths;
  for (const int quarters : app::kBeatQuarters) {
    lengths << (quarters == 0 ? look_.say(EffectWord::BeatFree)
                              : look_.say(EffectWord::BeatLength).arg(BeatText(quarters)));
  }
  const QString name = look_.say(EffectWord::BeatLock).arg(name_).arg(deck_);
  return Choice(look_.skin, DeckName(deck_, "Beats") + QLatin1String(ShapeOf(kind_).name),
                {name, name, look_.say.Tip(EffectWord::BeatLock)}, lengths, 0, [this](int index) {
                  effects_.LockToBeat(deck_, kind_, app::kBeatQuarters[static_cast<std::size_t>(index)]);
                });
}

QPushButton* EffectUnit::MakePad() {
  const QString name = look_.say(EffectWord::HoldOf).arg(name_).arg(deck_);
  auto* pad = Lamp(DeckName(deck_, "Hold") + QLatin1String(ShapeOf(kind_).name),
                   {look_.say(EffectWord::HoldPad), name, look_.say.Tip(EffectWord::HoldPad)}, {},
                   deck_ == 1 ? "lamp1" : "lamp2");
  pad->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
  connect(pad, &QPushButton::pressed, this, [this, pad] {
    pad->setChecked(true);
    Hold(true);
  });
  connect(pad, &QPushButton::released, this, [this] { Hold(false); });
  return pad;
}

void EffectUnit::Turn(std::size_t place, int slider) {
  Dial& dial = dials_[place];
  dial.echo.Sent(float(slider), now_);
  effects_.Turn(deck_, dial.control, slider);
  Tell(dial, EffectText(app::KnobOf(dial.control), slider));
}

void EffectUnit::Hold(bool held) {
  if (std::exchange(held_, held) != held) effects_.Hold(deck_, kind_, held);
}

void EffectUnit::Tell(Dial& dial, const QString& meaning) {
  SetText(*dial.value, meaning);
  if (dial.knob->accessibleDescription() == meaning) return;
  dial.knob->setAccessibleDescription(meaning);
  dial.knob->setToolTip(look_.say.Tip(EffectWord::KnobOf).arg(look_.say(WordOf(dial.control)), meaning));
}

QString EffectUnit::MeaningOf(const Dial& dial, const app::DeckView& view, bool& locked) const {
  const app::EffectKnob& knob = app::KnobOf(dial.control);
  const bool by_beat = view.effects.quarters[app::PlaceOf(kind_)] != 0 && view.playing_bpm > 0;
  const double meaning =
      by_beat ? LockedMeaning(dial.control, app::SettingsOf(view.effects, view.playing_bpm)) : 0;
  locked = meaning > 0;
  return locked ? EffectText(knob.unit, meaning) : EffectText(knob, dial.knob->value());
}

void EffectUnit::Show(const app::DeckView& view, support::TimePoint now) {
  now_ = now;
  const std::size_t kind = app::PlaceOf(kind_);
  if (lamp_ != nullptr && !lamp_->isDown()) lamp_->setChecked(view.effects.on[kind]);
  if (pad_ != nullptr && !pad_->isDown()) pad_->setChecked(view.effects_held[kind]);
  for (Dial& dial : dials_) {
    const int slider = view.effects.sliders[app::PlaceOf(dial.control)];
    if (!dial.knob->isSliderDown() && dial.echo.Believe(float(slider), now) && dial.knob->value() != slider) {
      const QSignalBlocker quiet(dial.knob);
      dial.knob->setValue(slider);
    }
    bool locked = false;
    Tell(dial, MeaningOf(dial, view, locked));
    dial.knob->SetOut(locked);
  }
  if (lock_ == nullptr) return;
  const auto chosen =
      std::find(app::kBeatQuarters.begin(), app::kBeatQuarters.end(), view.effects.quarters[kind]);
  lock_->setCurrentIndex(static_cast<int>(chosen - app::kBeatQuarters.begin()));
}

}  // namespace ui
