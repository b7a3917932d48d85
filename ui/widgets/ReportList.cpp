// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/widgets/ReportList.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/strings/Decode.h"

namespace ui {

ReportList::ReportList(const QString& name, const Look& look, QWidget* parent) : QWidget(parent) {
  auto* column = new QVBoxLayout(this);
  SetSpacingEm(*column, 0, 0.3);
  head_ = new QLabel;
  Name(*head_, name + QStringLiteral("Head"));
  SetTextColour(*head_, look.skin.warning);
  auto* close = new QPushButton(look.say(Say::Close));
  SetKind(*close, "plain");
  Name(*close, name + QStringLiteral("Close"), look.say(Say::Close), look.say(Say::CloseTip));
  connect(close, &QPushButton::clicked, this, &QWidget::hide);
  auto* row = new QHBoxLayout;
  row->addWidget(head_, 1);
  row->addWidget(close);
  column->addLayout(row);
  list_ = new QPlainTextEdit;
  list_->setReadOnly(true);
  list_->setTabChangesFocus(true);
  SetHeightEm(*list_, 6);
  Name(*list_, name, name);
  column->addWidget(list_);
  hide();
}

void ReportList::Show(const QString& head, const std::vector<std::string>& sentences) {
  setVisible(!sentences.empty());
  if (sentences.empty()) return;
  head_->setText(head);
  list_->setAccessibleName(head);
  list_->setToolTip(head);
  QStringList lines;
  for (const std::string& sentence : sentences) lines += Decode(sentence);
  list_->setPlainText(lines.join(QLatin1Char('\n')));
}

}  // namespace ui
