// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/MessageBox.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/widgets/Kit.h"

namespace ui {
namespace {

constexpr double kTextEms = 36;
constexpr int kMostLines = 12;  ///< more than these scroll
constexpr double kScrolledEms = 18;

}  // namespace

MessageBox::MessageBox(const QString& object_name, const QString& text, QWidget& owner)
    : QDialog(&owner), text_(text) {
  setObjectName(object_name);
  setWindowTitle(QStringLiteral("dj TOLVEN"));
  setAttribute(Qt::WA_DeleteOnClose);
  if (text.count(QLatin1Char('\n')) < kMostLines) {
    label_ = new QLabel(text);
    label_->setTextFormat(Qt::PlainText);
    label_->setWordWrap(true);
    shown_ = label_;
  } else {
    auto* list = new QPlainTextEdit(text);
    list->setReadOnly(true);
    list->setTabChangesFocus(true);
    Name(*list, "MessageText", windowTitle(), windowTitle());
    SetHeightEm(*list, kScrolledEms);
    shown_ = list;
  }
  buttons_ = new QHBoxLayout;
  SetSpacingEm(*buttons_, 0, 0.8);
  buttons_->addStretch(1);
  FillColumn(*this, 1.2, 1.2, {shown_, buttons_});
}

QPushButton* MessageBox::AddButton(const QString& object_name, const QString& caption) {
  auto* button = PlainButton(object_name, {caption, caption, caption}, [this] { close(); });
  buttons_->addWidget(button);
  button->setDefault(true);
  button->setFocus();
  return button;
}

void MessageBox::ShowOverLists(const QWidget& owner) {
  ApplyBaseSize(*this, owner.font().pointSizeF());
  shown_->setFixedWidth(Em(owner, kTextEms));
  if (label_ != nullptr) label_->setMinimumHeight(label_->heightForWidth(label_->width()));
  adjustSize();
  const QPoint middle = owner.mapToGlobal(QPoint(owner.width() / 2, owner.height() * 3 / 4));
  move(middle - rect().center());
  show();
}

}  // namespace ui
