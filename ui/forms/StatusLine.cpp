// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/StatusLine.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTime>
#include <algorithm>
#include <cmath>

#include "app/WorkstationView.h"
#include "app/lights/LightStation.h"
#include "app/recording/RecordingStation.h"
#include "app/settings/OutputSettings.h"
#include "ui/models/KeyMap.h"
#include "ui/models/OutputText.h"
#include "ui/models/RecordingText.h"
#include "ui/strings/Decode.h"
#include "ui/strings/RecordingWords.h"
#include "ui/widgets/ElidedLabel.h"
#include "ui/widgets/Kit.h"

namespace ui {
namespace {

constexpr auto kBright = std::chrono::seconds(10);
constexpr auto kGone = std::chrono::seconds(30);
constexpr auto kBeforeWarnings = std::chrono::seconds(5);  ///< that news is shown while a warning waits
constexpr double kForNew = 0.33;                           ///< most of the line for a new message
constexpr double kForOld = 0.2;
constexpr int kLettersOfAnOutput = 15;                ///< that are seen of each however much there is to say
constexpr float kHighLoad = 0.5F;                     ///< which is shown whatever else there is
constexpr auto kLateTime = std::chrono::seconds(15);  ///< that a late block is pointed out

}  // namespace

StatusLine::StatusLine(NoticesRead& read, QWidget* microphone, const Look& look, QWidget* parent)
    : Surface(look.skin.panel, parent), read_(read), look_(look) {
  setObjectName(QStringLiteral("StatusLine"));
  auto* row = new QHBoxLayout(this);
  SetSpacingEm(*row, 0.3, 1.2);
  const auto& say = look.say;
  clock_ = new QLabel;
  SetFontEm(*clock_, 1.9, Weight::Bold);
  Name(*clock_, "Clock", {}, say(Say::ClockTip));
  row->addWidget(clock_);
  record_ = Lamp(
      "Record", {{}, say.Tip(RecordingWord::Record), {}}, [this](bool) { Q_EMIT RecordPressed(); }, "alarm");
  SetFontEm(*record_, 1.2, Weight::Bold);
  record_->setToolTip(say(RecordingWord::NotPossible));
  row->addWidget(record_);
  row->addWidget(microphone);
  for (std::size_t i = 0; i < outputs_.size(); ++i) {
    outputs_[i] = new ElidedLabel(ElidedLabel::Width::Natural);
    Name(*outputs_[i], QStringLiteral("Output%1").arg(i + 1));
    row->addWidget(outputs_[i]);
    returns_[i] = MakeReturn(static_cast<int>(i) + 1);
    row->addWidget(returns_[i]);
  }
  message_ = new ElidedLabel;
  message_->UseTwoLines();
  Name(*message_, "Message");
  message_->installEventFilter(this);
  row->addWidget(message_, 1);
  seen_ = ToolButton("MessageSeen", say.Of(Say::NoticeSeen), [this] { MarkSeen(); });
  seen_->hide();
  row->addWidget(seen_);
  load_ = new QLabel;
  Name(*load_, "SoundLoad", {}, say(Say::SoundLoadTip));
  late_ = new QLabel;
  Name(*late_, "LateBlocks", {}, say(Say::LateBlocksTip));
  SetTextColour(*load_, look.skin.dim);
  SetTextColour(*late_, look.skin.dim);
  unsaved_ = new QLabel(say(Say::Unsaved));
  Name(*unsaved_, "Unsaved");
  SetTextColour(*unsaved_, look.skin.warning);
  unsaved_->hide();
  row->addWidget(unsaved_);
  lights_ = new QLabel;
  Name(*lights_, "DmxState", {}, say(Say::DmxTip));
  lights_->hide();
  row->addWidget(lights_);
  row->addWidget(load_);
  row->addWidget(late_);
  Show({}, {}, {});
}

void StatusLine::Show(const app::WorkstationView& view, const std::vector<std::string>& devices,
                      support::TimePoint now) {
  const auto& say = look_.say;
  const QString time = QTime::currentTime().toString(QStringLiteral("HH:mm"));
  SetText(*clock_, time);
  ShowOutputs(view, devices);
  if (unsaved_->isVisibleTo(this) == view.unsaved.empty()) unsaved_->setVisible(!view.unsaved.empty());
  const QString unsaved = say(Say::UnsavedTip).arg(Decode(view.unsaved));
  if (!view.unsaved.empty() && unsaved_->toolTip() != unsaved) unsaved_->setToolTip(unsaved);
  TakeNews(view.notices, now);
  ShowMessage(view.notices, now);
  ShowHealth(view.health, now);
}

void StatusLine::ShowOutputs(const app::WorkstationView& view, const std::vector<std::string>& devices) {
  const auto& say = look_.say;
  const bool together = view.outputs[0] == view.outputs[1];
  const QString names[] = {together ? say(Say::OutputDecks) : say(Say::OutputDeck).arg(1),
                           say(Say::OutputDeck).arg(2), say(Say::OutputHeadphones)};
  if (outputs_[1]->isVisibleTo(this) == together) outputs_[1]->setVisible(!together);
  for (std::size_t i = 0; i < outputs_.size(); ++i) {
    outputs_[i]->Show(say(Say::OutputOf).arg(names[i], OutputText(view.outputs[i], devices, say)));
    if (returns_[i]->isVisibleTo(this) != view.can_return[i]) returns_[i]->setVisible(view.can_return[i]);
    const bool mute = view.outputs[i].device == 0;
    SetTextColour(*outputs_[i], i == 2     ? look_.skin.dim
                                : mute     ? look_.skin.warning
                                : together ? look_.skin.text
                                           : look_.skin.decks[i]);
  }
  WarnOfHeadphones(view);
}

void StatusLine::WarnOfHeadphones(const app::WorkstationView& view) {
  const int deck = app::DeckOnHeadphones(view.outputs);
  if (deck != 0) SetTextColour(*outputs_[2], look_.skin.warning);
  const QString tip = deck == 0 ? QString()
                                : look_.say(Say::HeadphonesHeard).arg(deck) + QLatin1Char('\n') +
                                      look_.say(Say::HeadphonesHeardTip);
  if (outputs_[2]->accessibleDescription() == tip) return;
  outputs_[2]->setAccessibleDescription(tip);
  outputs_[2]->SetTip(tip);
}

void StatusLine::TakeNews(const std::vector<app::Notice>& notices, support::TimePoint now) {
  bool stands = news_from_ == 0;
  for (const app::Notice& notice : notices) {
    if (notice.kind != app::Notice::Kind::Passing) continue;
    stands = stands || notice.number == news_from_;
    if (notice.number <= read_.passed) continue;
    read_.passed = notice.number;
    news_ = Decode(notice.text);
    news_from_ = notice.number;
    stands = fresh_ = true;
  }
  if (fresh_) told_at_ = now;
  fresh_ = false;
  if (!stands || now - told_at_ >= kGone) Untell();
}

void StatusLine::ShowMessage(const std::vector<app::Notice>& notices, support::TimePoint now) {
  QString warnings;
  std::uint64_t newest = 0;
  for (const app::Notice& notice : notices) {
    if (notice.kind != app::Notice::Kind::Warning || notice.number <= read_.seen) continue;
    warnings = Decode(notice.text) + (warnings.isEmpty() ? QString() : QLatin1Char(' ') + warnings);
    newest = notice.number;
  }
  // A warning that is newer than the news is not kept waiting.
  const bool waits = !warnings.isEmpty();
  if (waits && (newest > newest_shown_ || now - told_at_ >= kBeforeWarnings)) Untell();
  newest_shown_ = newest;
  const bool warns = waits && news_.isEmpty();
  message_->Show(warns ? warnings : news_);
  if (seen_->isVisibleTo(this) != warns) seen_->setVisible(warns);
  const bool bright = warns || now - told_at_ < kBright;
  SetTextColour(*message_, bright ? look_.skin.warning : look_.skin.dim);
  MakeRoom(bright ? kForNew : kForOld);
}

// The names of the outputs give way to what is new, and so do the figures while they are of no interest.
void StatusLine::MakeRoom(double share) {
  int names = 0;  // have more to say
  for (ElidedLabel* output : outputs_) {
    const int least = output->fontMetrics().averageCharWidth() * kLettersOfAnOutput;
    output->setMinimumWidth(std::min(output->sizeHint().width(), least));
    if (!output->isHidden()) names += output->sizeHint().width() - output->minimumWidth();
  }
  const bool two_lines = height() >= 2 * message_->fontMetrics().height();
  const int text = message_->fontMetrics().horizontalAdvance(message_->text());
  const int wanted = std::min(two_lines ? text * 6 / 10 : text + 2, static_cast<int>(width() * share));
  int left = width() - TakenByOthers();
  const auto give = [&](QLabel& figure, bool needed) {
    const int takes = layout()->spacing() + figure.sizeHint().width();
    const bool shows = needed || wanted + names + takes <= left;
    if (figure.isVisibleTo(this) != shows) figure.setVisible(shows);
    if (shows) left -= takes;
  };
  give(*late_, late_blocks_ > 0);
  give(*load_, high_load_);
  message_->setMinimumWidth(std::clamp(left, 0, wanted));
}

int StatusLine::TakenByOthers() const {
  const QMargins margins = layout()->contentsMargins();
  int taken = margins.left() + margins.right();
  for (int i = 0; i < layout()->count(); ++i) {
    const QWidget& part = *layout()->itemAt(i)->widget();
    if (&part == message_ || &part == load_ || &part == late_ || part.isHidden()) continue;
    const bool gives_way = std::find(outputs_.begin(), outputs_.end(), &part) != outputs_.end();
    taken += layout()->spacing() +
             (gives_way ? part.minimumWidth() : std::max(part.sizeHint().width(), part.minimumWidth()));
  }
  return taken;
}

void StatusLine::MarkSeen() {
  read_.seen = std::max(read_.seen, newest_shown_);
}

bool StatusLine::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::MouseButtonRelease && seen_->isVisible()) MarkSeen();
  return Surface::eventFilter(watched, event);
}

QPushButton* StatusLine::MakeReturn(int output) {
  const auto& say = look_.say;
  const QString name = output == 3 ? say(Say::OutputHeadphones) : say(Say::OutputDeck).arg(output);
  auto* button =
      ToolButton(QStringLiteral("Return%1").arg(output),
                 {say(Say::ReturnOutput), say(Say::ReturnOutputName).arg(name), say(Say::ReturnOutputTip)},
                 [this, output] { Q_EMIT ReturnWanted(output); });
  button->hide();
  return button;
}

void StatusLine::ShowLights(const app::LightView& lights) {
  if (lights_->isVisibleTo(this) != lights.output_on) lights_->setVisible(lights.output_on);
  if (!lights.output_on) return;
  const bool sends = lights.status.state == dmx::DmxInterfaceStatus::State::Sending;
  SetText(*lights_, look_.say(!sends ? Say::DmxNoBox : lights.blackout ? Say::DmxDark : Say::DmxSends));
  SetTextColour(*lights_, sends && !lights.blackout ? look_.skin.dim : look_.skin.warning);
  const QString tip = sends || lights.trouble.empty() ? look_.say(Say::DmxTip) : Decode(lights.trouble);
  if (lights_->toolTip() != tip) lights_->setToolTip(tip);
}

void StatusLine::ShowRecording(const app::RecordingView& recording) {
  const auto& say = look_.say;
  const bool on = recording.state != app::RecordingView::State::Idle;
  const QString dot(QStringLiteral("\u25CF "));
  const QString caption = dot + (on ? HoursText(recording.length) : say(RecordingWord::Record));
  record_->setEnabled(recording.possible);
  if (!recording.possible) return record_->setText(dot + say(RecordingWord::Record));
  if (!record_->isDown() && record_->isChecked() != on) record_->setChecked(on);
  const bool same = record_->text() == caption;
  if (!same) record_->setText(caption);
  // Digits are not all as wide: what stands beside it is not to move with every second.
  const int wide = record_->sizeHint().width();
  if (on ? wide > record_->minimumWidth() : wide != record_->minimumWidth()) record_->setMinimumWidth(wide);
  if (same) return;
  const auto word = on ? RecordingWord::StopRecording : RecordingWord::Record;
  record_->setToolTip(say(Say::KeyHint).arg(say.Tip(word), KeyText(KeyOfRecording())));
}

void StatusLine::ShowHealth(const decks::EngineHealth& health, support::TimePoint now) {
  const long percent = std::lround(std::clamp(health.load, 0.0F, 9.99F) * 100);
  SetText(*load_, look_.say(Say::SoundLoad).arg(percent));
  high_load_ = health.load >= kHighLoad;
  SetText(*late_, look_.say(Say::LateBlocks).arg(health.late_blocks));
  if (health.late_blocks > late_blocks_) {
    was_late_ = true;
    late_at_ = now;
  }
  late_blocks_ = health.late_blocks;
  if (was_late_ && now - late_at_ > kLateTime) was_late_ = false;
  SetTextColour(*late_, was_late_ ? look_.skin.warning : look_.skin.dim);
}

void StatusLine::Tell(const QString& message) {
  news_ = message;
  news_from_ = 0;
  fresh_ = true;
}

void StatusLine::Untell() {
  news_.clear();
  news_from_ = 0;
}

}  // namespace ui
