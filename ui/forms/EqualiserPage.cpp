// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/EqualiserPage.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "app/EqualiserStation.h"
#include "app/WorkstationView.h"
#include "ui/forms/MessageBoxes.h"
#include "ui/models/EqText.h"
#include "ui/strings/Decode.h"
#include "ui/widgets/ElidedLabel.h"
#include "ui/widgets/EqGraph.h"
#include "ui/widgets/Fader.h"
#include "ui/widgets/Kit.h"
#include "ui/widgets/QuietCombo.h"

namespace ui {
namespace {

constexpr int kFirstSlider = 1;  ///< of the twenty: it moves the lowest band

}  // namespace

EqualiserPage::EqualiserPage(app::EqualiserStation& sliders, MessageBoxes& boxes, QWidget* mixing,
                             const Look& look, QWidget* parent)
    : Surface(look.skin.panel, parent), sliders_(sliders), boxes_(boxes), look_(look) {
  Name(*this, "EqualiserPage", look.say(Say::EqInMixer));
  FillRow(*this, 0.8, 2.5, {{MakeBands(), 5}, {MakePresets(), 2}, {mixing, 2}});
  ShowChoice();
}

QVBoxLayout* EqualiserPage::MakeBands() {
  graph_ = new EqGraph(EqGraph::Captions::None, look_.skin);
  Name(*graph_, "EqCurve", look_.say.Of(Say::EqCurve));
  connect(graph_, &EqGraph::GainWanted, this,
          [this](int band, int gain) { sliders_.Set(band + kFirstSlider, gain); });
  auto* columns = new QHBoxLayout;
  SetSpacingEm(*columns, 0, 0);
  for (int band = 0; band < 10; ++band) {
    Band& made = bands_[static_cast<std::size_t>(band)];
    made = MakeBand(band + kFirstSlider);
    auto* centre = new QLabel(EqGraph::BandText(band));
    for (QLabel* label : {made.value, centre}) label->setAlignment(Qt::AlignCenter);
    SetTextColour(*centre, look_.skin.dim);
    columns->addLayout(Column(0.2, {made.value, {made.slider, 1, Qt::AlignHCenter}, centre}), 1);
  }
  return Column(0.4, {Heading(look_.say(Say::EqInMixer)), {graph_, 2}, {columns, 3}});
}

EqualiserPage::Band EqualiserPage::MakeBand(int slider) {
  Band band{new Fader(Qt::Vertical, look_.skin, look_.skin.text), new QLabel};
  band.slider->setRange(-app::kMostEqGain, app::kMostEqGain);
  band.slider->setPageStep(3);
  band.slider->SetRest(0);
  const QString name = look_.say(Say::EqBand).arg(EqGraph::BandText(slider - kFirstSlider));
  Name(*band.slider, QStringLiteral("Eq%1").arg(slider), name, look_.say(Say::EqBandTip).arg(name));
  Name(*band.value, QStringLiteral("EqValue%1").arg(slider));
  SetWidest(*band.value, QStringLiteral("+12"));
  connect(band.slider, &QSlider::valueChanged, this,
          [this, slider](int gain) { sliders_.Set(slider, gain); });
  return band;
}

QVBoxLayout* EqualiserPage::MakePresets() {
  const auto& say = look_.say;
  bank_ = new QuietCombo(look_.skin);
  bank_->addItems({say(Say::EqBankFirst), say(Say::EqBankSecond)});
  Name(*bank_, "EqBank", say.Of(Say::EqBank));
  connect(bank_, &QComboBox::activated, this, &EqualiserPage::ShowChoice);
  select_ = new QuietCombo(look_.skin);
  select_->setPlaceholderText(say(Say::EqNoPreset));
  Name(*select_, "cmbSelect", say.Of(Say::EqPreset));
  connect(select_, &QComboBox::activated, this, &EqualiserPage::Apply);
  values_ = new QListWidget;
  values_->setFrameShape(QFrame::NoFrame);
  values_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  values_->setTextElideMode(Qt::ElideRight);
  Name(*values_, "List1", say.Of(Say::EqValues));
  connect(values_, &QListWidget::itemActivated, this, [this] { Apply(values_->currentRow()); });
  hint_ = new QLabel(say(Say::EqNone));
  hint_->setAlignment(Qt::AlignCenter);
  hint_->setWordWrap(true);
  SetTextColour(*hint_, look_.skin.dim);
  auto* inside = new QVBoxLayout(values_->viewport());
  inside->addWidget(hint_);
  name_ = new QLineEdit;
  name_->setPlaceholderText(say(Say::EqNameHint));
  name_->setMaxLength(60);
  Name(*name_, "Text2", say.Of(Say::EqName));
  connect(name_, &QLineEdit::returnPressed, this, &EqualiserPage::Save);
  delete_ = PlainButton("EqDelete", look_.say.Of(Say::EqDelete), [this] { Delete(); });
  message_ = Sentence("EqMessage");

  const auto pair = [](QWidget* first, QWidget* second) {
    auto* line = new QHBoxLayout;
    SetSpacingEm(*line, 0, 0.5);
    line->addWidget(first, 1);
    line->addWidget(second);
    return line;
  };
  auto* acts = Row(0.5, {{PlainButton("EqFlat", look_.say.Of(Say::EqFlat), [this] { Flatten(); }), 1},
                         {PlainButton("EqResend", look_.say.Of(Say::EqResend), [this] { Resend(); }), 1}});
  return Column(0.5, {Heading(say(Say::EqPresets)),
                      bank_,
                      pair(select_, delete_),
                      {values_, 1},
                      pair(name_, PlainButton("EqSave", look_.say.Of(Say::EqSave), [this] { Save(); })),
                      acts,
                      message_});
}

decks::EqBank EqualiserPage::Bank() const {
  return bank_->currentIndex() == 1 ? decks::EqBank::Second : decks::EqBank::First;
}

std::string EqualiserPage::ChosenName() const {
  const auto& presets = sliders_.Presets();
  const auto row = static_cast<std::size_t>(select_->currentIndex());
  return select_->currentIndex() >= 0 && row < presets.size() ? presets[row].name : std::string();
}

void EqualiserPage::Apply(int preset) {
  const auto& presets = sliders_.Presets();
  if (preset < 0 || static_cast<std::size_t>(preset) >= presets.size()) return;
  const std::string name = presets[static_cast<std::size_t>(preset)].name;
  sliders_.Apply(Bank(), name);
  name_->setText(Decode(name));
  ShowChoice();
}

void EqualiserPage::Save() {
  const QString typed = name_->text().trimmed();
  const auto& presets = sliders_.Presets();
  // By what is read on the screen: the bytes of the name may stand in another code page.
  const auto same = std::find_if(presets.begin(), presets.end(), [&](const decks::EqPreset& preset) {
    return Decode(preset.name).trimmed() == typed;
  });
  if (same == presets.end()) return SaveUnder(typed.toStdString());
  const std::string name = same->name;
  boxes_.Ask(QStringLiteral("EqOverwriteBox"), look_.say(Say::EqAskOverwrite).arg(Decode(name)),
             look_.say(Say::EqOverwrite), [page = QPointer(this), name] {
               if (!page.isNull()) page->SaveUnder(name);
             });
}

void EqualiserPage::SaveUnder(const std::string& name) {
  sliders_.Save(Bank(), name, [page = QPointer(this), name](const support::Result<void>& saved) {
    if (!page.isNull()) page->Tell(saved, page->look_.say(Say::EqSaved).arg(Decode(name)));
  });
}

void EqualiserPage::Delete() {
  const std::string name = ChosenName();
  if (name.empty()) return;
  boxes_.Ask(QStringLiteral("EqDeleteBox"), look_.say(Say::EqAskDelete).arg(Decode(name)),
             look_.say(Say::EqDelete), [page = QPointer(this), name] {
               if (page.isNull()) return;
               page->sliders_.Delete(name, [page, name](const support::Result<void>& deleted) {
                 if (!page.isNull()) page->Tell(deleted, page->look_.say(Say::EqDeleted).arg(Decode(name)));
               });
             });
}

void EqualiserPage::Flatten() {
  for (int slider = kFirstSlider; slider < kFirstSlider + 10; ++slider) sliders_.Set(slider, 0);
}

void EqualiserPage::Resend() {
  sliders_.Resend();
}

void EqualiserPage::Tell(const support::Result<void>& result, const QString& success) {
  SetTextColour(*message_, result ? look_.skin.dim : look_.skin.danger);
  message_->Show(result ? success : Decode(result.Failure().text));
  ShowPresets();
  ShowChoice();
}

void EqualiserPage::ShowPresets() {
  std::vector<std::string> listed;
  for (const decks::EqPreset& preset : sliders_.Presets()) {
    listed.push_back(preset.name);
    listed.push_back(preset.value_line);
  }
  if (listed == shown_) return;
  shown_ = std::move(listed);
  select_->clear();
  values_->clear();
  for (const decks::EqPreset& preset : sliders_.Presets()) {
    select_->addItem(Decode(preset.name));
    auto* line = new QListWidgetItem(Decode(preset.name) + QStringLiteral(":  ") + EqValuesText(preset));
    line->setData(Qt::UserRole, Decode(preset.value_line));
    values_->addItem(line);
  }
  ShowChoice();
}

void EqualiserPage::ShowChoice() {
  const std::string chosen = sliders_.Chosen(Bank());
  select_->setCurrentIndex(chosen.empty() ? -1 : select_->findText(Decode(chosen)));
  values_->setCurrentRow(select_->currentIndex());
  hint_->setVisible(values_->count() == 0);
  select_->setEnabled(select_->count() > 0);
  delete_->setEnabled(select_->currentIndex() >= 0);
}

void EqualiserPage::Show(const app::WorkstationView& view) {
  ShowPresets();
  const auto& sliders = sliders_.Sliders();
  for (std::size_t band = 0; band < bands_.size(); ++band) {
    const int gain = sliders[band + kFirstSlider];
    SetText(*bands_[band].value, GainText(gain));
    if (bands_[band].slider->value() == gain) continue;
    const QSignalBlocker quiet(bands_[band].slider);
    bands_[band].slider->setValue(gain);
  }
  graph_->Show(ShownSliders(sliders), CurvesOf(view));
}

}  // namespace ui
