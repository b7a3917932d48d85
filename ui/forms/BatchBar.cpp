// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/BatchBar.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/files/BatchAnalysis.h"
#include "ui/strings/Decode.h"
#include "ui/strings/ScanWords.h"
#include "ui/widgets/ElidedLabel.h"
#include "ui/widgets/Kit.h"
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

BatchBar::BatchBar(const QString& prefix, app::BatchAnalysis& analysis, const Look& look, QWidget* parent)
    : QWidget(parent), analysis_(analysis), look_(look) {
  begin_ =
      PlainButton(prefix + QStringLiteral("Analyse"), look_.say.Of(ScanWord::Analyse), [this] { Pressed(); });
  pause_ = PlainButton(prefix + QStringLiteral("AnalysePause"), look_.say.Of(ScanWord::AnalysePause),
                       [this] { analysis_.Pause(); });
  go_on_ = PlainButton(prefix + QStringLiteral("AnalyseGoOn"), look_.say.Of(ScanWord::AnalyseGoOn),
                       [this] { analysis_.Resume(); });
  end_ = PlainButton(prefix + QStringLiteral("AnalyseEnd"), look_.say.Of(ScanWord::AnalyseEnd),
                     [this] { analysis_.Cancel(); });
  text_ = Sentence(prefix + QStringLiteral("AnalyseProgress"), look.skin.dim);
  line_ = new QWidget;
  FillRow(*line_, 0, 0.4, {{text_, 1}, begin_, pause_, go_on_, end_});
  report_ = new ReportList(prefix + QStringLiteral("AnalyseLeftOut"), look);
  FillColumn(*this, 0, 0.3, {line_, report_});
  ShowLine(Line::None);
  ShowLeftOut(true);
}

void BatchBar::Show(int chosen, bool not_analysed) {
  const app::BatchProgress progress = analysis_.Progress();
  const Line line = progress.state == BatchState::Running  ? Line::Running
                    : progress.state == BatchState::Paused ? Line::Paused
                    : chosen > 1                           ? Line::Chosen
                    : not_analysed                         ? Line::NotAnalysed
                                                           : Line::None;
  if (line != shown_) ShowLine(line);
  ShowLeftOut(progress.state == BatchState::Idle);
  if (line == Line::Chosen) text_->Show(look_.say.Count(ScanWord::TracksChosen, chosen));
  if (line == Line::NotAnalysed) text_->Show(look_.say(ScanWord::NotAnalysed));
  if (progress.state != BatchState::Idle) text_->Show(TextOf(progress));
}

void BatchBar::ShowLine(Line line) {
  shown_ = line;
  begin_->setVisible(line == Line::Chosen || line == Line::NotAnalysed);
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
