// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/PresetPanel.h"

#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include "ui/strings/Decode.h"
#include "ui/strings/EditorWords.h"
#include "ui/widgets/Kit.h"
#include "ui/widgets/LevelEdit.h"
#include "ui/widgets/LightIcons.h"
#include "ui/widgets/QuietCombo.h"

namespace ui {
namespace {

constexpr double kPresetPictureEms = 1.5;

enum class Pictures { None, Gobos, Colours };

Pictures PicturesOf(dmx::ChannelFunction function) {
  switch (function) {
    case dmx::ChannelFunction::Gobo:
    case dmx::ChannelFunction::GoboRotation:
      return Pictures::Gobos;
    case dmx::ChannelFunction::Color:
    case dmx::ChannelFunction::ColorRotation:
      return Pictures::Colours;
    default:
      return Pictures::None;
  }
}

EditorWord NamesOf(Pictures pictures) {
  if (pictures == Pictures::Gobos) return EditorWord::Gobos;
  return pictures == Pictures::Colours ? EditorWord::Colours : EditorWord::PictureNone;
}

QIcon PictureIcon(Pictures pictures, int index, int pixels, const QColor& ink) {
  if (pictures == Pictures::None) return {};
  return PlainIcon(pictures == Pictures::Gobos ? GoboPicture(index, pixels, ink)
                                               : ColourPicture(index, pixels, ink));
}

/// An index that is in no list is kept all the same.
void Choose(QComboBox& combo, int index) {
  int row = combo.findData(index);
  if (row < 0) {
    combo.addItem(QString::number(index), index);
    row = combo.count() - 1;
  }
  combo.setCurrentIndex(row);
}

}  // namespace

PresetPanel::PresetPanel(dmx::FixtureEdit& edit, const Look& look, QWidget* parent)
    : Surface(look.skin.panel, parent), edit_(edit), look_(look) {
  setObjectName(QStringLiteral("Presets"));
  head_ = Reading("PresetHead");
  SetFontEm(*head_, 1.1, Weight::Bold);
  MakeList();
  auto* fields = new QGridLayout;
  SetSpacingEm(*fields, 0, 0.4);
  MakeFields(*fields);
  FillColumn(*this, 0.6, 0.4, {head_, {Row(0.6, {{list_, 1}, MakeButtons()}), 1}, fields});
}

void PresetPanel::MakeList() {
  list_ =
      MakeTable("PresetList", look_.say.Of(EditorWord::Presets),
                {QStringLiteral("#"), look_.say(EditorWord::Name), look_.say(EditorWord::Levels),
                 look_.say(EditorWord::Effect), look_.say(EditorWord::Picture), look_.say(EditorWord::Third)},
                1);
  connect(list_, &QTableWidget::itemSelectionChanged, this, &PresetPanel::ShowPreset);
  connect(list_, &QTableWidget::cellDoubleClicked, this, [this](int row, int) {
    if (Channel() == nullptr) return;
    const dmx::presets* preset = Channel()->presets.Item(row + 1);
    if (preset != nullptr) Q_EMIT LevelWanted(channel_, preset->StartLevel);
  });
}

void PresetPanel::MakeFields(QGridLayout& grid) {
  effect_ = new QuietCombo(look_.skin);
  picture_ = new QuietCombo(look_.skin);
  name_ = new QLineEdit;
  start_ = new LevelEdit;
  end_ = new LevelEdit;
  third_ = new LevelEdit;
  const struct {
    QWidget* field;
    const char* name;
    EditorWord caption;
    EditorWord tip;
    int stretch;
  } fields[] = {{effect_, "Effect", EditorWord::Effect, EditorWord::EffectTip, 2},
                {picture_, "Picture", EditorWord::Picture, EditorWord::PictureTip, 2},
                {name_, "PresetName", EditorWord::Name, EditorWord::PresetNameTip, 4},
                {start_, "StartLevel", EditorWord::StartLevel, EditorWord::StartLevelTip, 0},
                {end_, "EndLevel", EditorWord::EndLevel, EditorWord::EndLevelTip, 0},
                {third_, "ThirdValue", EditorWord::Third, EditorWord::ThirdTip, 0}};
  int column = 0;
  for (const auto& field : fields) {
    auto* caption = new QLabel(look_.say(field.caption));
    SetTextColour(*caption, look_.skin.dim);
    Name(*field.field, field.name, look_.say(field.tip), look_.say(field.tip));
    grid.addWidget(caption, 0, column);
    grid.addWidget(field.field, 1, column);
    grid.setColumnStretch(column++, field.stretch);
  }
  effects_ = look_.say(EditorWord::Effects).split(QLatin1Char(';'));
  for (int index = 0; index < effects_.size(); ++index) {
    const auto effect = static_cast<dmx::PresetEffect>(index);
    const QPixmap picture = EffectPicture(effect, Em(*this, kPresetPictureEms), look_.skin.text);
    effect_->addItem(PlainIcon(picture), effects_[index], index);
  }
  for (QLineEdit* field : {name_, static_cast<QLineEdit*>(start_), static_cast<QLineEdit*>(end_),
                           static_cast<QLineEdit*>(third_)})
    connect(field, &QLineEdit::returnPressed, this, &PresetPanel::Add);
}

QVBoxLayout* PresetPanel::MakeButtons() {
  add_ =
      PlainButton("AddPreset", look_.say.ByTip(EditorWord::Add, EditorWord::AddPresetTip), [this] { Add(); });
  replace_ = PlainButton("ReplacePreset", look_.say.ByTip(EditorWord::Replace, EditorWord::ReplacePresetTip),
                         [this] { Replace(); });
  remove_ = PlainButton("RemovePreset", look_.say.ByTip(EditorWord::Remove, EditorWord::RemovePresetTip),
                        [this] { Remove(); });
  up_ = PlainButton("PresetUp", look_.say.ByTip(EditorWord::UpSign, EditorWord::PresetUpTip),
                    [this] { MoveUp(); });
  down_ = PlainButton("PresetDown", look_.say.ByTip(EditorWord::DownSign, EditorWord::PresetDownTip),
                      [this] { MoveDown(); });
  return Column(0.3, {add_, replace_, remove_, Row(0.3, {up_, down_}), Part::Room()});
}

const dmx::FixtureChannel* PresetPanel::Channel() const {
  return edit_.Now().channels.Item(channel_);
}

int PresetPanel::ChosenPreset() const {
  return list_->selectedItems().isEmpty() ? 0 : list_->currentRow() + 1;
}

void PresetPanel::ShowChannel(int channel) {
  const bool another = channel != channel_;
  channel_ = channel;
  const dmx::FixtureChannel* shown = Channel();
  setEnabled(shown != nullptr);
  static const dmx::FixtureChannel kNone;
  if (shown == nullptr) shown = &kNone;
  const QString function = Decode(dmx::FunctionText(shown->function));
  SetText(*head_, channel == 0 ? look_.say(EditorWord::NoChannel)
                               : look_.say(EditorWord::PresetsOf).arg(channel).arg(function));
  const int pixels = Em(*this, kPresetPictureEms);
  for (QComboBox* combo : {effect_, picture_}) combo->setIconSize({pixels, pixels});
  FillPictures(shown->function);
  const int chosen = another ? 0 : ChosenPreset();
  FillList(*shown);
  const QSignalBlocker quiet(list_);
  if (chosen > 0 && chosen <= list_->rowCount()) {
    list_->selectRow(chosen - 1);
  } else {
    list_->clearSelection();
    if (another) OfferNext();
  }
  ShowPreset();
}

void PresetPanel::FillPictures(dmx::ChannelFunction function) {
  const int kind = static_cast<int>(function);
  if (kind == pictures_of_) return;
  pictures_of_ = kind;
  const Pictures pictures = PicturesOf(function);
  const int pixels = Em(*this, kPresetPictureEms);
  picture_->clear();
  const QStringList names = look_.say(NamesOf(pictures)).split(QLatin1Char(';'));
  for (int index = 0; index < names.size(); ++index)
    picture_->addItem(PictureIcon(pictures, index, pixels, look_.skin.text), names[index], index);
  picture_->setEnabled(pictures != Pictures::None);
}

void PresetPanel::FillList(const dmx::FixtureChannel& channel) {
  const QSignalBlocker quiet(list_);
  const int pixels = Em(*this, kPresetPictureEms);
  list_->setRowCount(channel.presets.count());
  list_->setIconSize({pixels, pixels});
  int row = 0;
  for (const dmx::presets& preset : channel.presets) {
    const int effect = static_cast<int>(preset.Effect);
    const QString texts[] = {QString::number(row + 1),
                             Decode(preset.name),
                             Decode(dmx::RangeText(preset)),
                             effects_.value(effect, QString::number(effect)),
                             QString(),
                             Decode(preset.third)};
    for (int column = 0; column < 6; ++column)
      list_->setItem(row, column, new QTableWidgetItem(texts[column]));
    list_->item(row, 3)->setIcon(PlainIcon(EffectPicture(preset.Effect, pixels, look_.skin.text)));
    const Pictures pictures = PicturesOf(channel.function);
    list_->item(row, 4)->setIcon(PictureIcon(pictures, preset.picture, pixels, look_.skin.text));
    list_->setRowHeight(row, Em(*this, 2));
    ++row;
  }
}

void PresetPanel::ShowPreset() {
  const int chosen = ChosenPreset();
  for (QPushButton* button : {replace_, remove_}) button->setEnabled(chosen > 0);
  up_->setEnabled(chosen > 1);
  down_->setEnabled(chosen > 0 && chosen < list_->rowCount());
  const dmx::FixtureChannel* channel = Channel();
  const dmx::presets* preset = channel == nullptr ? nullptr : channel->presets.Item(chosen);
  if (preset != nullptr) ShowFields(*preset);
}

void PresetPanel::ShowFields(const dmx::presets& preset) {
  Choose(*effect_, static_cast<int>(preset.Effect));
  Choose(*picture_, preset.picture);
  shown_name_ = preset.name;
  shown_third_ = preset.third;
  name_->setText(Decode(preset.name));
  start_->SetLevel(preset.StartLevel);
  end_->SetLevel(preset.EndLevel);
  third_->setText(Decode(preset.third));
}

// The next one begins where the last one ends.
void PresetPanel::OfferNext() {
  dmx::presets next;
  next.EndLevel = dmx::kHighestLevel;
  next.third = "0";
  if (const dmx::FixtureChannel* channel = Channel()) {
    const dmx::presets* last = channel->presets.Item(channel->presets.count());
    if (last != nullptr) next.StartLevel = std::min(last->EndLevel + 1, dmx::kHighestLevel);
  }
  ShowFields(next);
}

dmx::presets PresetPanel::Preset() const {
  dmx::presets preset;
  preset.Effect = static_cast<dmx::PresetEffect>(effect_->currentData().toInt());
  preset.picture = picture_->currentData().toInt();
  preset.name = Encode(name_->text(), shown_name_);
  preset.StartLevel = start_->Level();
  preset.EndLevel = end_->Level();
  preset.third = Encode(third_->text(), shown_third_);
  return preset;
}

void PresetPanel::Add() {
  if (Channel() == nullptr) return;
  edit_.AddPreset(channel_, Preset());
  const QSignalBlocker quiet(list_);
  list_->clearSelection();
  Q_EMIT Changed();
  OfferNext();
  name_->setFocus();
}

void PresetPanel::Replace() {
  edit_.SetPreset(channel_, ChosenPreset(), Preset());
  edit_.History().Settle();
  Q_EMIT Changed();
}

void PresetPanel::Remove() {
  edit_.RemovePreset(channel_, ChosenPreset());
  Q_EMIT Changed();
}

void PresetPanel::MoveUp() {
  MoveTo(ChosenPreset() - 1);
}

void PresetPanel::MoveDown() {
  MoveTo(ChosenPreset() + 1);
}

void PresetPanel::MoveTo(int position) {
  edit_.MovePreset(channel_, ChosenPreset(), position);
  const QSignalBlocker quiet(list_);
  list_->selectRow(position - 1);
  Q_EMIT Changed();
}

}  // namespace ui
