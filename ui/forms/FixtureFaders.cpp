// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/FixtureFaders.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "ui/models/ChannelText.h"
#include "ui/strings/Decode.h"
#include "ui/strings/EditorWords.h"
#include "ui/widgets/ElidedLabel.h"
#include "ui/widgets/Fader.h"
#include "ui/widgets/Kit.h"
#include "ui/widgets/LightIcons.h"
#include "ui/widgets/Pad.h"

namespace ui {
namespace {

constexpr double kFaderColumnEms = 4.6;
constexpr double kFaderPictureEms = 1.5;

QString FaderName(const dmx::FixtureChannel& channel) {
  const QString label = Decode(channel.label);
  return label.isEmpty() ? Decode(dmx::FunctionText(channel.function)) : label;
}

}  // namespace

QString FixtureTitle(const dmx::DMXfilename& fixture) {
  QString name = Decode(dmx::NameWithoutFolder(fixture.Filename));
  if (name.endsWith(QStringLiteral(".dmx"), Qt::CaseInsensitive)) name.chop(4);
  return name;
}

QString FixtureChannels(const dmx::DMXfilename& fixture) {
  const int count = std::max(dmx::ChannelCount(fixture), 1);
  const QString first = QString::number(fixture.StartChannel);
  return count == 1 ? first : first + QStringLiteral("–%1").arg(fixture.StartChannel + count - 1);
}

FixtureFaders::FixtureFaders(int position, const dmx::DMXfilename& fixture, const Look& look, QWidget* parent)
    : Surface(look.skin.panel, parent),
      position_(position),
      fixture_(fixture),
      mix_(dmx::ColourChannelsOf(fixture.Channels)),
      pan_(dmx::AxisChannelsOf(fixture.Channels, dmx::ChannelFunction::Pan)),
      tilt_(dmx::AxisChannelsOf(fixture.Channels, dmx::ChannelFunction::Tilt)),
      look_(look) {
  setObjectName(QStringLiteral("Fixture%1").arg(position));
  auto* head = new ElidedLabel;
  head->Show(
      QStringLiteral("%1  %2 · %3").arg(position).arg(FixtureTitle(fixture), FixtureChannels(fixture)));
  SetFontEm(*head, 1.0, Weight::Bold);
  auto* row = new QHBoxLayout;
  SetSpacingEm(*row, 0, 0.2);
  AddPads(*row);
  for (const int channel : dmx::FaderOrder(fixture.Channels)) row->addWidget(MakeColumn(channel));
  if (fixture.Channels.count() == 0) {
    auto* missing = new QLabel(look.say(EditorWord::MissingFile));
    missing->setWordWrap(true);
    SetTextColour(*missing, look.skin.warning);
    row->addWidget(missing);
  }
  FillColumn(*this, 0.5, 0.3, {head, {row, 1}});
}

void FixtureFaders::AddPads(QHBoxLayout& row) {
  const auto add = [&](Pad::Kind kind, const char* name, EditorWord tip) {
    auto* pad = new Pad(kind, look_.skin);
    const QString text = look_.say(tip).arg(position_);
    Name(*pad, QLatin1String(name) + QString::number(position_), text, text);
    row.addWidget(pad, 0, Qt::AlignTop);
    return pad;
  };
  if (mix_.Mix()) {
    colour_ = add(Pad::Kind::Colour, "Colour", EditorWord::ColourPadTip);
    connect(colour_, &Pad::Moved, this, [this] { Q_EMIT ColourMoved(position_, colour_->Colour()); });
  }
  if (pan_.coarse > 0 && tilt_.coarse > 0) {
    direction_ = add(Pad::Kind::Direction, "Direction", EditorWord::DirectionPadTip);
    connect(direction_, &Pad::Moved, this, [this] { Q_EMIT DirectionMoved(position_, direction_->Place()); });
  }
}

QWidget* FixtureFaders::MakeColumn(int channel) {
  const dmx::FixtureChannel& description = *fixture_.Channels.Item(channel);
  const int on_the_wire = fixture_.StartChannel + channel - 1;
  const QString name = FaderName(description);
  auto* counter = new QLabel(QString::number(on_the_wire));
  counter->setAlignment(Qt::AlignCenter);
  SetTextColour(*counter, look_.skin.dim);
  auto* fader = new Fader(Qt::Vertical, look_.skin, FunctionColour(description.function, description.label));
  fader->setRange(0, dmx::kHighestLevel);
  const QString tip = look_.say(EditorWord::FaderTip).arg(on_the_wire).arg(name);
  Name(*fader, QStringLiteral("Fader%1").arg(on_the_wire), tip, tip);
  auto* level = new QLabel(QStringLiteral("0"));
  level->setAlignment(Qt::AlignCenter);
  Name(*level, QStringLiteral("FaderLevel%1").arg(on_the_wire));
  connect(fader, &QSlider::valueChanged, this, [this, channel, level](int value) {
    level->setText(QString::number(value));
    Q_EMIT LevelMoved(position_, channel, value);
  });
  auto* function = new QPushButton;
  SetKind(*function, "tool");
  const bool any = description.presets.count() > 0;
  function->setEnabled(any);
  const QString choose = look_.say(any ? EditorWord::PresetMenuTip : EditorWord::NoPresetMenuTip)
                             .arg(on_the_wire)
                             .arg(Decode(dmx::FunctionText(description.function)));
  Name(*function, QStringLiteral("Presets%1").arg(on_the_wire), choose, choose);
  connect(function, &QPushButton::clicked, this,
          [this, channel, function] { ShowPresets(channel, *function); });
  auto* label = new ElidedLabel;
  label->setAlignment(Qt::AlignCenter);
  SetFontEm(*label, 0.85);
  label->Show(name);
  auto* column = new QWidget;
  FillColumn(*column, 0, 0.15,
             {counter, {fader, 1, Qt::AlignHCenter}, level, {function, 0, Qt::AlignHCenter}, label});
  columns_.push_back({channel, fader, level, function, column});
  return column;
}

void FixtureFaders::ShowPresets(int channel, QWidget& under) {
  auto* menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->setObjectName(QStringLiteral("PresetMenu"));
  menu->setFont(font());
  const dmx::FixtureChannel& description = *fixture_.Channels.Item(channel);
  const bool gobo = description.function == dmx::ChannelFunction::Gobo;
  const bool colour = description.function == dmx::ChannelFunction::Color;
  const int pixels = Em(*this, kFaderPictureEms);
  for (const dmx::presets& preset : description.presets) {
    QPixmap picture = EffectPicture(preset.Effect, pixels, look_.skin.text);
    if (preset.Effect == dmx::PresetEffect::None && gobo)
      picture = GoboPicture(preset.picture, pixels, look_.skin.text);
    if (preset.Effect == dmx::PresetEffect::None && colour)
      picture = ColourPicture(preset.picture, pixels, look_.skin.text);
    QAction* action = menu->addAction(
        QIcon(picture), QStringLiteral("%1  (%2)").arg(Decode(preset.name), Decode(dmx::RangeText(preset))));
    connect(action, &QAction::triggered, this,
            [this, channel, level = preset.StartLevel] { Q_EMIT LevelMoved(position_, channel, level); });
  }
  menu->popup(under.mapToGlobal(QPoint(0, under.height())));
}

int FixtureFaders::LevelIn(const LevelMirror::Levels& levels, int channel) const {
  const int on_the_wire = fixture_.StartChannel + channel - 1;
  if (channel < 1 || on_the_wire < 1 || on_the_wire > dmx::kUniverseChannels) return 0;
  return levels[static_cast<std::size_t>(on_the_wire - 1)];
}

void FixtureFaders::ShowLevels(const LevelMirror::Levels& levels) {
  for (const Column& column : columns_) {
    const int level = LevelIn(levels, column.channel);
    if (column.fader->value() == level) continue;
    const QSignalBlocker quiet(column.fader);
    column.fader->setValue(level);
    column.fader->update();
    column.level->setText(QString::number(level));
  }
  ShowPads(levels);
}

dmx::AxisLevels FixtureFaders::LevelsOf(const LevelMirror::Levels& levels,
                                        const dmx::AxisChannels& axis) const {
  return {static_cast<dmx::DmxLevel>(LevelIn(levels, axis.coarse)),
          static_cast<dmx::DmxLevel>(LevelIn(levels, axis.fine))};
}

void FixtureFaders::ShowPads(const LevelMirror::Levels& levels) {
  if (colour_ != nullptr) {
    colour_->ShowColour(QColor(LevelIn(levels, mix_.red.front()), LevelIn(levels, mix_.green.front()),
                               LevelIn(levels, mix_.blue.front())));
  }
  if (direction_ != nullptr) {
    const dmx::AxisLevels pan = LevelsOf(levels, pan_);
    const dmx::AxisLevels tilt = LevelsOf(levels, tilt_);
    const QPointF& shown = direction_->Place();
    const bool same = dmx::LevelsAt(pan_, shown.x()) == pan && dmx::LevelsAt(tilt_, shown.y()) == tilt;
    if (!same) direction_->Show({dmx::PlaceOf(pan_, pan), dmx::PlaceOf(tilt_, tilt)});
  }
}

void FixtureFaders::Fit() {
  const int pixels = Em(*this, kFaderPictureEms);
  for (const Column& column : columns_) {
    const dmx::FixtureChannel& channel = *fixture_.Channels.Item(column.channel);
    const QColor& ink = column.function->isEnabled() ? look_.skin.text : look_.skin.dim;
    column.function->setIconSize({pixels, pixels});
    column.function->setIcon(PlainIcon(FunctionPicture(channel.function, pixels, ink)));
    column.box->setFixedWidth(Em(*this, kFaderColumnEms));
  }
}

void FixtureFaders::ShowChosen(bool chosen) {
  SetStripe(chosen ? look_.skin.decks[0] : QColor());
}

}  // namespace ui
