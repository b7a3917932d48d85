// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/LivePalette.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <algorithm>

#include "ui/forms/LiveColumn.h"
#include "ui/strings/Decode.h"
#include "ui/strings/LiveWords.h"
#include "ui/widgets/ColourButton.h"
#include "ui/widgets/Fader.h"
#include "ui/widgets/Kit.h"
#include "ui/widgets/QuietCombo.h"

namespace ui {
namespace {

constexpr int kSteps = 255;
constexpr std::array<LiveWord, dmx::kMixedColours> kColourNames{
    LiveWord::ColourRed,   LiveWord::ColourOrange, LiveWord::ColourYellow, LiveWord::ColourGreen,
    LiveWord::ColourCyan,  LiveWord::ColourBlue,   LiveWord::ColourViolet, LiveWord::ColourPink,
    LiveWord::ColourWhite, LiveWord::ColourWarm};

}  // namespace

LivePalette::LivePalette(const Look& look, QWidget* parent) : QWidget(parent), look_(look) {
  const auto& say = look.say;
  colours_ = new QHBoxLayout;
  SetSpacingEm(*colours_, 0, 0.25);
  MakeColours();
  none_ = Caption(say(LiveWord::NoColours), look.skin.dim);
  SetHeightEm(*none_, LiveColumn::kButtonEms);
  gobo_ = Choice(look.skin, "LiveGobo", say.Of(LiveWord::Gobo), {}, 0, [this](int choice) {
    dmx::LiveLook wanted;
    wanted.gobo = gobo_->itemData(choice).toByteArray().toStdString();
    Q_EMIT LookWanted(wanted);
  });
  gobo_->setPlaceholderText(say(LiveWord::Gobo));
  SetHeightEm(*gobo_, LiveColumn::kButtonEms);
  rotation_ = Slide("LiveRotation", LiveWord::GoboRotation, &dmx::LiveLook::gobo_rotation);
  speed_ = Slide("LiveSpeed", LiveWord::HeadSpeed, &dmx::LiveLook::speed);
  pan_ = Slide("LivePan", LiveWord::Pan, &dmx::LiveLook::pan);
  tilt_ = Slide("LiveTilt", LiveWord::Tilt, &dmx::LiveLook::tilt);
  FillColumn(*this, 0, 0.35,
             {Row(0.25, {none_, Part(colours_, 1)}), Row(0.6, {{gobo_, 1}, {rotation_, 1}, {speed_, 1}}),
              Row(0.6, {{pan_, 1}, {tilt_, 1}})});
}

QWidget* LivePalette::Slide(const char* name, AnyWord called, Field field) {
  auto* fader = new Fader(Qt::Horizontal, look_.skin, look_.skin.decks[1]);
  fader->setRange(0, kSteps);
  fader->setPageStep(16);
  fader->setValue(kSteps / 2);
  Name(*fader, name, look_.say.Of(called));
  SetHeightEm(*fader, LiveColumn::kButtonEms);
  connect(fader, &QSlider::valueChanged, this, [this, field](int value) {
    dmx::LiveLook wanted;
    wanted.*field = double(value) / kSteps;
    Q_EMIT LookWanted(wanted);
  });
  auto* both = new QWidget;
  FillRow(*both, 0, 0.4, {Caption(look_.say(called), look_.skin.dim), {fader, 1}});
  return both;
}

void LivePalette::MakeColours() {
  for (std::size_t place = 0; place < fields_.size(); ++place) {
    auto* field = fields_[place] = new ColourButton({}, look_.skin);
    Name(*field, QStringLiteral("LiveColour%1").arg(place));
    field->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    SetHeightEm(*field, LiveColumn::kButtonEms);
    field->hide();
    connect(field, &QAbstractButton::clicked, this, [this, place] {
      dmx::LiveLook wanted;
      wanted.colour = palette_[place].colour;
      Q_EMIT LookWanted(wanted);
    });
    colours_->addWidget(field, 1);
  }
}

void LivePalette::ShowColours() {
  for (std::size_t place = 0; place < fields_.size(); ++place) {
    fields_[place]->setVisible(place < palette_.size());
    if (place >= palette_.size()) continue;
    const dmx::PaletteColour& one = palette_[place];
    const bool mixed = one.name.empty() && place < kColourNames.size();
    const QString name = mixed ? look_.say(kColourNames[place]) : Decode(one.name);
    fields_[place]->SetColour(QColor(one.colour.red, one.colour.green, one.colour.blue));
    fields_[place]->setAccessibleName(name);
    fields_[place]->setToolTip(name);
  }
  none_->setVisible(palette_.empty());
}

void LivePalette::ShowFor(const dmx::DMXname& fixtures, const std::vector<int>& targets) {
  palette_ = dmx::PaletteOf(fixtures, targets);
  if (palette_.size() > fields_.size()) palette_.resize(fields_.size());
  ShowColours();
  dmx::LiveAbilities any;
  for (const int position : targets) {
    const dmx::DMXfilename* fixture = fixtures.Item(position);
    if (fixture == nullptr) continue;
    const dmx::LiveAbilities can = dmx::AbilitiesOf(*fixture);
    any.gobo = any.gobo || can.gobo;
    any.gobo_rotation = any.gobo_rotation || can.gobo_rotation;
    any.speed = any.speed || can.speed;
    any.moves = any.moves || can.moves;
  }
  const QSignalBlocker quiet(gobo_);
  gobo_->clear();
  for (const std::string& name : dmx::GobosOf(fixtures, targets))
    gobo_->addItem(Decode(name), QByteArray::fromStdString(name));
  gobo_->setCurrentIndex(-1);
  gobo_->setEnabled(any.gobo && gobo_->count() > 0);
  rotation_->setEnabled(any.gobo_rotation);
  speed_->setEnabled(any.speed);
  pan_->setEnabled(any.moves);
  tilt_->setEnabled(any.moves);
}

}  // namespace ui
