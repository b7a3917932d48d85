// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/SongPanel.h"

#include <QGridLayout>
#include <QPushButton>
#include <QStackedWidget>
#include <algorithm>
#include <cmath>

#include "app/songs/SongStation.h"
#include "support/Settings.h"
#include "ui/forms/LyricLookPanel.h"
#include "ui/forms/frmKaraoke.h"
#include "ui/models/SceneLooks.h"
#include "ui/models/TimeText.h"
#include "ui/strings/Decode.h"
#include "ui/strings/LyricCoding.h"
#include "ui/strings/LyricWords.h"
#include "ui/strings/SongWords.h"
#include "ui/widgets/ElidedLabel.h"
#include "ui/widgets/Fader.h"
#include "ui/widgets/Kit.h"
#include "ui/widgets/LyricSurface.h"
#include "ui/widgets/QuietCombo.h"
#include "ui/widgets/TransportButton.h"
#include "ui/widgets/WaveOverview.h"

namespace ui {
namespace {

using SongState = app::SongView::State;
using TransportSymbol = TransportButton::Symbol;

constexpr int kMostTempo = 50;
constexpr int kMostKey = 12;

QString SignedText(int value) {
  if (value == 0) return QStringLiteral("0");
  return (value > 0 ? QStringLiteral("+%1") : QStringLiteral("−%1")).arg(std::abs(value));
}

QString SongTitle(const app::SongView& view) {
  if (view.words == nullptr) return {};
  const QString title = DecodeLyric(view.words->title, view.words->coding);
  const QString artist = DecodeLyric(view.words->artist, view.words->coding);
  if (title.isEmpty()) return Decode(std::filesystem::path(view.filename).filename().string());
  return artist.isEmpty() ? title : QStringLiteral("%1 – %2").arg(artist, title);
}

}  // namespace

SongPanel::SongPanel(app::SongStation& songs, support::Settings& settings, frmKaraoke& singers,
                     const Look& look, QWidget* parent)
    : Surface(look.skin.panel, parent), songs_(songs), settings_(settings), singers_(singers), look_(look) {
  const auto& say = look.say;
  Name(*this, "SongPanel", say(SongWord::SingersWords));
  words_ = new LyricSurface(karaoke::LyricDisplay::MainWindow);
  Name(*words_, "pctKaraoke", say.Of(SongWord::SingersWords));
  words_->SetHint(say(SongWord::NoSongHint));
  stack_ = new QStackedWidget;
  stack_->addWidget(MakeSong());
  appearance_ = new LyricLookPanel(songs, settings, look);
  connect(appearance_, &LyricLookPanel::Changed, this, &SongPanel::UseLook);
  stack_->addWidget(appearance_);
  FillRow(*this, 0.4, 0.8,
          {{Column(0.3, {{words_, 1}, MakeTransport()}), 1}, Column(0.3, {MakeHead(), {stack_, 1}})});
  shown_failures_ = songs.View().failures;
  connect(&singers, &frmKaraoke::PlacesChanged, this, &SongPanel::FillScreens);
  FillScreens();
  FillSoundfonts();
  UseLook();
  ShowPart(0);
}

QHBoxLayout* SongPanel::MakeTransport() {
  const auto& say = look_.say;
  const auto button = [&](const char* name, TransportSymbol symbol, SongWord called, SongWord tip) {
    auto* made = new TransportButton(look_.skin, look_.skin.Deck(1), symbol, TransportButton::Size::Normal);
    Name(*made, name, say(called), say(tip));
    return made;
  };
  play_ = button("SongPlay", TransportSymbol::Play, SongWord::SongPlay, SongWord::SongPlayTip);
  stop_ = button("SongStop", TransportSymbol::Stop, SongWord::SongStop, SongWord::SongStopTip);
  connect(play_, &QPushButton::clicked, this, &SongPanel::PlayOrPause);
  connect(stop_, &QPushButton::clicked, this, [this] { songs_.Stop(); });
  place_ = new WaveOverview(look_.skin, look_.skin.text);
  Name(*place_, "SongPlace", say(SongWord::SongPlace), say(Say::OverviewTip));
  connect(place_, &WaveOverview::SeekWanted, this,
          [this](std::chrono::microseconds place) { songs_.Seek(place); });
  time_ = Reading("SongTime", Qt::AlignRight | Qt::AlignVCenter, "00:00 / 00:00");
  return Row(0.4, {play_, stop_, {place_, 1}, time_});
}

QHBoxLayout* SongPanel::MakeHead() {
  constexpr SongWord kCaptions[] = {SongWord::SongPart, SongWord::LookPart};
  auto* row = new QHBoxLayout;
  SetSpacingEm(*row, 0, 0.3);
  for (int part = 0; part < 2; ++part) {
    auto* button = Lamp(QStringLiteral("SongPart%1").arg(part + 1), look_.say.Of(kCaptions[part]),
                        [this, part](bool) { ShowPart(part); });
    row->addWidget(button, 1);
    parts_[part] = button;
  }
  SetHeightEm(*parts_[0], kListHeadEms);
  SetHeightEm(*parts_[1], kListHeadEms);
  return row;
}

QWidget* SongPanel::MakeSong() {
  app::SongStation& songs = songs_;
  title_ = Sentence("SongTitle");
  SetFontEm(*title_, 1.1, Weight::Bold);
  note_ = Sentence("SongNote", look_.skin.warning);
  auto* grid = new QGridLayout;
  SetSpacingEm(*grid, 0, 0.2);
  MakeLevel(*grid, volume_, {"SongVolume", SongWord::SongVolume, 0, 100, 10},
            [&songs](int value) { songs.SetVolume(value); });
  MakeLevel(*grid, key_, {"SongKey", SongWord::SongKey, -kMostKey, kMostKey, 1},
            [&songs](int value) { songs.SetKey(value); });
  MakeLevel(*grid, tempo_, {"SongTempo", SongWord::SongTempo, -kMostTempo, kMostTempo, 5},
            [&songs](int value) { songs.SetTempo(value); });
  MakeLevel(*grid, melody_, {"SongMelody", SongWord::SongMelody, 0, 100, 10},
            [&songs](int value) { songs.SetMelody(value); });
  screen_ = MakeList(*grid, "SingersScreen", SongWord::Screen);
  connect(screen_, &QComboBox::activated, this,
          [this] { singers_.ShowOn(screen_->currentData().toString()); });
  soundfont_ = MakeList(*grid, "Soundfont", SongWord::Soundfont);
  connect(soundfont_, &QComboBox::activated, this,
          [this] { songs_.SetSoundfont(soundfont_->currentData().toByteArray().toStdString()); });
  coding_ = MakeList(*grid, "SongCoding", LyricWord::Coding);
  connect(coding_, &QComboBox::activated, this,
          [this] { songs_.SetCoding(file_, coding_->currentData().toByteArray().toStdString()); });
  grid->setColumnStretch(1, 1);
  auto* part = new QWidget;
  FillColumn(*part, 0, 0.2, {title_, note_, grid, Part::Room()});
  return part;
}

void SongPanel::MakeLevel(QGridLayout& grid, LevelFader& level, const Range& range,
                          const std::function<void(int)>& send) {
  const int row = grid.rowCount();
  level = LevelFader::Make(range.name, Qt::Horizontal, range.lowest, range.highest, look_.skin);
  Name(*level.fader, range.name, look_.say.Of(range.word));
  level.fader->setPageStep(range.page);
  if (range.lowest < 0) level.fader->SetRest(0);
  SetWidest(*level.value, "+50 %");
  level.value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  level.OnMoved(now_, [this, send](int value) {
    send(value);
    ShowValues();
  });
  grid.addWidget(Caption(look_.say(range.word), look_.skin.dim), row, 0);
  grid.addWidget(level.fader, row, 1);
  grid.addWidget(level.value, row, 2);
}

QuietCombo* SongPanel::MakeList(QGridLayout& grid, const char* name, AnyWord word) {
  const int row = grid.rowCount();
  auto* list = Choice(look_.skin, name, look_.say.Of(word));
  grid.addWidget(Caption(look_.say(word), look_.skin.dim), row, 0);
  grid.addWidget(list, row, 1, 1, 2);
  return list;
}

void SongPanel::ShowPart(int part) {
  stack_->setCurrentIndex(part);
  for (int i = 0; i < 2; ++i) parts_[i]->setChecked(i == part);
  const auto& say = look_.say;
  const auto sample = part == 0 ? nullptr : SampleWords(say(SongWord::SampleLine), say(SongWord::SampleNext));
  words_->SetSample(sample, kSampleTime);
}

void SongPanel::FillScreens() {
  const auto& say = look_.say;
  screen_->clear();
  screen_->addItem(say(SongWord::ScreenNowhere), frmKaraoke::kNowhere);
  for (const frmKaraoke::ScreenPlace& place : singers_.Screens()) {
    const QString text = place.connected ? say(SongWord::ScreenNumber)
                                               .arg(place.number)
                                               .arg(place.name)
                                               .arg(place.size.width())
                                               .arg(place.size.height())
                                         : say(SongWord::ScreenGone).arg(place.name);
    screen_->addItem(text, place.name);
  }
  screen_->addItem(say(SongWord::ScreenWindow), frmKaraoke::kInWindow);
  screen_->setCurrentIndex(std::max(0, screen_->findData(singers_.Place())));
}

void SongPanel::FillSoundfonts() {
  const auto& found = songs_.Soundfonts();
  shown_soundfonts_ = found.size();
  const auto chosen = QByteArray::fromStdString(songs_.Soundfont());
  soundfont_->clear();
  soundfont_->addItem(look_.say(SongWord::SoundfontFirst), QByteArray());
  for (const karaoke::Soundfont& font : found) {
    soundfont_->addItem(Decode(font.name), QByteArray::fromStdString(font.path));
  }
  if (!chosen.isEmpty() && soundfont_->findData(chosen) < 0)
    soundfont_->addItem(Decode(chosen.toStdString()), chosen);
  soundfont_->setCurrentIndex(std::max(0, soundfont_->findData(chosen)));
}

/// The code pages that the song's words can be read in; the first line is what was guessed.
void SongPanel::ShowCoding(const app::SongView& view) {
  if (view.words == coded_) return;
  coded_ = view.words;
  coding_->clear();
  const bool has_words = coded_ != nullptr && !coded_->show.Lines().empty();
  coding_->setEnabled(has_words);
  if (!has_words) return;
  const auto& say = look_.say;
  const std::string& guessed = coded_->guessed_coding;
  QString found = guessed.empty() ? say(LyricWord::Western) : QString::fromStdString(guessed);
  for (const CodingChoice& choice : CodingChoices()) {
    if (guessed == choice.coding) found = say(choice.letters);
  }
  coding_->addItem(say(LyricWord::CodingGuessed).arg(found), QByteArray());
  for (const CodingChoice& choice : CodingChoices()) {
    const QString name = QString::fromLatin1(choice.coding);
    coding_->addItem(say(LyricWord::CodingOf).arg(say(choice.letters), name), name.toLatin1());
  }
  if (!coded_->chosen_coding) return;
  const std::string chosen = coded_->coding.empty() ? app::kWesternCoding : coded_->coding;
  coding_->setCurrentIndex(std::max(0, coding_->findData(QByteArray::fromStdString(chosen))));
}

void SongPanel::UseLook() {
  const SceneLook look = ReadSceneLook(songs_, settings_);
  words_->SetLook(look);
  singers_.SetLook(look);
}

void SongPanel::PlayOrPause() {
  app::SongStation& songs = songs_;
  state_ == SongState::Playing ? songs.Pause() : songs.Resume();
}

void SongPanel::Show(const app::SongView& view, support::TimePoint now) {
  now_ = now;
  state_ = view.state;
  file_ = view.filename;
  ShowCoding(view);
  words_->Show(view, now);
  const bool loaded = view.words != nullptr;
  const bool plays = view.state == SongState::Playing;
  play_->SetSymbol(plays ? TransportSymbol::Pause : TransportSymbol::Play);
  play_->SetLit(plays);
  for (QWidget* control :
       {static_cast<QWidget*>(play_), static_cast<QWidget*>(stop_), static_cast<QWidget*>(place_)}) {
    control->setEnabled(loaded);
  }
  place_->Show(view.position, view.length);
  SetText(*time_, loaded ? QStringLiteral("%1 / %2").arg(MinutesText(view.position), MinutesText(view.length))
                         : QString());
  const QString coming = Decode(std::filesystem::path(view.coming).filename().string());
  title_->Show(!coming.isEmpty() ? look_.say(SongWord::SongComes).arg(coming)
               : loaded          ? SongTitle(view)
                                 : look_.say(SongWord::NoSong));
  note_->Show(Decode(view.note));
  ShowLevels(view, now);
  if (shown_soundfonts_ != songs_.Soundfonts().size()) FillSoundfonts();
  if (shown_failures_ == view.failures) return;
  shown_failures_ = view.failures;
  Q_EMIT Failed(view.failure);
}

void SongPanel::ShowLevels(const app::SongView& view, support::TimePoint now) {
  volume_.Follow(view.volume, now);
  key_.Follow(view.semitones, now);
  tempo_.Follow(static_cast<int>(std::lround(view.percent)), now);
  melody_.Follow(view.melody, now);
  const bool loaded = view.words != nullptr;
  const bool wished_for = loaded || !view.coming.empty();
  key_.fader->setEnabled(wished_for);
  tempo_.fader->setEnabled(wished_for);
  melody_.fader->setEnabled(!loaded || view.has_melody);
  ShowValues();
}

void SongPanel::ShowValues() {
  SetText(*volume_.value, QString::number(volume_.fader->value()));
  SetText(*melody_.value, QString::number(melody_.fader->value()));
  SetText(*key_.value, SignedText(key_.fader->value()));
  SetText(*tempo_.value, SignedText(tempo_.fader->value()) + QStringLiteral(" %"));
}

}  // namespace ui
