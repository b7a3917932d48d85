// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/ShowLine.h"

#include <QFile>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QSignalBlocker>
#include <algorithm>

#include "app/lights/StagedShow.h"
#include "dmx/ShowTime.h"
#include "ui/forms/Dialogs.h"
#include "ui/forms/MessageBoxes.h"
#include "ui/strings/ConsoleWords.h"
#include "ui/strings/Decode.h"
#include "ui/widgets/ElidedLabel.h"
#include "ui/widgets/Fader.h"
#include "ui/widgets/Kit.h"
#include "ui/widgets/QuietCombo.h"
#include "ui/widgets/TransportButton.h"

namespace ui {
namespace {

using PlayerState = dmx::ShowPlayer::State;

constexpr int kWholeShow = 10'000;  ///< steps of the position

dmx::ShowTime LengthOf(const app::ShowView& show) {
  return show.show != nullptr && show.show->plan != nullptr ? show.show->plan->Length() : dmx::ShowTime(0);
}

QString ClockText(dmx::ShowTime time) {
  return Decode(dmx::ShowTimeText(std::chrono::duration_cast<dmx::Tenths>(time)));
}

}  // namespace

ShowLine::ShowLine(app::LightStation& lights, MessageBoxes& boxes, const Look& look, QWidget* parent)
    : QWidget(parent), lights_(lights), boxes_(boxes), look_(look) {
  MakeChoice();
  MakeTransport();
  MakePlace();
  FillRow(*this, 0, 0.5, {shows_, open_, play_, pause_, stop_, repeat_, {position_, 2}, time_, {place_, 3}});
}

void ShowLine::MakeChoice() {
  const auto& say = look_.say;
  shows_ = new QuietCombo(look_.skin);
  shows_->setPlaceholderText(say(ConsoleWord::ShowListHint));
  shows_->setMinimumContentsLength(18);
  Name(*shows_, "ShowList", say.Of(ConsoleWord::ShowList));
  connect(shows_, &QComboBox::activated, this, [this](int row) {
    if (row >= 0 && row < static_cast<int>(listed_.size()))
      Open(listed_[static_cast<std::size_t>(row)].string());
  });
  open_ = PlainButton("OpenShow", say.Of(ConsoleWord::ShowOpen), [this] { AskForShow(); });
}

void ShowLine::MakeTransport() {
  using Symbol = TransportButton::Symbol;
  const auto make = [this](Symbol symbol, const char* name, ConsoleWord word) {
    auto* button =
        new TransportButton(look_.skin, look_.skin.decks[0], symbol, TransportButton::Size::Normal);
    Name(*button, name, look_.say(word), look_.say(word));
    return button;
  };
  play_ = make(Symbol::Play, "ShowPlay", ConsoleWord::ShowPlay);
  pause_ = make(Symbol::Pause, "ShowPause", ConsoleWord::ShowPause);
  stop_ = make(Symbol::Stop, "ShowStop", ConsoleWord::ShowStop);
  connect(play_, &QPushButton::clicked, this, &ShowLine::Play);
  connect(pause_, &QPushButton::clicked, this,
          [this] { shown_.state == PlayerState::Paused ? lights_.ResumeShow() : lights_.PauseShow(); });
  connect(stop_, &QPushButton::clicked, this, [this] { lights_.StopShow(); });
  repeat_ = Lamp("ShowRepeat", look_.say.Of(ConsoleWord::ShowRepeat), [this](bool on) {
    lights_.RepeatShow(on ? dmx::ShowPlayer::Repeat::ForEver : dmx::ShowPlayer::Repeat::Once);
  });
}

void ShowLine::MakePlace() {
  position_ = new Fader(Qt::Horizontal, look_.skin, look_.skin.decks[0]);
  position_->setRange(0, kWholeShow);
  position_->setSingleStep(kWholeShow / 100);
  position_->setPageStep(kWholeShow / 10);
  Name(*position_, "ShowPosition", look_.say.Of(ConsoleWord::ShowPosition));
  connect(position_, &QSlider::valueChanged, this,
          [this](int step) { lights_.SeekShow(LengthOf(shown_) / kWholeShow * step); });
  time_ = Reading("ShowTime", Qt::AlignRight | Qt::AlignVCenter, "00:00.0 / 00:00.0");
  place_ = new ElidedLabel;
  place_->UseTwoLines();
  Name(*place_, "ShowPlace");
}

void ShowLine::ListShows() {
  lights_.ListShows([line = QPointer(this)](const std::vector<std::filesystem::path>& shows) {
    if (!line.isNull()) line->FillShows(shows);
  });
}

void ShowLine::FillShows(const std::vector<std::filesystem::path>& shows) {
  if (shows == listed_) return;
  listed_ = shows;
  shows_->clear();
  for (const std::filesystem::path& show : listed_) shows_->addItem(Decode(show.stem().string()));
  ShowChoice(shown_);
}

void ShowLine::AskForShow() {
  QFileDialog* dialog =
      MakeFileDialog(*this, look_, QFileDialog::ExistingFile, Say::DialogChoose, Say::DialogChoose);
  dialog->setObjectName(QStringLiteral("OpenShowDialog"));
  dialog->setWindowTitle(look_.say(ConsoleWord::ShowOpenTitle));
  dialog->setDirectory(QFile::decodeName(QByteArray::fromStdString(lights_.ShowFolder().string())));
  dialog->setNameFilter(look_.say(ConsoleWord::ShowFiles));
  dialog->setDefaultSuffix(QStringLiteral("shw"));
  connect(dialog, &QFileDialog::fileSelected, this,
          [this](const QString& name) { Open(QFile::encodeName(name).toStdString()); });
  ShowDialog(*dialog, *this);
}

void ShowLine::Open(const std::string& path) {
  lights_.OpenShow(path, [line = QPointer(this), path](const support::Result<app::ShowReport>& report) {
    if (!line.isNull()) line->TellOpened(path, report);
  });
}

void ShowLine::TellOpened(const std::string& path, const support::Result<app::ShowReport>& report) {
  const auto& say = look_.say;
  ShowChoice(shown_);  // one that could not be opened is not the one that is chosen
  if (!report) {
    const QString name = Decode(std::filesystem::path(path).filename().string());
    return Tell(say(ConsoleWord::ShowFailed).arg(name), {report.Failure().text});
  }
  const app::ShowReport& told = report.Value();
  std::vector<std::string> sentences = told.refused;
  if (told.ended_early) sentences.push_back(say(ConsoleWord::ShowEndsEarly).toStdString());
  sentences.insert(sentences.end(), told.notes.begin(), told.notes.end());
  Tell(say(ConsoleWord::ShowNotes).arg(Decode(told.name)), sentences);
}

void ShowLine::Tell(const QString& head, const std::vector<std::string>& sentences) {
  constexpr std::size_t kMost = 6;
  if (sentences.empty()) return;
  QString text = head + QLatin1Char('\n');
  for (std::size_t i = 0; i < std::min(sentences.size(), kMost); ++i) {
    text += QLatin1Char('\n') + Decode(sentences[i]);
  }
  if (sentences.size() > kMost) {
    text += QLatin1Char('\n') + look_.say(Say::AndMore).arg(sentences.size() - kMost);
  }
  // A path may go on in the next line behind each folder.
  boxes_.Tell(text.replace(QLatin1Char('/'), QStringLiteral("/\u200B")).toStdString());
}

void ShowLine::Play() {
  if (shown_.next == nullptr && shown_.state == PlayerState::Playing) return;
  if (shown_.next == nullptr && shown_.state == PlayerState::Paused) return lights_.ResumeShow();
  lights_.PlayShow();
}

void ShowLine::ShowChoice(const app::ShowView& show) {
  const auto& chosen = show.next != nullptr ? show.next : show.show;
  const QString name = chosen != nullptr ? Decode(chosen->name) : QString();
  const int row = name.isEmpty() ? -1 : shows_->findText(name);
  if (row < 0) shows_->setPlaceholderText(name.isEmpty() ? look_.say(ConsoleWord::ShowListHint) : name);
  if (shows_->currentIndex() != row) shows_->setCurrentIndex(row);
}

void ShowLine::Show(const app::LightView& view) {
  const app::ShowView& show = view.show;
  const bool other = show.show != shown_.show || show.next != shown_.next;
  shown_ = show;
  if (other) ShowChoice(show);
  const bool runs = show.state != PlayerState::Stopped;
  play_->SetLit(show.state == PlayerState::Playing);
  pause_->SetLit(show.state == PlayerState::Paused);
  play_->setEnabled(show.show != nullptr);
  for (QWidget* control :
       {static_cast<QWidget*>(pause_), static_cast<QWidget*>(stop_), static_cast<QWidget*>(position_)}) {
    if (control->isEnabled() != runs) control->setEnabled(runs);
  }
  const bool repeats = show.repeat == dmx::ShowPlayer::Repeat::ForEver;
  if (repeat_->isChecked() != repeats) repeat_->setChecked(repeats);
  ShowPlace(show);
}

void ShowLine::ShowPlace(const app::ShowView& show) {
  const auto& say = look_.say;
  const dmx::ShowTime length = LengthOf(show);
  SetText(*time_, ClockText(show.position) + QStringLiteral(" / ") + ClockText(length));
  if (!position_->isSliderDown()) {
    const QSignalBlocker quiet(position_);
    position_->setValue(length.count() > 0 ? static_cast<int>(show.position * kWholeShow / length) : 0);
  }
  QString text = say(ConsoleWord::ShowNone);
  if (show.show != nullptr) text = say(Say::Stopped);
  if (show.place.scene > 0 && show.state != PlayerState::Stopped) {
    const auto scene = static_cast<std::size_t>(show.place.scene - 1);
    const auto& scenes = show.show->scenes;
    const std::string name = scene < scenes.size() ? scenes[scene] : std::string();
    text = say(ConsoleWord::ShowPlace)
               .arg(QString::number(show.place.scene), QString::number(scenes.size()), Decode(name),
                    QString::number(show.place.step));
  }
  if (show.next != nullptr)
    text = say(ConsoleWord::ShowNext).arg(Decode(show.next->name)) + QStringLiteral(" · ") + text;
  place_->Show(text);
  SetTextColour(*place_, show.next != nullptr ? look_.skin.text : look_.skin.dim);
}

}  // namespace ui
