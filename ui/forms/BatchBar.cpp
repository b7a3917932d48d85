// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/BatchBar.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/strings/Decode.h"
#include "ui/widgets/ElidedLabel.h"
#include "ui/widgets/ReportList.h"

namespace ui {
namespace {

using BatchState = app::BatchProgress::State;

std::string LastPartOf(const std::string& path) {
  const std::size_t cut = path.find_last_of("/\\");
  return cut == std::string::npos ? path : path.substr(cut + 1);
}

}  // namespace

QString TimeLeftText(std::chrono::seconds left, const Strings& say) {
  constexpr std::chrono::seconds kInMinutes{90};
  if (left < kInMinutes) return say(ScanWord::SecondsLeft).arg(std::max<qint64>(1, left.count()));
  return say(ScanWord::MinutesLeft).arg((left.count() + 30) / 60);
}

BatchBar::BatchBar(app::Workstation& workstation, const Look& look, QWidget* parent)
    : QWidget(parent), workstation_(workstation), look_(look) {
  button_ = MakeButton("Analyse", ScanWord::Analyse, ScanWord::AnalyseTip);
  connect(button_, &QPushButton::clicked, this, &BatchBar::Pressed);
  pause_ = MakeButton("AnalysePause", ScanWord::AnalysePause, ScanWord::AnalysePauseTip);
  connect(pause_, &QPushButton::clicked, this, [this] { workstation_.Batch().Pause(); });
  go_on_ = MakeButton("AnalyseGoOn", ScanWord::AnalyseGoOn, ScanWord::AnalyseGoOnTip);
  connect(go_on_, &QPushButton::clicked, this, [this] { workstation_.Batch().Resume(); });
  end_ = MakeButton("AnalyseEnd", ScanWord::AnalyseEnd, ScanWord::AnalyseEndTip);
  connect(end_, &QPushButton::clicked, this, [this] { workstation_.Batch().Cancel(); });
  text_ = new ElidedLabel;
  Name(*text_, QStringLiteral("AnalyseProgress"), {});
  SetTextColour(*text_, look.skin.dim);
  line_ = new QWidget;
  auto* row = new QHBoxLayout(line_);
  SetSpacingEm(*row, 0, 0.4);
  row->addWidget(text_, 1);
  for (QPushButton* button : {pause_, go_on_, end_}) row->addWidget(button);
  report_ = new ReportList(QStringLiteral("AnalyseLeftOut"), look);
  auto* rows = new QVBoxLayout(this);
  SetSpacingEm(*rows, 0, 0.3);
  rows->addWidget(line_);
  rows->addWidget(report_);
  ShowState(BatchState::Idle);
}

QPushButton* BatchBar::MakeButton(const char* name, ScanWord caption, ScanWord tip) {
  auto* button = new QPushButton(look_.say(caption), this);
  SetKind(*button, "plain");
  Name(*button, QLatin1String(name), look_.say(caption), look_.say(tip));
  return button;
}

void BatchBar::Show() {
  const app::BatchProgress progress = workstation_.Batch().Progress();
  if (progress.state != shown_) ShowState(progress.state);
  if (progress.state != BatchState::Idle) text_->Show(TextOf(progress));
}

void BatchBar::ShowState(BatchState state) {
  shown_ = state;
  pause_->setVisible(state == BatchState::Running);
  go_on_->setVisible(state == BatchState::Paused);
  line_->setVisible(state != BatchState::Idle);
  const auto& left_out = workstation_.Batch().LeftOut();
  const bool over = state == BatchState::Idle;
  report_->Show(look_.say(ScanWord::AnalysisLeftOut).arg(left_out.size()),
                over ? left_out : std::vector<std::string>());
}

QString BatchBar::TextOf(const app::BatchProgress& progress) const {
  const auto& say = look_.say;
  if (progress.state == BatchState::Paused) {
    return say(ScanWord::AnalysePaused).arg(progress.done).arg(progress.total);
  }
  const QString file = Decode(LastPartOf(progress.file));
  if (!progress.remaining) {
    return say(ScanWord::AnalyseGoes).arg(progress.done).arg(progress.total).arg(file);
  }
  return say(ScanWord::AnalyseRest)
      .arg(progress.done)
      .arg(progress.total)
      .arg(TimeLeftText(*progress.remaining, say), file);
}

}  // namespace ui
