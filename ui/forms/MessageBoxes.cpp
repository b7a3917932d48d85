// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/forms/MessageBoxes.h"

#include <QMessageBox>
#include <QPushButton>

#include "ui/strings/Decode.h"
#include "ui/widgets/Look.h"

namespace ui {
namespace {

// Without the system's picture, which keeps its size when the window grows.
QMessageBox* MakeBox(QWidget& owner, const QString& text) {
  auto* box =
      new QMessageBox(QMessageBox::NoIcon, QStringLiteral("dj TOLVEN"), text, QMessageBox::NoButton, &owner);
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->setModal(false);
  box->setTextFormat(Qt::PlainText);
  return box;
}

QPushButton* AddButton(QMessageBox& box, const QString& name, const QString& caption,
                       QMessageBox::ButtonRole role) {
  auto* button = new QPushButton(caption);
  SetKind(*button, "plain");
  Name(*button, name, caption, caption);
  box.addButton(button, role);
  return button;
}

/// Below the middle of its window, where it hides lists and no deck.
void ShowOverLists(QMessageBox& box, const QWidget& owner) {
  ApplyBaseSize(box, owner.font().pointSizeF());
  box.adjustSize();
  const QPoint middle = owner.mapToGlobal(QPoint(owner.width() / 2, owner.height() * 3 / 4));
  box.move(middle - box.rect().center());
  box.show();
}

}  // namespace

void MessageBoxes::Tell(const std::string& sentence) {
  QMessageBox* box = MakeBox(owner_, Decode(sentence));
  box->setObjectName(QStringLiteral("MessageBox"));
  AddButton(*box, QStringLiteral("MessageClose"), (*say_)(Say::Close), QMessageBox::AcceptRole);
  ShowOverLists(*box, owner_);
}

void MessageBoxes::Ask(const QString& object_name, const QString& question, const QString& yes,
                       std::function<void()> then) {
  if (auto* open = owner_.findChild<QMessageBox*>(object_name)) open->close();
  QMessageBox* box = MakeBox(owner_, question);
  box->setObjectName(object_name);
  const QPushButton* agree = AddButton(*box, object_name + QStringLiteral("Yes"), yes, QMessageBox::YesRole);
  QPushButton* leave = AddButton(*box, object_name + QStringLiteral("No"), (*say_)(Say::DialogCancel),
                                 QMessageBox::RejectRole);
  box->setDefaultButton(leave);
  box->setEscapeButton(leave);
  QObject::connect(agree, &QPushButton::clicked, &owner_, std::move(then));
  ShowOverLists(*box, owner_);
}

}  // namespace ui
