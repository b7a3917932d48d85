// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/LiveEffects.h"

#include <QLabel>
#include <QPushButton>
#include <algorithm>
#include <cmath>
#include <iterator>

#include "ui/forms/LiveColumn.h"
#include "ui/strings/LiveWords.h"
#include "ui/widgets/Fader.h"
#include "ui/widgets/Kit.h"
#include "ui/widgets/QuietCombo.h"

namespace ui {
namespace {

struct KindText {
  const char* name;
  LiveWord word;
};
constexpr std::array<KindText, dmx::kEffectKinds> kKindTexts{{{"EffectColours", LiveWord::EffectColours},
                                                              {"EffectChase", LiveWord::EffectChase},
                                                              {"EffectPulse", LiveWord::EffectPulse},
                                                              {"EffectCircle", LiveWord::EffectCircle},
                                                              {"EffectEight", LiveWord::EffectEight},
                                                              {"EffectFan", LiveWord::EffectFan},
                                                              {"EffectSweep", LiveWord::EffectSweep}}};
constexpr int kOneBeat = 2;  ///< place in the list of rates
constexpr int kFullSize = 100;

}  // namespace

LiveEffects::LiveEffects(app::LiveLightStation& live, const Look& look, QWidget* parent)
    : QWidget(parent), live_(live), look_(look) {
  const auto& say = look.say;
  for (std::size_t kind = 0; kind < kinds_.size(); ++kind) {
    kinds_[kind] = Lamp(kKindTexts[kind].name, say.Of(kKindTexts[kind].word),
                        [this, kind](bool on) { Switch(static_cast<dmx::EffectKind>(kind), on); });
    SetHeightEm(*kinds_[kind], LiveColumn::kButtonEms);
  }
  MakeRates();
  size_ = new Fader(Qt::Horizontal, look.skin, look.skin.decks[1]);
  size_->setRange(0, kFullSize);
  size_->setPageStep(10);
  size_->setValue(kFullSize / 2);
  Name(*size_, "EffectSize", say.Of(LiveWord::EffectSize));
  SetHeightEm(*size_, LiveColumn::kButtonEms);
  connect(size_, &QSlider::valueChanged, this, [this] { Retime(); });
  music_ = Reading("EffectMusic", Qt::AlignCenter, say(LiveWord::OnTheBeat).arg(400));
  FillColumn(*this, 0, 0.35,
             {Row(0.3, {{kinds_[0], 1}, {kinds_[1], 1}, {kinds_[2], 1}}),
              Row(0.3, {{kinds_[3], 1}, {kinds_[4], 1}, {kinds_[5], 1}, {kinds_[6], 1}}),
              Row(0.6, {Caption(say(LiveWord::RateOf), look.skin.dim),
                        rate_,
                        Caption(say(LiveWord::EffectSize), look.skin.dim),
                        {size_, 1},
                        music_})});
}

void LiveEffects::MakeRates() {
  const auto& say = look_.say;
  QStringList names;
  for (const double beats : dmx::kEffectBeats) {
    rates_.push_back({dmx::EffectRate::Unit::Beats, beats});
    names += beats < 1 ? say(LiveWord::RatePart).arg(beats < 0.4 ? QStringLiteral("¼") : QStringLiteral("½"))
                       : say.Count(LiveWord::RateBeats, static_cast<int>(beats));
  }
  for (const double hertz : {0.1, 0.5, 1.0, 2.0}) {
    rates_.push_back({dmx::EffectRate::Unit::Hertz, hertz});
    names += say(LiveWord::RateHertz).arg(hertz);
  }
  rate_ =
      Choice(look_.skin, "EffectRate", say.Of(LiveWord::RateOf), names, kOneBeat, [this](int) { Retime(); });
  SetHeightEm(*rate_, LiveColumn::kButtonEms);
}

dmx::LightEffect LiveEffects::Effect(dmx::EffectKind kind) const {
  dmx::LightEffect effect;
  effect.kind = kind;
  effect.rate = rates_[static_cast<std::size_t>(std::max(rate_->currentIndex(), 0))];
  effect.size = double(size_->value()) / kFullSize;
  effect.fixtures = targets_;
  return effect;
}

void LiveEffects::Switch(dmx::EffectKind kind, bool on) {
  if (on) return live_.Start(Effect(kind));
  live_.End(targets_, dmx::SubjectOf(kind));
}

void LiveEffects::Retime() {
  // Of those that run, the chosen fixtures alone: whoever has another effect, or none, keeps that.
  const std::vector<dmx::LightEffect> running = live_.View().effects;
  for (const dmx::LightEffect& effect : running) {
    dmx::LightEffect anew = Effect(effect.kind);
    anew.colours = effect.colours;
    anew.fixtures.clear();
    std::copy_if(
        effect.fixtures.begin(), effect.fixtures.end(), std::back_inserter(anew.fixtures),
        [&](int fixture) { return std::find(targets_.begin(), targets_.end(), fixture) != targets_.end(); });
    if (!anew.fixtures.empty()) live_.Start(std::move(anew));
  }
}

void LiveEffects::ShowFor(const dmx::DMXname& fixtures, const std::vector<int>& targets) {
  targets_ = targets;
  bool colour = false, light = false, moves = false;
  for (const int position : targets) {
    const dmx::DMXfilename* fixture = fixtures.Item(position);
    if (fixture == nullptr) continue;
    const dmx::LiveAbilities can = dmx::AbilitiesOf(*fixture);
    colour = colour || can.mixes || can.wheel;
    light = light || can.dims || can.mixes || can.shutter;
    moves = moves || can.moves;
  }
  for (std::size_t kind = 0; kind < kinds_.size(); ++kind) {
    const dmx::EffectSubject subject = dmx::SubjectOf(static_cast<dmx::EffectKind>(kind));
    const bool can = subject == dmx::EffectSubject::Colour  ? colour
                     : subject == dmx::EffectSubject::Light ? light
                                                            : moves;
    kinds_[kind]->setEnabled(can);
  }
}

bool LiveEffects::Runs(const app::LiveView& view, dmx::EffectKind kind) const {
  return std::any_of(view.effects.begin(), view.effects.end(), [&](const dmx::LightEffect& effect) {
    return effect.kind == kind &&
           std::any_of(effect.fixtures.begin(), effect.fixtures.end(), [&](int fixture) {
             return std::binary_search(targets_.begin(), targets_.end(), fixture);
           });
  });
}

void LiveEffects::Show(const app::LiveView& view) {
  for (std::size_t kind = 0; kind < kinds_.size(); ++kind)
    kinds_[kind]->setChecked(Runs(view, static_cast<dmx::EffectKind>(kind)));
  SetText(*music_, view.music ? look_.say(LiveWord::OnTheBeat).arg(std::lround(view.music->tempo))
                              : look_.say(LiveWord::ByTheClock));
}

}  // namespace ui
