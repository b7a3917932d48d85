// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/MessageBox.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace ui {
namespace {

constexpr double kTextEms = 36;

}  // namespace

MessageBox::MessageBox(const QString& object_name, const QString& text, QWidget& owner) : QDialog(&owner) {
  setObjectName(object_name);
  setWindowTitle(QStringLiteral("dj TOLVEN"));
  setAttribute(Qt::WA_DeleteOnClose);
  text_ = new QLabel(text);
  text_->setTextFormat(Qt::PlainText);
  text_->setWordWrap(true);
  buttons_ = new QHBoxLayout;
  SetSpacingEm(*buttons_, 0, 0.8);
  buttons_->addStretch(1);
  auto* rows = new QVBoxLayout(this);
  SetSpacingEm(*rows, 1.2, 1.2);
  rows->addWidget(text_);
  rows->addLayout(buttons_);
}

QPushButton* MessageBox::AddButton(const QString& object_name, const QString& caption) {
  auto* button = new QPushButton(caption);
  SetKind(*button, "plain");
  Name(*button, object_name, caption, caption);
  connect(button, &QPushButton::clicked, this, &QDialog::close);
  buttons_->addWidget(button);
  button->setDefault(true);
  button->setFocus();
  return button;
}

void MessageBox::ShowOverLists(const QWidget& owner) {
  ApplyBaseSize(*this, owner.font().pointSizeF());
  text_->setFixedWidth(Em(owner, kTextEms));
  text_->setMinimumHeight(text_->heightForWidth(text_->width()));
  adjustSize();
  const QPoint middle = owner.mapToGlobal(QPoint(owner.width() / 2, owner.height() * 3 / 4));
  move(middle - rect().center());
  show();
}

QString MessageBox::Text() const {
  return text_->text();
}

}  // namespace ui
