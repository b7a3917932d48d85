// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/DeckArea.h"

#include <QLabel>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "app/Decks.h"
#include "app/Workstation.h"
#include "app/WorkstationView.h"
#include "app/lists/ListStation.h"
#include "ui/forms/AutomixLine.h"
#include "ui/forms/CompactDeck.h"
#include "ui/forms/DeckPanel.h"
#include "ui/forms/MixerPanel.h"
#include "ui/widgets/Fader.h"
#include "ui/widgets/Kit.h"
#include "ui/widgets/Surface.h"

namespace ui {

DeckArea::DeckArea(app::Workstation& workstation, MixerState& state, const Look& look, QWidget* parent)
    : QWidget(parent), workstation_(workstation), state_(state) {
  Name(*this, "DeckArea");
  whole_ = MakeWhole(look);
  compact_ = MakeCompact(look);
  FillColumn(*this, 0, 0, {{whole_, 1}, compact_});
  compact_->hide();
}

QWidget* DeckArea::MakeWhole(const Look& look) {
  for (const int deck : {1, 2}) {
    auto* panel =
        new DeckPanel(workstation_.Decks()[deck], workstation_.Effects(), workstation_.Settings(), look);
    panels_[deck == 1 ? 0 : 1] = panel;
    connect(panel, &DeckPanel::RowsDropped, this, &DeckArea::RowsDropped);
    connect(panel, &DeckPanel::FilesDropped, this, &DeckArea::FilesDropped);
    connect(panel, &DeckPanel::Told, this, &DeckArea::Told);
  }
  mixer_ = new MixerPanel({workstation_.Decks(), workstation_.Equaliser(), workstation_.Outputs(),
                           workstation_.Lists(), workstation_.Headphones()},
                          state_, look);
  connect(mixer_, &MixerPanel::ListenLevelMoved, this, &DeckArea::ListenLevelMoved);
  auto* box = new QWidget;
  FillRow(*box, 0, 0.4, {{panels_[0], 1}, mixer_, {panels_[1], 1}});
  return box;
}

QWidget* DeckArea::MakeCompact(const Look& look) {
  for (const int deck : {1, 2}) {
    auto* line = new CompactDeck(workstation_.Decks()[deck], workstation_.Settings(), look);
    lines_[deck == 1 ? 0 : 1] = line;
    connect(line, &CompactDeck::PlayWanted, this, [this, deck] { Panel(deck).PlayOrPause(); });
    connect(line, &CompactDeck::FaderMoved, this,
            [this, deck](int level) { mixer_->MoveFader(deck, level); });
    connect(line, &CompactDeck::RowsDropped, this, &DeckArea::RowsDropped);
    connect(line, &CompactDeck::FilesDropped, this, &DeckArea::FilesDropped);
    connect(line, &CompactDeck::Told, this, &DeckArea::Told);
  }
  auto* box = new QWidget;
  FillRow(*box, 0, 0.4, {{Column(0.3, {lines_[0], lines_[1]}), 7}, {MakeSmallMixer(look), 2}});
  return box;
}

QWidget* DeckArea::MakeSmallMixer(const Look& look) {
  crossfader_ = new Fader(Qt::Horizontal, look.skin, look.skin.text);
  crossfader_->setRange(-100, 100);
  crossfader_->setPageStep(20);
  crossfader_->SetRest(0);
  crossfader_->setValue(state_.crossfader);
  Name(*crossfader_, "SmallCrossfader", look.say(Say::SmallCrossfader), look.say.Tip(Say::Crossfader));
  connect(crossfader_, &QSlider::valueChanged, this,
          [this](int value) { mixer_->MoveCrossfader(value - state_.crossfader); });
  automix_ = new AutomixLine(QStringLiteral("Small"), workstation_.Lists(), AutomixLine::Form::Wide, look);
  const auto end = [&](int deck) {
    auto* label = Caption(QString::number(deck), look.skin.Deck(deck));
    SetFontEm(*label, 1.2, Weight::Bold);
    Name(*label, DeckName(deck, "SmallEnd"), look.say(Say::Deck).arg(deck));
    return label;
  };
  auto* mixer = new Surface(look.skin.panel);
  mixer->SetStripe(look.skin.line);
  Name(*mixer, "SmallMixer");
  FillColumn(*mixer, 0.35, 0.3, {Row(0.3, {end(1), {crossfader_, 1}, end(2)}), automix_});
  return mixer;
}

void DeckArea::Take(Form form) {
  form_ = form;
  const bool compact = form == Form::Compact;
  whole_->setVisible(!compact);
  compact_->setVisible(compact);
  setSizePolicy(QSizePolicy::Preferred, compact ? QSizePolicy::Fixed : QSizePolicy::Preferred);
}

void DeckArea::Show(const app::WorkstationView& view, support::TimePoint now) {
  for (const int deck : {1, 2}) Panel(deck).Show(view.decks[static_cast<std::size_t>(deck - 1)], now);
  mixer_->Show(view, now);
  if (form_ == Form::Compact) ShowCompact(view);
}

void DeckArea::ShowCompact(const app::WorkstationView& view) {
  for (const std::size_t place : {0U, 1U}) {
    lines_[place]->Show(view.decks[place], state_.faders[place], mixer_->Meter(static_cast<int>(place) + 1));
  }
  automix_->Show(workstation_.Lists().View());
  if (crossfader_->isSliderDown() || crossfader_->value() == state_.crossfader) return;
  const QSignalBlocker quiet(crossfader_);
  crossfader_->setValue(state_.crossfader);
}

}  // namespace ui
