// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/AddingBar.h"

#include <QGridLayout>
#include <QProgressBar>
#include <QPushButton>

#include "ui/strings/FileWords.h"
#include "ui/widgets/ElidedLabel.h"
#include "ui/widgets/Kit.h"

namespace ui {

AddingBar::AddingBar(const QString& name, Width width, const Look& look, QWidget* parent)
    : QWidget(parent), look_(look) {
  text_ = Sentence(name + QStringLiteral("Progress"), look.skin.dim);
  bar_ = new QProgressBar;
  bar_->setTextVisible(false);
  Name(*bar_, name + QStringLiteral("Bar"), look.say(Say::AddFiles));
  stop_ = PlainButton(name + QStringLiteral("Stop"), look.say.Of(FileWord::StopAdding),
                      [this] { Q_EMIT StopWanted(); });
  auto* grid = new QGridLayout(this);
  SetSpacingEm(*grid, 0, 0.4);
  grid->addWidget(text_, 0, 0);
  const bool wide = width == Width::Wide;
  grid->addWidget(bar_, wide ? 0 : 1, wide ? 1 : 0, 1, wide ? 1 : 2);
  grid->addWidget(stop_, 0, 2);
  grid->setColumnStretch(0, 1);
  if (wide) grid->setColumnStretch(1, 1);
  bar_->hide();
  stop_->hide();
  hide();
}

void AddingBar::Show(const app::AddingProgress& progress) {
  const bool adding = progress.total > 0;
  if (!adding && !adding_) return;
  bar_->setVisible(adding);
  stop_->setVisible(adding);
  if (!adding) {
    adding_ = false;
    return setVisible(false);
  }
  adding_ = true;
  show();
  bar_->setMaximum(progress.looking ? 0 : progress.total);
  bar_->setValue(progress.looking ? 0 : progress.done);
  text_->Show(progress.looking ? look_.say.Count(FileWord::LookingThrough, progress.done)
                               : look_.say(Say::AddingFiles).arg(progress.done).arg(progress.total));
}

void AddingBar::Tell(const QString& sentence) {
  adding_ = false;
  bar_->hide();
  stop_->hide();
  text_->Show(sentence);
  setVisible(!sentence.isEmpty());
}

QString AddingBar::TextOf(const app::IntakeOutcome& outcome) const {
  const auto& say = look_.say;
  QStringList parts;
  if (outcome.known > 0) parts += say.Count(Say::AlreadyThere, outcome.known);
  if (outcome.songs > 0) parts += say.Count(FileWord::SongsAside, outcome.songs);
  if (outcome.stopped) parts += say(FileWord::AddingStopped);
  return parts.join(QLatin1Char(' '));
}

}  // namespace ui
