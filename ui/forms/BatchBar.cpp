// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/BatchBar.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/files/BatchAnalysis.h"
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

BatchBar::BatchBar(app::BatchAnalysis& analysis, const Look& look, QWidget* parent)
    : QWidget(parent), analysis_(analysis), look_(look) {
  begin_ = MakeButton("Analyse", ScanWord::Analyse, ScanWord::AnalyseTip);
  connect(begin_, &QPushButton::clicked, this, &BatchBar::Pressed);
  pause_ = MakeButton("AnalysePause", ScanWord::AnalysePause, ScanWord::AnalysePauseTip);
  connect(pause_, &QPushButton::clicked, this, [this] { analysis_.Pause(); });
  go_on_ = MakeButton("AnalyseGoOn", ScanWord::AnalyseGoOn, ScanWord::AnalyseGoOnTip);
  connect(go_on_, &QPushButton::clicked, this, [this] { analysis_.Resume(); });
  end_ = MakeButton("AnalyseEnd", ScanWord::AnalyseEnd, ScanWord::AnalyseEndTip);
  connect(end_, &QPushButton::clicked, this, [this] { analysis_.Cancel(); });
  text_ = new ElidedLabel;
  Name(*text_, QStringLiteral("AnalyseProgress"), {});
  SetTextColour(*text_, look.skin.dim);
  line_ = new QWidget;
  auto* row = new QHBoxLayout(line_);
  SetSpacingEm(*row, 0, 0.4);
  row->addWidget(text_, 1);
  for (QPushButton* button : {begin_, pause_, go_on_, end_}) row->addWidget(button);
  report_ = new ReportList(QStringLiteral("AnalyseLeftOut"), look);
  auto* rows = new QVBoxLayout(this);
  SetSpacingEm(*rows, 0, 0.3);
  rows->addWidget(line_);
  rows->addWidget(report_);
  ShowLine(Line::None);
  ShowLeftOut(true);
}

QPushButton* BatchBar::MakeButton(const char* name, ScanWord caption, ScanWord tip) {
  auto* button = new QPushButton(look_.say(caption), this);
  SetKind(*button, "plain");
  Name(*button, QLatin1String(name), look_.say(caption), look_.say(tip));
  return button;
}

void BatchBar::Show(int chosen) {
  const app::BatchProgress progress = analysis_.Progress();
  const Line line = progress.state == BatchState::Running  ? Line::Running
                    : progress.state == BatchState::Paused ? Line::Paused
                    : chosen > 1                           ? Line::Chosen
                                                           : Line::None;
  if (line != shown_) ShowLine(line);
  ShowLeftOut(progress.state == BatchState::Idle);
  if (line == Line::Chosen) text_->Show(look_.say.Count(ScanWord::TracksChosen, chosen));
  if (progress.state != BatchState::Idle) text_->Show(TextOf(progress));
}

void BatchBar::ShowLine(Line line) {
  shown_ = line;
  begin_->setVisible(line == Line::Chosen);
  pause_->setVisible(line == Line::Running);
  go_on_->setVisible(line == Line::Paused);
  end_->setVisible(line == Line::Running || line == Line::Paused);
  line_->setVisible(line != Line::None);
}

void BatchBar::ShowLeftOut(bool over) {
  static const std::vector<std::string> kNone;
  const auto& left_out = over ? analysis_.LeftOut() : kNone;
  if (left_out.size() == left_out_) return;
  left_out_ = left_out.size();
  report_->Show(look_.say.Count(ScanWord::AnalysisLeftOut, left_out.size()), left_out);
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
