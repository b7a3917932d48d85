// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/CompactDeck.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>

#include "app/Deck.h"
#include "app/sound/DeckStation.h"
#include "support/Settings.h"
#include "ui/forms/Menus.h"
#include "ui/models/DeckChoice.h"
#include "ui/models/DeckText.h"
#include "ui/models/KeyMap.h"
#include "ui/models/TimeText.h"
#include "ui/models/TrackText.h"
#include "ui/strings/Decode.h"
#include "ui/widgets/ElidedLabel.h"
#include "ui/widgets/Fader.h"
#include "ui/widgets/Kit.h"
#include "ui/widgets/LevelBar.h"
#include "ui/widgets/LevelMeter.h"
#include "ui/widgets/TransportButton.h"
#include "ui/widgets/WaveOverview.h"

namespace ui {

CompactDeck::CompactDeck(app::Deck& deck, const support::Settings& settings, const Look& look,
                         QWidget* parent)
    : DeckDrops(deck.Number(), look.skin.panel, parent), deck_(deck.Number()), commands_(deck), look_(look) {
  SetStripe(look.skin.Deck(deck_));
  MakeParts();
  NameParts();
  GuardWave(settings);
  GiveWaveMenu(
      *wave_, deck, [this](const QPoint& place) { return wave_->PlaceAt(place.x()); }, look);
  connect(play_, &QPushButton::clicked, this, &CompactDeck::PlayWanted);
  connect(fader_, &QSlider::valueChanged, this, &CompactDeck::FaderMoved);
}

void CompactDeck::MakeParts() {
  const QColor& accent = look_.skin.Deck(deck_);
  auto* badge = new QLabel(QString::number(deck_));
  Name(*badge, DeckName(deck_, "SmallBadge"), look_.say(Say::Deck).arg(deck_));
  SetFontEm(*badge, 1.6, Weight::Bold);
  SetTextColour(*badge, accent);
  play_ =
      new TransportButton(look_.skin, accent, TransportButton::Symbol::Play, TransportButton::Size::Normal);
  title_ = Sentence(DeckName(deck_, "SmallTitle"));
  SetFontEm(*title_, 1.2, Weight::Bold);
  wave_ = new WaveOverview(look_.skin, accent, nullptr, WaveOverview::Form::Slim);
  const auto right = Qt::AlignRight | Qt::AlignVCenter;
  remaining_ = Reading(DeckName(deck_, "SmallRemaining"), right, QStringLiteral("−00:00"));
  SetFontEm(*remaining_, 2, Weight::Bold);
  elapsed_ = Reading(DeckName(deck_, "SmallElapsed"), right, QStringLiteral("00:00 / 00:00"));
  SetTextColour(*elapsed_, look_.skin.dim);
  bpm_ = Reading(DeckName(deck_, "SmallBpm"), right, QStringLiteral("128.00 BPM"));
  level_ = new LevelBar(look_.skin);
  fader_ = new Fader(Qt::Horizontal, look_.skin, accent);
  fader_->setRange(0, 100);
  fader_->setPageStep(10);
  fader_->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  auto* row = new QHBoxLayout(this);
  SetSpacingEm(*row, 0.35, 0.7);
  row->addWidget(badge);
  row->addWidget(play_);
  row->addWidget(title_, 6);
  row->addWidget(wave_, 5);
  for (QWidget* widget : {static_cast<QWidget*>(elapsed_), static_cast<QWidget*>(remaining_),
                          static_cast<QWidget*>(bpm_), static_cast<QWidget*>(level_)})
    row->addWidget(widget);
  row->addWidget(fader_);
}

void CompactDeck::NameParts() {
  const auto& say = look_.say;
  Name(*this, DeckName(deck_, "Small"), say(Say::SmallDeck).arg(deck_));
  Name(*play_, DeckName(deck_, "SmallPlay"), say(Say::SmallPlay).arg(deck_),
       say(Say::KeyHint).arg(say(Say::PlayTip), KeyText(KeyOf(Command::PlayPause, deck_))));
  Name(*wave_, DeckName(deck_, "SmallWave"), say(Say::SmallWave).arg(deck_), say(Say::OverviewTip));
  Name(*level_, DeckName(deck_, "SmallLevel"), say(Say::Level).arg(deck_), say(Say::SmallLevelTip));
  Name(*fader_, DeckName(deck_, "SmallVolume"), say(Say::SmallVolume).arg(deck_), say(Say::VolumeTip));
  remaining_->setToolTip(say(Say::Remaining));
  elapsed_->setToolTip(say(Say::Elapsed));
}

void CompactDeck::GuardWave(const support::Settings& settings) {
  wave_->Guard(SeekGuard([this, &settings] {
    return view_.state == DeckState::Playing && settings.Flag("Mixer", "SeekGuard");
  }));
  connect(wave_, &WaveOverview::Guarded, this,
          [this] { Q_EMIT Told(look_.say(Say::SeekGuarded).arg(deck_)); });
  connect(wave_, &WaveOverview::SeekWanted, this, [this](std::chrono::microseconds place) {
    if (view_.state == DeckState::Playing) Q_EMIT Told({});  // the first of two clicks was answered
    commands_.Do(&app::DeckStation::Seek, place);
  });
}

void CompactDeck::Show(const app::DeckView& view, int fader, const LevelMeter& level) {
  const bool playing = view.state == DeckState::Playing;
  ShowTitle(view);
  ShowTimes(view);
  wave_->setEnabled(view.state != DeckState::Empty && view.state != DeckState::Loading);
  wave_->Show(view.position, view.length, view.wave);
  wave_->ShowMixPoints(view);
  play_->setEnabled(view.state != DeckState::Empty);
  play_->SetSymbol(playing ? TransportButton::Symbol::Pause : TransportButton::Symbol::Play);
  play_->SetLit(playing);
  level_->Show(level.Shown(), level.Overloaded());
  view_ = view;
  if (fader_->isSliderDown() || fader_->value() == fader) return;
  const QSignalBlocker quiet(fader_);
  fader_->setValue(fader);
}

void CompactDeck::ShowTitle(const app::DeckView& view) {
  const bool broken = !view.message.empty();
  const bool empty = view.state == DeckState::Empty && view.filename.empty();
  const QString title = empty ? look_.say(Say::DeckEmpty) : TitleText(view.title, view.filename);
  title_->Show(broken                ? Decode(view.message)
               : view.artist.empty() ? title
                                     : title + QStringLiteral(" — ") + Decode(view.artist));
  SetTextColour(*title_, broken ? look_.skin.danger : empty ? look_.skin.dim : look_.skin.text);
  SetText(*bpm_, BpmText(view.playing_bpm, look_.say));
}

void CompactDeck::ShowTimes(const app::DeckView& view) {
  const DeckTimes times = TimesOf(view);
  SetText(*remaining_, times.remaining);
  SetText(*elapsed_, times.elapsed);
  SetTextColour(*remaining_, ColourOf(times.urgency, look_.skin));
}

}  // namespace ui
