// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/DeckPanel.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <cmath>

#include "app/Deck.h"
#include "app/sound/DeckStation.h"
#include "music/TrackForm.h"
#include "support/Settings.h"
#include "ui/forms/CueTools.h"
#include "ui/forms/Menus.h"
#include "ui/forms/TempoTools.h"
#include "ui/forms/ToneStrip.h"
#include "ui/models/DeckChoice.h"
#include "ui/models/DeckText.h"
#include "ui/models/KeyMap.h"
#include "ui/models/TrackText.h"
#include "ui/strings/Decode.h"
#include "ui/strings/KeyWords.h"
#include "ui/widgets/ElidedLabel.h"
#include "ui/widgets/Fader.h"
#include "ui/widgets/Kit.h"
#include "ui/widgets/RunningWave.h"
#include "ui/widgets/TransportButton.h"
#include "ui/widgets/WaveOverview.h"

namespace ui {
namespace {

std::vector<WaveOverview::SectionMark> SectionsOf(const std::shared_ptr<const music::TrackForm>& form,
                                                  const Strings& say) {
  std::vector<WaveOverview::SectionMark> marks;
  if (form == nullptr) return marks;
  for (const music::Section& section : form->sections) {
    const bool named = section.kind != music::SectionKind::Other;
    const int word = static_cast<int>(KeyWord::SectionIntro) + static_cast<int>(section.kind);
    marks.push_back({std::chrono::round<std::chrono::microseconds>(section.start),
                     named ? say(static_cast<KeyWord>(word)) : QString()});
  }
  return marks;
}

constexpr double kMoreWave = 2;   ///< that both waves have beyond their least where the pads are not folded
constexpr int kTempoSteps = 100;  ///< steps of the slider in one percent

Say StateName(DeckState state) {
  switch (state) {
    case DeckState::Empty:
      return Say::DeckEmpty;
    case DeckState::Loading:
      return Say::Loading;
    case DeckState::Stopped:
      return Say::Stopped;
    case DeckState::Playing:
      return Say::Playing;
    case DeckState::Paused:
      return Say::Paused;
    case DeckState::Ended:
      return Say::Ended;
  }
  return Say::DeckEmpty;
}

QString TempoText(float percent) {
  const double rounded = std::round(double(percent) * kTempoSteps) / kTempoSteps;
  const QString number = QString::number(std::abs(rounded), 'f', 2);
  const QString sign = rounded > 0   ? QStringLiteral("+")
                       : rounded < 0 ? QStringLiteral("−")
                                     : QStringLiteral("±");
  return sign + number + QStringLiteral(" %");
}

QLabel* MakeBadge(int deck, const Look& look) {
  auto* badge = new QLabel(QString::number(deck));
  Name(*badge, DeckName(deck, "Badge"), look.say(Say::Deck).arg(deck));
  SetFontEm(*badge, 2.0, Weight::Bold);
  badge->setAlignment(Qt::AlignCenter);
  badge->setAutoFillBackground(true);
  QPalette palette;
  palette.setColor(QPalette::Window, look.skin.Deck(deck));
  palette.setColor(QPalette::WindowText, look.skin.on_deck);
  badge->setPalette(palette);
  badge->setMargin(4);
  badge->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
  return badge;
}

}  // namespace

DeckPanel::DeckPanel(app::Deck& deck, app::EffectStation& effects, const support::Settings& settings,
                     const Look& look, QWidget* parent)
    : DeckDrops(deck.Number(), look.skin.panel, parent),
      deck_(deck.Number()),
      commands_(deck),
      settings_(settings),
      look_(look) {
  SetStripe(look.skin.Deck(deck_));
  auto* rows = new QVBoxLayout(this);
  SetSpacingEm(*rows, 0.7, 0.4);
  tools_ = new TempoTools(deck, look);
  rows->addLayout(MakeTitleRow());
  overview_ = new WaveOverview(look.skin, look.skin.Deck(deck_));
  running_ = new RunningWave(look.skin, look.skin.Deck(deck_));
  rows->addWidget(overview_, 2);
  rows->addWidget(running_, 3);
  rows->addWidget(cues_ = new CueTools(deck, look));
  rows->addWidget(tone_ = new ToneStrip(deck, effects, look));
  rows->addWidget(tools_);
  rows->addLayout(MakeTransportRow());
  NameParts();
  const auto seek = [this](std::chrono::microseconds place) {
    if (view_.state == DeckState::Playing) Q_EMIT Told({});  // the first of two clicks was answered
    commands_.Do(&app::DeckStation::Seek, place);
  };
  connect(overview_, &WaveOverview::SeekWanted, this, seek);
  connect(running_, &RunningWave::SeekWanted, this, seek);
  GuardWaves();
  GiveWaveMenu(
      *overview_, deck, [this](const QPoint& place) { return overview_->PlaceAt(place.x()); }, look);
  GiveWaveMenu(
      *running_, deck, [this](const QPoint& place) { return running_->PlaceAt(place.x()); }, look);
  connect(tools_, &TempoTools::Told, this, &DeckPanel::Told);
  connect(overview_, &WaveOverview::MixPointMoved, this,
          [this](app::MixPoint which, auto place) { commands_.SetMixPoint(which, place); });
  connect(overview_, &WaveOverview::MixPointReset, this,
          [this](app::MixPoint which) { commands_.ResetMixPoint(which); });
  Show({}, {});
}

QSize DeckPanel::minimumSizeHint() const {
  const QSize least = DeckDrops::minimumSizeHint();
  return {least.width(), least.height() - (cues_->Folded() ? 0 : cues_->Foldable())};
}

void DeckPanel::resizeEvent(QResizeEvent* event) {
  DeckDrops::resizeEvent(event);
  FoldPads();
}

void DeckPanel::FoldPads() {
  const int whole = layout()->totalMinimumSize().height() + (cues_->Folded() ? cues_->Foldable() : 0);
  cues_->Fold(height() < whole + Em(*this, kMoreWave));
}

void DeckPanel::GuardWaves() {
  const SeekGuard guard(
      [this] { return view_.state == DeckState::Playing && settings_.Flag("Mixer", "SeekGuard"); });
  const auto tell = [this] { Q_EMIT Told(look_.say(Say::SeekGuarded).arg(deck_)); };
  overview_->Guard(guard);
  running_->Guard(guard);
  connect(overview_, &WaveOverview::Guarded, this, tell);
  connect(running_, &RunningWave::Guarded, this, tell);
}

QHBoxLayout* DeckPanel::MakeTitleRow() {
  title_ = new ElidedLabel;
  SetFontEm(*title_, 1.7, Weight::Bold);
  artist_ = new ElidedLabel;
  SetFontEm(*artist_, 1.2);

  bpm_ = new QLabel;
  SetFontEm(*bpm_, 1.7, Weight::Bold);
  bpm_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  state_ = new QLabel;
  SetFontEm(*state_, 1.1, Weight::Bold);
  state_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  return Row(0.8, {MakeBadge(deck_, look_),
                   {Column(0.1, {title_, artist_}), 1},
                   Column(0.1, {bpm_, Row(0.8, {{&tools_->Gain(), 1}, state_})})});
}

QHBoxLayout* DeckPanel::MakeTransportRow() {
  const QColor& accent = look_.skin.Deck(deck_);
  using Symbol = TransportButton::Symbol;
  to_start_ = new TransportButton(look_.skin, accent, Symbol::ToStart, TransportButton::Size::Normal);
  play_ = new TransportButton(look_.skin, accent, Symbol::Play, TransportButton::Size::Wide);
  stop_ = new TransportButton(look_.skin, accent, Symbol::Stop, TransportButton::Size::Normal);
  connect(to_start_, &QPushButton::clicked, this, &DeckPanel::ToStart);
  connect(play_, &QPushButton::clicked, this, &DeckPanel::PlayOrPause);
  connect(stop_, &QPushButton::clicked, this, &DeckPanel::Stop);
  return Row(0.5, {to_start_, play_, stop_, {MakeTempo(), 1}, MakeTimes()});
}

QWidget* DeckPanel::MakeTempo() {
  tempo_ = new Fader(Qt::Horizontal, look_.skin, look_.skin.Deck(deck_));
  tempo_->setRange(-app::kTempoRange * kTempoSteps, app::kTempoRange * kTempoSteps);
  tempo_->setSingleStep(kTempoSteps / 10);
  tempo_->setPageStep(kTempoSteps);
  tempo_->SetRest(0);
  tempo_value_ = new QLabel;
  SetFontEm(*tempo_value_, 1.1, Weight::Bold);
  tempo_reset_ = new QPushButton(look_.say(Say::TempoReset));
  SetKind(*tempo_reset_, "plain");
  connect(tempo_, &QSlider::valueChanged, this, [this](int steps) { SetTempo(float(steps) / kTempoSteps); });
  connect(tempo_reset_, &QPushButton::clicked, this, [this] {
    tempo_->setValue(0);
    SetTempo(0);
  });
  auto* box = new QWidget;
  FillColumn(
      *box, 0, 0.1,
      {Row(0.4, {Caption(look_.say(Say::Tempo), look_.skin.dim), {tempo_value_, 1}, tempo_reset_}), tempo_});
  return box;
}

QWidget* DeckPanel::MakeTimes() {
  remaining_ = new QLabel;
  SetFontEm(*remaining_, 2.6, Weight::Bold);
  remaining_->setAlignment(Qt::AlignRight | Qt::AlignBottom);
  SetWidest(*remaining_, QStringLiteral("−00:00"));
  elapsed_ = new QLabel;
  SetFontEm(*elapsed_, 1.1);
  elapsed_->setAlignment(Qt::AlignRight | Qt::AlignTop);
  SetTextColour(*elapsed_, look_.skin.dim);
  auto* box = new QWidget;
  FillColumn(*box, 0, 0, {remaining_, elapsed_});
  return box;
}

void DeckPanel::NameParts() {
  const auto& say = look_.say;
  const auto with_key = [&](Say tip, Command command) {
    return say(Say::KeyHint).arg(say(tip), KeyText(KeyOf(command, deck_)));
  };
  Name(*this, DeckName(deck_, ""), say(Say::Deck).arg(deck_));
  Name(*title_, DeckName(deck_, "Title"));
  Name(*artist_, DeckName(deck_, "Artist"));
  Name(*bpm_, DeckName(deck_, "Bpm"));
  Name(*state_, DeckName(deck_, "State"));
  Name(*overview_, DeckName(deck_, "Overview"), say(Say::Overview).arg(deck_), say(Say::OverviewTip));
  Name(*running_, DeckName(deck_, "Wave"), say(Say::Wave).arg(deck_), say(Say::WaveTip));
  using app::MixPoint;
  Name(overview_->Handle(MixPoint::Start), DeckName(deck_, "StartMixPoint"),
       say(Say::StartMixPoint).arg(deck_), with_key(Say::MixPointTip, Command::SetStart));
  Name(overview_->Handle(MixPoint::End), DeckName(deck_, "EndMixPoint"), say(Say::EndMixPoint).arg(deck_),
       with_key(Say::MixPointTip, Command::SetEnd));
  Name(*to_start_, DeckName(deck_, "ToStart"), say(Say::ToStart).arg(deck_),
       with_key(Say::ToStartTip, Command::ToStart));
  Name(*play_, DeckName(deck_, "Play"), say(Say::Play).arg(deck_),
       with_key(Say::PlayTip, Command::PlayPause));
  Name(*stop_, DeckName(deck_, "Stop"), say(Say::Stop).arg(deck_), with_key(Say::StopTip, Command::Stop));
  const QString tempo = say(Say::Tempo) + QLatin1Char(' ') + say(Say::Deck).arg(deck_);
  Name(*tempo_, DeckName(deck_, "Tempo"), tempo, say(Say::TempoTip));
  Name(*tempo_value_, DeckName(deck_, "TempoValue"));
  Name(*tempo_reset_, DeckName(deck_, "TempoReset"), tempo + QStringLiteral(": ") + say(Say::TempoReset),
       say(Say::TempoResetTip));
  Name(*remaining_, DeckName(deck_, "Remaining"), {}, say(Say::Remaining));
  Name(*elapsed_, DeckName(deck_, "Elapsed"), {}, say(Say::Elapsed));
}

bool DeckPanel::Loaded() const {
  return view_.state != DeckState::Empty && view_.state != DeckState::Loading;
}

void DeckPanel::PlayOrPause() {
  if (view_.cues.held) return commands_.Do(&app::DeckCues::Keep);
  if (view_.state == DeckState::Playing) return commands_.Do(&app::DeckStation::Pause);
  if (view_.state == DeckState::Paused) return commands_.Do(&app::DeckStation::Resume);
  if (view_.state != DeckState::Empty) commands_.Do(&app::DeckStation::Play);
}

void DeckPanel::ToStart() {
  if (Loaded()) commands_.Do(&app::DeckStation::Seek, std::chrono::microseconds(0));
}

void DeckPanel::Stop() {
  if (Loaded()) commands_.Do(&app::DeckStation::Stop);
}

void DeckPanel::SetMixPoint(app::MixPoint which) {
  if (Loaded()) commands_.SetMixPoint(which, view_.position);
}

void DeckPanel::SetTempo(float percent) {
  echo_.Sent(percent, now_);
  commands_.SetTempo(percent);
}

void DeckPanel::Show(const app::DeckView& view, support::TimePoint now) {
  now_ = now;
  ShowTrack(view);
  ShowState(view);
  ShowTimes(view);
  ShowTempo(view, now);
  overview_->Show(view.position, view.length, view.wave);
  overview_->ShowMixPoints(view);
  tools_->Show(view);
  cues_->Show(view);
  overview_->ShowCues(MarksOf(view.cues));
  running_->ShowCues(MarksOf(view.cues));
  tone_->Show(view, now);
  running_->Show(view.position, view.length, view.wave);
  running_->ShowBeats(view.grid, view.bar);
  if (view.form != view_.form) overview_->ShowSections(SectionsOf(view.form, look_.say));
  view_ = view;
}

void DeckPanel::ShowTrack(const app::DeckView& view) {
  const bool broken = !view.message.empty();
  const bool empty = view.state == DeckState::Empty;
  SetTextColour(*title_, empty && !broken ? look_.skin.dim : look_.skin.text);
  SetTextColour(*artist_, broken ? look_.skin.danger : look_.skin.dim);
  title_->Show(empty && view.filename.empty() ? look_.say(Say::DeckEmpty)
                                              : TitleText(view.title, view.filename));
  if (broken) {
    artist_->Show(Decode(view.message));
  } else if (empty) {
    artist_->Show(look_.say(Say::DeckEmptyHint));
  } else {
    const QString artist = view.artist.empty() ? look_.say(Say::UnknownArtist) : Decode(view.artist);
    const QString key = KeyText(view.form);
    artist_->Show(key.isEmpty() ? artist : key + QStringLiteral(" · ") + artist);
  }
}

void DeckPanel::ShowState(const app::DeckView& view) {
  const bool playing = view.state == DeckState::Playing;
  SetText(*state_, view.state == DeckState::Empty ? QString() : look_.say(StateName(view.state)));
  SetTextColour(*state_, playing ? look_.skin.Deck(deck_) : look_.skin.dim);
  const bool loaded = view.state != DeckState::Empty && view.state != DeckState::Loading;
  for (TransportButton* button : {to_start_, stop_}) button->setEnabled(loaded);
  play_->setEnabled(view.state != DeckState::Empty);
  overview_->setEnabled(loaded);
  play_->SetSymbol(playing ? TransportButton::Symbol::Pause : TransportButton::Symbol::Play);
  play_->SetLit(playing);
  if (playing == (view_.state == DeckState::Playing)) return;
  play_->setAccessibleName(look_.say(playing ? Say::Pause : Say::Play).arg(deck_));
}

void DeckPanel::ShowTimes(const app::DeckView& view) {
  const DeckTimes times = TimesOf(view);
  SetText(*remaining_, times.remaining);
  SetText(*elapsed_, times.elapsed);
  SetTextColour(*remaining_, ColourOf(times.urgency, look_.skin));
}

void DeckPanel::ShowTempo(const app::DeckView& view, support::TimePoint now) {
  SetText(*tempo_value_, TempoText(view.tempo_percent));
  SetText(*bpm_, BpmText(view.playing_bpm, look_.say));
  if (view.bpm != view_.bpm) bpm_->setToolTip(look_.say(Say::BpmTip).arg(view.bpm, 0, 'f', 2));
  if (tempo_->isSliderDown() || !echo_.Believe(view.tempo_percent, now)) return;
  const QSignalBlocker quiet(tempo_);
  const int range = view.tempo_range * kTempoSteps;
  if (tempo_->maximum() != range) tempo_->setRange(-range, range);
  tempo_->setValue(static_cast<int>(std::lround(view.tempo_percent * kTempoSteps)));
}

}  // namespace ui
