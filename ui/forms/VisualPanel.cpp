// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/VisualPanel.h"

#include <QHBoxLayout>
#include <algorithm>
#include <set>

#include "app/Visuals.h"
#include "app/WorkstationView.h"
#include "app/sound/BuiltInVisualisation.h"
#include "support/Settings.h"
#include "ui/strings/Decode.h"
#include "ui/widgets/Kit.h"
#include "ui/widgets/QuietCombo.h"
#include "ui/widgets/VisualSurface.h"

namespace ui {
namespace {

constexpr const char* kNone = "None";

/// Ours by their names in the language chosen; plug-ins as they call themselves.
QString VisualiserName(const std::string& name, const Strings& say) {
  if (name == app::BuiltInVisualisation::kSpectrum) return say(Say::VisualSpectrum);
  if (name == app::BuiltInVisualisation::kWave) return say(Say::VisualWave);
  return Decode(name);
}

}  // namespace

VisualPanel::VisualPanel(app::Visuals& visuals, support::Settings& settings, const Look& look,
                         QWidget* parent)
    : QWidget(parent), visuals_(visuals), settings_(settings), look_(look) {
  names_ = Choice(look.skin, "Visualisers", look.say.Of(Say::Visualiser));
  surface_ = new VisualSurface(look.skin);
  Name(*surface_, "Visual", look.say.Of(Say::Visual));
  connect(names_, &QComboBox::activated, this, &VisualPanel::Choose);
  QSizePolicy stays = surface_->sizePolicy();
  stays.setRetainSizeWhenHidden(true);
  surface_->setSizePolicy(stays);
  auto* row = new QHBoxLayout(this);
  SetSpacingEm(*row, 0, 0.4);
  row->addWidget(surface_, 1);
  row->addWidget(names_);
  rates_ = Choice(look.skin, "Resolution", look.say.Of(Say::VisualRate), {}, 0, [this](int) {
    visuals_.SetRate(rates_->currentData().toInt());
    next_.reset();
  });
  row->addWidget(rates_);
  chosen_ = settings.Text("Visualisation", "Name");
  Fill();
}

void VisualPanel::Fill() {
  names_->clear();
  names_->addItem(look_.say(Say::VisualNone), QByteArray(kNone));
  for (const std::string& name : visuals_.Names()) {
    names_->addItem(VisualiserName(name, look_.say), QByteArray::fromStdString(name));
  }
  names_->setCurrentIndex(std::max(0, names_->findData(QByteArray::fromStdString(chosen_))));
  FillRates();
}

void VisualPanel::FillRates() {
  const int chosen = visuals_.Rate();
  std::set<int> rates{5, 10, 15, 20, 25, 30, 50, 60};
  if (chosen > 0) rates.insert(chosen);
  rates_->clear();
  for (const int rate : rates) rates_->addItem(QStringLiteral("%1 /s").arg(rate), rate);
  rates_->setCurrentIndex(rates_->findData(chosen));
  // Their layout does not hear of new items by itself.
  names_->updateGeometry();
  rates_->updateGeometry();
}

void VisualPanel::Choose() {
  chosen_ = names_->currentData().toByteArray().toStdString();
  settings_.SetText("Visualisation", "Name", chosen_);
  next_.reset();
}

void VisualPanel::Show(const app::WorkstationView& view, support::TimePoint now) {
  // They are found by the conductor, some time after the window is there.
  if (names_->count() != static_cast<int>(visuals_.Names().size()) + 1) Fill();
  ShowWhatActs();
  if (next_ && now < *next_) return;
  const auto frame = std::chrono::microseconds(1'000'000 / std::max(1, visuals_.Rate()));
  next_ = next_ && now - *next_ < frame ? *next_ + frame : now + frame;
  if (view.sound.from != app::HeardFrom::Nothing) colour_of_ = view.sound.from;
  const bool mixes = colour_of_ == app::HeardFrom::Deck1 || colour_of_ == app::HeardFrom::Deck2;
  const QColor colour = mixes ? look_.skin.Deck(app::DeckOf(colour_of_)) : look_.skin.text;
  surface_->Show(visuals_.Show(chosen_), colour, now);
}

void VisualPanel::ShowWhatActs() {
  const bool any = names_->currentIndex() > 0;
  if (surface_->isHidden() == any) surface_->setVisible(any);
  rates_->setEnabled(any);
}

}  // namespace ui
